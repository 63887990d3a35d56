#include "database/sql/seeded_store.h"
#include "platform/runtime/runtime_error.h"

#include <gtest/gtest.h>

#include <map>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// The program's statements beyond those that a screen's test runs: what each gives (the count of rows given
/// or written, or the word of a failure below), the text, and for a SELECT the result's columns. A word in
/// braces stands for a phrase that recurs.
const QString statements = uR"(
# logical tables
6 | select id,name,transactionid,creditordebit,amount,{detail}totalamount,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod from [ledger] | id long, name text(50), transactionid long, {ledger}
5 | select name,sex,title,{relation}dob,group,lastupdate from [members] Order by dob | name text(50), sex byte, title text(10), relation text(20), dob date, group byte, lastupdate date
# browser
1 | select  * from [audit_general] where creditordebit = false and   (datediff('d',updatedon,'06/04/2004')<=0) and (datediff('d',updatedon,'06/04/2004')>=0) | idkey long, id long, {general}, {stamp}
type | select  * from [general] where   (datediff('d',ddate,'-')<=0) and (datediff('d',ddate,'-')>=0)
2 | select creditordebit,sum(amount) as tot from [ledger] where valid = true group by creditordebit | creditordebit boolean, tot money
1 | select sum(amount) as tot from [audit_general] where valid = true | tot money
name | select sum(amount) as tot from [members] where valid = true
name | select * into [ledger2] from [ledger] where updatedon between #01/03/2004# and #31/03/2004#
name | select * into [audit_users1] from [audit_users] where ddate between #01/03/2004# and #31/03/2004#
name | delete from [general] where updatedon between #01/03/2004# and #31/03/2004#
table | select id,amount,format(ddate,'yyyy/mm/dd') as ddate,iif(valid=false,'ملغي','') as valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod from expenses  where (datediff('d',ddate,'15/03/2004')<=0) and (datediff('d',ddate,'20/03/2004')>=0) Order by id
2 | select id,amount,format(ddate,'yyyy/mm/dd') as ddate,iif(valid=false,'ملغي','') as valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod from general  where (datediff('d',ddate,'15/03/2004')<=0) and (datediff('d',ddate,'20/03/2004')>=0) Order by id | id long, amount money, ddate text(255), valid text(255), enteredon date, enteredby text(20), transactiondetail text(100), paymentdetail text(100), paymentmethod text(15)
1 | insert into audit_general(id,transactionid,amount,updatedby) values(2,2,100,'admin')
# statements of account
1 | select id,transactionid,amount,format(ddate,'yyyy/mm/dd') as ddate,transactiondetail,creditordebit,{detail}paymentmethod from [ledger] where valid=true and creditordebit = false  and (name='Badr') order by ddate | id long, transactionid long, amount money, ddate text(255), transactiondetail text(100), creditordebit boolean, gtype text(20), paymentmethod text(15)
1 | select id,transactionid,amount,format(ddate,'yyyy/mm/dd') as ddate,transactiondetail,creditordebit,{detail}paymentmethod from [ledger] where valid=true and (datediff('d',ddate,'15/03/2004')>=0) and (datediff('d',ddate,'15/03/2004')<=0) and creditordebit = true  and (name='Badr') order by ddate | id long, transactionid long, amount money, ddate text(255), transactiondetail text(100), creditordebit boolean, gtype text(20), paymentmethod text(15)
2 | select id,transactionid,ddate,iif(creditordebit=true,amount,-1*amount) as amount,transactiondetail,creditordebit,{detail}paymentmethod from [ledger] where valid=true  and (name='Badr') order by ddate | id long, transactionid long, ddate date, amount money, transactiondetail text(100), creditordebit boolean, gtype text(20), paymentmethod text(15)
1 | select name,creditordebit,{month} as ddate,sum(amount) as amount from [ledger] where valid=true and (name='Badr') and creditordebit = false  and {month}>=(200403) and {month}<=(200403) group by name,{month},creditordebit order by {month} | name text(50), creditordebit boolean, ddate text(255), amount money
1 | select name,creditordebit,{month} as ddate,sum(amount) as amount from [ledger] where valid=true and (name='Badr') and creditordebit = true  group by name,{month},creditordebit order by {month} | name text(50), creditordebit boolean, ddate text(255), amount money
2 | select name,creditordebit,{month} as ddate,sum(iif(creditordebit=true,amount,-1*amount)) as amount from [ledger] where valid=true and (name='Badr') group by name,{month},creditordebit order by {month} | name text(50), creditordebit boolean, ddate text(255), amount money
1 | select transactionid,format(ddate,'yyyy/mm/dd') as ddate,amount,transactiondetail,paymentmethod, paymentdetail,enteredon,enteredby,(select detailar from details where gtype=details.id) as gtype from  [general] where valid=true and creditordebit=false  order by ddate | transactionid long, ddate text(255), amount money, transactiondetail text(100), paymentmethod text(15), paymentdetail text(100), enteredon date, enteredby text(20), gtype text(20)
1 | select transactionid,format(ddate,'yyyy/mm/dd') as ddate,amount,transactiondetail,paymentmethod, paymentdetail,enteredon,enteredby,(select detailen from details where gtype=details.id) as gtype  from [general] where valid=true and creditordebit=true  and (datediff('d',ddate,'15/03/2004')>=0) and (datediff('d',ddate,'15/03/2004')<=0) order by ddate | transactionid long, ddate text(255), amount money, transactiondetail text(100), paymentmethod text(15), paymentdetail text(100), enteredon date, enteredby text(20), gtype text(20)
2 | select transactionid,ddate,iif(creditordebit=true,amount,-1*amount) as amount,transactiondetail,paymentmethod, paymentdetail,enteredon,enteredby,(select detailen from details where gtype=details.id) as gtype  from [general] where valid=true  order by ddate | transactionid long, ddate date, amount money, transactiondetail text(100), paymentmethod text(15), paymentdetail text(100), enteredon date, enteredby text(20), gtype text(20)
0 | select {month} as ddate,sum(amount) as amount from [general] where valid=true and creditordebit = false  and {month}>=(20043) and {month}<=(20043)  group by {month},creditordebit order by {month} | ddate text(255), amount money
1 | select {month} as ddate,iif(creditordebit=true,'لكم','عليكم') as creditordebit,sum(amount) as amount from [general] where valid=true and creditordebit = true   group by {month},creditordebit order by {month} | ddate text(255), creditordebit text(255), amount money
2 | select {month} as ddate,sum(iif(creditordebit=true,amount,-1*amount)) as amount from [general] where valid=true  group by {month},creditordebit order by {month} | ddate text(255), amount money
2 | select {month} as ddate,iif(creditordebit=true,'لكم','عليكم') as creditordebit,sum(iif(creditordebit=true,amount,-1*amount)) as amount from [general] where valid=true  group by {month},creditordebit order by {month} | ddate text(255), creditordebit text(255), amount money
# users and tutorial
1 | select count(userid) from users where userid ='admin' and password='x' | Expr1000 long
)"_s;

