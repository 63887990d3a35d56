#include "entry/frmRevenue.h"

#include "core/engine.h"
#include "entry/entry_boxes.h"
#include "entry/entry_layout.h"
#include "entry/member_selection.h"
#include "entry/posting.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "presentation/prepare_screen.h"
#include "presentation/vocabulary.h"
#include "ui_frmRevenue.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int enterKey = 13;

QString selectSomebody()
{
    return engine.isArabic ? u"يجب عليك إختيار شخص واحد على الأقل للقسمه"_s
                           : u"You have to select some members.."_s;
}

} // namespace

frmRevenue::frmRevenue() : Screen(u"frmRevenue"_s), m_ui(std::make_unique<Ui::frmRevenue>())
{
    m_ui->setupUi(this);
    m_selection = new MemberSelection({m_ui->MemberArea, m_ui->Check1_0, m_ui->LBLName_0, m_ui->LBLShare_0,
                                       m_ui->GroupArea, m_ui->cmdGroup_0},
                                      this);
    m_layout = std::make_unique<EntryLayout>(
        EntryLayout::Parts{this,
                           m_selection,
                           m_ui->GroupArea,
                           m_ui->MemberArea,
                           m_ui->cmdAll,
                           {m_ui->cmdDivide, m_ui->cmdReDivide, m_ui->cmdEntry}});
    for (QWidget *box : {static_cast<QWidget *>(m_ui->txtAmount), static_cast<QWidget *>(m_ui->txtNote),
                         static_cast<QWidget *>(m_ui->txtRevenueDetail)})
        takeAsciiDigits(box);
    setPrompts(m_ui->txtNote, m_ui->txtRevenueDetail);
    setFixedWidth(m_ui->surface->minimumWidth());

    connect(m_ui->txtAmount, &QLineEdit::returnPressed, this, [this] { txtAmount_KeyPress(enterKey); });
    connect(m_ui->cmdAll, &QPushButton::clicked, this, &frmRevenue::cmdAll_Click);
    connect(m_ui->cmdClear, &QPushButton::clicked, this, &frmRevenue::cmdClear_Click);
    connect(m_selection, &MemberSelection::groupClicked, this, &frmRevenue::cmdGroup_Click);
    connect(m_ui->cmdDivide, &QPushButton::clicked, this, &frmRevenue::cmdDivide_Click);
    connect(m_ui->cmdReDivide, &QPushButton::clicked, this, &frmRevenue::cmdReDivide_Click);
    connect(m_ui->cmdEntry, &QPushButton::clicked, this, &frmRevenue::cmdEntry_Click);
    connect(m_ui->Option1_0, &QRadioButton::clicked, this, [this] { Option1_Click(0); });
    connect(m_ui->Option1_1, &QRadioButton::clicked, this, [this] { Option1_Click(1); });
    connect(m_ui->mnuInheritance, &QAction::triggered, this, &frmRevenue::mnuInheritance_Click);
    connect(m_ui->mnuSpecial, &QAction::triggered, this, &frmRevenue::mnuSpecial_Click);
    connect(m_ui->mnuExit, &QAction::triggered, this, &frmRevenue::mnuExit_Click);
}

frmRevenue::~frmRevenue() = default;

void frmRevenue::Form_Load()
{
    PrepareScreen(*this);
    m_divisionMode = islamic;

    listKinds(m_ui->ComboGType, u"select * from details where credit=true"_s);

    m_ui->txtAmount->setLayoutDirection(layoutDirection());
    writeFrom(m_ui->txtAmount, layoutDirection());
    writeFrom(m_ui->DTPicker1, layoutDirection());
    writeFrom(m_ui->txtNote, layoutDirection());
    writeFrom(m_ui->txtRevenueDetail, layoutDirection());
    setAccessibleText(m_ui->txtRevenueDetail,
                      engine.isArabic ? translate(u"paymentdetail"_s) : u"Payment detail"_s);
    m_paymentMethod = u"نقداً"_s;
    m_ui->DTPicker1->setValue(today());
    addStatusPanels(m_ui->StatusBar1);

    m_selection->rebuildGroups();
    m_counts = {};
    readHeirCounts();
    divide();
    m_selection->rebuildMembers(u"select * from members where valid=true order by name"_s,
                                [this](int, const Recordset &row) {
                                    const qint32 relation = row.value(u"relation"_s).toInt();
                                    return shareCaption(ComputeShare(qint16(relation)));
                                });
    showLines();
    m_ui->txtAmount->setFocus();
}

