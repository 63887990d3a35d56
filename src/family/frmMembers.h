#pragma once

#include "platform/database/recordset.h"
#include "platform/ui/record_moves.h"
#include "platform/ui/screen.h"

#include <QtCore/QStringList>

#include <functional>
#include <memory>

class BoundBoxes;

namespace Ui
{
class frmMembers;
}

/// The register of the family: all members in a grid, the current one in boxes; add, edit, delete, a filter
/// by validity, and the deceased's name. Every change leaves an audit row.
class frmMembers : public Screen
{
    Q_OBJECT

public:
    frmMembers();
    ~frmMembers() override;

    void saveTyped() override;

protected:
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Resize() override;
    bool Form_KeyDown(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Indexes of txtFields.
    enum Field { fieldName, fieldSex, fieldTitle, fieldRelation, fieldDob, fieldGroup, fieldLastUpdate };

    void adoPrimaryRS_MoveComplete();
    void adoPrimaryRS_WillChangeRecord(RecordChange &change);
    void cmdAdd_Click();
    void cmdEdit_Click();
    void cmdUpdate_Click();
    void cmdCancel_Click();
    void cmdDelete_Click();
    void cmdRefresh_Click();
    void cmdClose_Click();
    void Combo1_Click();
    void DTPicker1_CloseUp();
    void txtFields_Change(int index);
    void txtFields_Click(int index);
    bool txtFields_KeyPress(QKeyEvent *event);
    void mnuDesceased_Click();
    void mnuExit_Click();

    /// Runs a command that shows its failure's description and leaves.
    static void showingFailures(const std::function<void()> &command);
    void bindGrid();
    void formatGrid();
    void setButtons(bool browsing);
    bool isBrowsing() const { return !m_editing && !m_adding; }
    void refuseUnaskedChange();
    void dropUnaskedEdit();
    void navigate(RecordMove move);
    bool validate();
    void update();
    void deleteMember();
    void showRow();
    void showRowValues();
    void hideChoosers();
    void setFilter(const QString &filter);
    void showChooser(QWidget *chooser, int index);
    const QStringList *namesOf(int index) const;

    std::unique_ptr<Ui::frmMembers> m_ui;
    BoundBoxes *m_txtFields;
    RecordsetPtr m_primary; ///< adoPrimaryRS
    int m_gridFormat = 0;   ///< connection of formatGrid() to the set's rowsChanged

    bool m_editing = false;
    bool m_adding = false;
    bool m_changedUnasked = false; ///< a bound field changed while neither editing nor adding
    QString m_updateType;          ///< "add", "edit", "delete" or empty
    int m_savedBookmark = 0;       ///< the row to return to after a cancelled add; 0 for none
    qint16 m_activeField = -1;     ///< index of the box that Combo1 or DTPicker1 serves; -1 for none
    QStringList m_sexNames;
    QStringList m_relationNames;
};
