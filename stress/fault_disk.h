#pragma once

#include <cstdint>
#include <functional>

/// A disk under the store engine that fails when it is told to. While it is installed, every file that the
/// engine opens goes through it; it counts the operations (open, read, write, truncate, sync, delete) from
/// the last call that set it up. One process, one thread.
namespace fault_disk
{

enum class Fault {
    None,      ///< only counts
    IoError,   ///< the operation fails as a broken disk does
    DiskFull,  ///< a write or a file's growth fails as on a full disk; other operations as a broken disk's
    Kill,      ///< the process is killed right before the operation
    PowerLoss, ///< the process ends at the operation with powerLossExit, and on the disk stands what had been
               ///< synced, with any part of the later writes, some of them torn
};

constexpr int powerLossExit = 77;

/// Puts the disk under the engine of this process, before its first file is opened.
void install();
/// From now on what is not synced yet is kept apart, so that a power loss can drop it: of the files of one
/// folder. Before the first of them is opened.
void keepUnsynced(const char *folder);

/// From now on the operation of this number (from 1) fails, that one alone or it and all later ones. `seed`
/// chooses what a power loss leaves.
void arm(Fault fault, int operation, bool forEver, std::uint32_t seed = 0);
/// Everything goes well again and is counted from 0.
void disarm();
/// Operations since then.
int operations();
/// Whether a fault has been met since then.
bool wasMet();

/// Called before a journal is made and behind its deletion: when a transaction begins to write, and when it
/// is committed or undone.
void onTransaction(std::function<void()> hook);

} // namespace fault_disk
