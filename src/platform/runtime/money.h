#pragma once

#include <QtCore/QString>

#include <compare>

/// An amount of money: a signed 64-bit count of ten-thousandths of the unit. Arithmetic is checked.
class Money
{
public:
    constexpr Money() = default;

    /// The one way in from a count of ten-thousandths, as the store holds it.
    static constexpr Money fromTenThousandths(qint64 count) noexcept { return Money(count); }
    /// @throws RuntimeError 6 outside the money range.
    static Money fromUnits(qint64 units);

    constexpr qint64 tenThousandths() const noexcept { return m_count; }
    /// The nearest double; exact below about 9e11 units.
    double toDouble() const noexcept;
    /// Shortest form: no separators, no trailing zeros (`1000`, `33.3333`, `-5.5`).
    QString toText() const;

    /// @throws RuntimeError 6 when the result leaves the money range.
    friend Money operator+(Money a, Money b);
    friend Money operator-(Money a, Money b);
    friend Money operator-(Money a);
    friend Money operator*(Money a, qint64 factor);

    // NOLINTNEXTLINE(modernize-use-nullptr): the zero is the generated comparison's own
    friend constexpr auto operator<=>(Money, Money) = default;

private:
    explicit constexpr Money(qint64 count) noexcept : m_count(count) {}
    qint64 m_count = 0;
};

/// A computed value as money: times 10000, half to even. The one door from a double. The product is taken in
/// double arithmetic, so that a decimal half which no double holds exactly (33.33335) goes where that product
/// goes; texts go through readMoney(), which is exact.
/// @throws RuntimeError 6 outside the money range, also for infinities and not-a-number.
Money toMoney(double value);

/// Money as a whole number of units, half to even.
/// @throws RuntimeError 6 outside the 32-bit range.
qint32 toLong(Money amount);
