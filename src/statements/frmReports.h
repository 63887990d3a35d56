#pragma once

#include "platform/ui/screen.h"

#include <memory>

namespace Ui
{
class frmReports;
}

/// The menu of the statements.
class frmReports : public Screen
{
    Q_OBJECT

public:
    frmReports();
    ~frmReports() override;

protected:
    void Form_Load() override;

private:
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void mnuExit_Click();

    std::unique_ptr<Ui::frmReports> m_ui;
};
