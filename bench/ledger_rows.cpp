#include "ledger_rows.h"

#include "bare_store.h"

#include <QtCore/QDateTime>
#include <sqlcipher/sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString notes[] = {u"إيجار المحل رقم %1 عن الشهر الحالي"_s, u"فاتورة الكهرباء رقم %1"_s,
                         u"مصروف معيشة البيت - إيصال %1"_s, u"راتب التقاعد، حوالة %1"_s};

/// What the rows of one transaction have in common.
struct Transaction {
    explicit Transaction(int ordinal)
        : number(ordinal), isRevenue(ordinal % 3 == 0), total((ordinal % 9973 + 1) * 12'345LL),
          valid(ordinal % 20 != 0), kind(ordinal % 19 + 1),
          date(QDate(2004, 1, 1).addDays(ordinal / 32).toString(Qt::ISODate).toUtf8()),
          enteredOn(date + ' ' + QTime(8, 0).addSecs(ordinal % 32 * 900 + ordinal % 60).toString().toUtf8()),
          note(notes[ordinal % 4].arg(ordinal).toUtf8()),
          payment(ordinal % 4 == 0 ? u"شيك رقم %1"_s.arg(ordinal).toUtf8() : u"نقداً"_s.toUtf8()),
          method(ordinal % 4 == 0 ? u"شيك"_s.toUtf8() : u"نقداً"_s.toUtf8())
    {
    }

    int number;
    bool isRevenue;
    qint64 total; ///< in ten-thousandths
    bool valid;
    int kind;
    QByteArray date;
    QByteArray enteredOn;
    QByteArray note;
    QByteArray payment;
    QByteArray method;
};

void bindText(sqlite3_stmt *statement, int index, const QByteArray &text)
{
    sqlite3_bind_text(statement, index, text.constData(), int(text.size()), SQLITE_STATIC);
}

void bindShared(sqlite3_stmt *statement, const Transaction &transaction)
{
    sqlite3_bind_int64(statement, 2, transaction.number);
    sqlite3_bind_int64(statement, 3, transaction.isRevenue ? -1 : 0);
    sqlite3_bind_int64(statement, 4, transaction.valid ? -1 : 0);
    sqlite3_bind_int64(statement, 5, transaction.total);
    bindText(statement, 6, transaction.date);
    bindText(statement, 7, transaction.enteredOn);
    bindText(statement, 8, "agent"_ba);
    bindText(statement, 9, transaction.note);
    bindText(statement, 10, transaction.payment);
    bindText(statement, 11, transaction.method);
    sqlite3_bind_int64(statement, 12, transaction.kind);
}

} // namespace

const QStringList &ledgerMembers()
{
    static const QStringList members{u"أحمد"_s, u"سالم"_s, u"فاطمة"_s, u"مريم"_s};
    return members;
}

void writeLedgerRows(BareStore &store, int rows)
{
    const qint64 parts[] = {333'333, 333'333, 166'667, 166'667}; // in millionths
    store.run("begin");
    sqlite3_stmt *general = store.prepared(
        "insert into general(id, transactionid, creditordebit, valid, amount, ddate, enteredon, enteredby, "
        "transactiondetail, paymentdetail, paymentmethod, gtype, lastupdate) "
        "values(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?7)");
    sqlite3_stmt *ledger = store.prepared(
        "insert into ledger(id, transactionid, creditordebit, valid, totalamount, ddate, enteredon, "
        "enteredby, transactiondetail, paymentdetail, paymentmethod, gtype, name, amount) "
        "values(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14)");
    for (int row = 0; row < rows; ++row) {
        const int member = row % 4;
        const Transaction transaction(row / 4 + 1);
        if (member == 0) {
            sqlite3_bind_int64(general, 1, transaction.number);
            bindShared(general, transaction);
            store.runPrepared(general);
        }
        sqlite3_bind_int64(ledger, 1, row + 1);
        bindShared(ledger, transaction);
        const QByteArray name = ledgerMembers()[member].toUtf8();
        bindText(ledger, 13, name);
        sqlite3_bind_int64(ledger, 14, transaction.total * parts[member] / 1'000'000);
        store.runPrepared(ledger);
    }
    sqlite3_stmt *number = store.prepared("update settings set sn = ?1");
    sqlite3_bind_int64(number, 1, rows / 4);
    store.runPrepared(number);
    store.run("update system_counters set last = (select max(id) from ledger) where table_name = 'ledger'");
    store.run("update system_counters set last = (select max(id) from general) where table_name = 'general'");
    store.run("commit");
}
