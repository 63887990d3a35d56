#pragma once

#include "platform/database/recordset.h"
#include "platform/ui/record_moves.h"
#include "platform/ui/screen.h"

#include <functional>
#include <memory>
#include <optional>

class RuntimeError;

namespace Ui
{
class frmUsers;
}

/// The users of the program in a grid: names and ranks are edited in place, others are deleted, new ones come
/// from frmNewUser. An edit is saved after a question when its row is left, and leaves an audit row.
class frmUsers : public Screen
{
    Q_OBJECT

public:
    frmUsers();
    ~frmUsers() override;

    void saveTyped() override;

protected:
    void Form_Load() override;
    bool Form_QueryUnload() override;
    void Form_Unload() override;
    void Form_Resize() override;
    bool Form_KeyDown(QKeyEvent *event) override;

private:
    void adoPrimaryRS_WillChangeRecord(RecordChange &change);
    void grdDataGrid_ButtonClick();
    void grdDataGrid_Error(const RuntimeError &failure);
    void grdDataGrid_RowColChange();
    void ComboRank_Click();
    void cmdAdd_Click();
    void cmdDelete_Click();
    void cmdRefresh_Click();
    void cmdClose_Click();
    void mnuExit_Click();

    void bindGrid();
    void fitColumns();
    void hideRanks();
    void followFocus(const QWidget *now);
    void navigate(RecordMove move);
    /// Runs a command that shows its failure's description and leaves.
    void showingFailures(const std::function<void()> &command);
    void showFailure(const RuntimeError &failure);

    void begin(const QString &action);
    void confirmUpdate(RecordChange &change);
    void undoRefused();
    bool isRowChanged() const;
    bool isValid(const QString &field, const Value &value) const;
    /// The name of the first field whose value is not allowed; empty when all are.
    QString CheckUserFields() const;
    /// Writes the audit row of the current row's change. False when that change is not allowed, and no audit
    /// row was written.
    bool WriteUserAudit();
    void deleteUser();

    std::unique_ptr<Ui::frmUsers> m_ui;
    RecordsetPtr m_primary;  ///< adoPrimaryRS
    QString m_pendingAction; ///< "add", "delete", "update" or empty
    bool m_closeAllowed = true;
    std::optional<QString> m_refused; ///< the action whose update was refused and is still to be undone
    bool m_declined = false;          ///< it was the user who refused
    bool m_closing = false;
    QObject m_toTheEnd; ///< goes before the controls, which tell of scrolling and focus even as they go
};
