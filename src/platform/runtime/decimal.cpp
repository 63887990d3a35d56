#include "platform/runtime/decimal.h"

#include <array>
#include <charconv>
#include <limits>
#include <system_error>

namespace
{
/// Adds one to the last digit. True when the number grew by a digit in front.
bool increment(std::string &digits)
{
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        if (*digit != '9') {
            ++*digit;
            return false;
        }
        *digit = '0';
    }
    digits.insert(digits.begin(), '1');
    return true;
}
} // namespace

Decimal Decimal::fromMoney(Money amount)
{
    const qint64 count = amount.tenThousandths();
    const quint64 magnitude =
        count < 0 ? quint64(0) - static_cast<quint64>(count) : static_cast<quint64>(count);
    Decimal result{count < 0, std::to_string(magnitude), 0};
    result.point = static_cast<qint64>(result.digits.size()) - 4;
    result.normalize();
    return result;
}

Decimal Decimal::fromDouble(double value)
{
    // d.dddddddddddddde+xx
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, 14).ptr;
    const char *at = text.data();
    Decimal result;
    if (*at == '-') {
        result.negative = true;
        ++at;
    }
    for (; at != end && *at != 'e'; ++at)
        if (*at != '.')
            result.digits += *at;
    if (at != end)
        ++at;
    if (at != end && *at == '+')
        ++at;
    int exponent = 0;
    std::from_chars(at, end, exponent);
    result.point = exponent + 1;
    result.normalize();
    return result;
}

void Decimal::normalize()
{
    const auto first = digits.find_first_not_of('0');
    if (first == std::string::npos) {
        digits.clear();
        point = 0;
        return;
    }
    digits.erase(0, first);
    point -= static_cast<qint64>(first);
    digits.erase(digits.find_last_not_of('0') + 1);
}

void Decimal::round(qint64 places, Ties ties)
{
    const qint64 kept = point + places;
    if (kept >= static_cast<qint64>(digits.size()))
        return;
    bool up = false;
    if (kept >= 0) {
        const auto first = static_cast<std::size_t>(kept);
        const bool half =
            digits[first] == '5' && digits.find_first_not_of('0', first + 1) == std::string::npos;
        const bool odd = first > 0 && (digits[first - 1] - '0') % 2 != 0;
        up = half ? ties == Ties::AwayFromZero || odd : digits[first] >= '5';
    }
    digits.resize(kept > 0 ? static_cast<std::size_t>(kept) : 0);
    if (up && increment(digits))
        ++point;
    normalize();
}

std::string Decimal::integerDigits() const
{
    if (point <= 0)
        return {};
    std::string result = digits.substr(0, static_cast<std::size_t>(point));
    if (!digits.empty())
        result.resize(static_cast<std::size_t>(point), '0');
    return result;
}

std::string Decimal::fractionDigits() const
{
    if (point < 0)
        return std::string(static_cast<std::size_t>(-point), '0') + digits;
    const auto first = static_cast<std::size_t>(point);
    return first < digits.size() ? digits.substr(first) : std::string();
}

QString Decimal::toPlainText() const
{
    const std::string units = integerDigits();
    const std::string fraction = fractionDigits();
    std::string text = negative && !isZero() ? "-" : "";
    text += units.empty() ? "0" : units;
    if (!fraction.empty())
        text += "." + fraction;
    return QString::fromStdString(text);
}

std::optional<Money> Decimal::toMoney() const
{
    constexpr qint64 maxIntegerDigits = 15; // 922337203685477
    Decimal rounded = *this;
    rounded.round(4, Ties::ToEven);
    if (rounded.isZero())
        return Money();
    if (rounded.point > maxIntegerDigits)
        return std::nullopt;
    std::string fraction = rounded.fractionDigits();
    fraction.resize(4, '0');
    quint64 magnitude = 0; // at most 19 digits, which always fit
    for (const char digit : rounded.integerDigits() + fraction)
        magnitude = magnitude * 10 + static_cast<quint64>(digit - '0');

    constexpr auto largest = static_cast<quint64>(std::numeric_limits<qint64>::max());
    if (magnitude <= largest) {
        const auto count = static_cast<qint64>(magnitude);
        return Money::fromTenThousandths(negative ? -count : count);
    }
    if (negative && magnitude == largest + 1)
        return Money::fromTenThousandths(std::numeric_limits<qint64>::min());
    return std::nullopt;
}

std::optional<double> Decimal::toDouble() const
{
    if (isZero() || point < -400)
        return 0.0;
    if (point > 400)
        return std::nullopt;
    const std::string text = "0." + digits + "e" + std::to_string(point);
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        if (point > 0)
            return std::nullopt;
        return 0.0;
    }
    return negative ? -value : value;
}
