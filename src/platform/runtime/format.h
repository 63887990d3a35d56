#pragma once

#include "platform/runtime/value.h"

/// `Format`: a value shown through a pattern. Null gives the empty text; an empty pattern gives the value's
/// toText().
///
/// A pattern that holds `0` or `#` serves numbers:
/// - `0` a digit or 0, `#` a digit or nothing; digits without a place of their own stand at the first place.
/// - `.` the decimal point. A comma between integer places groups by three; behind the last one it divides by
///   1000.
/// - `%` multiplies by 100 and stands there; `E+0` or `E-0` gives an exponent.
/// - `;` parts the patterns for positive, negative and zero; an empty or missing one falls to the first.
/// - A negative number has `-` in front (`-0.00` for -0.001 under `0.00`), unless it shows no digit at all.
/// - Rounding is half away from zero on the decimal form; a double is first taken to 15 significant digits,
///   money and texts are exact.
///
/// Else a pattern with date codes serves dates, case ignored:
/// - `yyyy yy` year, `y` day of the year; `mmmm mmm mm m` month; `dddd ddd dd d` day (weekdays in English);
///   `hh h` hour, `nn n` minute, `ss s` second; `AM/PM` or `A/P` with hours 1 to 12; `c` the general date.
/// - `m` and `mm` directly behind the hour, or behind the hour and `:`, are minutes.
/// - `/` and `:` are the profile's separators, that is themselves.
/// - The names `Short Date`, `Long Date`, `General Date`, `Long Time` stand for their forms.
///
/// In both, text in double quotes and the character behind `\` stand as they are, and so does any other
/// character: `yyyy\mm\dd` is `2004m3d15`.
///
/// A text is converted first when isNumeric(), or under a date pattern when it reads as a date or counts
/// days; otherwise it comes back unchanged. A number under a date pattern is days since 30 December 1899.
/// `arabicMonths` chooses the month names.
/// Dates are read and written under the calendar in force, see hijri_calendar.h.
/// @throws RuntimeError 6 for a number, not a text, under a date pattern outside the range of dates.
QString format(const Value &value, const QString &pattern, bool arabicMonths = false);
