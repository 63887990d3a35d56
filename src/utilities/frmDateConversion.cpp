#include "utilities/frmDateConversion.h"

#include "core/engine.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/hijri_calendar.h"
#include "platform/ui/controls.h"
#include "presentation/prepare_screen.h"
#include "presentation/status_panels.h"
#include "ui_frmDateConversion.h"
#include "utilities/convert_date_string.h"

#include <QtWidgets/QLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

frmDateConversion::frmDateConversion()
    : Screen(u"frmDateConversion"_s), m_ui(std::make_unique<Ui::frmDateConversion>())
{
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    takeAsciiDigits(m_ui->Text1);
    m_ui->ComboDateFormats->setCompleter(nullptr); // what is typed stays as it was typed
    connect(m_ui->ComboDateFormats, &QComboBox::editTextChanged, this,
            &frmDateConversion::ComboDateFormats_Change);
    connect(m_ui->cmdHijri, &QPushButton::clicked, this, &frmDateConversion::cmdHijri_Click);
    connect(m_ui->cmdGregorian, &QPushButton::clicked, this, &frmDateConversion::cmdGregorian_Click);
}

frmDateConversion::~frmDateConversion() = default;

void frmDateConversion::Form_Load()
{
    PrepareScreen(*this);
    for (const QString &text : {engine.currentUser, shortDate(today()), QString()})
        m_notice = addStatusPanel(m_ui->StatusBar1, text);
    m_ui->Text1->setText(generalDate(today()));
    m_ui->ComboDateFormats->clear();
    m_ui->ComboDateFormats->addItems(engine.isArabic
                                         ? QStringList{u"قصير"_s, u"طويل"_s, u"عادي"_s}
                                         : QStringList{u"Short Date"_s, u"Long Date"_s, u"General Format"_s});
    m_ui->ComboDateFormats->setCurrentIndex(0);
    setAccessibleText(m_ui->ComboDateFormats, engine.isArabic ? u"صيغة التاريخ"_s : u"Date format"_s);
}

/// Every entry but the first, and what is no entry, stands for the long form: that is meant.
void frmDateConversion::ComboDateFormats_Change(const QString &text)
{
    const int index = m_ui->ComboDateFormats->findText(text, Qt::MatchFixedString);
    m_dateFormatName = index == 0 ? u"Short Date"_s : u"Long Date"_s;
}

void frmDateConversion::cmdHijri_Click()
{
    convert(gregorianCalendar, hijriCalendar);
}

void frmDateConversion::cmdGregorian_Click()
{
    convert(hijriCalendar, gregorianCalendar);
}

void frmDateConversion::convert(int fromCalendar, int toCalendar)
{
    const QString text = m_ui->Text1->text();
    if (isDate(text)) // as a Gregorian date also when it is a Hijri one: that is meant
        return showResult(ConvertDateString(text, fromCalendar, toCalendar, m_dateFormatName));
    showResult(engine.isArabic ? QString() : u"Bad Date"_s);
    m_notice->setText(engine.isArabic ? u"أدخل تاريخاً صحيحاً"_s
                                      : u"Enter a valid date"_s); // a later success leaves it: that is meant
}

/// An Arabic month's name stands between day and year only in a line that runs from the right.
void frmDateConversion::showResult(const QString &text)
{
    const bool arabic =
        std::any_of(text.begin(), text.end(), [](QChar c) { return c.direction() == QChar::DirAL; });
    ::setRightToLeft(m_ui->Label2, engine.isArabic || arabic);
    m_ui->Label2->setText(text);
}
