#include "store/create_store.h"

#include "core/engine.h"
#include "platform/runtime/files.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/screen.h"
#include "store/connection_strings.h"
#include "store/schema.h"
#include "store/seed_rows.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

QString journalOf(const QString &path)
{
    return path + u"-journal"_s;
}

void deleteIfThere(const QString &path)
{
    if (fileExists(path))
        deleteFile(path);
}

/// What a crash has left of a transaction goes with its store: beside another file it would spoil that one.
void putAway(const QString &path, const QString &backupPath)
{
    deleteIfThere(journalOf(backupPath));
    if (fileExists(path)) {
        renameFile(path, backupPath);
        if (fileExists(journalOf(path)))
            renameFile(journalOf(path), journalOf(backupPath));
    }
    deleteIfThere(journalOf(path));
}

void buildTables(const QString &path, const QString &password)
{
    StoreFile file = StoreFile::create(path, password);
    for (const TableDefinition &table : storeTables())
        file.appendTable(table);
    file.close();
}

/// All seed rows or none.
void seed(const ConnectionPtr &connection)
{
    connection->beginTrans();
    try {
        writeSeedRows(connection);
    } catch (const RuntimeError &) {
        ignoringErrors([&] { connection->rollbackTrans(); });
        throw;
    }
    connection->commitTrans();
}

} // namespace

bool CreateStore(const QString &storeName, const QString &password)
{
    const QString path = engine.appPath + u'/' + storeName + u".mdb"_s;
    const QString backupPath = engine.appPath + u'/' + storeName + u"_backup"_s + u".mdb"_s;
    // Made beside its place and put there when it is whole: whenever the process is killed, no half-made file
    // passes for the store.
    const QString newPath = path + u"-new"_s;
    const ConnectionPtr connection = Connection::create();
    try {
        if (fileExists(backupPath)) {
            if (!askYesNo(u"Do you want to Delete the old backup?  هل تريد حذف النسخه الإحتياطيه؟"_s +
                              u" : "_s + u"\r\n"_s + backupPath,
                          MessageIcon::Critical))
                return false;
            deleteFile(backupPath);
        }
        putAway(path, backupPath);
        deleteIfThere(newPath);
        buildTables(newPath, password);
        connection->open(connectionStringOf(newPath, password));
        seed(connection);
        connection->close();
        renameFile(newPath, path);
        return true;
    } catch (const RuntimeError &error) {
        Screen::setHourglass(false);
        if (connection->isOpen())
            ignoringErrors([&] { connection->close(); });
        // The earlier store stays under the backup's name: it is not moved back, and that is meant.
        ignoringErrors([&] { deleteIfThere(newPath); });
        showMessage(error.description());
        return false;
    }
}
