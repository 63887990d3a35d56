#include "platform/spreadsheet/output_file.h"

#include <QtCore/QIODevice>

#include <cerrno>
#include <cstring>
#include <utility>

namespace spreadsheet
{

namespace
{
constexpr qint64 bufferSize = qint64(256) * 1024;
}

OutputFile::OutputFile(NewFile &file)
    : m_file(file), m_buffer(std::make_unique_for_overwrite<char[]>(bufferSize))
{
}

void OutputFile::write(QByteArrayView bytes)
{
    if (bytes.size() > bufferSize - m_used)
        flush();
    if (bytes.size() > bufferSize) {
        writeThrough(bytes);
        m_flushed += bytes.size();
    } else if (!bytes.isEmpty()) {
        std::memcpy(m_buffer.get() + m_used, bytes.data(), std::size_t(bytes.size()));
        m_used += bytes.size();
    }
}

void OutputFile::patch(qint64 position, QByteArrayView bytes)
{
    flush();
    m_file.device().seek(position);
    writeThrough(bytes);
    m_file.device().seek(m_flushed);
}

void OutputFile::flush()
{
    writeThrough({m_buffer.get(), m_used});
    m_flushed += std::exchange(m_used, 0);
}

void OutputFile::writeThrough(QByteArrayView bytes)
{
    errno = 0;
    if (m_file.device().write(bytes.data(), bytes.size()) != bytes.size())
        throw m_file.failure(errno != 0 ? errno : EIO);
}

} // namespace spreadsheet
