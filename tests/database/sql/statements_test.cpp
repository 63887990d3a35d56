#include "database/sql/seeded_store.h"
#include "platform/runtime/runtime_error.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int syntaxError = -2147217900;
constexpr int unknownName = -2147217904;
constexpr int unknownTable = -2147217865;
constexpr int duplicateKey = -2147467259;
constexpr int fieldTooSmall = -2147217833;
constexpr int refusedValue = -2147217887;
constexpr int typeMismatch = -2147217913;

/// One statement of the program. {detail}, {relation} and {month} are the phrases that recur.
struct StatementCase {
    const char16_t *text;
    const char *columns; ///< of a SELECT; empty for other statements
    int rows;            ///< given or written
    int error = 0;
};

QString expanded(const char16_t *text)
{
    QString result = QString::fromUtf16(text);
    result.replace(u"{detail}"_s, u"(select detailen from details where gtype=details.id) as gtype,"_s);
    result.replace(u"{relation}"_s, u"(select relationen from relations where relation=id) as relation,"_s);
    result.replace(u"{month}"_s, u"(year(ddate) & format(month(ddate),'0#'))"_s);
    return result;
}

#define LEDGER_REST                                                                                          \
    "creditordebit boolean, amount money, gtype text(20), totalamount money, ddate date, enteredon date, "   \
    "enteredby text(20), valid boolean, transactiondetail text(100), paymentdetail text(100), "              \
    "paymentmethod text(15)"
#define USERS_REST                                                                                           \
    "rank byte, lastlogin date, createdon date, createdby text(20), valid boolean, lastupdate date, "        \
    "language text(10), fontname text(50), fontsize text(50), fontbold text(50), fontcolor text(50)"
#define MEMBERS                                                                                              \
    "name text(50), sex byte, title text(10), relation byte, dob date, group byte, valid boolean, "          \
    "lastupdate date"
#define GENERAL_REST                                                                                         \
    "transactionid long, valid boolean, creditordebit boolean, amount money, ddate date, enteredon date, "   \
    "enteredby text(20), transactiondetail text(100), paymentdetail text(100), paymentmethod text(15), "     \
    "gtype long, lastupdate date"
#define AUDIT_STAMP "updatedon date, updatedby text(20), updatetype text(10)"

const StatementCase startCases[] = {
    {u"select * from settings", "id long, desceased text(50), lastcompacted date, sn long", 1},
    {u"update settings set lastcompacted='15/03/2004'", "", 1},
    {u"insert into settings (lastcompacted,desceased,sn) values('15/03/2004 10:20:30','غير معروف',1)", "", 1},
    {u"select * from users where valid=true",
     "id long, userid text(20), password text(20), name text(50), " USERS_REST, 1},
    {u"select * from users where userid ='ADMIN' and password='secret' and valid=true",
     "id long, userid text(20), password text(20), name text(50), " USERS_REST, 1},
    {u"select * from users where userid ='admin' and password='wrong' and valid=true",
     "id long, userid text(20), password text(20), name text(50), " USERS_REST, 0},
    {u"select * from users where userid ='O'Brien' and password='' and valid=true", "", 0, syntaxError},
    {u"select * from users where userid ='' or 1=1;drop table ledger' and password='' and valid=true", "", 0,
     syntaxError},
    {u"select * from users where userid ='admin';drop table ledger", "", 0, syntaxError},
    {u"update users set lastlogin='15/03/2004 10:20:30' where userid='admin'", "", 1},
    {u"update users set [language]='arabic' where userid='admin'", "", 1},
    {u"update users set fontname='Arial',fontsize='14',fontbold='True',fontcolor='255' where userid='admin'",
     "", 1},
    {u"select id from details where detailen='Other'", "id long", 2},
    {u"select id from details where detailar='أخرى'", "id long", 2},
    {u"select id from details where detailen='O'Neil'", "", 0, syntaxError},
};

