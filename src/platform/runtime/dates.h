#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <optional>

/// Dates of the program. A date is a wall-clock time without a time zone: a QDateTime of time spec UTC, so
/// that no hour of a daylight-saving change is missing or doubled. Range: 1 January 100 to 31 December 9999,
/// whole seconds. One fixed regional profile serves every conversion: day-month-year, `dd/MM/yyyy`,
/// `HH:mm:ss`.

/// A date of the program. @throws RuntimeError 5 for an impossible day or time.
QDateTime makeDate(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
/// Midnight of that day.
QDateTime makeDate(const QDate &day);

/// General date: the short date, and behind a blank the long time when there is a time part. A time of day on
/// day 0 (30 December 1899) prints the time alone.
QString generalDate(const QDateTime &value);
/// `dd/MM/yyyy`
QString shortDate(const QDateTime &value);
/// `dd MMMM yyyy`, with the month's Arabic name when `arabicMonths`.
QString longDate(const QDateTime &value, bool arabicMonths = false);

/// The month's full name, English or Arabic. `month` is 1 to 12.
QString monthName(int month, bool arabic);

/// Reads a date text as the platform does (day-month-year first, then the other orders; month names in
/// English and Arabic; time alone gives day 0). Nothing when the text is no date.
std::optional<QDateTime> parseDate(const QString &text);
bool isDate(const QString &text);
/// @throws RuntimeError 13 when the text is no date.
QDateTime readDate(const QString &text);

/// Whole days from `from` to `to`, counting midnights; negative when `to` is the earlier.
qint64 daysBetween(const QDateTime &from, const QDateTime &to);

/// A date as a number: whole days since 30 December 1899, the time of day as the fraction (a positive
/// fraction also before that day: -1.25 is 29 December 1899, 6 in the morning).
double dateSerial(const QDateTime &value);
/// The date of that number, to the nearest second. @throws RuntimeError 6 outside the range of dates.
QDateTime dateFromSerial(double serial);
