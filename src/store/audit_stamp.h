#pragma once

#include "platform/database/recordset.h"

/// Opens the audit table of a table and begins a row in it. The row is dropped when the set goes.
/// @throws RuntimeError as the store does
RecordsetPtr newAuditRow(const QString &tableName);

/// Marks the row with who changes something now and how, writes it and closes its set.
/// @throws RuntimeError as the store does, also for an empty user or kind of change
void writeAuditRow(Recordset &audit, const QString &updateType);
