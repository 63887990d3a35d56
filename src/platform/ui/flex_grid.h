#pragma once

#include "platform/database/recordset.h"

#include <QtGui/QColor>
#include <QtWidgets/QTableView>

#include <memory>

/// The read-only grid of texts over a recordset: one fixed row of headings, each column with a field name
/// beside its visible heading. It does not move the recordset. Binding, and every change of the bound set's
/// rows, reloads texts, headings (the raw field names) and default widths; colours of rows stay. A set
/// without rows shows one blank row of data, and a closed one leaves the texts that it showed. Rows and
/// columns count from 0; row 0 is the heading row and rows of data begin at fixedRows().
///
/// Texts are read when they are shown. In a grid from right to left, amounts, numbers and dates are drawn as
/// they are written; textMatrix() and the clipboard give them without the marks that this takes. Ctrl+C
/// copies the selected cells, the menu key asks for the context menu of the current cell.
///
/// A row or column outside the grid throws RuntimeError 9.
class FlexGrid : public QTableView
{
    Q_OBJECT

public:
    explicit FlexGrid(QWidget *parent = nullptr);
    ~FlexGrid() override;

    /// Binds to a set; null unbinds and leaves the shown texts.
    void setDataSource(const RecordsetPtr &source);

    int rows() const;
    int cols() const;
    int fixedRows() const { return 1; }
    int fixedCols() const;
    void setFixedCols(int count); ///< before binding; 0 or 1 empty columns in front of the data

    /// `|`-separated headings from column 0 on; `<`, `^` and `>` in front of one align its column.
    void setFormatString(const QString &headings);

    QString textMatrix(int row, int column) const; ///< row 0 gives the visible heading
    void setTextMatrix(int row, int column, const QString &text);
    QString fieldName(int column) const;          ///< ColHeaderCaption
    int columnOf(const QString &fieldName) const; ///< -1 when there is none

    /// In twips.
    int colWidth(int column) const;
    void setColWidth(int column, int twips);
    /// The width of a text in the grid's font, in twips.
    int textWidth(const QString &text) const;

    int row() const; ///< of the current cell; the first row of data at the start
    int col() const;
    void setCell(int row, int column); ///< Row and Col: the current cell
    int topRow() const;
    void setTopRow(int row); ///< clamped to the rows

    /// These colours are for rows of data; an invalid colour takes them back.
    void setRowBackColor(int row, const QColor &color);
    void setCellBackColor(int row, int column, const QColor &color);
    void setHeadingBold(bool bold);
    void setRedraw(bool on);

Q_SIGNALS:
    /// Texts, headings and widths are the set's own again: who had rewritten them does it anew.
    void reloaded();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    class Model;
    /// The selected cells as lines of texts with tabs between them; the current cell when none is selected.
    QString selectedText() const;
    void showReloaded();
    void fitRowHeight();

    std::unique_ptr<Model> m_model;
};
