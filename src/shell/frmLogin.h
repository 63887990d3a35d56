#pragma once

#include "platform/ui/screen.h"

#include <memory>

namespace Ui
{
class frmLogin;
}
class Recordset;

/// Finds out who works, takes over that user's language and font, and stamps the login. Without any valid
/// user it asks nothing and has a first user made instead.
class frmLogin : public Screen
{
    Q_OBJECT

public:
    frmLogin();
    ~frmLogin() override;

    bool LoginSucceeded = false; ///< read by Main after the dialog closes

protected:
    void Form_Load() override;

private:
    void cmdOK_Click();
    void cmdCancel_Click();

    void demandFirstUser();
    void takeOverUser(const Recordset &user);

    std::unique_ptr<Ui::frmLogin> m_ui;
    bool m_noUsersYet = false;
};
