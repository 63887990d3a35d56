#include "browser/corrections.h"
#include "browser/frmUniversalGrid.h"
#include "browser/grid_formatting.h"
#include "core/engine.h"
#include "core/navigation.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"
#include "platform/runtime/numbers.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/progress.h"
#include "presentation/work_name.h"
#include "ui_frmUniversalGrid.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QLineEdit>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

void frmUniversalGrid::mnuModify_Click()
{
    if (m_ui->mnuModify->isChecked()) // the menu has turned the mark
        showMessage(engine.isArabic ? u"تستطيع الآن القيام بتعديلات على المعلومات"_s
                                    : u"You can make changes now"_s);
    else
        showMessage(engine.isArabic ? u"تستطيع الآن القيام بترتيب الأعمده المعلومات"_s
                                    : u"You can do column sorting now"_s);
}

// --- the editors

void frmUniversalGrid::openEditor(int row, int column)
{
    FlexGrid &grid = *m_ui->FGrid;
    const QString name = grid.fieldName(column);
    if (!TableEditable(m_tableName)) // the logical one: an archive of it may be edited too
        return showMessage(u"You CANNOT make changes here! لا تستطيع التغيير في هذا السجل "_s);
    if (!ColumnEditable(name))
        return showMessage(u"You CANNOT change this column! لا تستطيع تغيير هذا العمود"_s);
    ::setRightToLeft(m_ui->Text1, true); // a cell always has an alignment, in English too: that is meant
    ::setRightToLeft(m_ui->Combo1, true);
    for (QLineEdit *box : {m_ui->Text1, m_ui->Combo1->lineEdit()})
        box->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    m_editRow = toInteger(row); // none behind the 32,767th opens: that is meant
    m_editCol = toInteger(column);
    grid.setCell(row, column);
    grid.scrollTo(grid.currentIndex());
    const QString text = grid.textMatrix(row, column);
    switch (m_primary->field(name).type) {
    case FieldType::Text:
    case FieldType::Long:
    case FieldType::Money:
        if (name == u"gtype"_s)
            return editKind();
        m_ui->Text1->setText(text);
        showEditor(m_ui->Text1);
        return m_ui->Text1->selectAll();
    case FieldType::Date:
        m_ui->dtpDate->setValue(parseDate(text).value_or(today()));
        return showEditor(m_ui->dtpDate);
    default:
        return;
    }
}

/// The list begins with its first word, not with the one of the cell: that is meant.
void frmUniversalGrid::editKind()
{
    m_ui->Combo1->clear();
    const RecordsetPtr words = Recordset::create();
    words->open(u"select detail"_s + engine.languageSuffix + u" from details"_s, engine.dbConnection);
    for (; !words->eof(); words->moveNext())
        m_ui->Combo1->addItem(words->value(0).toText());
    words->close();
    m_ui->Combo1->setCurrentIndex(0);
    showEditor(m_ui->Combo1);
    m_ui->Combo1->lineEdit()->selectAll();
}

void frmUniversalGrid::showEditor(QWidget *editor)
{
    m_editor = editor;
    editor->setFont(m_ui->FGrid->font());
    setAccessibleText(editor, m_ui->FGrid->textMatrix(0, m_editCol));
    editor->show();
    editor->raise();
    editor->setFocus();
    placeEditor();
}

/// Over its cell, which may have moved; one that was scrolled out of view closes. List and date get the room
/// that their words and arrow need.
void frmUniversalGrid::placeEditor()
{
    if (!m_editor)
        return;
    const FlexGrid &grid = *m_ui->FGrid;
    const QRect seen = grid.cellRect(m_editRow, m_editCol);
    if (seen.isEmpty())
        return closeEditor();
    const QRect cell = seen.translated(grid.pos());
    const QSize size = m_editor == m_ui->Text1 ? cell.size() : cell.size().expandedTo(m_editor->sizeHint());
    const int left = std::max(cell.right() + 1 - size.width(), grid.x());
    m_editor->setGeometry({QPoint(left, cell.top() - (size.height() - cell.height()) / 2), size});
}

void frmUniversalGrid::closeEditor()
{
    if (!m_editor)
        return;
    QString text;
    if (m_editor == m_ui->dtpDate) {
        m_ui->dtpDate->interpretText();
        const QDateTime date = m_ui->dtpDate->value();
        text = format(date, u"yyyy/mm/dd"_s);
        m_rowDirty = parseDate(m_prevCellText) != date;
    } else {
        text = m_editor == m_ui->Text1 ? m_ui->Text1->text() : m_ui->Combo1->currentText();
        m_rowDirty = text != m_prevCellText; // also when an earlier editor has changed the row: that is meant
    }
    m_ui->FGrid->setTextMatrix(m_editRow, m_editCol, text);
    leaveEditor();
    m_totalWidth += widenFor(*m_ui->FGrid, m_editCol, text);
    placeGrid();
}

void frmUniversalGrid::leaveEditor()
{
    QWidget *editor = std::exchange(m_editor, nullptr);
    if (!editor)
        return;
    if (focusWidget() && (focusWidget() == editor || editor->isAncestorOf(focusWidget())))
        m_ui->FGrid->setFocus();
    editor->hide();
}

