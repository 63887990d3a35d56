#include "shell/frmLogin.h"

#include "core/engine.h"
#include "core/program_place.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"
#include "platform/ui/color_number.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "presentation/prepare_screen.h"
#include "ui_frmLogin.h"
#include "users/frmNewUser.h"

#include <QtWidgets/QLayout>

using namespace Qt::Literals::StringLiterals;

frmLogin::frmLogin() : Screen(u"frmLogin"_s), m_ui(std::make_unique<Ui::frmLogin>())
{
    m_ui->setupUi(this);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    takeAsciiDigits(m_ui->txtUsername);
    takeAsciiDigits(m_ui->txtPassword);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmLogin::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmLogin::cmdCancel_Click);
}

frmLogin::~frmLogin() = default;

void frmLogin::Form_Load()
{
    engine.isArabic = true;
    PrepareScreen(*this);
    m_noUsersYet = false;
    m_ui->txtUsername->setText(operatingSystemUser());
    engine.currentUser = m_ui->txtUsername->text();
    LoginSucceeded = false;

    engine.rsShared = Recordset::create();
    engine.rsShared->open(u"select * from users where valid=true"_s, engine.dbConnection, CursorType::Keyset,
                          LockType::Optimistic);
    if (engine.rsShared->recordCount() < 1)
        demandFirstUser();
}

void frmLogin::demandFirstUser()
{
    showMessage(u"You have to create a user SOON!  "_s + u"\r\n"_s +
                    u"يجب عليك أن تحدد مستخدم وكلمة سر حتى تضمن الحمايه الكافيه للمعلومات في هذا البرنامج"_s,
                MessageIcon::Critical);
    engine.userFontName = u"New Roman Times"_s; // in this order of words: that is meant
    engine.userFontSize = 10;
    engine.userFontBold = true;
    engine.userFontColor = 0;
    m_noUsersYet = true;

    frmNewUser newUser;
    newUser.load();
    newUser.setUserId(engine.currentUser);
    newUser.showModal();
    newUser.unload();
}

void frmLogin::cmdOK_Click()
{
    if (m_noUsersYet) { // nothing is checked, whether or not a user was made: that is meant
        LoginSucceeded = true;
        hideScreen();
        return;
    }
    const QString username = m_ui->txtUsername->text();
    if (username.isEmpty()) {
        showMessage(u"Invalid Password, try again!  خطأ في عملية الدخول   "_s, MessageIcon::Critical,
                    u"Login"_s);
        m_ui->txtUsername->setFocus();
        return;
    }
    // The two texts go in as they were typed: that is meant.
    engine.strSql = u"select * from users "_s + u"where userid ='"_s + username + u"' "_s +
                    u"and password='"_s + m_ui->txtPassword->text() + u"' "_s + u"and valid=true"_s;
    engine.rsShared = Recordset::create();
    engine.rsShared->open(engine.strSql, engine.connectionString, CursorType::Static, LockType::Optimistic);
    if (engine.rsShared->eof()) {
        showMessage(u"Invalid login خطأ في عملية الدخول  "_s);
        m_ui->txtUsername->setFocus();
        engine.rsShared->close();
        return;
    }
    engine.currentUser = username;
    takeOverUser(*engine.rsShared);
    engine.rsShared->close();
    engine.stampNow = now();
    engine.dbConnection->execute(u"update users set lastlogin='"_s + generalDate(engine.stampNow) +
                                 u"' where userid='"_s + username + u"'"_s);
    engine.rsShared.reset();
    LoginSucceeded = true;
    hideScreen();
}

void frmLogin::takeOverUser(const Recordset &user)
{
    const Value rank = user.value(u"rank"_s);
    engine.userRank = rank.isNull() ? std::nullopt : std::optional(rank.toInt());

    const QFont font = m_ui->txtUsername->font();
    engine.userFontName = font.family();
    engine.userFontBold = font.bold();
    engine.userFontColor = colorNumber(m_ui->txtUsername->palette().color(QPalette::Text));
    // The box's size goes nowhere: the session's size has no default here, and that is meant.

    const Value language = user.value(u"language"_s);
    engine.isArabic = language.isNull() || language.toText().toUpper() == u"ARABIC"_s;

    if (const Value name = user.value(u"fontname"_s); !name.isNull())
        engine.userFontName = name.toText();
    if (const Value size = user.value(u"fontsize"_s); !size.isNull())
        engine.userFontSize = toInteger(size.toText());
    if (const Value bold = user.value(u"fontbold"_s); !bold.isNull())
        engine.userFontBold = toBoolean(bold.toText());
    // Through 16 bits: a colour above 32767 ends the login with an overflow, and that is meant.
    if (const Value color = user.value(u"fontcolor"_s); !color.isNull())
        engine.userFontColor = toInteger(color.toText());
}

void frmLogin::cmdCancel_Click()
{
    hideScreen();
}
