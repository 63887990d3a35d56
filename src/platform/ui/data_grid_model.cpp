#include "platform/ui/data_grid_model.h"

#include "platform/ui/cell_text.h"

#include <QtWidgets/QWidget>

void DataGridModel::bind(std::shared_ptr<const RowsShown> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    m_columns.clear();
    if (m_rows) {
        for (const FieldInfo &field : m_rows->fields())
            m_columns.push_back({field.name, alignmentOf(field.type), {}});
    }
    endResetModel();
}

void DataGridModel::setRows(std::shared_ptr<const RowsShown> rows)
{
    const bool sameCount = rows->count() == rowCount();
    if (!sameCount)
        beginResetModel();
    m_rows = std::move(rows);
    if (!sameCount)
        endResetModel();
    else if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

QString DataGridModel::text(int row, int column) const
{
    return formatted(value(row, column), m_columns[size_t(column)].format);
}

int DataGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_rows ? 0 : m_rows->count();
}

int DataGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant DataGridModel::data(const QModelIndex &index, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return isolated(inOneLine(text(index.row(), index.column())), m_grid->layoutDirection());
    case Qt::AccessibleTextRole:
        return text(index.row(), index.column());
    case Qt::TextAlignmentRole:
        return shownAlignment(index.column());
    default:
        return {};
    }
}

QVariant DataGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return rowHeading(section, role);
    if (role == Qt::DisplayRole)
        return isolated(m_columns[size_t(section)].caption, m_grid->layoutDirection());
    if (role == Qt::AccessibleTextRole)
        return m_columns[size_t(section)].caption;
    if (role == Qt::TextAlignmentRole)
        return shownAlignment(section);
    return {};
}

QVariant DataGridModel::shownAlignment(int column) const
{
    return QVariant::fromValue(
        absoluteAlignment(m_columns[size_t(column)].alignment, m_grid->layoutDirection()));
}
