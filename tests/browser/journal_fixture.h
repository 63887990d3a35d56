#pragma once

#include "browser/corrections.h"
#include "journal_tables.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"
#include "store/data_helpers.h"
#include "store/logical_tables.h"
#include "support/hostile.h"
#include "support/printing.h"
#include "support/store_fixture.h"

using namespace Qt::Literals::StringLiterals;

/// A store with transactions in it, at 10:20:30 on 15 March 2004.
class JournalFixture : public StoreFixture
{
protected:
    JournalFixture()
    {
        setClock([] { return makeDate(2004, 3, 15, 10, 20, 30); });
    }

    /// A revenue of two members on a day (dd/MM/yyyy): its texts are "note", "paid" and "cash" with its
    /// number, its kind is 13.
    static void post(int number, const QString &day = u"05/01/2004"_s)
    {
        const QString rest =
            u"'%2','05/01/2004 08:00:00','agent','note%1','paid%1','cash%1',13"_s.arg(number).arg(day);
        const QString columns =
            u"ddate,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,gtype"_s;
        execute({u"insert into general (transactionid,valid,creditordebit,amount,%2,lastupdate) values "
                 "(%1,true,true,30,%3,'06/01/2004 09:00:00')"_s.arg(QString::number(number), columns, rest)});
        for (const QString &share : {u"'son',%1,true,20"_s, u"'girl',%1,true,10"_s})
            execute(
                {u"insert into ledger (name,transactionid,creditordebit,amount,totalamount,valid,%1) values "
                 "(%2,30,true,%3)"_s.arg(columns, share.arg(number), rest)});
    }
    /// Moves rows by hand.
    static void move(const QString &from, const QString &to, const QString &condition)
    {
        execute({u"select * into [%2] from [%1] where %3"_s.arg(from, to, condition),
                 u"delete from [%1] where %2"_s.arg(from, condition)});
    }

    static RecordsetPtr openRows(const QString &sql)
    {
        auto set = Recordset::create();
        set->setCursorLocation(CursorLocation::Client);
        set->open(sql, engine.dbConnection, CursorType::Static, LockType::Optimistic);
        return set;
    }
    /// The rows of the grid over `general`, or over an archive of it.
    static RecordsetPtr browse(const QString &currentTable = u"general"_s)
    {
        return openRows(getstrsql(u"general"_s, currentTable));
    }

    using Edits = std::vector<CellText>;
    /// A transaction's row as the grid shows it, with some cells edited.
    static EditedRow edited(const RecordsetPtr &set, int number, const Edits &edits,
                            const QString &currentTable = u"general"_s)
    {
        const int key = set->fieldIndex(u"transactionid"_s);
        int row = 0;
        while (set->valueAt(row, key).toInt() != number)
            ++row;
        EditedRow result{u"general"_s, currentTable, set, {}};
        for (int i = 0; i < set->fieldCount(); ++i) {
            const Value value = set->valueAt(row, i);
            QString text = value.toText();
            if (value.kind() == Value::Kind::Money)
                text = format(value, u"#,###,##0.00"_s);
            else if (value.kind() == Value::Kind::Date)
                text = FormatStamp(value.toDate());
            for (const CellText &edit : edits) {
                if (edit.fieldName == set->field(i).name)
                    text = edit.text;
            }
            result.cells.push_back({set->field(i).name, text});
        }
        return result;
    }
    bool save(const EditedRow &row) { return SaveRowChanges(row, auditAction); }
    /// Edits a transaction's row in a grid of its own and saves it.
    bool correct(int number, const Edits &edits) { return save(edited(browse(), number, edits)); }

    QStringList told() { return std::exchange(dialogs.told, {}); }
    static QString either(const QString &ar, const QString &en) { return engine.isArabic ? ar : en; }

    Agreeing dialogs;
    QString auditAction;
};
