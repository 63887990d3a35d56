#include "database/sql/memory_store.h"

#include "platform/database/engine.h"
#include "platform/database/sql/ddl.h"
#include "platform/database/sql/storage.h"

#include <sqlcipher/sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

// table | columns | indexed columns, the first one unique. `!` refuses empty texts, `+` defaults to True.
constexpr const char *schema[] = {
    "archives|table:text(30)! archive:text(30)! interval:text(30)!|archive",
    "settings|id:long desceased:text(50)! lastcompacted:date sn:long|id",
    "ledger|id:counter name:text(50)! transactionid:long creditordebit:boolean amount:money "
    "totalamount:money "
    "valid:boolean ddate:date enteredon:date enteredby:text(20)! transactiondetail:text(100) "
    "paymentdetail:text(100) paymentmethod:text(15)! gtype:long|id name transactionid creditordebit gtype",
    "members|name:text(50)! sex:byte title:text(10) relation:byte dob:date group:byte valid:boolean+ "
    "lastupdate:date|name",
    "audit_members|idkey:counter name:text(50)! sex:byte title:text(10) relation:byte dob:date group:byte "
    "valid:boolean lastupdate:date updatedon:date updatedby:text(20)! updatetype:text(10)!|idkey name",
    "relations|id:counter relationar:text(20)! relationen:text(20)!|id",
    "sexes|id:counter sexar:text(20)! sexen:text(20)!|id",
    "details|id:counter detailar:text(20)! detailen:text(20)! credit:boolean|id",
    "users|id:counter userid:text(20)! password:text(20) name:text(50)! rank:byte lastlogin:date "
    "createdon:date "
    "createdby:text(20)! valid:boolean lastupdate:date language:text(10)! fontname:text(50)! "
    "fontsize:text(50)! "
    "fontbold:text(50)! fontcolor:text(50)!|id userid",
    "audit_users|idkey:long id:counter userid:text(20)! password:text(20)! name:text(50)! rank:byte "
    "lastlogin:date createdon:date createdby:text(20)! valid:boolean lastupdate:date language:text(10)! "
    "fontname:text(50)! fontsize:text(50)! fontbold:text(50)! fontcolor:text(50)! updatedon:date "
    "updatedby:text(20)! updatetype:text(10)!|idkey id userid",
    "general|id:counter transactionid:long valid:boolean creditordebit:boolean amount:money ddate:date "
    "enteredon:date enteredby:text(20)! transactiondetail:text(100) paymentdetail:text(100) "
    "paymentmethod:text(15)! gtype:long lastupdate:date|id transactionid creditordebit gtype",
    "audit_general|idkey:counter id:long transactionid:long valid:boolean creditordebit:boolean amount:money "
    "ddate:date enteredon:date enteredby:text(20)! transactiondetail:text(100) paymentdetail:text(100) "
    "paymentmethod:text(15)! gtype:long lastupdate:date updatedon:date updatedby:text(20)! "
    "updatetype:text(10)!|"
    "idkey id transactionid",
};

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

void MemoryStore::Close::operator()(sqlite3 *handle) const
{
    sqlite3_close(handle);
}

MemoryStore::MemoryStore()
{
    sqlite3 *handle = nullptr;
    sqlite3_open(":memory:", &handle);
    m_handle.reset(handle);
    sqlite3_extended_result_codes(handle, 1);
    sql::registerFunctions(handle);
    raw(sql::createCountersText());
    for (const char *line : schema) {
        const QStringList parts = QString::fromLatin1(line).split(u'|');
        sql::CatalogTable table;
        table.name = parts[0];
        bool counted = false;
        for (const QString &part : parts[1].split(u' ')) {
            QString type = part.section(u':', 1);
            const bool refused = type.endsWith(u'!');
            const bool defaultTrue = type.endsWith(u'+');
            if (refused || defaultTrue)
                type.chop(1);
            table.columns.push_back(sql::columnFromDeclaration(part.section(u':', 0, 0), type, {}, {}));
            table.columns.back().emptyTextAllowed = !refused;
            table.columns.back().defaultTrue = defaultTrue;
            counted = counted || table.columns.back().counter;
        }
        raw(sql::createTableText(table));
        const QStringList indexes = parts[2].split(u' ');
        for (const QByteArray &text : sql::createIndexTexts(table.name, {indexes.begin(), indexes.end()}))
            raw(text);
        if (counted) {
            const sql::Step step = sql::startCounterStep(table.name);
            database::Statement statement(handle, step.text);
            database::Run(statement, step.parameters).next();
        }
    }
    m_catalog = sql::readCatalog(handle);
    for (const char16_t *text : seed)
        run(QString::fromUtf16(text));
}

void MemoryStore::raw(const QByteArray &text)
{
    database::Statement statement(handle(), text);
    database::Run(statement, {}).next();
}

MemoryStore::Result MemoryStore::run(const QString &text)
{
    const sql::Compiled compiled = sql::compile(text, m_catalog);
    Result result;
    QStringList columns;
    for (const FieldInfo &field : compiled.columns)
        columns.append(field.name + u' ' + typeName(field));
    result.columns = columns.join(u", "_s);
    raw("savepoint step");
    try {
        for (const sql::Step &step : compiled.steps) {
            const int before = sqlite3_total_changes(handle());
            database::Statement statement(handle(), step.text);
            database::Run run(statement, step.parameters);
            while (run.next()) {
                QStringList row;
                for (size_t index = 0; index < compiled.columns.size(); ++index) {
                    const Value value =
                        sql::fromStorage(run.column(int(index)), compiled.columns[index].type);
                    row.append(value.isNull() ? u"Null"_s : value.toText());
                }
                result.rows.append(row.join(u'|'));
            }
            if (!step.text.startsWith("update system_counters"))
                result.changes += sqlite3_total_changes(handle()) - before;
        }
    } catch (...) {
        raw("rollback to step");
        raw("release step");
        throw;
    }
    raw("release step");
    if (compiled.changesSchema)
        m_catalog = sql::readCatalog(handle());
    return result;
}

QString MemoryStore::rows(const QString &text)
{
    return run(text).rows.join(u' ');
}

MemoryStore::Result MemoryStore::tryOut(const QString &text)
{
    raw("savepoint trial");
    const auto undo = [this] {
        raw("rollback to trial");
        raw("release trial");
        m_catalog = sql::readCatalog(handle());
    };
    try {
        Result result = run(text);
        undo();
        return result;
    } catch (...) {
        undo();
        throw;
    }
}

int errorOf(MemoryStore &store, const QString &text, QString *description)
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
