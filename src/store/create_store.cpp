#include "core/engine.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/screen.h"
#include "store/files.h"
#include "store/schema.h"
#include "store/seed_rows.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

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
    const ConnectionPtr connection = Connection::create();
    bool earlierStoreIsSafe = false;
    try {
        if (fileExists(backupPath)) {
            if (!askYesNo(u"Do you want to Delete the old backup?  هل تريد حذف النسخه الإحتياطيه؟"_s +
                              u" : "_s + u"\r\n"_s + backupPath,
                          MessageIcon::Critical))
                return false;
            deleteFile(backupPath);
        }
        if (fileExists(path))
            renameFile(path, backupPath);
        earlierStoreIsSafe = true;
        buildTables(path, password);
        connection->open(storeName.contains(u"testdb"_s, Qt::CaseInsensitive) ? engine.testConnectionString
                                                                              : engine.connectionString);
        seed(connection);
        connection->close();
        return true;
    } catch (const RuntimeError &error) {
        Screen::setHourglass(false);
        if (connection->isOpen())
            ignoringErrors([&] { connection->close(); });
        // The earlier store stays under the backup's name: it is not moved back, and that is meant.
        if (earlierStoreIsSafe && fileExists(path))
            ignoringErrors([&] { deleteFile(path); });
        showMessage(error.description());
        return false;
    }
}
