#include "platform/ui/data_grid.h"

#include "platform/ui/data_grid_model.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QMenuBar>

#include <utility>

DataGrid::DataGrid(QWidget *parent) : DataGrid(std::make_unique<DataGridModel>(), parent) {}

DataGrid::DataGrid(std::unique_ptr<DataGridModel> model, QWidget *parent)
    : TextTable(parent), m_model(std::move(model))
{
    m_model->setGrid(this);
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
