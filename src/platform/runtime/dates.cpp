#include "platform/runtime/dates.h"

#include "platform/runtime/hijri_calendar.h"
#include "platform/runtime/runtime_error.h"

#include <array>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr QLatin1Char zero('0');
constexpr double secondsPerDay = 86400.0;

QDate dayZero()
{
    return QDate(1899, 12, 30);
}

bool isInRange(const QDate &day)
{
    return day.isValid() && day.year() >= 100 && day.year() <= 9999;
}

QString longTime(const QTime &time)
{
    return u"%1:%2:%3"_s.arg(time.hour(), 2, 10, zero)
        .arg(time.minute(), 2, 10, zero)
        .arg(time.second(), 2, 10, zero);
}
} // namespace

QDateTime makeDate(int year, int month, int day, int hour, int minute, int second)
{
    const QDate date(year, month, day);
    const QTime time(hour, minute, second);
    if (!isInRange(date) || !time.isValid())
        throw runtime_errors::invalidCall();
    return QDateTime(date, time, Qt::UTC);
}

QDateTime makeDate(const QDate &day)
{
    if (!isInRange(day))
        throw runtime_errors::invalidCall();
    return QDateTime(day, QTime(0, 0), Qt::UTC);
}

QString generalDate(const QDateTime &value)
{
    if (!value.isValid())
        return {};
    if (value.date() == dayZero())
        return longTime(value.time());
    if (value.time() == QTime(0, 0))
        return shortDate(value);
    return shortDate(value) + u' ' + longTime(value.time());
}

QString shortDate(const QDateTime &value)
{
    if (!value.isValid())
        return {};
    const CalendarDay day = calendarDay(value.date());
    return u"%1/%2/%3"_s.arg(day.day, 2, 10, zero).arg(day.month, 2, 10, zero).arg(day.year, 4, 10, zero);
}

QString longDate(const QDateTime &value, bool arabicMonths)
{
    if (!value.isValid())
        return {};
    const CalendarDay day = calendarDay(value.date());
    return u"%1 %2 %3"_s.arg(day.day, 2, 10, zero)
        .arg(monthName(day.month, arabicMonths))
        .arg(day.year, 4, 10, zero);
}

QString monthName(int month, bool arabic)
{
    if (currentCalendar() == hijriCalendar)
        return hijriMonthName(month); // in an English text too
    static const std::array<QString, 12> english{
        u"January"_s, u"February"_s, u"March"_s,     u"April"_s,   u"May"_s,      u"June"_s,
        u"July"_s,    u"August"_s,   u"September"_s, u"October"_s, u"November"_s, u"December"_s,
    };
    static const std::array<QString, 12> arabicNames{
        u"يناير"_s, u"فبراير"_s, u"مارس"_s,   u"أبريل"_s,  u"مايو"_s,   u"يونيو"_s,
        u"يوليو"_s, u"أغسطس"_s,  u"سبتمبر"_s, u"أكتوبر"_s, u"نوفمبر"_s, u"ديسمبر"_s,
    };
    const auto index = static_cast<std::size_t>(month - 1);
    return arabic ? arabicNames.at(index) : english.at(index);
}

bool isDate(const QString &text)
{
    return parseDate(text).has_value();
}

QDateTime readDate(const QString &text)
{
    const auto value = parseDate(text);
    if (!value)
        throw runtime_errors::typeMismatch();
    return *value;
}

qint64 daysBetween(const QDateTime &from, const QDateTime &to)
{
    return from.date().daysTo(to.date());
}

double dateSerial(const QDateTime &value)
{
    const auto days = static_cast<double>(dayZero().daysTo(value.date()));
    const double time = QTime(0, 0).secsTo(value.time()) / secondsPerDay;
    return days < 0 ? days - time : days + time;
}

QDateTime dateFromSerial(double serial)
{
    // A first bound that also refuses what no integer can hold, and not-a-number.
    if (!(std::abs(serial) < 1e7))
        throw runtime_errors::overflow();
    auto days = static_cast<qint64>(serial);
    auto seconds = static_cast<int>(std::nearbyint(std::abs(serial - std::trunc(serial)) * secondsPerDay));
    if (seconds >= static_cast<int>(secondsPerDay)) {
        ++days;
        seconds = 0;
    }
    const QDate day = dayZero().addDays(days);
    if (!isInRange(day))
        throw runtime_errors::overflow();
    return QDateTime(day, QTime(0, 0).addSecs(seconds), Qt::UTC);
}
