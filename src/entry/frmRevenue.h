#pragma once

#include "entry/entry_screen.h"
#include "entry/share_division.h"

namespace Ui
{
class frmRevenue;
}

/// The entry of money that came in for the estate. Divides by the Islamic shares among all heirs, or shows an
/// equal division; what it posts always follows the Islamic shares.
class frmRevenue : public EntryScreen
{
    Q_OBJECT

public:
    frmRevenue();
    ~frmRevenue() override;

    /// The share that the screen shows for an heir of that relation, by the mode in force.
    Money ComputeShare(qint16 relation);
    /// The share that is posted for a member: always the Islamic one, and that mode is in force from then on.
    Money GetMemberShare(const QString &name);

protected:
    void Form_Load() override;
    void enterAmount() override;
    void cmdDivide_Click() override;
    void cmdReDivide_Click() override;
    void cmdEntry_Click() override;

private:
    enum DivisionMode : qint16 { islamic = 1, equal = 2 };

    void Option1_Click(int index);
    void mnuInheritance_Click();
    void mnuSpecial_Click();

    void enter();
    void readHeirCounts();
    void divide();
    Money islamicShareOf(qint16 relation);

    std::unique_ptr<Ui::frmRevenue> m_ui;
    DivisionMode m_divisionMode = islamic;
    HeirCounts m_counts; ///< wifeCount, sonCount, daughterCount
    IslamicDivision m_division;
    Money m_enteredAmount;
    qint16 m_relation = 0; ///< of the member whose share was posted last
};
