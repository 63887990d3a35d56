#pragma once

#include "platform/ui/screen.h"

#include <memory>

namespace Ui
{
class frmChanges;
}

/// The way to the tables for correction and to the audit tables for review.
class frmChanges : public Screen
{
    Q_OBJECT

public:
    frmChanges();
    ~frmChanges() override;

protected:
    void Form_Load() override;

private:
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command5_Click();
    void Command6_Click();
    void Command7_Click();
    void Command9_Click();
    void Command10_Click();
    void mnuExit_Click();
    void mnuPasschange_Click();
    void mnuInverse_Click();
    void mnuHideFrame_Click();

    std::unique_ptr<Ui::frmChanges> m_ui;
};
