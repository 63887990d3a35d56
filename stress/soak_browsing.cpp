#include "stress/soak_browsing.h"

#include "platform/ui/flex_grid.h"
#include "platform/ui/screen.h"
#include "stress/soak_hand.h"
#include "walkthrough/hand.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QScrollBar>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr const char *ledgerButton = "Command10";
constexpr const char *generalButton = "Command3";
constexpr const char *auditButton = "Command7";

void browse(Screen &mainScreen, const char *button, const SoakUser::Action &use)
{
    useScreen(mainScreen, button, "frmUniversalGrid", use);
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

const char *someTable(SoakUser &user)
{
    constexpr const char *buttons[] = {ledgerButton, generalButton, auditButton, "Command6", "Command5"};
    return buttons[user.pick(5)];
}

void cancelDates(Screen &screen, SoakUser &user)
{
    user.onModal("frmSelectDates", [](Screen &dates) { hand::click(dates, "cmdCancel"); });
    hand::click(screen, "btnDateSelect");
}

} // namespace

namespace browsing
{

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

void printRows(Screen &mainScreen, SoakUser &user, SoakBooks &)
{
    browse(mainScreen, user.oneIn(2) ? ledgerButton : generalButton, [&](Screen &browser) {
        user.onModal("ReportPreview", [&](Screen &preview) { readReport(preview, user); });
        hand::click(browser, "btnPrint");
    });
}

} // namespace browsing
