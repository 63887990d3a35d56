#pragma once

#include "platform/database/recordset.h"
#include "platform/ui/text_table.h"

#include <QtGui/QColor>

#include <functional>
#include <memory>
#include <optional>

class HeadingMouse;
class WidthBounds;

/// How a column writes the values of its field.
struct ColumnFormat {
    std::function<QString(const Value &value)> text = {};
    /// For fields of numbers and dates: values with the same pattern give texts that differ in digits alone.
    /// Without it every text is written when the column's widest one is looked for.
    std::function<int(qint64 number)> pattern = {};
};

/// The read-only grid of texts over a recordset: one fixed row of headings, each column with a field name
/// beside its visible heading. It does not move the recordset. Binding, and every change of the bound set's
/// rows, reloads texts, headings (the raw field names), default widths (wide enough for the heading), the
/// order of rows and columns, and drops formats and colours of cells; colours of rows stay. A set without
/// rows shows one blank row of data, and a closed one leaves the texts that it showed. Rows and columns count
/// from 0 as they stand in the grid now; row 0 is the heading row and rows of data begin at fixedRows(). No
/// cell of the fixed column is ever the current one.
///
/// Texts are read and formatted when they are shown. In a grid from right to left, amounts, numbers and dates
/// are drawn as they are written; textMatrix() and the clipboard give them without the marks that this takes.
///
/// Keys: Ctrl+C copies the selected cells, the menu key and Shift+F10 ask for the context menu of the current
/// cell, Space and Enter click the current cell, F3 double-clicks the heading of the current column,
/// Ctrl+Shift with Left or Right moves the current column where columns can be dragged.
///
/// A row or column outside the grid throws RuntimeError 9.
class FlexGrid : public TextTable
{
    Q_OBJECT

public:
    explicit FlexGrid(QWidget *parent = nullptr);
    ~FlexGrid() override;

    /// Binds to a set; null unbinds and leaves the shown texts.
    void setDataSource(const RecordsetPtr &source);

    int rows() const; ///< the heading row among them
    int cols() const; ///< the fixed one among them
    int fixedRows() const { return 1; }
    int fixedCols() const;
    void setFixedCols(int count); ///< before binding; 0 or 1 empty columns in front of the data

    /// `|`-separated headings from column 0 on; `<`, `^` and `>` in front of one align its column.
    void setFormatString(const QString &headings);

    QString textMatrix(int row, int column) const; ///< row 0 gives the visible heading
    /// Writes over what the grid shows there; the set is not written. A reload takes it back.
    void setTextMatrix(int row, int column, const QString &text);
    /// Writes a column's values by a format from now on, in place of their plain texts.
    void setColFormat(int column, ColumnFormat format);
    QString fieldName(int column) const;          ///< ColHeaderCaption
    int columnOf(const QString &fieldName) const; ///< -1 when there is none

    /// The width of a column's heading in the font of the headings, in twips.
    int headingWidth(int column) const;
    /// The width of the widest text among a column's rows of data, in twips; exact, though only texts that
    /// may be the widest are measured. `goOn` is called after each short piece of the work; when it returns
    /// False, nothing is returned and the grid is not used any more.
    std::optional<int> widestText(int column, const std::function<bool()> &goOn) const;

    /// Orders the rows of data by the shown texts of a column: empty texts first, then numbers by their
    /// value, then other texts without regard to case; equal ones keep their order. A reload takes it back.
    void sort(int column, Qt::SortOrder order);
    /// ColPosition: moves a column with all that belongs to it, but not from or to the fixed one.
    void moveColumn(int from, int to);
    /// Lets the user drag columns by their headings: a press that moves this far (twips, across plus down)
    /// while it stays on the heading row, dropped on another heading. Nothing moves in a grid without rows.
    /// A click on a heading selects no column then.
    void setColumnDragging(int twips);

    int row() const; ///< of the current cell; the first row of data at the start
    int col() const;
    void setCell(int row, int column); ///< Row and Col: the current cell
    int topRow() const;
    void setTopRow(int row); ///< clamped to the rows

    /// The rectangle of a cell inside the grid, in pixels; empty when it is scrolled out of view.
    QRect cellRect(int row, int column) const;

    /// These colours are for rows of data; an invalid colour takes them back.
    void setRowBackColor(int row, const QColor &color);
    void setCellBackColor(int row, int column, const QColor &color);
    void setHeadingBold(bool bold);
    void setRedraw(bool on); ///< off: nothing is painted until it is on again

Q_SIGNALS:
    /// Texts, headings and widths are the set's own again: who had rewritten them does it anew.
    void reloaded();
    /// A left click on a cell of data, or its key; the cell is the current one.
    void cellClicked(int row, int column);
    /// The right button on a cell of data or on a heading (row 0), or the menu key; a cell of data has become
    /// the current one. The position is the grid's own, for a menu.
    void contextMenuWanted(int row, int column, const QPoint &position);
    void headingDoubleClicked(int column);
    void cellDoubleClicked(int row, int column);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    class Model;
    int section(int column) const; ///< of the model, by where it stands
    int columnOf(const QModelIndex &index) const;
    void showReloaded();
    void moveCurrentColumn(int step);

    std::unique_ptr<Model> m_model;
    HeadingMouse *m_headingMouse;
    mutable std::shared_ptr<WidthBounds> m_widthBounds; ///< in the grid's font; null: none yet
};
