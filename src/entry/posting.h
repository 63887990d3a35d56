#pragma once

#include "platform/database/recordset.h"
#include "platform/runtime/money.h"

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <functional>

/// One validated entry, as it is posted.
struct Entry {
    bool isRevenue = true; ///< money in for the members; set by the posting, as the total is
    Money total;
    QDateTime date;
    QString note; ///< as typed, lines parted by CR LF
    QString paymentDetail;
    QString paymentMethod; ///< as a word
    QString kind;          ///< the kind of transaction, in the session's language
};

/// The statement that writes a revenue's row of `general`. Texts stand in it as they are: an apostrophe makes
/// the statement fail, which is meant.
QString generalInsert(const Entry &entry, qint32 number, const QDateTime &enteredOn, qint16 kindId,
                      const QDateTime &lastUpdate);

/// Appends one member's row to `ledger`, which is open as a table.
void appendLedgerRow(Recordset &ledger, const Entry &entry, qint32 number, const QString &member,
                     Money share);

/// Posts a revenue in one store transaction: the next number, the row of `general` with the amount's text
/// rounded to two decimals as its total, one row of `ledger` for each of the members in their order.
/// `shareOf` is asked for a member's share right before the row is written. Overwrites `engine.strSql`,
/// `engine.rsShared` and `engine.stampNow`.
/// @throws RuntimeError whatever fails; the roll-back is left to the caller.
void postRevenue(Entry entry, const QString &amountText, const QStringList &members,
                 const std::function<Money(const QString &member)> &shareOf);

/// Posts an expense in one store transaction: the same rows with an equal share for each of the members, the
/// total divided by their number, half to even at the fourth decimal. What fails once the transaction has
/// begun takes the failure path here. Overwrites the same scratch values.
/// @throws RuntimeError when the transaction can't begin or can't be rolled back.
void postExpense(Entry entry, const QString &amountText, const QStringList &members);

/// Runs an entry command under the failure path of a posting: roll back, tell so, tell the failure's number
/// and description.
/// @throws RuntimeError when there is no transaction to roll back.
void withPostingFailurePath(const std::function<void()> &command);
