#include "fuzz/support.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/hijri_calendar.h"
#include "platform/runtime/value.h"

/// A text read as a date under both calendars, and the date through its own texts and number.
FUZZ_HARNESS(date_reading)
{
    setClock([] { return makeDate(2004, 2, 29, 12); });
    const QString text = QString::fromUtf8(input);
    for (const int calendar : {gregorianCalendar, hijriCalendar}) {
        const CalendarRestorer restorer;
        setCalendar(calendar);
        const auto date = parseDate(text);
        fuzz::require(isDate(text) == date.has_value(), "a date is what can be read");
        fuzz::refusal([&] { Value(text).toDate(); });
        if (!date)
            continue;
        fuzz::require(*date >= makeDate(100, 1, 1) && *date <= makeDate(9999, 12, 31, 23, 59, 59),
                      "a date lies within the range");
        fuzz::require(dateFromSerial(dateSerial(*date)) == *date, "a date comes back from its number");
        const bool printed = !fuzz::refusal([&] {
            longDate(*date, true);
            fuzz::require(parseDate(generalDate(*date)) == date, "a date reads back from its text");
            fuzz::require(parseDate(shortDate(*date)) == makeDate(date->date()), "so does its day");
        });
        fuzz::require(printed || calendar == hijriCalendar, "every date has a Gregorian text");
        fuzz::require(daysBetween(*date, *date) == 0, "no midnight lies between a date and itself");
    }
}
