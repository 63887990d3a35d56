#include "utilities/convert_date_string.h"

#include "core/engine.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"
#include "platform/runtime/hijri_calendar.h"

QString ConvertDateString(const QString &text, int fromCalendar, int toCalendar, const QString &formatName)
{
    const CalendarRestorer restorer;
    setCalendar(fromCalendar);
    const QDateTime date = readDate(text);
    setCalendar(toCalendar);
    return format(generalDate(date), formatName, engine.isArabic);
}
