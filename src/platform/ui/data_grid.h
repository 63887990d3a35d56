#pragma once

#include "platform/database/recordset.h"
#include "platform/ui/data_format.h"
#include "platform/ui/text_table.h"

#include <memory>

class DataGridModel;

/// The read-only table over a recordset whose columns have captions, widths and data formats. Binding reads
/// the set's rows as they stand then, and gives captions (the field names), widths and formats anew. In a
/// grid from right to left, amounts, numbers and dates are drawn as they are written. Columns count from 0,
/// bookmarks are the ordinals of the rows shown, from 1. A column or bookmark outside throws RuntimeError 9.
class DataGrid : public TextTable
{
    Q_OBJECT

public:
    explicit DataGrid(QWidget *parent = nullptr);
    ~DataGrid() override;

    /// Binds to a set; null empties the grid.
    /// @throws RuntimeError 3704 for a closed set; the grid is then as before
    virtual void setDataSource(const RecordsetPtr &source);

    int columnCount() const;
    int rowCount() const;
    QString caption(int column) const;
    void setCaption(int column, const QString &caption);
    void setDataFormat(int column, const DataFormat &format);
    /// A cell's text as its column's format writes it.
    QString cellText(int column, int bookmark) const;

Q_SIGNALS:
    /// The content of a cell was changed in the grid, which only a BoundGrid lets the user do.
    void changed();
    /// The keyboard focus went from the grid to another control of its window, be it because the grid was
    /// hidden. Menus and other windows do not count.
    void focusLost();

protected:
    DataGrid(std::unique_ptr<DataGridModel> model, QWidget *parent);
    DataGridModel &rows() const { return *m_model; }

private:
    void followFocus(const QWidget *now);

    std::unique_ptr<DataGridModel> m_model;
    bool m_focused = false;
};
