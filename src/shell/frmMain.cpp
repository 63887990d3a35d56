#include "shell/frmMain.h"

#include "core/engine.h"
#include "core/navigation.h"
#include "core/typed_input.h"
#include "family/check_family.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "presentation/prepare_screen.h"
#include "presentation/session_font.h"
#include "presentation/vocabulary.h"
#include "shell/maintenance.h"
#include "tutorial/tutorial_mode.h"
#include "ui_frmMain.h"

#include <QtGui/QActionGroup>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr qint16 largestFontSize = 12;
constexpr int bigButtonPoints = 14;

} // namespace

frmMain::frmMain()
    : Screen(u"frmMain"_s), m_ui(std::make_unique<Ui::frmMain>()), m_userPanel(new QLabel),
      m_helpPanel(new QLabel)
{
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    m_userPanel->setTextFormat(Qt::PlainText);
    m_userPanel->setContentsMargins(4, 0, 4, 0);
    m_ui->StatusBar1->addWidget(m_userPanel, 1); // a message would go as soon as a menu is opened
    m_helpPanel->setContentsMargins(4, 0, 4, 0);
    m_ui->StatusBar1->addPermanentWidget(m_helpPanel);
    auto *languages = new QActionGroup(this); // one of the two stays checked
    languages->addAction(m_ui->mnuArabic);
    languages->addAction(m_ui->mnuEnglish);

    connect(m_ui->Command1, &QPushButton::clicked, this, &frmMain::Command1_Click);
    connect(m_ui->Command2, &QPushButton::clicked, this, &frmMain::Command2_Click);
    connect(m_ui->Command3, &QPushButton::clicked, this, &frmMain::Command3_Click);
    connect(m_ui->Command4, &QPushButton::clicked, this, &frmMain::Command4_Click);
    connect(m_ui->Command5, &QPushButton::clicked, this, &frmMain::Command5_Click);
    connect(m_ui->mnuChangePassword, &QAction::triggered, this, &frmMain::mnuChangePassword_Click);
    connect(m_ui->mnuFont, &QAction::triggered, this, &frmMain::mnuFont_Click);
    connect(m_ui->mnuCompact, &QAction::triggered, this, &frmMain::mnuCompact_Click);
    connect(m_ui->mnuArabic, &QAction::triggered, this, &frmMain::mnuArabic_Click);
    connect(m_ui->mnuEnglish, &QAction::triggered, this, &frmMain::mnuEnglish_Click);
    connect(m_ui->mnuAbout, &QAction::triggered, this, &frmMain::mnuAbout_Click);
    connect(m_ui->mnuTutorial, &QAction::triggered, this, &frmMain::mnuTutorial_Click);
    connect(m_ui->mnuStartTutorial, &QAction::triggered, this, &frmMain::mnuStartTutorial_Click);
    connect(m_ui->mnuGenerateData, &QAction::triggered, this, &frmMain::mnuGenerateData_Click);
    connect(m_ui->mnuStopTutorial, &QAction::triggered, this, &frmMain::mnuStopTutorial_Click);
    connect(m_ui->mnuDateConversion, &QAction::triggered, this, &frmMain::mnuDateConversion_Click);
    connect(m_ui->mnuExit, &QAction::triggered, this, &frmMain::mnuExit_Click);
}

frmMain::~frmMain() = default;

void frmMain::Form_Load()
{
    m_ui->mnuArabic->setChecked(engine.isArabic);
    m_ui->mnuEnglish->setChecked(!engine.isArabic);
    PrepareScreen(*this);
    for (QPushButton *button : {m_ui->Command1, m_ui->Command2, m_ui->Command3, m_ui->Command5}) {
        QFont font = button->font();
        font.setPointSize(bigButtonPoints);
        button->setFont(font);
    }
    showTutorialState();
    showPanels();
}

/// Behind this the store is closed before the other screens are.
bool frmMain::Form_QueryUnload()
{
    saveTypedInput();
    return true;
}

void frmMain::Form_Unload()
{
    ignoringErrors([] {
        if (engine.dbConnection && engine.dbConnection->isOpen())
            engine.dbConnection->close();
    });
    engine.dbConnection.reset();
    ignoringErrors([] {
        if (engine.rsShared && engine.rsShared->isOpen())
            engine.rsShared->close();
    });
    engine.rsShared.reset();
    const QList<Screen *> loaded = loadedScreens();
    for (auto screen = loaded.crbegin(); screen != loaded.crend(); ++screen) {
        if (*screen != this && loadedScreens().contains(*screen))
            ignoringErrors([screen] { (*screen)->unload(); });
    }
}

void frmMain::showTutorialState()
{
    m_ui->lblTutorial->setVisible(engine.tutorialMode);
    m_ui->mnuGenerateData->setVisible(engine.tutorialMode);
    m_ui->mnuStartTutorial->setVisible(!engine.tutorialMode);
    m_ui->mnuStopTutorial->setVisible(engine.tutorialMode);
}

