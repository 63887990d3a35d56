#include "platform/database/compaction.h"

#include "platform/database/connection_string.h"
#include "platform/database/engine.h"
#include "platform/database/errors.h"
#include "platform/database/sql/ddl.h"
#include "platform/database/store_path.h"

#include <QtCore/QFile>

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace
{

RuntimeError incomplete()
{
    return data_errors::engineFailure(u"The compacted copy is not complete."_s);
}

// The copy takes the source's place next, so what was written is read again first.
void verifyCopy(database::Engine &engine)
{
    if (engine.first("pragma target.integrity_check") != sql::Parameter(QByteArray("ok")))
        throw incomplete();
    const auto schema = [&engine](const QByteArray &name) {
        return engine.first("select group_concat(sql, ';') from (select sql from " + name +
                            ".sqlite_master order by type, name)");
    };
    if (schema("main") != schema("target"))
        throw incomplete();
    const sql::Catalog catalog = sql::readCatalog(engine.handle());
    for (const sql::CatalogTable &table : catalog.tables()) {
        const auto rows = [&](const QByteArray &name) {
            return engine.first("select count(*) from " + name + '.' + sql::quotedName(table.name));
        };
        if (rows("main") != rows("target"))
            throw incomplete();
    }
}

void writeCopy(database::Engine &engine, const database::ConnectionString &target)
{
    engine.attach(target.path, target.password, "target");
    engine.run("begin"); // one state of the source, and one commit of the target
    engine.run("select sqlcipher_export('target')");
    engine.stampCollation("target");
    engine.run("commit");
    verifyCopy(engine);
    engine.run("detach database target");
}

} // namespace

void compactStoreFile(const QString &sourceConnectionString, const QString &targetConnectionString)
{
    const auto source = database::ConnectionString::parse(sourceConnectionString);
    const auto target = database::ConnectionString::parse(targetConnectionString);
    if (target.password.isEmpty())
        throw data_errors::wrongPassword();
    std::optional engine = database::Engine::open(source.path, source.password);
    database::createEmptyFile(target.path);
    try {
        QFile::setPermissions(target.path, QFile::permissions(source.path));
        writeCopy(*engine, target);
        engine.reset();
        database::makeFolderDurable(target.path);
    } catch (...) {
        engine.reset(); // lets go of the target first
        QFile::remove(target.path);
        QFile::remove(target.path + "-journal"_L1);
        throw;
    }
}