const StatementCase logicalTableCases[] = {
    {u"select id,name,transactionid,creditordebit,amount,{detail}totalamount,ddate,enteredon,enteredby,valid,"
     u"transactiondetail,paymentdetail,paymentmethod from [ledger]",
     "id long, name text(50), transactionid long, " LEDGER_REST, 6},
    {u"select id,name,transactionid,creditordebit,amount,{detail}totalamount,ddate,enteredon,enteredby,valid,"
     u"transactiondetail,paymentdetail,paymentmethod from [ledger1] where transactionid=1",
     "id long, name text(50), transactionid long, " LEDGER_REST, 4},
    {u"select "
     u"idkey,id,name,transactionid,creditordebit,amount,{detail}totalamount,ddate,enteredon,enteredby,valid,"
     u"transactiondetail,paymentdetail,paymentmethod from [audit_ledger]",
     "", 0, unknownTable},
    {u"select id,userid,name,rank,lastlogin,createdon,createdby from [users] where valid=true Order by "
     u"userid",
     "id long, userid text(20), name text(50), rank byte, lastlogin date, createdon date, createdby text(20)",
     1},
    {u"select IDkey,id,userid,name,rank,lastlogin,createdon,createdby,updatedon,updatedby,updatetype from "
     u"[audit_users]",
     "IDkey long, id long, userid text(20), name text(50), rank byte, lastlogin date, createdon date, "
     "createdby text(20), " AUDIT_STAMP,
     1},
    {u"select name,sex,title,{relation}dob,group,lastupdate from [members] Order by dob",
     "name text(50), sex byte, title text(10), relation text(20), dob date, group byte, lastupdate date", 5},
    {u"select idkey,name,sex,title,{relation}dob,group,lastupdate,updatedon,updatedby,updatetype from "
     u"[audit_members] "
     u"Order by idkey",
     "idkey long, name text(50), sex byte, title text(10), relation text(20), dob date, group byte, "
     "lastupdate date, " AUDIT_STAMP,
     1},
    // Two commas in a row: the statement is refused, as it always was.
    {u"select "
     u"transactionid,amount,ddate,valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,"
     u"{detail},lastupdate from [general] where creditordebit=true Order by ddate",
     "", 0, syntaxError},
    {u"select "
     u"idkey,transactionid,amount,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,"
     u"paymentmethod,"
     u"{detail}lastupdate, updatedon,updatedby,updatetype from [audit_general] where creditordebit=true "
     u"Order by idkey",
     "idkey long, transactionid long, amount money, ddate date, enteredon date, enteredby text(20), valid "
     "boolean, "
     "transactiondetail text(100), paymentdetail text(100), paymentmethod text(15), gtype text(20), "
     "lastupdate date, " AUDIT_STAMP,
     1},
    {u"select transactionid,amount,ddate,{detail}valid,enteredon,enteredby,transactiondetail,paymentdetail,"
     u"paymentmethod,gtype,lastupdate from [general] where creditordebit=false Order by ddate",
     "transactionid long, amount money, ddate date, gtype text(20), valid boolean, enteredon date, "
     "enteredby text(20), transactiondetail text(100), paymentdetail text(100), paymentmethod text(15), "
     "gtype long, lastupdate date",
     2},
    {u"select idkey,transactionid,amount,{detail}valid,ddate,enteredon,enteredby,valid,transactiondetail,"
     u"paymentdetail,paymentmethod,gtype,lastupdate,updatedon,updatedby,updatetype from [audit_general] "
     u"where "
     u"creditordebit=false Order by idkey",
     "idkey long, transactionid long, amount money, gtype text(20), valid boolean, ddate date, enteredon "
     "date, "
     "enteredby text(20), valid boolean, transactiondetail text(100), paymentdetail text(100), "
     "paymentmethod text(15), gtype long, lastupdate date, " AUDIT_STAMP,
     1},
    {u"select transactionid,amount,ddate,creditordebit,{detail}valid,enteredon,enteredby,transactiondetail,"
     u"paymentdetail,paymentmethod,lastupdate from [general]  Order by ddate",
     "transactionid long, amount money, ddate date, creditordebit boolean, gtype text(20), valid boolean, "
     "enteredon date, enteredby text(20), transactiondetail text(100), paymentdetail text(100), "
     "paymentmethod text(15), lastupdate date",
     3},
    {u"select "
     u"idkey,id,transactionid,amount,ddate,creditordebit,{detail}valid,enteredon,enteredby,transactiondetail,"
     u"paymentdetail,paymentmethod,lastupdate from [audit_general]  Order by ddate",
     "idkey long, id long, transactionid long, amount money, ddate date, creditordebit boolean, gtype "
     "text(20), "
     "valid boolean, enteredon date, enteredby text(20), transactiondetail text(100), paymentdetail "
     "text(100), "
     "paymentmethod text(15), lastupdate date",
     2},
    {u"select * from [sexes]", "id long, sexar text(20), sexen text(20)", 2},
    // Before the language is known its suffix is missing.
    {u"select (select detail from details where gtype=details.id) as gtype from [ledger]", "", 0,
     unknownName},
};

