#include "platform/ui/flex_grid.h"

#include "platform/ui/flex_grid_headings.h"
#include "platform/ui/flex_grid_model.h"
#include "platform/ui/twips.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>

#include <utility>

namespace
{
constexpr int fixedColWidth = 240; // twips
constexpr int headingMargin = 120; // twips, beside a heading
} // namespace

FlexGrid::FlexGrid(QWidget *parent) : TextTable(parent), m_headingMouse(new HeadingMouse(*this))
{
    m_model = std::make_unique<Model>(this, [this] { showReloaded(); });
    setModel(m_model.get());
    setContextMenuPolicy(Qt::PreventContextMenu); // contextMenuWanted() does its work
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        if (index.flags().testFlag(Qt::ItemIsEnabled))
            Q_EMIT cellClicked(index.row() + fixedRows(), columnOf(index));
    });
    connect(this, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex &index) {
        Q_EMIT cellDoubleClicked(index.row() + fixedRows(), columnOf(index));
    });
    connect(horizontalHeader(), &QHeaderView::sectionDoubleClicked, this,
            [this](int section) { Q_EMIT headingDoubleClicked(horizontalHeader()->visualIndex(section)); });
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
    for (int column = 0; column < cols(); ++column) {
        horizontalHeader()->moveSection(horizontalHeader()->visualIndex(column), column);
        setColWidth(column, column < fixedCols() ? fixedColWidth
                                                 : qMax(defaultWidth, headingWidth(column) + headingMargin));
    }
    selectionModel()->setCurrentIndex(m_model->index(0, qMin(fixedCols(), cols() - 1)),
                                      QItemSelectionModel::NoUpdate);
    Q_EMIT reloaded();
}

int FlexGrid::section(int column) const
{
    requireInside(column, cols());
    return horizontalHeader()->logicalIndex(column);
}

int FlexGrid::columnOf(const QModelIndex &index) const
{
    return horizontalHeader()->visualIndex(index.column());
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
            m_model->setAlignment(section(column), Qt::AlignLeading);
        else if (heading.startsWith(u'^'))
            m_model->setAlignment(section(column), Qt::AlignHCenter);
        else if (heading.startsWith(u'>'))
            m_model->setAlignment(section(column), Qt::AlignTrailing);
        if (heading.startsWith(u'<') || heading.startsWith(u'^') || heading.startsWith(u'>'))
            heading.remove(0, 1);
        m_model->setHeading(section(column), heading);
        if (!heading.isEmpty())
            setColWidth(column, headingWidth(column) + headingMargin);
    }
}

QString FlexGrid::textMatrix(int row, int column) const
{
    requireInside(row, rows());
    const int at = section(column);
    return row < fixedRows() ? m_model->heading(at) : m_model->text(row - fixedRows(), at);
}

void FlexGrid::setTextMatrix(int row, int column, const QString &text)
{
    requireInside(row, rows());
    if (row < fixedRows())
        m_model->setHeading(section(column), text);
    else
        m_model->setText(row - fixedRows(), section(column), text);
}

void FlexGrid::setColFormat(int column, ColumnFormat format)
{
    m_model->setFormat(section(column), std::move(format));
}

QString FlexGrid::fieldName(int column) const
{
    return m_model->fieldName(section(column));
}

int FlexGrid::columnOf(const QString &fieldName) const
{
    for (int column = fixedCols(); column < cols(); ++column) {
        if (m_model->fieldName(section(column)).compare(fieldName, Qt::CaseInsensitive) == 0)
            return column;
    }
    return -1;
}

int FlexGrid::headingWidth(int column) const
{
    return twipsFromPixels(
        horizontalHeader()->fontMetrics().horizontalAdvance(m_model->heading(section(column))));
}

std::optional<int> FlexGrid::widestText(int column, const std::function<bool()> &goOn) const
{
    if (!m_widthBounds)
        m_widthBounds = std::make_shared<WidthBounds>(fontMetrics());
    const auto pixels = widestPixels(m_model->texts(section(column)), m_widthBounds, goOn);
    return pixels ? std::optional(twipsFromPixels(*pixels)) : std::nullopt;
}

