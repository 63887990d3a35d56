#include "fuzz/damage.h"
#include "fuzz/sealed_pages.h"
#include "fuzz/support.h"
#include "platform/database/recordset.h"
#include "store/connection_strings.h"

#include <QtCore/QFile>

using namespace Qt::Literals::StringLiterals;

/// Opens a damaged store with its password, reads every table, and writes to it.
FUZZ_HARNESS(store_bytes)
{
    const QString path = fuzz::folder() + u"/bytes.mdb"_s;
    QFile::remove(path + u"-journal"_s);
    QFile file(path);
    fuzz::require(file.open(QFile::WriteOnly) && file.write(fuzz::damagedStore(input)) >= 0 && file.flush(),
                  "there is room");
    fuzz::refusal([&] {
        const ConnectionPtr store = Connection::create();
        store->open(connectionStringOf(path, fuzz::SealedPages::password()));
        fuzz::limitWork(store);
        for (const SchemaTable &table : store->schemaTables()) {
            fuzz::refusal([&] {
                const RecordsetPtr rows = Recordset::create();
                rows->open(u"select * from ["_s + table.tableName + u']', store, CursorType::Static);
                for (int row = 0; row < rows->rowCount(); ++row) {
                    for (int field = 0; field < rows->fieldCount(); ++field)
                        rows->valueAt(row, field).toText();
                }
            });
        }
        store->beginTrans();
        for (const QString &statement :
             {u"select count(*) from items where name > 'name 2'"_s, u"delete from items where kind < 20"_s,
              u"update items set note='y',name=name & 'z'"_s, u"insert into items (name) values('new')"_s})
            fuzz::refusal([&] { store->execute(statement); });
        fuzz::refusal([&] { store->rollbackTrans(); });
    });
}
