#pragma once

#include "platform/ui/screen.h"

#include <memory>

class QLabel;

namespace Ui
{
class frmDateConversion;
}

/// Gives the Hijri or the Gregorian equal of a typed date. The typed text must read as a Gregorian date in
/// both directions.
class frmDateConversion : public Screen
{
    Q_OBJECT

public:
    frmDateConversion();
    ~frmDateConversion() override;

protected:
    void Form_Load() override;

private:
    void ComboDateFormats_Change(const QString &text);
    void cmdHijri_Click();
    void cmdGregorian_Click();

    void convert(int fromCalendar, int toCalendar);
    void showResult(const QString &text);

    std::unique_ptr<Ui::frmDateConversion> m_ui;
    QLabel *m_notice = nullptr; ///< third panel of the status bar
    QString m_dateFormatName;
};
