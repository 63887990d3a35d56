#include "users/frmNewUser.h"

#include "core/engine.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/numbers.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "presentation/prepare_screen.h"
#include "presentation/vocabulary.h"
#include "ui_frmNewUser.h"

#include <QtWidgets/QLayout>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr qint32 topRank = 3;

/// What the screen says that a rank allows. It informs only.
QStringList rightsOf(qint32 rank)
{
    if (rank == 1)
        return {u"view"_s};
    // The two languages differ for rank 2: that is meant.
    if (rank == 2)
        return engine.isArabic ? QStringList{u"modify"_s, u"view"_s, u"reports"_s}
                               : QStringList{u"Add"_s, u"Delete"_s, u"Modify"_s, u"View"_s, u"Reports"_s};
    return {u"add"_s, u"delete"_s, u"modify"_s, u"view"_s, u"reports"_s};
}

/// A comparison with an empty rank is False.
bool isAbove(std::optional<qint32> rank, std::optional<qint32> other)
{
    return rank && other && *rank > *other;
}

/// Shows why the command stops and sends the user to the box at fault.
void refuse(const QString &english, const QString &arabic, QWidget *box)
{
    showMessage(english + u"\r\n"_s + arabic);
    if (box != nullptr)
        box->setFocus();
}

} // namespace

frmNewUser::frmNewUser() : Screen(u"frmNewUser"_s), m_ui(std::make_unique<Ui::frmNewUser>())
{
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    for (QLineEdit *box : {m_ui->txtUserid, m_ui->txtUsername, m_ui->txtPassword1, m_ui->txtPassword2})
        takeAsciiDigits(box);
    connect(m_ui->ComboRank, &QComboBox::currentIndexChanged, this, &frmNewUser::ComboRank_Change);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmNewUser::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmNewUser::cmdCancel_Click);
    connect(m_ui->mnuExit, &QAction::triggered, this, &frmNewUser::mnuExit_Click);
}

frmNewUser::~frmNewUser() = default;

void frmNewUser::setUserId(const QString &userid)
{
    m_ui->txtUserid->setText(userid);
}

void frmNewUser::Form_Load()
{
    PrepareScreen(*this);
    m_ui->ComboRank->clear();
    m_ui->ComboRank->addItems({u"1"_s, u"2"_s, u"3"_s});
    m_ui->ComboRank->setCurrentIndex(2);
    ComboRank_Change();
}

void frmNewUser::ComboRank_Change()
{
    if (m_ui->ComboRank->currentIndex() < 0)
        return;
    QStringList words = rightsOf(chosenRank());
    for (QString &word : words)
        word = translate(word);
    // The toolkit would draw a carriage return: a line feed alone parts the lines on the screen.
    m_ui->rights->setText(words.join(u'\n'));
}

qint32 frmNewUser::chosenRank() const
{
    return toLongInteger(m_ui->ComboRank->currentText());
}

void frmNewUser::cmdOK_Click()
{
    if (engine.masterUserEntry && chosenRank() < topRank)
        return refuse(u"You have to select the highest RANK for the Master User"_s,
                      u"يجب عليك أن تختار أعلى الصلاحيات لأول مستخدم"_s, m_ui->txtUsername);
    if (m_ui->txtUsername->text().isEmpty())
        return refuse(u"You have to enter the full name of this new user"_s,
                      u"يجب إدخال الإسم الحقيقي لهذا المستخدم"_s, m_ui->txtUsername);
    readTopUserRank();
    if (userIdIsUsed())
        return refuse(u"User already used, choose another one"_s,
                      u"هذا الإسم مستخدم حالياً فضلاً قم بإختيار إسم آخر  "_s, m_ui->txtUserid);
    if (!mayUseRank())
        return;
    if (m_ui->txtPassword1->text() != m_ui->txtPassword2->text())
        return refuse(u"An error occured...! "_s, u"حدث خطأ في عملية الإضافه"_s, m_ui->txtUserid);
    if (m_ui->txtPassword1->text().isEmpty() &&
        !askYesNo(u"Are you sure you want to use a blank password?"_s + u"\r\n"_s +
                  u"هل أنت متأكد بأنك تريد إستخدام كلمة سر فارغه؟؟"_s))
        return;
    writeUser();
    showMessage(u"User added successfully "_s + u"\r\n"_s + u"تم إضافة المستخدم الجديد بنجاج"_s);
}

void frmNewUser::readTopUserRank()
{
    engine.rsShared = Recordset::create();
    engine.rsShared->open(u"select max(rank) as maxrank from users "_s, engine.connectionString,
                          CursorType::Static);
    if (engine.rsShared->eof()) {
        engine.topUserRank = 10;
    } else {
        // Null without users: every comparison with it is then False.
        const Value rank = engine.rsShared->value(u"maxrank"_s);
        engine.topUserRank = rank.isNull() ? std::nullopt : std::optional(rank.toInt());
    }
    engine.rsShared->close();
}

bool frmNewUser::userIdIsUsed() const
{
    engine.rsShared = Recordset::create();
    engine.rsShared->open(u"select count(userid) as x from users "_s + u"where userid ='"_s +
                              m_ui->txtUserid->text() + u"' "_s,
                          engine.connectionString, CursorType::Static);
    const bool used = engine.rsShared->value(u"x"_s).toInt() > 0; // deleted users count
    engine.rsShared->close();
    return used;
}

bool frmNewUser::mayUseRank()
{
    const qint32 rank = chosenRank();
    if (isAbove(rank, engine.topUserRank)) {
        refuse(u"You need to lower the rank.. too high!"_s,
               u"يجب عليك تقليل الصلاحيات وأن لا تتفوق على المستخدم الرئيس"_s, m_ui->ComboRank);
        return false;
    }
    if (isAbove(rank, engine.userRank) && isAbove(engine.topUserRank, engine.userRank)) {
        refuse(u"You cannot give higher rank than yours"_s, u"لا تستطيع منح صلاحيات أعلى من صلاحياتك أنت"_s,
               nullptr);
        return false;
    }
    return true;
}

void frmNewUser::writeUser()
{
    engine.stampNow = now();
    engine.rsShared = Recordset::create();
    Recordset &user = *engine.rsShared;
    user.open(u"users"_s, engine.dbConnection, CursorType::Keyset, LockType::Pessimistic, CommandKind::Table);
    user.addNew();
    user.setValue(u"userid"_s, m_ui->txtUserid->text());
    user.setValue(u"password"_s, m_ui->txtPassword1->text());
    user.setValue(u"name"_s, m_ui->txtUsername->text());
    user.setValue(u"rank"_s, m_ui->ComboRank->currentText());
    user.setValue(u"language"_s, u"ARABIC"_s); // whatever the session's language: that is meant
    user.setValue(u"createdon"_s, engine.stampNow);
    user.setValue(u"createdby"_s, engine.currentUser);
    user.setValue(u"valid"_s, true);
    user.setValue(u"fontname"_s, u"Arial"_s);
    user.setValue(u"fontsize"_s, u"8"_s);
    user.setValue(u"fontbold"_s, u"true"_s);
    user.setValue(u"fontcolor"_s, u"0"_s);
    user.update();
    user.close();
    engine.rsShared.reset();
}

void frmNewUser::cmdCancel_Click()
{
    hideScreen();
}

void frmNewUser::mnuExit_Click()
{
    unload();
}
