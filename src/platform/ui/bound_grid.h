#pragma once

#include "platform/ui/data_grid.h"

#include <memory>

class BoundGridModel;
class QToolButton;
class RuntimeError;

/// A DataGrid that stays bound to its set: it shows the set's rows as they are now, its current row is the
/// set's, and cells can be edited when the set is updatable. A set that is closed leaves its rows to be read.
///
/// Typing, F2 or a double click edits the current cell; Tab, Enter or leaving the cell sets the field, Escape
/// leaves it as it was. Leaving an edited row updates it, and where the set refuses that the row stays the
/// current one with its edit; Escape outside of a cell takes the edit back. Tab (backwards with Shift) and
/// Enter go to the next cell and from the last column to the next row; Tab leaves the grid at its ends. No
/// row is added or deleted by the grid.
///
/// Columns count from 0; one outside throws RuntimeError 9.
class BoundGrid : public DataGrid
{
    Q_OBJECT

public:
    explicit BoundGrid(QWidget *parent = nullptr);
    ~BoundGrid() override;

    /// Binds to a set; null empties the grid. All columns are free and without buttons then. An edit of the
    /// set before stays there as it is.
    void setDataSource(const RecordsetPtr &source) override;

    /// The user can't edit a locked column.
    void setLocked(int column, bool on);
    /// A button at the end of the current cell while that is in this column; F4 presses it too.
    void setButton(int column, bool on);

    int row() const; ///< of the current cell, from 0; -1 without one
    int col() const;
    /// The current cell inside the grid, as far as it is in view, in pixels.
    QRect cellRect() const;
    /// The current cell's text; empty without one.
    QString text() const;
    /// Sets the field of the current cell from a text, as typing does; an empty one is Null but in a field of
    /// text. False when it could not be: failed() has told why.
    bool setText(const QString &text);

    /// A cell is open, or the current row holds changes that are not written yet.
    bool isEditing() const;
    /// Closes an open cell and updates the row. False when changes are still to be written or were refused:
    /// failed() has told why.
    bool saveRow();

Q_SIGNALS:
    /// The button in the current cell was pressed.
    void buttonClick(int column);
    /// Another cell is the current one.
    void rowColChange();
    /// A field could not be set or the row not be updated; 3712 when a handler of the set has refused it.
    /// What was typed into a cell stands there again behind this, to be mended.
    void failed(const RuntimeError &error);

protected:
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void keyPressEvent(QKeyEvent *event) override;
    void updateEditorGeometries() override;
    void scrollContentsBy(int dx, int dy) override;

private:
    class Cursor;
    class CellEditing;
    struct RefusedEntry;

    void disconnectSource();
    void showRows();
    void followSource();
    bool goTo(const QModelIndex &index);
    bool step(int cells);
    bool isRowEdited() const;
    void cancelRow();
    void keepEntry(const QModelIndex &cell, const QString &typed, const RuntimeError &error);
    void offerEntry();
    void placeButton();

    BoundGridModel *m_rows;
    CellEditing *m_editing;
    QToolButton *m_button;
    int m_moved = 0; ///< connections to events of the source
    int m_rowsChanged = 0;
    int m_fieldChanged = 0;
    std::unique_ptr<RefusedEntry> m_refused;
};
