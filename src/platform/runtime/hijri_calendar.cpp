#include "platform/runtime/hijri_calendar.h"

#include "platform/runtime/runtime_error.h"

#include <unicode/calendar.h>
#include <unicode/timezone.h>

#include <array>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace
{
int calendarInForce = gregorianCalendar;

constexpr qint64 julianDayOfEpoch = 2440588; // 1 January 1970, from which ICU counts
constexpr double millisecondsPerDay = 86400000.0;

/// ICU's calendar, with every moment at midnight of a day. Impossible days are errors.
icu::Calendar &hijri()
{
    static const std::unique_ptr<icu::Calendar> calendar = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::Calendar> made(icu::Calendar::createInstance(
            icu::TimeZone::getGMT()->clone(), icu::Locale("en@calendar=islamic-tbla"), status));
        if (U_FAILURE(status))
            throw runtime_errors::invalidCall();
        made->setLenient(false);
        return made;
    }();
    return *calendar;
}

CalendarDay hijriDay(const QDate &day)
{
    static const QDate first(622, 7, 18);
    if (day < first)
        throw runtime_errors::invalidCall();
    UErrorCode status = U_ZERO_ERROR;
    icu::Calendar &calendar = hijri();
    calendar.setTime(static_cast<double>(day.toJulianDay() - julianDayOfEpoch) * millisecondsPerDay, status);
    const CalendarDay found{calendar.get(UCAL_EXTENDED_YEAR, status), calendar.get(UCAL_MONTH, status) + 1,
                            calendar.get(UCAL_DATE, status)};
    if (U_FAILURE(status))
        throw runtime_errors::invalidCall();
    return found;
}

QDate dayOfHijri(const CalendarDay &day)
{
    if (day.year < 1)
        return {};
    UErrorCode status = U_ZERO_ERROR;
    icu::Calendar &calendar = hijri();
    calendar.clear();
    calendar.set(UCAL_EXTENDED_YEAR, day.year);
    calendar.set(UCAL_MONTH, day.month - 1);
    calendar.set(UCAL_DATE, day.day);
    const double time = calendar.getTime(status);
    if (U_FAILURE(status))
        return {};
    return QDate::fromJulianDay(static_cast<qint64>(time / millisecondsPerDay) + julianDayOfEpoch);
}
} // namespace

int currentCalendar()
{
    return calendarInForce;
}

void setCalendar(int calendar)
{
    if (calendar != gregorianCalendar && calendar != hijriCalendar)
        throw runtime_errors::invalidCall();
    calendarInForce = calendar;
}

CalendarDay calendarDay(const QDate &day)
{
    if (calendarInForce == hijriCalendar)
        return hijriDay(day);
    return {day.year(), day.month(), day.day()};
}

std::optional<QDate> dayOfCalendar(const CalendarDay &day)
{
    const QDate found =
        calendarInForce == hijriCalendar ? dayOfHijri(day) : QDate(day.year, day.month, day.day);
    if (!found.isValid() || found.year() < 100 || found.year() > 9999)
        return std::nullopt;
    return found;
}

int yearWithCentury(int year)
{
    if (calendarInForce == hijriCalendar)
        return year + (year < 52 ? 1400 : 1300);
    return year + (year < 30 ? 2000 : 1900);
}

QString hijriMonthName(int month)
{
    static const std::array<QString, 12> names{
        u"محرم"_s, u"صفر"_s,   u"ربيع الاول"_s, u"ربيع الثاني"_s, u"جمادى الاولى"_s, u"جمادى الثانية"_s,
        u"رجب"_s,  u"شعبان"_s, u"رمضان"_s,      u"شوال"_s,        u"ذو القعدة"_s,    u"ذو الحجة"_s,
    };
    return names.at(static_cast<std::size_t>(month - 1));
}
