#include "platform/database/store_path.h"

#include "platform/database/errors.h"
#include "platform/runtime/files.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <sqlcipher/sqlite3.h>
#include <sys/stat.h>

#include <algorithm>
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

RuntimeError unreadable(const QString &path)
{
    return data_errors::engineFailure(u"Cannot read '%1'."_s.arg(path));
}

/// The engine's own view of the file, unlocked and without its key.
class RawFile
{
public:
    explicit RawFile(sqlite3 *handle) : m_path(fileOf(handle))
    {
        if (sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &m_file) != SQLITE_OK ||
            !m_file || !m_file->pMethods || m_file->pMethods->xFileSize(m_file, &m_size) != SQLITE_OK)
            throw unreadable(m_path);
    }
    qint64 size() const { return m_size; }
    QByteArray read(qint64 offset, qint64 count) const
    {
        QByteArray bytes(std::min(count, size() - offset), Qt::Uninitialized);
        if (m_file->pMethods->xRead(m_file, bytes.data(), int(bytes.size()), offset) != SQLITE_OK)
            throw unreadable(m_path);
        return bytes;
    }

private:
    QString m_path;
    sqlite3_file *m_file = nullptr;
    sqlite3_int64 m_size = 0;
};

QString journalOf(const QString &path)
{
    return path + "-journal"_L1;
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

void requireStoreSize(sqlite3 *handle, const QString &path)
{
    const qint64 size = RawFile(handle).size();
    // A crash may have left a part of a page; the journal then tells the size to go back to.
    if (size < pageSize || (size % pageSize != 0 && !hasJournal(handle)))
        throw data_errors::unrecognizedFormat(path);
}

QString fileOf(sqlite3 *handle)
{
    return QFile::decodeName(sqlite3_db_filename(handle, "main"));
}

bool hasJournal(sqlite3 *handle)
{
    return QFileInfo(journalOf(fileOf(handle))).size() > 0;
}

// A page of a store is the output of a cipher. The squared deviations of its bytes from an even spread, in
// units of the expected count, sum up to 255 +- 23; a page of text, zeros or another program's records lies
// in the thousands.
bool looksEncrypted(sqlite3 *handle)
{
    std::array<int, 256> counts{};
    for (const char byte : RawFile(handle).read(0, pageSize))
        ++counts[static_cast<unsigned char>(byte)];
    constexpr double expected = pageSize / 256.0;
    double sum = 0;
    for (const int count : counts)
        sum += (count - expected) * (count - expected) / expected;
    return sum < 600;
}

void copyWithJournal(sqlite3 *handle, const QString &target)
{
    constexpr qint64 portion = 1 << 20;
    const RawFile source(handle);
    QFile copy(target);
    bool written = copy.open(QIODevice::WriteOnly | QIODevice::NewOnly);
    for (qint64 offset = 0; written && offset < source.size(); offset += portion) {
        const QByteArray bytes = source.read(offset, portion);
        written = copy.write(bytes) == bytes.size();
    }
    written = written && copy.flush() && QFile::copy(journalOf(fileOf(handle)), journalOf(target));
    if (!written)
        throw data_errors::engineFailure(u"Cannot write '%1': %2"_s.arg(target, copy.errorString()));
}

void createEmptyFile(const QString &path)
{
    if (path.contains(QChar::Null))
        throw runtime_errors::pathAccess();
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
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

void makeFolderDurable(const QString &path)
{
    if (const int error = syncFolderOf(path); error != 0)
        throw systemFailure(path, error);
}

} // namespace database
