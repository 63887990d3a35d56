#pragma once

#include "platform/database/recordset.h"
#include "platform/report/report.h"
#include "platform/ui/screen.h"
#include "statements/statement_sql.h"

#include <array>

class QAction;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

/// What the statement of a member and that of the family have in common: the side, months or rows, the range
/// of dates, and the rows that were shown last, which stay open for the export until the next Show or the
/// end of the screen.
class StatementScreen : public Screen
{
    Q_OBJECT

public:
    explicit StatementScreen(const QString &name);
    ~StatementScreen() override;

protected:
    /// Takes the controls of the Designer file over. For the constructor, behind setupUi().
    template <typename Ui>
    void takeControls(const Ui &ui);

    void Form_Unload() override;

    virtual void Option1_Click(int index) = 0;
    virtual void ArchivesList_Click() = 0;
    virtual void cmdShow_Click() = 0;
    virtual void cmdExcell_Click() = 0;
    /// Writes the statement of the screen's state to `engine.strSql`.
    virtual void makeSql() = 0;
    /// The dialog of dates was cancelled while dates were chosen.
    virtual void forgetDates() = 0;

    /// The state at load: row by row, over all dates.
    void beginStatement();
    /// Empties the number of rows found.
    void clearCount();
    void closeStatement();
    /// Opens `engine.strSql` and shows the number of rows; without any it says so and returns false.
    /// @throws RuntimeError as the store does
    bool openStatement();
    /// Whether there are rows to export; if not, tells so and goes to the button to begin with.
    bool mayExport();

    std::optional<StatementDates> dates() const;
    /// The chosen range in the session's language; empty without one.
    QString rangeLine() const;
    /// Shows the open rows by a report in the session's language and font.
    /// @throws RuntimeError 8526 when a field of the design is not among the rows
    void showStatement(Report report, const QString &caption, const QString &title);

    bool m_monthly = false;
    bool m_datesChosen = false;
    RecordsetPtr m_rsStatement;

private:
    struct Controls {
        QLabel *dateFrom, *dateTo, *count;
        QPushButton *dates, *show, *excell, *exit;
        std::array<QRadioButton *, 3> options;
        QComboBox *archives;
        QAction *monthly, *font, *mnuExit;
    };
    void setUp();

    void mnuMonthly_Click();
    void mnuFont_Click();
    void mnuExit_Click();
    void Command3_Click();
    void btnDateSelect_Click();

    Controls m_controls{};
};

// --- details of the template

template <typename Ui>
void StatementScreen::takeControls(const Ui &ui)
{
    m_controls = {ui.DateFrom,     ui.DateTo,     ui.Label3,   ui.btnDateSelect,
                  ui.cmdShow,      ui.cmdExcell,  ui.Command3, {ui.Option1_0, ui.Option1_1, ui.Option1_2},
                  ui.ArchivesList, ui.mnuMonthly, ui.mnuFont,  ui.mnuExit};
    setUp();
}
