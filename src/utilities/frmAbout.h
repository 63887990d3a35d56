#pragma once

#include "platform/ui/screen.h"

#include <memory>

namespace Ui
{
class frmAbout;
}

/// The about box. It keeps its own fonts and its plain ground, and does not mirror.
class frmAbout : public Screen
{
    Q_OBJECT

public:
    frmAbout();
    ~frmAbout() override;

protected:
    void Form_Load() override;

private:
    void cmdOK_Click();
    void mnuInformation_Click();
    void mnuGuide_Click();

    std::unique_ptr<Ui::frmAbout> m_ui;
};
