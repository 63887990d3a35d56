#pragma once

#include "platform/ui/screen.h"
#include "tutorial/generator.h"

#include <memory>

namespace Ui
{
class frmGenerateData;
}

/// Fills the test store with made-up transactions. While it runs it serves events, so that it can be stopped
/// or closed: the transaction in hand is finished or left out then.
class frmGenerateData : public Screen
{
    Q_OBJECT

public:
    frmGenerateData();
    ~frmGenerateData() override;

    /// Writes what a run has made so far.
    void saveTyped() override;

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    void Option1_Click(int index);
    void cmdStart_Click();
    void cmdStop_Click();
    void cmdExit_Click();
    void mnuExit_Click();

    bool familyIsFit();
    void readFamily();
    bool isReady();
    void run();
    void enableExit(bool on);
    static void tellFailure(const RuntimeError &failure);

    std::unique_ptr<Ui::frmGenerateData> m_ui;
    bool m_isRevenue = false;
    bool m_stopRequested = false;
    bool m_familyRead = false;
    GeneratorWords m_words;
    GeneratorFamily m_family;
    Generator *m_run = nullptr; ///< the one in progress
};
