#include "platform/runtime/dates.h"
#include "platform/ui/application.h"
#include "platform/ui/controls.h"
#include "platform/ui/date_picker.h"
#include "platform/ui/fonts.h"
#include "platform/ui/wait.h"
#include "support/screens.h"

#include <QtTest/QtTest>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollArea>

using namespace Qt::Literals::StringLiterals;

namespace
{
/// A screen to which a test adds controls.
class BlankScreen : public Screen
{
public:
    BlankScreen() : Screen(u"frmBlank"_s) { setCentralWidget(new QWidget); }

    template <typename Control>
    Control &add(const QString &name)
    {
        auto *added = new Control(surface());
        added->setObjectName(name);
        return *added;
    }
};

TEST(Digits, BecomeAsciiWhereTheyStand)
{
    BlankScreen screen;
    takeAsciiDigits(&screen.add<QLineEdit>(u"txtLine"_s));
    takeAsciiDigits(&screen.add<QPlainTextEdit>(u"txtLines"_s));
    screen.load();
    const QString many = QString(u"\u202E\u0669"_s).repeated(5000);
    for (const char *name : {"txtLine", "txtLines"}) {
        typeText(screen, name, u"a\u0661-\u06F2.5 \u0645\u0661"_s);
        typeText(screen, name, u"z"_s); // the cursor has stayed behind what was typed
        EXPECT_EQ(textOf(screen, name), u"a1-2.5 \u06451z"_s);
        paste(screen, name, many);
        EXPECT_EQ(textOf(screen, name), QString(u"\u202E9"_s).repeated(5000));
    }
}

TEST(Controls, AreFoundAndLegibleWhereverAndWheneverTheyCome)
{
    BlankScreen screen;
    auto &area = screen.add<QScrollArea>({});
    area.setWidget(new QWidget);
    screen.load();
    auto *grown = new QLabel(u"<i>name</i>"_s, area.widget()); // an array that grows later
    grown->setObjectName(u"LBLName_1"_s);
    grown->show();
    screen.surface()->grab();
    EXPECT_EQ(controlsOf(screen), QList<QObject *>{grown});
    EXPECT_EQ(grown->textFormat(), Qt::PlainText);
    EXPECT_TRUE(grown->autoFillBackground());
}

TEST(DatePicker, TakesDaysOnlyAndKeepsTheTime)
{
    for (const bool arabic : {false, true}) {
        loadToolkitWords(arabic);
        BlankScreen screen;
        screen.setRightToLeft(arabic);
        auto &picker = screen.add<DatePicker>(u"DTPicker1"_s);
        picker.resize(120, 26);
        int closed = 0;
        QObject::connect(&picker, &DatePicker::closeUp, &picker, [&] {
            ++closed;
            EXPECT_EQ(picker.value(), makeDate(2004, 2, 10));
        });
        screen.showModeless();
        serveEvents();
        picker.setFocus(Qt::TabFocusReason);

        picker.setValue(makeDate(1601, 1, 1, 13, 5, 0));
        EXPECT_EQ(picker.value(), makeDate(1601, 1, 1, 13, 5, 0));
        EXPECT_EQ(picker.text(), u"01/01/1601"_s);
        EXPECT_EQ(picker.isRightToLeft(), arabic);
        EXPECT_EQ(picker.currentSection(), QDateEdit::DaySection); // the first to be typed
        EXPECT_EQ(picker.alignment().testFlag(Qt::AlignRight), arabic);
        fill(screen, "DTPicker1", u"\u0661\u0660/02/2004"_s);
        EXPECT_EQ(picker.text(), u"10/02/2004"_s);

        QTest::keyClick(&picker, Qt::Key_Down, Qt::AltModifier); // drops the calendar
        serveEvents();
        auto *calendar = picker.findChild<QCalendarWidget *>();
        ASSERT_TRUE(calendar && calendar->isVisible());
        calendar->parentWidget()->close();
        serveEvents();
        EXPECT_EQ(closed, 1);
    }
}

TEST(Lines, KeepTheirBaselineWhenLettersOfAnotherFontJoin)
{
    QLineEdit box;
    box.setFont(readableFont(u"Noto Sans"_s, 12, false));
    box.setFixedSize(150, 32);
    const auto foot = [&box](const QString &text) {
        box.setText(text);
        const QImage stem = box.grab({4, 2, 3, 28}).toImage();
        int y = stem.height() - 1;
        while (y > 0 && qGray(stem.pixel(1, y)) > 128)
            --y;
        return y;
    };
    EXPECT_NEAR(foot(u"E"_s), foot(u"E زوجه"_s), 1);
}
} // namespace
