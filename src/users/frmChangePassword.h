#pragma once

#include "platform/ui/screen.h"

#include <memory>

namespace Ui
{
class frmChangePassword;
}

/// Gives the user of the session a new password. Stays open afterwards.
class frmChangePassword : public Screen
{
    Q_OBJECT

public:
    frmChangePassword();
    ~frmChangePassword() override;

protected:
    void Form_Load() override;

private:
    void cmdOK_Click();
    void cmdCancel_Click();
    void mnuExit_Click();

    bool isPresentPasswordRight() const;

    std::unique_ptr<Ui::frmChangePassword> m_ui;
};
