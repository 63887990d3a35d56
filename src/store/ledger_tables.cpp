#include "store/ledger_tables.h"

#include "core/engine.h"

QStringList ledgerTables()
{
    QStringList names;
    for (const SchemaTable &table : engine.dbConnection->schemaTables()) {
        if (table.tableName.startsWith(u"ledger"))
            names << table.tableName;
    }
    return names;
}