const std::map<QString, int> failures = {
    {u"name"_s, -2147217904}, {u"table"_s, -2147217865}, {u"type"_s, -2147217913}};

const std::pair<QString, QString> phrases[] = {
    {u"{detail}"_s, u"(select detailen from details where gtype=details.id) as gtype,"_s},
    {u"{relation}"_s, u"(select relationen from relations where relation=id) as relation,"_s},
    {u"{month}"_s, u"(year(ddate) & format(month(ddate),'0#'))"_s},
    {u"{ledger}"_s,
     u"creditordebit boolean, amount money, gtype text(20), totalamount money, ddate date, enteredon date, enteredby text(20), valid boolean, transactiondetail text(100), paymentdetail text(100), paymentmethod text(15)"_s},
    {u"{general}"_s,
     u"transactionid long, valid boolean, creditordebit boolean, amount money, ddate date, enteredon date, enteredby text(20), transactiondetail text(100), paymentdetail text(100), paymentmethod text(15), gtype long, lastupdate date"_s},
    {u"{stamp}"_s, u"updatedon date, updatedby text(20), updatetype text(10)"_s},
};

} // namespace

TEST(Statements, GiveTheirRowsAndColumnsOrAreRefused)
{
    SeededStore store;
    for (QString line : statements.split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(u'#'))
            continue;
        for (const auto &[word, meaning] : phrases)
            line.replace(word, meaning);
        const QStringList parts = line.split(u" | "_s);
        SCOPED_TRACE(parts[1].toStdString());
        const auto failure = failures.find(parts[0]);
        try {
            const SeededStore::Result result = store.tryOut(parts[1]);
            EXPECT_EQ(failure, failures.end()) << "was not refused";
            EXPECT_EQ(result.columns.toStdString(), parts.value(2).toStdString());
            EXPECT_EQ(result.columns.isEmpty() ? result.changes : int(result.rows.size()), parts[0].toInt());
        } catch (const RuntimeError &error) {
            EXPECT_EQ(error.number(), failure == failures.end() ? 0 : failure->second) << error.what();
        }
    }
}
