#include "browsing.h"

#include "browser_view.h"
#include "hand.h"
#include "platform/ui/data_grid.h"
#include "platform/ui/flex_grid.h"
#include "platform/ui/screen.h"
#include "player.h"
#include "story.h"

#include <QtGui/QAction>

#include <algorithm>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// Number and member of each row that is shown, in alphabetical order.
QStringList shownRows(const Screen &screen)
{
    const QStringList numbers = column(screen, u"transactionid"_s);
    const QStringList names = column(screen, u"name"_s);
    QStringList rows;
    for (int i = 0; i < numbers.size(); ++i)
        rows << numbers[i] + u' ' + names[i];
    return sorted(rows);
}

/// The same of the story's rows that are chosen.
QStringList storyRows(const Story &story, const std::function<bool(const LedgerRow &)> &isChosen)
{
    QStringList rows;
    for (const LedgerRow &row : story.ledger) {
        if (isChosen(row))
            rows << QString::number(row.transaction) + u' ' + row.name;
    }
    return sorted(rows);
}

bool isExpense(const LedgerRow &row)
{
    return row.transaction == 2;
}

QString sumsText(bool arabic, const Sums &sums)
{
    const QString lines = arabic ? u"عوائد : %1\nمصاريف : %2\n===========\nصافي : %3"_s
                                 : u"revenues : %1\nexpenses : %2\n===========\nNET : %3"_s;
    return lines.arg(sums.revenues, sums.expenses, sums.net);
}

void playSorting(Player &player, const Story &story)
{
    const auto sortByAmount = [](Screen &screen) {
        hand::doubleClickHeading(screen, "FGrid", gridOf(screen).columnOf(u"amount"_s));
    };
    player.onIdle(browser, [=](Screen &screen) {
        expect(shownRows(screen), storyRows(story, [](const LedgerRow &) { return true; }), u"the ledger"_s);
        sortByAmount(screen);
        expect(column(screen, u"amount"_s), story.amounts, u"sorted by the amount"_s);
    });
    player.onIdle(browser, [=, &player](Screen &screen) {
        sortByAmount(screen);
        QStringList falling = story.amounts;
        std::reverse(falling.begin(), falling.end());
        expect(column(screen, u"amount"_s), falling, u"sorted by the falling amount"_s);
        player.picture(screen, story.name + u"-ledger-sorted"_s);
    });
}

void playFilters(Player &player, const Story &story)
{
    chooseInBrowser(player, "mnuCredit", "mnuExpenses");
    player.onIdle(browser, [=, &player](Screen &screen) {
        expect(shownRows(screen), storyRows(story, isExpense), u"the valid expenses"_s);
        player.picture(screen, story.name + u"-ledger-expenses"_s);
        hand::chooseMenu(screen, "mnuDeletes", "mnuInValid");
    });
    player.onIdle(browser, [](Screen &screen) {
        expect(column(screen, u"name"_s), {QString()}, u"no cancelled expense: one blank row"_s);
        hand::chooseMenu(screen, "mnuDeletes", "mnuValid");
    });
    player.onIdle(browser, [=](Screen &screen) {
        expect(shownRows(screen), storyRows(story, isExpense), u"the valid expenses once more"_s);
    });
}

/// The menu's entry for a member.
QByteArray nameItem(const Screen &screen, const QString &name)
{
    for (int i = 0;; ++i) {
        QByteArray item = "mnuName_" + QByteArray::number(i);
        const auto *action = dynamic_cast<QAction *>(hand::find(screen, item.constData()));
        if (action == nullptr)
            throw std::runtime_error("no entry for " + name.toStdString());
        if (action->text() == name)
            return item;
    }
}

/// The names alone decide: revenues are shown again, too.
void playNames(Player &player, const Story &story)
{
    const QString name = story.ledger.front().name;
    player.onIdle(browser, [name](Screen &screen) {
        hand::chooseMenu(screen, "mnuNames", "mnuNone");
        hand::chooseMenu(screen, "mnuNames", nameItem(screen, name).constData());
        hand::chooseMenu(screen, "mnuNames", "mnuSelect");
    });
    player.onIdle(browser, [=](Screen &screen) {
        expect(shownRows(screen), storyRows(story, [&](const LedgerRow &row) { return row.name == name; }),
               u"the rows of "_s + name);
    });
}

