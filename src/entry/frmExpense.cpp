#include "entry/frmExpense.h"

#include "core/engine.h"
#include "entry/posting.h"
#include "entry/share_division.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "presentation/prepare_screen.h"
#include "presentation/vocabulary.h"
#include "ui_frmExpense.h"

using namespace Qt::Literals::StringLiterals;

frmExpense::frmExpense() : EntryScreen(u"frmExpense"_s), m_ui(std::make_unique<Ui::frmExpense>())
{
    m_ui->setupUi(this);
    takeControls(*m_ui, {m_ui->Text1, m_ui->Text2, m_ui->Text3}, m_ui->Command4_0);
    connect(m_ui->Option1_0, &QRadioButton::clicked, this, [this] { Option1_Click(0); });
    connect(m_ui->Option1_1, &QRadioButton::clicked, this, [this] { Option1_Click(1); });
    connect(m_ui->Option1_2, &QRadioButton::clicked, this, [this] { Option1_Click(2); });
}

frmExpense::~frmExpense() = default;

void frmExpense::Form_Load()
{
    PrepareScreen(*this);
    if (engine.isArabic)
        ::setCaption(m_ui->Label3, u"نوع "_s + translate(u"expenses"_s));
    loadBoxes(u"select * from details where credit=false"_s);
    members().rebuildGroups();
    listMembers(u"select * from members where valid=true order by name"_s,
                [](int, const Recordset &) { return shareCaption({}); });
}

bool frmExpense::amountComesFirst()
{
    return amountIsNumeric(u"Please enter the amount first\r\nلا يمكن أن يكون المبلغ خاليا أو غير رقمي "_s);
}

void frmExpense::DivideAmount()
{
    if (!amountComesFirst())
        return;
    const qint16 selected = CountSelected();
    if (selected < 1)
        return showMessage(u"لا بد من إختيار على الأقل فرد واحد لإتمام التجزئه"_s);
    members().showShares(shareCaption(wholeShare(enteredAmount(amountText()), selected)));
}

void frmExpense::enterAmount()
{
    DivideAmount();
}

void frmExpense::cmdDivide_Click()
{
    if (amountIsGiven())
        DivideAmount();
}

void frmExpense::cmdReDivide_Click()
{
    if (!amountIsGiven())
        return;
    members().clearShares();
    DivideAmount();
}

void frmExpense::cmdEntry_Click()
{
    if (!amountComesFirst() || !boxesAreFilled())
        return;
    cmdDivide_Click();
    if (CountSelected() <= 0)
        return refuseNobody(); // behind the division's own message, told twice: that is meant
    if (askYesNo(engine.textAreYouSure))
        postExpense(entry(), amountText(), members().selectedNames());
}

void frmExpense::Option1_Click(int index)
{
    const QString words[] = {u"نقداً"_s, u"شيك"_s, u"بطاقة إئتمان"_s};
    m_ui->Text3->setEnabled(index != 0);
    m_paymentMethod = words[index];
}
