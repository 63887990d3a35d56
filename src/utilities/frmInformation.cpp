#include "utilities/frmInformation.h"

#include "core/engine.h"
#include "platform/ui/controls.h"
#include "presentation/prepare_screen.h"
#include "presentation/vocabulary.h"
#include "ui_frmInformation.h"
#include "utilities/program_description.h"

using namespace Qt::Literals::StringLiterals;

frmInformation::frmInformation() : Screen(u"frmInformation"_s), m_ui(std::make_unique<Ui::frmInformation>())
{
    m_ui->setupUi(this);
    connect(m_ui->mnuExit, &QAction::triggered, this, &frmInformation::mnuExit_Click);
}

frmInformation::~frmInformation() = default;

void frmInformation::Form_Load()
{
    setRightToLeft(engine.isArabic);
    PrepareScreen(*this);
    setAccessibleText(m_ui->Text1, translate(u"Brief Intro"_s));
    QString text;
    for (const QString &line : longDescription(engine.isArabic))
        text += line + u"\r\n"_s;
    m_ui->Text1->setPlainText(text);
    m_ui->Text1->setReadOnly(true);
}

void frmInformation::Form_Resize()
{
    constexpr int gap = 8;
    m_ui->Frame1->setGeometry(m_ui->surface->rect().adjusted(gap, gap, -gap, -gap));
    m_ui->Text1->setGeometry(m_ui->Frame1->rect().adjusted(gap, gap, -gap, -gap));
}

void frmInformation::mnuExit_Click()
{
    unload();
}
