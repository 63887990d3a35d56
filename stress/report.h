#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>

#include <cstdio>

/// What a run of faults found.
struct Findings {
    int replays = 0;
    int bad = 0;
    QMap<QString, int> seen; ///< outcomes, for the figures

    void note(const QString &what) { ++seen[what]; }
    void finding(const QString &what)
    {
        ++bad;
        std::fprintf(stderr, "BAD: %s\n", qPrintable(what));
    }
    void print(const char *name) const
    {
        std::printf("%-16s %6d replays %4d bad ", name, replays, bad);
        for (auto outcome = seen.cbegin(); outcome != seen.cend(); ++outcome)
            std::printf("  %s: %d", qPrintable(outcome.key()), outcome.value());
        std::printf("\n");
        std::fflush(stdout);
    }
};
