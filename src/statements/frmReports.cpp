#include "statements/frmReports.h"

#include "presentation/prepare_screen.h"
#include "statements/frmGStatement.h"
#include "statements/frmStatement.h"
#include "ui_frmReports.h"

#include <QtWidgets/QLayout>

using namespace Qt::Literals::StringLiterals;

frmReports::frmReports() : Screen(u"frmReports"_s), m_ui(std::make_unique<Ui::frmReports>())
{
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    connect(m_ui->Command1, &QPushButton::clicked, this, &frmReports::Command1_Click);
    connect(m_ui->Command2, &QPushButton::clicked, this, &frmReports::Command2_Click);
    connect(m_ui->Command3, &QPushButton::clicked, this, &frmReports::Command3_Click);
    connect(m_ui->mnuExit, &QAction::triggered, this, &frmReports::mnuExit_Click);
}

frmReports::~frmReports() = default;

void frmReports::Form_Load()
{
    PrepareScreen(*this);
}

void frmReports::Command1_Click()
{
    theScreen<frmStatement>().showModal();
}

void frmReports::Command2_Click()
{
    theScreen<frmGStatement>().showModal();
}

void frmReports::Command3_Click()
{
    unload();
}

void frmReports::mnuExit_Click()
{
    unload();
}
