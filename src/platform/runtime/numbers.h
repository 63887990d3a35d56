#pragma once

#include "platform/runtime/money.h"

#include <QtCore/QString>

/// The three readings of a text as a number, and the conversions between number types.

/// True when readMoney() can convert the whole text: white space around it (blanks and U+0009 to U+000D), one
/// sign in front or behind, or parentheses for negative, decimal point, thousands separators anywhere between
/// two integer digits, one `$`, exponent (e or d), or `&H` or `&O` with digits of that base. ASCII digits
/// only. An empty text is not numeric; a number outside the money range is not numeric either.
bool isNumeric(const QString &text);

/// The full money reading: the whole text, decimal and exact, half to even at the fifth decimal.
/// @throws RuntimeError 13 when the text is no number, 6 when it leaves the money range.
Money readMoney(const QString &text);

/// The full reading as a double, without the money range's limits.
/// @throws RuntimeError 13 when the text is no number, 6 when it leaves the range of a double.
double readDouble(const QString &text);

/// The leading-number reading: blanks, tabs and line feeds are removed from the whole text first; reading
/// stops at the first character that can't go on a number. Sign, decimal point, exponent (e or d), `&H` and
/// `&O` are understood; thousands separators, `$` and parentheses are not. Nothing readable gives 0.
/// @throws RuntimeError 6 when the number leaves the range of a double.
double readLeadingNumber(const QString &text);

/// To a whole number, half to even.
double roundHalfEven(double value);

/// To a 16-bit integer, half to even. @throws RuntimeError 6 outside its range.
qint16 toInteger(double value);
/// @throws RuntimeError 13 for an unreadable or empty text, 6 outside the range.
qint16 toInteger(const QString &text);
/// To a 32-bit integer, half to even. @throws RuntimeError 6 outside its range.
qint32 toLongInteger(double value);
/// @throws RuntimeError 13 for an unreadable or empty text, 6 outside the range.
qint32 toLongInteger(const QString &text);

/// `True` or `False` in any case, or a number by the full reading (nonzero is True).
/// @throws RuntimeError 13 for anything else.
bool toBoolean(const QString &text);

/// A double as text: 15 significant digits, shortest form (`0.5`, `-33.3333`), with an exponent from 1E+15 up
/// and below 1E-04.
QString numberText(double value);

/// The text with Arabic-Indic digits (U+0660-0669, U+06F0-06F9) turned to ASCII; for text as it is entered.
QString asciiDigits(const QString &text);

/// Blanks (U+0020 only) removed at both ends; line ends and tabs stay.
QString trimBlanks(const QString &text);
