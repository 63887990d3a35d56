#include "stress/fault_disk.h"

#include <sqlcipher/sqlite3.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace
{

using fault_disk::Fault;

/// What has been done to a file since it was last synced.
struct Pending {
    sqlite3_int64 offset;
    std::string bytes; ///< of a write
    bool truncation = false;
};
struct TrackedFile {
    std::string durable; ///< as a power loss leaves it, but for the pending
    std::vector<Pending> pending;
    bool entryDurable = false; ///< its name is in the folder for good
};

sqlite3_vfs *realDisk = nullptr;
Fault armed = Fault::None;
int failing = 0;
bool failsForEver = false;
int counted = 0;
bool met = false;
std::mt19937 chance;
std::function<void()> transactionHook;
std::string watchedFolder; ///< a power loss may come there: unsynced writes are kept
std::map<ino_t, TrackedFile> tracked;
std::map<std::string, std::string> unsyncedDeletes; ///< path and content

std::string contentOf(const std::string &path)
{
    std::string content;
    if (FILE *file = std::fopen(path.c_str(), "rb")) {
        char buffer[65536];
        for (size_t got = 0; (got = std::fread(buffer, 1, sizeof buffer, file)) > 0;)
            content.append(buffer, got);
        std::fclose(file);
    }
    return content;
}

void putContent(const std::string &path, const std::string &content)
{
    if (FILE *file = std::fopen(path.c_str(), "wb")) {
        std::fwrite(content.data(), 1, content.size(), file);
        std::fclose(file);
    }
}

/// A write reaches the disk whole, in part, or not at all, each for itself.
void applyByChance(std::string &content, const Pending &change)
{
    const unsigned fate = chance() % 4;
    if (fate == 0)
        return;
    if (change.truncation) {
        content.resize(size_t(change.offset));
        return;
    }
    size_t from = 0;
    size_t length = change.bytes.size();
    if (fate == 1 && length > 1) { // torn: its beginning or its end
        const size_t cut = 1 + chance() % (length - 1);
        from = chance() % 2 == 0 ? 0 : cut;
        length = from == 0 ? cut : length - cut;
    }
    const size_t end = size_t(change.offset) + from + length;
    if (content.size() < end)
        content.resize(end);
    content.replace(size_t(change.offset) + from, length, change.bytes, from, length);
}

[[noreturn]] void losePower()
{
    for (const auto &[path, content] : unsyncedDeletes) {
        if (chance() % 2 == 0 && !std::filesystem::exists(path))
            putContent(path, content);
    }
    for (const auto &entry : std::filesystem::directory_iterator(watchedFolder)) {
        struct stat status {
        };
        if (stat(entry.path().c_str(), &status) != 0)
            continue;
        const auto file = tracked.find(status.st_ino);
        if (file == tracked.end())
            continue;
        if (!file->second.entryDurable && chance() % 2 == 0) {
            unlink(entry.path().c_str());
            continue;
        }
        std::string content = file->second.durable;
        for (const Pending &change : file->second.pending)
            applyByChance(content, change);
        putContent(entry.path().string(), content);
    }
    _exit(fault_disk::powerLossExit);
}

/// Counts an operation; true when it is to fail.
bool fails()
{
    ++counted;
    if (armed == Fault::None || counted < failing || (counted > failing && !failsForEver))
        return false;
    met = true;
    if (armed == Fault::Kill)
        raise(SIGKILL);
    if (armed == Fault::PowerLoss)
        losePower();
    return true;
}

// --- one open file

struct File {
    sqlite3_file base;
    ino_t inode;
    sqlite3_file *real;
};

File *fileOf(sqlite3_file *file)
{
    return reinterpret_cast<File *>(file);
}

TrackedFile *trackedOf(sqlite3_file *file)
{
    if (watchedFolder.empty())
        return nullptr;
    const auto found = tracked.find(fileOf(file)->inode);
    return found == tracked.end() ? nullptr : &found->second;
}

int closeFile(sqlite3_file *file)
{
    sqlite3_file *real = fileOf(file)->real;
    const int result = real->pMethods->xClose(real);
    sqlite3_free(real);
    return result;
}

int readFile(sqlite3_file *file, void *to, int count, sqlite3_int64 offset)
{
    if (fails())
        return SQLITE_IOERR_READ;
    sqlite3_file *real = fileOf(file)->real;
    return real->pMethods->xRead(real, to, count, offset);
}

int writeFile(sqlite3_file *file, const void *from, int count, sqlite3_int64 offset)
{
    if (fails())
        return armed == Fault::DiskFull ? SQLITE_FULL : SQLITE_IOERR_WRITE;
    if (TrackedFile *of = trackedOf(file))
        of->pending.push_back({offset, std::string(static_cast<const char *>(from), size_t(count)), false});
    sqlite3_file *real = fileOf(file)->real;
    return real->pMethods->xWrite(real, from, count, offset);
}

int truncateFile(sqlite3_file *file, sqlite3_int64 size)
{
    if (fails())
        return SQLITE_IOERR_TRUNCATE;
    if (TrackedFile *of = trackedOf(file))
        of->pending.push_back({size, {}, true});
    sqlite3_file *real = fileOf(file)->real;
    return real->pMethods->xTruncate(real, size);
}

int syncFile(sqlite3_file *file, int flags)
{
    if (fails())
        return SQLITE_IOERR_FSYNC;
    if (TrackedFile *of = trackedOf(file)) {
        for (const Pending &change : of->pending) {
            if (change.truncation) {
                of->durable.resize(size_t(change.offset));
                continue;
            }
            const size_t end = size_t(change.offset) + change.bytes.size();
            if (of->durable.size() < end)
                of->durable.resize(end);
            of->durable.replace(size_t(change.offset), change.bytes.size(), change.bytes);
        }
        of->pending.clear();
        of->entryDurable = true;
    }
    // The real sync would only cost time: no power is lost but by the hand of this disk.
    (void)flags;
    return SQLITE_OK;
}

int sizeOfFile(sqlite3_file *file, sqlite3_int64 *size)
{
    sqlite3_file *real = fileOf(file)->real;
    return real->pMethods->xFileSize(real, size);
}

int lockFile(sqlite3_file *file, int level)
{
    sqlite3_file *real = fileOf(file)->real;
    return real->pMethods->xLock(real, level);
}

int unlockFile(sqlite3_file *file, int level)
{
    sqlite3_file *real = fileOf(file)->real;
    return real->pMethods->xUnlock(real, level);
}

int checkLock(sqlite3_file *file, int *result)
{
    sqlite3_file *real = fileOf(file)->real;
    return real->pMethods->xCheckReservedLock(real, result);
}

int controlFile(sqlite3_file *file, int what, void *argument)
{
    sqlite3_file *real = fileOf(file)->real;
    return real->pMethods->xFileControl(real, what, argument);
}

int sectorSize(sqlite3_file *file)
{
    sqlite3_file *real = fileOf(file)->real;
    return real->pMethods->xSectorSize(real);
}

int characteristics(sqlite3_file *file)
{
    sqlite3_file *real = fileOf(file)->real;
    return real->pMethods->xDeviceCharacteristics(real);
}

const sqlite3_io_methods methods = {1,           closeFile,  readFile,        writeFile,  truncateFile,
                                    syncFile,    sizeOfFile, lockFile,        unlockFile, checkLock,
                                    controlFile, sectorSize, characteristics, nullptr,    nullptr,
                                    nullptr,     nullptr,    nullptr,         nullptr};

// --- the disk

bool isJournal(const char *name)
{
    return name && std::string_view(name).ends_with("-journal");
}

int openFile(sqlite3_vfs *, const char *name, sqlite3_file *file, int flags, int *flagsOut)
{
    file->pMethods = nullptr;
    if (fails())
        return armed == Fault::DiskFull ? SQLITE_FULL : SQLITE_CANTOPEN;
    struct stat before {
    };
    const bool isNew = !name || stat(name, &before) != 0;
    if (isJournal(name) && isNew && transactionHook)
        transactionHook();
    auto *real = static_cast<sqlite3_file *>(sqlite3_malloc(realDisk->szOsFile));
    std::memset(real, 0, size_t(realDisk->szOsFile));
    const int result = realDisk->xOpen(realDisk, name, real, flags, flagsOut);
    if (result != SQLITE_OK) {
        sqlite3_free(real);
        return result;
    }
    struct stat now {
    };
    if (name && stat(name, &now) == 0) {
        fileOf(file)->inode = now.st_ino;
        if (!watchedFolder.empty() && (isNew || !tracked.contains(now.st_ino)))
            tracked[now.st_ino] = {isNew ? std::string() : contentOf(name), {}, !isNew};
    }
    fileOf(file)->real = real;
    file->pMethods = &methods;
    return SQLITE_OK;
}

int deleteFile(sqlite3_vfs *, const char *name, int syncFolder)
{
    if (fails())
        return SQLITE_IOERR_DELETE;
    if (!watchedFolder.empty() && syncFolder == 0)
        unsyncedDeletes[name] = contentOf(name);
    const int result = realDisk->xDelete(realDisk, name, 0);
    if (isJournal(name) && transactionHook && result == SQLITE_OK)
        transactionHook();
    return result;
}

int accessFile(sqlite3_vfs *, const char *name, int flags, int *result)
{
    return realDisk->xAccess(realDisk, name, flags, result);
}

int fullPath(sqlite3_vfs *, const char *name, int size, char *path)
{
    return realDisk->xFullPathname(realDisk, name, size, path);
}

sqlite3_vfs disk;

} // namespace

namespace fault_disk
{

void install()
{
    realDisk = sqlite3_vfs_find(nullptr);
    disk = *realDisk;
    disk.zName = "fault";
    disk.szOsFile = sizeof(File);
    disk.pNext = nullptr;
    disk.xOpen = openFile;
    disk.xDelete = deleteFile;
    disk.xAccess = accessFile;
    disk.xFullPathname = fullPath;
    sqlite3_vfs_register(&disk, 1);
}

void arm(Fault fault, int operation, bool forEver, std::uint32_t seed)
{
    disarm();
    armed = fault;
    failing = operation;
    failsForEver = forEver;
    chance.seed(seed);
}

void disarm()
{
    armed = Fault::None;
    counted = 0;
    met = false;
}

void keepUnsynced(const char *folder)
{
    watchedFolder = folder;
}

int operations()
{
    return counted;
}

bool wasMet()
{
    return met;
}

void onTransaction(std::function<void()> hook)
{
    transactionHook = std::move(hook);
}

} // namespace fault_disk