void frmUniversalGrid::followFocus(const QWidget *now)
{
    const bool elsewhere = now && now->window() == this && !qobject_cast<const QMenuBar *>(now);
    if (m_editor && elsewhere && now != m_editor && !m_editor->isAncestorOf(now))
        closeEditor();
}

bool frmUniversalGrid::Form_KeyDown(QKeyEvent *event)
{
    FlexGrid &grid = *m_ui->FGrid;
    switch (event->key()) {
    case Qt::Key_F2:
        if (focusWidget() != &grid || !m_ui->mnuModify->isChecked())
            return false;
        run([&] {
            FGrid_Click(grid.row(), grid.col());
            FGrid_DblClick(grid.row(), grid.col());
        });
        return true;
    case Qt::Key_Escape:
        if (!m_editor)
            return false;
        leaveEditor();
        return true;
    case Qt::Key_Enter:
    case Qt::Key_Return:
        if (!m_editor)
            return false;
        if (m_editor == m_ui->Text1)
            grid.setCell(std::min(m_editRow + 1, grid.rows() - 1), m_editCol);
        closeEditor();
        return true;
    default:
        return false;
    }
}

// --- saving

std::vector<CellText> frmUniversalGrid::cellsOf(int row) const
{
    std::vector<CellText> cells;
    const FlexGrid &grid = *m_ui->FGrid;
    for (int column = grid.fixedCols(); row < grid.rows() && column < grid.cols(); ++column)
        cells.push_back({grid.fieldName(column), grid.textMatrix(row, column)});
    return cells;
}

void frmUniversalGrid::AskToSaveRow()
{
    m_rowDirty = false; // first, since formatting the rows anew serves clicks
    if (!askYesNo(engine.textSaveChanges)) {
        cmdRefresh_Click();
        if (m_primary && m_primary->isOpen())
            m_primary->cancelBatch();
        return;
    }
    const std::vector<CellText> typed = cellsOf(m_prevRow);
    const int shown = m_formatRun;
    const bool saved = [&] {
        const ProgressLine waiting(m_ui->Label1, workName(Work::Waiting));
        return SaveRowChanges({m_tableName, m_currentTable, m_primary, typed}, m_auditAction);
    }();
    if (shown != m_formatRun) { // without its filter the set has given the grid all rows anew
        if (!showRows())
            return;
        keepTyped(typed);
    }
    showMessage(saved ? u"Update successful  تمت عملية التحديث بنجاح"_s : u"Error حدث خطأ"_s);
}

/// What was typed into a row that could not be saved stands there until the rows are read anew.
void frmUniversalGrid::keepTyped(const std::vector<CellText> &typed)
{
    const auto key = std::ranges::find(typed, u"transactionid"_s, &CellText::fieldName);
    FlexGrid &grid = *m_ui->FGrid;
    const int row = key == typed.end() ? grid.rows() : rowOf(key->text, m_prevRow);
    if (row == grid.rows())
        return;
    for (const auto &[field, text] : typed) {
        if (grid.textMatrix(row, grid.columnOf(field)) != text)
            grid.setTextMatrix(row, grid.columnOf(field), text);
    }
}

int frmUniversalGrid::rowOf(const QString &transaction, int likely) const
{
    const FlexGrid &grid = *m_ui->FGrid;
    if (likely < grid.rows() && GridFieldValue(likely, u"transactionid"_s) == transaction)
        return likely;
    const int column = grid.columnOf(u"transactionid"_s);
    int row = grid.fixedRows();
    while (column >= 0 && row < grid.rows() && grid.textMatrix(row, column) != transaction)
        ++row;
    return column < 0 ? grid.rows() : row;
}

// --- adding and cancelling

void frmUniversalGrid::cmdAdd_Click()
{
    if (m_tableName.startsWith(u"general"))
        go(navigation.showRevenueBeside);
}

void frmUniversalGrid::mnuDelete_Click()
{
    if (!m_tableName.startsWith(u"general"))
        return;
    if (!m_cellPicked)
        return showMessage(engine.isArabic ? u"يجب الإختيار أولاً"_s : u"you have to select first!"_s);
    const int row = m_ui->FGrid->row();
    GetTransactionId(row);
    if (!askYesNo(u"Do you want to delete??  سوف يتم إلغاء هذه العمليه "_s + engine.textAreYouSure))
        return;
    // A formatted cell holds another word, so that a transaction can be cancelled again: that is meant.
    const QString valid = GridFieldValue(row, u"valid"_s);
    if (valid.toUpper() == u"INVALID" || valid == u"ملغي")
        return showMessage(engine.isArabic ? u"هذه العمليه ملغيه أصلاً!"_s : u"Entry already deleted!"_s);
    {
        const ProgressLine waiting(m_ui->Label1, workName(Work::Waiting));
        cancelTransaction(m_tableName, m_currentTable, m_currentTransaction, m_auditAction);
    }
    cmdRefresh_Click();
}
