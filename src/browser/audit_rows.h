#pragma once

#include <QtCore/QString>

/// Keeps what stands in a transaction's row of a table before it is changed: writes a copy of it with the
/// kind of change to the audit table and stamps the row itself with the present time. To be called before the
/// change. Without such a row nothing is written. `auditAction` is "add", "delete" or "update"; in an English
/// session it is cleared when the copy is written.
/// A failure anywhere ends it in silence, and nothing tells how far it came.
void WriteAuditRow(const QString &tableName, qint32 transaction, QString &auditAction);