const StatementCase familyCases[] = {
    {u"select * from members where valid=true", MEMBERS, 4},
    {u"select name,sex,title,relation,dob,group,valid,lastupdate from members Order by dob", MEMBERS, 5},
    {u"select sexar from sexes order by id", "sexar text(20)", 2},
    {u"select relationen from relations order by id", "relationen text(20)", 3},
    {u"select id from sexes where sexen='Female'", "id long", 1},
    {u"select id from relations where relationar='بنت'", "id long", 1},
    {u"select id from ledger where name='Badr'", "id long", 2},
    {u"select id from ledger1 where name='Badr'", "id long", 1},
    {u"update ledger set name='Basil' where name='Badr'", "", 2},
    {u"update settings set desceased='O'Brien'", "", 0, syntaxError},
    {u"update settings set desceased='Yusuf'", "", 1},
    {u"update settings set desceased=''", "", 0, refusedValue},
};

const StatementCase entryCases[] = {
    {u"select relation,count(*) as x from members where valid=true group by relation order by relation",
     "relation byte, x long", 3},
    {u"select [relation] from members where name='badr '", "relation byte", 1},
    {u"select name,group from members where valid=true and [group] =2", "name text(50), group byte", 2},
    {u"select name,group from members where valid=true and [group] =", "", 0, syntaxError},
    {u"select sn as maxid from settings", "maxid long", 1},
    {u"update settings set sn=sn+1", "", 1},
    {u"insert into [general] "
     u"(transactionid,amount,ddate,enteredon,enteredby,valid,creditordebit,transactiondetail,"
     u"paymentdetail,paymentmethod,gtype,lastupdate) values(4,1001.5,'15/03/2004','15/03/2004 "
     u"10:20:30','admin',True,"
     u"True,' note ','','Cash',3,'15/03/2004 10:20:30')",
     "", 1},
    {u"insert into [general] "
     u"(transactionid,amount,ddate,enteredon,enteredby,valid,creditordebit,transactiondetail,"
     u"paymentdetail,paymentmethod,gtype,lastupdate) values(4,1001.5,'15/03/2004','15/03/2004 "
     u"10:20:30','admin',True,"
     u"True,'the son's share','','Cash',3,'15/03/2004 10:20:30')",
     "", 0, syntaxError},
    {u"insert into [general] (transactionid,amount,ddate,enteredby) values(4,1,'15/03/2004','')", "", 0,
     refusedValue},
    {u"select * from details where credit=false",
     "id long, detailar text(20), detailen text(20), credit boolean", 2},
    {u"select * from details where credit=true",
     "id long, detailar text(20), detailen text(20), credit boolean", 2},
    {u"select distinct group from members where valid=true order by [group]", "group byte", 2},
    {u"select * from members where valid=true order by name", MEMBERS, 4},
};

