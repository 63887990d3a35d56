#include "database/sql/seeded_store.h"
#include "platform/runtime/runtime_error.h"

#include <gtest/gtest.h>

#include <map>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// Every statement text of the program: what it gives (the count of rows given or written, or the word of a
/// failure below), the text, and for a SELECT the result's columns. A word in braces stands for a phrase that
/// recurs.
const QString statements = uR"(
# start, login and session
1 | select * from settings | id long, desceased text(50), lastcompacted date, sn long
1 | update settings set lastcompacted='15/03/2004'
1 | insert into settings (lastcompacted,desceased,sn) values('15/03/2004 10:20:30','غير معروف',1)
1 | select * from users where valid=true | id long, userid text(20), password text(20), name text(50), {users}
1 | select * from users where userid ='ADMIN' and password='secret' and valid=true | id long, userid text(20), password text(20), name text(50), {users}
0 | select * from users where userid ='admin' and password='wrong' and valid=true | id long, userid text(20), password text(20), name text(50), {users}
syntax | select * from users where userid ='O'Brien' and password='' and valid=true
syntax | select * from users where userid ='' or 1=1;drop table ledger' and password='' and valid=true
syntax | select * from users where userid ='admin';drop table ledger
1 | update users set lastlogin='15/03/2004 10:20:30' where userid='admin'
1 | update users set [language]='arabic' where userid='admin'
1 | update users set [language]='english' where userid='admin'
1 | update users set fontname='Arial',fontsize='14',fontbold='True',fontcolor='255' where userid='admin'
2 | select id from details where detailen='Other' | id long
2 | select id from details where detailar='أخرى' | id long
syntax | select id from details where detailen='O'Neil'
# logical tables
6 | select id,name,transactionid,creditordebit,amount,{detail}totalamount,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod from [ledger] | id long, name text(50), transactionid long, {ledger}
4 | select id,name,transactionid,creditordebit,amount,{detail}totalamount,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod from [ledger1] where transactionid=1 | id long, name text(50), transactionid long, {ledger}
table | select idkey,id,name,transactionid,creditordebit,amount,{detail}totalamount,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod from [audit_ledger]
1 | select id,userid,name,rank,lastlogin,createdon,createdby from [users] where valid=true Order by userid | id long, userid text(20), name text(50), rank byte, lastlogin date, createdon date, createdby text(20)
1 | select IDkey,id,userid,name,rank,lastlogin,createdon,createdby,updatedon,updatedby,updatetype from [audit_users] | IDkey long, id long, userid text(20), name text(50), rank byte, lastlogin date, createdon date, createdby text(20), {stamp}
5 | select name,sex,title,{relation}dob,group,lastupdate from [members] Order by dob | name text(50), sex byte, title text(10), relation text(20), dob date, group byte, lastupdate date
1 | select idkey,name,sex,title,{relation}dob,group,lastupdate,updatedon,updatedby,updatetype from [audit_members] Order by idkey | idkey long, name text(50), sex byte, title text(10), relation text(20), dob date, group byte, lastupdate date, {stamp}
# Two commas in a row: the statement is refused, as it always was.
syntax | select transactionid,amount,ddate,valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,{detail},lastupdate from [general] where creditordebit=true Order by ddate
1 | select idkey,transactionid,amount,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod,{detail}lastupdate, updatedon,updatedby,updatetype from [audit_general] where creditordebit=true Order by idkey | idkey long, transactionid long, amount money, ddate date, enteredon date, enteredby text(20), valid boolean, transactiondetail text(100), paymentdetail text(100), paymentmethod text(15), gtype text(20), lastupdate date, {stamp}
2 | select transactionid,amount,ddate,{detail}valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,gtype,lastupdate from [general] where creditordebit=false Order by ddate | transactionid long, amount money, ddate date, gtype text(20), valid boolean, enteredon date, enteredby text(20), transactiondetail text(100), paymentdetail text(100), paymentmethod text(15), gtype long, lastupdate date
1 | select idkey,transactionid,amount,{detail}valid,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod,gtype,lastupdate,updatedon,updatedby,updatetype from [audit_general] where creditordebit=false Order by idkey | idkey long, transactionid long, amount money, gtype text(20), valid boolean, ddate date, enteredon date, enteredby text(20), valid boolean, transactiondetail text(100), paymentdetail text(100), paymentmethod text(15), gtype long, lastupdate date, {stamp}
3 | select transactionid,amount,ddate,creditordebit,{detail}valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,lastupdate from [general]  Order by ddate | transactionid long, amount money, ddate date, creditordebit boolean, gtype text(20), valid boolean, enteredon date, enteredby text(20), transactiondetail text(100), paymentdetail text(100), paymentmethod text(15), lastupdate date
2 | select idkey,id,transactionid,amount,ddate,creditordebit,{detail}valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,lastupdate from [audit_general]  Order by ddate | idkey long, id long, transactionid long, amount money, ddate date, creditordebit boolean, gtype text(20), valid boolean, enteredon date, enteredby text(20), transactiondetail text(100), paymentdetail text(100), paymentmethod text(15), lastupdate date
2 | select * from [sexes] | id long, sexar text(20), sexen text(20)
# Before the language is known its suffix is missing.
name | select (select detail from details where gtype=details.id) as gtype from [ledger]
# family
4 | select * from members where valid=true | {members}
5 | select name,sex,title,relation,dob,group,valid,lastupdate from members Order by dob | {members}
2 | select sexar from sexes order by id | sexar text(20)
3 | select relationen from relations order by id | relationen text(20)
2 | select sexen from sexes order by id | sexen text(20)
3 | select relationar from relations order by id | relationar text(20)
1 | select id from sexes where sexen='Female' | id long
1 | select id from relations where relationar='بنت' | id long
2 | select id from ledger where name='Badr' | id long
1 | select id from ledger1 where name='Badr' | id long
2 | update ledger set name='Basil' where name='Badr'
1 | update ledger1 set name='Basil' where name='Badr'
syntax | update ledger set name='O'Brien' where name='Badr'
syntax | update settings set desceased='O'Brien'
1 | update settings set desceased='Yusuf'
refused | update settings set desceased=''
# entry
3 | select relation,count(*) as x from members where valid=true group by relation order by relation | relation byte, x long
1 | select [relation] from members where name='badr ' | relation byte
2 | select name,group from members where valid=true and [group] =2 | name text(50), group byte
syntax | select name,group from members where valid=true and [group] =
1 | select sn as maxid from settings | maxid long
1 | update settings set sn=sn+1
1 | insert into [general] (transactionid,amount,ddate,enteredon,enteredby,valid,creditordebit,transactiondetail,paymentdetail,paymentmethod,gtype,lastupdate) values(4,1001.5,'15/03/2004','15/03/2004 10:20:30','admin',True,True,' note ','','Cash',3,'15/03/2004 10:20:30')
syntax | insert into [general] (transactionid,amount,ddate,enteredon,enteredby,valid,creditordebit,transactiondetail,paymentdetail,paymentmethod,gtype,lastupdate) values(4,1001.5,'15/03/2004','15/03/2004 10:20:30','admin',True,True,'the son's share','','Cash',3,'15/03/2004 10:20:30')
refused | insert into [general] (transactionid,amount,ddate,enteredby) values(4,1,'15/03/2004','')
2 | select * from details where credit=false | id long, detailar text(20), detailen text(20), credit boolean
2 | select * from details where credit=true | id long, detailar text(20), detailen text(20), credit boolean
2 | select distinct group from members where valid=true order by [group] | group byte
4 | select * from members where valid=true order by name | {members}
# browser
4 | select distinct name from members where valid=true  | name text(50)
2 | select  * from [general] where   (datediff('d',ddate,'15/03/2004')<=0) and (datediff('d',ddate,'20/03/2004')>=0) | id long, {general}
1 | select  * from [general] where creditordebit = true and   (datediff('d',ddate,'15/03/2004')<=0) and (datediff('d',ddate,'20/03/2004')>=0) | id long, {general}
1 | select  * from [audit_general] where creditordebit = false and   (datediff('d',updatedon,'06/04/2004')<=0) and (datediff('d',updatedon,'06/04/2004')>=0) | idkey long, id long, {general}, {stamp}
type | select  * from [general] where   (datediff('d',ddate,'-')<=0) and (datediff('d',ddate,'-')>=0)
2 | select creditordebit,sum(amount) as tot from [ledger] where valid = true group by creditordebit | creditordebit boolean, tot money
1 | select sum(amount) as tot from [audit_general] where valid = true | tot money
name | select sum(amount) as tot from [members] where valid = true
2 | select creditordebit,sum(amount) as tot from [ledger] where valid = true and name='Badr' group by creditordebit | creditordebit boolean, tot money
1 | select * from [general] where transactionid=2 | id long, {general}
4 | select detailar from details | detailar text(20)
1 | update [general] set [transactiondetail]='corrected',[ddate]='21/03/2004',[gtype]=2,[paymentdetail]='x',[paymentmethod]='Cash' where transactionid=2
2 | update [ledger] set [transactiondetail]='corrected',[ddate]='21/03/2004',[gtype]=2,[paymentdetail]='x',[paymentmethod]='Cash' where transactionid=2
syntax | update [general] set [transactiondetail]='it's wrong' where transactionid=2
1 | update [general] set valid = false where transactionid=1
4 | update [ledger1] set valid = false where  transactionid=1
1 | select table,archive,[interval] from archives where table='ledger' | table text(30), archive text(30), interval text(30)
1 | select * into [audit_general1] from [audit_general] where ddate between #01/03/2004# and #31/03/2004#
name | select * into [ledger2] from [ledger] where updatedon between #01/03/2004# and #31/03/2004#
name | select * into [audit_users1] from [audit_users] where ddate between #01/03/2004# and #31/03/2004#
1 | delete from [audit_general] where ddate between #01/03/2004# and #31/03/2004#
name | delete from [general] where updatedon between #01/03/2004# and #31/03/2004#
1 | insert into archives ([table],[archive],[interval]) values('audit_general','audit_general1','31/03/2004 - 01/03/2004')
1 | delete from archives where archive='ledger1'
0 | drop table [ledger1]
duplicate | insert into [ledger] select * from [ledger1]
table | select id,amount,format(ddate,'yyyy/mm/dd') as ddate,iif(valid=false,'ملغي','') as valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod from expenses  where (datediff('d',ddate,'15/03/2004')<=0) and (datediff('d',ddate,'20/03/2004')>=0) Order by id
2 | select id,amount,format(ddate,'yyyy/mm/dd') as ddate,iif(valid=false,'ملغي','') as valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod from general  where (datediff('d',ddate,'15/03/2004')<=0) and (datediff('d',ddate,'20/03/2004')>=0) Order by id | id long, amount money, ddate text(255), valid text(255), enteredon date, enteredby text(20), transactiondetail text(100), paymentdetail text(100), paymentmethod text(15)
2 | select name ,amount from ledger where transactionid = 2 | name text(50), amount money
2 | update ledger set valid=false where creditordebit=false and transactionid=2
1 | insert into audit_general(id,transactionid,amount,updatedby) values(2,2,100,'admin')
1 | update general set lastupdate='06/04/2004 10:00:00' where id=1
# statements of account
4 | select name from members where valid=true | name text(50)
1 | select * from members where name='Badr' | {members}
syntax | select * from members where name='O'Brien'
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
1 | select id,userid,name,rank,lastlogin,createdon,createdby from users where valid=true Order by userid | id long, userid text(20), name text(50), rank byte, lastlogin date, createdon date, createdby text(20)
1 | update users set valid=false where userid='admin'
1 | select max(rank) as maxrank from users  | maxrank byte
1 | select count(userid) as x from users where userid ='OLD'  | x long
1 | select count(userid) from users where userid ='admin' and password='x' | Expr1000 long
1 | update users set [password]='new' where userid='admin'
syntax | update users set [password]='it's' where userid='admin'
4 | select * from members where valid=true  | {members}
4 | select * from members where valid=true order by relation  | {members}
2 | select id from details where credit=True | id long
2 | select id from details where credit=False | id long
)"_s;

