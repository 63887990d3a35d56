#include "database/sql/seeded_store.h"

#include "database/temp_store.h"
#include "platform/database/engine.h"
#include "platform/database/session.h"
#include "store/schema.h"

#include <sqlcipher/sqlite3.h>

namespace
{

constexpr const char16_t *seed[] = {
    u"insert into settings (lastcompacted,desceased,sn) values('01/03/2004','unknown',3)",
    u"insert into relations (relationar,relationen) values('زوجه','Wife')",
    u"insert into relations (relationar,relationen) values('ولد','Son')",
    u"insert into relations (relationar,relationen) values('بنت','Daughter')",
    u"insert into sexes (sexar,sexen) values('ذكر','Male')",
    u"insert into sexes (sexar,sexen) values('أنثى','Female')",
    u"insert into details (detailar,detailen,credit) values('تلفون','Phone',false)",
    u"insert into details (detailar,detailen) values('أخرى','Other')",
    u"insert into details (detailar,detailen,credit) values('بيع عقارات','Property Sale',true)",
    u"insert into details (detailar,detailen,credit) values('أخرى','Other',true)",
    u"insert into members (name,sex,title,relation,dob,group) values('Dana',2,'Ms',3,'10/02/1999',2)",
    u"insert into members (name,sex,title,relation,dob,group) values('Badr',1,'Mr',2,'05/06/1985',1)",
    u"insert into members (name,sex,title,relation,dob,group) values('Carim',1,'',2,'07/08/1990',2)",
    u"insert into members (name,sex,relation,dob,group) values('Amina',2,1,'01/02/1960',1)",
    u"insert into members values('Ehab',1,null,2,'02/01/1987',3,false,null)",
    u"insert into general (transactionid,amount,ddate,enteredby,valid,creditordebit,paymentmethod,gtype) "
    u"values(1,1000,'15/03/2004','admin',True,True,'Cash',3)",
    u"insert into general (transactionid,amount,ddate,enteredby,valid,creditordebit,paymentmethod,gtype) "
    u"values(2,100,'20/03/2004 10:30:00','admin',True,False,'Check',1)",
    u"insert into general (transactionid,amount,ddate,enteredby,valid,creditordebit,paymentmethod,gtype) "
    u"values(3,50,'05/04/2004','admin',False,False,'Cash',2)",
    u"insert into ledger (name,transactionid,amount) values('Amina',1,125)",
    u"insert into ledger (name,transactionid,amount) values('Badr',1,350)",
    u"insert into ledger (name,transactionid,amount) values('Carim',1,350)",
    u"insert into ledger (name,transactionid,amount) values('Dana',1,175)",
    u"insert into ledger (name,transactionid,amount) values('Badr',2,50)",
    u"insert into ledger (name,transactionid,amount) values('Dana',2,50)",
    u"update ledger set valid=True,enteredby='admin',creditordebit=transactionid=1,"
    u"totalamount=(select amount from general where transactionid=ledger.transactionid),"
    u"ddate=(select ddate from general where transactionid=ledger.transactionid),"
    u"gtype=(select gtype from general where transactionid=ledger.transactionid)",
    u"insert into users (userid,password,name,rank,createdby,valid,language) "
    u"values('admin','Secret','The Agent',3,'admin',True,'ARABIC')",
    u"insert into users (userid,password,name,rank,createdby,valid) values('old','','Old','1','admin',False)",
    u"insert into audit_members (name,sex,relation,updatedon,updatedby,updatetype) "
    u"values('Dana',2,3,'06/04/2004 08:00:00','admin','edit')",
    u"insert into audit_users (id,userid,rank,updatedon,updatedby,updatetype) "
    u"values(1,'admin',2,'06/04/2004','admin','Modified')",
    u"insert into audit_general (id,transactionid,amount,ddate,creditordebit,valid,gtype,updatedon,updatedby,"
    u"updatetype) values(1,1,900,'15/03/2004',True,True,3,'06/04/2004','admin','Modified')",
    u"insert into audit_general (id,transactionid,amount,ddate,creditordebit,valid,gtype,updatedon,updatedby,"
    u"updatetype) values(3,3,50,'05/04/2004',False,True,2,'06/04/2004','admin','Deleted')",
    u"select * into [ledger1] from [ledger] where transactionid=1",
    u"insert into archives ([table],[archive],[interval]) values('ledger','ledger1','31/03/2004 - "
    u"01/03/2004')",
};

/// Makes the file that every store of this process starts as a copy of.
void makeTemplate(const QString &path)
{
    StoreFile file = StoreFile::create(path, u"romanqvlt"_s);
    for (const TableDefinition &table : storeTables())
        file.appendTable(table);
    file.close();
    const ConnectionPtr connection = Connection::create();
    connection->open(connectionTo(path));
    connection->beginTrans();
    for (const char16_t *text : seed)
        connection->execute(QString::fromUtf16(text));
    connection->commitTrans();
}

QString templatePath()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        makeTemplate(folder.filePath(u"template.mdb"_s));
        return folder.filePath(u"template.mdb"_s);
    }();
    return path;
}

QString typeName(const FieldInfo &field)
{
    switch (field.type) {
    case FieldType::Long:
        return u"long"_s;
    case FieldType::Byte:
        return u"byte"_s;
    case FieldType::Double:
        return u"double"_s;
    case FieldType::Money:
        return u"money"_s;
    case FieldType::Boolean:
        return u"boolean"_s;
    case FieldType::Date:
        return u"date"_s;
    case FieldType::Text:
        return u"text(%1)"_s.arg(field.definedSize);
    }
    Q_UNREACHABLE();
}

} // namespace

SeededStore::SeededStore() : m_connection(Connection::create())
{
    const QString path = m_folder.filePath(u"store.mdb"_s);
    QFile::copy(templatePath(), path);
    m_connection->open(connectionTo(path));
}

const sql::Catalog &SeededStore::catalog() const
{
    return m_connection->session().catalog();
}

sqlite3 *SeededStore::handle() const
{
    return m_connection->session().engine().handle();
}

SeededStore::Result SeededStore::run(const QString &text)
{
    const auto written = [this] {
        const QByteArray drawn = "select total(last) from system_counters";
        return sqlite3_total_changes(handle()) -
               int(std::get<double>(m_connection->session().engine().first(drawn)));
    };
    Result result;
    const int before = written();
    const RecordsetPtr set = Recordset::create();
    set->open(text, m_connection, CursorType::Static, LockType::Optimistic);
    if (!set->isOpen()) {
        result.changes = written() - before;
        return result;
    }
    QStringList columns;
    for (int index = 0; index < set->fieldCount(); ++index)
        columns.append(set->field(index).name + u' ' + typeName(set->field(index)));
    result.columns = columns.join(u", "_s);
    result.rows = linesOf(*set, u"|"_s, u"Null"_s);
    return result;
}

QString SeededStore::rows(const QString &text)
{
    return run(text).rows.join(u' ');
}

SeededStore::Result SeededStore::tryOut(const QString &text)
{
    m_connection->beginTrans();
    try {
        Result result = run(text);
        m_connection->rollbackTrans();
        return result;
    } catch (...) {
        m_connection->rollbackTrans();
        throw;
    }
}

int errorOf(SeededStore &store, const QString &text, QString *description)
{
    try {
        store.tryOut(text);
        return 0;
    } catch (const RuntimeError &error) {
        if (description != nullptr)
            *description = error.description();
        return error.number();
    }
}
