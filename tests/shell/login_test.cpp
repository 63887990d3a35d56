#include "core/program_place.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "shell/frmLogin.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "users/frmNewUser.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

class LoginTest : public StoreFixture
{
protected:
    LoginTest() { engine.currentUser = u"TEST"_s; }
    void logIn(const QString &user, const QString &password)
    {
        screen.load();
        fill(screen, "txtUsername", user);
        fill(screen, "txtPassword", password);
        click(screen, "cmdOK");
    }
    const QString invalid = u"Invalid login خطأ في عملية الدخول  "_s;
    frmLogin screen;
};

TEST_F(LoginTest, TakesOverTheUserAndStampsTheLogin)
{
    addUser({.rank = 2,
             .language = u"English"_s,
             .fontName = u"Tahoma"_s,
             .fontSize = u"13"_s,
             .fontBold = u"False"_s,
             .fontColor = u"32767"_s});
    setClock([] { return makeDate(2004, 3, 15, 13, 5, 9); });
    logIn(u"AGENT"_s, u"SECRET"_s); // letter case does not count in the store
    EXPECT_TRUE(screen.LoginSucceeded);
    EXPECT_EQ(engine.currentUser, u"AGENT"_s);
    EXPECT_EQ(engine.userRank, 2);
    EXPECT_FALSE(engine.isArabic);
    EXPECT_EQ(engine.userFontName, u"Tahoma"_s);
    EXPECT_EQ(engine.userFontSize, 13);
    EXPECT_FALSE(engine.userFontBold);
    EXPECT_EQ(engine.userFontColor, 32767);
    EXPECT_EQ(rows(u"select lastlogin from users"_s), QStringList(u"15/03/2004 13:05:09"_s));
}

TEST_F(LoginTest, FallsBackToArabicAndItsOwnFontForNullFields)
{
    addUser({.language = {}, .fontName = {}, .fontSize = {}, .fontBold = {}, .fontColor = {}});
    engine.userFontSize = 11;
    logIn(u"agent"_s, u"secret"_s);
    EXPECT_TRUE(screen.LoginSucceeded);
    EXPECT_TRUE(engine.isArabic);
    EXPECT_EQ(engine.userFontName, control(screen, "txtUsername").font().family());
    EXPECT_EQ(engine.userFontSize, 11) << "the size has no default here";
    EXPECT_EQ(engine.userFontColor, 0);
}

TEST_F(LoginTest, RefusesAndStays)
{
    addUser({.userid = u"agent"_s});
    addUser({.userid = u"gone"_s, .valid = false});
    const struct {
        QString user;
        QString password;
        QString text;
    } cases[] = {{u""_s, u"secret"_s, u"Invalid Password, try again!  خطأ في عملية الدخول   "_s},
                 {u"agent"_s, u"secret2"_s, invalid},
                 {u"gone"_s, u"secret"_s, invalid}};
    for (const auto &c : cases) {
        ScriptedDialogs dialogs;
        dialogs.expectMessage(c.text);
        logIn(c.user, c.password);
        EXPECT_FALSE(screen.LoginSucceeded);
        EXPECT_EQ(screen.focusWidget()->objectName(), u"txtUsername"_s);
        if (c.user.isEmpty()) {
            EXPECT_EQ(dialogs.shown()[0].icon, MessageIcon::Critical);
            EXPECT_EQ(dialogs.shown()[0].title, u"Login"_s);
        }
    }
    click(screen, "cmdCancel");
    EXPECT_FALSE(screen.LoginSucceeded);
    EXPECT_EQ(rows(u"select lastlogin from users"_s), (QStringList{u"(null)"_s, u"(null)"_s}));
}

TEST_F(LoginTest, EndsTheProcessOnAnApostropheAndOnALargeColour)
{
    addUser({.fontColor = u"32768"_s});
    const struct {
        QString password;
        QString number;
    } cases[] = {{u"secret"_s, u"6"_s},
                 {u"it's"_s, u"-2147217900 (80040e14)"_s},
                 {u"x'; delete from users"_s, u"-2147217900 (80040e14)"_s}};
    for (const auto &c : cases) {
        ScriptedDialogs dialogs;
        dialogs.expectAnyMessage();
        EXPECT_TRUE(processEnded(1, [&] { logIn(u"agent"_s, c.password); }));
        EXPECT_TRUE(dialogs.shown()[0].text.startsWith(u"Run-time error '"_s + c.number))
            << dialogs.shown()[0].text.toStdString();
        EXPECT_FALSE(screen.LoginSucceeded);
    }
    EXPECT_EQ(rows(u"select userid from users"_s), QStringList(u"agent"_s));
}

TEST_F(LoginTest, DemandsAFirstUserAndAdmitsWithoutOne)
{
    ScriptedDialogs dialogs;
    dialogs
        .expectMessage(
            u"You have to create a user SOON!  \r\nيجب عليك أن تحدد مستخدم وكلمة سر حتى تضمن الحمايه الكافيه للمعلومات في هذا البرنامج"_s)
        .withIcon(MessageIcon::Critical);
    onModal<frmNewUser>([](frmNewUser &newUser) {
        EXPECT_EQ(textOf(newUser, "txtUserid"), operatingSystemUser());
        click(newUser, "cmdCancel");
    });
    screen.load();
    EXPECT_EQ(engine.userFontName, u"New Roman Times"_s);
    EXPECT_EQ(engine.userFontSize, 10);
    EXPECT_TRUE(engine.userFontBold);
    fill(screen, "txtUsername", u"somebody"_s);
    screen.showModeless();
    pressKey(screen, Qt::Key_Return);
    EXPECT_TRUE(screen.LoginSucceeded);
    EXPECT_EQ(engine.currentUser, operatingSystemUser());
    EXPECT_EQ(engine.userRank, 10);
    EXPECT_TRUE(engine.isArabic);
}

} // namespace
