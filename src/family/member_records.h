#pragma once

#include "platform/database/recordset.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

/// The words of a code table (`sexes` or `relations`, given by the stem of its columns: `sex`, `relation`) in
/// the session's language, in the order of their codes from 1 on.
QStringList codeNames(const QString &stem);
/// The code of a word. @throws RuntimeError 3021 when the table does not have it.
Value codeOf(const QString &stem, const QString &word);

/// Writes the audit row of the current row of the members: each field as read from the store when
/// `asRead`, else as it stands now, and who changed it, when and how.
void writeMemberAudit(const Recordset &members, bool asRead, const QString &updateType);

/// True when a field of the current row differs from what was read from the store.
bool isChanged(const Recordset &members);

/// True when a ledger, live or archived, has a row of that name.
bool hasLedgerRows(const QString &name);
/// Gives the rows of all ledgers another name.
void renameInLedgers(const QString &oldName, const QString &newName);

/// True when the text can't be taken for that field of a member.
bool isRefused(const QString &field, const QString &text);

/// A member's value as the grid shows it: words in the session's language for codes, `yyyy/mm/dd` for dates
/// with the time in front if there is one.
QString memberCellText(const QString &field, const Value &value);
