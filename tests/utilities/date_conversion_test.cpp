#include "platform/runtime/hijri_calendar.h"
#include "support/failures.h"
#include "support/hostile.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "utilities/convert_date_string.h"
#include "utilities/frmDateConversion.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QStatusBar>

namespace
{

class DateConversionTest : public SessionFixture
{
protected:
    DateConversionTest()
    {
        setClock([] { return makeDate(2004, 3, 15, 12, 30, 45); });
    }
    ~DateConversionTest() override { EXPECT_EQ(currentCalendar(), gregorianCalendar); }

    static QString converted(const frmDateConversion &screen, const char *button, const QString &text)
    {
        fill(screen, "Text1", text);
        click(screen, button);
        const auto panels = control<QStatusBar>(screen, "StatusBar1").findChildren<QLabel *>();
        return textOf(screen, "Label2") + u'|' + panels.at(2)->text();
    }
};

TEST_F(DateConversionTest, GivesEachDayOfACenturyThereAndBack)
{
    int reckoned[] = {1369, 3, 12}; // 1 January 1950
    for (QDate day(1950, 1, 1); day <= QDate(2049, 12, 31); day = day.addDays(1)) {
        const QString text = shortDate(makeDate(day));
        const QString hijri = ConvertDateString(text, 0, 1, u"Short Date"_s);
        ASSERT_EQ(hijri, u"%1/%2/%3"_s.arg(reckoned[2], 2, 10, QChar(u'0'))
                             .arg(reckoned[1], 2, 10, QChar(u'0'))
                             .arg(reckoned[0]));
        ASSERT_EQ(ConvertDateString(hijri, 1, 0, u"Short Date"_s), text);
        // The next day by the rule of the tabular calendar.
        const bool leap = QList<int>{2, 5, 7, 10, 13, 16, 18, 21, 24, 26, 29}.contains(reckoned[0] % 30);
        const int length = reckoned[1] % 2 == 1 || (reckoned[1] == 12 && leap) ? 30 : 29;
        if (++reckoned[2] > length) {
            reckoned[2] = 1;
            if (++reckoned[1] > 12) {
                reckoned[1] = 1;
                ++reckoned[0];
            }
        }
    }
}

TEST_F(DateConversionTest, ConvertsBothWaysInTheNamedForm)
{
    const QString shortForm = u"Short Date"_s;
    const QString longForm = u"Long Date"_s;
    const struct {
        QString text;
        int from;
        QString form, result;
    } cases[] = {
        {u"01/01/2000"_s, 0, shortForm, u"25/09/1420"_s},
        {u"03/04/2002"_s, 0, shortForm, u"21/01/1423"_s},
        {u"28/07/2016"_s, 0, shortForm, u"23/10/1437"_s},
        {u"15/03/2004 10:20:30"_s, 0, shortForm, u"24/01/1425"_s},
        {u"24/01/1425"_s, 1, longForm, u"15 March 2004"_s},
        {u"18/07/622"_s, 0, shortForm, u"01/01/0001"_s},
        {u"31/12/9999"_s, 0, shortForm, u"03/04/9666"_s},
        {u"01/01/00"_s, 1, shortForm, u"20/11/1979"_s},
        {u"01/01/51"_s, 1, shortForm, u"14/05/2029"_s},
        {u"01/01/52"_s, 1, shortForm, u"25/04/1933"_s},
        {u"29/02/1425"_s, 1, shortForm, u"19/04/2004"_s},
        {u"30/12/1424"_s, 1, longForm, u"error 13"_s},
        {u"30/02/1425"_s, 1, longForm, u"error 13"_s},
        {u"01/01/9999"_s, 1, longForm, u"error 13"_s},
        {u"15 March 2004"_s, 1, longForm, u"error 13"_s},
        {u"29/02/1425"_s, 0, longForm, u"error 13"_s},
        {u"15/03/2004"_s, 2, longForm, u"error 5"_s},
    };
    for (const auto &c : cases) {
        QString result;
        const int error = failureOf([&] { result = ConvertDateString(c.text, c.from, 1 - c.from, c.form); });
        EXPECT_EQ(error == 0 ? result : u"error %1"_s.arg(error), c.result) << c.text.toStdString();
        EXPECT_EQ(currentCalendar(), gregorianCalendar);
    }
    const QString months =
        u"محرم صفر ربيع الاول ربيع الثاني جمادى الاولى جمادى الثانية رجب شعبان رمضان شوال ذو القعدة ذو الحجة"_s;
    QStringList written;
    for (int month = 1; month <= 12; ++month)
        written += ConvertDateString(u"05/%1/1425"_s.arg(month), 1, 1, longForm).mid(3).chopped(5);
    EXPECT_EQ(written.join(u' '), months);
}

TEST_F(DateConversionTest, ChoosesTheFormByTheComboAndTellsBadDates)
{
    const struct {
        bool arabic;
        QStringList forms;
        QString bad, march;
    } cases[] = {
        {false,
         {u"Short Date"_s, u"Long Date"_s, u"General Format"_s},
         u"Bad Date|Enter a valid date"_s,
         u"March"_s},
        {true, {u"قصير"_s, u"طويل"_s, u"عادي"_s}, u"|أدخل تاريخاً صحيحاً"_s, u"مارس"_s},
    };
    for (const auto &c : cases) {
        setLanguage(c.arabic);
        frmDateConversion screen;
        screen.load();
        EXPECT_EQ(textOf(screen, "Text1"), u"15/03/2004"_s);
        EXPECT_EQ(textOf(screen, "Label1"), c.arabic ? u"سنه/شهر/يوم"_s : u"dd/mm/yyyy"_s);
        click(screen, "cmdHijri");
        EXPECT_EQ(textOf(screen, "Label2"), u"24/01/1425"_s);
        for (const QString &form : {c.forms[1], c.forms[2]}) {
            choose(screen, "ComboDateFormats", form);
            EXPECT_EQ(converted(screen, "cmdHijri", u"15/03/2004"_s), u"24 محرم 1425|"_s);
        }
        choose(screen, "ComboDateFormats", c.forms[0]);
        EXPECT_EQ(converted(screen, "cmdGregorian", u"24/01/1425"_s), u"15/03/2004|"_s);
        fill(screen, "ComboDateFormats", u"S"_s);
        EXPECT_EQ(converted(screen, "cmdGregorian", u"24/01/1425"_s), u"15 %1 2004|"_s.arg(c.march));
        EXPECT_EQ(converted(screen, "cmdGregorian", u"29/02/1425"_s),
                  c.bad); // good as a Hijri date all the same
        EXPECT_EQ(converted(screen, "cmdHijri", u"30/02/1425"_s), c.bad);
        EXPECT_EQ(converted(screen, "cmdHijri", u"\u0661\u0665/03/2004"_s),
                  u"24 محرم 1425"_s + c.bad.mid(c.bad.indexOf(u'|'))); // the notice stays
        for (const QString &text : hostileTexts() + QStringList{QString(), u" "_s, u"38061"_s, u"Monday"_s}) {
            paste(screen, "Text1", text);
            click(screen, "cmdHijri");
            click(screen, "cmdGregorian");
            EXPECT_EQ(textOf(screen, "Label2"), c.bad.left(c.bad.indexOf(u'|')));
        }
    }
}

TEST_F(DateConversionTest, EndsWithADayThatTheOtherCalendarHasNot)
{
    const struct {
        const char *button;
        QString text, number, description;
    } cases[] = {
        {"cmdGregorian", u"31/03/1425"_s, u"13"_s, u"Type mismatch"_s},
        {"cmdHijri", u"17/07/0622"_s, u"5"_s, u"Invalid procedure call or argument"_s},
    };
    for (const auto &c : cases) {
        frmDateConversion ending;
        ending.load();
        fill(ending, "Text1", c.text);
        ScriptedDialogs dialogs;
        dialogs.expectUntrapped(c.number, c.description);
        EXPECT_TRUE(processEnded(1, [&] { click(ending, c.button); }));
    }
}

} // namespace
