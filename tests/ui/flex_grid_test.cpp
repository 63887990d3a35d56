#include "platform/runtime/format.h"
#include "platform/ui/application.h"
#include "platform/ui/controls.h"
#include "platform/ui/flex_grid.h"
#include "platform/ui/twips.h"
#include "rows_fixture.h"
#include "support/screens.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QtTest>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>

namespace
{
class FlexGridTest : public RowsFixture
{
protected:
    static QString texts(const FlexGrid &grid, int row)
    {
        QStringList cells;
        for (int column = 0; column < grid.cols(); ++column)
            cells << grid.textMatrix(row, column);
        return cells.join(u'|');
    }
    /// The texts of a column from the first row on.
    static QString down(const FlexGrid &grid, int column)
    {
        QStringList cells;
        for (int row = 1; row < grid.rows(); ++row)
            cells << grid.textMatrix(row, column);
        return cells.join(u' ');
    }
    static ColumnFormat written(const QString &pattern)
    {
        return {[pattern](const Value &value) { return format(value, pattern); }};
    }
    /// The part of a grid that gets the mouse's events of a row, and the middle of a cell in it.
    static QWidget &areaOf(const FlexGrid &grid, int row)
    {
        return row == 0 ? *grid.horizontalHeader()->viewport() : *grid.viewport();
    }
    static QPoint middleOf(const FlexGrid &grid, int row, int column)
    {
        return areaOf(grid, row).mapFrom(&grid, grid.cellRect(row, column).center());
    }
};

TEST_F(FlexGridTest, ShowsTheSetAndReloadsWithItsRows)
{
    FlexGrid grid;
    int reloads = 0;
    QObject::connect(&grid, &FlexGrid::reloaded, &grid, [&] { ++reloads; });
    set->moveLast();
    grid.setDataSource(set);
    EXPECT_EQ(grid.rows(), 4);
    EXPECT_EQ(texts(grid, 0), u"|name|amount|valid|dob"_s); // behind the empty fixed column
    EXPECT_EQ(texts(grid, 2), u"|مرى 7||False|"_s);
    EXPECT_EQ(std::pair(grid.row(), grid.col()), std::pair(1, 1));
    EXPECT_EQ(set->absolutePosition(), 3); // nothing of the grid moves the set

    grid.setFormatString(u"|<الإسم|>المبلغ"_s);
    EXPECT_EQ(texts(grid, 0), u"|الإسم|المبلغ|valid|dob"_s);
    EXPECT_EQ(grid.fieldName(1), u"name"_s); // two names for each column
    EXPECT_EQ(grid.columnOf(u"VALID"_s), 3);
    EXPECT_EQ(grid.columnOf(u"none"_s), -1);
    grid.setTextMatrix(1, 3, u"YES"_s);
    grid.setColWidth(3, 1500);
    grid.setRowBackColor(2, QColor(Qt::red));

    set->setFilter(u"valid=true"_s); // reloads raw texts, names and widths
    EXPECT_EQ(reloads, 2);           // with the binding
    EXPECT_EQ(texts(grid, 0), u"|name|amount|valid|dob"_s);
    EXPECT_EQ(texts(grid, 1), u"|a|-5.5|True|03/04/2004"_s);
    EXPECT_EQ(down(grid, 1), u"a c"_s);
    EXPECT_EQ(grid.colWidth(3), 960); // until it would cut the heading
    EXPECT_EQ(grid.model()->index(1, 1).data(Qt::BackgroundRole).value<QColor>(), QColor(Qt::red));

    set->setFilter(u"name='none'"_s);
    EXPECT_EQ(grid.rows(), 2); // one blank row
    EXPECT_EQ(texts(grid, 1), u"||||"_s);

    set->setFilter({});
    set->close();
    connection->close();
    EXPECT_EQ(grid.textMatrix(3, 1), u"c"_s); // the texts stay
}

TEST_F(FlexGridTest, SetsAHeadingOnTheSideOfItsCellsWithAirBesideIt)
{
    constexpr int width = 100;
    const QString fields = u"amount,valid,dob,name"_s;
    openRows(fields, fields, {u"-5.5,true,'03/04/2004','a'"_s});
    for (const auto &[boxesFromTheRight, fromTheRight] : // the boxes' direction is not the grid's
         {std::pair(false, false), {false, true}, {true, false}, {true, true}}) {
        loadToolkitWords(boxesFromTheRight);
        FlexGrid grid;
        grid.resize(600, 100);
        grid.setFixedCols(0);
        setRightToLeft(&grid, fromTheRight);
        grid.setDataSource(set);
        grid.setTextMatrix(1, 1, u"YES"_s); // a word in place of a value
        grid.setCell(1, 3);                 // its colours are others
        for (int column = 0; column < 3; ++column) {
            grid.setColWidth(column, width * twipsPerPixel);
            const bool atRight = column == 0 || fromTheRight; // amounts always, with their last digits
            const int left = grid.columnViewportPosition(column);
            for (const int row : {0, 1}) {
                const int height = row == 0 ? areaOf(grid, 0).height() - 2 : grid.rowHeight(0) - 1;
                const QRect ink = inkOf(areaOf(grid, row), {left + 1, 2, width - 2, height - 2});
                const int air = atRight ? width - 2 - ink.right() : ink.left();
                EXPECT_TRUE(air >= 2 && air <= 8)
                    << air << ' ' << row << column << boxesFromTheRight << fromTheRight;
            }
        }
    }
}

TEST_F(FlexGridTest, SortsByTheShownTexts)
{
    openCells({u"'b',2,'01/02/2004'"_s, u"'10',-10.5,'01/01/2004'"_s, u"'',null,null"_s,
               u"'9.5',1000,'01/02/2004'"_s, u"'B ',2,'31/12/2003'"_s, u"null,null,null"_s,
               u"'$1,000',2.001,null"_s, u"'سالم',0,null"_s, u"'a',null,null"_s, u"'-1',3,null"_s});
    FlexGrid grid;
    grid.setDataSource(set);
    constexpr int number = 1, text = 2, amount = 3, day = 4;
    const auto sorted = [&](int column, Qt::SortOrder order) {
        grid.sort(column, order);
        return down(grid, number);
    };
    grid.setCell(3, 2);
    for (int twice = 0; twice < 2; ++twice)
        EXPECT_EQ(sorted(text, Qt::AscendingOrder), u"3 6 10 4 2 7 8 9 1 5"_s);
    EXPECT_EQ(sorted(text, Qt::DescendingOrder), u"1 5 9 8 7 2 4 10 3 6"_s);
    EXPECT_EQ(sorted(number, Qt::DescendingOrder), u"10 9 8 7 6 5 4 3 2 1"_s); // not as texts
    EXPECT_EQ(sorted(amount, Qt::DescendingOrder), u"4 10 7 5 1 8 2 9 6 3"_s);
    EXPECT_EQ(std::pair(grid.row(), grid.col()), std::pair(3, 2)); // the place, not what stood there

    set->setFilter(u"n>2"_s);
    EXPECT_EQ(down(grid, number), u"3 4 5 6 7 8 9 10"_s);
    set->setFilter({});
    grid.setColFormat(amount, written(u"#,###,##0.00"_s));
    grid.setColFormat(day, written(u"yyyy/mm/dd"_s));
    EXPECT_EQ(sorted(amount, Qt::DescendingOrder), u"4 10 1 5 7 8 2 3 6 9"_s); // 2 and 2.001 read 2.00
    EXPECT_EQ(sorted(day, Qt::AscendingOrder), u"10 7 8 3 6 9 5 2 4 1"_s);
    EXPECT_EQ(down(grid, day), u"      2003/12/31 2004/01/01 2004/02/01 2004/02/01"_s);

    grid.setTextMatrix(9, text, u"-7"_s); // row 4
    grid.setCellBackColor(9, text, Qt::blue);
    EXPECT_EQ(sorted(text, Qt::AscendingOrder), u"3 6 4 10 2 7 8 9 5 1"_s);
    EXPECT_EQ(grid.textMatrix(3, text), u"-7"_s);
    const auto color = [&](int row, int role) {
        return grid.model()->index(row - 1, text).data(role).value<QColor>();
    };
    EXPECT_EQ(color(3, Qt::BackgroundRole), QColor(Qt::blue));
    EXPECT_FALSE(color(9, Qt::BackgroundRole).isValid());
    EXPECT_EQ(color(3, Qt::ForegroundRole), QColor(Qt::white));
    grid.setCellBackColor(3, text, Qt::yellow);
    EXPECT_EQ(color(3, Qt::ForegroundRole), QColor(Qt::black));
}

TEST_F(FlexGridTest, MovesAColumnWithAllThatBelongsToIt)
{
    FlexGrid grid;
    grid.setDataSource(set);
    grid.setColFormat(2, written(u"0.00"_s));
    grid.setTextMatrix(3, 2, u"none"_s);
    grid.setTextMatrix(0, 2, u"Amount"_s);
    grid.setColWidth(2, 1500);
    grid.setCell(1, 2);
    grid.moveColumn(2, 4);
    EXPECT_EQ(texts(grid, 0), u"|name|valid|dob|Amount"_s);
    EXPECT_EQ(texts(grid, 1), u"|a|True|03/04/2004|-5.50"_s);
    EXPECT_EQ(texts(grid, 3), u"|c|True||none"_s);
    EXPECT_EQ(grid.fieldName(4), u"amount"_s);
    EXPECT_EQ(grid.columnOf(u"dob"_s), 3);
    EXPECT_EQ(std::pair(grid.colWidth(4), grid.colWidth(2)), std::pair(1500, 960));
    EXPECT_EQ(grid.col(), 4);
    grid.setFormatString(u"|1|2|3|4"_s);
    EXPECT_EQ(texts(grid, 0), u"|1|2|3|4"_s);
    grid.sort(4, Qt::DescendingOrder);
    EXPECT_EQ(down(grid, 1), u"c a \u0645\u0631\u0649 7"_s);
    grid.selectAll();
    setRightToLeft(&grid, true); // the marks that it takes are not copied
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              u"c\tTrue\t\tnone\na\tTrue\t03/04/2004\t-5.50\n\u0645\u0631\u0649 7\tFalse\t\t"_s);
    set->setFilter(u"valid=true"_s);
    EXPECT_EQ(texts(grid, 0), u"|name|amount|valid|dob"_s);
    EXPECT_EQ(texts(grid, 1), u"|a|-5.5|True|03/04/2004"_s);
}

