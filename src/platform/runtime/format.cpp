#include "platform/runtime/format.h"

#include "platform/runtime/date_format.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/number_format.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"

#include <cmath>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{
enum class PatternKind { Number, Date, Literal };

/// The pattern that a name stands for; other patterns come back as they are.
QString namedPattern(const QString &pattern)
{
    static const std::pair<QString, QString> names[] = {
        {u"Short Date"_s, u"dd/mm/yyyy"_s},
        {u"Long Date"_s, u"dd mmmm yyyy"_s},
        {u"General Date"_s, u"c"_s},
        {u"Long Time"_s, u"hh:nn:ss"_s},
    };
    for (const auto &[name, meaning] : names)
        if (pattern.compare(name, Qt::CaseInsensitive) == 0)
            return meaning;
    return pattern;
}

PatternKind kindOf(const QString &pattern)
{
    auto kind = PatternKind::Literal;
    for (qsizetype at = 0; at < pattern.size();) {
        QString literal;
        if (takeLiteral(pattern, at, literal))
            continue;
        const QChar c = pattern[at++].toLower();
        if (c == u'0' || c == u'#')
            return PatternKind::Number;
        if (u"ymdhnsc"_s.contains(c))
            kind = PatternKind::Date;
    }
    return kind;
}

/// The number behind a value, exact where it is exact; nothing for infinities and not-a-number.
std::optional<Decimal> decimalOf(const Value &value)
{
    if (value.kind() == Value::Kind::Money)
        return Decimal::fromMoney(value.toMoneyValue());
    const double number = value.toDouble();
    if (!std::isfinite(number))
        return std::nullopt;
    return Decimal::fromDouble(number);
}

/// A text under a date pattern: a date, or a number that counts days.
std::optional<QDateTime> dateOfText(const QString &text)
{
    try {
        return isNumeric(text) ? dateFromSerial(readDouble(text)) : parseDate(text);
    } catch (const RuntimeError &) {
        return std::nullopt; // a number of days outside the range of dates
    }
}

QString formatText(const QString &text, const QString &pattern, PatternKind kind, bool arabicMonths)
{
    if (kind == PatternKind::Date) {
        const auto date = dateOfText(text);
        return date ? formatDate(*date, pattern, arabicMonths) : text;
    }
    const auto number = readDecimal(text);
    return number && number->toMoney() ? formatNumber(*number, pattern) : text;
}
} // namespace

QString format(const Value &value, const QString &pattern, bool arabicMonths)
{
    if (value.isNull() || pattern.isEmpty())
        return value.toText();
    const QString codes = namedPattern(pattern);
    const PatternKind kind = kindOf(codes);
    if (value.kind() == Value::Kind::Text)
        return formatText(value.toText(), codes, kind, arabicMonths);
    if (kind == PatternKind::Date)
        return formatDate(value.toDate(), codes, arabicMonths);
    const auto number = decimalOf(value);
    return number ? formatNumber(*number, codes) : value.toText();
}
