#pragma once

#include "platform/ui/screen.h"

#include <memory>

namespace Ui
{
class frmInformation;
}

/// A longer description of the program, for reading. No menu of this version leads to it.
class frmInformation : public Screen
{
    Q_OBJECT

public:
    frmInformation();
    ~frmInformation() override;

protected:
    void Form_Load() override;
    void Form_Resize() override;

private:
    void mnuExit_Click();

    std::unique_ptr<Ui::frmInformation> m_ui;
};
