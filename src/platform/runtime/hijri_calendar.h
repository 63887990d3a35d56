#pragma once

#include <QtCore/QDate>
#include <QtCore/QString>

#include <optional>

/// The calendar by which date texts are read and written. The value of a date never changes with it.
///
/// The Hijri calendar is the tabular one: months of 30 and 29 days in turn, the twelfth with 30 in a leap
/// year, a cycle of 30 years, 1 Muharram of year 1 on 18 July 622 (Gregorian, reckoned back).
inline constexpr int gregorianCalendar = 0;
inline constexpr int hijriCalendar = 1;

/// The calendar in force: Gregorian, except inside of a routine that has set it. It governs parseDate() and
/// what stands on it, the forms of a date in dates.h, and format().
int currentCalendar();
/// @throws RuntimeError 5 for any other number than the two.
void setCalendar(int calendar);

/// Sets the calendar again that was in force when it was made, also when a failure leaves the routine. No
/// events may be served meanwhile.
class CalendarRestorer
{
public:
    CalendarRestorer() : m_before(currentCalendar()) {}
    ~CalendarRestorer() { setCalendar(m_before); }
    CalendarRestorer(const CalendarRestorer &) = delete;
    CalendarRestorer &operator=(const CalendarRestorer &) = delete;

private:
    int m_before;
};

/// A day as a calendar counts it; months and days from 1.
struct CalendarDay {
    int year = 0;
    int month = 0;
    int day = 0;
};

/// The day under the calendar in force. @throws RuntimeError 5 for a day before the Hijri calendar begins.
CalendarDay calendarDay(const QDate &day);
/// The day of these numbers under the calendar in force, from 1 January 100 to 31 December 9999 (Gregorian);
/// nothing when there is no such day.
std::optional<QDate> dayOfCalendar(const CalendarDay &day);
/// A year of one or two digits with its century under the calendar in force: 0 to 29 are 20xx and 30 to 99
/// are 19xx, or under Hijri 0 to 51 are 14xx and 52 to 99 are 13xx.
int yearWithCentury(int year);

/// The Arabic name of a Hijri month, 1 to 12.
QString hijriMonthName(int month);