void FlexGrid::sort(int column, Qt::SortOrder order)
{
    m_model->sort(section(column), order);
}

void FlexGrid::moveColumn(int from, int to)
{
    requireInside(from - fixedCols(), cols() - fixedCols());
    requireInside(to - fixedCols(), cols() - fixedCols());
    horizontalHeader()->moveSection(from, to);
}

void FlexGrid::setColumnDragging(int twips)
{
    horizontalHeader()->setSectionsClickable(false);
    m_headingMouse->setDragging(twips, [this](int from, int to) {
        if (m_model->hasRows())
            moveColumn(from, to);
    });
}

int FlexGrid::row() const
{
    return currentIndex().isValid() ? currentIndex().row() + fixedRows() : fixedRows();
}

int FlexGrid::col() const
{
    return currentIndex().isValid() ? columnOf(currentIndex()) : fixedCols();
}

void FlexGrid::setCell(int row, int column)
{
    requireInside(row, rows());
    requireInside(column, cols());
    setCurrentIndex(m_model->index(qMax(0, row - fixedRows()), section(qMax(column, fixedCols()))));
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

QRect FlexGrid::cellRect(int row, int column) const
{
    requireInside(row, rows());
    const int at = section(column);
    const QWidget &area = row < fixedRows() ? *horizontalHeader()->viewport() : *viewport();
    const QRect cell = row < fixedRows()
                           ? QRect(columnViewportPosition(at), 0, columnWidth(at), area.height())
                           : visualRect(m_model->index(row - fixedRows(), at));
    const QRect seen = cell & area.rect();
    return seen.isEmpty() ? QRect() : QRect(area.mapTo(this, seen.topLeft()), seen.size());
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
    if (row >= fixedRows())
        m_model->setCellColor(row - fixedRows(), section(column), color);
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

void FlexGrid::keyPressEvent(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const QKeyCombination keys(modifiers, Qt::Key(event->key()));
    const int right = isRightToLeft() ? -1 : 1;
    if (event->key() == Qt::Key_Menu || keys == (Qt::SHIFT | Qt::Key_F10)) {
        scrollTo(currentIndex());
        Q_EMIT contextMenuWanted(row(), col(), cellRect(row(), col()).center());
    } else if (keys == Qt::Key_Space || keys == Qt::Key_Enter || keys == Qt::Key_Return) {
        Q_EMIT cellClicked(row(), col());
    } else if (keys == Qt::Key_F3) {
        Q_EMIT headingDoubleClicked(col());
    } else if (keys == (Qt::CTRL | Qt::SHIFT | Qt::Key_Right)) {
        moveCurrentColumn(right);
    } else if (keys == (Qt::CTRL | Qt::SHIFT | Qt::Key_Left)) {
        moveCurrentColumn(-right);
    } else {
        TextTable::keyPressEvent(event);
    }
}

void FlexGrid::moveCurrentColumn(int step)
{
    const int to = col() + step;
    if (!m_headingMouse->isDragging() || to < fixedCols() || to >= cols())
        return;
    moveColumn(col(), to);
    scrollTo(currentIndex());
}

void FlexGrid::mousePressEvent(QMouseEvent *event)
{
    TextTable::mousePressEvent(event);
    const QPoint place = event->position().toPoint();
    const QModelIndex cell = indexAt(place);
    if (event->button() == Qt::RightButton && cell.isValid() && cell == currentIndex())
        Q_EMIT contextMenuWanted(cell.row() + fixedRows(), columnOf(cell), viewport()->mapTo(this, place));
}

void FlexGrid::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        TextTable::mouseDoubleClickEvent(event);
    else
        mousePressEvent(event); // another press
}

void FlexGrid::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        m_widthBounds.reset();
    TextTable::changeEvent(event);
}
