#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtEndian>

namespace spreadsheet::xls
{

/// Adds a number in the byte order of the format.
template <typename Number>
void append(QByteArray &bytes, Number number)
{
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
}

} // namespace spreadsheet::xls
