#include "store/logical_tables.h"

#include "core/engine.h"
#include "platform/ui/dialogs.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

/// What `ledger` and `audit_ledger` have in common, behind the transaction's number.
QString ledgerRest(const QString &detailPhrase, const QString &from)
{
    return u"creditordebit,amount,"_s + detailPhrase +
           u"totalamount,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod"_s +
           from;
}

/// What `general` and `audit_general` have in common.
QString generalRest(const QString &detailPhrase, const QString &from)
{
    return u"transactionid,amount,ddate,creditordebit,"_s + detailPhrase +
           u"valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,lastupdate"_s + from +
           u"  Order by ddate"_s;
}

} // namespace

// The texts are the program's own. Some name a column twice, and that of `revenues` has two commas in a row,
// so that the store refuses it: all of that is meant.
QString getstrsql(const QString &logicalName, const QString &sourceTable)
{
    const QString detailPhrase =
        u"(select detail"_s + engine.languageSuffix + u" from details where gtype=details.id) as gtype,"_s;
    const QString relationPhrase =
        u"(select relation"_s + engine.languageSuffix + u" from relations where relation=id) as relation,"_s;
    const QString from = u" from ["_s + sourceTable + u"]"_s;

    if (logicalName == u"ledger"_s)
        return u"select id,name,transactionid,"_s + ledgerRest(detailPhrase, from);
    if (logicalName == u"audit_ledger"_s)
        return u"select idkey,id,name,transactionid,"_s + ledgerRest(detailPhrase, from);
    if (logicalName == u"users"_s)
        return u"select id,userid,name,rank,lastlogin,createdon,createdby"_s + from +
               u" where valid=true Order by userid"_s;
    if (logicalName == u"audit_users"_s)
        return u"select IDkey,id,userid,name,rank,lastlogin,createdon,createdby,updatedon,updatedby,updatetype"_s +
               from;
    if (logicalName == u"members"_s)
        return u"select name,sex,title,"_s + relationPhrase + u"dob,group,lastupdate"_s + from +
               u" Order by dob"_s;
    if (logicalName == u"audit_members"_s)
        return u"select idkey,name,sex,title,"_s + relationPhrase +
               u"dob,group,lastupdate,updatedon,updatedby,updatetype"_s + from + u" Order by idkey"_s;
    if (logicalName == u"revenues"_s)
        return u"select transactionid,amount,ddate,valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,"_s +
               detailPhrase + u",lastupdate"_s + from + u" where creditordebit=true Order by ddate"_s;
    if (logicalName == u"audit_revenues"_s)
        return u"select idkey,transactionid,amount,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,paymentmethod,"_s +
               detailPhrase + u"lastupdate, updatedon,updatedby,updatetype"_s + from +
               u" where creditordebit=true Order by idkey"_s;
    if (logicalName == u"expenses"_s)
        return u"select transactionid,amount,ddate,"_s + detailPhrase +
               u"valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,gtype,lastupdate"_s +
               from + u" where creditordebit=false Order by ddate"_s;
    if (logicalName == u"audit_expenses"_s)
        return u"select idkey,transactionid,amount,"_s + detailPhrase +
               u"valid,ddate,enteredon,enteredby,valid,transactiondetail,paymentdetail,"
               "paymentmethod,gtype,lastupdate,updatedon,updatedby,updatetype"_s +
               from + u" where creditordebit=false Order by idkey"_s;
    if (logicalName == u"general"_s)
        return u"select "_s + generalRest(detailPhrase, from);
    if (logicalName == u"audit_general"_s)
        return u"select idkey,id,"_s + generalRest(detailPhrase, from);

    showMessage(u" getstrsql!  unknown table.."_s);
    return u"select *"_s + from;
}
