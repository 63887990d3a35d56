#include "platform/runtime/money.h"

#include "platform/runtime/decimal.h"
#include "platform/runtime/runtime_error.h"

#include <cmath>
#include <limits>

namespace
{
constexpr qint64 perUnit = 10000;
constexpr double twoTo63 = 9223372036854775808.0;

Money checked(bool overflowed, qint64 count)
{
    if (overflowed)
        throw runtime_errors::overflow();
    return Money::fromTenThousandths(count);
}
} // namespace

Money Money::fromUnits(qint64 units)
{
    return fromTenThousandths(perUnit) * units;
}

double Money::toDouble() const noexcept
{
    return static_cast<double>(m_count) / static_cast<double>(perUnit);
}

QString Money::toText() const
{
    return Decimal::fromMoney(*this).toPlainText();
}

Money operator+(Money a, Money b)
{
    qint64 count = 0;
    const bool overflowed = __builtin_add_overflow(a.m_count, b.m_count, &count);
    return checked(overflowed, count);
}

Money operator-(Money a, Money b)
{
    qint64 count = 0;
    const bool overflowed = __builtin_sub_overflow(a.m_count, b.m_count, &count);
    return checked(overflowed, count);
}

Money operator-(Money a)
{
    return Money() - a;
}

Money operator*(Money a, qint64 factor)
{
    qint64 count = 0;
    const bool overflowed = __builtin_mul_overflow(a.m_count, factor, &count);
    return checked(overflowed, count);
}

Money toMoney(double value)
{
    const double count = std::nearbyint(value * static_cast<double>(perUnit));
    if (!(count >= -twoTo63 && count < twoTo63)) // false for not-a-number too
        throw runtime_errors::overflow();
    return Money::fromTenThousandths(static_cast<qint64>(count));
}

qint32 toLong(Money amount)
{
    qint64 units = amount.tenThousandths() / perUnit;
    const qint64 rest = amount.tenThousandths() % perUnit;
    const qint64 distance = rest < 0 ? -rest : rest;
    if (distance > perUnit / 2 || (distance == perUnit / 2 && units % 2 != 0))
        units += rest < 0 ? -1 : 1;
    if (units < std::numeric_limits<qint32>::min() || units > std::numeric_limits<qint32>::max())
        throw runtime_errors::overflow();
    return static_cast<qint32>(units);
}
