#include "browser/totals.h"

#include "browser/grid_formatting.h"
#include "core/engine.h"
#include "platform/runtime/format.h"
#include "presentation/vocabulary.h"

using namespace Qt::Literals::StringLiterals;

QString totalsStatement(const QString &tableName, const QString &currentTable)
{
    const QString validRows = u"sum(amount) as tot from ["_s + currentTable + u"] where valid = true"_s;
    if (tableName == u"ledger"_s || tableName == u"general"_s)
        return u"select creditordebit,"_s + validRows + u" group by creditordebit"_s;
    return u"select "_s + validRows;
}

QString memberTotalsStatement(const QString &currentTable, const QString &member)
{
    return u"select creditordebit,sum(amount) as tot from ["_s + currentTable +
           u"] where valid = true and name='"_s + member + u"' group by creditordebit"_s;
}

QString totalsLines(Recordset &sums)
{
    const QString lineBreak = u"\r\n"_s;
    QString text;
    Money creditTotal;
    Money debitTotal;
    for (; !sums.eof(); sums.moveNext()) {
        const bool credit = sums.value(u"creditordebit"_s).toBool();
        const Money total = sums.value(u"tot"_s).toMoneyValue();
        text += ReformatBoolean(u"creditordebit"_s, credit) + u" : "_s +
                format(total, u"##,###,###,##0.00"_s) + lineBreak;
        (credit ? creditTotal : debitTotal) = total;
    }
    const Money net = creditTotal - debitTotal;
    text += u"==========="_s + lineBreak;
    text += engine.isArabic ? translate(u"net"_s) + u" : "_s : u"NET : "_s;
    return text + (net < Money() ? u" * "_s : QString()) + format(net, u"###,###,##0.00"_s);
}
