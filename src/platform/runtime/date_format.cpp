#include "platform/runtime/date_format.h"

#include "platform/runtime/dates.h"
#include "platform/runtime/hijri_calendar.h"
#include "platform/runtime/number_format.h"

#include <QtCore/QLocale>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString padded(int number, int width)
{
    return u"%1"_s.arg(number, width, 10, QLatin1Char('0'));
}

/// The morning-and-afternoon marks that a pattern can hold.
struct DayHalves {
    QString code;
    QString am;
    QString pm;
};

const DayHalves *dayHalvesAt(const QString &pattern, qsizetype at)
{
    static const std::array<DayHalves, 2> marks{{{u"AM/PM"_s, u"AM"_s, u"PM"_s}, {u"A/P"_s, u"A"_s, u"P"_s}}};
    for (const DayHalves &mark : marks)
        if (QStringView(pattern).mid(at, mark.code.size()).compare(mark.code, Qt::CaseInsensitive) == 0)
            return &mark;
    return nullptr;
}

class Writer
{
public:
    Writer(const QDateTime &value, const QString &pattern, bool arabicMonths)
        : m_value(value), m_date(calendarDay(value.date())), m_time(value.time()), m_pattern(pattern),
          m_arabicMonths(arabicMonths)
    {
        for (qsizetype at = 0; at < pattern.size();) {
            QString literal;
            if (takeLiteral(pattern, at, literal))
                continue;
            m_halfDays = m_halfDays || dayHalvesAt(pattern, at) != nullptr;
            ++at;
        }
    }

    QString write()
    {
        bool afterHour = false; // an m that comes now means minutes
        for (qsizetype at = 0; at < m_pattern.size();) {
            QString literal;
            if (takeLiteral(m_pattern, at, literal)) {
                m_text += literal;
                afterHour = false;
                continue;
            }
            if (const DayHalves *mark = dayHalvesAt(m_pattern, at)) {
                m_text += m_pattern[at].isLower() ? half(*mark).toLower() : half(*mark);
                at += mark->code.size();
                afterHour = false;
                continue;
            }
            const QChar letter = m_pattern[at].toLower();
            const int length = codeLength(letter, at);
            if (length == 0) {
                m_text += m_pattern[at++];
                afterHour = afterHour && letter == u':';
                continue;
            }
            if (letter == u'm' && afterHour && length <= 2)
                m_text += padded(m_time.minute(), length);
            else
                writeCode(letter, length);
            at += length;
            afterHour = letter == u'h';
        }
        return m_text;
    }

private:
    QString half(const DayHalves &mark) const { return m_time.hour() < 12 ? mark.am : mark.pm; }

    /// How many of these letters make one code; 0 for a character that is none.
    int codeLength(QChar letter, qsizetype at) const
    {
        static const std::array<std::pair<char16_t, int>, 7> longest{
            {{u'y', 4}, {u'm', 4}, {u'd', 4}, {u'h', 2}, {u'n', 2}, {u's', 2}, {u'c', 1}}};
        const auto found = std::find_if(longest.begin(), longest.end(),
                                        [letter](const auto &code) { return letter == code.first; });
        if (found == longest.end())
            return 0;
        int length = 1;
        while (length < found->second && at + length < m_pattern.size() &&
               m_pattern[at + length].toLower() == letter)
            ++length;
        return length;
    }

    void writeCode(QChar letter, int length)
    {
        switch (letter.unicode()) {
        case u'y':
            if (length == 1)
                m_text += QString::number(dayOfYear());
            else
                m_text += length == 2 ? padded(m_date.year % 100, 2) : padded(m_date.year, 4);
            break;
        case u'm':
            if (length <= 2)
                m_text += padded(m_date.month, length);
            else
                writeMonthName(length);
            break;
        case u'd':
            if (length <= 2)
                m_text += padded(m_date.day, length);
            else
                m_text += QLocale::c().dayName(m_value.date().dayOfWeek(),
                                               length == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
            break;
        case u'h':
            m_text += padded(m_halfDays ? (m_time.hour() + 11) % 12 + 1 : m_time.hour(), length);
            break;
        case u'n':
            m_text += padded(m_time.minute(), length);
            break;
        case u's':
            m_text += padded(m_time.second(), length);
            break;
        default: // c
            m_text += generalDate(m_value);
        }
    }

    int dayOfYear() const
    {
        const QDate newYear = dayOfCalendar({m_date.year, 1, 1}).value();
        return static_cast<int>(newYear.daysTo(m_value.date())) + 1;
    }

    /// Arabic has no short names of months.
    bool hasLongNamesOnly() const { return m_arabicMonths || currentCalendar() == hijriCalendar; }

    void writeMonthName(int length)
    {
        const QString name = monthName(m_date.month, m_arabicMonths);
        m_text += length == 3 && !hasLongNamesOnly() ? name.left(3) : name;
    }

    QDateTime m_value;
    CalendarDay m_date;
    QTime m_time;
    QString m_pattern;
    bool m_arabicMonths;
    bool m_halfDays = false;
    QString m_text;
};
} // namespace

QString formatDate(const QDateTime &value, const QString &pattern, bool arabicMonths)
{
    if (!value.isValid())
        return {};
    return Writer(value, pattern, arabicMonths).write();
}