void frmMain::showPanels()
{
    m_userPanel->setText(translate(u"User"_s) + u": "_s + engine.currentUser);
    m_helpPanel->setText(engine.isArabic ? u"دليل الاستخدام: F1"_s : u"Guide: F1"_s);
}

bool frmMain::familyIsFit()
{
    if (CheckFamily())
        return true;
    MessageRequest refusal;
    refusal.text = u"The family members information is not valid, please correct the problem!"_s;
    if (engine.isArabic) {
        refusal.text = u"معلومات أفراد العائله غير صحيحه أو ناقصه.  يجب إصلاح ذلك أولاً!ً"_s;
        refusal.icon = MessageIcon::Critical;
        refusal.rightAligned = true;
    }
    showMessage(refusal);
    return false;
}

void frmMain::Command1_Click()
{
    if (familyIsFit())
        go(navigation.showExpense);
}

void frmMain::Command2_Click()
{
    if (familyIsFit())
        go(navigation.showRevenue);
}

void frmMain::Command3_Click()
{
    go(navigation.showChanges);
}

void frmMain::Command5_Click()
{
    go(navigation.showReports);
}

void frmMain::Command4_Click()
{
    unload();
}

void frmMain::mnuExit_Click()
{
    unload();
}

void frmMain::mnuChangePassword_Click()
{
    go(navigation.showChangePassword);
}

void frmMain::mnuAbout_Click()
{
    go(navigation.showAbout);
}

void frmMain::mnuDateConversion_Click()
{
    go(navigation.showDateConversion);
}

void frmMain::mnuArabic_Click()
{
    changeLanguage(true);
}

void frmMain::mnuEnglish_Click()
{
    changeLanguage(false);
}

void frmMain::changeLanguage(bool arabic)
{
    if (engine.isArabic == arabic)
        return;
    engine.isArabic = arabic;
    m_ui->mnuArabic->setChecked(arabic);
    m_ui->mnuEnglish->setChecked(!arabic);
    ignoringErrors([arabic] {
        engine.dbConnection->execute(u"update users set [language]='"_s +
                                     (arabic ? u"arabic"_s : u"english"_s) + u"' where userid='"_s +
                                     engine.currentUser + u"'"_s);
    });
    // A second instance that is never shown has everything in the new language. It goes without unloading,
    // which would close the store.
    frmMain instance;
    ignoringErrors([&instance] { instance.load(); });
    takeWordsFrom(instance);
    showPanels();
}

/// Words and direction, but no places: this screen is mirrored when it is loaded next.
void frmMain::takeWordsFrom(const Screen &instance)
{
    const QList<QObject *> own = controlsOf(*this);
    for (const QObject *source : controlsOf(instance)) {
        for (QObject *target : own) {
            if (target->objectName() != source->objectName())
                continue;
            ::setCaption(target, captionOf(source));
            ::setRightToLeft(target, rightToLeftOf(source));
        }
    }
    setRightToLeft(instance.rightToLeft());
    setCaption(instance.caption());
}

void frmMain::mnuFont_Click()
{
    try {
        chooseFont();
    } catch (const RuntimeError &error) {
        if (!runtime_errors::isCancelled(error))
            showMessage(error.description());
    }
}

void frmMain::chooseFont()
{
    const FontChoice chosen = chooseSessionFont();
    if (engine.userFontSize > largestFontSize) {
        engine.userFontSize = largestFontSize;
        showMessage(u"You have chosen a font size that is too large! 12 is good"_s + u"\r\n"_s +
                    u"لقد إخترت مقاساً كبيراً جداً للحرف وسيصعٍب القرآه أي مقاس أكبر من 12"_s);
    }
    // The size goes into the store as it was chosen, while the session is held at 12: that is meant.
    engine.dbConnection->execute(u"update users set "_s + u"fontname='"_s + chosen.name + u"',"_s +
                                 u"fontsize='"_s + QString::number(chosen.size) + u"',"_s + u"fontbold='"_s +
                                 Value(chosen.bold).toText() + u"',"_s + u"fontcolor='"_s +
                                 QString::number(chosen.color) + u"' where userid='"_s + engine.currentUser +
                                 u"'"_s);
}

void frmMain::mnuCompact_Click()
{
    maintainStore();
}

void frmMain::mnuTutorial_Click()
{
    showTutorialIntroduction();
}

void frmMain::mnuStartTutorial_Click()
{
    startTutorial([this] { showTutorialState(); });
}

void frmMain::mnuGenerateData_Click()
{
    showTutorialState();
    generateData();
}

void frmMain::mnuStopTutorial_Click()
{
    stopTutorial([this] { showTutorialState(); });
}
