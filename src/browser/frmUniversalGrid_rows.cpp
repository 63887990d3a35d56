#include "browser/frmUniversalGrid.h"
#include "browser/totals.h"
#include "core/engine.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/hourglass.h"
#include "platform/ui/progress.h"
#include "presentation/work_name.h"
#include "ui_frmUniversalGrid.h"
#include "utilities/frmSelectDates.h"

using namespace Qt::Literals::StringLiterals;

// --- filters

void frmUniversalGrid::chooseFilter(Filters::Valid item)
{
    showMarks(); // the menu has turned the item's mark
    Filters chosen = m_filters;
    if (chosen.choose(item))
        filterRows(chosen, chosen.combinedFilter);
}

void frmUniversalGrid::chooseFilter(Filters::Credit item)
{
    showMarks();
    Filters chosen = m_filters;
    if (chosen.choose(item))
        filterRows(chosen, chosen.combinedFilter);
}

void frmUniversalGrid::mnuSelect_Click()
{
    Filters chosen = m_filters;
    // The names alone: the other pieces wait for the next choice of theirs. That is meant.
    if (chosen.choose(checkedNames()))
        filterRows(chosen, chosen.namesFilter);
}

/// What the recordset refuses leaves rows, marks and pieces as they were.
void frmUniversalGrid::filterRows(const Filters &chosen, const QString &filter)
{
    const Hourglass hourglass;
    m_primary->setFilter(filter);
    m_filters = chosen;
    showMarks();
    showRows();
}

void frmUniversalGrid::showMarks()
{
    m_ui->mnuValid->setChecked(m_filters.valid == Filters::Valid::Valid);
    m_ui->mnuInValid->setChecked(m_filters.valid == Filters::Valid::Invalid);
    m_ui->mnuBothValid->setChecked(m_filters.valid == Filters::Valid::Both);
    m_ui->mnuRevenues->setChecked(m_filters.credit == Filters::Credit::Revenues);
    m_ui->mnuExpenses->setChecked(m_filters.credit == Filters::Credit::Expenses);
    m_ui->mnuBothCreditOrDebit->setChecked(m_filters.credit == Filters::Credit::Both);
}

void frmUniversalGrid::checkNames(bool on)
{
    for (QAction *item : std::as_const(m_mnuName))
        item->setChecked(on);
}

QStringList frmUniversalGrid::checkedNames() const
{
    QStringList names;
    for (const QAction *item : m_mnuName) {
        if (item->isChecked())
            names << item->text().replace(u"&&"_s, u"&"_s);
    }
    return names;
}

// --- the range of dates

void frmUniversalGrid::btnDateSelect_Click()
{
    frmSelectDates dialog;
    dialog.showModal();
    if (dialog.datesAccepted) {
        showDateRange(shortDate(dialog.dateFromValue), shortDate(dialog.dateToValue));
    } else if (m_dateRangeOn) {
        const Hourglass hourglass;
        // Without a filter, although the marks stay: that is meant.
        const RecordsetPtr rows = m_saved->clone();
        setRange({}, {});
        bind(rows);
        showRows();
    }
}

void frmUniversalGrid::showDateRange(const QString &from, const QString &to)
{
    {
        const Hourglass hourglass;
        // All columns as they are stored: that is meant.
        const RecordsetPtr rows = openRows(dateRangeStatement(engine.browseTable, m_currentTable, from, to));
        // A second range keeps the rows of the first one here: that is meant.
        m_saved = m_primary->clone();
        m_primary->close();
        setRange(from, to);
        bind(rows);
        if (!showRows())
            return;
    }
    showMessage(u"You can Select Dates and cancel to get back the unarchived items.."_s + u"\r\n"_s +
                    u"تستطيع ضغط تحديد تواريخ ثم الإلغاء للعوده للمواد اللتي لم تَأرشف"_s,
                MessageIcon::Information);
}

