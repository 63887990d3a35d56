#include "browser/archiving.h"

#include "core/engine.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "store/archive_tables.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

/// Runs the steps of a move in one transaction. A failure rolls back and is told by `cancelled`.
bool inOneTransaction(const std::function<void()> &steps, const QString &cancelled)
{
    Connection &store = *engine.dbConnection;
    try {
        store.beginTrans();
        steps();
        store.commitTrans();
        return true;
    } catch (const RuntimeError &) {
        if (store.inTransaction())
            store.rollbackTrans();
        showMessage(cancelled);
        return false;
    }
}

void forgetArchive(const QString &archive)
{
    engine.dbConnection->execute(u"delete from archives where archive='"_s + archive + u'\'');
}

void dropTable(const QString &table)
{
    engine.dbConnection->execute(u"drop table ["_s + table + u']');
}

} // namespace

bool archiveRange(const QString &tableName, const QString &from, const QString &to,
                  const std::function<void(const QString &archive, const QString &interval)> &beforeCommit)
{
    Connection &store = *engine.dbConnection;
    const QString archive = NextArchiveName(tableName);
    const auto move = [&] {
        // The other way round than the range that the browser shows, so that the store refuses it for a table
        // without the column: that is meant.
        const QString column = tableName.contains(u"audit") ? u"ddate"_s : u"updatedon"_s;
        const QString rows = u" from ["_s + tableName + u"] where "_s + column + u" between #"_s + from +
                             u"# and #"_s + to + u'#';
        store.execute(u"select * into ["_s + archive + u']' + rows);
        store.execute(u"delete"_s + rows);
        const QString interval = to + u" - "_s + from; // the later date first
        store.execute(u"insert into archives ([table],[archive],[interval]) values('"_s + tableName +
                      u"','"_s + archive + u"','"_s + interval + u"')"_s);
        beforeCommit(archive, interval);
    };
    return inOneTransaction(move, u"Archiving was cancelled..  تم إلغاء الأرشفه"_s);
}

bool mergeArchive(const QString &tableName, const QString &currentTable, Recordset &datPrimaryRS,
                  const std::function<void()> &beforeCommit)
{
    engine.strSql = u"insert into ["_s + tableName + u"] select * from ["_s + currentTable + u']';
    const auto move = [&] {
        engine.dbConnection->execute(engine.strSql);
        datPrimaryRS.close();
        dropTable(currentTable);
        forgetArchive(currentTable);
        beforeCommit();
    };
    const bool merged = inOneTransaction(move, u"DeArchiving was cancelled..  تم إلغاء الدمج"_s);
    if (merged)
        showMessage(u"DeArchiving Finished sucessfully..  تمت عملية الدمج بنجاح"_s);
    return merged;
}

void removeEmptyArchive(const QString &currentTable)
{
    forgetArchive(currentTable);
    dropTable(currentTable);
}
