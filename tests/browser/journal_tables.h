#pragma once

#include "core/engine.h"
#include "support/store_reading.h"

/// The session's tables that corrections, cancels and archives write.
inline QStringList journalTables()
{
    QStringList names;
    for (const SchemaTable &table : engine.dbConnection->schemaTables()) {
        for (const char *stem : {"ledger", "general", "audit_", "archives"}) {
            if (table.tableName.startsWith(QLatin1StringView(stem)))
                names << table.tableName;
        }
    }
    return names;
}

/// All rows of these tables as an independent reader finds them, `table|value|value...`.
inline QStringList stored(const QStringList &tables = journalTables())
{
    QStringList statements;
    for (const QString &table : tables)
        statements << u"select '%1', * from [%1]"_s.arg(table);
    return shellLines(engine.storeFilePath, statements.join(u';'));
}
