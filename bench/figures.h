#pragma once

#include <QtCore/QFile>

#include <algorithm>
#include <ctime>
#include <vector>

// The figures of a process that measures itself.

/// The process's own computing while a work runs, in milliseconds.
template <typename Work>
double computingOf(Work &&work)
{
    const std::clock_t start = std::clock();
    work();
    return double(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
}

/// The middle one of some times, at least one.
inline double median(std::vector<double> times)
{
    std::ranges::sort(times);
    return times[times.size() / 2];
}

/// A line of the process's status (`VmRSS`, `VmHWM`), in KiB.
inline long memoryOf(const char *name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("no /proc");
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(line.indexOf(':') + 1).simplified().split(' ').front().toLong();
    }
    qFatal("no %s", name);
}
