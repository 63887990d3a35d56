#include "browser/filters.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{

QString joined(QStringList pieces)
{
    pieces.removeAll(QString());
    return pieces.join(u" and "_s);
}

} // namespace

bool Filters::choose(Valid item)
{
    if (std::exchange(valid, item) == item)
        return false;
    validFilter = item == Valid::Both    ? QString()
                  : item == Valid::Valid ? u"(valid = true)"_s
                                         : u"(valid = false)"_s;
    // Without a valid piece the side and the names are joined; the order is the same.
    combinedFilter = joined({validFilter, creditFilter, namesFilter});
    return true;
}

bool Filters::choose(Credit item)
{
    if (std::exchange(credit, item) == item)
        return false;
    creditFilter = item == Credit::Both       ? QString()
                   : item == Credit::Revenues ? u"(creditordebit = true)"_s
                                              : u"(creditordebit = false)"_s;
    combinedFilter = joined({creditFilter, validFilter, namesFilter});
    return true;
}

bool Filters::choose(const QStringList &names)
{
    if (names.isEmpty()) // the earlier choice stays in force: that is meant
        return false;
    QString clause;
    for (const QString &name : names)
        clause += (clause.isEmpty() ? QString() : u" or "_s) + u" name='"_s + name + u"' "_s;
    namesFilter = u'(' + clause + u')';
    combinedFilter = joined({namesFilter, creditFilter, validFilter});
    return true;
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
