#include "browser_fixture.h"
#include "core/navigation.h"
#include "journal_tables.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/ui/wait.h"

#include <QtGui/QAction>

// Corrections and cancels through the browser's grid.

namespace
{

class Editing : public BrowserFixture, public testing::WithParamInterface<bool>
{
protected:
    Editing()
    {
        setLanguage(GetParam());
        setClock([] { return makeDate(2004, 3, 15, 10, 20, 30); });
        execute({u"select * into [ledger1] from [ledger] where transactionid=2"_s,
                 u"delete from [ledger] where transactionid=2"_s,
                 u"update general set lastupdate='06/01/2004'"_s});
    }

    std::unique_ptr<frmUniversalGrid> browseGeneral()
    {
        auto screen = browse(u"general"_s);
        dialogs.expectMessage(
            either(u"تستطيع الآن القيام بتعديلات على المعلومات"_s, u"You can make changes now"_s));
        chooseMenu(*screen, "mnuModify");
        return screen;
    }
    /// Opens the editor of a cell by the key; its name, empty when none opened.
    static QString open(const Screen &screen, int row, const QString &field)
    {
        FlexGrid &grid = gridOf(screen);
        grid.setFocus();
        grid.setCell(row, grid.columnOf(field));
        hand::pressKey(grid, Qt::Key_F2);
        return openEditor(screen);
    }
    static QString openEditor(const Screen &screen)
    {
        QStringList names;
        for (const char *name : {"Text1", "Combo1", "dtpDate"}) {
            if (isShown(screen, name))
                names << QLatin1StringView(name);
        }
        EXPECT_TRUE(names.isEmpty() || screen.focusWidget()->objectName() == names.last());
        return names.join(u' ');
    }
    /// Types into a cell by its editor and leaves it by a key.
    static void edit(const Screen &screen, int row, const QString &field, const QString &text,
                     int key = Qt::Key_Return)
    {
        open(screen, row, field);
        hand::fill(*screen.focusWidget(), text);
        hand::pressKey(screen, key);
        EXPECT_EQ(openEditor(screen), u""_s);
    }
    void expectSave(bool yes, bool saved = true)
    {
        const QString question =
            either(u"هل تريد حفظ هذه التحديثات؟"_s, u"Do you want to save the changes?"_s);
        if (!yes)
            return void(dialogs.expectNo(question));
        dialogs.expectYes(question);
        if (!saved)
            dialogs.expectMessage(
                either(u"حدث خطأ و ألغيت العمليه"_s, u"An error occurred and update was cancelled"_s));
        dialogs.expectMessage(saved ? u"Update successful  تمت عملية التحديث بنجاح"_s : u"Error حدث خطأ"_s);
    }
    static QString cell(const Screen &screen, int row, const QString &field)
    {
        return gridOf(screen).textMatrix(row, gridOf(screen).columnOf(field));
    }
    static QString place(const Screen &screen)
    {
        const FlexGrid &grid = gridOf(screen);
        return QString::number(grid.row()) + u' ' + grid.fieldName(grid.col());
    }
};

TEST_P(Editing, EachEditorCorrectsItsColumns)
{
    const auto screen = browseGeneral();
    const QString kind = either(u"تقاعد"_s, u"Pension"_s);
    const struct {
        QString field;
        const char *editor;
        QString holds, typed, shown;
        int key, row; ///< that closes it, and where that leads
    } edits[] = {
        {u"transactiondetail"_s, "Text1", u"note"_s, u"إيجار (12)"_s, {}, Qt::Key_Return, 3},
        {u"paymentdetail"_s, "Text1", u"paid"_s, u"by general Omar"_s, {}, Qt::Key_Tab, 2},
        {u"paymentmethod"_s, "Text1", u"cash"_s, u"15 letters long"_s, {}, Qt::Key_Enter, 3},
        {u"gtype"_s, "Combo1", either(u"تلفون"_s, u"Phone"_s), kind, {}, Qt::Key_Return, 2},
        {u"ddate"_s, "dtpDate", u"15/03/2004"_s, u"03/02/2004"_s, u"2004/02/03"_s, Qt::Key_Return, 2}};
    for (const auto &c : edits) {
        SCOPED_TRACE(c.field.toStdString());
        EXPECT_EQ(open(*screen, 2, c.field), QLatin1StringView(c.editor));
        EXPECT_EQ(textOf(*screen, c.editor), c.holds);
        EXPECT_TRUE(control(*screen, "Text1").isRightToLeft());
        const QRect seen = gridOf(*screen).cellRect(2, gridOf(*screen).columnOf(c.field));
        EXPECT_TRUE(control(*screen, c.editor).geometry().contains(seen.translated(gridOf(*screen).pos())));
        hand::fill(*screen->focusWidget(), c.typed);
        hand::pressKey(*screen, c.key);
        EXPECT_EQ(cell(*screen, 2, c.field), c.shown.isEmpty() ? c.typed : c.shown);
        EXPECT_EQ(place(*screen), QString::number(c.row) + u' ' + c.field);
    }
    expectSave(true);
    pick(*screen, 3, u"amount"_s);
    EXPECT_EQ(place(*screen), u"3 amount"_s);
    const QString general =
        u"2|2|-1|-1|3500000|2004-02-03|2004-01-05 08:00:00|agent|إيجار (12)|by general Omar|15 letters long|14|"_s;
    EXPECT_EQ(shellRows(u"select * from general where transactionid=2"_s),
              QStringList{general + u"2004-03-15 10:20:30"_s});
    EXPECT_EQ(rows(u"select distinct paymentdetail from ledger1"_s), QStringList{u"by ledger1 Omar"_s});
    click(*screen, "cmdRefresh");
    EXPECT_EQ(cell(*screen, 2, u"transactiondetail"_s) + cell(*screen, 2, u"gtype"_s),
              u"إيجار (12)"_s + kind);
    EXPECT_EQ(place(*screen), u"3 amount"_s); // what was picked
}

TEST_P(Editing, OnlyTheCellsThatMayBeEditedOpen)
{
    const QString wrongColumn = u"You CANNOT change this column! لا تستطيع تغيير هذا العمود"_s;
    auto screen = browse(u"ledger"_s);
    EXPECT_EQ(open(*screen, 1, u"ddate"_s), u""_s);
    control<QAction>(*screen, "mnuModify").setChecked(true); // no command does this
    dialogs.expectMessage(u"You CANNOT make changes here! لا تستطيع التغيير في هذا السجل "_s);
    EXPECT_EQ(open(*screen, 1, u"ddate"_s), u""_s);
    screen->unload();

    screen = browseGeneral();
    const auto &grid = gridOf(*screen);
    for (int i = grid.fixedCols(); i < grid.cols(); ++i) {
        const QString field = grid.fieldName(i);
        const bool editable =
            u"transactiondetail paymentdetail ddate gtype paymentmethod"_s.split(u' ').contains(field);
        if (!editable)
            dialogs.expectMessage(wrongColumn);
        EXPECT_NE(open(*screen, 4, field).isEmpty(), editable) << field.toStdString();
        if (editable)
            hand::pressKey(*screen, Qt::Key_Escape);
    }
    edit(*screen, 4, u"paymentdetail"_s, u"paid"_s);
    EXPECT_EQ(place(*screen), u"4 paymentdetail"_s);                               // stays on the last row
    hand::doubleClickHeading(*screen, "FGrid", grid.columnOf(u"paymentdetail"_s)); // of the current row
    EXPECT_EQ(openEditor(*screen), u"Text1"_s);
    hand::clickCell(*screen, "FGrid", 2, grid.columnOf(u"ddate"_s));
    EXPECT_EQ(openEditor(*screen), u""_s);
    dialogs.expectMessage(
        either(u"تستطيع الآن القيام بترتيب الأعمده المعلومات"_s, u"You can do column sorting now"_s));
    chooseMenu(*screen, "mnuModify");
    EXPECT_EQ(open(*screen, 1, u"ddate"_s), u""_s);
    sortBy(*screen, u"amount"_s);
    EXPECT_EQ(column(*screen, u"transactionid"_s), u"4 1 2 3"_s);
}

TEST_P(Editing, TheRowIsDirtyAsItsLastEditorLeftIt)
{
    execute({u"update general set transactiondetail='two\r\nlines' where transactionid=1"_s});
    const auto screen = browseGeneral();
    const QStringList before = stored();
    const auto leave = [&] { pick(*screen, 3, u"amount"_s); };
    for (const char *field : {"transactiondetail", "ddate"}) {
        for (const int row : {1, 2}) { // also a text of two lines, and a date with its time
            open(*screen, row, QLatin1StringView(field));
            hand::pressKey(*screen, Qt::Key_Return);
            leave();
        }
    }
    EXPECT_EQ(cell(*screen, 2, u"ddate"_s), u"2004/03/15"_s);
    edit(*screen, 1, u"paymentdetail"_s, u"nothing of this"_s, Qt::Key_Escape);
    leave();
    EXPECT_EQ(cell(*screen, 1, u"paymentdetail"_s), u"paid"_s);
    // A second edit that leaves its cell as picked clears the mark of the first.
    edit(*screen, 1, u"paymentdetail"_s, u"first"_s);
    edit(*screen, 1, u"paymentmethod"_s, u"cash"_s);
    leave();
    EXPECT_EQ(cell(*screen, 1, u"paymentdetail"_s), u"first"_s);
    // A cell of the same row asks nothing; No reads the rows anew: the typed text vanishes.
    edit(*screen, 1, u"paymentdetail"_s, u"second"_s);
    pick(*screen, 1, u"amount"_s);
    expectSave(false);
    leave();
    EXPECT_EQ(cell(*screen, 1, u"paymentdetail"_s) + place(*screen), u"paid3 amount"_s);
    // The kind begins with the first of the list. A click on another row closes the editor and asks.
    const int amount = gridOf(*screen).columnOf(u"amount"_s);
    const int kind = gridOf(*screen).columnOf(u"gtype"_s);
    hand::clickCell(*screen, "FGrid", 1, kind);
    hand::doubleClickCell(*screen, "FGrid", 1, kind);
    EXPECT_EQ(openEditor(*screen), u"Combo1"_s);
    expectSave(false);
    hand::clickCell(*screen, "FGrid", 3, amount);
    EXPECT_EQ(textOf(*screen, "Combo1"), either(u"تلفون"_s, u"Phone"_s));
    EXPECT_EQ(stored(), before);
}

TEST_P(Editing, ASaveThatFailsClearsTheFilterAndKeepsWhatWasTyped)
{
    const auto screen = browseGeneral();
    const QStringList before = stored();
    chooseMenu(*screen, "mnuBothValid");
    chooseMenu(*screen, "mnuExpenses"); // the first and the fourth
    edit(*screen, 2, u"transactiondetail"_s, {}, Qt::Key_Tab);
    expectSave(true, false);
    pick(*screen, 1, u"amount"_s);
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(column(*screen, u"transactionid"_s), u"1 2 3 4"_s);
    EXPECT_TRUE(control<QAction>(*screen, "mnuExpenses").isChecked());
    EXPECT_EQ(cell(*screen, 4, u"transactiondetail"_s), u""_s);
    EXPECT_EQ(cell(*screen, 2, u"amount"_s) + place(*screen), u"350.001 amount"_s);
    click(*screen, "cmdRefresh");
    EXPECT_EQ(cell(*screen, 4, u"transactiondetail"_s), u"note"_s);
}

TEST_P(Editing, ClosingTakesTheOpenEditorAndAsks)
{
    const std::pair<const char *, std::function<void(Screen &)>> ways[] = {
        {"cmdClose", [](Screen &screen) { click(screen, "cmdClose"); }},
        {"mnuExit", [](Screen &screen) { chooseMenu(screen, "mnuExit"); }},
        {"its frame", [](Screen &screen) { screen.close(); }},
    };
    for (const auto &[name, close] : ways) {
        const auto screen = browseGeneral();
        open(*screen, 1, u"paymentmethod"_s);
        hand::fill(*screen->focusWidget(), QLatin1StringView(name));
        expectSave(true);
        close(*screen);
        EXPECT_FALSE(screen->isLoaded());
        EXPECT_EQ(rows(u"select paymentmethod from general where transactionid=1"_s),
                  QStringList{QLatin1StringView(name)});
    }
    const auto screen = browseGeneral();
    edit(*screen, 1, u"paymentmethod"_s, u"x"_s);
    engine.dbConnection->close(); // as the end of the program does: nothing can be saved any more
    screen->close();
    EXPECT_FALSE(screen->isLoaded());
}

TEST_P(Editing, AnEditorStaysOnItsCell)
{
    for (int number = 5; number <= 60; ++number)
        post(number, true, true, u"7"_s, u"01/02/2005"_s, {});
    const auto screen = browseGeneral();
    FlexGrid &grid = gridOf(*screen);
    const int column = grid.columnOf(u"transactiondetail"_s);
    const auto stands = [&] {
        return control(*screen, "Text1").geometry() == grid.cellRect(9, column).translated(grid.pos());
    };
    open(*screen, 9, u"transactiondetail"_s);
    EXPECT_TRUE(stands());
    hand::fill(*screen->focusWidget(), u"typed"_s);
    grid.setTopRow(5);
    EXPECT_TRUE(stands());
    screen->resize(900, 600);
    serveEvents();
    EXPECT_TRUE(stands());
    grid.setTopRow(40); // out of view: it closes
    EXPECT_EQ(openEditor(*screen) + cell(*screen, 9, u"transactiondetail"_s), u"typed"_s);
    edit(*screen, 9, u"transactiondetail"_s, u"note"_s);
    open(*screen, 9, u"transactiondetail"_s);
    chooseMenu(*screen, "mnuExpenses"); // takes the editor first, then reads the rows anew
    EXPECT_EQ(openEditor(*screen), u""_s);
}

TEST_P(Editing, ACancelledTransactionStaysAndCanBeCancelledAgain)
{
    const auto screen = browse(u"general"_s);
    const QString question = u"Do you want to delete??  سوف يتم إلغاء هذه العمليه "_s +
                             either(u"هل أنت متأكد؟ "_s, u"Are you sure? "_s);
    dialogs.expectMessage(either(u"يجب الإختيار أولاً"_s, u"you have to select first!"_s));
    chooseMenu(*screen, "mnuDelete");
    pick(*screen, 2, u"ddate"_s);
    const QStringList before = stored();
    dialogs.expectNo(question);
    chooseMenu(*screen, "mnuDelete");
    EXPECT_EQ(stored(), before);
    for (const QString &copied : {u"True"_s, u"False"_s}) {
        dialogs.expectYes(question);
        chooseMenu(*screen, "mnuDelete");
        EXPECT_EQ(cell(*screen, 2, u"valid"_s) + place(*screen), either(u"لا"_s, u"NO"_s) + u"2 ddate"_s);
        EXPECT_EQ(rows(u"select valid from audit_general order by idkey"_s).last(), copied);
        EXPECT_EQ(rows(u"select valid from ledger1"_s), QStringList({u"False"_s, u"False"_s}));
    }
    for (const QString &word : {u"Invalid"_s, u"ملغي"_s}) { // as no formatted cell has it
        gridOf(*screen).setTextMatrix(2, gridOf(*screen).columnOf(u"valid"_s), word);
        dialogs.expectYes(question);
        dialogs.expectMessage(either(u"هذه العمليه ملغيه أصلاً!"_s, u"Entry already deleted!"_s));
        chooseMenu(*screen, "mnuDelete");
    }
    execute({u"drop table [ledger1]"_s, u"select transactionid into [ledger1] from [ledger]"_s});
    pick(*screen, 1, u"amount"_s);
    dialogs.expectYes(question);
    dialogs.expectMessage(u"No value given for one or more required parameters."_s);
    chooseMenu(*screen, "mnuDelete");
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(
        rows(u"select valid,(select count(*) from audit_general) as n from general where transactionid=1"_s),
        QStringList{u"False|3"_s}); // what was done stays done

    int opened = 0;
    navigation.showRevenueBeside = [&] { ++opened; };
    click(*screen, "cmdAdd");
    EXPECT_EQ(opened, 1);
}

INSTANTIATE_TEST_SUITE_P(Both, Editing, testing::Bool(),
                         [](const auto &test) { return test.param ? "ar" : "en"; });

} // namespace
