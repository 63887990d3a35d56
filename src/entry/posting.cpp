#include "entry/posting.h"

#include "core/engine.h"
#include "entry/share_division.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "store/data_helpers.h"

#include <QtCore/QStringList>

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace
{

QString quoted(const QString &text)
{
    return u'\'' + text + u'\'';
}

/// Advances the number of the last transaction and returns it. A store without its row of settings gets one.
qint32 drawRevenueNumber()
{
    const auto settings = Recordset::create();
    settings->open(u"select sn as maxid from settings"_s, engine.dbConnection, CursorType::Keyset,
                   LockType::Optimistic);
    qint32 number = 1;
    if (settings->recordCount() < 1) {
        engine.strSql = u"insert into settings (lastcompacted,desceased,sn) values("_s +
                        quoted(generalDate(engine.lastCompacted)) + u",'غير معروف',1)"_s;
    } else {
        number = toLongInteger(settings->value(u"maxid"_s).toDouble() + 1);
        engine.strSql = u"update settings set sn=sn+1"_s;
    }
    settings->close();
    engine.dbConnection->execute(engine.strSql);
    return number;
}

/// The same for an expense. A store without its row of settings is not repaired: the move fails there, and
/// the empty result behind it is out of reach and kept.
std::optional<qint32> drawExpenseNumber()
{
    const auto settings = Recordset::create();
    settings->open(u"select sn as maxid from settings"_s, engine.dbConnection, CursorType::Keyset,
                   LockType::Optimistic);
    settings->moveFirst();
    if (settings->recordCount() <= 0)
        return std::nullopt;
    settings->setValue(u"maxid"_s, settings->value(u"maxid"_s).toDouble() + 1);
    const qint32 number = settings->value(u"maxid"_s).toInt();
    settings->update();
    return number;
}

/// Writes an expense's row of `general`: by a table's row, so that apostrophes do no harm.
void appendGeneralRow(const Entry &entry, qint32 number)
{
    const auto general = Recordset::create();
    general->open(u"[general]"_s, engine.dbConnection, CursorType::Keyset, LockType::Pessimistic,
                  CommandKind::Table);
    general->addNew();
    general->setValue(u"transactionid"_s, number);
    general->setValue(u"amount"_s, entry.total);
    general->setValue(u"ddate"_s, entry.date);
    general->setValue(u"enteredon"_s, generalDate(engine.stampNow));
    general->setValue(u"enteredby"_s, engine.currentUser);
    general->setValue(u"VALID"_s, true);
    general->setValue(u"CreditOrDebit"_s, entry.isRevenue);
    general->setValue(u"TransactionDetail"_s, entry.note);
    general->setValue(u"PaymentDetail"_s, entry.paymentDetail);
    general->setValue(u"paymentmethod"_s, entry.paymentMethod);
    general->setValue(u"GTYPE"_s, qint32(LookupDetailId(entry.kind)));
    general->setValue(u"lastupdate"_s, generalDate(now()));
    general->update();
}

/// Writes one row of `ledger` for each of the members in their order; `shareOf` is asked right before the row
/// is written.
void appendLedgerRows(const Entry &entry, qint32 number, const QStringList &members,
                      const std::function<Money(const QString &member)> &shareOf)
{
    const auto ledger = Recordset::create();
    ledger->open(u"ledger"_s, engine.dbConnection, CursorType::Keyset, LockType::Optimistic,
                 CommandKind::Table);
    for (const QString &member : members) {
        const Money share = shareOf(member);
        appendLedgerRow(*ledger, entry, number, member, share);
    }
    ledger->close();
}

void tellSuccess()
{
    showMessage(u"Successful Entry تم إدخال المبلغ بنجاح"_s);
}

} // namespace

QString generalInsert(const Entry &entry, qint32 number, const QDateTime &enteredOn, qint16 kindId,
                      const QDateTime &lastUpdate)
{
    const QStringList values{QString::number(number),
                             entry.total.toText(),
                             quoted(generalDate(entry.date)),
                             quoted(generalDate(enteredOn)),
                             quoted(engine.currentUser),
                             u"True"_s,
                             u"True"_s,
                             quoted(entry.note),
                             quoted(entry.paymentDetail),
                             quoted(entry.paymentMethod),
                             QString::number(kindId),
                             quoted(generalDate(lastUpdate))};
    return u"insert into [general] "
           "(transactionid,amount,ddate,enteredon,enteredby,"
           "valid,creditordebit,transactiondetail,paymentdetail,"
           "paymentmethod,gtype,lastupdate) values("_s +
           values.join(u',') + u')';
}

void appendLedgerRow(Recordset &ledger, const Entry &entry, qint32 number, const QString &member, Money share)
{
    ledger.addNew();
    ledger.setValue(u"name"_s, member);
    ledger.setValue(u"transactionid"_s, number);
    ledger.setValue(u"creditordebit"_s, entry.isRevenue);
    ledger.setValue(u"amount"_s, share);
    ledger.setValue(u"totalamount"_s, entry.total);
    ledger.setValue(u"ddate"_s, entry.date);
    ledger.setValue(u"enteredon"_s, generalDate(now()));
    ledger.setValue(u"enteredby"_s, engine.currentUser);
    ledger.setValue(u"valid"_s, true);
    ledger.setValue(u"transactiondetail"_s, trimBlanks(entry.note));
    ledger.setValue(u"paymentdetail"_s, trimBlanks(entry.paymentDetail));
    ledger.setValue(u"paymentmethod"_s, entry.paymentMethod);
    ledger.setValue(u"gtype"_s, qint32(LookupDetailId(entry.kind)));
    ledger.update();
}

void postRevenue(Entry entry, const QString &amountText, const QStringList &members,
                 const std::function<Money(const QString &member)> &shareOf)
{
    Connection &store = *engine.dbConnection;
    store.beginTrans();
    engine.stampNow = now();
    const qint32 number = drawRevenueNumber();

    entry.isRevenue = true;
    entry.total = postedTotal(amountText);
    const qint16 kindId = LookupDetailId(entry.kind);
    engine.strSql = generalInsert(entry, number, engine.stampNow, kindId, now());
    store.execute(engine.strSql);

    appendLedgerRows(entry, number, members, shareOf);
    store.commitTrans();
    tellSuccess();
}

void postExpense(Entry entry, const QString &amountText, const QStringList &members)
{
    Connection &store = *engine.dbConnection;
    store.beginTrans();
    withPostingFailurePath([&] {
        engine.stampNow = now();
        const auto number = drawExpenseNumber();
        if (!number) {
            store.commitTrans();
            return showMessage(u" major error!~!~!"_s);
        }
        entry.isRevenue = false;
        entry.total = postedTotal(amountText);
        appendGeneralRow(entry, *number);
        appendLedgerRows(entry, *number, members, [&entry, &members](const QString &) {
            return equalShare(entry.total, int(members.size()));
        });
        store.commitTrans();
        tellSuccess();
    });
}

void withPostingFailurePath(const std::function<void()> &command)
{
    try {
        command();
    } catch (const RuntimeError &failure) {
        // A failure before the transaction began leaves nothing to roll back: this fails then, and nobody
        // traps it. That is meant.
        engine.dbConnection->rollbackTrans();
        showMessage(u"transaction aborted..  حصل خطأ وألغيت العمليه"_s);
        showMessage(QString::number(failure.number()) + u' ' + failure.description());
    }
}