void frmRevenue::Form_Unload()
{
    m_selection->clearArrays();
}

void frmRevenue::txtAmount_KeyPress(int code)
{
    if (code != enterKey)
        return;
    m_selection->rebuildGroups();
    // The counts of an earlier division are not cleared: a relation that has no row keeps its count. Meant.
    readHeirCounts();
    divide();
    // In the store's own order, while the load lists by name: a tick can come to stand at another name.
    // Meant.
    m_selection->rebuildMembers(u"select * from members where valid=true"_s,
                                [this](int index, const Recordset &row) -> std::optional<QString> {
                                    if (!m_selection->isTicked(index))
                                        return std::nullopt;
                                    return shareCaption(
                                        ComputeShare(qint16(row.value(u"relation"_s).toInt())));
                                });
    showLines();
}

void frmRevenue::readHeirCounts()
{
    const auto rows = Recordset::create();
    rows->open(
        u"select relation,count(*) as x from members where valid=true group by relation order by relation"_s,
        engine.dbConnection, CursorType::Static);
    for (; !rows->eof(); rows->moveNext()) {
        const Value relation = rows->value(u"relation"_s);
        const qint32 count = rows->value(u"x"_s).toInt();
        switch (relation.isNull() ? 0 : relation.toInt()) {
        case relationWife:
            m_counts.wives = count;
            break;
        case relationSon:
            m_counts.sons = count;
            break;
        case relationDaughter:
            m_counts.daughters = count;
            break;
        default:
            break;
        }
    }
    rows->close();
}

void frmRevenue::divide()
{
    m_division = divideIslamically(readLeadingNumber(m_ui->txtAmount->text()), m_counts);
}

Money frmRevenue::islamicShareOf(qint16 relation)
{
    if (const auto share = islamicShare(relation, m_division, m_counts))
        return *share;
    showMessage(u"Error!!  relation in database is invalid خطأ فادح في القرابه"_s);
    return {};
}

Money frmRevenue::ComputeShare(qint16 relation)
{
    m_enteredAmount = enteredAmount(m_ui->txtAmount->text());
    if (m_divisionMode == islamic)
        return islamicShareOf(relation);
    const qint16 selected = CountSelected();
    if (selected >= 1)
        return equalShare(m_enteredAmount, selected);
    showMessage(selectSomebody());
    return {};
}

Money frmRevenue::GetMemberShare(const QString &name)
{
    const auto member = Recordset::create();
    // The blank before the closing quote stays; the store's comparison ignores trailing blanks.
    member->open(u"select [relation] from members where name='"_s + name + u" '"_s, engine.dbConnection,
                 CursorType::Static);
    m_relation = qint16(member->value(u"relation"_s).toInt());
    member->close();
    m_enteredAmount = enteredAmount(m_ui->txtAmount->text());
    m_divisionMode = islamic; // also while mnuSpecial shows its tick; that is meant
    return islamicShareOf(m_relation);
}

qint16 frmRevenue::CountSelected() const
{
    return m_selection->CountSelected();
}

void frmRevenue::cmdAll_Click()
{
    m_selection->tickAll();
}

void frmRevenue::cmdClear_Click()
{
    m_selection->clearTicks();
    m_selection->clearShares();
}

void frmRevenue::cmdGroup_Click(int index)
{
    m_selection->tickGroup(index);
}

void frmRevenue::cmdDivide_Click()
{
    if (!isNumeric(m_ui->txtAmount->text()))
        return refuse(askForAmount(), m_ui->txtAmount);
    if (CountSelected() < 1)
        return showMessage(selectSomebody());
    m_selection->clearShares();
    txtAmount_KeyPress(enterKey);
}

