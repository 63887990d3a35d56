#include "entry/frmRevenue.h"

#include "core/engine.h"
#include "entry/posting.h"
#include "platform/runtime/numbers.h"
#include "platform/ui/dialogs.h"
#include "presentation/prepare_screen.h"
#include "ui_frmRevenue.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

QString selectSomebody()
{
    return engine.isArabic ? u"يجب عليك إختيار شخص واحد على الأقل للقسمه"_s
                           : u"You have to select some members.."_s;
}

} // namespace

frmRevenue::frmRevenue() : EntryScreen(u"frmRevenue"_s), m_ui(std::make_unique<Ui::frmRevenue>())
{
    m_ui->setupUi(this);
    takeControls(*m_ui, {m_ui->txtAmount, m_ui->txtNote, m_ui->txtRevenueDetail}, m_ui->cmdGroup_0);
    connect(m_ui->Option1_0, &QRadioButton::clicked, this, [this] { Option1_Click(0); });
    connect(m_ui->Option1_1, &QRadioButton::clicked, this, [this] { Option1_Click(1); });
    connect(m_ui->mnuInheritance, &QAction::triggered, this, &frmRevenue::mnuInheritance_Click);
    connect(m_ui->mnuSpecial, &QAction::triggered, this, &frmRevenue::mnuSpecial_Click);
}

frmRevenue::~frmRevenue() = default;

void frmRevenue::Form_Load()
{
    PrepareScreen(*this);
    m_divisionMode = islamic;
    loadBoxes(u"select * from details where credit=true"_s);

    members().rebuildGroups();
    m_counts = {};
    readHeirCounts();
    divide();
    listMembers(u"select * from members where valid=true order by name"_s, [this](int, const Recordset &row) {
        return shareCaption(ComputeShare(qint16(row.value(u"relation"_s).toInt())));
    });
}

void frmRevenue::enterAmount()
{
    members().rebuildGroups();
    // The counts of an earlier division are not cleared: a relation that has no row keeps its count. Meant.
    readHeirCounts();
    divide();
    // In the store's own order, while the load lists by name: a tick can come to stand at another name.
    // Meant.
    listMembers(u"select * from members where valid=true"_s,
                [this](int index, const Recordset &row) -> std::optional<QString> {
                    if (!members().isTicked(index))
                        return std::nullopt;
                    return shareCaption(ComputeShare(qint16(row.value(u"relation"_s).toInt())));
                });
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
    m_division = divideIslamically(readLeadingNumber(amountText()), m_counts);
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
    m_enteredAmount = enteredAmount(amountText());
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
    m_enteredAmount = enteredAmount(amountText());
    m_divisionMode = islamic; // also while mnuSpecial shows its tick; that is meant
    return islamicShareOf(m_relation);
}

void frmRevenue::cmdDivide_Click()
{
    if (!amountIsGiven())
        return;
    if (CountSelected() < 1)
        return showMessage(selectSomebody());
    members().clearShares();
    enterAmount();
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
    if (!amountIsNumeric(u"لا يمكن أن يكون المبلغ خاليا أو غير رقمي "_s) || !boxesAreFilled())
        return;
    if (CountSelected() < 1)
        return showMessage(selectSomebody());

    cmdDivide_Click();

    const qint16 selectedCount = CountSelected();
    if (selectedCount <= 0)
        return refuseNobody(); // out of reach behind the test above, and kept
    if (selectedCount < members().count() && m_divisionMode == islamic)
        return showMessage(engine.isArabic ? u"لا بد من إختيار جميع الورثه عند إدخال عوائد!"_s
                                           : u"You have to select all when entering Inheritance!"_s);
    if (askYesNo(engine.textAreYouSure))
        postRevenue(entry(), amountText(), members().selectedNames(),
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
