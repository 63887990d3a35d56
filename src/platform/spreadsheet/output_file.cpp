#include "platform/spreadsheet/output_file.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace spreadsheet
{

namespace
{

constexpr qint64 bufferSize = 256 * 1024;

[[noreturn]] void fail()
{
    throw std::system_error(errno, std::generic_category());
}

/// Writes everything at a position; a piece of it taken is no failure yet.
void writeAt(int descriptor, qint64 position, const char *bytes, qint64 size)
{
    while (size > 0) {
        const ssize_t written = ::pwrite(descriptor, bytes, std::size_t(size), position);
        if (written < 0 && errno != EINTR)
            fail();
        if (written > 0) {
            bytes += written;
            position += written;
            size -= written;
        }
    }
}

} // namespace

PrivateFolder::PrivateFolder(const QString &parent)
{
    QByteArray pattern = QFile::encodeName(parent + u"/.quvana-XXXXXX"_s);
    if (!::mkdtemp(pattern.data()))
        fail();
    m_path = QFile::decodeName(pattern);
}

PrivateFolder::~PrivateFolder()
{
    QDir(m_path).removeRecursively();
}

OutputFile::OutputFile(const QString &path)
    : m_descriptor(
          ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600)),
      m_buffer(std::make_unique_for_overwrite<char[]>(bufferSize))
{
    if (m_descriptor < 0)
        fail();
}

OutputFile::~OutputFile()
{
    ::close(m_descriptor);
}

void OutputFile::write(QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return;
    if (bytes.size() > bufferSize - m_used) {
        flush();
        if (bytes.size() > bufferSize) {
            writeAt(m_descriptor, m_flushed, bytes.data(), bytes.size());
            m_flushed += bytes.size();
            return;
        }
    }
    std::memcpy(m_buffer.get() + m_used, bytes.data(), std::size_t(bytes.size()));
    m_used += bytes.size();
}

void OutputFile::patch(qint64 position, QByteArrayView bytes)
{
    flush();
    writeAt(m_descriptor, position, bytes.data(), bytes.size());
}

void OutputFile::finish()
{
    flush();
    if (::fsync(m_descriptor) != 0)
        fail();
}

void OutputFile::flush()
{
    writeAt(m_descriptor, m_flushed, m_buffer.get(), m_used);
    m_flushed += std::exchange(m_used, 0);
}

} // namespace spreadsheet
