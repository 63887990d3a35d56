#pragma once

#include "platform/ui/flex_grid.h"
#include "platform/ui/flex_grid_texts.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>

#include <functional>
#include <vector>

/// The grid's texts and looks. Its rows are the rows of data as they stand: grid row 1 is model row 0. Its
/// columns are sections, which keep their numbers when the user moves them.
class FlexGrid::Model : public QAbstractTableModel
{
public:
    /// `reloaded` is called after each reload, once the model stands.
    Model(FlexGrid *grid, std::function<void()> reloaded);
    ~Model() override;

    void bind(const RecordsetPtr &source);
    void setFixedCols(int count);
    int fixedCols() const { return m_fixedCols; }
    bool hasRows() const { return m_rows && m_rows->count() > 0; }

    QString text(int row, int column) const { return texts(column).text(sourceRow(row)); }
    void setText(int row, int column, const QString &text);
    const ColumnTexts &texts(int column) const { return m_columns[size_t(column)].texts; }
    void setFormat(int column, ColumnFormat format);
    const QString &heading(int column) const { return m_columns[size_t(column)].heading; }
    void setHeading(int column, const QString &heading);
    const QString &fieldName(int column) const { return m_columns[size_t(column)].fieldName; }
    /// Adds columns without a field until there are so many.
    void growTo(int columns);
    void setAlignment(int column, Qt::Alignment alignment);
    void sort(int column, Qt::SortOrder order) override;
    void setRowColor(int row, const QColor &color);
    void setCellColor(int row, int column, const QColor &color);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Column {
        QString heading = {};
        QString fieldName = {};
        Qt::Alignment alignment = Qt::AlignLeading;
        ColumnTexts texts = {};
        QHash<int, QColor> colors = {}; ///< of cells, by row of the set
    };

    void unbind();
    void reload();
    int sourceRow(int row) const { return m_order.empty() ? row : m_order[size_t(row)]; }
    QColor backColor(int row, int column) const;
    QVariant shownAlignment(int column) const;
    void changed(int row, int column);

    FlexGrid *m_grid;
    std::function<void()> m_reloaded;
    RecordsetPtr m_source;
    int m_connection = 0;
    std::shared_ptr<const RowsShown> m_rows;
    std::vector<int> m_order; ///< the set's row at each place; empty when they stand as in the set
    int m_fixedCols = 1;
    std::vector<Column> m_columns;
    QHash<int, QColor> m_rowColors; ///< by place
};
