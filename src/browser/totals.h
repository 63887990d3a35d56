#pragma once

#include "platform/database/recordset.h"

#include <QtCore/QString>

/// The statement of the sums of a table's valid rows: of each side for the ledger and the general journal.
QString totalsStatement(const QString &tableName, const QString &currentTable);
/// The same of one member's rows in a ledger table. A name with an apostrophe breaks it.
QString memberTotalsStatement(const QString &currentTable, const QString &member);

/// One line for each side and the net of both, from the rows of such a statement, which it moves through.
/// @throws RuntimeError 6 when the net leaves the range of money
QString totalsLines(Recordset &sums);
