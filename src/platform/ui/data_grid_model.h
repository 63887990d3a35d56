#pragma once

#include "platform/database/rows_shown.h"
#include "platform/ui/data_format.h"

#include <QtCore/QAbstractTableModel>

#include <memory>
#include <vector>

class QWidget;

/// The rows behind a DataGrid, with a caption and a format for each column.
class DataGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Column {
        QString caption;
        Qt::Alignment alignment;
        DataFormat format;
        bool locked = false;
        bool button = false;
    };

    /// Texts are drawn for the direction of that grid.
    void setGrid(const QWidget *grid) { m_grid = grid; }
    /// Shows these rows, with new columns; null for none.
    void bind(std::shared_ptr<const RowsShown> rows);
    /// Shows these rows of the same fields; the columns stay.
    void setRows(std::shared_ptr<const RowsShown> rows);

    Column &column(int index) { return m_columns[size_t(index)]; }
    const Column &column(int index) const { return m_columns[size_t(index)]; }
    QString text(int row, int column) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

protected:
    virtual Value value(int row, int column) const { return m_rows->value(row, column); }

private:
    QVariant shownAlignment(int column) const;

    const QWidget *m_grid = nullptr;
    std::shared_ptr<const RowsShown> m_rows;
    std::vector<Column> m_columns;
};
