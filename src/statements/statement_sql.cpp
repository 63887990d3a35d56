#include "statements/statement_sql.h"

#include "core/engine.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString monthKey = u"(year(ddate) & format(month(ddate),'0#'))"_s;
const QString signedAmount = u"iif(creditordebit=true,amount,-1*amount)"_s;

QString kindPhrase()
{
    return u"(select detail"_s + engine.languageSuffix + u" from details where gtype=details.id) as gtype"_s;
}

/// Runs against the ranges of the browser: it keeps the days from `to` to `from`, and so a range of more than
/// one day has no rows. That is meant.
QString dayCondition(const std::optional<StatementDates> &dates)
{
    if (!dates)
        return {};
    return u" and (datediff('d',ddate,'"_s + dates->from + u"')>=0)"_s + u" and (datediff('d',ddate,'"_s +
           dates->to + u"')<=0)"_s;
}

QString monthCondition(const std::optional<StatementDates> &dates, const QString &monthFormat)
{
    if (!dates)
        return {};
    const auto key = [&](const QString &text) {
        const QDate day = readDate(text).date();
        return u'(' + QString::number(day.year()) + format(day.month(), monthFormat) + u')';
    };
    return u" and "_s + monthKey + u">="_s + key(dates->from) + u" and "_s + monthKey + u"<="_s +
           key(dates->to);
}

QString detailedSql(const MemberStatement &s)
{
    const QString rest = u"transactiondetail,creditordebit,"_s + kindPhrase() + u",paymentmethod from ["_s +
                         s.ledgerTable + u"]"_s;
    const QString member = u" and (name='"_s + s.name + u"') order by ddate"_s;
    if (s.statementType == u"both")
        return u"select id,transactionid,ddate,"_s + signedAmount + u" as amount,"_s + rest +
               u" where valid=true "_s + dayCondition(s.dates) + member;
    const QString side = s.statementType == u"expenses" ? u"false"_s : u"true"_s;
    return u"select id,transactionid,amount,format(ddate,'yyyy/mm/dd') as ddate,"_s + rest +
           u" where valid=true"_s + dayCondition(s.dates) + u" and creditordebit = "_s + side + u" "_s +
           member;
}

QString monthlySql(const MemberStatement &s)
{
    const bool both = s.statementType == u"both";
    const QString side = both                             ? QString()
                         : s.statementType == u"expenses" ? u" and creditordebit = false "_s
                                                          : u" and creditordebit = true "_s;
    return u"select name,creditordebit,"_s + monthKey + u" as ddate,sum("_s +
           (both ? signedAmount : u"amount"_s) + u") as amount from ["_s + s.ledgerTable +
           u"] where valid=true and (name='"_s + s.name + u"')"_s + side + monthCondition(s.dates, u"0#"_s) +
           u" group by name,"_s + monthKey + u",creditordebit order by "_s + monthKey;
}

QString detailedSql(const FamilyStatement &s)
{
    const auto text = [&](const QString &day, const QString &amount, const QString &from,
                          const QString &condition) {
        return u"select transactionid,"_s + day + amount +
               u"transactiondetail,paymentmethod, paymentdetail,enteredon,enteredby,"_s + kindPhrase() +
               from + u"["_s + s.generalTable + u"] where valid=true "_s + condition + dayCondition(s.dates) +
               u" order by ddate"_s;
    };
    const QString dayText = u"format(ddate,'yyyy/mm/dd') as ddate,"_s;
    if (s.statementSide == u"both")
        return text(u"ddate,"_s, signedAmount + u" as amount,"_s, u"  from "_s, {});
    if (s.statementSide == u"debit")
        return text(dayText, u"amount,"_s, u" from  "_s, u"and creditordebit=false "_s);
    return text(dayText, u"amount,"_s, u"  from "_s, u"and creditordebit=true "_s);
}

QString monthlySql(const FamilyStatement &s)
{
    const bool both = s.statementSide == u"both";
    const QString side = both                          ? QString()
                         : s.statementSide == u"debit" ? u" and creditordebit = false "_s
                                                       : u" and creditordebit = true "_s;
    // In English the column of the side is left out, and the month of a bound has no zero in front: both are
    // meant.
    const QString word =
        engine.isArabic ? u"iif(creditordebit=true,'لكم','عليكم') as creditordebit,"_s : QString();
    return u"select "_s + monthKey + u" as ddate,"_s + word + u"sum("_s +
           (both ? signedAmount : u"amount"_s) + u") as amount from ["_s + s.generalTable +
           u"] where valid=true"_s + side + monthCondition(s.dates, u"0"_s) + u"  group by "_s + monthKey +
           u",creditordebit order by "_s + monthKey;
}

} // namespace

QString statementSql(const MemberStatement &statement)
{
    return statement.monthly ? monthlySql(statement) : detailedSql(statement);
}

QString statementSql(const FamilyStatement &statement)
{
    return statement.monthly ? monthlySql(statement) : detailedSql(statement);
}
