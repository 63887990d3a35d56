#include "platform/runtime/clock.h"

#include <utility>

namespace
{
std::function<QDateTime()> &installedClock()
{
    static std::function<QDateTime()> clock;
    return clock;
}
} // namespace

QDateTime now()
{
    const auto &clock = installedClock();
    const QDateTime present = clock ? clock() : QDateTime::currentDateTime();
    const QTime time = present.time();
    return QDateTime(present.date(), QTime(time.hour(), time.minute(), time.second()), Qt::UTC);
}

QDateTime today()
{
    return QDateTime(now().date(), QTime(0, 0), Qt::UTC);
}

void setClock(std::function<QDateTime()> clock)
{
    installedClock() = std::move(clock);
}