const StatementCase browserCases[] = {
    {u"select distinct name from members where valid=true ", "name text(50)", 4},
    {u"select  * from [general] where   (datediff('d',ddate,'15/03/2004')<=0) and "
     u"(datediff('d',ddate,'20/03/2004')>=0)",
     "id long, " GENERAL_REST, 2},
    {u"select  * from [general] where creditordebit = true and   (datediff('d',ddate,'15/03/2004')<=0) and "
     u"(datediff('d',ddate,'20/03/2004')>=0)",
     "id long, " GENERAL_REST, 1},
    {u"select  * from [audit_general] where creditordebit = false and   "
     u"(datediff('d',updatedon,'06/04/2004')<=0) and "
     u"(datediff('d',updatedon,'06/04/2004')>=0)",
     "idkey long, id long, " GENERAL_REST ", " AUDIT_STAMP, 1},
    {u"select  * from [general] where   (datediff('d',ddate,'-')<=0) and (datediff('d',ddate,'-')>=0)", "", 0,
     typeMismatch},
    {u"select creditordebit,sum(amount) as tot from [ledger] where valid = true group by creditordebit",
     "creditordebit boolean, tot money", 2},
    {u"select sum(amount) as tot from [audit_general] where valid = true", "tot money", 1},
    {u"select sum(amount) as tot from [members] where valid = true", "", 0, unknownName},
    {u"select creditordebit,sum(amount) as tot from [ledger] where valid = true and name='Badr' group by "
     u"creditordebit",
     "creditordebit boolean, tot money", 2},
    {u"select * from [general] where transactionid=2", "id long, " GENERAL_REST, 1},
    {u"select detailar from details", "detailar text(20)", 4},
    {u"update [general] set "
     u"[transactiondetail]='corrected',[ddate]='21/03/2004',[gtype]=2,[paymentdetail]='x',"
     u"[paymentmethod]='Cash' where transactionid=2",
     "", 1},
    {u"update [ledger] set "
     u"[transactiondetail]='corrected',[ddate]='21/03/2004',[gtype]=2,[paymentdetail]='x',"
     u"[paymentmethod]='Cash' where transactionid=2",
     "", 2},
    {u"update [general] set [transactiondetail]='it's wrong' where transactionid=2", "", 0, syntaxError},
    {u"update [general] set valid = false where transactionid=1", "", 1},
    {u"update [ledger1] set valid = false where  transactionid=1", "", 4},
    {u"select table,archive,[interval] from archives where table='ledger'",
     "table text(30), archive text(30), interval text(30)", 1},
    {u"select * into [audit_general1] from [audit_general] where ddate between #01/03/2004# and #31/03/2004#",
     "", 1},
    {u"select * into [ledger2] from [ledger] where updatedon between #01/03/2004# and #31/03/2004#", "", 0,
     unknownName},
    {u"select * into [audit_users1] from [audit_users] where ddate between #01/03/2004# and #31/03/2004#", "",
     0, unknownName},
    {u"delete from [audit_general] where ddate between #01/03/2004# and #31/03/2004#", "", 1},
    {u"delete from [general] where updatedon between #01/03/2004# and #31/03/2004#", "", 0, unknownName},
    {u"insert into archives ([table],[archive],[interval]) values('audit_general','audit_general1',"
     u"'31/03/2004 - 01/03/2004')",
     "", 1},
    {u"delete from archives where archive='ledger1'", "", 1},
    {u"drop table [ledger1]", "", 0},
    {u"insert into [ledger] select * from [ledger1]", "", 0, duplicateKey},
    {u"select id,amount,format(ddate,'yyyy/mm/dd') as ddate,iif(valid=false,'ملغي','') as "
     u"valid,enteredon,enteredby,"
     u"transactiondetail,paymentdetail,paymentmethod from expenses  where "
     u"(datediff('d',ddate,'15/03/2004')<=0) and "
     u"(datediff('d',ddate,'20/03/2004')>=0) Order by id",
     "", 0, unknownTable},
    {u"select id,amount,format(ddate,'yyyy/mm/dd') as ddate,iif(valid=false,'ملغي','') as "
     u"valid,enteredon,enteredby,"
     u"transactiondetail,paymentdetail,paymentmethod from general  where "
     u"(datediff('d',ddate,'15/03/2004')<=0) and "
     u"(datediff('d',ddate,'20/03/2004')>=0) Order by id",
     "id long, amount money, ddate text(255), valid text(255), enteredon date, enteredby text(20), "
     "transactiondetail text(100), paymentdetail text(100), paymentmethod text(15)",
     2},
    {u"select name ,amount from ledger where transactionid = 2", "name text(50), amount money", 2},
    {u"update ledger set valid=false where creditordebit=false and transactionid=2", "", 2},
    {u"insert into audit_general(id,transactionid,amount,updatedby) values(2,2,100,'admin')", "", 1},
    {u"update general set lastupdate='06/04/2004 10:00:00' where id=1", "", 1},
};

