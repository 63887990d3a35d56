#include "database/sql/seeded_store.h"

#include "database/temp_store.h"
#include "platform/database/session.h"
#include "store/schema.h"

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
insert into audit_users (id,userid,rank,updatedon,updatedby,updatetype) values(1,'admin',2,'06/04/2004','admin','Modified')
select * into [ledger1] from [ledger] where transactionid=1)"_s;

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
    StoreFile file = StoreFile::create(path, u"romanqvlt"_s);
    for (const TableDefinition &table : storeTables())
        file.appendTable(table);
    file.close();
    m_connection->open(connectionTo(path));
    m_connection->beginTrans();
    for (const QString &text : seed.split(u'\n'))
        m_connection->execute(text);
    m_connection->commitTrans();
}

sqlite3 *SeededStore::handle() const
{
    return m_connection->session().engine().handle();
}

SeededStore::Result SeededStore::run(const QString &text)
{
    const RecordsetPtr set = Recordset::create();
    set->open(text, m_connection, CursorType::Static, LockType::Optimistic);
    if (!set->isOpen())
        return {};
    QStringList columns;
    for (int index = 0; index < set->fieldCount(); ++index)
        columns.append(set->field(index).name + u' ' + typeName(set->field(index)));
    return {.columns = columns.join(u", "_s), .rows = linesOf(*set, u"|"_s, u"Null"_s).join(u' ')};
}

SeededStore::Result SeededStore::tryOut(const QString &text, const QString &behind)
{
    Result result;
    m_connection->beginTrans();
    try {
        result = run(text);
        if (!behind.isEmpty())
            result = run(behind);
    } catch (const RuntimeError &error) {
        result = {.error = error.number(), .description = error.description()};
    }
    m_connection->rollbackTrans();
    return result;
}
