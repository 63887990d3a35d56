#include "database/sql/seeded_store.h"

#include "database/temp_store.h"
#include "platform/database/engine.h"
#include "platform/database/session.h"
#include "store/schema.h"

#include <sqlcipher/sqlite3.h>

#include <map>

namespace
{

const QString seed = uR"(insert into settings (lastcompacted,desceased,sn) values('01/03/2004','unknown',3)
insert into relations (relationar,relationen) values('زوجه','Wife')
insert into relations (relationar,relationen) values('ولد','Son')
insert into relations (relationar,relationen) values('بنت','Daughter')
insert into sexes (sexar,sexen) values('ذكر','Male')
insert into sexes (sexar,sexen) values('أنثى','Female')
insert into details (detailar,detailen,credit) values('تلفون','Phone',false)
insert into details (detailar,detailen) values('أخرى','Other')
insert into details (detailar,detailen,credit) values('بيع عقارات','Property Sale',true)
insert into details (detailar,detailen,credit) values('أخرى','Other',true)
insert into members (name,sex,title,relation,dob,group) values('Dana',2,'Ms',3,'10/02/1999',2)
insert into members (name,sex,title,relation,dob,group) values('Badr',1,'Mr',2,'05/06/1985',1)
insert into members (name,sex,title,relation,dob,group) values('Carim',1,'',2,'07/08/1990',2)
insert into members (name,sex,relation,dob,group) values('Amina',2,1,'01/02/1960',1)
insert into members values('Ehab',1,null,2,'02/01/1987',3,false,null)
insert into general (transactionid,amount,ddate,enteredby,valid,creditordebit,paymentmethod,gtype) values(1,1000,'15/03/2004','admin',True,True,'Cash',3)
insert into general (transactionid,amount,ddate,enteredby,valid,creditordebit,paymentmethod,gtype) values(2,100,'20/03/2004 10:30:00','admin',True,False,'Check',1)
insert into general (transactionid,amount,ddate,enteredby,valid,creditordebit,paymentmethod,gtype) values(3,50,'05/04/2004','admin',False,False,'Cash',2)
insert into ledger (name,transactionid,amount) values('Amina',1,125)
insert into ledger (name,transactionid,amount) values('Badr',1,350)
insert into ledger (name,transactionid,amount) values('Carim',1,350)
insert into ledger (name,transactionid,amount) values('Dana',1,175)
insert into ledger (name,transactionid,amount) values('Badr',2,50)
insert into ledger (name,transactionid,amount) values('Dana',2,50)
update ledger set valid=True,enteredby='admin',creditordebit=transactionid=1,totalamount=(select amount from general where transactionid=ledger.transactionid),ddate=(select ddate from general where transactionid=ledger.transactionid),gtype=(select gtype from general where transactionid=ledger.transactionid)
insert into users (userid,password,name,rank,createdby,valid,language) values('admin','Secret','The Agent',3,'admin',True,'ARABIC')
insert into users (userid,password,name,rank,createdby,valid) values('old','','Old','1','admin',False)
insert into audit_members (name,sex,relation,updatedon,updatedby,updatetype) values('Dana',2,3,'06/04/2004 08:00:00','admin','edit')
insert into audit_users (id,userid,rank,updatedon,updatedby,updatetype) values(1,'admin',2,'06/04/2004','admin','Modified')
insert into audit_general (id,transactionid,amount,ddate,creditordebit,valid,gtype,updatedon,updatedby,updatetype) values(1,1,900,'15/03/2004',True,True,3,'06/04/2004','admin','Modified')
insert into audit_general (id,transactionid,amount,ddate,creditordebit,valid,gtype,updatedon,updatedby,updatetype) values(3,3,50,'05/04/2004',False,True,2,'06/04/2004','admin','Deleted')
select * into [ledger1] from [ledger] where transactionid=1
insert into archives ([table],[archive],[interval]) values('ledger','ledger1','31/03/2004 - 01/03/2004'))"_s;

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
    for (const QString &text : seed.split(u'\n'))
        connection->execute(text);
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
    static const std::map<FieldType, QString> names{
        {FieldType::Long, u"long"_s},   {FieldType::Byte, u"byte"_s},       {FieldType::Double, u"double"_s},
        {FieldType::Money, u"money"_s}, {FieldType::Boolean, u"boolean"_s}, {FieldType::Date, u"date"_s}};
    return field.type == FieldType::Text ? u"text(%1)"_s.arg(field.definedSize) : names.at(field.type);
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
