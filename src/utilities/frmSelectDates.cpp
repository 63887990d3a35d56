#include "utilities/frmSelectDates.h"

#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/ui/dialogs.h"
#include "presentation/prepare_screen.h"
#include "ui_frmSelectDates.h"

#include <QtWidgets/QLayout>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int labelGap = 10; // pixels between a label and its date
constexpr int pairGap = 20;  // and between the two dates

void refuse(const QString &english, QWidget *picker)
{
    showMessage(english + u"\r\nتاريخ غير مقبول"_s);
    picker->setFocus();
}

} // namespace

frmSelectDates::frmSelectDates() : Screen(u"frmSelectDates"_s), m_ui(std::make_unique<Ui::frmSelectDates>())
{
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmSelectDates::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmSelectDates::cmdCancel_Click);
}

frmSelectDates::~frmSelectDates() = default;

void frmSelectDates::Form_Load()
{
    PrepareScreen(*this);
    layOutRow();
    const int year = today().date().year();
    m_ui->DateFromx->setValue(makeDate(year, 1, 1));
    m_ui->DateTox->setValue(makeDate(year, 12, 31));
}

void frmSelectDates::layOutRow()
{
    for (QLabel *label : {m_ui->fromLabel, m_ui->toLabel})
        label->resize(label->sizeHint().width(), label->height());
    struct Place {
        QWidget *control;
        int gapBehind;
    };
    const Place row[] = {{m_ui->fromLabel, labelGap},
                         {m_ui->DateFromx, pairGap},
                         {m_ui->toLabel, labelGap},
                         {m_ui->DateTox, 0}};
    int width = 0;
    for (const Place &place : row)
        width += place.control->width() + place.gapBehind;
    const int left = (surface()->width() - width) / 2;
    int passed = 0;
    for (const Place &place : row) {
        const int x = rightToLeft() ? width - passed - place.control->width() : passed;
        place.control->move(left + x, place.control->y());
        passed += place.control->width() + place.gapBehind;
    }
}

void frmSelectDates::Form_Unload()
{
    if (isVisible())
        datesAccepted = false; // closed by its frame
}

void frmSelectDates::cmdOK_Click()
{
    if (!m_ui->DateFromx->hasAcceptableInput())
        return refuse(u"Wrong From Date "_s, m_ui->DateFromx);
    if (!m_ui->DateTox->hasAcceptableInput())
        return refuse(u"Wrong From Date "_s, m_ui->DateTox); // "From" is meant here too
    if (m_ui->DateTox->value() < m_ui->DateFromx->value())
        return refuse(u"Date To CANNOT be less than date From "_s, m_ui->DateTox);
    dateFromValue = m_ui->DateFromx->value();
    dateToValue = m_ui->DateTox->value();
    datesAccepted = true;
    hideScreen();
}

void frmSelectDates::cmdCancel_Click()
{
    datesAccepted = false;
    hideScreen();
}