TEST_F(FlexGridTest, DragsAColumnByItsHeading)
{
    const QString told = u"|name|amount|valid|dob"_s;
    struct Drag {
        const char *what;
        QPoint press, move, drop; ///< from the middle of the column's heading, from left to right
        int from, to;
        QString order;
    };
    const QList<Drag> drags{{"onwards", {}, {4, 0}, {}, 2, 4, u"|name|valid|dob|amount"_s},
                            {"backwards", {}, {-1, -3}, {}, 4, 1, u"|dob|name|amount|valid"_s},
                            {"not far enough", {}, {2, 1}, {}, 2, 4, told},
                            {"off the headings", {}, {0, 60}, {}, 2, 4, told},
                            {"dropped on a cell", {}, {4, 0}, {0, 60}, 2, 4, told},
                            {"onto the fixed column", {}, {4, 0}, {}, 2, 0, told},
                            {"the fixed column", {}, {4, 0}, {}, 0, 2, told},
                            {"at an edge", {49, 0}, {60, 0}, {}, 2, 4, told}};
    for (const bool fromTheRight : {false, true}) {
        for (const Drag &drag : drags) {
            FlexGrid grid;
            grid.setColumnDragging(50);
            grid.resize(600, 150);
            setRightToLeft(&grid, fromTheRight);
            grid.setDataSource(set);
            for (int column = 1; column < grid.cols(); ++column)
                grid.setColWidth(column, 100 * twipsPerPixel);
            grid.show();
            const auto place = [&](int column, QPoint offset) {
                offset.rx() *= fromTheRight ? -1 : 1;
                return middleOf(grid, 0, column) + offset;
            };
            QWidget *headings = &areaOf(grid, 0);
            QTest::mousePress(headings, Qt::LeftButton, {}, place(drag.from, drag.press));
            QTest::mouseMove(headings, place(drag.from, drag.press + drag.move));
            QTest::mouseRelease(headings, Qt::LeftButton, {}, place(drag.to, drag.drop));
            EXPECT_EQ(texts(grid, 0), drag.order) << drag.what << fromTheRight;
            EXPECT_EQ(grid.colWidth(2) / twipsPerPixel, drag.press.isNull() ? 100 : 160) << fromTheRight;
        }
    }
}

