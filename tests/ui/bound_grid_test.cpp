#include "platform/ui/bound_grid.h"
#include "platform/ui/wait.h"
#include "rows_fixture.h"
#include "support/screens.h"
#include "support/store_reading.h"

#include <QtTest/QtTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolButton>

namespace
{

class BoundGridTest : public RowsFixture
{
protected:
    BoundGridTest()
    {
        openCells({u"'a',1,null"_s, u"'b',2,'01/02/2003'"_s, u"'c',3,null"_s});
        set->willChangeRecord.connect([this](RecordChange &change) {
            events += QString::number(int(change.reason)) + u' ';
            if (change.reason == ChangeReason::Update)
                values = set->originalValue(1).toText() + u'>' + set->value(1).toText();
        });
        QObject::connect(&grid, &BoundGrid::failed, &grid,
                         [] { ADD_FAILURE() << "a field has refused its text"; });
        grid.setDataSource(set);
        grid.setLocked(0, true);
        grid.resize(500, 200);
        window.show();
        window.activateWindow();
        grid.setFocus();
    }
    /// Keys to whoever has them: `~` F2, `>` Tab, `<` Backtab, `/` Enter, `!` Escape, `v` Down.
    void keys(const QString &text)
    {
        static const QHash<QChar, int> named{{u'~', Qt::Key_F2},      {u'>', Qt::Key_Tab},
                                             {u'<', Qt::Key_Backtab}, {u'/', Qt::Key_Return},
                                             {u'!', Qt::Key_Escape},  {u'v', Qt::Key_Down}};
        for (const QChar c : text) {
            QLineEdit *open = editor();
            QWidget &target = open ? static_cast<QWidget &>(*open) : grid;
            if (named.contains(c))
                pressKey(target, named[c]);
            else
                QTest::keyClick(&target, c.toLatin1());
            serveEvents(); // Enter closes a cell behind the key,
            serveEvents(); // and only then is a failure told
        }
    }
    /// The open cell.
    QLineEdit *editor() const
    {
        const auto boxes = grid.findChildren<QLineEdit *>();
        return boxes.isEmpty() || boxes.back()->isHidden() ? nullptr : boxes.back();
    }
    QString cell() const { return u"%1,%2"_s.arg(grid.row()).arg(grid.col()); }
    QStringList stored() const
    {
        const RecordsetPtr other = Recordset::create();
        other->open(u"select name,amount from rows"_s, connection, CursorType::Static);
        return linesOf(*other, u" "_s);
    }

    QMainWindow window;
    BoundGrid grid{&window};
    QString events;
    QString values;
};

TEST_F(BoundGridTest, StandsOnTheCurrentRowOfItsSet)
{
    EXPECT_EQ(cell(), u"0,0"_s);
    set->moveLast();
    EXPECT_EQ(cell(), u"2,0"_s);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                      grid.visualRect(grid.model()->index(1, 3)).center());
    EXPECT_EQ(cell(), u"1,3"_s);
    EXPECT_EQ(set->value(u"name"_s).toText(), u"b"_s);
    set->moveLast();
    set->moveNext();
    EXPECT_EQ(grid.row(), -1); // nothing to set there
    EXPECT_FALSE(grid.setText(u"x"_s));
    grid.setColWidth(1, 3000);
    set->setFilter(u"amount>1"_s);
    EXPECT_EQ(grid.rowCount(), 2);
    EXPECT_EQ(grid.cellText(1, 1) + cell(), u"b0,0"_s);
    EXPECT_EQ(grid.colWidth(1), 3000);
    set->addNew();
    set->setValue(1, u"d"_s);
    set->update();
    EXPECT_EQ(grid.rowCount(), 3);
    EXPECT_EQ(grid.text(), u""_s);
    EXPECT_EQ(cell(), u"2,0"_s);
}

TEST_F(BoundGridTest, EditsCellsByKeysAndWritesARowWhenItIsLeft)
{
    const struct {
        QString keys, cell, events, stored;
    } cases[] = {
        {u">x!"_s, u"0,1"_s, u""_s, u"a 1"_s},        // Escape leaves the cell as it was
        {u">~/"_s, u"0,2"_s, u""_s, u"a 1"_s},        // nothing was changed
        {u">xy>"_s, u"0,2"_s, u"11 "_s, u"a 1"_s},    // in the row it is not written yet
        {u">xy>!"_s, u"0,2"_s, u"11 4 "_s, u"a 1"_s}, // and can be taken back
        {u"x"_s, u"0,0"_s, u""_s, u"a 1"_s},          // a locked column
        {u">>>>"_s, u"1,0"_s, u""_s, u"a 1"_s},
        {u">>>/<"_s, u"0,3"_s, u""_s, u"a 1"_s},
        {u">xy/v"_s, u"1,2"_s, u"11 3 "_s, u"xy 1"_s},
        {u">z>7>>"_s, u"1,0"_s, u"11 3 "_s, u"z 7"_s}, // both fields at once, by the last Tab
    };
    for (const auto &c : cases) {
        grid.setCurrentIndex(grid.model()->index(0, 0));
        events.clear();
        keys(c.keys);
        EXPECT_FALSE(editor());
        EXPECT_EQ(cell() + u' ' + events, c.cell + u' ' + c.events) << c.keys.toStdString();
        EXPECT_EQ(stored()[0], c.stored) << c.keys.toStdString();
        EXPECT_EQ(grid.isEditing(), c.events == u"11 "_s);
        set->cancelUpdate();
    }
    EXPECT_EQ(values, u"xy>z"_s);
    EXPECT_EQ(grid.cellText(1, 1) + grid.cellText(2, 1), u"z7"_s);
}

TEST_F(BoundGridTest, ShowsTheButtonOfAColumnInItsCurrentCell)
{
    auto &button = *grid.findChild<QToolButton *>();
    QList<int> pressed;
    QObject::connect(&grid, &BoundGrid::buttonClick, &grid, [&](int column) { pressed << column; });
    grid.setButton(1, true);
    EXPECT_FALSE(button.isVisible());
    for (const bool toTheLeft : {false, true}) {
        grid.setLayoutDirection(toTheLeft ? Qt::RightToLeft : Qt::LeftToRight);
        grid.setCurrentIndex(grid.model()->index(1, 1));
        const QRect rect = grid.visualRect(grid.currentIndex());
        EXPECT_TRUE(button.isVisible() && rect.contains(button.geometry()));
        EXPECT_EQ(button.x() == rect.x(), toTheLeft);
        button.click();
        keys(u"~"_s);
        EXPECT_FALSE(button.isVisible()); // the open cell has the place
        keys(u"!"_s);
        pressKey(grid, Qt::Key_F4);
    }
    EXPECT_EQ(pressed, (QList{1, 1, 1, 1}));
    EXPECT_TRUE(grid.setText(u"w"_s) && grid.saveRow());
    EXPECT_EQ(stored()[1], u"w 2"_s);
}

} // namespace
