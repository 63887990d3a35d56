#pragma once

#include "entry/share_division.h"
#include "platform/ui/screen.h"

#include <memory>

class EntryLayout;
class MemberSelection;
class Recordset;

namespace Ui
{
class frmRevenue;
}

/// The entry of money that came in for the estate. Divides by the Islamic shares among all heirs, or shows an
/// equal division; what it posts always follows the Islamic shares.
class frmRevenue : public Screen
{
    Q_OBJECT

public:
    frmRevenue();
    ~frmRevenue() override;

    /// The share that the screen shows for an heir of that relation, by the mode in force.
    Money ComputeShare(qint16 relation);
    /// The share that is posted for a member: always the Islamic one, and that mode is in force from then on.
    Money GetMemberShare(const QString &name);
    qint16 CountSelected() const;

protected:
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Resize() override;

private:
    enum DivisionMode : qint16 { islamic = 1, equal = 2 };

    void txtAmount_KeyPress(int code);
    void cmdAll_Click();
    void cmdClear_Click();
    void cmdGroup_Click(int index);
    void cmdDivide_Click();
    void cmdReDivide_Click();
    void cmdEntry_Click();
    void Option1_Click(int index);
    void mnuInheritance_Click();
    void mnuSpecial_Click();
    void mnuExit_Click();

    void enter();
    void post();
    void readHeirCounts();
    void divide();
    Money islamicShareOf(qint16 relation);
    void showLines();

    std::unique_ptr<Ui::frmRevenue> m_ui;
    MemberSelection *m_selection;
    std::unique_ptr<EntryLayout> m_layout;

    DivisionMode m_divisionMode = islamic;
    HeirCounts m_counts; ///< wifeCount, sonCount, daughterCount
    IslamicDivision m_division;
    Money m_enteredAmount;
    qint16 m_relation = 0; ///< of the member whose share was posted last
    QString m_paymentMethod;
};
