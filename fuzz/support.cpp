#include "fuzz/support.h"

#include "platform/database/store_file.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"
#include "store/connection_strings.h"
#include "store/schema.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <cstdio>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString seed = uR"(insert into settings (lastcompacted,desceased,sn) values('01/03/2004','unknown',3)
insert into relations (relationar,relationen) values('زوجه','Wife')
insert into relations (relationar,relationen) values('ولد','Son')
insert into details (detailar,detailen,credit) values('تلفون','Phone',false)
insert into details (detailar,detailen,credit) values('أخرى','Other',true)
insert into members (name,sex,title,relation,dob,group) values('Dana',2,'Ms',2,'10/02/1999',2)
insert into members (name,sex,title,relation,dob,group) values('سالم',1,'',1,'05/06/1985 10:30:00',255)
insert into members values('Ehab',1,null,2,'31/12/9999',3,false,null)
insert into general (transactionid,amount,ddate,enteredby,valid,creditordebit,paymentmethod,gtype) values(1,1000,'15/03/2004','admin',True,True,'Cash',2)
insert into general (transactionid,amount,ddate,enteredby,valid,creditordebit,paymentmethod,gtype) values(2,-922337203685477.5807,'20/03/2004 10:30:00','admin',True,False,'Check',1)
insert into general (transactionid,amount,ddate,valid) values(2147483647,922337203685477.5807,'01/01/100',False)
insert into ledger (name,transactionid,amount,totalamount,valid,gtype) values('Dana',1,333.3333,1000,True,2)
insert into ledger (name,transactionid,amount,transactiondetail) values('سالم',-2147483647,0,'it''s "one"')
insert into users (userid,password,name,rank,createdby,valid,language) values('admin','Secret','The Agent',3,'admin',True,'ARABIC')
insert into audit_general (id,transactionid,amount,ddate,updatedon,updatedby,updatetype) values(1,1,900,'15/03/2004','06/04/2004','admin','Modified')
select * into [ledger1] from [ledger] where transactionid=1)"_s;

} // namespace

void fuzz::require(bool kept, const char *promise)
{
    if (kept)
        return;
    std::fprintf(stderr, "FINDING: broken: %s\n", promise);
    std::abort();
}

Value fuzz::valueOf(const QString &text)
{
    const QString rest = text.sliced(1);
    switch (text.front().unicode()) {
    case u'n':
        return readDouble(rest);
    case u'm':
        return readMoney(rest);
    case u'l':
        return toLongInteger(rest);
    case u'd':
        return dateFromSerial(readDouble(rest));
    case u'b':
        return toBoolean(rest);
    default:
        return rest;
    }
}

const QString &fuzz::folder()
{
    static const QTemporaryDir place(QDir(u"/dev/shm"_s).exists()
                                         ? u"/dev/shm/quvana-fuzz-XXXXXX"_s
                                         : QDir::tempPath() + u"/quvana-fuzz-XXXXXX"_s);
    static const QString path = place.path();
    return path;
}

const ConnectionPtr &fuzz::seededStore()
{
    static const ConnectionPtr store = [] {
        setClock([] { return makeDate(2004, 3, 31, 12); });
        const QString path = folder() + u"/seeded.mdb"_s;
        StoreFile file = StoreFile::create(path, u"password"_s);
        for (const TableDefinition &table : storeTables())
            file.appendTable(table);
        file.close();
        ConnectionPtr connection = Connection::create();
        connection->open(connectionStringOf(path, u"password"_s));
        for (const QString &statement : seed.split(u'\n'))
            connection->execute(statement);
        return connection;
    }();
    return store;
}
