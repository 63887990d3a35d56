#pragma once

#include "platform/runtime/decimal.h"

#include <QtCore/QString>

/// A number through a pattern of digit places; see format(). For the run-time's own routines.
QString formatNumber(const Decimal &value, const QString &pattern);

/// Splits one literal off the front of what is left of a pattern: text in double quotes, or the character
/// behind a backslash. False, and nothing moved, when no literal stands at `at`.
bool takeLiteral(const QString &pattern, qsizetype &at, QString &literal);
