#pragma once

#include "platform/ui/screen.h"

#include <QtCore/QDateTime>

#include <memory>

namespace Ui
{
class frmSelectDates;
}

/// Asks for a range of dates: 1 January to 31 December of the present year to begin with. The caller makes
/// it, shows it modally and reads the public values. It should not be made by `new` alone: closing its window
/// by the frame counts as Cancel and unloads it.
class frmSelectDates : public Screen
{
    Q_OBJECT

public:
    frmSelectDates();
    ~frmSelectDates() override;

    bool datesAccepted = false;
    // Of the last OK; invalid before it.
    QDateTime dateFromValue;
    QDateTime dateToValue;

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    void cmdOK_Click();
    void cmdCancel_Click();

    /// One row in the middle of the screen's width, from the left in English and from the right in Arabic.
    void layOutRow();

    std::unique_ptr<Ui::frmSelectDates> m_ui;
};