TEST_F(FlexGridTest, TellsOfClicksAndKeys)
{
    FlexGrid grid;
    grid.resize(600, 150);
    grid.setDataSource(set);
    grid.show();
    QStringList told;
    const auto tell = [&](const QString &what) {
        return [&told, what](int row, int column) { told << u"%1 %2 %3"_s.arg(what).arg(row).arg(column); };
    };
    QObject::connect(&grid, &FlexGrid::cellClicked, &grid, tell(u"click"_s));
    QObject::connect(&grid, &FlexGrid::cellDoubleClicked, &grid, tell(u"double"_s));
    QObject::connect(&grid, &FlexGrid::headingDoubleClicked, &grid,
                     [&](int column) { tell(u"double"_s)(0, column); });
    QObject::connect(&grid, &FlexGrid::contextMenuWanted, &grid, [&](int row, int column, QPoint at) {
        EXPECT_TRUE(grid.cellRect(row, column).contains(at));
        tell(u"menu"_s)(row, column);
    });
    const auto toldBy = [&](auto press, Qt::MouseButton button, int row, int column) {
        press(&areaOf(grid, row), button, {}, middleOf(grid, row, column), -1);
        return std::exchange(told, {}).join(u", "_s);
    };
    constexpr void (*click)(QWidget *, Qt::MouseButton, Qt::KeyboardModifiers, QPoint, int) =
        QTest::mouseClick;
    constexpr decltype(click) again = QTest::mouseDClick;
    EXPECT_EQ(toldBy(click, Qt::RightButton, 3, 2), u"menu 3 2"_s);
    EXPECT_EQ(std::pair(grid.row(), grid.col()), std::pair(3, 2));
    EXPECT_EQ(toldBy(click, Qt::LeftButton, 1, 0), QString()); // the fixed column
    EXPECT_EQ(grid.row(), 3);
    EXPECT_EQ(toldBy(click, Qt::LeftButton, 1, 1), u"click 1 1"_s);
    EXPECT_EQ(toldBy(again, Qt::LeftButton, 1, 1), u"double 1 1"_s);
    EXPECT_EQ(toldBy(again, Qt::LeftButton, 0, 2), u"double 0 2"_s);
    EXPECT_EQ(toldBy(click, Qt::RightButton, 0, 3), u"menu 0 3"_s);
    EXPECT_EQ(toldBy(again, Qt::RightButton, 0, 3), QString());

    grid.setCell(2, 3);
    for (const auto &[key, modifier, expected] : {std::tuple(Qt::Key_Space, Qt::NoModifier, u"click 2 3"_s),
                                                  {Qt::Key_Return, Qt::NoModifier, u"click 2 3"_s},
                                                  {Qt::Key_Enter, Qt::KeypadModifier, u"click 2 3"_s},
                                                  {Qt::Key_Menu, Qt::NoModifier, u"menu 2 3"_s},
                                                  {Qt::Key_F10, Qt::ShiftModifier, u"menu 2 3"_s},
                                                  {Qt::Key_F3, Qt::NoModifier, u"double 0 3"_s}}) {
        QTest::keyClick(&grid, key, modifier);
        EXPECT_EQ(std::exchange(told, {}).join(u", "_s), expected);
    }

    const auto moveBy = [&](Qt::Key key) {
        QTest::keyClick(&grid, key, Qt::ControlModifier | Qt::ShiftModifier);
        return texts(grid, 0);
    };
    EXPECT_EQ(moveBy(Qt::Key_Left), u"|name|amount|valid|dob"_s); // columns stay unless they can be dragged
    grid.setColumnDragging(50);
    grid.setCell(2, 3);
    EXPECT_EQ(moveBy(Qt::Key_Left), u"|name|valid|amount|dob"_s);
    setRightToLeft(&grid, true);
    for (int i = 0; i < 3; ++i) // no further than to the fixed column
        moveBy(Qt::Key_Right);
    EXPECT_EQ(texts(grid, 0), u"|valid|name|amount|dob"_s);
    EXPECT_EQ(moveBy(Qt::Key_Left), u"|name|valid|amount|dob"_s);
    EXPECT_EQ(std::pair(grid.row(), grid.col()), std::pair(2, 2));
}

