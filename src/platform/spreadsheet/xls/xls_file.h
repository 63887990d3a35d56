#pragma once

#include "platform/spreadsheet/contents.h"
#include "platform/spreadsheet/output_file.h"

namespace spreadsheet
{

/// Writes a binary workbook of 1997 to 2003 (BIFF8): sheets of 65,536 rows by 256 columns, days counted in
/// the system of 1900. It walks through the cells twice, first for their texts, which stand in front.
/// @throws RuntimeError 5 for what does not fit, and what the file tells of the file system
void writeXls(const Contents &contents, OutputFile &file);

} // namespace spreadsheet
