#include "platform/ui/flex_grid_model.h"

#include "platform/ui/cell_text.h"

#include <numeric>
#include <utility>

namespace
{
/// Black or white, whichever can be read on that ground.
QColor inkOn(const QColor &ground)
{
    constexpr int middle = 140;
    return qGray(ground.rgb()) < middle ? Qt::white : Qt::black;
}
} // namespace

FlexGrid::Model::Model(FlexGrid *grid, std::function<void()> reloaded)
    : m_grid(grid), m_reloaded(std::move(reloaded))
{
    growTo(m_fixedCols + 1);
}

FlexGrid::Model::~Model()
{
    unbind();
}

void FlexGrid::Model::unbind()
{
    if (m_source)
        m_source->rowsChanged.disconnect(m_connection);
    m_source.reset();
}

void FlexGrid::Model::bind(const RecordsetPtr &source)
{
    unbind();
    if (!source)
        return;
    m_source = source;
    m_connection = source->rowsChanged.connect([this] { reload(); });
    reload();
}

void FlexGrid::Model::setFixedCols(int count)
{
    beginResetModel();
    m_fixedCols = qBound(0, count, 1);
    m_columns.clear();
    endResetModel();
    growTo(m_fixedCols + 1);
}

void FlexGrid::Model::reload()
{
    if (!m_source->isOpen())
        return;
    beginResetModel();
    m_rows = m_source->rowsShown();
    m_order.clear();
    m_columns.assign(size_t(m_fixedCols), {});
    for (const FieldInfo &field : m_rows->fields()) {
        const int index = int(m_columns.size()) - m_fixedCols;
        m_columns.push_back({field.name, field.name, alignmentOf(field.type), {m_rows, index}});
    }
    endResetModel();
    m_reloaded();
}

void FlexGrid::Model::setText(int row, int column, const QString &text)
{
    m_columns[size_t(column)].texts.written.insert(sourceRow(row), text);
    changed(row, column);
}

void FlexGrid::Model::setFormat(int column, ColumnFormat format)
{
    m_columns[size_t(column)].texts.format = std::move(format);
    Q_EMIT dataChanged(index(0, column), index(rowCount() - 1, column));
}

void FlexGrid::Model::setHeading(int column, const QString &heading)
{
    m_columns[size_t(column)].heading = heading;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

void FlexGrid::Model::growTo(int columns)
{
    const int before = columnCount();
    if (columns <= before)
        return;
    beginInsertColumns({}, before, columns - 1);
    m_columns.resize(size_t(columns));
    endInsertColumns();
}

void FlexGrid::Model::setAlignment(int column, Qt::Alignment alignment)
{
    m_columns[size_t(column)].alignment = alignment;
}

void FlexGrid::Model::sort(int column, Qt::SortOrder order)
{
    if (m_order.empty()) {
        m_order.resize(size_t(rowCount()));
        std::iota(m_order.begin(), m_order.end(), 0);
    }
    sortRows(m_order, texts(column), order);
    // No change of the layout: the current cell and the selection stay where they are.
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void FlexGrid::Model::setRowColor(int row, const QColor &color)
{
    if (color.isValid())
        m_rowColors.insert(row, color);
    else
        m_rowColors.remove(row);
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void FlexGrid::Model::setCellColor(int row, int column, const QColor &color)
{
    QHash<int, QColor> &colors = m_columns[size_t(column)].colors;
    if (color.isValid())
        colors.insert(sourceRow(row), color);
    else
        colors.remove(sourceRow(row));
    changed(row, column);
}

void FlexGrid::Model::changed(int row, int column)
{
    Q_EMIT dataChanged(index(row, column), index(row, column));
}

int FlexGrid::Model::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : hasRows() ? m_rows->count() : 1;
}

int FlexGrid::Model::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

Qt::ItemFlags FlexGrid::Model::flags(const QModelIndex &index) const
{
    return index.column() < m_fixedCols ? Qt::NoItemFlags : QAbstractTableModel::flags(index);
}

QColor FlexGrid::Model::backColor(int row, int column) const
{
    if (column < m_fixedCols)
        return m_grid->palette().color(QPalette::Button);
    const QColor cell = m_columns[size_t(column)].colors.value(sourceRow(row));
    return cell.isValid() ? cell : m_rowColors.value(row);
}

QVariant FlexGrid::Model::shownAlignment(int column) const
{
    return QVariant::fromValue(
        absoluteAlignment(m_columns[size_t(column)].alignment, m_grid->layoutDirection()));
}

QVariant FlexGrid::Model::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int row = index.row();
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return isolated(inOneLine(text(row, column)), m_grid->layoutDirection());
    case Qt::AccessibleTextRole:
        return text(row, column);
    case Qt::TextAlignmentRole:
        return shownAlignment(column);
    case Qt::BackgroundRole:
        if (const QColor color = backColor(row, column); color.isValid())
            return color;
        return {};
    case Qt::ForegroundRole:
        if (const QColor color = backColor(row, column); color.isValid())
            return inkOn(color);
        return {};
    default:
        return {};
    }
}

QVariant FlexGrid::Model::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return rowHeading(section, role);
    if (section >= columnCount())
        return {};
    if (role == Qt::DisplayRole)
        return isolated(heading(section), m_grid->layoutDirection());
    if (role == Qt::AccessibleTextRole)
        return heading(section);
    if (role == Qt::TextAlignmentRole)
        return shownAlignment(section);
    return {};
}