#define STATEMENT "id long, transactionid long, "
#define DATES " and (datediff('d',ddate,'15/03/2004')>=0) and (datediff('d',ddate,'15/03/2004')<=0)"

const StatementCase statementCases[] = {
    {u"select name from members where valid=true", "name text(50)", 4},
    {u"select * from members where name='Badr'", MEMBERS, 1},
    {u"select id,transactionid,amount,format(ddate,'yyyy/mm/dd') as "
     u"ddate,transactiondetail,creditordebit,{detail}"
     u"paymentmethod from [ledger] where valid=true and creditordebit = false  and (name='Badr') order by "
     u"ddate",
     STATEMENT
     "amount money, ddate text(255), transactiondetail text(100), creditordebit boolean, gtype text(20), "
     "paymentmethod text(15)",
     1},
    {u"select id,transactionid,amount,format(ddate,'yyyy/mm/dd') as "
     u"ddate,transactiondetail,creditordebit,{detail}"
     u"paymentmethod from [ledger] where valid=true" DATES
     " and creditordebit = true  and (name='Badr') order by ddate",
     STATEMENT
     "amount money, ddate text(255), transactiondetail text(100), creditordebit boolean, gtype text(20), "
     "paymentmethod text(15)",
     1},
    {u"select id,transactionid,ddate,iif(creditordebit=true,amount,-1*amount) as amount,transactiondetail,"
     u"creditordebit,{detail}paymentmethod from [ledger] where valid=true  and (name='Badr') order by ddate",
     STATEMENT
     "ddate date, amount money, transactiondetail text(100), creditordebit boolean, gtype text(20), "
     "paymentmethod text(15)",
     2},
    {u"select name,creditordebit,{month} as ddate,sum(amount) as amount from [ledger] where valid=true and "
     u"(name='Badr') and creditordebit = false  and {month}>=(200403) and {month}<=(200403) group by "
     u"name,{month},"
     u"creditordebit order by {month}",
     "name text(50), creditordebit boolean, ddate text(255), amount money", 1},
    {u"select name,creditordebit,{month} as ddate,sum(iif(creditordebit=true,amount,-1*amount)) as amount "
     u"from [ledger] "
     u"where valid=true and (name='Badr') group by name,{month},creditordebit order by {month}",
     "name text(50), creditordebit boolean, ddate text(255), amount money", 2},
    {u"select transactionid,format(ddate,'yyyy/mm/dd') as ddate,amount,transactiondetail,paymentmethod, "
     u"paymentdetail,"
     u"enteredon,enteredby,(select detailar from details where gtype=details.id) as gtype from  [general] "
     u"where "
     u"valid=true and creditordebit=false  order by ddate",
     "transactionid long, ddate text(255), amount money, transactiondetail text(100), paymentmethod "
     "text(15), "
     "paymentdetail text(100), enteredon date, enteredby text(20), gtype text(20)",
     1},
    {u"select transactionid,ddate,iif(creditordebit=true,amount,-1*amount) as "
     u"amount,transactiondetail,paymentmethod, "
     u"paymentdetail,enteredon,enteredby,(select detailen from details where gtype=details.id) as gtype  "
     u"from [general] "
     u"where valid=true  order by ddate",
     "transactionid long, ddate date, amount money, transactiondetail text(100), paymentmethod text(15), "
     "paymentdetail text(100), enteredon date, enteredby text(20), gtype text(20)",
     2},
    {u"select {month} as ddate,sum(amount) as amount from [general] where valid=true and creditordebit = "
     u"false  and "
     u"{month}>=(20043) and {month}<=(20043)  group by {month},creditordebit order by {month}",
     "ddate text(255), amount money", 0},
    {u"select {month} as ddate,iif(creditordebit=true,'لكم','عليكم') as "
     u"creditordebit,sum(iif(creditordebit=true,"
     u"amount,-1*amount)) as amount from [general] where valid=true  group by {month},creditordebit order by "
     u"{month}",
     "ddate text(255), creditordebit text(255), amount money", 2},
};