/// Empty texts for no range.
void frmUniversalGrid::setRange(const QString &from, const QString &to)
{
    m_dateRangeOn = !from.isEmpty();
    m_ui->DateFromx->setText(from);
    m_ui->DateTox->setText(to);
    for (QWidget *label : {m_ui->DateFromx, m_ui->Label3, m_ui->DateTox})
        label->setVisible(m_dateRangeOn);
}

// --- search

void frmUniversalGrid::btnSearch_Click()
{
    if (m_primary->eof() && m_primary->bof())
        return;
    if (m_primary->eof())
        m_primary->moveFirst();
    const int bookmark = m_primary->bookmark();
    const QString number = m_ui->txtNumber->text();
    if (!isNumeric(number)) {
        showMessage(u"Use numbers please..   فضلاُ أدخل الرقم المطلوب"_s);
        m_ui->txtNumber->setFocus();
        m_ui->txtNumber->selectAll();
        return;
    }
    m_primary->find(u"transactionid="_s + number); // from the current row on: that is meant
    if (m_primary->eof()) {
        showMessage(u"Not Found لا أستطيع العثور على هذا الرقم"_s);
        m_primary->setBookmark(bookmark);
    } else {
        // The row's number in the order of reading, also under a filter or another order: that is meant.
        m_ui->FGrid->setTopRow(m_primary->bookmark());
    }
}

// --- refresh and archives

void frmUniversalGrid::cmdRefresh_Click()
{
    const Hourglass hourglass;
    try {
        const FlexGrid &grid = *m_ui->FGrid;
        const int row = grid.row();
        const QString field = grid.fieldName(grid.col());
        const QString transaction = GridFieldValue(row, u"transactionid"_s);
        readUnderLine(m_ui->Label1, workName(Work::Reading), *m_primary, [this] {
            if (m_primary->isOpen())
                m_primary->requery();
            else // a merge that failed has closed it
                m_primary->open(QString(m_primary->source()), engine.dbConnection, CursorType::Static,
                                LockType::Optimistic);
        });
        if (showRows(u" المجموع "_s) && m_cellPicked)
            pickAgain(transaction, row, field);
    } catch (const RuntimeError &failure) {
        showMessage(failure.description());
    }
}

// --- totals

bool frmUniversalGrid::mayTotal() const
{
    return m_primary->recordCount() > 0 && !isBelowTopRank();
}

void frmUniversalGrid::mnuTotals_Click()
{
    if (!mayTotal())
        return;
    if (m_filters.valid != Filters::Valid::Valid)
        showMessage(engine.isArabic ? u"هذا المجموع لا يحتوي على الملغيات"_s
                                    : u"This total does NOT include the Invalids"_s);
    showTotals(totalsStatement(m_tableName, m_currentTable), {});
}

void frmUniversalGrid::mnuTotal_Click()
{
    if (!mayTotal())
        return;
    if (m_tableName == u"general"_s || m_tableName == u"revenues"_s || m_tableName == u"expenses"_s)
        return mnuTotals_Click();
    if (!m_cellPicked)
        return showMessage(engine.isArabic ? u"يجب الإختيار أولاً"_s : u"you have to select first!"_s);
    if (m_tableName != u"ledger"_s)
        return;
    const QString name = GridFieldValue(m_ui->FGrid->row(), u"name"_s);
    showTotals(memberTotalsStatement(m_currentTable, name),
               (engine.isArabic ? u"المجموع لــ "_s : u"Totals for "_s) + name + u"\r\n"_s);
}

/// The sums of all valid rows, whatever filter or range is in force.
void frmUniversalGrid::showTotals(const QString &statement, const QString &heading)
{
    QString text;
    try {
        const ProgressLine waiting(m_ui->Label1, workName(Work::Waiting));
        const RecordsetPtr sums = Recordset::create();
        sums->open(statement, engine.dbConnection);
        if (m_tableName == u"ledger"_s || m_tableName == u"general"_s)
            text = heading + totalsLines(*sums);
        else
            text = engine.isArabic ? u"لا يجوز إيجاد مجموع للتعديلات"_s : u"You cannot total audits!"_s;
        sums->close();
    } catch (const RuntimeError &failure) {
        text = failure.description();
    }
    showMessage(text);
}
