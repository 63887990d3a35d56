#include "stress/soak_acts.h"

#include "core/engine.h"
#include "platform/ui/bound_grid.h"
#include "platform/ui/flex_grid.h"
#include "platform/ui/screen.h"
#include "platform/ui/wait.h"
#include "stress/soak_browsing.h"
#include "stress/soak_hand.h"
#include "walkthrough/hand.h"

#include <QtCore/QDate>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int familySize = 4; // of the template

// --- entries

struct EntryBoxes {
    const char *command;
    const char *screen;
    const char *amount;
    const char *note;
    const char *payment;
};
constexpr EntryBoxes revenueBoxes{"Command2", "frmRevenue", "txtAmount", "txtNote", "txtRevenueDetail"};
constexpr EntryBoxes expenseBoxes{"Command1", "frmExpense", "Text1", "Text2", "Text3"};

/// Amounts that every division divides without a rest.
void post(const EntryBoxes &boxes, Screen &mainScreen, SoakUser &user, SoakBooks &books)
{
    user.onModal(boxes.screen, [&](Screen &entry) {
        hand::fill(entry, boxes.amount, QString::number(120 * (1 + user.pick(9'999))));
        chooseSome(entry, user, "ComboGType");
        hand::click(entry, "cmdAll");
        if (boxes.screen == expenseBoxes.screen && user.oneIn(2))
            hand::click(entry, "Check1_2");
        if (user.oneIn(3))
            hand::click(entry, user.oneIn(2) ? "cmdDivide" : "cmdReDivide");
        hand::fill(entry, "DTPicker1", someDay(user));
        hand::fill(entry, boxes.note, someText(user));
        if (user.oneIn(3)) {
            hand::click(entry, "Option1_1");
            hand::fill(entry, boxes.payment, someText(user));
        }
        hand::click(entry, "cmdEntry");
        hand::chooseMenu(entry, "mnuExit", nullptr);
    });
    hand::click(mainScreen, boxes.command);
    user.expectTold(u"Successful Entry"_s);
    ++books.posted;
}

void postRevenue(Screen &mainScreen, SoakUser &user, SoakBooks &books)
{
    post(revenueBoxes, mainScreen, user, books);
}

void postExpense(Screen &mainScreen, SoakUser &user, SoakBooks &books)
{
    post(expenseBoxes, mainScreen, user, books);
}

// --- reports

/// A statement in a state left to chance, shown and perhaps exported.
void showStatement(Screen &statement, SoakUser &user, bool hasMonths)
{
    constexpr const char *options[] = {"Option1_0", "Option1_1", "Option1_2"};
    if (hasMonths && user.oneIn(2))
        hand::chooseMenu(statement, "mnuType", "mnuMonthly");
    if (user.oneIn(4))
        chooseDates(statement, user, u"01/01/2004"_s, u"31/12/2004"_s);
    hand::click(statement, options[user.pick(3)]);
    user.onModal("ReportPreview", [&](Screen &preview) { readReport(preview, user); });
    hand::click(statement, "cmdShow");
    if (user.wasTold(u"Sorry! There is none to show."_s)) { // such as any days but one: that is meant
        user.forgetModals();
    } else if (user.oneIn(2)) {
        hand::click(statement, "cmdExcell");
        user.expectTold(u"Export complete.."_s);
        expectFile(user);
    }
    hand::click(statement, "Command3");
}

void statement(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    hand::click(mainScreen, "Command5");
    Screen &reports = loaded("frmReports");
    if (user.oneIn(2)) {
        user.onModal("frmStatement", [&](Screen &screen) {
            chooseSome(screen, user, "Combo1");
            showStatement(screen, user, true);
        });
        hand::click(reports, "Command1");
    } else {
        // In English the family's months have no column of the side, which ends the program: that is meant.
        user.onModal("frmGStatement", [&](Screen &screen) { showStatement(screen, user, engine.isArabic); });
        hand::click(reports, "Command2");
    }
    hand::click(reports, "Command3");
}

// --- the other screens

void useMembers(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    useScreen(mainScreen, "Command2", "frmMembers", [&](Screen &members) {
        constexpr const char *buttons[] = {"cmdFirst", "cmdNext", "cmdLast", "cmdPrevious", "cmdRefresh"};
        for (int i = user.pick(4); i > 0; --i)
            hand::click(members, buttons[user.pick(5)]);
        switch (user.pick(4)) {
        case 0:
            hand::chooseMenu(members, "mnuShow", "mnuInValid");
            hand::chooseMenu(members, "mnuShow", "mnuBoth");
            break;
        case 1:
            hand::chooseMenu(members, "mnuDesceased", nullptr);
            break;
        default:
            hand::click(members, "cmdEdit");
            hand::fill(members, "txtFields_2", u"pl. %1"_s.arg(user.pick(1000)));
            hand::click(members, user.oneIn(3) ? "cmdCancel" : "cmdUpdate");
        }
    });
}

/// Behind all others, so that he is the last one: of him alone the command that deletes marks the row that it
/// has tested.
void addMember(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    useScreen(mainScreen, "Command2", "frmMembers", [&](Screen &members) {
        hand::click(members, "cmdAdd");
        hand::fill(members, "txtFields_0", someText(user));
        hand::click(members, "txtFields_1");
        chooseSome(members, user, "Combo1");
        hand::fill(members, "txtFields_2", u"planted"_s);
        hand::click(members, "txtFields_3");
        chooseSome(members, user, "Combo1");
        hand::fill(members, "txtFields_4",
                   QDate(2000, 1, 1).addDays(gridOf(members).rows()).toString(u"dd/MM/yyyy"_s));
        hand::fill(members, "txtFields_5", u"1"_s);
        hand::click(members, "cmdUpdate");
        hand::click(members, "cmdRefresh");
        hand::click(members, "cmdLast");
        hand::click(members, "cmdDelete");
        hand::chooseMenu(members, "mnuShow", "mnuValid");
        if (gridOf(members).rows() != 1 + familySize)
            throw std::runtime_error("the member was not added and deleted");
    });
}

/// By a name in front of the others, since nobody may delete a user whose name stands behind his own.
void addUser(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    useScreen(mainScreen, "Command1", "frmUsers", [&](Screen &users) {
        user.onModal("frmNewUser", [&](Screen &newUser) {
            hand::fill(newUser, "txtUserid", u"pl%1"_s.arg(user.pick(1'000'000)));
            hand::fill(newUser, "txtUsername", u"planted user"_s);
            hand::fill(newUser, "txtPassword1", u"planted"_s);
            hand::fill(newUser, "txtPassword2", u"planted"_s);
            hand::click(newUser, "cmdOK");
            hand::click(newUser, "cmdCancel");
        });
        hand::click(users, "cmdAdd");
        user.expectTold(u"User added successfully"_s);
        hand::click(users, "cmdRefresh");
        hand::click(users, "cmdFirst");
        auto &grid = dynamic_cast<BoundGrid &>(hand::reach(users, "grdDataGrid"));
        const int count = grid.rowCount();
        constexpr int name = 2; // behind the number and the user's id
        grid.setFocus();
        grid.setCurrentIndex(grid.model()->index(0, name));
        hand::pressKey(grid, Qt::Key_F2);
        hand::fill(*users.focusWidget(), u"planted user %1"_s.arg(user.pick(1'000'000)));
        hand::pressKey(*users.focusWidget(), Qt::Key_Return);
        serveEvents(); // the editor goes
        hand::click(users, "cmdLast");
        hand::click(users, "cmdFirst");
        hand::click(users, "cmdDelete");
        if (grid.rowCount() != count - 1)
            throw std::runtime_error("the user was not deleted");
    });
}

void useUsers(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    useScreen(mainScreen, "Command1", "frmUsers", [&](Screen &users) {
        constexpr const char *buttons[] = {"cmdFirst", "cmdNext", "cmdLast", "cmdPrevious", "cmdRefresh"};
        for (int i = user.pick(5); i > 0; --i)
            hand::click(users, buttons[user.pick(5)]);
    });
}

void convertDate(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    hand::chooseMenu(mainScreen, "mnuTour", "mnuDateConversion");
    Screen &conversion = loaded("frmDateConversion");
    hand::fill(conversion, "Text1", someDay(user));
    hand::click(conversion, user.oneIn(2) ? "cmdHijri" : "cmdGregorian");
    conversion.close();
}

void readAbout(Screen &mainScreen, SoakUser &, SoakBooks &)
{
    hand::chooseMenu(mainScreen, "mnuHelp", "mnuAbout");
    Screen &about = loaded("frmAbout");
    hand::chooseMenu(about, "mnuInformation", nullptr);
    hand::click(about, "cmdOK");
}

void switchLanguage(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    hand::chooseMenu(mainScreen, "mnuHelp", user.oneIn(2) ? "mnuArabic" : "mnuEnglish");
}

void chooseFont(Screen &mainScreen, SoakUser &, SoakBooks &)
{
    hand::chooseMenu(mainScreen, "mnuSettings", "mnuFont");
}

void leavePassword(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    hand::chooseMenu(mainScreen, "mnuChangePassword", nullptr);
    Screen &password = loaded("frmChangePassword");
    hand::fill(password, "txtPassword1", someText(user).left(12));
    hand::click(password, "cmdCancel");
}

void compact(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    hand::chooseMenu(mainScreen, "mnuSettings", "mnuCompact");
    user.expectTold(u"Successful"_s);
}

void practise(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    user.onModal("frmGenerateData", [&](Screen &generator) {
        hand::fill(generator, "Text1", QString::number(1 + user.pick(9)));
        hand::click(generator, user.oneIn(2) ? "Option1_0" : "Option1_1");
        hand::click(generator, "cmdStart");
        hand::click(generator, "cmdExit");
    });
    hand::chooseMenu(mainScreen, "mnuTour", "mnuStartTutorial");
    hand::chooseMenu(mainScreen, "mnuTour", "mnuStopTutorial");
}

} // namespace

const std::vector<SoakAct> &soakActs()
{
    static const std::vector<SoakAct> acts{
        {"post revenue", 8, postRevenue},
        {"post expense", 8, postExpense},
        {"correct", 8, browsing::correct},
        {"cancel", 3, browsing::cancel},
        {"browse", 5, browsing::look},
        {"filter", 7, browsing::filter},
        {"range of dates", 3, browsing::rangeOfDates},
        {"search", 4, browsing::search},
        {"sort", 4, browsing::sort},
        {"totals", 4, browsing::total},
        {"details", 4, browsing::details},
        {"export", 4, browsing::exportRows},
        {"archive", 2, browsing::archive},
        {"merge", 2, browsing::merge},
        {"print", 3, browsing::printRows},
        {"statement", 7, statement},
        {"members", 4, useMembers},
        {"users", 3, useUsers},
        {"add a member", 1, addMember},
        {"add a user", 1, addUser},
        {"convert a date", 3, convertDate},
        {"about", 3, readAbout},
        {"language", 4, switchLanguage},
        {"font", 2, chooseFont},
        {"password", 2, leavePassword},
        {"compact", 1, compact},
        {"tutorial", 1, practise},
    };
    return acts;
}
