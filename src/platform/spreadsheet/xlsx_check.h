#pragma once

#include <QtCore/QString>

#include <cstdio>
#include <vector>

namespace spreadsheet
{

/// What a sheet's rows are as XML: their bytes and the bytes' CRC-32.
struct SheetRows {
    qint64 size = 0;
    quint32 crc = 0;
};

/// Of all bytes that were written to a file. @throws std::system_error when they can't be read back
SheetRows sheetRowsOf(std::FILE *file);

/// Reads a package back: whether its parts can be unpacked and end as they should, and each sheet has exactly
/// its rows. The library that writes packages does not look whether its own helper files got everything.
bool isWholePackage(const QString &path, const std::vector<SheetRows> &sheets);

} // namespace spreadsheet
