#include "platform/database/sql/literals.h"

#include "platform/runtime/dates.h"

#include <QtCore/QVarLengthArray>

#include <array>
#include <charconv>
#include <limits>

namespace sql
{

QString textLiteral(QStringView inner, char16_t quote)
{
    QString text = inner.toString();
    const QChar one(quote);
    if (text.contains(one))
        text.replace(QString(2, one), QString(one));
    return text;
}

Value numberLiteral(QStringView digits)
{
    QVarLengthArray<char, 64> ascii;
    bool whole = true;
    for (const QChar digit : digits) {
        whole = whole && digit.isDigit();
        ascii.append(digit.toLatin1());
    }
    const char *end = ascii.constData() + ascii.size();
    if (whole) {
        qint32 number = 0;
        if (std::from_chars(ascii.constData(), end, number).ec == std::errc())
            return number;
    }
    double number = 0;
    if (std::from_chars(ascii.constData(), end, number).ec == std::errc::result_out_of_range) {
        // The exponent's sign tells which way: too large is beyond every column, too small is nothing.
        const bool small = digits.contains(QLatin1Char('-'));
        return small ? 0.0 : std::numeric_limits<double>::infinity();
    }
    return number;
}

namespace
{

int fullYear(int year, qsizetype digits)
{
    return digits > 2 ? year : year < 30 ? 2000 + year : 1900 + year;
}

/// Three numbers with `/` or `-` between them; moves the text behind them.
std::optional<QDate> readDay(QStringView &text)
{
    std::array<int, 3> number{};
    std::array<qsizetype, 3> digits{};
    QStringView rest = text;
    for (size_t part = 0; part < 3; ++part) {
        while (digits[part] < rest.size() && digits[part] < 5 && rest[digits[part]] >= u'0' &&
               rest[digits[part]] <= u'9')
            number[part] = number[part] * 10 + rest[digits[part]++].digitValue();
        if (digits[part] == 0 || digits[part] > 4)
            return std::nullopt;
        rest = rest.sliced(digits[part]);
        if (part == 2)
            break;
        if (rest.isEmpty() || (rest.front() != u'/' && rest.front() != u'-'))
            return std::nullopt;
        rest = rest.sliced(1);
    }
    text = rest;
    if (digits[0] > 2)
        return QDate(number[0], number[1], number[2]);
    const int year = fullYear(number[2], digits[2]);
    const QDate monthFirst(year, number[0], number[1]);
    return monthFirst.isValid() ? monthFirst : QDate(year, number[1], number[0]);
}

} // namespace

std::optional<QDateTime> dateLiteral(QStringView inner)
{
    QStringView rest = inner.trimmed();
    const std::optional<QDate> day = readDay(rest);
    if (!day)
        return parseDate(inner.toString()); // a month's name, or a time alone
    if (!day->isValid() || day->year() < 100 || day->year() > 9999)
        return std::nullopt;
    if (rest.isEmpty())
        return makeDate(*day);
    if (!rest.front().isSpace())
        return std::nullopt;
    const std::optional<QDateTime> time = parseDate(rest.trimmed().toString());
    if (!time || time->date() != QDate(1899, 12, 30))
        return std::nullopt;
    return QDateTime(*day, time->time(), Qt::UTC);
}

} // namespace sql