void frmRevenue::cmdReDivide_Click()
{
    cmdDivide_Click();
}

void frmRevenue::cmdEntry_Click()
{
    // Armed from the first line, so that a failure of the validation meets it without a transaction. Meant.
    withPostingFailurePath([this] { enter(); });
}

void frmRevenue::enter()
{
    if (!isNumeric(m_ui->txtAmount->text()))
        return refuse(u"لا يمكن أن يكون المبلغ خاليا أو غير رقمي "_s, m_ui->txtAmount);
    if (linesOf(m_ui->txtNote).isEmpty())
        return refuse(u"يجب صياغة شرح لهذا الإدخال "_s, m_ui->txtNote);
    if (linesOf(m_ui->txtRevenueDetail).isEmpty() && m_ui->Option1_1->isChecked())
        return refuse(u"يجب إدخال معلومات الشيك"_s, m_ui->txtRevenueDetail);
    const QString date = generalDate(m_ui->DTPicker1->value());
    if (!isDate(date))
        return refuse(date + u" is not a valid date."_s, m_ui->DTPicker1);
    if (CountSelected() < 1)
        return showMessage(selectSomebody());

    cmdDivide_Click();

    const qint16 selectedCount = CountSelected();
    if (selectedCount <= 0) {
        // Out of reach behind the test above, and kept.
        if (!isNumeric(m_ui->txtAmount->text()))
            return refuse(askForAmount(), m_ui->txtAmount);
        txtAmount_KeyPress(enterKey);
        return showMessage(u"لا بد من إختيار على الأقل فرد واحد لإتمام الإدخال"_s);
    }
    if (selectedCount < m_selection->count() && m_divisionMode == islamic)
        return showMessage(engine.isArabic ? u"لا بد من إختيار جميع الورثه عند إدخال عوائد!"_s
                                           : u"You have to select all when entering Inheritance!"_s);
    if (askYesNo(engine.textAreYouSure))
        post();
}

void frmRevenue::post()
{
    Entry entry;
    entry.date = m_ui->DTPicker1->value();
    entry.note = linesOf(m_ui->txtNote);
    entry.paymentDetail = linesOf(m_ui->txtRevenueDetail);
    entry.paymentMethod = m_paymentMethod;
    entry.kind = m_ui->ComboGType->currentText();
    postRevenue(entry, m_ui->txtAmount->text(), m_selection->selectedNames(),
                [this](const QString &member) { return GetMemberShare(member); });
}

void frmRevenue::Option1_Click(int index)
{
    m_ui->txtRevenueDetail->setEnabled(index == 1);
    if (m_ui->txtRevenueDetail->isEnabled()) {
        m_paymentMethod = u"شيك"_s;
        m_ui->txtRevenueDetail->setFocus();
    } else {
        m_paymentMethod = u"نقداً"_s;
    }
}

void frmRevenue::mnuInheritance_Click()
{
    m_ui->mnuInheritance->setChecked(true);
    m_ui->mnuSpecial->setChecked(false);
    m_divisionMode = islamic;
    showMessage(engine.isArabic ? u"المبالغ المدخله الآن ستقسم حسب الطريقه الإسلاميه"_s
                                : u"The amount will be divided islamically"_s);
}

void frmRevenue::mnuSpecial_Click()
{
    m_ui->mnuSpecial->setChecked(true);
    m_ui->mnuInheritance->setChecked(false);
    m_divisionMode = equal;
    showMessage(engine.isArabic ? u"المبالغ المدخله الآن ستقسم بالتساوي"_s
                                : u"The amount will be divided equally"_s);
}

void frmRevenue::mnuExit_Click()
{
    unload();
}

void frmRevenue::showLines()
{
    m_layout->grow();
    m_selection->chainTabOrder(m_ui->cmdClear, m_ui->cmdDivide);
}

void frmRevenue::Form_Resize()
{
    m_layout->layOut();
}
