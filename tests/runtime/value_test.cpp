#include "outcome.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/value.h"

using namespace Qt::Literals::StringLiterals;

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
