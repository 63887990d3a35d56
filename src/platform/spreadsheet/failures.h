#pragma once

#include "platform/runtime/runtime_error.h"

namespace spreadsheet
{

/// What the file system refused, told by the system's own error number, as a RuntimeError that names the
/// file: 61 for a full disk, 70 for a missing permission, 76 for a missing folder, 75 for the rest.
RuntimeError notSaved(const QString &path, int systemError);
/// 75, for a reason that has no number.
RuntimeError notSaved(const QString &path, const QString &reason);
/// 5: the contents are more than the chosen form of workbook can hold.
RuntimeError doesNotFit(const QString &reason);

} // namespace spreadsheet
