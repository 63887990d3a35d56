#pragma once

#include "platform/spreadsheet/contents.h"

namespace spreadsheet
{

/// Writes the package into the file at `path` and looks whether all of it arrived. The helper files of the
/// writing lie in `folder`, without a name. Memory does not grow with the rows. A number is written with 16
/// significant digits, which is exact for money below 1e12 units.
/// @throws std::system_error for what the file system refuses, RuntimeError 5 for what does not fit
void writeXlsx(const Contents &contents, const QString &path, const QString &folder);

} // namespace spreadsheet
