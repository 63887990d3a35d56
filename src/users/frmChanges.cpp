#include "users/frmChanges.h"

#include "core/engine.h"
#include "core/navigation.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/hourglass.h"
#include "platform/ui/twips.h"
#include "presentation/prepare_screen.h"
#include "ui_frmChanges.h"

#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtWidgets/QLayout>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// Each table has a browser of its own, so that two can stand side by side. It is shown again, also by a menu
/// that was opened anew, until it is closed; then a fresh one takes its place.
void openBrowser(const QString &table)
{
    static QHash<QString, QPointer<Screen>> browsers;
    engine.browseTable = table;
    if (!navigation.newBrowser)
        return;
    const Hourglass hourglass;
    QPointer<Screen> &browser = browsers[table];
    if (!browser || browser->isDiscarded())
        browser = navigation.newBrowser();
    browser->showModeless();
}

QString leftLine(const QString &label, const QWidget *control)
{
    return label + QString::number(twipsFromPixels(control->x()));
}

} // namespace

frmChanges::frmChanges() : Screen(u"frmChanges"_s), m_ui(std::make_unique<Ui::frmChanges>())
{
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    connect(m_ui->Command1, &QPushButton::clicked, this, &frmChanges::Command1_Click);
    connect(m_ui->Command2, &QPushButton::clicked, this, &frmChanges::Command2_Click);
    connect(m_ui->Command3, &QPushButton::clicked, this, &frmChanges::Command3_Click);
    connect(m_ui->Command5, &QPushButton::clicked, this, &frmChanges::Command5_Click);
    connect(m_ui->Command6, &QPushButton::clicked, this, &frmChanges::Command6_Click);
    connect(m_ui->Command7, &QPushButton::clicked, this, &frmChanges::Command7_Click);
    connect(m_ui->Command9, &QPushButton::clicked, this, &frmChanges::Command9_Click);
    connect(m_ui->Command10, &QPushButton::clicked, this, &frmChanges::Command10_Click);
    connect(m_ui->mnuExit, &QAction::triggered, this, &frmChanges::mnuExit_Click);
    connect(m_ui->mnuPasschange, &QAction::triggered, this, &frmChanges::mnuPasschange_Click);
    connect(m_ui->mnuInverse, &QAction::triggered, this, &frmChanges::mnuInverse_Click);
    connect(m_ui->mnuHideFrame, &QAction::triggered, this, &frmChanges::mnuHideFrame_Click);
}

frmChanges::~frmChanges() = default;

void frmChanges::Form_Load()
{
    PrepareScreen(*this);
}

void frmChanges::Command1_Click()
{
    go(navigation.showUsers);
}

void frmChanges::Command2_Click()
{
    go(navigation.showMembers);
}

void frmChanges::Command10_Click()
{
    openBrowser(u"ledger"_s);
}

void frmChanges::Command3_Click()
{
    openBrowser(u"general"_s);
}

void frmChanges::Command5_Click()
{
    openBrowser(u"audit_users"_s);
}

void frmChanges::Command6_Click()
{
    openBrowser(u"audit_members"_s);
}

void frmChanges::Command7_Click()
{
    openBrowser(u"audit_general"_s);
}

void frmChanges::Command9_Click()
{
    unload();
}

void frmChanges::mnuExit_Click()
{
    unload();
}

void frmChanges::mnuPasschange_Click()
{
    go(navigation.showChangePassword);
}

void frmChanges::mnuInverse_Click()
{
    MirrorControls(*this);
}

void frmChanges::mnuHideFrame_Click()
{
    m_ui->Frame1->setVisible(m_ui->Frame1->isHidden());
    showMessage(QStringList{
        leftLine(u"Frame left : "_s, m_ui->Frame1), leftLine(u"users left : "_s, m_ui->Command5),
        leftLine(u"family left: "_s, m_ui->Command6), leftLine(u"General left: "_s, m_ui->Command7)}
                    .join(u"\r\n"_s));
}