TEST_F(FlexGridTest, ScrollsFromRightToLeft)
{
    openCells(QStringList(1, u"'line\nbreak',-1.5,null"_s) + QStringList(39, u"'مرى 7',1,null"_s));
    FlexGrid grid;
    grid.resize(300, 200);
    setRightToLeft(&grid, true);
    grid.setDataSource(set);
    for (int column = 1; column < grid.cols(); ++column)
        grid.setColWidth(column, 150 * twipsPerPixel);
    grid.show();
    EXPECT_LT(grid.verticalScrollBar()->mapTo(&grid, QPoint()).x(), 5);
    EXPECT_GT(grid.cellRect(1, 0).right(), 290);
    EXPECT_TRUE(grid.cellRect(1, 4).isEmpty());
    grid.setTopRow(17);
    EXPECT_EQ(grid.topRow(), 17);
    EXPECT_EQ(grid.cellRect(17, 1).top(), grid.cellRect(0, 1).bottom() + 1);
    grid.setTopRow(99);
    EXPECT_FALSE(grid.cellRect(40, 1).isEmpty());
    EXPECT_TRUE(grid.cellRect(1, 1).isEmpty());
    grid.horizontalScrollBar()->setValue(grid.horizontalScrollBar()->maximum());
    EXPECT_EQ(grid.cellRect(0, 4).left(), grid.cellRect(40, 4).left());

    const auto drawn = [&](int row, int column) {
        return grid.model()->index(row - 1, column).data().toString();
    };
    EXPECT_EQ(drawn(1, 2), u"\u2066line break\u2069"_s); // in the one line that it has
    EXPECT_EQ(drawn(1, 3), u"\u2066-1.5\u2069"_s);
    EXPECT_EQ(drawn(2, 2), u"\u2068مرى 7\u2069"_s);
    setRightToLeft(&grid, false);
    EXPECT_EQ(drawn(1, 3), u"-1.5"_s);
}
} // namespace
