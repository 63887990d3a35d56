#include "tutorial/frmGenerateData.h"

#include "core/engine.h"
#include "family/check_family.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "presentation/prepare_screen.h"
#include "tutorial/tutorial_mode.h"
#include "ui_frmGenerateData.h"

#include <QtCore/QScopedValueRollback>
#include <QtWidgets/QLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr qint32 silentFailures[] = {-2147467259, -2147217887};

} // namespace

frmGenerateData::frmGenerateData()
    : Screen(u"frmGenerateData"_s), m_ui(std::make_unique<Ui::frmGenerateData>())
{
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    takeAsciiDigits(m_ui->Text1);
    connect(m_ui->Option1_0, &QRadioButton::clicked, this, [this] { Option1_Click(0); });
    connect(m_ui->Option1_1, &QRadioButton::clicked, this, [this] { Option1_Click(1); });
    connect(m_ui->cmdStart, &QPushButton::clicked, this, &frmGenerateData::cmdStart_Click);
    connect(m_ui->cmdStop, &QPushButton::clicked, this, &frmGenerateData::cmdStop_Click);
    connect(m_ui->cmdExit, &QPushButton::clicked, this, &frmGenerateData::cmdExit_Click);
    connect(m_ui->mnuExit, &QAction::triggered, this, &frmGenerateData::mnuExit_Click);
}

frmGenerateData::~frmGenerateData() = default;

void frmGenerateData::Form_Load()
{
    PrepareScreen(*this);
    const QString count = engine.isArabic ? u"عدد العمليات"_s : u"Number of transactions"_s;
    m_ui->Text1->setToolTip(count); // no label stands beside it
    setAccessibleText(m_ui->Text1, count);
    m_familyRead = false;
    attachStore(engine.testConnectionString); // whatever was attached
    if (familyIsFit())
        readFamily();
}

bool frmGenerateData::familyIsFit()
{
    if (CheckFamily())
        return true;
    showMessage(engine.isArabic
                    ? u"معلومات أفراد العائله غير صحيحه أو ناقصه.  يجب إصلاح ذلك أولاً!"_s
                    : u"The family members information is not valid, please correct the problem!"_s);
    return false;
}

void frmGenerateData::readFamily()
{
    m_words = generatorWords(engine.isArabic);
    m_family = readGeneratorFamily();
    m_familyRead = true;
}

void frmGenerateData::Option1_Click(int index)
{
    m_isRevenue = index == 0;
}

/// A compaction meanwhile has attached the real store, and a family that was not fit may have become so.
bool frmGenerateData::isReady()
{
    if (!engine.dbConnection->isOpen() ||
        engine.dbConnection->connectionString() != engine.testConnectionString)
        attachStore(engine.testConnectionString);
    if (!familyIsFit())
        return false;
    if (!m_familyRead)
        readFamily();
    return true;
}

void frmGenerateData::cmdStart_Click()
{
    const InUse inUse(this);
    try {
        if (!isReady())
            return;
    } catch (const RuntimeError &failure) {
        tellFailure(failure);
        return;
    }
    m_stopRequested = false;
    enableExit(false);
    setHourglass(true);
    run();
}

void frmGenerateData::run()
{
    qint32 n = 0;
    Generator generator(m_family, m_words,
                        {.isExpense = [this] { return m_ui->Option1_1->isChecked(); },
                         .show =
                             [this, &n](qint32 transactionId) {
                                 m_ui->Label3->setText(QString::number(transactionId));
                                 m_ui->Label4->setText(QString::number(n));
                             },
                         .failed = tellFailure},
                        clockSeededSource());
    {
        const QScopedValueRollback running(m_run, &generator);
        generator.open(m_isRevenue);
        qint32 count = 0;
        try {
            count = toLongInteger(m_ui->Text1->text());
        } catch (const RuntimeError &failure) {
            tellFailure(failure);
        }
        while (n < count && !m_stopRequested) {
            ++n;
            if (!generator.makeTransaction())
                break;
        }
    }
    if (!isLoaded()) // closed meanwhile
        return;
    m_stopRequested = false;
    setHourglass(false);
    generator.close();
    enableExit(true);
    const QString made = QString::number(generator.recordsMade());
    showMessage(engine.isArabic ? u" تم إدخال "_s + made + u" عمليه "_s
                                : u"finished creating "_s + made + u" records.."_s);
}

void frmGenerateData::enableExit(bool on)
{
    m_ui->cmdExit->setEnabled(on);
    m_ui->mnuExit->setEnabled(on);
    m_ui->cmdStart->setEnabled(on); // one run at a time
}

void frmGenerateData::tellFailure(const RuntimeError &failure)
{
    if (!std::ranges::count(silentFailures, failure.number()))
        showMessage(QString::number(failure.number()) + u" :-> "_s + failure.description());
}

void frmGenerateData::cmdStop_Click()
{
    m_stopRequested = true;
    setHourglass(false);
}

void frmGenerateData::cmdExit_Click()
{
    mnuExit_Click();
}

void frmGenerateData::mnuExit_Click()
{
    unload();
}

void frmGenerateData::saveTyped()
{
    if (m_run)
        m_run->save();
}

void frmGenerateData::Form_Unload()
{
    if (!m_run)
        return;
    setHourglass(false);
    enableExit(true); // when it is shown again
    m_run->release();
}