const StatementCase userCases[] = {
    {u"select id,userid,name,rank,lastlogin,createdon,createdby from users where valid=true Order by userid",
     "id long, userid text(20), name text(50), rank byte, lastlogin date, createdon date, createdby text(20)",
     1},
    {u"update users set valid=false where userid='admin'", "", 1},
    {u"select max(rank) as maxrank from users ", "maxrank byte", 1},
    {u"select count(userid) as x from users where userid ='OLD' ", "x long", 1},
    {u"select count(userid) from users where userid ='admin' and password='x'", "Expr1000 long", 1},
    {u"update users set [password]='new' where userid='admin'", "", 1},
    {u"select * from members where valid=true ", MEMBERS, 4},
    {u"select * from members where valid=true order by relation ", MEMBERS, 4},
    {u"select id from details where credit=True", "id long", 2},
};

class Statements : public testing::Test
{
protected:
    template <size_t count>
    void check(const StatementCase (&cases)[count])
    {
        for (const StatementCase &entry : cases) {
            const QString text = expanded(entry.text);
            SCOPED_TRACE(text.toStdString());
            try {
                const SeededStore::Result result = m_store.tryOut(text);
                EXPECT_EQ(entry.error, 0) << "was not refused";
                EXPECT_EQ(result.columns.toStdString(), entry.columns);
                EXPECT_EQ(result.columns.isEmpty() ? result.changes : int(result.rows.size()), entry.rows);
            } catch (const RuntimeError &error) {
                EXPECT_EQ(error.number(), entry.error) << error.what();
            }
        }
    }
    SeededStore m_store;
};

TEST_F(Statements, Start)
{
    check(startCases);
}
TEST_F(Statements, LogicalTables)
{
    check(logicalTableCases);
}
TEST_F(Statements, Family)
{
    check(familyCases);
}
TEST_F(Statements, Entry)
{
    check(entryCases);
}
TEST_F(Statements, Browser)
{
    check(browserCases);
}
TEST_F(Statements, AccountStatements)
{
    check(statementCases);
}
TEST_F(Statements, Users)
{
    check(userCases);
}

TEST_F(Statements, TextOf101UnitsIsRefusedAndOf100Taken)
{
    const QString text = u"insert into [general] (transactionid,transactiondetail) values(9,'%1')"_s;
    EXPECT_EQ(errorOf(m_store, text.arg(QString(100, u'x'))), 0);
    EXPECT_EQ(errorOf(m_store, text.arg(QString(101, u'x'))), fieldTooSmall);
    EXPECT_EQ(errorOf(m_store, text.arg(QString::fromUcs4(std::u32string(51, U'\U0001F600').c_str()))),
              fieldTooSmall); // 51 characters of two units each
}

} // namespace
