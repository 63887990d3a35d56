#include "platform/runtime/value.h"

#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"

#include <type_traits>

using namespace Qt::Literals::StringLiterals;

namespace
{
/// The number behind a value of any kind but Null and Text.
template <typename T>
double numberOf(const T &value)
{
    if constexpr (std::is_same_v<T, bool>)
        return value ? -1.0 : 0.0;
    else if constexpr (std::is_same_v<T, Money>)
        return value.toDouble();
    else if constexpr (std::is_same_v<T, QDateTime>)
        return dateSerial(value);
    else
        return value;
}

/// Sends Null to its error, a text to `ofText` and every other kind to `ofOther`.
template <typename Variant, typename OfText, typename OfOther>
auto convert(const Variant &variant, OfText ofText, OfOther ofOther)
{
    using Result = std::invoke_result_t<OfText, QString>;
    return std::visit(
        [&]<typename T>(const T &value) -> Result {
            if constexpr (std::is_same_v<T, std::monostate>)
                throw runtime_errors::invalidNull();
            else if constexpr (std::is_same_v<T, QString>)
                return ofText(value);
            else
                return ofOther(value);
        },
        variant);
}
} // namespace

bool Value::toBool() const
{
    return convert(
        m_value, [](const QString &text) { return toBoolean(text); },
        [](const auto &value) { return numberOf(value) != 0.0; });
}

qint32 Value::toInt() const
{
    return convert(
        m_value, [](const QString &text) { return toLongInteger(text); },
        []<typename T>(const T &value) {
            if constexpr (std::is_same_v<T, Money>)
                return toLong(value);
            else
                return toLongInteger(numberOf(value));
        });
}

double Value::toDouble() const
{
    return convert(
        m_value, [](const QString &text) { return readDouble(text); },
        [](const auto &value) { return numberOf(value); });
}

Money Value::toMoneyValue() const
{
    return convert(
        m_value, [](const QString &text) { return readMoney(text); },
        []<typename T>(const T &value) {
            if constexpr (std::is_same_v<T, Money>)
                return value;
            else
                return toMoney(numberOf(value));
        });
}

QDateTime Value::toDate() const
{
    return convert(
        m_value, [](const QString &text) { return readDate(text); },
        []<typename T>(const T &value) {
            if constexpr (std::is_same_v<T, QDateTime>)
                return value;
            else
                return dateFromSerial(numberOf(value));
        });
}

QString Value::toText() const
{
    return std::visit(
        []<typename T>(const T &value) -> QString {
            if constexpr (std::is_same_v<T, std::monostate>)
                return {};
            else if constexpr (std::is_same_v<T, bool>)
                return value ? u"True"_s : u"False"_s;
            else if constexpr (std::is_same_v<T, qint32>)
                return QString::number(value);
            else if constexpr (std::is_same_v<T, double>)
                return numberText(value);
            else if constexpr (std::is_same_v<T, Money>)
                return value.toText();
            else if constexpr (std::is_same_v<T, QDateTime>)
                return generalDate(value);
            else
                return value;
        },
        m_value);
}
