#include "browser/frmUniversalGrid.h"
#include "platform/runtime/numbers.h"
#include "platform/ui/hourglass.h"
#include "ui_frmUniversalGrid.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

void frmUniversalGrid::GetTransactionId(int row)
{
    const int column = m_ui->FGrid->columnOf(u"transactionid"_s);
    if (column >= 0)
        m_currentTransaction = toLongInteger(m_ui->FGrid->textMatrix(row, column));
}

QString frmUniversalGrid::GridFieldValue(int row, const QString &fieldName) const
{
    for (int column = m_ui->FGrid->cols() - 1; column >= m_ui->FGrid->fixedCols(); --column) {
        if (m_ui->FGrid->fieldName(column) == fieldName)
            return m_ui->FGrid->textMatrix(row, column);
    }
    return {};
}

// --- picking

void frmUniversalGrid::FGrid_Click(int row, int column)
{
    FlexGrid &grid = *m_ui->FGrid;
    grid.setCellBackColor(row, column, grid.palette().color(QPalette::Highlight));
    if (m_cellPicked && (row != m_prevRow || column != m_prevCol)) {
        m_rowChanged = row != m_prevRow;
        leavePickedCell();
    }
    if (m_rowDirty && m_rowChanged) {
        const QString transaction = GridFieldValue(row, u"transactionid"_s);
        const QString field = grid.fieldName(column);
        AskToSaveRow();
        if (isLoaded())
            pickAgain(transaction, row, field); // the rows may have been read anew
        return;
    }
    takePick(row, column);
}

void frmUniversalGrid::takePick(int row, int column)
{
    m_cellPicked = true;
    m_prevRow = row;
    m_prevCol = column;
    m_prevCellText = m_ui->FGrid->textMatrix(row, column);
}

void frmUniversalGrid::pickAgain(const QString &transaction, int likely, const QString &field)
{
    FlexGrid &grid = *m_ui->FGrid;
    const int found = rowOf(transaction, likely);
    const int row = found < grid.rows() ? found : grid.fixedRows();
    const int column = std::max(grid.fixedCols(), grid.columnOf(field));
    grid.setCell(row, column);
    grid.setCellBackColor(row, column, grid.palette().color(QPalette::Highlight));
    takePick(row, column);
}

void frmUniversalGrid::leavePickedCell()
{
    if (m_prevRow < m_ui->FGrid->rows() && m_prevCol < m_ui->FGrid->cols()) // a filter may have taken it away
        m_ui->FGrid->setCellBackColor(m_prevRow, m_prevCol, m_normalBackColor);
    m_ui->DGrid->hide();
}

void frmUniversalGrid::followColumn(int from, int to)
{
    const auto moved = [from, to](int column) {
        if (column == from)
            return to;
        if (column < std::min(from, to) || column > std::max(from, to))
            return column;
        return from < to ? column - 1 : column + 1; // it makes room
    };
    m_prevCol = moved(m_prevCol);
    m_editCol = qint16(moved(m_editCol));
    placeEditor();
}

void frmUniversalGrid::FGrid_MouseUp(const QPoint &position)
{
    if (!m_tableName.contains(u"audit_"_s))
        m_ui->mnuPopup->popup(m_ui->FGrid->mapToGlobal(position));
}

// --- sorting

void frmUniversalGrid::FGrid_DblClick(int row, int column)
{
    const bool edits = m_ui->mnuModify->isChecked();
    if (edits && row < m_ui->FGrid->fixedRows()) { // a heading's double click edits the current row
        FGrid_Click(m_ui->FGrid->row(), column);
        row = m_ui->FGrid->row(); // a save has read the rows anew
    }
    if (!isLoaded()) // closed meanwhile
        return;
    if (m_cellPicked)
        leavePickedCell();
    if (edits)
        return openEditor(row, column);
    if (row >= m_ui->FGrid->fixedRows())
        return;
    m_sortType = qint16(column == m_sortCol ? m_sortType % 2 + 1 : 1);
    m_sortCol = qint16(column);
    DoColumnSort();
}

void frmUniversalGrid::DoColumnSort()
{
    const Hourglass hourglass;
    m_ui->FGrid->setRedraw(false);
    m_ui->FGrid->sort(m_sortCol, m_sortType == 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
    m_ui->FGrid->setRedraw(true);
}
