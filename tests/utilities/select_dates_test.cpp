#include "support/screens.h"
#include "support/store_fixture.h"
#include "utilities/frmSelectDates.h"

namespace
{

class SelectDatesTest : public SessionFixture
{
protected:
    SelectDatesTest()
    {
        setClock([] { return makeDate(2004, 2, 29, 23, 59, 59); });
    }

    /// Shows the dialog and acts while it stands.
    void show(std::function<void(frmSelectDates &)> action)
    {
        onModal<frmSelectDates>(std::move(action));
        screen.showModal();
    }

    static QString dates(const frmSelectDates &shown)
    {
        return textOf(shown, "DateFromx") + u' ' + textOf(shown, "DateTox");
    }

    frmSelectDates screen;
};

TEST_F(SelectDatesTest, RunsItsRowFromTheSideOfTheLanguage)
{
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        frmSelectDates shown;
        shown.load();
        EXPECT_EQ(shown.caption(), arabic ? u"تحديد التواريخ"_s : u"Dates"_s);
        const char *before = nullptr;
        for (const char *name : {"fromLabel", "DateFromx", "toLabel", "DateTox"}) {
            if (before)
                EXPECT_EQ(control(shown, name).x() < control(shown, before).x(), arabic) << name;
            before = name;
        }
    }
}

TEST_F(SelectDatesTest, BeginsWithThePresentYearEachTime)
{
    show([](frmSelectDates &shown) {
        EXPECT_EQ(dates(shown), u"01/01/2004 31/12/2004"_s);
        fill(shown, "DateFromx", u"05/03/2003"_s);
        fill(shown, "DateTox", u"05/03/2003"_s); // equal dates are a range
        pressKey(shown, Qt::Key_Return);
        EXPECT_FALSE(shown.isVisible());
    });
    EXPECT_TRUE(screen.datesAccepted);
    EXPECT_EQ(screen.dateFromValue, makeDate(2003, 3, 5));
    EXPECT_EQ(screen.dateToValue, makeDate(2003, 3, 5));
    frmSelectDates next;
    next.load();
    EXPECT_EQ(dates(next), u"01/01/2004 31/12/2004"_s);
    EXPECT_FALSE(next.datesAccepted);
    for (const auto &refuse : {std::function([](frmSelectDates &shown) { click(shown, "cmdCancel"); }),
                               std::function([](frmSelectDates &shown) { shown.close(); })}) {
        screen.datesAccepted = true; // as by an OK before
        show(refuse);
        EXPECT_FALSE(screen.datesAccepted);
    }
}

TEST_F(SelectDatesTest, RefusesInTheToldOrderAndStays)
{
    const QString noDate = u"Wrong From Date \r\nتاريخ غير مقبول"_s; // of either box
    const QString reversed = u"Date To CANNOT be less than date From \r\nتاريخ غير مقبول"_s;
    const struct {
        QString from, to;
        const char *focus;
        QString text;
    } cases[] = {
        {u""_s, u""_s, "DateFromx", noDate},
        {u""_s, u"31/12/2003"_s, "DateFromx", noDate},
        {u"01/01/2004"_s, u""_s, "DateTox", noDate},
        {u"01/01/2004"_s, u"31/12/2003"_s, "DateTox", reversed},
    };
    show([&](frmSelectDates &shown) {
        for (const auto &c : cases) {
            const std::pair<const char *, QString> boxes[] = {{"DateFromx", c.from}, {"DateTox", c.to}};
            for (const auto &[name, text] : boxes)
                fill(shown, name, text.isEmpty() ? u"01/01/2004"_s : text);
            for (const auto &[name, text] : boxes) {
                if (text.isEmpty()) // not a whole year; leaving the box would bring that back
                    pressKey(control(shown, name), Qt::Key_Backspace);
            }
            ScriptedDialogs dialogs;
            dialogs.expectMessage(c.text);
            control<QPushButton>(shown, "cmdOK").click(); // without its focus
            EXPECT_EQ(shown.focusWidget()->objectName(), QLatin1StringView(c.focus));
            EXPECT_TRUE(shown.isVisible());
        }
        pressKey(shown, Qt::Key_Escape);
    });
    EXPECT_FALSE(screen.datesAccepted);
    EXPECT_FALSE(screen.dateFromValue.isValid());
}

} // namespace
