#pragma once

#include "platform/ui/screen.h"

#include <memory>

namespace Ui
{
class frmMain;
}
class QLabel;

/// The hub of the program: the daily work, the commands for language, font and compaction, and the end.
class frmMain : public Screen
{
    Q_OBJECT

public:
    frmMain();
    ~frmMain() override;

protected:
    void Form_Load() override;
    bool Form_QueryUnload() override;
    void Form_Unload() override;

private:
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();
    void mnuChangePassword_Click();
    void mnuFont_Click();
    void mnuCompact_Click();
    void mnuArabic_Click();
    void mnuEnglish_Click();
    void mnuAbout_Click();
    void mnuTutorial_Click();
    void mnuStartTutorial_Click();
    void mnuGenerateData_Click();
    void mnuStopTutorial_Click();
    void mnuDateConversion_Click();
    void mnuExit_Click();

    void showTutorialState();
    void showPanels();
    void changeLanguage(bool arabic);
    void takeWordsFrom(const Screen &instance);
    bool familyIsFit();
    void chooseFont();

    std::unique_ptr<Ui::frmMain> m_ui;
    QLabel *m_userPanel;
    QLabel *m_helpPanel;
};
