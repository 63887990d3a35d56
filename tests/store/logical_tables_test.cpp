#include "store/logical_tables.h"
#include "support/failures.h"
#include "support/store_fixture.h"

#include <QtCore/QMap>

namespace
{

constexpr int syntaxError = -2147217900;
constexpr int unknownColumn = -2147217904;

const QString texts =
    uR"(ledger: select id,name,transactionid,creditordebit,amount,{detail}totalamount,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod from [{table}]
audit_ledger: select idkey,id,name,transactionid,creditordebit,amount,{detail}totalamount,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod from [{table}]
users: select id,userid,name,rank,lastlogin,createdon,createdby from [{table}] where valid=true Order by userid
audit_users: select IDkey,id,userid,name,rank,lastlogin,createdon,createdby,updatedon,updatedby,updatetype from [{table}]
members: select name,sex,title,{relation}dob,group,lastupdate from [{table}] Order by dob
audit_members: select idkey,name,sex,title,{relation}dob,group,lastupdate,updatedon,updatedby,updatetype from [{table}] Order by idkey
revenues: select transactionid,amount,ddate,valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,{detail},lastupdate from [{table}] where creditordebit=true Order by ddate
audit_revenues: select idkey,transactionid,amount,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod,{detail}lastupdate, updatedon,updatedby,updatetype from [{table}] where creditordebit=true Order by idkey
expenses: select transactionid,amount,ddate,{detail}valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,gtype,lastupdate from [{table}] where creditordebit=false Order by ddate
audit_expenses: select idkey,transactionid,amount,{detail}valid,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod,gtype,lastupdate,updatedon,updatedby,updatetype from [{table}] where creditordebit=false Order by idkey
general: select transactionid,amount,ddate,creditordebit,{detail}valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,lastupdate from [{table}]  Order by ddate
audit_general: select idkey,id,transactionid,amount,ddate,creditordebit,{detail}valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,lastupdate from [{table}]  Order by ddate)"_s;

TEST_F(StoreFixture, GivesTheStatementOfALogicalTable)
{
    // The physical tables that a logical one is shown over, where it is not the one of its name.
    const QMap<QString, QString> sources{{u"audit_ledger"_s, u"ledger"_s},
                                         {u"revenues"_s, u"general"_s},
                                         {u"audit_revenues"_s, u"audit_general"_s},
                                         {u"expenses"_s, u"general"_s},
                                         {u"audit_expenses"_s, u"audit_general"_s}};
    const QMap<QString, int> refusals{{u"revenues"_s, syntaxError}, // two commas in a row
                                      {u"audit_ledger"_s, unknownColumn}};
    for (const QString &suffix : {u"ar"_s, u"en"_s, u""_s}) {
        engine.languageSuffix = suffix;
        const QString detail =
            u"(select detail%1 from details where gtype=details.id) as gtype,"_s.arg(suffix);
        const QString relation =
            u"(select relation%1 from relations where relation=id) as relation,"_s.arg(suffix);
        for (const QString &line : texts.split(u'\n')) {
            const QString name = line.section(u": "_s, 0, 0);
            const QString told = line.section(u": "_s, 1);
            const QString source = sources.value(name, name);
            const QString sql = getstrsql(name, source);
            EXPECT_EQ(sql, QString(told)
                               .replace(u"{detail}"_s, detail)
                               .replace(u"{relation}"_s, relation)
                               .replace(u"{table}"_s, source));
            // Without a suffix `detail` is no column; `relation` is, of the outer table.
            const bool looksUp = suffix.isEmpty() && told.contains(u"{detail}"_s);
            const int refusal = refusals.value(name, looksUp ? unknownColumn : 0);
            EXPECT_EQ(failureOf([&] { Recordset::create()->open(sql, engine.dbConnection); }), refusal)
                << name.toStdString();
        }
    }
}

} // namespace
