#include "platform/database/sql/storage.h"

#include "platform/database/errors.h"

#include <cmath>

namespace sql
{

namespace
{

void appendDigits(QByteArray &text, int number, int digits)
{
    const qsizetype end = text.size() + digits;
    text.resize(end);
    for (qsizetype position = end - 1; position >= end - digits; --position, number /= 10)
        text[position] = char('0' + number % 10);
}

QByteArray storedDate(const QDateTime &value)
{
    const QDate day = value.date();
    if (!day.isValid() || day.year() < 100 || day.year() > 9999)
        throw runtime_errors::overflow();
    QByteArray text;
    text.reserve(19);
    appendDigits(text, day.year(), 4);
    appendDigits(text.append('-'), day.month(), 2);
    appendDigits(text.append('-'), day.day(), 2);
    const QTime time = value.time();
    if (time.hour() != 0 || time.minute() != 0 || time.second() != 0) {
        appendDigits(text.append(' '), time.hour(), 2);
        appendDigits(text.append(':'), time.minute(), 2);
        appendDigits(text.append(':'), time.second(), 2);
    }
    return text;
}

/// The digits at a place of a text, or -1.
int digitsAt(QByteArrayView text, qsizetype position, qsizetype count)
{
    int number = 0;
    for (qsizetype end = position + count; position < end; ++position) {
        if (text[position] < '0' || text[position] > '9')
            return -1;
        number = number * 10 + (text[position] - '0');
    }
    return number;
}

/// A stored value as it stands, whatever the field's type.
Value plainValue(const Parameter &stored)
{
    switch (stored.index()) {
    case 0:
        return {};
    case 1: {
        const qint64 number = std::get<qint64>(stored);
        if (number == qint32(number))
            return qint32(number);
        return double(number);
    }
    case 2:
        return std::get<double>(stored);
    default:
        return QString::fromUtf8(std::get<QByteArray>(stored));
    }
}

/// The forms that the store itself never writes.
Value foreignForm(const Parameter &stored, FieldType type)
{
    const Value value = plainValue(stored);
    if (type == FieldType::Money) { // a count all the same, as far as a double counts exactly
        const double count = value.toDouble();
        constexpr double limit = 9007199254740992.0;
        if (count != std::floor(count) || std::abs(count) > limit)
            throw runtime_errors::typeMismatch();
        return Money::fromTenThousandths(qint64(count));
    }
    if (type == FieldType::Date && value.kind() != Value::Kind::Text)
        throw runtime_errors::typeMismatch();
    return fieldValue(value, type);
}

} // namespace

Value fieldValue(const Value &value, FieldType type)
{
    if (value.isNull())
        return {};
    switch (type) {
    case FieldType::Long:
        return value.toInt();
    case FieldType::Byte: {
        const qint32 number = value.toInt();
        if (number < 0 || number > 255)
            throw runtime_errors::overflow();
        return number;
    }
    case FieldType::Double:
        return value.toDouble();
    case FieldType::Money:
        return value.toMoneyValue();
    case FieldType::Boolean:
        return value.toBool();
    case FieldType::Date:
        return value.toDate();
    case FieldType::Text:
        return value.toText();
    }
    Q_UNREACHABLE();
}

bool textFits(const QString &text, int size)
{
    return text.size() <= size && (!text.contains(QChar::Null) || text.toUtf8().size() <= size);
}

Parameter toStorage(const Value &value, FieldType type)
{
    const Value converted = fieldValue(value, type);
    switch (converted.kind()) {
    case Value::Kind::Null:
        return type == FieldType::Boolean ? Parameter(qint64(0)) : Parameter();
    case Value::Kind::Boolean:
        return qint64(converted.toBool() ? -1 : 0);
    case Value::Kind::Long:
        return qint64(converted.toInt());
    case Value::Kind::Double:
        return converted.toDouble();
    case Value::Kind::Money:
        return converted.toMoneyValue().tenThousandths();
    case Value::Kind::Date:
        return storedDate(converted.toDate());
    case Value::Kind::Text:
        return converted.toText().toUtf8();
    }
    Q_UNREACHABLE();
}

std::optional<qint64> storedSeconds(QByteArrayView text)
{
    const bool timed = text.size() == 19;
    if ((!timed && text.size() != 10) || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const QDate day(digitsAt(text, 0, 4), digitsAt(text, 5, 2), digitsAt(text, 8, 2));
    if (!day.isValid())
        return std::nullopt;
    QTime time(0, 0);
    if (timed) {
        if (text[10] != ' ' || text[13] != ':' || text[16] != ':')
            return std::nullopt;
        time = QTime(digitsAt(text, 11, 2), digitsAt(text, 14, 2), digitsAt(text, 17, 2));
        if (!time.isValid())
            return std::nullopt;
    }
    constexpr qint64 julianDayOf1970 = 2'440'588;
    return (day.toJulianDay() - julianDayOf1970) * 86'400 + time.msecsSinceStartOfDay() / 1000;
}

Value fromStorage(const Parameter &stored, FieldType type)
{
    if (std::holds_alternative<std::monostate>(stored))
        return {};
    if (const auto *number = std::get_if<qint64>(&stored)) {
        switch (type) {
        case FieldType::Long:
            if (*number == qint32(*number))
                return qint32(*number);
            break;
        case FieldType::Byte:
            if (*number == quint8(*number))
                return qint32(*number);
            break;
        case FieldType::Double:
            return double(*number);
        case FieldType::Money:
            return Money::fromTenThousandths(*number);
        case FieldType::Boolean:
            return *number != 0;
        default:
            break;
        }
    } else if (const auto *text = std::get_if<QByteArray>(&stored)) {
        if (type == FieldType::Text)
            return QString::fromUtf8(*text);
        if (type == FieldType::Date) {
            if (const auto seconds = storedSeconds(*text))
                return QDateTime::fromSecsSinceEpoch(*seconds, Qt::UTC);
        }
    } else if (type == FieldType::Double) {
        return std::get<double>(stored);
    }
    try {
        return foreignForm(stored, type);
    } catch (const RuntimeError &) {
        throw data_errors::multipleStep();
    }
}

} // namespace sql