/// The range leaves the expense alone and drops the names; cancelling brings all rows back.
void playDates(Player &player, const Story &story)
{
    player.onIdle(browser, [](Screen &screen) { hand::click(screen, "btnDateSelect"); });
    player.on(u"frmSelectDates"_s, [=, &player](Screen &screen) {
        hand::fill(screen, "DateFromx", story.expenseDate);
        hand::fill(screen, "DateTox", story.expenseDate);
        player.picture(screen, story.name + u"-frmSelectDates"_s);
        hand::click(screen, "cmdOK");
    });
    player.acceptMessage(u"You can Select Dates and cancel"_s);
    player.onIdle(browser, [=, &player](Screen &screen) {
        expect(shownRows(screen), storyRows(story, isExpense), u"the rows of the expense's day"_s);
        expect(column(screen, u"gtype"_s), {u"2"_s, u"2"_s, u"2"_s}, u"the kind as it is stored"_s);
        player.picture(screen, story.name + u"-ledger-dates"_s);
        hand::click(screen, "btnDateSelect");
    });
    player.click(u"frmSelectDates"_s, "cmdCancel");
    player.onIdle(browser, [=](Screen &screen) {
        expect(shownRows(screen), storyRows(story, [](const LedgerRow &) { return true; }),
               u"all rows behind the cancelled dates"_s);
    });
}

/// Forward from the row that was found last: the expense's number is found, and then the revenue's no more.
void playSearch(Player &player)
{
    player.onIdle(browser, [](Screen &screen) {
        hand::fill(screen, "txtNumber", u"2"_s);
        hand::click(screen, "btnSearch");
        hand::fill(screen, "txtNumber", u"1\n"_s);
    });
    player.acceptMessage(u"Not Found"_s);
}

void playTotals(Player &player, const Story &story)
{
    const QString name = story.ledger.front().name;
    player.onIdle(browser, [=](Screen &screen) {
        const FlexGrid &grid = gridOf(screen);
        const int row = int(column(screen, u"name"_s).indexOf(name)) + grid.fixedRows();
        hand::clickCell(screen, "FGrid", row, grid.columnOf(u"name"_s));
        hand::clickCell(screen, "FGrid", row, grid.columnOf(u"name"_s), Qt::RightButton);
        hand::choosePopup(screen, "mnuTotal");
    });
    player.acceptMessage((story.arabic ? u"المجموع لــ "_s : u"Totals for "_s) + name + u'\n' +
                             sumsText(story.arabic, story.firstSums),
                         story.name + u"-totals"_s);
    chooseInBrowser(player, "mnuDeletes", "mnuTotals");
    player.acceptMessage(sumsText(story.arabic, story.sums));
}

void playDetails(Player &player, const Story &story)
{
    player.onIdle(browser, [](Screen &screen) {
        expect(column(screen, u"transactionid"_s), {u"1"_s, u"2"_s}, u"the general table by its dates"_s);
        const int number = gridOf(screen).columnOf(u"transactionid"_s);
        hand::clickCell(screen, "FGrid", 2, number);
        hand::clickCell(screen, "FGrid", 2, number, Qt::RightButton);
        hand::choosePopup(screen, "mnuDetails");
    });
    player.onIdle(browser, [=, &player](Screen &screen) {
        constexpr int nameColumn = 1;
        constexpr int amountColumn = 4;
        const auto &shares = dynamic_cast<DataGrid &>(hand::reach(screen, "DGrid"));
        QStringList found;
        for (int row = 1; row <= shares.rowCount(); ++row)
            found << shares.cellText(nameColumn, row) + u' ' + shares.cellText(amountColumn, row);
        QStringList expected;
        for (const LedgerRow &row : story.ledger) {
            if (isExpense(row))
                expected << row.name + u' ' + row.amount;
        }
        expect(sorted(found), sorted(expected), u"the shares of the expense"_s);
        player.picture(screen, story.name + u"-general-details"_s);
        hand::click(screen, "cmdRefresh");
    });
    player.onIdle(browser, [](Screen &screen) {
        expect(column(screen, u"transactionid"_s), {u"1"_s, u"2"_s}, u"the general table read anew"_s);
    });
}

} // namespace

void playBrowsers(Player &player, const Story &story)
{
    player.click(u"frmMain"_s, "Command3");
    player.click(u"frmChanges"_s, "Command10");
    playSorting(player, story);
    playFilters(player, story);
    playNames(player, story);
    playDates(player, story);
    playSearch(player);
    playTotals(player, story);
    closeBrowser(player);
    player.click(u"frmChanges"_s, "Command3");
    playDetails(player, story);
    closeBrowser(player);
    player.click(u"frmChanges"_s, "Command9");
}
