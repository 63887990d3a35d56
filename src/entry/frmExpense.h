#pragma once

#include "entry/entry_screen.h"

namespace Ui
{
class frmExpense;
}

/// The entry of money that went out, divided equally among the ticked members: shown in whole units, posted
/// to the ten-thousandth.
class frmExpense : public EntryScreen
{
    Q_OBJECT

public:
    frmExpense();
    ~frmExpense() override;

    /// Shows the equal share at each ticked member; the captions of the others stay.
    void DivideAmount();

protected:
    void Form_Load() override;
    void enterAmount() override;
    void cmdDivide_Click() override;
    void cmdReDivide_Click() override;
    void cmdEntry_Click() override;

private:
    void Option1_Click(int index);
    bool amountComesFirst();

    std::unique_ptr<Ui::frmExpense> m_ui;
};
