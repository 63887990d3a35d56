#include "platform/ui/text_table.h"

#include "platform/runtime/runtime_error.h"
#include "platform/ui/twips.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>

#include <algorithm>

namespace
{
constexpr int rowMargin = 6; // pixels above and below a line together
}

TextTable::TextTable(QWidget *parent) : QTableView(parent)
{
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
    return twipsFromPixels(columnWidth(column));
}

void TextTable::setColWidth(int column, int twips)
{
    requireInside(column, model()->columnCount());
    setColumnWidth(column, pixelsFromTwips(twips));
}

int TextTable::textWidth(const QString &text) const
{
    return twipsFromPixels(fontMetrics().horizontalAdvance(text));
}

QString TextTable::selectedTexts() const
{
    QModelIndexList cells = selectionModel()->selectedIndexes();
    if (cells.isEmpty() && currentIndex().isValid())
        cells << currentIndex();
    std::sort(cells.begin(), cells.end());
    QString text;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0)
            text += cells[i].row() == cells[i - 1].row() ? u'\t' : u'\n';
        text += cells[i].data(Qt::AccessibleTextRole).toString();
    }
    return text;
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
