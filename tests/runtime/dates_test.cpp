#include "outcome.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
class Dates : public ::testing::Test
{
protected:
    Dates()
    {
        setClock([] { return makeDate(2007, 6, 1, 12, 30, 45); });
    }
    ~Dates() override { setClock({}); }
};
} // namespace

TEST_F(Dates, AreReadFromTexts)
{
    // Numbers are a day first, then the other orders; two of them a day of this year, then a month.
    const std::string none = "error 13";
    const std::pair<std::string, QStringList> cases[] = {
        {"2004-03-15T00:00:00Z",
         {u"15/03/2004"_s, u"03/15/2004"_s, u"2004/03/15"_s, u"2004-15-03"_s, u"15 March 2004"_s,
          u"march 15, 2004"_s, u"15-MAR-04"_s, u"2004 Mar 15"_s, u"15 مارس 2004"_s}},
        {"2004-03-05T00:00:00Z", {u" 5-3-2004 "_s, u"5 3 2004"_s}},
        {"1995-01-31T00:00:00Z", {u"31-01-95"_s}},
        {"2003-02-01T00:00:00Z", {u"01/02/03"_s}},
        {"1999-12-31T00:00:00Z", {u"99/12/31"_s, u"99/31/12"_s}},
        {"2029-01-01T00:00:00Z", {u"1/1/29"_s}},
        {"1930-01-01T00:00:00Z", {u"1/1/30"_s}},
        {"0622-01-01T00:00:00Z", {u"1/1/622"_s}},
        {"2004-02-29T00:00:00Z", {u"29/02/2004"_s}},
        {"9999-12-31T00:00:00Z", {u"31/12/9999"_s}},
        {"2007-03-15T00:00:00Z", {u"15/3"_s, u"3/15"_s, u"15 Mar"_s}},
        {"2004-03-01T00:00:00Z", {u"3/2004"_s, u"2004/3"_s, u"Mar 2004"_s}},
        {"1930-02-01T00:00:00Z", {u"2/30"_s}},
        {"2004-04-15T00:00:00Z", {u"15 أبريل 2004"_s, u"15 ابريل 2004"_s}},
        {"1899-12-30T10:20:00Z", {u"10:20"_s, u"10:20 ص"_s}},
        {"1899-12-30T04:28:14Z", {u"04.28.14"_s}},
        {"2004-03-15T10:20:30Z", {u"15/03/2004 10:20:30"_s, u"10:20:30 15/03/2004"_s}},
        {"2004-03-15T22:20:00Z", {u"15/03/2004 10:20 PM"_s}},
        {"2004-03-15T00:05:00Z", {u"12:05am 15/03/2004"_s}},
        {"1899-12-30T12:05:00Z", {u"12:05 p"_s}},
        {"2004-03-15T22:20:30Z", {u"15/03/2004 10:20:30 م"_s}},
        {none,
         {u"29/02/2003"_s, u"30/02/1425"_s, u"29/02/1425"_s, u"1/1/099"_s, u"1/2004/3"_s, u"1/1/12004"_s,
          u"13/45"_s}},
        {none, {u"15 Marc 2004"_s, u"Mar"_s, u"Mar Mar 2004"_s, u"Monday 15 March 2004"_s}},
        {none,
         {u"04.28.2014"_s, u"24:00"_s, u"10:60"_s, u"13:00 AM"_s, u"10:20:"_s, u":20"_s, u"10:20.30"_s,
          u"1:2:3:4"_s, u"10:20 10:20"_s, u"15/03 10:20 2004"_s, u"15/03/2004 PM"_s}},
        {none,
         {u""_s, u"38061"_s, u"/15/03/2004"_s, u"15/03/2004/"_s, u"15//03/2004"_s, u"15,03,2004"_s,
          u"1/2/3/4"_s, u"15/03/2004\t"_s}},
    };
    for (const auto &[expected, texts] : cases) {
        for (const QString &text : texts) {
            EXPECT_EQ(outcome([&] { return readDate(text); }), expected) << text.toStdString();
            EXPECT_EQ(isDate(text), expected != none) << text.toStdString();
        }
    }
}

TEST_F(Dates, AreShownInTheirGeneralAndLongForms)
{
    EXPECT_EQ(generalDate(makeDate(2004, 3, 5)), u"05/03/2004"_s);
    EXPECT_EQ(generalDate(makeDate(2004, 3, 5, 0, 0, 1)), u"05/03/2004 00:00:01"_s);
    EXPECT_EQ(generalDate(makeDate(1899, 12, 30, 9, 5, 0)), u"09:05:00"_s);
    EXPECT_EQ(longDate(makeDate(622, 7, 8)), u"08 July 0622"_s);
    EXPECT_EQ(longDate(makeDate(2004, 1, 15), true), u"15 يناير 2004"_s);
    for (const QDateTime &value :
         {makeDate(100, 1, 1, 23, 59, 59), makeDate(1899, 12, 30, 1, 0, 0), makeDate(9999, 12, 31)})
        EXPECT_EQ(readDate(generalDate(value)), value) << generalDate(value).toStdString();
    EXPECT_EQ(daysBetween(makeDate(2004, 3, 1, 0, 1), makeDate(2004, 2, 28, 23, 59)), -2);
    EXPECT_EQ(outcome([] { return makeDate(2003, 2, 29); }), "error 5");
    EXPECT_EQ(outcome([] { return makeDate(99, 1, 1); }), "error 5");
    EXPECT_EQ(outcome([] { return makeDate(2003, 2, 28, 24); }), "error 5");
}

TEST_F(Dates, CountDaysAsNumbers)
{
    const std::pair<double, std::string> cases[] = {
        {0.5, "1899-12-30T12:00:00Z"},
        {-1.25, "1899-12-29T06:00:00Z"},
        {36526.0, "2000-01-01T00:00:00Z"},
        {-657434.0, "0100-01-01T00:00:00Z"},
        {2958465.0, "9999-12-31T00:00:00Z"},
        {36525.9999999, "2000-01-01T00:00:00Z"}, // nearest second
        {2958466.0, "error 6"},
        {-657435.0, "error 6"},
        {1e300, "error 6"},
    };
    for (const auto &[serial, expected] : cases)
        EXPECT_EQ(outcome([serial = serial] { return dateFromSerial(serial); }), expected) << serial;
    EXPECT_EQ(dateSerial(makeDate(1899, 12, 29, 6)), -1.25);
    EXPECT_EQ(dateSerial(makeDate(2000, 1, 1, 18)), 36526.75);
}

TEST_F(Dates, ComeFromTheClockAsWallTimeInWholeSeconds)
{
    setClock(
        [] { return QDateTime(QDate(2004, 3, 28), QTime(2, 30, 15, 999), Qt::OffsetFromUTC, 3 * 3600); });
    EXPECT_EQ(now(), makeDate(2004, 3, 28, 2, 30, 15));
    EXPECT_EQ(today(), makeDate(2004, 3, 28));
    setClock({});
    const QDateTime machine = QDateTime::currentDateTime();
    EXPECT_EQ(now().timeSpec(), Qt::UTC);
    EXPECT_LE(std::abs(now().secsTo(QDateTime(machine.date(), machine.time(), Qt::UTC))), 60);
}
