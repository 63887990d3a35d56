#pragma once

#include "platform/spreadsheet/output_file.h"

namespace spreadsheet::xls
{

/// A compound file with one stream, "Workbook", in sectors of 512 bytes. The stream is written from front to
/// back; the tables that tell where its sectors are come behind it.
class CompoundFile
{
public:
    explicit CompoundFile(OutputFile &file); ///< which is empty, and must outlive this

    qint64 position() const noexcept; ///< in the stream
    /// @throws RuntimeError 5 when the stream becomes longer than 2 GB
    void write(QByteArrayView bytes);
    /// Overwrites bytes of the stream that were written before.
    void patch(qint64 position, QByteArrayView bytes);
    /// Writes the tables behind the stream, and the header. Nothing may be written afterwards.
    void finish();

private:
    OutputFile &m_file;
};

} // namespace spreadsheet::xls
