#pragma once

#include "platform/runtime/new_file.h"
#include "platform/spreadsheet/contents.h"

namespace spreadsheet
{

/// Writes the package and looks whether all of it arrived. The helper files of the writing have no names and
/// lie where the file is made. Memory does not grow with the rows. A number is written with 16 significant
/// digits, which is exact for money below 1e12 units.
/// @throws RuntimeError 5 for what does not fit, and what the file tells of the file system
void writeXlsx(const Contents &contents, NewFile &file, const QString &folder);

} // namespace spreadsheet
