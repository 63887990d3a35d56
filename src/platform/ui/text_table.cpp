#include "platform/ui/text_table.h"

#include "platform/runtime/runtime_error.h"
#include "platform/ui/cell_delegate.h"
#include "platform/ui/cell_text.h"
#include "platform/ui/twips.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>

#include <algorithm>
#include <set>

namespace
{
constexpr int rowMargin = 6; // pixels above and below a line together
}

TextTable::TextTable(QWidget *parent) : QTableView(parent)
{
    setItemDelegate(new CellDelegate(this));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ContiguousSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(1);
    fitRowHeight();
}

void TextTable::requireInside(int index, int count)
{
    if (index < 0 || index >= count)
        throw runtime_errors::outOfRange();
}

int TextTable::colWidth(int column) const
{
    requireInside(column, model()->columnCount());
    return twipsFromPixels(columnWidth(horizontalHeader()->logicalIndex(column)));
}

void TextTable::setColWidth(int column, int twips)
{
    requireInside(column, model()->columnCount());
    setColumnWidth(horizontalHeader()->logicalIndex(column), pixelsFromTwips(twips));
}

int TextTable::textWidth(const QString &text) const
{
    return twipsFromPixels(fontMetrics().horizontalAdvance(inOneLine(text)));
}

QString TextTable::selectedTexts() const
{
    // A rectangle of cells as they stand: as one range, or one for each column that was moved.
    QItemSelection ranges = selectionModel()->selection();
    if (ranges.isEmpty() && currentIndex().isValid())
        ranges.select(currentIndex(), currentIndex());
    std::set<int> columns;
    int top = model()->rowCount();
    int bottom = -1;
    for (const QItemSelectionRange &range : ranges) {
        top = std::min(top, range.top());
        bottom = std::max(bottom, range.bottom());
        for (int section = range.left(); section <= range.right(); ++section) {
            if (model()->flags(model()->index(0, section)).testFlag(Qt::ItemIsSelectable))
                columns.insert(horizontalHeader()->visualIndex(section));
        }
    }
    QStringList lines;
    for (int row = top; row <= bottom; ++row) {
        QStringList texts;
        for (const int column : columns) {
            const QModelIndex cell = model()->index(row, horizontalHeader()->logicalIndex(column));
            texts << cell.data(Qt::AccessibleTextRole).toString();
        }
        lines << texts.join(u'\t');
    }
    return lines.join(u'\n');
}

void TextTable::keyPressEvent(QKeyEvent *event)
{
    const bool menu = event->key() == Qt::Key_Menu ||
                      (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    if (event->matches(QKeySequence::Copy))
        QGuiApplication::clipboard()->setText(selectedTexts());
    else if (menu && contextMenuPolicy() == Qt::CustomContextMenu)
        Q_EMIT customContextMenuRequested(visualRect(currentIndex()).center());
    else
        QTableView::keyPressEvent(event);
}

void TextTable::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitRowHeight();
}

void TextTable::fitRowHeight()
{
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowMargin);
}
