#pragma once

#include "stress/report.h"

#include <QtCore/QString>

#include <cstdint>

/// Kills a process at random moments of each operation, so many times each, or of those whose name has a text
/// in it.
Findings killOperations(const QString &templateFolder, int times, std::uint32_t seed, const QString &only);
/// Lets the n-th disk operation of each operation fail in four ways, for every n-th that `stride` leaves.
Findings failDisk(const QString &templateFolder, int stride);
/// Lets an export find no more room behind every `stride` bytes.
Findings limitExport(const QString &templateFolder, int stride);
/// Drops or tears unsynced writes at random moments of posting, archiving and compacting.
Findings losePower(const QString &templateFolder, int times, std::uint32_t seed);
/// Changes bytes of a small store and cuts it at many lengths: every byte and length with stride 1.
Findings damageBytes(int stride);
/// Two programs post beside each other, so many times each.
Findings postInTwo(const QString &templateFolder, int times);
/// Works at the real screens, so many operations of all kinds, or of one, in an order left to chance: the
/// store stays whole, memory and open files don't grow, no file is left and none holds a text of the store.
Findings soakScreens(const QString &templateFolder, int operations, std::uint32_t seed,
                     const QString &onlyAct);
