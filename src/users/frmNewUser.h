#pragma once

#include "platform/ui/screen.h"

#include <memory>

namespace Ui
{
class frmNewUser;
}

/// Adds rows to `users`. Stays open after each, for the next user.
class frmNewUser : public Screen
{
    Q_OBJECT

public:
    frmNewUser();
    ~frmNewUser() override;

    /// Puts a text into the user id's box.
    void setUserId(const QString &userid);

protected:
    void Form_Load() override;

private:
    void ComboRank_Change();
    void cmdOK_Click();
    void cmdCancel_Click();
    void mnuExit_Click();

    bool mayUseRank();
    bool userIdIsUsed() const;
    void readTopUserRank();
    void writeUser();
    qint32 chosenRank() const;

    std::unique_ptr<Ui::frmNewUser> m_ui;
};
