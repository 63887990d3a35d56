#include "platform/ui/data_grid.h"

#include "platform/ui/cell_text.h"

#include <QtCore/QAbstractTableModel>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenuBar>

#include <utility>
#include <vector>

namespace
{
struct Column {
    QString caption;
    Qt::Alignment alignment;
    DataFormat format;
};
} // namespace

class DataGrid::Model : public QAbstractTableModel
{
public:
    explicit Model(const DataGrid *grid) : m_grid(grid) {}

    void bind(std::shared_ptr<const RowsShown> rows)
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

    Column &column(int index) { return m_columns[size_t(index)]; }
    QString text(int row, int column) const
    {
        return formatted(m_rows->value(row, column), m_columns[size_t(column)].format);
    }

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() || !m_rows ? 0 : m_rows->count();
    }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_columns.size());
    }

    QVariant data(const QModelIndex &index, int role) const override
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

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
            return isolated(m_columns[size_t(section)].caption, m_grid->layoutDirection());
        if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
            return shownAlignment(section);
        return {};
    }

private:
    QVariant shownAlignment(int column) const
    {
        return QVariant::fromValue(
            absoluteAlignment(m_columns[size_t(column)].alignment, m_grid->layoutDirection()));
    }

    const DataGrid *m_grid;
    std::shared_ptr<const RowsShown> m_rows;
    std::vector<Column> m_columns;
};

DataGrid::DataGrid(QWidget *parent) : TextTable(parent), m_model(std::make_unique<Model>(this))
{
    setModel(m_model.get());
    connect(m_model.get(), &QAbstractItemModel::dataChanged, this, &DataGrid::changed);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget *, const QWidget *now) { followFocus(now); });
}

DataGrid::~DataGrid()
{
    qApp->disconnect(this);
    setModel(nullptr); // it goes before the view does
}

void DataGrid::setDataSource(const RecordsetPtr &source)
{
    m_model->bind(source ? source->rowsShown() : nullptr);
    for (int column = 0; column < columnCount(); ++column)
        setColWidth(column, defaultWidth);
}

int DataGrid::columnCount() const
{
    return m_model->columnCount();
}

int DataGrid::rowCount() const
{
    return m_model->rowCount();
}

QString DataGrid::caption(int column) const
{
    requireInside(column, columnCount());
    return m_model->column(column).caption;
}

void DataGrid::setCaption(int column, const QString &caption)
{
    requireInside(column, columnCount());
    m_model->column(column).caption = caption;
    Q_EMIT m_model->headerDataChanged(Qt::Horizontal, column, column);
}

void DataGrid::setDataFormat(int column, const DataFormat &format)
{
    requireInside(column, columnCount());
    m_model->column(column).format = format;
    viewport()->update(); // not dataChanged(): the content is the same
}

QString DataGrid::cellText(int column, int bookmark) const
{
    requireInside(column, columnCount());
    requireInside(bookmark - 1, rowCount());
    return m_model->text(bookmark - 1, column);
}

void DataGrid::followFocus(const QWidget *now)
{
    if (!now || now->window() != window() || qobject_cast<const QMenuBar *>(now))
        return;
    const bool inside = now == this || isAncestorOf(now);
    if (std::exchange(m_focused, inside) && !inside)
        Q_EMIT focusLost();
}
