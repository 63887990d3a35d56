#include "stress/states.h"

#include "core/engine.h"
#include "platform/database/engine.h"
#include "platform/database/errors.h"
#include "platform/database/recordset.h"
#include "platform/database/sql/ddl.h"
#include "store/connection_strings.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <sqlcipher/sqlite3.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace
{

struct Finalize {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using Rows = std::unique_ptr<sqlite3_stmt, Finalize>;

Rows prepared(sqlite3 *store, const QByteArray &sql)
{
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(store, sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
        throw database::engineError(store);
    return Rows(statement);
}

bool next(sqlite3 *store, const Rows &rows)
{
    const int result = sqlite3_step(rows.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        throw database::engineError(store);
    return result == SQLITE_ROW;
}

QByteArray text(const Rows &rows, int column)
{
    const auto *bytes = static_cast<const char *>(sqlite3_column_blob(rows.get(), column));
    return bytes ? QByteArray(bytes, sqlite3_column_bytes(rows.get(), column)) : QByteArray("(null)");
}

using Choice = bool (*)(const QByteArray &name);

QByteArray digestOf(const QString &path, Choice wantsTable, Choice wantsColumn)
{
    if (!QFile::exists(path))
        return "none";
    database::Engine file = database::Engine::open(path, engine.storePassword);
    sqlite3 *store = file.handle();
    if (file.first("pragma integrity_check") != sql::Parameter(QByteArray("ok")))
        throw data_errors::engineFailure(u"The store is damaged."_s);
    QCryptographicHash digest(QCryptographicHash::Sha1);
    const Rows tables =
        prepared(store, "select name, sql from sqlite_master where type = 'table' order by name");
    while (next(store, tables)) {
        const QByteArray name = text(tables, 0);
        if (!wantsTable(name))
            continue;
        digest.addData(name + text(tables, 1));
        const Rows rows = prepared(store, "select rowid, * from \"" + name + "\" order by rowid");
        while (next(store, rows)) {
            for (int column = 0; column < sqlite3_column_count(rows.get()); ++column) {
                if (wantsColumn(sqlite3_column_name(rows.get(), column)))
                    digest.addData(text(rows, column) + '|');
            }
        }
    }
    return digest.result().toHex();
}

} // namespace

QByteArray rowsDigest(const QString &path)
{
    return digestOf(
        path, [](const QByteArray &) { return true; }, [](const QByteArray &) { return true; });
}

QByteArray amountsDigest(const QString &path)
{
    return digestOf(
        path,
        [](const QByteArray &table) { return !table.startsWith("audit_") && table != sql::countersTable; },
        [](const QByteArray &column) { return column != "valid" && column != "lastupdate"; });
}

QByteArray answersDigest(const QString &path)
{
    const ConnectionPtr store = Connection::create();
    store->open(connectionStringOf(path, engine.storePassword));
    QCryptographicHash digest(QCryptographicHash::Sha1);
    for (const SchemaTable &table : store->schemaTables()) {
        const auto rows = Recordset::create();
        rows->open(u"select * from ["_s + table.tableName + u']', store, CursorType::Static);
        digest.addData(table.tableName.toUtf8());
        for (int row = 0; row < rows->rowCount(); ++row) {
            for (int field = 0; field < rows->fieldCount(); ++field)
                digest.addData(rows->valueAt(row, field).toText().toUtf8() + '|');
        }
    }
    return digest.result().toHex();
}

QByteArray bytesDigest(const QString &path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        return "none";
    QCryptographicHash digest(QCryptographicHash::Sha1);
    digest.addData(&file);
    return digest.result().toHex();
}
