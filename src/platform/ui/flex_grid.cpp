#include "platform/ui/flex_grid.h"

#include "platform/runtime/runtime_error.h"
#include "platform/ui/flex_grid_model.h"
#include "platform/ui/twips.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int defaultWidth = 960;  // twips
constexpr int fixedColWidth = 240; // twips
constexpr int headingMargin = 120; // twips, beside a heading of a format string
constexpr int rowMargin = 6;       // pixels above and below a line together

void requireInside(int index, int count)
{
    if (index < 0 || index >= count)
        throw runtime_errors::outOfRange();
}
} // namespace

FlexGrid::FlexGrid(QWidget *parent) : QTableView(parent)
{
    m_model = std::make_unique<Model>(this, [this] { showReloaded(); });
    setModel(m_model.get());
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ContiguousSelection);
    setTabKeyNavigation(false); // Tab leaves the grid
    setWordWrap(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(1);
    fitRowHeight();
}

FlexGrid::~FlexGrid()
{
    setModel(nullptr); // it goes before the view does
}

void FlexGrid::setDataSource(const RecordsetPtr &source)
{
    m_model->bind(source);
}

void FlexGrid::showReloaded()
{
    for (int column = 0; column < cols(); ++column)
        setColWidth(column, column < fixedCols() ? fixedColWidth : defaultWidth);
    selectionModel()->setCurrentIndex(m_model->index(0, qMin(fixedCols(), cols() - 1)),
                                      QItemSelectionModel::NoUpdate);
    Q_EMIT reloaded();
}

int FlexGrid::rows() const
{
    return m_model->rowCount() + fixedRows();
}

int FlexGrid::cols() const
{
    return m_model->columnCount();
}

int FlexGrid::fixedCols() const
{
    return m_model->fixedCols();
}

void FlexGrid::setFixedCols(int count)
{
    m_model->setFixedCols(count);
}

void FlexGrid::setFormatString(const QString &headings)
{
    // Behind a semicolon stand headings of rows, which no grid of the program has.
    const QStringList segments = headings.section(u';', 0, 0).split(u'|');
    m_model->growTo(static_cast<int>(segments.size()));
    for (int column = 0; column < segments.size(); ++column) {
        QString heading = segments[column];
        if (heading.startsWith(u'<'))
            m_model->setAlignment(column, Qt::AlignLeading);
        else if (heading.startsWith(u'^'))
            m_model->setAlignment(column, Qt::AlignHCenter);
        else if (heading.startsWith(u'>'))
            m_model->setAlignment(column, Qt::AlignTrailing);
        if (heading.startsWith(u'<') || heading.startsWith(u'^') || heading.startsWith(u'>'))
            heading.remove(0, 1);
        m_model->setHeading(column, heading);
        if (!heading.isEmpty())
            setColWidth(column, textWidth(heading) + headingMargin);
    }
}

QString FlexGrid::textMatrix(int row, int column) const
{
    requireInside(row, rows());
    requireInside(column, cols());
    return row == 0 ? m_model->heading(column) : m_model->text(row - 1, column);
}

void FlexGrid::setTextMatrix(int row, int column, const QString &text)
{
    requireInside(row, rows());
    requireInside(column, cols());
    if (row == 0)
        m_model->setHeading(column, text);
    else
        m_model->setText(row - 1, column, text);
}

QString FlexGrid::fieldName(int column) const
{
    requireInside(column, cols());
    return m_model->fieldNames()[column];
}

int FlexGrid::columnOf(const QString &fieldName) const
{
    const QStringList &names = m_model->fieldNames();
    for (int column = fixedCols(); column < names.size(); ++column) {
        if (names[column].compare(fieldName, Qt::CaseInsensitive) == 0)
            return column;
    }
    return -1;
}

int FlexGrid::colWidth(int column) const
{
    requireInside(column, cols());
    return twipsFromPixels(columnWidth(column));
}

void FlexGrid::setColWidth(int column, int twips)
{
    requireInside(column, cols());
    setColumnWidth(column, pixelsFromTwips(twips));
}

int FlexGrid::textWidth(const QString &text) const
{
    return twipsFromPixels(fontMetrics().horizontalAdvance(text));
}

int FlexGrid::row() const
{
    return currentIndex().isValid() ? currentIndex().row() + fixedRows() : fixedRows();
}

int FlexGrid::col() const
{
    return currentIndex().isValid() ? currentIndex().column() : fixedCols();
}

void FlexGrid::setCell(int row, int column)
{
    requireInside(row, rows());
    requireInside(column, cols());
    setCurrentIndex(m_model->index(qMax(0, row - fixedRows()), column));
}

int FlexGrid::topRow() const
{
    return verticalScrollBar()->value() + fixedRows();
}

void FlexGrid::setTopRow(int row)
{
    updateGeometries(); // the bar's range, also before the grid is first shown
    verticalScrollBar()->setValue(qBound(fixedRows(), row, rows() - 1) - fixedRows());
}

void FlexGrid::setRowBackColor(int row, const QColor &color)
{
    requireInside(row, rows());
    if (row >= fixedRows())
        m_model->setRowColor(row - fixedRows(), color);
}

void FlexGrid::setCellBackColor(int row, int column, const QColor &color)
{
    requireInside(row, rows());
    requireInside(column, cols());
    if (row >= fixedRows())
        m_model->setCellColor(row - fixedRows(), column, color);
}

void FlexGrid::setHeadingBold(bool bold)
{
    QFont heading = horizontalHeader()->font();
    heading.setBold(bold);
    horizontalHeader()->setFont(heading);
}

void FlexGrid::setRedraw(bool on)
{
    setUpdatesEnabled(on);
}

QString FlexGrid::selectedText() const
{
    QModelIndexList cells = selectionModel()->selectedIndexes();
    if (cells.isEmpty() && currentIndex().isValid())
        cells << currentIndex();
    std::sort(cells.begin(), cells.end());
    QString text;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0)
            text += cells[i].row() == cells[i - 1].row() ? u'\t' : u'\n';
        text += m_model->text(cells[i].row(), cells[i].column());
    }
    return text;
}

void FlexGrid::keyPressEvent(QKeyEvent *event)
{
    const bool menu = event->key() == Qt::Key_Menu ||
                      (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    if (event->matches(QKeySequence::Copy))
        QGuiApplication::clipboard()->setText(selectedText());
    else if (menu && contextMenuPolicy() == Qt::CustomContextMenu)
        Q_EMIT customContextMenuRequested(visualRect(currentIndex()).center());
    else
        QTableView::keyPressEvent(event);
}

void FlexGrid::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitRowHeight();
}

void FlexGrid::fitRowHeight()
{
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowMargin);
}
