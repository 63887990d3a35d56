#pragma once

#include "browser/frmUniversalGrid.h"
#include "core/engine.h"
#include "platform/ui/data_grid.h"
#include "platform/ui/flex_grid.h"
#include "support/select_dates.h"
#include "support/store_fixture.h"

using namespace Qt::Literals::StringLiterals;

/// A store with four transactions of the members Ali, Omar and Sara, and browsers on it:
///
///     general: 1 expense 90 (2004-01-01), 2 revenue 350 (2004-03-15 13:05:09), 3 revenue 1000, invalid
///     (2004-12-31 00:30), 4 expense 0.5 (2005-01-01)
///     ledger:  1 Ali 45, Sara 45; 2 Ali 200, Sara 150; 3 Ali 600, Sara 400; 4 Omar 0.5
class BrowserFixture : public StoreFixture
{
protected:
    BrowserFixture()
    {
        for (const QString &name : {u"Omar"_s, u"Ali"_s, u"Sara"_s})
            addMember({.name = name});
        post(1, false, true, u"90"_s, u"01/01/2004"_s, {u"'Ali',45"_s, u"'Sara',45"_s});
        post(2, true, true, u"350"_s, u"15/03/2004 13:05:09"_s, {u"'Ali',200"_s, u"'Sara',150"_s});
        post(3, true, false, u"1000"_s, u"31/12/2004 00:30:00"_s, {u"'Ali',600"_s, u"'Sara',400"_s});
        post(4, false, true, u"0.5"_s, u"01/01/2005"_s, {u"'Omar',0.5"_s});
    }

    static void post(int number, bool credit, bool valid, const QString &amount, const QString &day,
                     const QStringList &shares)
    {
        const QString columns = u"transactionid,creditordebit,valid,ddate,enteredon,enteredby,"
                                "transactiondetail,paymentdetail,paymentmethod,gtype"_s;
        const QString values =
            u"%1,%2,%3,'%4','05/01/2004 08:00:00','agent','note','paid','cash',13"_s.arg(number).arg(
                credit ? u"true"_s : u"false"_s, valid ? u"true"_s : u"false"_s, day);
        execute({u"insert into general (amount,%1) values (%2,%3)"_s.arg(columns, amount, values)});
        for (const QString &share : shares)
            execute({u"insert into ledger (name,amount,totalamount,%1) values (%2,%3,%4)"_s.arg(
                columns, share, amount, values)});
    }

    static QString either(const QString &ar, const QString &en) { return engine.isArabic ? ar : en; }
    /// A browser on a table, loaded and shown.
    static std::unique_ptr<frmUniversalGrid> browse(const QString &table)
    {
        engine.browseTable = table;
        auto screen =
            std::unique_ptr<frmUniversalGrid>(::new frmUniversalGrid); // not one that deletes itself
        screen->showModeless();
        return screen;
    }
    static FlexGrid &gridOf(const Screen &screen) { return control<FlexGrid>(screen, "FGrid"); }
    /// The texts of a column, by its field name, from the first row on.
    static QString column(const Screen &screen, const QString &field)
    {
        const FlexGrid &grid = gridOf(screen);
        QStringList texts;
        for (int row = grid.fixedRows(); row < grid.rows(); ++row)
            texts << grid.textMatrix(row, grid.columnOf(field));
        return texts.join(u' ');
    }
    static QString line(const Screen &screen, int row)
    {
        const FlexGrid &grid = gridOf(screen);
        QStringList texts;
        for (int i = grid.fixedCols(); i < grid.cols(); ++i)
            texts << grid.textMatrix(row, i);
        return texts.join(u'|');
    }
    /// Makes a cell the current one and presses the key of a click.
    static void pick(const Screen &screen, int row, const QString &field)
    {
        FlexGrid &grid = gridOf(screen);
        grid.setCell(row, grid.columnOf(field));
        hand::pressKey(grid, Qt::Key_Space);
    }
    /// The key of a double click on the heading.
    static void sortBy(const Screen &screen, const QString &field)
    {
        FlexGrid &grid = gridOf(screen);
        grid.setCell(grid.row(), grid.columnOf(field));
        hand::pressKey(grid, Qt::Key_F3);
    }
    /// Does what tells one text; nothing when it is empty.
    void tells(const QString &text, const std::function<void()> &action)
    {
        if (!text.isEmpty())
            dialogs.expectMessage(text).withIcon(MessageIcon::None);
        action();
    }
    /// Does what a failure ends without ending the process.
    void fails(const QString &description, const std::function<void()> &action)
    {
        dialogs.expectMessage(description).withIcon(MessageIcon::Critical);
        action();
    }
    /// A menu entry's action.
    static std::function<void()> entry(Screen &screen, const char *name)
    {
        return [&screen, name] { chooseMenu(screen, name); };
    }

    ScriptedDialogs dialogs;
};
