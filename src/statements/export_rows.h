#pragma once

#include "platform/database/recordset.h"

#include <QtCore/QString>

/// What becomes of a failure of an export that is neither a cancelled dialog nor a refused save.
enum class ExportFailure {
    Silent, ///< the export ends without a word; of a save that fails it tells as of a refused one
    Told    ///< its number, " -> " and its description in a message
};

/// Copies a record set into a workbook, from its current row on and with the raw field names as a bold first
/// row, and saves it under a name that the user picks. The set stands at EOF then. `proposedName` is what the
/// save dialog begins with; what it ends with is returned, the same when it was cancelled. A cancelled dialog
/// shows nothing; a finished and a refused save are told. A save that takes long can be stopped, which is
/// told as a refused one.
QString exportRows(Recordset &rows, const QString &proposedName, ExportFailure failure);
