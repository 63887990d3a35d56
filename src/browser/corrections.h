#pragma once

#include "platform/database/recordset.h"

#include <QtCore/QString>

#include <vector>

/// The changes of a transaction: in its row of `general` and in its rows of every ledger table.

/// Whether a column may be edited in the grid.
bool ColumnEditable(const QString &name);
/// Whether the rows of a logical table may be.
bool TableEditable(const QString &table);

/// One cell of a grid's row.
struct CellText {
    QString fieldName;
    QString text; ///< as shown
};

/// A row of the grid whose cells may have been edited.
struct EditedRow {
    QString tableName;    ///< the logical table
    QString currentTable; ///< the table shown: that one or an archive of it
    RecordsetPtr datPrimaryRS;
    std::vector<CellText> cells; ///< in the order of the columns
};

/// Whether a cell's text differs from the value of that field in the set's current row, compared in the
/// field's type. A comparison that fails (a text that is no number, no current row) counts as a difference;
/// Null equals the empty text.
bool FieldChanged(const QString &text, const QString &fieldName, const Recordset &datPrimaryRS);

/// Writes what was edited in a row: the audit row, the table shown and the ledger tables, in one transaction.
/// Moves the set to the row, or behind its end when the row stands above the current one. False when nothing
/// was written, after a notice; then the set has no filter any more, unless a ledger table failed.
/// `auditAction` as WriteAuditRow() leaves it. Overwrites `engine.strSql` and `engine.rsShared`.
bool SaveRowChanges(const EditedRow &row, QString &auditAction);

/// Runs an update of `tableName` on every ledger table, its name in place of `tableName` wherever that stands
/// in the text. A failure is told; then it is False.
bool UpdateLedgerTables(const QString &statement, const QString &tableName);

/// Marks a transaction as cancelled, with its audit row, in the table shown and in the ledger tables. No
/// transaction of the store stands around it: what was done before a failure stays done.
/// @throws RuntimeError as the store does
void cancelTransaction(const QString &tableName, const QString &currentTable, qint32 transaction,
                       QString &auditAction);
