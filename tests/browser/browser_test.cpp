#include "browser_fixture.h"
#include "platform/database/engine.h"
#include "platform/database/session.h"
#include "platform/ui/wait.h"

#include <QtGui/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>

namespace
{

class BrowserTest : public BrowserFixture
{
protected:
    const QString refused =
        u"Arguments are of the wrong type, are out of acceptable range, or are in conflict with one another."_s;
};

// --- loading

TEST_F(BrowserTest, AllowsWhatTheTableAllows)
{
    const struct {
        QString table, english, arabic, enabled, visible;
        bool popup;
        QString columns;
    } modes[] = {
        {u"general"_s, u"general"_s, u"العًام"_s,
         u"cmdAdd mnuDelete mnuModify mnuDetails mnuTotal mnuDeletes mnuCredit mnuArchiving"_s,
         u"cmdAdd mnuDelete mnuCredit"_s, true,
         u"transactionid|amount|ddate|creditordebit|gtype|valid|enteredon|enteredby|transactiondetail|paymentdetail|paymentmethod|lastupdate"_s},
        {u"ledger"_s, u"ledger"_s, u"السجٍل"_s, u"mnuTotal mnuDeletes mnuCredit mnuArchiving mnuNames"_s,
         u"mnuCredit mnuNames"_s, true,
         u"id|name|transactionid|creditordebit|amount|gtype|totalamount|ddate|enteredon|enteredby|valid|transactiondetail|paymentdetail|paymentmethod"_s},
        {u"audit_general"_s, u"audit_general"_s, u"audit_general"_s, u"mnuArchiving"_s, u"mnuCredit"_s, false,
         u"idkey|id|transactionid|amount|ddate|creditordebit|gtype|valid|enteredon|enteredby|transactiondetail|paymentdetail|paymentmethod|lastupdate"_s},
        {u"audit_members"_s, u"audit_members"_s, u"تحديثات أفراد العائله"_s, u"mnuArchiving"_s, u""_s, false,
         u"idkey|name|sex|title|relation|dob|group|lastupdate|updatedon|updatedby|updatetype"_s},
        {u"audit_users"_s, u"audit_users"_s, u"تحديثات المستخدمين"_s, u"mnuArchiving"_s, u""_s, false,
         u"IDkey|id|userid|name|rank|lastlogin|createdon|createdby|updatedon|updatedby|updatetype"_s},
    };
    const QString commands = modes[0].enabled + u" mnuNames"_s;
    const QString parts =
        u"cmdAdd mnuDelete mnuCredit mnuNames DGrid Text1 Combo1 dtpDate ArchivesList DateFromx"_s;
    for (const auto &mode : modes) {
        setLanguage(true);
        EXPECT_EQ(browse(mode.table)->caption(), mode.arabic);
        setLanguage(false);
        const auto screen = browse(mode.table);
        EXPECT_EQ(screen->caption(), mode.english);
        EXPECT_EQ(line(*screen, 0), mode.columns);
        const auto those = [&screen](bool (*are)(const Screen &, const char *), const QString &names) {
            QStringList left = names.split(u' ');
            left.removeIf([&](const QString &name) { return !are(*screen, name.toLatin1().constData()); });
            return left.join(u' ');
        };
        EXPECT_EQ(those(isEnabled, commands), mode.enabled);
        EXPECT_EQ(those(isShown, parts), mode.visible);
        EXPECT_TRUE(control<QAction>(*screen, "mnuValid").isChecked());
        EXPECT_FALSE(control<QAction>(*screen, "mnuBothValid").isChecked());
        EXPECT_TRUE(control<QAction>(*screen, "mnuBothCreditOrDebit").isChecked());
        hand::pressKey(gridOf(*screen), Qt::Key_Menu);
        auto &popup = control<QMenu>(*screen, "mnuPopup");
        EXPECT_EQ(popup.isVisible(), mode.popup);
        popup.close();
        screen->unload();
    }
}

TEST_F(BrowserTest, ShowsAllRowsByTheirFormatsAsWideAsTheirTexts)
{
    execute({u"insert into ledger (name,creditordebit,amount,ddate) values ('x',true,-1234567.895,null)"_s});
    const struct {
        bool arabic, bold;
        QString third, invalid, last, count, heading;
    } cases[] = {
        {false, true,
         u"3|Ali|2|Credit|200.00|Salary|350.00|2004/03/15 13:05:09|2004/01/05 08:00:00|agent|YES|note|paid|cash"_s,
         u"5|Ali|3|Credit|600.00|Salary|1,000.00|2004/12/31|2004/01/05 08:00:00|agent|NO|note|paid|cash"_s, // at half past midnight
         u"8|x||Credit|-1,234,567.90||||||NO|||"_s, u"Totals : 8"_s, u"creditordebit"_s},
        {true, false,
         u"3|Ali|2|له|200.00|راتب|350.00|2004/03/15 13:05:09|2004/01/05 08:00:00|agent|نعم|note|paid|cash"_s,
         u"5|Ali|3|له|600.00|راتب|1,000.00|2004/12/31|2004/01/05 08:00:00|agent|لا|note|paid|cash"_s,
         u"8|x||له|-1,234,567.90||||||لا|||"_s, u"المجموع 8"_s, u"له أو عليه"_s}};
    for (const auto &c : cases) {
        setLanguage(c.arabic);
        engine.userFontBold = c.bold;
        const auto screen = browse(u"ledger"_s);
        const FlexGrid &grid = gridOf(*screen);
        EXPECT_EQ(line(*screen, 3), c.third);
        EXPECT_EQ(line(*screen, 5), c.invalid);
        EXPECT_EQ(line(*screen, 8), c.last);
        EXPECT_EQ(textOf(*screen, "Label1"), c.count);
        EXPECT_EQ(grid.textMatrix(0, grid.columnOf(u"creditordebit"_s)), c.heading);
        EXPECT_TRUE(grid.horizontalHeader()->font().bold());
        for (int column = grid.fixedCols(); column < grid.cols(); ++column) {
            int widest = grid.horizontalHeader()->fontMetrics().horizontalAdvance(grid.textMatrix(0, column));
            for (int row = grid.fixedRows(); row < grid.rows(); ++row)
                widest = qMax(widest, grid.fontMetrics().horizontalAdvance(grid.textMatrix(row, column)));
            EXPECT_EQ(grid.colWidth(column), 15 * widest + 120) << column;
        }
        screen->unload();
    }
    execute({u"delete from ledger"_s, u"delete from members"_s});
    const auto empty = browse(u"ledger"_s);
    EXPECT_EQ(textOf(*empty, "Label1"), u"المجموع 0"_s);
    EXPECT_EQ(control<QMenu>(*empty, "mnuSelection").actions().size(), 1);
    EXPECT_FALSE(control<QAction>(*empty, "mnuName_0").isChecked());
    EXPECT_EQ(textOf(*empty, "mnuName_0"), u"الإسم"_s);
}

TEST_F(BrowserTest, SurvivesWhatTheUserDoesInTheMiddleOfItsWork)
{
    engine.browseTable = u"ledger"_s;
    auto *closed = new frmUniversalGrid;
    later([&] { click(*closed, "cmdClose"); });
    closed->showModeless();
    EXPECT_TRUE(Screen::loadedScreens().isEmpty());

    std::unique_ptr<frmUniversalGrid> second;
    later([&] { second = browse(u"general"_s); });
    const auto first = browse(u"ledger"_s);
    EXPECT_EQ(textOf(*first, "Label1") + textOf(*second, "Label1"), u"Totals : 7Totals : 4"_s);
    EXPECT_EQ(first->caption() + second->caption(), u"ledgergeneral"_s);
    serveEvents();
    EXPECT_EQ(QApplication::activeWindow(), second.get()); // which came to the front meanwhile

    later([&] { chooseMenu(*first, "mnuExpenses"); }); // while the columns are fitted
    chooseMenu(*first, "mnuInValid");
    EXPECT_EQ(textOf(*first, "Label1"), u"Totals : 0"_s);
    later([&] { gridOf(*first).moveColumn(1, 5); });
    chooseMenu(*first, "mnuBothValid");
    EXPECT_EQ(line(*first, 1),
              u"Ali|1|Debit|45.00|1|Salary|90.00|2004/01/01|2004/01/05 08:00:00|agent|YES|note|paid|cash"_s);
    EXPECT_EQ(gridOf(*first).colWidth(5),
              120 + gridOf(*first).horizontalHeader()->fontMetrics().horizontalAdvance(u"id"_s) * 15);
    later([&] { first->unload(); });
    chooseMenu(*first, "mnuBothCreditOrDebit");
    EXPECT_EQ(Screen::loadedScreens(), QList<Screen *>{second.get()});
    chooseMenu(*second, "mnuRevenues");
    EXPECT_EQ(column(*second, u"transactionid"_s), u"2"_s);
}

TEST_F(BrowserTest, KeepsPickAndEditorWithTheirColumnAndSurvivesClosingInASave)
{
    const QString field = u"transactiondetail"_s;
    const auto type = [&](Screen &screen) {
        gridOf(screen).setFocus();
        gridOf(screen).setCell(2, gridOf(screen).columnOf(field));
        hand::pressKey(gridOf(screen), Qt::Key_F2);
        hand::fill(*screen.focusWidget(), u"typed"_s);
    };
    for (const bool ranged : {false, true}) {
        const auto screen = browse(u"general"_s);
        FlexGrid &grid = gridOf(*screen);
        const auto isPicked = [&](const QString &name) {
            const int section = grid.horizontalHeader()->logicalIndex(grid.columnOf(name));
            return grid.model()->index(1, section).data(Qt::BackgroundRole).value<QColor>() ==
                   grid.palette().color(QPalette::Highlight);
        };
        pick(*screen, 2, u"amount"_s);
        grid.moveColumn(grid.columnOf(u"amount"_s), 5);
        EXPECT_TRUE(isPicked(u"amount"_s));
        pick(*screen, 2, u"valid"_s);
        EXPECT_TRUE(isPicked(u"valid"_s) && !isPicked(u"amount"_s));
        dialogs.expectMessage(u"You can make changes now"_s);
        chooseMenu(*screen, "mnuModify");
        if (ranged) {
            dialogs.expectAnyMessage();
            selectDates(*screen, u"01/01/2004"_s, u"31/12/2004"_s);
        }
        type(*screen);
        grid.moveColumn(grid.columnOf(field), 2);
        hand::pressKey(*screen, Qt::Key_Return);
        EXPECT_EQ(grid.fieldName(2) + column(*screen, field).left(10), field + u"note typed"_s);

        grid.setCell(1, 2);
        dialogs.expectNo(engine.textSaveChanges).meanwhile([&] {
            // While the rows that the answer reads anew are fitted.
            later([&] { ranged ? selectDates(*screen) : screen->unload(); });
        });
        if (ranged)
            screen->unload();
        else
            hand::pressKey(grid, Qt::Key_F3); // on the heading: edits the current row
        EXPECT_FALSE(screen->isLoaded());
    }
}

// --- order and place of rows

TEST_F(BrowserTest, SortsByTheShownTextsAndSearchesFromTheCurrentRow)
{
    for (int number = 5; number <= 60; ++number)
        post(number, true, true, u"%1"_s.arg(2000 - number), u"01/02/2005"_s, {});
    execute(
        {u"insert into audit_users (id,userid,password,name,updatetype) values (1,'a','b','c','Added')"_s});
    const auto screen = browse(u"general"_s);
    FlexGrid &grid = gridOf(*screen);
    const auto ends = [&] {
        return line(*screen, 1).section(u'|', 1, 1) + u' ' + line(*screen, 60).section(u'|', 1, 1);
    };
    pick(*screen, 2, u"ddate"_s);
    for (const QString &expected : {u"0.50 1,995.00"_s, u"1,995.00 0.50"_s, u"0.50 1,995.00"_s}) {
        sortBy(*screen, u"amount"_s);
        EXPECT_EQ(ends(), expected);
    }
    sortBy(*screen, u"ddate"_s);
    EXPECT_EQ(ends(), u"90.00 1,995.00"_s); // equal ones stay in the order of the amounts
    click(*screen, "cmdRefresh");           // back in the set's order
    EXPECT_EQ(ends(), u"90.00 1,940.00"_s);
    sortBy(*screen, u"ddate"_s);
    EXPECT_EQ(ends(), u"1,995.00 90.00"_s);
    click(*screen, "cmdRefresh");

    const QString notNumeric = u"Use numbers please..   فضلاُ أدخل الرقم المطلوب"_s;
    const QString notFound = u"Not Found لا أستطيع العثور على هذا الرقم"_s;
    const std::tuple<QString, int, QString> searches[] = {{u""_s, 1, notNumeric},
                                                          {u"twenty"_s, 1, notNumeric},
                                                          {QString(10000, u'9'), 1, notNumeric},
                                                          {u"1e300"_s, 1, notNumeric},
                                                          {u"20"_s, 20, u""_s},
                                                          {u"3"_s, 20, notFound}, // it lies above
                                                          {u"2e1"_s, 20, u""_s},
                                                          {u"922337203685477"_s, 20, notFound},
                                                          {u"٢٥"_s, 25, u""_s}};
    paste(*screen, "txtNumber", u"1,000"_s);
    fails(refused, [&] { click(*screen, "btnSearch"); });
    for (const auto &[text, top, answer] : searches) {
        paste(*screen, "txtNumber", text);
        tells(answer, [&] { click(*screen, "btnSearch"); });
        EXPECT_EQ(grid.topRow(), top);
        EXPECT_EQ(screen->focusWidget()->objectName() == u"txtNumber", answer == notNumeric)
            << text.left(30).toStdString();
    }
    chooseMenu(*screen, "mnuBothValid");
    chooseMenu(*screen, "mnuValid"); // from the first row on again, without the third transaction
    typeText(*screen, "txtNumber", u"\n"_s);
    tells(notFound, [&] { fill(*screen, "txtNumber", u"3\n"_s); });
    const auto audit = browse(u"audit_users"_s);
    fill(*audit, "txtNumber", u"1"_s);
    fails(u"Item cannot be found in the collection corresponding to the requested name or ordinal."_s,
          [&] { click(*audit, "btnSearch"); });
    chooseMenu(*screen, "mnuInValid"); // the other browser goes on
    EXPECT_EQ(line(*screen, 1).section(u'|', 0, 0), u"3"_s);
}

TEST_F(BrowserTest, ShowsARangeOfDaysWithAllStoredColumns)
{
    const QString notice =
        u"You can Select Dates and cancel to get back the unarchived items..\r\nتستطيع ضغط تحديد تواريخ ثم الإلغاء للعوده للمواد اللتي لم تَأرشف"_s;
    const auto screen = browse(u"general"_s);
    const auto numbers = [&] { return column(*screen, u"transactionid"_s); };
    const auto range = [&] {
        return isShown(*screen, "DateFromx")
                   ? textOf(*screen, "DateFromx") + u'-' + textOf(*screen, "DateTox")
                   : u"none"_s;
    };
    selectDates(*screen);
    EXPECT_EQ(numbers() + range(), u"1 2 3 4none"_s);
    chooseMenu(*screen, "mnuInValid");
    dialogs.expectMessage(notice).withIcon(MessageIcon::Information);
    selectDates(*screen, u"01/01/2004"_s, u"15/03/2004"_s); // both ends belong to it, whatever the hour
    EXPECT_EQ(numbers() + range(), u"1 201/01/2004-15/03/2004"_s);
    EXPECT_EQ(line(*screen, 2),
              u"2|2|YES|Credit|350.00|2004/03/15 13:05:09|2004/01/05 08:00:00|agent|note|paid|cash|13|"_s);
    chooseMenu(*screen, "mnuInValid"); // still marked, so that it does nothing
    EXPECT_EQ(numbers(), u"1 2"_s);
    chooseMenu(*screen, "mnuExpenses");
    EXPECT_EQ(textOf(*screen, "Label1"), u"Totals : 0"_s);
    dialogs.expectMessage(notice);
    selectDates(*screen, u"02/01/2004"_s, u"31/12/2004"_s);
    EXPECT_EQ(numbers(), u"2 3"_s);
    selectDates(*screen); // back to the first range, which is not in force any more
    EXPECT_EQ(numbers() + range(), u"1 2none"_s);
    selectDates(*screen);
    click(*screen, "cmdRefresh");
    EXPECT_EQ(numbers(), u"1 2"_s);
    execute(
        {u"insert into audit_members (name,valid,updatedon,updatetype) values ('a',true,'05/02/2004 10:00:00','Added')"_s});
    const auto audit = browse(u"audit_members"_s);
    dialogs.expectMessage(notice);
    selectDates(*audit, u"05/02/2004"_s, u"05/02/2004"_s);
    EXPECT_EQ(line(*audit, 1), u"1|a||||||YES||2004/02/05 10:00:00||Added"_s);
}
// --- archives

TEST_F(BrowserTest, ShowsAnArchiveThatIsPicked)
{
    const QString question =
        u"Are you sure you want to load this archive?  هل أنت متأكد بأنك تريد مراجعة هذا الإرشيف؟"_s;
    const QString archive = u"ledger1 : 31/12/2004 - 01/01/2004"_s;
    execute(
        {u"select * into [ledger1] from [ledger] where transactionid<=3"_s,
         u"insert into archives ([table],[archive],[interval]) values('ledger','ledger1','31/12/2004 - 01/01/2004')"_s});
    const auto screen = browse(u"ledger"_s);
    const auto rows = [&] { return textOf(*screen, "Label1") + u' ' + screen->caption(); };
    pick(*screen, 1, u"name"_s);
    dialogs.expectNo(question);
    choose(*screen, "ArchivesList", archive);
    EXPECT_EQ(rows(), u"Totals : 7 ledger"_s);
    chooseMenu(*screen, "mnuInValid");
    dialogs.expectYes(question);
    choose(*screen, "ArchivesList", archive);
    EXPECT_EQ(rows(), u"Totals : 6 ledger "_s + archive); // without the filter, whose mark stays
    EXPECT_TRUE(control<QAction>(*screen, "mnuInValid").isChecked());
    dialogs.expectMessage(u"This total does NOT include the Invalids"_s);
    tells(u"revenues : 350.00\r\nexpenses : 90.00\r\n===========\r\nNET : 260.00"_s,
          entry(*screen, "mnuTotals"));
    dialogs.expectYes(question);
    dialogs.expectMessage(
        u"You are not supposed to change the archive name, just make a selection from the damn list!!\r\nلا تقم بتغيير إسم الإرشيف!!  فقط قم بإختيار المطلوب من القائمه"_s);
    auto &list = control<QComboBox>(*screen, "ArchivesList");
    list.setEditText(u"general1"_s);
    hand::pressKey(list, Qt::Key_Return);
    engine.browseTable =
        u"general"_s; // as another browser leaves it: the columns of the wrong table are asked for
    dialogs.expectYes(question);
    tells(u"No value given for one or more required parameters."_s,
          [&] { choose(*screen, "ArchivesList", u"ledger"_s); });
    EXPECT_EQ(rows(), u"Totals : 6 ledger "_s + archive);
}

// --- bad input

TEST_F(BrowserTest, TellsFailuresAndGoesOn)
{
    addMember({.name = u"O'Hara & sons"_s});
    const auto screen = browse(u"ledger"_s);
    EXPECT_EQ(control<QMenu>(*screen, "mnuSelection").actions().size(), 4);
    chooseMenu(*screen, "mnuExpenses");
    fails(refused, entry(*screen, "mnuSelect"));
    EXPECT_EQ(textOf(*screen, "Label1"), u"Totals : 3"_s);
    chooseMenu(*screen, "mnuNone");
    chooseMenu(*screen, "mnuSelect"); // nothing is checked
    chooseMenu(*screen, "mnuBothCreditOrDebit");
    EXPECT_EQ(textOf(*screen, "Label1"), u"Totals : 5"_s); // valid ones, no names

    execute({u"insert into audit_general (transactionid,updatetype) values (1,'Added')"_s});
    const auto audit = browse(u"audit_general"_s);
    execute({u"drop table [audit_general]"_s});
    const QString noTable =
        u"The database engine cannot find the input table or query 'audit_general'. Make sure it exists and that its name is spelled correctly."_s;
    tells(noTable, [&] { click(*audit, "cmdRefresh"); });
    EXPECT_EQ(textOf(*audit, "Label1"), u"Totals : 1"_s); // what it showed
    fails(noTable, [&] { selectDates(*audit, u"01/01/2004"_s, u"31/12/2004"_s); });
    EXPECT_FALSE(isShown(*audit, "DateFromx"));
    fails(noTable, [] { EXPECT_FALSE(browse(u"audit_general"_s)->isLoaded()); });
    EXPECT_EQ(Screen::loadedScreens().size(), 2);
    chooseMenu(*screen, "mnuRevenues"); // the other browser goes on
    EXPECT_EQ(textOf(*screen, "Label1"), u"Totals : 2"_s);

    const ConnectionPtr other = Connection::create();
    other->open(engine.connectionString);
    other->session().engine().run("begin exclusive");
    engine.dbConnection->session().engine().run("pragma busy_timeout = 1");
    tells(u"database is locked"_s, [&] { click(*screen, "cmdRefresh"); });
    tells(u"database is locked"_s, entry(*screen, "mnuTotals"));
    fails(u"database is locked"_s, [] { EXPECT_FALSE(browse(u"general"_s)->isLoaded()); });
    other->close();
    click(*screen, "cmdRefresh");
    EXPECT_EQ(textOf(*screen, "Label1"), u"Totals : 2"_s);

    engine.dbConnection->session().engine().run(
        "insert into general (id,transactionid,transactiondetail) with recursive n(i) as "
        "(values(5) union all select i+1 from n where i < 32768) select i,i,'note' from n");
    const auto general = browse(u"general"_s);
    dialogs.expectAnyMessage();
    chooseMenu(*general, "mnuModify");
    gridOf(*general).setCell(32768, gridOf(*general).columnOf(u"transactiondetail"_s));
    fails(u"Overflow"_s, [&] { hand::pressKey(gridOf(*general), Qt::Key_F2); });
    gridOf(*general).setTopRow(1); // no editor is left over
    general->unload();

    dialogs.expectFont(FontChoice{u"Serif"_s, 10, false, 255});
    chooseMenu(*screen, "mnuFont");
    EXPECT_EQ(engine.userFontName + QString::number(engine.userFontSize), u"Serif10"_s);
}

} // namespace
