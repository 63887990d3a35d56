#include "outcome.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"
#include "platform/runtime/numbers.h"

#include <QtCore/QLocale>

using namespace Qt::Literals::StringLiterals;

namespace
{
struct FormatCase {
    Value value;
    QString pattern;
    QString expected;
};

void check(std::initializer_list<FormatCase> cases)
{
    for (const auto &[value, pattern, expected] : cases)
        EXPECT_EQ(format(value, pattern).toStdString(), expected.toStdString())
            << value.toText().toStdString() << " under " << pattern.toStdString();
}
} // namespace

TEST(Format, ShowsNumbers)
{
    const Value null;
    check({
        {1234567.891, u"#,###,##0.00"_s, u"1,234,567.89"_s},
        {12345678901.5, u"#,###,##0.00"_s, u"12,345,678,901.50"_s},
        {1234.5, u"##,###,###,##0.00"_s, u"1,234.50"_s},
        {-1234.5, u"###,###,##0.00"_s, u"-1,234.50"_s},
        {0, u"#,###,##0.00"_s, u"0.00"_s},
        {-0.001, u"0.00"_s, u"-0.00"_s},
        {-0.0, u"0.00"_s, u"0.00"_s},
        {2.675, u"0.00"_s, u"2.68"_s},
        {999.995, u"#,##0.00"_s, u"1,000.00"_s},
        {0.5, u"0"_s, u"1"_s},
        {1e20, u"#,##0"_s, u"100,000,000,000,000,000,000"_s},
        {u"2.345"_s, u"#,###,##0.00"_s, u"2.35"_s},
        {u"1,000"_s, u"#,###,##0.00"_s, u"1,000.00"_s},
        {u"922337203685477.565"_s, u"0.00"_s, u"922337203685477.57"_s},
        {readMoney(u"584.2084"_s), u"#,###,##0.00"_s, u"584.21"_s},
        {readMoney(u"-922337203685477.5808"_s), u"#,##0.00"_s, u"-922,337,203,685,477.58"_s},
        {3, u"0#"_s, u"03"_s},
        {0, u"###,###,###"_s, u""_s},
        {-0.3, u"###,###,###"_s, u""_s},
        {0, u"#,##0"_s, u"0"_s},
        {200403, u"####/##"_s, u"2004/03"_s},
        {1234567, u"\"ر.س.\" #,##0"_s, u"ر.س. 1,234,567"_s},
        {-5, u"\"#0\"\\00"_s, u"-#005"_s},
        {5, u"0 \"open"_s, u"5 open"_s},
        {5, u"0\\"_s, u"5\\"_s},
        {0.5, u"#.##"_s, u".5"_s},
        {12.5, u".0"_s, u"12.5"_s},
        {-5, u"0.00;(0.00)"_s, u"(5.00)"_s},
        {-5, u"0;;\"none\""_s, u"-5"_s},
        {0, u"0;-0;\"none\""_s, u"none"_s},
        {0.125, u"0%"_s, u"13%"_s},
        {1234567, u"#,##0,"_s, u"1,235"_s},
        {12345, u"0.00E+00"_s, u"1.23E+04"_s},
        {9.999, u"0.00e-0"_s, u"1.00e1"_s},
        {0.00012, u"0.0E+0"_s, u"1.2E-4"_s},
        {true, u"0"_s, u"-1"_s},
        {u"5 Help"_s, u"0.00"_s, u"5 Help"_s},
        {u""_s, u"0.00"_s, u""_s},
        {null, u"0.00"_s, u""_s},
        {5.5, u""_s, u"5.5"_s},
    });
}

TEST(Format, ShowsDates)
{
    const QDateTime morning = makeDate(2004, 3, 5, 9, 7, 8);
    const QDateTime evening = makeDate(2004, 3, 15, 22, 5, 0);
    const Value null;
    check({
        {morning, u"yyyy/mm/dd"_s, u"2004/03/05"_s},
        {morning, u"YYYY/MM/DD"_s, u"2004/03/05"_s},
        {morning, u"hh:mm:ss yyyy/mm/dd"_s, u"09:07:08 2004/03/05"_s},
        {morning, u"yyyy/mm/dd hh:mm:ss"_s, u"2004/03/05 09:07:08"_s},
        {morning, u"d/m/yy h:m:s n"_s, u"5/3/04 9:7:8 7"_s},
        {morning, u"hhmm h/m"_s, u"0907 9/3"_s},
        {morning, u"mmm mmmm, ddd dddd"_s, u"Mar March, Fri Friday"_s},
        {morning, u"y \"day\""_s, u"65 day"_s}, // 31 + 29 + 5
        {makeDate(2004, 3, 15), u"yyyy\\mm\\dd"_s, u"2004m3d15"_s},
        {evening, u"h:mm AM/PM"_s, u"10:05 PM"_s},
        {makeDate(2004, 3, 15), u"h a/p"_s, u"12 a"_s},
        {evening, u"Short Date"_s, u"15/03/2004"_s},
        {evening, u"Long Date"_s, u"15 March 2004"_s},
        {evening, u"General Date"_s, u"15/03/2004 22:05:00"_s},
        {evening, u"long time"_s, u"22:05:00"_s},
        {u"15/03/2004"_s, u"yyyy/mm/dd"_s, u"2004/03/15"_s},
        {38061, u"yyyy/mm/dd"_s, u"2004/03/15"_s}, // 36526 is 1 January 2000
        {u"38061"_s, u"yyyy/mm/dd"_s, u"2004/03/15"_s},
        {u"99999999"_s, u"yyyy/mm/dd"_s, u"99999999"_s},
        {u"no date"_s, u"yyyy/mm/dd"_s, u"no date"_s},
        {makeDate(2004, 3, 15), u"0"_s, u"38061"_s},
        {null, u"yyyy/mm/dd"_s, u""_s},
    });
    EXPECT_EQ(format(evening, u"d mmm yyyy"_s, true), u"15 مارس 2004"_s);
    EXPECT_EQ(outcome([] { return format(1e300, u"yyyy"_s); }), "error 6");
}

TEST(Format, DoesNotFollowTheDefaultLocale)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    check({{1234.5, u"#,##0.00"_s, u"1,234.50"_s},
           {makeDate(2004, 3, 5, 9, 7, 8), u"hh:mm:ss dd mmmm yyyy ddd"_s, u"09:07:08 05 March 2004 Fri"_s}});
    EXPECT_EQ(Value(makeDate(2004, 3, 5)).toText(), u"05/03/2004"_s);
    EXPECT_EQ(Value(1.5).toText() + readMoney(u"1,000.5"_s).toText(), u"1.51000.5"_s);
    QLocale::setDefault(before);
}
