#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <optional>

/// Dates of the program. A date is a wall-clock time without a time zone: a QDateTime held in UTC, so
/// that no hour of a daylight-saving change is missing or doubled. Range: 1 January 100 to 31 December 9999,
/// whole seconds. One fixed regional profile serves every conversion: day-month-year, `dd/MM/yyyy`,
/// `HH:mm:ss`. Texts are read and written under the calendar in force, see hijri_calendar.h.

/// A date of the program. @throws RuntimeError 5 for an impossible day or time.
QDateTime makeDate(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
/// Midnight of that day.
QDateTime makeDate(const QDate &day);

/// General, short and long date of an invalid QDateTime are the empty text. They throw nothing under the
/// Gregorian calendar and RuntimeError 5 for a day before the Hijri one begins.

/// General date: the short date, and behind a blank the long time when there is a time part. A time of day on
/// day 0 (30 December 1899) prints the time alone.
QString generalDate(const QDateTime &value);
/// `dd/MM/yyyy`
QString shortDate(const QDateTime &value);
/// `dd MMMM yyyy`, with the month's Arabic name when `arabicMonths`.
QString longDate(const QDateTime &value, bool arabicMonths = false);

/// The month's full name, English or Arabic; of a Hijri month always the Arabic one. `month` is 1 to 12.
QString monthName(int month, bool arabic);

/// Reads a date text: a date, a time `h:m[:s]` with or without an am/pm mark (`AM PM A P ص م`), or both in
/// either order. Nothing when the text is no date: a weekday's name, a lone number, an empty text are none.
/// - Between two numbers stands `/`, `-` or a blank. A month's name, English (full or three letters) or
///   Arabic, can stand for one of them.
/// - Three numbers are day-month-year, else month-day-year, else year first; with three or four digits in
///   front they are year-month-day, else year-day-month. The first reading that is a date wins.
/// - Two numbers are day and month of the present year in either order, else month and year.
/// - Years of one or two digits: see yearWithCentury(). Hijri dates with a month's name are not read.
/// - Numbers with dots between them are a time. A time alone falls on day 0.
std::optional<QDateTime> parseDate(const QString &text);
bool isDate(const QString &text);
/// @throws RuntimeError 13 when the text is no date.
QDateTime readDate(const QString &text);

/// Days from `from` to `to`, counting midnights; negative when `to` is the earlier.
qint64 daysBetween(const QDateTime &from, const QDateTime &to);

/// A date as a number: whole days since 30 December 1899, the time of day as the fraction (a positive
/// fraction also before that day: -1.25 is 29 December 1899, 6 in the morning).
double dateSerial(const QDateTime &value);
/// The date of that number, to the nearest second. @throws RuntimeError 6 outside the range of dates.
QDateTime dateFromSerial(double serial);
