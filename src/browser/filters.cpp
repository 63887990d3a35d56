#include "browser/filters.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

QString joined(const QStringList &pieces)
{
    QStringList set = pieces;
    set.removeAll(QString());
    return set.join(u" and "_s);
}

} // namespace

void Filters::choose(Valid choice)
{
    switch (choice) {
    case Valid::Valid:
        validFilter = u"(valid = true)"_s;
        break;
    case Valid::Invalid:
        validFilter = u"(valid = false)"_s;
        break;
    case Valid::Both:
        validFilter.clear();
        break;
    }
    combinedFilter = joined({validFilter, creditFilter, namesFilter});
}

void Filters::choose(Credit choice)
{
    switch (choice) {
    case Credit::Revenues:
        creditFilter = u"(creditordebit = true)"_s;
        break;
    case Credit::Expenses:
        creditFilter = u"(creditordebit = false)"_s;
        break;
    case Credit::Both:
        creditFilter.clear();
        break;
    }
    combinedFilter = joined({creditFilter, validFilter, namesFilter});
}

void Filters::choose(const QStringList &names)
{
    if (names.isEmpty()) // the earlier choice stays in force: it is meant
        return;
    QString clause;
    for (const QString &name : names)
        clause += (clause.isEmpty() ? u""_s : u" or "_s) + u" name='"_s + name + u"' "_s;
    namesFilter = u'(' + clause + u')';
    combinedFilter = joined({namesFilter, creditFilter, validFilter});
}

QString dateRangeStatement(const QString &browseTable, const QString &currentTable, const QString &from,
                           const QString &to)
{
    const QString column = currentTable.contains(u"audit"_s) ? u"updatedon"_s : u"ddate"_s;
    QString side;
    if (browseTable == u"revenues"_s || browseTable == u"audit_revenues"_s)
        side = u"creditordebit = true and "_s;
    else if (browseTable == u"expenses"_s || browseTable == u"audit_expenses"_s)
        side = u"creditordebit = false and "_s;
    return u"select  * from ["_s + currentTable + u"] where "_s + side + u"  (datediff('d',"_s + column +
           u",'"_s + from + u"')<=0) and (datediff('d',"_s + column + u",'"_s + to + u"')>=0)"_s;
}
