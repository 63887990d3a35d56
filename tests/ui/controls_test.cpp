#include "platform/runtime/dates.h"
#include "platform/ui/application.h"
#include "platform/ui/controls.h"
#include "platform/ui/date_picker.h"
#include "support/screens.h"

#include <QtTest/QtTest>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>

using namespace Qt::Literals::StringLiterals;

namespace
{
TEST(Digits, BecomeAsciiWhereTheyStand)
{
    Screen screen(u"frmBox"_s);
    screen.setCentralWidget(new QWidget);
    auto *line = new QLineEdit(screen.surface());
    auto *lines = new QPlainTextEdit(screen.surface());
    line->setObjectName(u"txtLine"_s);
    lines->setObjectName(u"txtLines"_s);
    QString many;
    for (int i = 0; i < 10000; ++i)
        many += i % 2 ? QChar(0x0669) : QChar(0x202E);
    for (QWidget *box : {static_cast<QWidget *>(line), static_cast<QWidget *>(lines)})
        takeAsciiDigits(box);
    screen.load();
    for (const char *name : {"txtLine", "txtLines"}) {
        typeText(screen, name, u"a\u0661-\u06F2.5 \u0645\u0661"_s);
        EXPECT_EQ(textOf(screen, name), u"a1-2.5 \u06451"_s);
        typeText(screen, name, u"z"_s); // the cursor has stayed behind what was typed
        EXPECT_EQ(textOf(screen, name), u"a1-2.5 \u06451z"_s);
        paste(screen, name, many);
        EXPECT_EQ(textOf(screen, name), QString(many).replace(QChar(0x0669), u'9'));
    }
}

TEST(Controls, AreFoundByNameWhereverTheyStand)
{
    Screen screen(u"frmFind"_s);
    screen.setCentralWidget(new QWidget);
    auto *area = new QScrollArea(screen.surface());
    area->setWidget(new QWidget);
    auto *inside = new QPushButton(u"A && B"_s, area->widget());
    inside->setObjectName(u"cmdGroup_0"_s);
    screen.load();
    auto *grown = new QLabel(u"<i>name</i>"_s, area->widget()); // an array that grows later
    grown->setObjectName(u"LBLName_1"_s);
    grown->show();
    screen.surface()->grab();
    QStringList names;
    for (const QObject *object : controlsOf(screen))
        names << object->objectName();
    EXPECT_EQ(names, (QStringList{u"cmdGroup_0"_s, u"LBLName_1"_s}));
    EXPECT_EQ(grown->textFormat(), Qt::PlainText);
    EXPECT_TRUE(grown->autoFillBackground());
    EXPECT_THROW(control<QLineEdit>(screen, "cmdGroup_0"), std::runtime_error);
}

TEST(DatePicker, TakesDaysOnlyAndKeepsTheTime)
{
    for (const bool arabic : {false, true}) {
        loadToolkitWords(arabic);
        Screen screen(u"frmDate"_s);
        screen.setRightToLeft(arabic);
        screen.setCentralWidget(new QWidget);
        auto *picker = new DatePicker(screen.surface());
        picker->setObjectName(u"DTPicker1"_s);
        picker->resize(120, 26);
        int closed = 0;
        QObject::connect(picker, &DatePicker::closeUp, picker, [&] {
            ++closed;
            EXPECT_EQ(picker->value(), makeDate(2004, 2, 10));
        });
        screen.showModeless();
        serveEvents();
        picker->setFocus(Qt::TabFocusReason);

        picker->setValue(makeDate(1601, 1, 1, 13, 5, 0));
        EXPECT_EQ(picker->value(), makeDate(1601, 1, 1, 13, 5, 0));
        EXPECT_EQ(picker->text(), u"01/01/1601"_s);
        EXPECT_EQ(picker->isRightToLeft(), arabic);
        EXPECT_EQ(picker->currentSection(), QDateEdit::DaySection); // the first to be typed
        EXPECT_EQ(picker->alignment().testFlag(Qt::AlignRight), arabic);
        fill(screen, "DTPicker1", u"\u0661\u0660/02/2004"_s);
        EXPECT_EQ(picker->text(), u"10/02/2004"_s);
        savePicture(*picker, arabic ? u"picker-ar.png"_s : u"picker-en.png"_s);

        QTest::keyClick(picker, Qt::Key_Down, Qt::AltModifier); // drops the calendar
        serveEvents();
        auto *calendar = picker->findChild<QCalendarWidget *>();
        ASSERT_TRUE(calendar && calendar->isVisible());
        savePicture(*calendar, arabic ? u"calendar-ar.png"_s : u"calendar-en.png"_s);
        calendar->parentWidget()->close();
        serveEvents();
        EXPECT_EQ(closed, 1);
    }
}
} // namespace
