#include "stress/soak_acts.h"

#include "core/engine.h"
#include "platform/ui/application.h"
#include "platform/ui/bound_grid.h"
#include "platform/ui/flex_grid.h"
#include "platform/ui/screen.h"
#include "walkthrough/hand.h"

#include <QtCore/QDate>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QScrollBar>

#include <algorithm>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace
{

using Use = std::function<void(Screen &)>;

constexpr int familySize = 4; // of the template

Screen &loaded(const char *name)
{
    for (Screen *screen : Screen::loadedScreens()) {
        if (screen->objectName() == QLatin1StringView(name))
            return *screen;
    }
    throw std::runtime_error(std::string("no ") + name + " was opened");
}

/// Opens a screen of the modifications menu, and closes both behind.
void useScreen(Screen &mainScreen, const char *button, const char *name, const Use &use)
{
    hand::click(mainScreen, "Command3");
    Screen &changes = loaded("frmChanges");
    hand::click(changes, button);
    Screen &screen = loaded(name);
    use(screen);
    hand::click(screen, "cmdClose");
    hand::click(changes, "Command9");
}

/// Some day of 2004 as it is typed.
QString someDay(SoakUser &user)
{
    return u"%1/%2/2004"_s.arg(1 + user.pick(28), 2, 10, QChar(u'0'))
        .arg(1 + user.pick(12), 2, 10, QChar(u'0'));
}

QString someText(SoakUser &user)
{
    const QString texts[] = {u"planted %1"_s, u"planted rent of house %1"_s, u"planted إيجار العمارة %1"_s};
    return texts[user.pick(3)].arg(user.pick(1'000'000));
}

void chooseSome(Screen &screen, SoakUser &user, const char *combo)
{
    const auto &box = dynamic_cast<QComboBox &>(hand::reach(screen, combo));
    hand::choose(screen, combo, box.itemText(user.pick(box.count())));
}

/// What the last export left: a whole file of its kind.
void expectFile(const SoakUser &user)
{
    QFile file(user.lastFile);
    if (!file.open(QFile::ReadOnly) || file.size() == 0)
        throw std::runtime_error("nothing was saved at " + user.lastFile.toStdString());
    if (user.lastFile.endsWith(u".pdf") && !file.read(5).startsWith("%PDF-"))
        throw std::runtime_error("no PDF at " + user.lastFile.toStdString());
}

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

// --- the browser

constexpr const char *ledgerButton = "Command10";
constexpr const char *generalButton = "Command3";
constexpr const char *auditButton = "Command7";

void browse(Screen &mainScreen, const char *button, const Use &use)
{
    useScreen(mainScreen, button, "frmUniversalGrid", use);
}

FlexGrid &gridOf(Screen &browser)
{
    return dynamic_cast<FlexGrid &>(hand::reach(browser, "FGrid"));
}

/// A row in view, and a second one beside it.
std::pair<int, int> someRows(Screen &browser, SoakUser &user)
{
    constexpr int inView = 6;
    const int count = std::min(gridOf(browser).rows() - 1, inView);
    const int first = user.pick(count);
    return {1 + first, 1 + (first + 1) % count};
}

/// Brings a column into view by the bar below the grid.
int columnInView(Screen &browser, const QString &field)
{
    FlexGrid &grid = gridOf(browser);
    QScrollBar &bar = *grid.horizontalScrollBar();
    const int column = grid.columnOf(field);
    for (const int place : {bar.value(), bar.minimum(), bar.maximum()}) {
        bar.setValue(place);
        if (!grid.cellRect(1, column).isEmpty())
            break;
    }
    return column;
}

void correct(Screen &mainScreen, SoakUser &user, SoakBooks &books)
{
    browse(mainScreen, generalButton, [&](Screen &browser) {
        hand::chooseMenu(browser, "mnuPopup", "mnuModify");
        const QString fields[] = {u"transactiondetail"_s, u"paymentdetail"_s};
        const int column = columnInView(browser, fields[user.pick(2)]);
        const auto [row, other] = someRows(browser, user);
        hand::clickCell(browser, "FGrid", row, column);
        hand::doubleClickCell(browser, "FGrid", row, column);
        hand::fill(browser, "Text1", someText(user));
        hand::clickCell(browser, "FGrid", other, column);
        user.expectTold(u"Update successful"_s);
        ++books.audited;
    });
}

void cancel(Screen &mainScreen, SoakUser &user, SoakBooks &books)
{
    browse(mainScreen, generalButton, [&](Screen &browser) {
        const int column = columnInView(browser, u"transactionid"_s);
        hand::clickCell(browser, "FGrid", someRows(browser, user).first, column);
        hand::chooseMenu(browser, "mnuPopup", "mnuDelete");
        user.expectTold(u"Do you want to delete??"_s);
        ++books.audited;
    });
}

const char *someTable(SoakUser &user)
{
    constexpr const char *buttons[] = {ledgerButton, generalButton, auditButton, "Command6", "Command5"};
    return buttons[user.pick(5)];
}

void look(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    browse(mainScreen, someTable(user), [&](Screen &browser) {
        hand::click(browser, "cmdRefresh");
        hand::pressKey(gridOf(browser), user.oneIn(2) ? Qt::Key_End : Qt::Key_PageDown);
    });
}

void filter(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    struct Item {
        const char *menu;
        const char *entry;
    };
    constexpr Item items[] = {{"mnuDeletes", "mnuInValid"},   {"mnuDeletes", "mnuValid"},
                              {"mnuDeletes", "mnuBothValid"}, {"mnuCredit", "mnuExpenses"},
                              {"mnuCredit", "mnuRevenues"},   {"mnuCredit", "mnuBothCreditOrDebit"}};
    const bool ledger = user.oneIn(2);
    browse(mainScreen, ledger ? ledgerButton : generalButton, [&](Screen &browser) {
        for (int i = 0; i < 4; ++i) {
            const Item &item = items[user.pick(6)];
            hand::chooseMenu(browser, item.menu, item.entry);
        }
        if (!ledger)
            return;
        hand::chooseMenu(browser, "mnuNames", user.oneIn(4) ? "mnuAll" : "mnuNone");
        hand::chooseMenu(browser, "mnuNames", ("mnuName_" + std::to_string(user.pick(4))).c_str());
        hand::chooseMenu(browser, "mnuNames", "mnuSelect");
    });
}

void chooseDates(Screen &screen, SoakUser &user, const QString &from, const QString &to)
{
    user.onModal("frmSelectDates", [=](Screen &dates) {
        hand::fill(dates, "DateFromx", from);
        hand::fill(dates, "DateTox", to);
        hand::click(dates, "cmdOK");
    });
    hand::click(screen, "btnDateSelect");
}

void cancelDates(Screen &screen, SoakUser &user)
{
    user.onModal("frmSelectDates", [](Screen &dates) { hand::click(dates, "cmdCancel"); });
    hand::click(screen, "btnDateSelect");
}

void rangeOfDates(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    browse(mainScreen, user.oneIn(2) ? ledgerButton : generalButton, [&](Screen &browser) {
        chooseDates(browser, user, u"01/0%1/2004"_s.arg(1 + user.pick(6)), u"31/12/2004"_s);
        if (user.oneIn(2))
            cancelDates(browser, user);
    });
}

void search(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    browse(mainScreen, user.oneIn(2) ? ledgerButton : generalButton, [&](Screen &browser) {
        hand::fill(browser, "txtNumber", QString::number(1 + user.pick(40)));
        hand::click(browser, "btnSearch");
    });
}

void sort(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    browse(mainScreen, user.oneIn(2) ? ledgerButton : generalButton, [&](Screen &browser) {
        const QString fields[] = {u"amount"_s, u"ddate"_s, u"transactiondetail"_s, u"transactionid"_s};
        const int column = columnInView(browser, fields[user.pick(4)]);
        for (int i = user.pick(3); i >= 0; --i)
            hand::doubleClickHeading(browser, "FGrid", column);
    });
}

void total(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    const bool ledger = user.oneIn(2);
    browse(mainScreen, ledger ? ledgerButton : generalButton, [&](Screen &browser) {
        if (ledger) {
            const int column = columnInView(browser, u"name"_s);
            hand::clickCell(browser, "FGrid", someRows(browser, user).first, column);
            hand::clickCell(browser, "FGrid", someRows(browser, user).first, column, Qt::RightButton);
            hand::choosePopup(browser, "mnuTotal");
        }
        hand::chooseMenu(browser, "mnuDeletes", "mnuTotals");
    });
}

void details(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    browse(mainScreen, generalButton, [&](Screen &browser) {
        const int column = columnInView(browser, u"transactionid"_s);
        hand::clickCell(browser, "FGrid", someRows(browser, user).first, column);
        hand::chooseMenu(browser, "mnuPopup", "mnuDetails");
        if (user.oneIn(2))
            hand::click(browser, "cmdRefresh");
    });
}

void exportRows(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    browse(mainScreen, user.oneIn(2) ? ledgerButton : generalButton,
           [](Screen &browser) { hand::click(browser, "cmdExcell"); });
    user.expectTold(u"Export complete.."_s);
    expectFile(user);
}

// --- archives

/// The audit rows are selected by the day of the change, 15 March, and moved by the day of the entry.
void archive(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    browse(mainScreen, auditButton, [&](Screen &browser) {
        chooseDates(browser, user, u"01/0%1/2004"_s.arg(1 + user.pick(3)),
                    u"31/%1/2004"_s.arg(user.oneIn(2) ? u"05"_s : u"12"_s));
        hand::chooseMenu(browser, "mnuArchiving", "mnuArchive");
        if (!user.wasTold(u"There is nothing to Archive!"_s))
            user.expectTold(u"Archiving Finished"_s);
    });
}

void merge(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    browse(mainScreen, auditButton, [&](Screen &browser) {
        if (!hand::isShown(browser, "ArchivesList"))
            return;
        const auto &list = dynamic_cast<QComboBox &>(hand::reach(browser, "ArchivesList"));
        hand::choose(browser, "ArchivesList", list.itemText(1 + user.pick(list.count() - 1)));
        hand::chooseMenu(browser, "mnuArchiving", "mnuDeArchive");
        if (!user.wasTold(u"There is nothing to DeArchive!"_s))
            user.expectTold(u"DeArchiving Finished"_s);
    });
}

// --- reports

/// Turns the pages of a report, and now and then puts it out.
void readReport(Screen &preview, SoakUser &user)
{
    constexpr const char *buttons[] = {"cmdNext",    "cmdLast",     "cmdPrevious", "cmdFirst",
                                       "cmdZoomOut", "cmdFitWidth", "cmdFitPage",  "cmdZoomIn"};
    for (int i = user.pick(4); i > 0; --i)
        hand::click(preview, buttons[user.pick(8)]);
    if (user.oneIn(3)) {
        hand::click(preview, user.oneIn(4) ? "cmdPrint" : "cmdSave");
        expectFile(user);
    }
    hand::click(preview, "cmdClose");
}

void printRows(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    browse(mainScreen, user.oneIn(2) ? ledgerButton : generalButton, [&](Screen &browser) {
        user.onModal("ReportPreview", [&](Screen &preview) { readReport(preview, user); });
        hand::click(browser, "btnPrint");
    });
}

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
        {"correct", 8, correct},
        {"cancel", 3, cancel},
        {"browse", 5, look},
        {"filter", 7, filter},
        {"range of dates", 3, rangeOfDates},
        {"search", 4, search},
        {"sort", 4, sort},
        {"totals", 4, total},
        {"details", 4, details},
        {"export", 4, exportRows},
        {"archive", 2, archive},
        {"merge", 2, merge},
        {"print", 3, printRows},
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
