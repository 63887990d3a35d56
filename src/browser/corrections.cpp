#include "browser/corrections.h"

#include "browser/audit_rows.h"
#include "browser/grid_formatting.h"
#include "core/engine.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/screen.h"
#include "presentation/vocabulary.h"
#include "store/data_helpers.h"
#include "store/ledger_tables.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int fixedAttributes = 122; // of a field that is no text

/// The transaction's number in a row. @throws RuntimeError 13 when there is none
qint32 transactionOf(const EditedRow &row)
{
    const auto cell = std::ranges::find(row.cells, u"transactionid"_s, &CellText::fieldName);
    return toLongInteger(cell == row.cells.end() ? QString() : cell->text);
}

/// How a changed cell stands in the update statement.
struct Assignment {
    QString quote;
    int limit; ///< characters that the cell's text may have
    QString value;
};

/// @throws RuntimeError 13 when the text of a date is none, and as LookupDetailId()
Assignment assignmentOf(const CellText &cell, const FieldInfo &field)
{
    if (DeCodedColumn(cell.fieldName))
        return {{}, field.definedSize, QString::number(LookupDetailId(cell.text))};
    if (field.type == FieldType::Date) {
        const QDateTime day = readDate(format(cell.text, u"yyyy/mm/dd"_s));
        return {u"'"_s, field.definedSize + 2, shortDate(day)};
    }
    // The text stands there as typed: an apostrophe makes the statement fail, which is meant.
    return {field.type == FieldType::Text ? u"'"_s : QString(), field.definedSize, cell.text};
}

/// The statement that writes the changed cells; empty without a change, and for a value that can't be taken.
/// @throws RuntimeError as assignmentOf()
QString updateStatement(const EditedRow &row, qint32 transaction)
{
    QStringList changes;
    for (const CellText &cell : row.cells) {
        if (!ColumnEditable(cell.fieldName) || !FieldChanged(cell.text, cell.fieldName, *row.datPrimaryRS))
            continue;
        const FieldInfo &field = row.datPrimaryRS->field(cell.fieldName);
        const Assignment change = assignmentOf(cell, field);
        // Where `gtype` is a number it can't be changed, since its word is no date: that is meant.
        if ((field.attributes == fixedAttributes && !isDate(cell.text)) || cell.text.size() > change.limit ||
            cell.text.isEmpty())
            return {};
        changes << u'[' + cell.fieldName + u"]="_s + change.quote + change.value + change.quote;
    }
    if (changes.isEmpty())
        return {};
    return u"update ["_s + row.currentTable + u"] set "_s + changes.join(u',') + u" where transactionid="_s +
           QString::number(transaction);
}

/// Clears the filter and stands on the first row. Without a filter the bound grid keeps what was typed.
void clearFilter(Recordset &rows)
{
    if (!rows.filter().isEmpty())
        rows.setFilter({});
    else if (rows.rowCount() > 0)
        rows.moveFirst();
}

} // namespace

bool ColumnEditable(const QString &name)
{
    const QStringList editable{u"transactiondetail"_s, u"paymentdetail"_s, u"ddate"_s, u"gtype"_s,
                               u"paymentmethod"_s};
    return std::ranges::any_of(
        editable, [&](const QString &column) { return name == column || name == translate(column); });
}

bool TableEditable(const QString &table)
{
    return table == u"general";
}

bool FieldChanged(const QString &text, const QString &fieldName, const Recordset &datPrimaryRS)
{
    try {
        const Value value = datPrimaryRS.value(fieldName);
        if (value.isNull())
            return !text.isEmpty();
        switch (datPrimaryRS.field(fieldName).type) {
        case FieldType::Long: // in 16 bits: a larger number always counts as changed. That is meant.
            return toInteger(text) != toInteger(value.toDouble());
        case FieldType::Byte:
            return toInteger(text) != value.toInt();
        case FieldType::Double:
            return readDouble(text) != value.toDouble();
        case FieldType::Money:
            return readMoney(text) != value.toMoneyValue();
        case FieldType::Date:
            return readDate(text) != value.toDate();
        case FieldType::Boolean:
        case FieldType::Text:
            break;
        }
        return text != value.toText();
    } catch (const RuntimeError &) {
        return true;
    }
}

bool SaveRowChanges(const EditedRow &row, QString &auditAction)
{
    Connection &store = *engine.dbConnection;
    bool begun = false;
    try {
        store.beginTrans();
        begun = true;
        const qint32 transaction = transactionOf(row);
        row.datPrimaryRS->find(u"transactionid="_s + QString::number(transaction));
        const QString statement = updateStatement(row, transaction);
        if (!statement.isEmpty()) {
            auditAction = u"update"_s;
            WriteAuditRow(row.tableName, transaction, auditAction);
            store.execute(statement);
            const bool done = UpdateLedgerTables(statement, row.tableName);
            done ? store.commitTrans() : store.rollbackTrans();
            return done;
        }
    } catch (const RuntimeError &) {
        // ends as a row without a change does
    }
    clearFilter(*row.datPrimaryRS);
    if (begun && store.inTransaction())
        store.rollbackTrans();
    showMessage(engine.isArabic ? u"حدث خطأ و ألغيت العمليه"_s
                                : u"An error occurred and update was cancelled"_s);
    return false;
}

bool UpdateLedgerTables(const QString &statement, const QString &tableName)
{
    try {
        for (const QString &ledger : ledgerTables()) {
            // Inside the typed texts too, and in the name of an archive: that is meant.
            engine.dbConnection->execute(QString(statement).replace(tableName, ledger));
        }
        return true;
    } catch (const RuntimeError &failure) {
        Screen::setHourglass(false);
        showMessage(failure.description());
        return false;
    }
}

void cancelTransaction(const QString &tableName, const QString &currentTable, qint32 transaction,
                       QString &auditAction)
{
    const QString number = QString::number(transaction);
    auditAction = u"delete"_s;
    WriteAuditRow(tableName, transaction, auditAction);
    // Each statement takes effect by itself: that is meant.
    engine.dbConnection->execute(u"update ["_s + currentTable +
                                 u"] set valid = false where transactionid="_s + number);
    for (const QString &ledger : ledgerTables())
        engine.dbConnection->execute(u"update ["_s + ledger + u"] set valid = false where  transactionid="_s +
                                     number);
}
