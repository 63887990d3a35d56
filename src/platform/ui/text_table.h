#pragma once

#include <QtWidgets/QTableView>

/// What the grids have in common: a read-only table of texts whose rows are as high as the font needs and
/// whose columns are measured in twips. Ctrl+C copies the selected cells, or the current one, as lines with
/// tabs (their Qt::AccessibleTextRole); the menu key and Shift+F10 ask for the context menu at the current
/// cell. Tab leaves the table. Columns count from 0 as they stand; one outside throws RuntimeError 9.
class TextTable : public QTableView
{
    Q_OBJECT

public:
    explicit TextTable(QWidget *parent = nullptr);

    int colWidth(int column) const; ///< twips
    void setColWidth(int column, int twips);
    /// The width of a text in the table's font as a cell shows it, in one line, in twips.
    int textWidth(const QString &text) const;

protected:
    static constexpr int defaultWidth = 960; ///< of a column, in twips
    /// @throws RuntimeError 9 for an index outside of 0 to count - 1
    static void requireInside(int index, int count);

    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QString selectedTexts() const;
    void fitRowHeight();
};
