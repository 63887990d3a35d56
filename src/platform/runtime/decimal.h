#pragma once

#include "platform/runtime/money.h"

#include <QtCore/QString>

#include <optional>
#include <string>

/// A decimal number of any length, exact: what stands between a text, money or a double on one side and
/// rounding on the other. For the run-time's own routines.
struct Decimal {
    enum class Ties { ToEven, AwayFromZero };

    bool negative = false;
    /// ASCII digits, the first one not 0; empty for zero.
    std::string digits;
    /// Where the decimal point stands, counted from the first digit: the value is 0.`digits` x 10^`point`.
    qint64 point = 0;

    static Decimal fromMoney(Money amount);
    /// The value taken to 15 significant digits. It must be finite.
    static Decimal fromDouble(double value);

    bool isZero() const noexcept { return digits.empty(); }
    /// Rounds to that many places behind the decimal point. A negative number that rounds to zero stays
    /// negative.
    void round(qint64 places, Ties ties);

    /// The digits before the decimal point, without leading zeros. Only for numbers of a bounded size.
    std::string integerDigits() const;
    /// The digits behind the decimal point. Only for numbers of a bounded size.
    std::string fractionDigits() const;

    /// All digits with a decimal point where one is needed, no exponent: `-0.05`, `1000`. Only for numbers of
    /// a bounded size.
    QString toPlainText() const;

    /// Half to even at the fifth decimal; nothing outside the money range.
    std::optional<Money> toMoney() const;
    /// The nearest double, 0 for what is too small; nothing for what is too large.
    std::optional<double> toDouble() const;

    /// Removes zeros at both ends of `digits`.
    void normalize();
};

/// The full reading of a text as a number, exact; nothing when the text is no number. Numbers of `&H` and
/// `&O` beyond 64 bits come back as a number outside every range.
std::optional<Decimal> readDecimal(const QString &text);
