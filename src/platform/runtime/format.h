#pragma once

#include "platform/runtime/value.h"

/// `Format`: a value shown through a pattern. Patterns of digits (`0 # , . / "..." \x`) serve numbers,
/// patterns of date codes (`y m d h n s`, case ignored; `/` and `:` are the profile's separators) serve
/// dates. Number patterns round half away from zero on the decimal form (doubles first taken to 15
/// significant digits). A text is converted first when it reads as a number or, under a date pattern, as a
/// date; otherwise it comes back unchanged. Null gives the empty text. The names `Short Date`, `Long Date`,
/// `General Date`, `Long Time` stand for their forms.
QString format(const Value &value, const QString &pattern);
