#include "browser_fixture.h"

#include <QtGui/QAction>

// What a browser sums up, and the shares of one transaction.

namespace
{

class SharesTest : public BrowserFixture
{
protected:
    /// The current cell's text of each column of the details grid in a row.
    static QString detailsOf(const Screen &screen, int row)
    {
        const auto &grid = control<DataGrid>(screen, "DGrid");
        QStringList texts;
        for (int i = 0; i < grid.columnCount(); ++i)
            texts << grid.cellText(i, row);
        return texts.join(u'|');
    }
};

// --- totals

TEST_F(SharesTest, TotalsTheValidRowsWhateverIsChosen)
{
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        const auto in = [&](const QString &english, const QString &ar) { return arabic ? ar : english; };
        const QString all = in(u"revenues : 350.00\r\nexpenses : 90.50\r\n===========\r\nNET : 259.50"_s,
                               u"عوائد : 350.00\r\nمصاريف : 90.50\r\n===========\r\nصافي : 259.50"_s);
        const QString omar = in(u"Totals for Omar\r\nexpenses : 0.50\r\n===========\r\nNET :  * -0.50"_s,
                                u"المجموع لــ Omar\r\nمصاريف : 0.50\r\n===========\r\nصافي :  * -0.50"_s);
        const auto ledger = browse(u"ledger"_s);
        const auto general = browse(u"general"_s);
        tells(all, entry(*ledger, "mnuTotals"));
        tells(all, entry(*general, "mnuTotals"));
        tells(all, entry(*general, "mnuTotal")); // without a picked row
        tells(in(u"you have to select first!"_s, u"يجب الإختيار أولاً"_s), entry(*ledger, "mnuTotal"));
        chooseMenu(*ledger, "mnuExpenses"); // and valid ones
        pick(*ledger, 3, u"ddate"_s);
        tells(omar, entry(*ledger, "mnuTotal"));
        tells(all, entry(*ledger, "mnuTotals"));
        chooseMenu(*ledger, "mnuInValid");
        chooseMenu(*ledger, "mnuTotals"); // no rows shown
        chooseMenu(*ledger, "mnuBothCreditOrDebit");
        dialogs.expectMessage(
            in(u"This total does NOT include the Invalids"_s, u"هذا المجموع لا يحتوي على الملغيات"_s));
        tells(all, entry(*ledger, "mnuTotals"));
        for (const auto &[own, top, answer] : {std::tuple(1, 2, QString()), {2, 2, all}}) {
            engine.userRank = own;
            engine.topUserRank = top;
            tells(answer, entry(*general, "mnuTotals"));
        }
        engine.topUserRank.reset();
    }
    execute({u"insert into ledger (name,valid,creditordebit,amount) values ('Omar',true,true,0.5)"_s,
             u"insert into ledger (name,valid,creditordebit,amount) values ('O''Hara',true,true,0.0001)"_s});
    setLanguage(false);
    const auto ledger = browse(u"ledger"_s);
    pick(*ledger, 8, u"name"_s);
    tells(u"Totals for Omar\r\nrevenues : 0.50\r\nexpenses : 0.50\r\n===========\r\nNET : 0.00"_s,
          entry(*ledger, "mnuTotal"));
    pick(*ledger, 9, u"name"_s);
    dialogs.expectAnyMessage();
    chooseMenu(*ledger, "mnuTotal");
    EXPECT_TRUE(dialogs.shown().back().text.startsWith(u"Syntax error"_s));
}

// --- details

TEST_F(SharesTest, ShowsTheSharesUnderTheirTransaction)
{
    execute({u"select * into [ledger1] from [ledger] where transactionid=3"_s,
             u"delete from ledger where transactionid=3"_s, u"delete from ledger where transactionid=4"_s});
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        const auto screen = browse(u"general"_s);
        auto &grid = control<DataGrid>(*screen, "DGrid");
        pick(*screen, 2, u"amount"_s);
        chooseMenu(*screen, "mnuDetails");
        EXPECT_TRUE(isShown(*screen, "DGrid"));
        EXPECT_EQ(grid.rowCount(), 2);
        EXPECT_EQ(
            detailsOf(*screen, 2),
            arabic
                ? u"4|Sara|2|عوائد|150|راتب|350|2004/03/15|08:00:00 2004/01/05|agent|ساري|note|paid|cash"_s
                : u"4|Sara|2|Revenue|150|Salary|350|2004/03/15|08:00:00 2004/01/05|agent|Valid|note|paid|cash"_s);
        EXPECT_EQ(grid.caption(3), arabic ? u"له أو عليه"_s : u"creditordebit"_s);
        chooseMenu(*screen, "mnuDetails");
        EXPECT_FALSE(isShown(*screen, "DGrid"));
        pick(*screen, 3, u"amount"_s);
        chooseMenu(*screen, "mnuDetails"); // in the archive
        EXPECT_TRUE(isShown(*screen, "DGrid"));
        EXPECT_EQ(detailsOf(*screen, 1).section(u'|', 1, 3), arabic ? u"Ali|3|عوائد"_s : u"Ali|3|Revenue"_s);
        pick(*screen, 3, u"ddate"_s);
        EXPECT_FALSE(isShown(*screen, "DGrid"));
        chooseMenu(*screen, "mnuDetails");
        control<DataGrid>(*screen, "DGrid").setFocus();
        control(*screen, "txtNumber").setFocus();
        EXPECT_FALSE(isShown(*screen, "DGrid"));
        pick(*screen, 4, u"amount"_s);
        fails(u"Operation is not allowed when the object is closed."_s, entry(*screen, "mnuDetails"));
    }
}

} // namespace
