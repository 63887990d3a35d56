#include "platform/runtime/runtime_error.h"
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

using namespace Qt::Literals::StringLiterals;

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
    EXPECT_EQ(texts(grid, 1), u"|a|-5.5|True|03/04/2004"_s);
    EXPECT_EQ(texts(grid, 2), u"|\u0645\u0631\u0649 7||False|"_s);
    EXPECT_EQ(std::pair(grid.row(), grid.col()), std::pair(1, 1));

    grid.setFormatString(u"|<\u0627\u0644\u0625\u0633\u0645|>\u0627\u0644\u0645\u0628\u0644\u063A"_s);
    EXPECT_EQ(texts(grid, 0),
              u"|\u0627\u0644\u0625\u0633\u0645|\u0627\u0644\u0645\u0628\u0644\u063A|valid|dob"_s);
    EXPECT_EQ(grid.fieldName(1), u"name"_s); // two names for each column
    EXPECT_EQ(grid.columnOf(u"VALID"_s), 3);
    EXPECT_EQ(grid.columnOf(u"none"_s), -1);
    grid.setTextMatrix(1, 3, u"YES"_s);
    grid.setColWidth(3, 1500);
    EXPECT_EQ(grid.colWidth(3), 1500);
    grid.setRowBackColor(2, QColor(Qt::red));

    set->setFilter(u"valid=true"_s); // reloads raw texts, names and widths
    EXPECT_EQ(reloads, 2);
    EXPECT_EQ(grid.rows(), 3);
    EXPECT_EQ(texts(grid, 0), u"|name|amount|valid|dob"_s);
    EXPECT_EQ(texts(grid, 1), u"|a|-5.5|True|03/04/2004"_s);
    EXPECT_EQ(grid.textMatrix(2, 1), u"c"_s);
    EXPECT_EQ(grid.colWidth(3), 960);
    EXPECT_EQ(grid.model()->index(1, 1).data(Qt::BackgroundRole).value<QColor>(), QColor(Qt::red));
    set->moveFirst();
    grid.setCell(2, 3);
    EXPECT_EQ(set->absolutePosition(), 1); // nothing of this moves the set

    set->setFilter(u"name='none'"_s);
    EXPECT_EQ(grid.rows(), 2); // one blank row
    EXPECT_EQ(texts(grid, 1), u"||||"_s);
    grid.setTopRow(50); // clamped
    EXPECT_EQ(grid.topRow(), 1);

    set->setFilter({});
    grid.setDataSource(nullptr);
    set->close();
    connection->close();
    EXPECT_EQ(grid.textMatrix(3, 1), u"c"_s); // unbound or closed, the texts stay
    for (const auto &[row, column] : {std::pair(4, 0), std::pair(0, 5), std::pair(-1, 0)})
        EXPECT_THROW(grid.textMatrix(row, column), RuntimeError);
}

TEST_F(FlexGridTest, AddsHeadingsFromColumnZeroWithoutFixedColumns)
{
    FlexGrid grid;
    grid.setFixedCols(0);
    grid.setDataSource(set);
    grid.setFormatString(u"one|two|three|four|five"_s); // a column is added, none is removed
    grid.setFormatString(u"1"_s);
    EXPECT_EQ(texts(grid, 0), u"1|two|three|four|five"_s);
    EXPECT_EQ(grid.colWidth(0) / twipsPerPixel, (grid.textWidth(u"1"_s) + 120) / twipsPerPixel);
}

TEST_F(FlexGridTest, SetsAHeadingOnTheSideOfItsCellsWithAirBesideIt)
{
    constexpr int width = 100;
    set->close();
    set->open(u"select amount,valid,dob,name from rows where name='a'"_s, connection, CursorType::Static);
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
            QWidget &headings = *grid.horizontalHeader()->viewport();
            for (const QRect &ink :
                 {inkOf(headings, {left + 1, 2, width - 2, headings.height() - 4}),
                  inkOf(*grid.viewport(), {left + 1, 0, width - 2, grid.rowHeight(0) - 1})}) {
                const int air = atRight ? width - 2 - ink.right() : ink.left();
                EXPECT_TRUE(air >= 2 && air <= 8)
                    << air << ' ' << column << boxesFromTheRight << fromTheRight;
            }
        }
    }
}

TEST_F(FlexGridTest, DrawsNumbersAsWrittenAndCopiesThemBare)
{
    FlexGrid grid;
    grid.setDataSource(set);
    const auto drawn = [&](int row, int column) {
        return grid.model()->index(row - 1, column).data().toString();
    };
    EXPECT_EQ(drawn(1, 2), u"-5.5"_s);
    setRightToLeft(&grid, true);
    EXPECT_EQ(drawn(1, 2), u"\u2066-5.5\u2069"_s);
    EXPECT_EQ(drawn(1, 4), u"\u206603/04/2004\u2069"_s);
    EXPECT_EQ(drawn(2, 1), u"\u2068\u0645\u0631\u0649 7\u2069"_s);
    EXPECT_EQ(grid.textMatrix(1, 2), u"-5.5"_s);

    grid.setCell(1, 1);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Left, Qt::Key_Down}) // left is the next column
        QTest::keyClick(&grid, key, Qt::ShiftModifier);
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"a\t-5.5\n\u0645\u0631\u0649 7\t"_s);
}
} // namespace
