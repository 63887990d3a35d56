#pragma once

#include "platform/runtime/new_file.h"

#include <QtCore/QByteArrayView>

#include <memory>

namespace spreadsheet
{

/// Writes a new file from front to back in large pieces. A failure comes out as the file's own at once.
class OutputFile
{
public:
    explicit OutputFile(NewFile &file); ///< which must outlive this

    qint64 position() const noexcept { return m_flushed + m_used; }
    void write(QByteArrayView bytes);
    /// Overwrites bytes that were written before.
    void patch(qint64 position, QByteArrayView bytes);
    /// To be called at the end: what is not flushed is not written.
    void flush();

private:
    void writeThrough(QByteArrayView bytes);

    NewFile &m_file;
    std::unique_ptr<char[]> m_buffer;
    qint64 m_used = 0; ///< of the buffer
    qint64 m_flushed = 0;
};

} // namespace spreadsheet
