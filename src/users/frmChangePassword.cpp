#include "users/frmChangePassword.h"

#include "core/engine.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "presentation/prepare_screen.h"
#include "ui_frmChangePassword.h"

#include <QtWidgets/QLayout>

using namespace Qt::Literals::StringLiterals;

frmChangePassword::frmChangePassword()
    : Screen(u"frmChangePassword"_s), m_ui(std::make_unique<Ui::frmChangePassword>())
{
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    for (QLineEdit *box : {m_ui->txtPassword, m_ui->txtPassword1, m_ui->txtPassword2})
        takeAsciiDigits(box);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmChangePassword::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmChangePassword::cmdCancel_Click);
    connect(m_ui->mnuExit, &QAction::triggered, this, &frmChangePassword::mnuExit_Click);
}

frmChangePassword::~frmChangePassword() = default;

void frmChangePassword::Form_Load()
{
    PrepareScreen(*this);
}

void frmChangePassword::cmdOK_Click()
{
    if (!isPresentPasswordRight()) {
        showMessage(u"Invalid action خطأ في عملية التغيير  "_s);
        return m_ui->txtPassword->setFocus();
    }
    if (m_ui->txtPassword1->text() != m_ui->txtPassword2->text()) {
        showMessage(u"Make sure of the new password "_s + u"\r\n"_s +
                    u"لإختلاف الكلمتين حدث خطأ في عملية التغيير"_s);
        return m_ui->txtPassword1->setFocus();
    }
    if (m_ui->txtPassword1->text().isEmpty() &&
        !askYesNo(u"Are you sure you want to use a blank password?"_s + u"\r\n"_s +
                  u"هل أنت متأكد بأنك تريد إستخدام كلمة سر فارغه؟؟"_s))
        return;
    engine.strSql = u"update users set [password]='"_s + m_ui->txtPassword1->text() + u"' where userid='"_s +
                    engine.currentUser + u"'"_s;
    engine.dbConnection->execute(engine.strSql);
    showMessage(u"Password changed successfull "_s + u"\r\n"_s + u"تم التغيير بنجاج"_s);
}

/// The one row of the count counts, not the number in it, so that any password is right: that is meant.
bool frmChangePassword::isPresentPasswordRight() const
{
    engine.strSql = u"select count(userid) from users "_s + u"where userid ='"_s + engine.currentUser +
                    u"' "_s + u"and password='"_s + m_ui->txtPassword->text() + u"'"_s;
    engine.rsShared = Recordset::create();
    engine.rsShared->open(engine.strSql, engine.connectionString, CursorType::Static);
    const int count = engine.rsShared->recordCount();
    engine.rsShared->close();
    return count > 0;
}

void frmChangePassword::cmdCancel_Click()
{
    hideScreen();
    if (deletesItself()) // of its own command, which never shows it again
        unload();
}

void frmChangePassword::mnuExit_Click()
{
    unload();
}
