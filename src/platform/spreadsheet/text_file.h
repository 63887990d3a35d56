#pragma once

#include "platform/spreadsheet/contents.h"
#include "platform/spreadsheet/output_file.h"

namespace spreadsheet
{

/// Writes all rows as lines of tab-separated values: UTF-8 with a byte order mark, lines ended by CR LF. A
/// value with a tab, a line break or a quotation mark stands in quotation marks, with its own ones doubled.
/// Booleans are TRUE and FALSE, everything else is in its general form.
void writeText(const Contents &contents, OutputFile &file);

} // namespace spreadsheet
