#pragma once

#include "platform/spreadsheet/contents.h"
#include "platform/spreadsheet/xls/compound_file.h"

namespace spreadsheet::xls
{

/// Writes the fonts, number formats and cell formats.
void writeStyles(CompoundFile &stream);

/// The number of a cell format among those that were written.
quint16 styleOf(Format format, bool bold);

} // namespace spreadsheet::xls
