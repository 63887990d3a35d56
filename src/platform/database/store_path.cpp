#include "platform/database/store_path.h"

#include "platform/database/errors.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <sqlcipher/sqlite3.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace database
{

namespace
{

constexpr int pageSize = 4096;

RuntimeError systemFailure(const QString &path, int error)
{
    return data_errors::engineFailure(
        u"Cannot open '%1': %2"_s.arg(path, QString::fromLocal8Bit(std::strerror(error))));
}

// A page of a store is the output of a cipher. The squared deviations of its bytes from an even spread, in
// units of the expected count, sum up to 255 +- 23; a page of text, zeros or another program's records lies
// in the thousands.
bool looksEncrypted(const std::array<unsigned char, pageSize> &page)
{
    std::array<int, 256> counts{};
    for (const unsigned char byte : page)
        ++counts[byte];
    constexpr double expected = pageSize / 256.0;
    double sum = 0;
    for (const int count : counts)
        sum += (count - expected) * (count - expected) / expected;
    return sum < 600;
}

// What a crash has left of a transaction; the engine undoes it at the first read.
bool hasJournal(const QString &path)
{
    return QFileInfo(path + "-journal"_L1).size() > 0;
}

} // namespace

void requireReachable(const QString &path)
{
    if (path.contains(QChar::Null)) // the system would take what stands before it
        throw data_errors::fileNotFound(path);
    const QByteArray name = QFile::encodeName(path);
    struct stat status {
    };
    if (::stat(name.constData(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            throw data_errors::fileNotFound(path);
        throw systemFailure(path, errno);
    }
    if (!S_ISREG(status.st_mode))
        throw data_errors::unrecognizedFormat(path);
    if (::access(name.constData(), R_OK | W_OK) != 0)
        throw systemFailure(path, errno);
}

void requireStoreFormat(sqlite3 *handle, const QString &path)
{
    // Read through the engine's own descriptor: closing another one on this file would drop the locks that
    // this process holds on it by other connections.
    sqlite3_file *file = nullptr;
    sqlite3_int64 size = 0;
    std::array<unsigned char, pageSize> page{};
    if (sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || !file ||
        !file->pMethods || file->pMethods->xFileSize(file, &size) != SQLITE_OK)
        throw data_errors::engineFailure(u"Cannot read '%1'."_s.arg(path));
    if (size < pageSize || (size % pageSize != 0 && !hasJournal(path)))
        throw data_errors::unrecognizedFormat(path);
    if (file->pMethods->xRead(file, page.data(), pageSize, 0) != SQLITE_OK)
        throw data_errors::engineFailure(u"Cannot read '%1'."_s.arg(path));
    if (!looksEncrypted(page))
        throw data_errors::unrecognizedFormat(path);
}

void createEmptyFile(const QString &path)
{
    if (path.contains(QChar::Null))
        throw runtime_errors::pathAccess();
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (descriptor >= 0) {
        ::close(descriptor);
        return;
    }
    switch (errno) {
    case EEXIST:
        throw runtime_errors::fileExists();
    case ENOENT:
    case ENOTDIR:
        throw runtime_errors::pathNotFound();
    default:
        throw runtime_errors::pathAccess();
    }
}

void syncFolderOf(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool synced = descriptor >= 0 && ::fsync(descriptor) == 0;
    const int error = errno;
    if (descriptor >= 0)
        ::close(descriptor);
    if (!synced && error != EINVAL) // some network file systems know no sync of a folder
        throw systemFailure(path, error);
}

} // namespace database
