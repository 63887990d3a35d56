#pragma once

#include "platform/database/recordset.h"

#include <QtCore/QString>

#include <functional>

/// The moves of rows between a table and its archives. What is said of `beforeCommit` holds for both moves:
/// it runs inside the transaction, when the rows have moved and before that is kept, and what it throws ends
/// the move as a failure of the store does.

/// Moves the rows of a range of dates into a new archive and enters that in `archives`, in one transaction.
/// `from` and `to` are the ends, included, as texts that the store reads month first, else day first.
/// `beforeCommit` is given the archive's name and its interval. A failure takes everything back and is told;
/// then it is False.
/// @throws RuntimeError what fails before the transaction, in finding the archive's name
bool archiveRange(const QString &tableName, const QString &from, const QString &to,
                  const std::function<void(const QString &archive, const QString &interval)> &beforeCommit);

/// Moves the rows of an archive back into its table and drops it with its entry in `archives`, in one
/// transaction, and closes the set that shows it meanwhile. Both outcomes are told. After a failure
/// everything is taken back, though the set may be closed; then it is False. Overwrites `engine.strSql`.
bool mergeArchive(const QString &tableName, const QString &currentTable, Recordset &datPrimaryRS,
                  const std::function<void()> &beforeCommit);

/// Drops an archive without rows, its entry in `archives` first; each statement alone.
/// @throws RuntimeError as the store does
void removeEmptyArchive(const QString &currentTable);
