#pragma once

#include "browser/corrections.h"
#include "browser/filters.h"
#include "platform/database/recordset.h"
#include "platform/ui/screen.h"

#include <QtGui/QColor>

#include <functional>
#include <limits>
#include <memory>
#include <vector>

class QAction;

namespace Ui
{
class frmUniversalGrid;
}

/// The browser: one table of the store in a grid, or one of the table's archives, with what the table allows:
/// filters, a range of dates, search, sorting, totals, a transaction's shares under its row, corrections and
/// cancels of transactions, and the moves of rows to archives and back. The table is
/// `engine.browseTable` when the screen is loaded. Several browsers stand side by side, each with rows of its
/// own.
///
/// Reading a long table shows how far it is, and fitting its columns serves events: the screen can be closed
/// in the middle of it, and a command that changes the rows then takes the place of the one before.
class frmUniversalGrid : public Screen
{
    Q_OBJECT

public:
    frmUniversalGrid();
    ~frmUniversalGrid() override;
    void saveTyped() override;

protected:
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Resize() override;
    /// F2 edits the current cell; Enter takes what an open editor holds, Escape leaves it.
    bool Form_KeyDown(QKeyEvent *event) override;

private:
    // Events
    void FGrid_Click(int row, int column);
    void FGrid_DblClick(int row, int column);
    void FGrid_MouseUp(const QPoint &position);
    void DGrid_LostFocus();
    void DGrid_Change();
    void ArchivesList_Click();
    void btnSearch_Click();
    void btnDateSelect_Click();
    void cmdRefresh_Click();
    void cmdAdd_Click();
    void btnPrint_Click();
    void cmdExcell_Click();
    void cmdClose_Click();
    void mnuExit_Click();
    void mnuValid_Click() { chooseFilter(Filters::Valid::Valid); }
    void mnuInValid_Click() { chooseFilter(Filters::Valid::Invalid); }
    void mnuBothValid_Click() { chooseFilter(Filters::Valid::Both); }
    void mnuRevenues_Click() { chooseFilter(Filters::Credit::Revenues); }
    void mnuExpenses_Click() { chooseFilter(Filters::Credit::Expenses); }
    void mnuBothCreditOrDebit_Click() { chooseFilter(Filters::Credit::Both); }
    void mnuAll_Click() { checkNames(true); }
    void mnuNone_Click() { checkNames(false); }
    void mnuSelect_Click();
    void mnuTotal_Click();
    void mnuTotals_Click();
    void mnuDetails_Click();
    void mnuDelete_Click();
    void mnuModify_Click();
    void mnuArchive_Click();
    void mnuDeArchive_Click();
    void mnuFont_Click();

    void connectCommands();
    /// Runs a command while the screen has rows. A failure that the command does not trap is told by its text
    /// and nothing else happens: the other open screens go on working.
    void run(const std::function<void()> &command);
    void loadRows();

    // Set-up at load
    void setModes();
    void buildNamesMenu();
    void fillArchivesList();

    // The rows on show
    RecordsetPtr openRows(const QString &statement);
    void bind(const RecordsetPtr &rows);
    /// After each change of rows: headings, count, formats and widths. False when the screen was closed
    /// meanwhile or the rows have changed once more: then the caller has nothing left to do.
    bool showRows(const QString &arabicPrefix = QStringLiteral("المجموع "));
    bool FormatFlexGrid();

    // Filters
    void chooseFilter(Filters::Valid item);
    void chooseFilter(Filters::Credit item);
    void filterRows(const Filters &chosen, const QString &filter);
    void showMarks();
    void checkNames(bool on);
    QStringList checkedNames() const;

    void showDateRange(const QString &from, const QString &to);
    void setRange(const QString &from, const QString &to);

    // Archives
    void showArchivesList();
    void restoreArchivesList();
    void removeListEntry();
    bool showTable(const QString &table, const QString &statement, const QString &caption);
    bool showBaseTable();
    static bool isBelowTopRank();

    // Corrections
    void openEditor(int row, int column);
    void editKind();
    void showEditor(QWidget *editor);
    void placeEditor();
    /// Takes what the open editor holds into its cell, as leaving it does.
    void closeEditor();
    /// Leaves the open editor without a change.
    void leaveEditor();
    void followFocus(const QWidget *now);
    void AskToSaveRow();
    std::vector<CellText> cellsOf(int row) const;
    void keepTyped(const std::vector<CellText> &typed);
    /// The row of a transaction, the likely one if it may be; rows() when there is none.
    int rowOf(const QString &transaction, int likely) const;
    /// Picks a cell by its transaction and field once the rows were read anew; without it the first row's.
    void takePick(int row, int column);
    void pickAgain(const QString &transaction, int likely, const QString &field);

    void DoColumnSort();
    void leavePickedCell();
    /// Keeps pick and editor with their cells when a column is moved.
    void followColumn(int from, int to);
    bool mayTotal() const;
    void showTotals(const QString &statement, const QString &heading);
    void FormatDetailsGrid();
    void placeDetailsGrid();

    /// Keeps the number of the transaction in a row of the grid.
    void GetTransactionId(int row);
    /// A cell's text; empty when no column has that field. The last of two equal names is taken.
    QString GridFieldValue(int row, const QString &fieldName) const;

    void placeButtons();
    void placeGrid();

    std::unique_ptr<Ui::frmUniversalGrid> m_ui;
    QList<QAction *> m_mnuName;

    QString m_tableName;    ///< the logical table
    QString m_currentTable; ///< the physical table shown: that one or an archive of it
    RecordsetPtr m_primary; ///< datPrimaryRS: the rows shown; null until they are read
    RecordsetPtr m_saved;   ///< savedRS: the rows from before the range of dates
    RecordsetPtr m_detail;  ///< detailRS
    bool m_dateRangeOn = false;
    Filters m_filters;

    qint16 m_sortCol = 0;
    qint16 m_sortType = 0; ///< 1 ascending, 2 descending
    QColor m_normalBackColor;
    bool m_cellPicked = false; ///< since the load or the last change of table
    int m_prevRow = 0;         ///< the cell picked last
    int m_prevCol = 0;
    QString m_prevCellText;
    bool m_rowChanged = false; ///< the picked row was left for another one
    bool m_rowDirty = false;   ///< an edit has changed a cell of the picked row
    qint32 m_currentTransaction = 0;
    QString m_auditAction;
    QWidget *m_editor = nullptr; ///< the editor that is open over a cell
    qint16 m_editRow = 0;
    qint16 m_editCol = 0;

    int m_listHeight = 30;                                  ///< room above the grid, in twips
    int m_totalWidth = std::numeric_limits<int>::max() / 2; ///< of the columns, in twips; not fitted yet
    int m_detailsWidth = 0;                                 ///< the same of the details
    int m_formatRun = 0; ///< counts the changes of rows and formats, so that an older formatting ends
    QObject m_toTheEnd;  ///< goes before the controls, which tell of scrolling and focus even as they go
};
