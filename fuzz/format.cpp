#include "platform/runtime/format.h"

#include "fuzz/support.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/hijri_calendar.h"

/// A value on the first line through the pattern on the second.
FUZZ_HARNESS(format)
{
    setClock([] { return makeDate(2004, 2, 29, 12); });
    const QString text = QString::fromUtf8(input);
    const QString pattern = text.section(u'\n', 1);
    Value value;
    if (!text.startsWith(u'\n') && !text.isEmpty() &&
        fuzz::refusal([&] { value = fuzz::valueOf(text.section(u'\n', 0, 0)); }))
        return;
    for (const int calendar : {gregorianCalendar, hijriCalendar}) {
        const CalendarRestorer restorer;
        setCalendar(calendar);
        QString shown;
        const auto refused =
            fuzz::refusal([&] { shown = format(value, pattern, calendar == hijriCalendar); });
        fuzz::require(!refused || refused->number() == 6 || calendar == hijriCalendar, "6 tells why");
        fuzz::require(!pattern.isEmpty() || refused || shown == value.toText(), "no pattern changes nothing");
    }
}
