#include "outcome.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace
{
struct TextCase {
    QString text;
    std::string expected;
};

QString many(const QString &text)
{
    return text.repeated(10'000);
}
} // namespace

TEST(FullReading, TakesTheWholeTextOrNothing)
{
    const std::pair<std::string, QStringList> cases[] = {
        {"error 13", {u""_s,      u"   "_s,   u"."_s,  u"-"_s,   u"$"_s,    u"()"_s,   u"5 Help"_s,
                      u"1 000"_s, u"1.2.3"_s, u"5%"_s, u"--5"_s, u"-5-"_s,  u"(-5)"_s, u"(5"_s,
                      u"5)"_s,    u"1e"_s,    u"&H"_s, u"&HG"_s, u"&O8"_s,  u"$$5"_s,  u"15/03/2004"_s,
                      u"True"_s,  u"٣"_s,     u",5"_s, u"5,"_s,  u"1,.5"_s, u"1.0,0"_s}},
        {"error 13", {many(u" "_s), many(u"-"_s), many(u"("_s), many(u"1/"_s), u"\u200F15"_s}},
        {"error 13", {QString(QChar()), u"5"_s + QChar(), u"5\u0001"_s, u"5"_s + QChar(0xD800)}},
        {"error 6", {many(u"9"_s), u"1e"_s + many(u"9"_s), u"&H"_s + many(u"F"_s)}},
        {"12", {u" 12 "_s, u"\t12\r\n"_s, u"+12"_s, u"1"_s + many(u","_s) + u'2'}},
        {"-12", {u"12-"_s, u"12 -"_s, u"-12"_s, u"(12)"_s, u" ( $12 ) "_s}},
        {"1000", {u"1,000"_s, u"10,00"_s, u"1,,000"_s, u"1e3"_s, u"1d3"_s}},
        {"100", {u"1,0,0"_s}},
        {"0.5", {u".5"_s}},
        {"5", {u"5."_s, u"$5"_s, u"5$"_s}},
        {"2.5", {u"25E-1"_s}},
        {"-5", {u"-$5"_s, u"$-5"_s}},
        {"16", {u"&H10"_s}},
        {"255", {u"&hFf"_s}},
        {"15", {u"&O17"_s}},
        {"0", {u"-0"_s, u"000"_s, many(u"0"_s), u"0."_s + many(u"0"_s) + u'1', u"1e-"_s + many(u"9"_s)}},
        {"12.5", {u"0012.50"_s}},
    };
    for (const auto &[expected, texts] : cases) {
        for (const QString &text : texts) {
            SCOPED_TRACE(text.left(20).toStdString());
            EXPECT_EQ(outcome([text = text] { return readMoney(text); }), expected);
            EXPECT_EQ(outcome([&] { return readDouble(text); }), expected);
            EXPECT_EQ(isNumeric(text), !expected.starts_with("error"));
        }
    }
}

TEST(FullReading, IsExactAndHalfToEvenAtTheFifthDecimal)
{
    const TextCase cases[] = {
        {u"0.00005"_s, "0"},
        {u"0.00015"_s, "0.0002"},
        {u"0.00025"_s, "0.0002"},
        {u"0.00025000000000000000000000000001"_s, "0.0003"},
        {u"-0.00015"_s, "-0.0002"},
        {u"0.99995"_s, "1"}, // 9999 is odd
        {u"2.99985"_s, "2.9998"},
        {u"900719925474099.1234"_s, "900719925474099.1234"}, // no double holds this
        {u"922337203685477.5807"_s, "922337203685477.5807"},
        {u"922337203685477.58065"_s, "922337203685477.5806"},
        {u"922337203685477.58075"_s, "error 6"},
        {u"-922337203685477.58085"_s, "-922337203685477.5808"},
        {u"-922337203685477.5809"_s, "error 6"},
        {u"1e15"_s, "error 6"},
        {u"&H7FFFFFFFFFFFFFFF"_s, "error 6"},
        {u"1e-400"_s, "0"},
        {u"0e99999999999999999999"_s, "0"},
        {u"0."_s + many(u"3"_s), "0.3333"},
    };
    for (const auto &[text, expected] : cases) {
        EXPECT_EQ(outcome([text = text] { return readMoney(text); }), expected) << text.toStdString();
        EXPECT_EQ(isNumeric(text), !expected.starts_with("error")) << text.toStdString();
    }
    EXPECT_EQ(outcome([] { return readDouble(u"1e15"_s); }), "1E+15");
    EXPECT_EQ(outcome([] { return readDouble(u"-1.5e308"_s); }), "-1.5E+308");
    EXPECT_EQ(outcome([] { return readDouble(u"2e308"_s); }), "error 6");
    EXPECT_EQ(outcome([] { return readDouble(u"1e-400"_s); }), "0");
}

TEST(LeadingReading, StopsWhereTheNumberStops)
{
    const TextCase cases[] = {
        {u""_s, "0"},           {u"."_s, "0"},         {u"-"_s, "0"},          {u"abc"_s, "0"},
        {u"$5"_s, "0"},         {u"(5)"_s, "0"},       {u"1,000"_s, "1"},      {u"5 Help"_s, "5"},
        {u"1.2.3"_s, "1.2"},    {u"+7"_s, "7"},        {u" 2 45 7"_s, "2457"}, {u"1\n2\t3"_s, "123"},
        {u"12\r3"_s, "12"},     {u"- 5.5x"_s, "-5.5"}, {u".5"_s, "0.5"},       {u"1e3"_s, "1000"},
        {u"1 d - 2"_s, "0.01"}, {u"1e"_s, "1"},        {u"1e+x"_s, "1"},       {u"5 days"_s, "5"},
        {u"&H1F"_s, "31"},      {u"&o17"_s, "15"},     {u"&"_s, "0"},          {u"1e999"_s, "error 6"},
    };
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(outcome([text = text] { return readLeadingNumber(text); }), expected) << text.toStdString();
    EXPECT_EQ(outcome([] { return readLeadingNumber(many(u"9"_s)); }), "error 6");
    EXPECT_EQ(outcome([] { return readLeadingNumber(many(u"1:"_s)); }), "1");
}

TEST(MoneyConversions, RoundHalfToEvenAndKnowTheirRange)
{
    const std::pair<double, std::string> fromDouble[] = {
        {1001.5 * (1.0 / 8.0), "125.1875"},
        {100.0 / 3.0, "33.3333"},
        {0.03125, "0.0312"},
        {0.09375, "0.0938"},
        {-0.03125, "-0.0312"},
        {-922337203685477.625, "-922337203685477.5808"}, // times 10000 is -2^63 in double arithmetic
        {922337203685477.625, "error 6"},
        {std::numeric_limits<double>::infinity(), "error 6"},
        {std::numeric_limits<double>::quiet_NaN(), "error 6"},
    };
    for (const auto &[value, expected] : fromDouble)
        EXPECT_EQ(outcome([value = value] { return toMoney(value); }), expected) << value;

    const TextCase toWhole[] = {
        {u"125.5"_s, "126"},
        {u"124.5"_s, "124"},
        {u"-0.5"_s, "0"},
        {u"-1.5"_s, "-2"},
        {u"0.5001"_s, "1"},
        {u"2147483647.4999"_s, "2147483647"},
        {u"2147483647.5"_s, "error 6"},
        {u"-2147483648.5"_s, "-2147483648"},
        {u"-2147483648.5001"_s, "error 6"},
    };
    for (const auto &[text, expected] : toWhole)
        EXPECT_EQ(outcome([text = text] { return toLong(readMoney(text)); }), expected) << text.toStdString();

    const Money largest = Money::fromTenThousandths(std::numeric_limits<qint64>::max());
    const Money smallest = Money::fromTenThousandths(std::numeric_limits<qint64>::min());
    const Money least = Money::fromTenThousandths(1);
    EXPECT_EQ(outcome([&] { return largest + least; }), "error 6");
    EXPECT_EQ(outcome([&] { return smallest - least; }), "error 6");
    EXPECT_EQ(outcome([&] { return -smallest; }), "error 6");
    EXPECT_EQ(outcome([&] { return smallest * -1; }), "error 6");
    EXPECT_EQ(outcome([&] { return Money::fromUnits(922337203685478); }), "error 6");
    EXPECT_EQ(outcome([&] { return Money::fromUnits(-5) - least * 5000; }), "-5.5");
}

TEST(WholeNumbers, RoundHalfToEvenAndKnowTheirRange)
{
    const TextCase cases[] = {
        {u"8.25"_s, "8"},          {u"2.5"_s, "2"},         {u"3.5"_s, "4"},
        {u"-2.5"_s, "-2"},         {u"32767.4"_s, "32767"}, {u"32767.5"_s, "error 6"},
        {u"-32768.5"_s, "-32768"}, {u""_s, "error 13"},     {u"x"_s, "error 13"},
    };
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(outcome([text = text] { return toInteger(text); }), expected) << text.toStdString();
    EXPECT_EQ(outcome([] { return toLongInteger(u"2147483647.5"_s); }), "error 6");
    EXPECT_EQ(outcome([] { return toLongInteger(-2147483648.5); }), "-2147483648");
    EXPECT_EQ(outcome([] { return toLongInteger(std::numeric_limits<double>::quiet_NaN()); }), "error 6");
}

TEST(Texts, OfNumbersAndBooleans)
{
    const std::pair<double, std::string> numbers[] = {
        {0.1 + 0.2, "0.3"}, {-33.3333, "-33.3333"},
        {-0.0, "0"},        {123456789012345.0, "123456789012345"},
        {1e15, "1E+15"},    {0.0001, "0.0001"},
        {0.00001, "1E-05"}, {-1.25e-7, "-1.25E-07"},
    };
    for (const auto &[value, expected] : numbers)
        EXPECT_EQ(numberText(value).toStdString(), expected);

    const TextCase booleans[] = {
        {u"TRUE"_s, "True"},   {u"false"_s, "False"}, {u"0"_s, "False"},      {u"-1"_s, "True"},
        {u".00001"_s, "True"}, {u"1e99"_s, "True"},   {u"yes"_s, "error 13"}, {u""_s, "error 13"},
    };
    for (const auto &[text, expected] : booleans)
        EXPECT_EQ(outcome([text = text] { return toBoolean(text); }), expected) << text.toStdString();

    EXPECT_EQ(asciiDigits(u"a٠٩۰۹9"_s), u"a09099"_s);
    EXPECT_EQ(trimBlanks(u"  \ta b\r\n "_s), u"\ta b\r\n"_s);
    EXPECT_EQ(trimBlanks(u"   "_s), QString());
}

TEST(Values, ConvertToEveryKind)
{
    struct ValueCase {
        Value value;
        std::string boolean, whole, real, money, date, text;
    };
    const std::string null = "error 94";
    const std::string none = "error 13";
    const std::string over = "error 6";
    const ValueCase cases[] = {
        {Value(), null, null, null, null, null, ""},
        {true, "True", "-1", "-1", "-1", "1899-12-29T00:00:00Z", "True"},
        {0, "False", "0", "0", "0", "1899-12-30T00:00:00Z", "0"},
        {2.5, "True", "2", "2.5", "2.5", "1900-01-01T12:00:00Z", "2.5"},
        {1e300, "True", over, "1E+300", over, over, "1E+300"},
        {readMoney(u"3.5"_s), "True", "4", "3.5", "3.5", "1900-01-02T12:00:00Z", "3.5"},
        {makeDate(2000, 1, 1, 18), "True", "36527", "36526.75", "36526.75", "2000-01-01T18:00:00Z",
         "01/01/2000 18:00:00"},
        {u"1,000.00005"_s, "True", "1000", "1000.00005", "1000", none, "1,000.00005"},
        {u"15/03/2004"_s, none, none, none, none, "2004-03-15T00:00:00Z", "15/03/2004"},
        {u"true"_s, "True", none, none, none, none, "true"},
    };
    for (const auto &[value, boolean, whole, real, money, date, text] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(outcome([value = value] { return value.toBool(); }), boolean);
        EXPECT_EQ(outcome([value = value] { return value.toInt(); }), whole);
        EXPECT_EQ(outcome([value = value] { return value.toDouble(); }), real);
        EXPECT_EQ(outcome([value = value] { return value.toMoneyValue(); }), money);
        EXPECT_EQ(outcome([value = value] { return value.toDate(); }), date);
        EXPECT_EQ(value.toText().toStdString(), text);
    }
}
