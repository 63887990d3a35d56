#include "platform/ui/data_grid.h"
#include "rows_fixture.h"
#include "support/failures.h"
#include "support/screens.h"

#include <QtGui/QClipboard>
#include <QtTest/QtTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenuBar>

namespace
{
class DataGridTest : public RowsFixture
{
protected:
    DataGridTest() { grid.setDataSource(set); }

    QString captions() const
    {
        QStringList texts;
        for (int column = 0; column < grid.columnCount(); ++column)
            texts << grid.caption(column);
        return texts.join(u'|');
    }
    QString down(int column) const
    {
        QStringList texts;
        for (int bookmark = 1; bookmark <= grid.rowCount(); ++bookmark)
            texts << grid.cellText(column, bookmark);
        return texts.join(u'|');
    }

    DataGrid grid;
};

TEST_F(DataGridTest, ShowsTheRowsOfTheBinding)
{
    grid.setCaption(1, u"Amount"_s);
    grid.setColWidth(1, 3000);
    EXPECT_EQ(captions(), u"name|Amount|valid|dob"_s);
    EXPECT_EQ(grid.colWidth(1), 3000);
    grid.setDataFormat(2, {.type = DataFormat::Type::Boolean, .trueValue = u"Valid"_s, .falseValue = {}});
    grid.setDataFormat(3, {.format = u"yyyy/mm/dd"_s});
    EXPECT_EQ(down(0) + down(1) + down(2) + down(3), u"a|مرى 7|c-5.5||Valid||Valid2004/04/03||"_s);
    set->setFilter(u"valid=true"_s);
    EXPECT_EQ(grid.rowCount(), 3); // until it is bound again
    grid.setDataSource(set);
    EXPECT_EQ(captions(), u"name|amount|valid|dob"_s);
    EXPECT_EQ(down(0), u"a|c"_s);
    EXPECT_NE(grid.colWidth(1), 3000);

    set->close();
    EXPECT_EQ(failureOf([&] { grid.setDataSource(set); }), 3704);
    EXPECT_EQ(grid.cellText(0, 1), u"a"_s); // the rows stay when the set is closed
    grid.setDataSource(nullptr);
    EXPECT_EQ(down(0) + captions(), QString());
}

TEST_F(DataGridTest, KeepsWhatIsWrittenFromRightToLeft)
{
    set->setValue(u"name"_s, u"a\r\nb"_s);
    set->update();
    grid.setLayoutDirection(Qt::RightToLeft);
    grid.setDataSource(set);
    grid.setDataFormat(1, {.format = u"0.00"_s});
    grid.setCaption(1, u"المبلغ"_s);
    const QAbstractItemModel &model = *grid.model();
    EXPECT_EQ(model.index(0, 1).data().toString(), u"\u2066-5.50\u2069"_s);
    EXPECT_EQ(model.index(0, 0).data().toString(), u"\u2066a b\u2069"_s); // in one line, so that it fits
    EXPECT_EQ(grid.textWidth(grid.cellText(0, 1)), grid.textWidth(u"a b"_s));
    EXPECT_EQ(model.index(1, 0).data().toString(), u"\u2068مرى 7\u2069"_s);
    EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), u"\u2068المبلغ\u2069"_s);
    grid.selectAll();
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              u"a\r\nb\t-5.50\tTrue\t03/04/2004\nمرى 7\t\tFalse\t\nc\t\tTrue\t"_s);
}

TEST_F(DataGridTest, TellsThatTheFocusWentToAnotherControl)
{
    QMainWindow window;
    window.setCentralWidget(new QWidget);
    auto *box = new QLineEdit(window.centralWidget());
    auto *details = new DataGrid(window.centralWidget());
    auto *menu = window.menuBar()->addMenu(u"&Menu"_s);
    menu->addAction(u"Entry"_s);
    details->setDataSource(set);
    int lost = 0;
    int menus = 0;
    QObject::connect(details, &DataGrid::focusLost, details, [&] { ++lost; });
    details->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(details, &QWidget::customContextMenuRequested, details, [&] { ++menus; });
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto lostBy = [&](const std::function<void()> &act) {
        lost = 0;
        details->show();
        details->setFocus();
        act();
        return lost;
    };
    EXPECT_EQ(lostBy([&] { pressKey(*details, Qt::Key_Menu); }), 0);
    EXPECT_EQ(menus, 1);
    EXPECT_EQ(lostBy([&] { menu->popup({}), menu->close(); }), 0);
    EXPECT_EQ(lostBy([&] { window.menuBar()->setFocus(Qt::MenuBarFocusReason); }), 0);
    EXPECT_EQ(lostBy([&] {
                  QDialog other(&window);
                  other.show();
                  other.activateWindow();
                  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
              }),
              0);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_EQ(lostBy([&] { box->setFocus(); }), 1);
    EXPECT_EQ(lostBy([&] { pressKey(*details, Qt::Key_Tab); }), 1);
    EXPECT_EQ(lostBy([&] { details->hide(); }), 1);
}

} // namespace
