#include "utilities/frmAbout.h"

#include "core/engine.h"
#include "core/program_icon.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "presentation/vocabulary.h"
#include "ui_frmAbout.h"
#include "utilities/guide_window.h"
#include "utilities/program_description.h"

#include <QtWidgets/QLayout>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr QPoint shadowOffset(2, 2); // pixels

} // namespace

frmAbout::frmAbout() : Screen(u"frmAbout"_s), m_ui(std::make_unique<Ui::frmAbout>())
{
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    m_ui->picIcon->setPixmap(programIcon().pixmap(m_ui->picIcon->size(), devicePixelRatio()));
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmAbout::cmdOK_Click);
    connect(m_ui->mnuInformation, &QAction::triggered, this, &frmAbout::mnuInformation_Click);
    connect(m_ui->mnuGuide, &QAction::triggered, this, &frmAbout::mnuGuide_Click);
}

frmAbout::~frmAbout() = default;

void frmAbout::Form_Load()
{
    m_ui->lblVersion->setText(u"Version %1.%2.%3"_s.arg(QUVANA_MAJOR).arg(QUVANA_MINOR).arg(QUVANA_REVISION));
    setRightToLeft(engine.isArabic);
    m_ui->Label1->setText(u"Quvana"_s);
    if (engine.isArabic) {
        setCaption(translate(caption()));
        m_ui->lblDescription1a->setText(translate(u"desinged by"_s)); // the word's key is spelled so
        m_ui->lblDescription1b->setText(u"فريق كوفانا"_s);
        m_ui->lblDescription2->setText(
            u"لتسجيل عوائد الإرث ومصاريفه, وتقسيمها على الورثه, وإصدار كشوفاتها."_s);
        m_ui->lblDisclaimer1->setText(
            u"يُحسب نصيب كل وارث مما أُدخل في البرنامج, فنرجو مراجعته قبل صرف أي مبلغ."_s);
        m_ui->lblDisclaimer2->setText(u"للأسئلة والتبليغ عن الأخطاء: الشخص الذي ركَب لكم البرنامج."_s);
        m_ui->mnuGuide->setText(u"دليل الاستخدام (F1)"_s);
        for (QObject *control : controlsOf(*this)) {
            const ControlKind kind = kindOf(control);
            if (kind == ControlKind::CommandButton || kind == ControlKind::Menu || kind == ControlKind::Label)
                ::setCaption(control, translate(captionOf(control)));
        }
        m_ui->Label1->setText(translate(m_ui->Label1->text()));
    }
    m_ui->Label2->setText(m_ui->Label1->text());
    m_ui->Label2->setGeometry(m_ui->Label1->geometry().translated(shadowOffset));
}

void frmAbout::cmdOK_Click()
{
    unload();
}

void frmAbout::mnuInformation_Click()
{
    MessageRequest brief;
    for (const QString &line : briefDescription(engine.isArabic))
        brief.text += line + u"\r\n"_s;
    brief.rightAligned = engine.isArabic;
    showMessage(brief);
}

void frmAbout::mnuGuide_Click()
{
    showGuide(*this);
}