const std::map<QString, int> failures = {
    {u"syntax"_s, -2147217900},    {u"name"_s, -2147217904},    {u"table"_s, -2147217865},
    {u"duplicate"_s, -2147467259}, {u"refused"_s, -2147217887}, {u"type"_s, -2147217913},
};

const std::pair<QString, QString> phrases[] = {
    {u"{detail}"_s, u"(select detailen from details where gtype=details.id) as gtype,"_s},
    {u"{relation}"_s, u"(select relationen from relations where relation=id) as relation,"_s},
    {u"{month}"_s, u"(year(ddate) & format(month(ddate),'0#'))"_s},
    {u"{ledger}"_s,
     u"creditordebit boolean, amount money, gtype text(20), totalamount money, ddate date, enteredon date, enteredby text(20), valid boolean, transactiondetail text(100), paymentdetail text(100), paymentmethod text(15)"_s},
    {u"{general}"_s,
     u"transactionid long, valid boolean, creditordebit boolean, amount money, ddate date, enteredon date, enteredby text(20), transactiondetail text(100), paymentdetail text(100), paymentmethod text(15), gtype long, lastupdate date"_s},
    {u"{members}"_s,
     u"name text(50), sex byte, title text(10), relation byte, dob date, group byte, valid boolean, lastupdate date"_s},
    {u"{users}"_s,
     u"rank byte, lastlogin date, createdon date, createdby text(20), valid boolean, lastupdate date, language text(10), fontname text(50), fontsize text(50), fontbold text(50), fontcolor text(50)"_s},
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
