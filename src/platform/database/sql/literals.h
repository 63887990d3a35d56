#pragma once

#include "platform/runtime/value.h"

#include <QtCore/QStringView>

#include <optional>

/// The readings of the dialect's literals.
namespace sql
{

/// What stands between quotes, with doubled quotes made single.
QString textLiteral(QStringView inner, char16_t quote);

/// A number: a Long when it is a whole number of 32 bits written without point and exponent, else a Double.
Value numberLiteral(QStringView digits);

/// What stands between `#` signs: month first, day first where that is impossible; a first number of three or
/// four digits is the year. A time of day may follow. Nothing when it is no date.
std::optional<QDateTime> dateLiteral(QStringView inner);

} // namespace sql
