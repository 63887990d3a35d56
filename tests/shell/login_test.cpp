#include "core/program_place.h"
#include "shell/frmLogin.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "users/frmNewUser.h"

namespace
{

class LoginTest : public StoreFixture
{
protected:
    void logIn(const QString &user, const QString &password)
    {
        screen.load();
        paste(screen, "txtUsername", user);
        fill(screen, "txtPassword", password);
        click(screen, "cmdOK");
    }
    /// What a login leaves in the session.
    QString session() const
    {
        return QStringList{screen.LoginSucceeded ? u"in"_s : u"out"_s,
                           engine.currentUser,
                           engine.userRank ? QString::number(*engine.userRank) : u"none"_s,
                           engine.isArabic ? u"ar"_s : u"en"_s,
                           engine.userFontName,
                           QString::number(engine.userFontSize),
                           Value(engine.userFontBold).toText(),
                           QString::number(engine.userFontColor)}
            .join(u'|');
    }
    frmLogin screen;
};

TEST_F(LoginTest, TakesOverTheUserAndStampsTheLogin)
{
    execute(
        {u"insert into users (userid,[password],rank,[language],fontname,fontsize,fontbold,fontcolor,valid) "
         "values ('agent1','secret',2,'English','Tahoma','13','False','32767',true)"_s,
         u"insert into users (userid,[password],valid) values ('heir','x',true)"_s});
    setClock([] { return makeDate(2004, 3, 15, 13, 5, 9); });
    logIn(u"AGENT١"_s, u"SECRET"_s); // letter case does not count in the store
    EXPECT_EQ(session(), u"in|AGENT1|2|en|Tahoma|13|False|32767"_s);
    logIn(u"heir"_s, u"x"_s); // all Null: Arabic and the box's own font, but no default for the size
    const QFont box = control(screen, "txtUsername").font();
    EXPECT_EQ(session(),
              u"in|heir|none|ar|"_s + box.family() + u"|13|"_s + Value(box.bold()).toText() + u"|0"_s);
    EXPECT_EQ(rows(u"select lastlogin from users"_s), QStringList(2, u"15/03/2004 13:05:09"_s));
}

TEST_F(LoginTest, RefusesAndStays)
{
    addUser({.userid = u"agent"_s});
    addUser({.userid = u"gone"_s, .valid = false});
    const QString wrong = u"Invalid login خطأ في عملية الدخول  "_s;
    const std::tuple<QString, QString, QString> cases[] = {
        {u""_s, u"secret"_s, u"Invalid Password, try again!  خطأ في عملية الدخول   "_s},
        {u"agent"_s, u"secret2"_s, wrong},
        {u"agent"_s, u""_s, wrong},
        {u"gone"_s, u"secret"_s, wrong},
        {QString(10000, u'ن'), u"secret"_s, wrong},
        {u"agent\u0001\u001B\u202E\0;--"_s, u"secret"_s, wrong},
        {u"agent"_s + QChar(0xD800), u"secret"_s, wrong},
    };
    for (const auto &[user, password, refusal] : cases) {
        ScriptedDialogs dialogs;
        dialogs.expectMessage(refusal)
            .withIcon(user.isEmpty() ? MessageIcon::Critical : MessageIcon::None)
            .withTitle(user.isEmpty() ? u"Login"_s : u""_s);
        logIn(user, password);
        EXPECT_EQ(screen.focusWidget()->objectName(), u"txtUsername"_s);
    }
    click(screen, "cmdCancel");
    EXPECT_FALSE(screen.LoginSucceeded);
    EXPECT_EQ(rows(u"select lastlogin from users"_s), QStringList(2, u"(null)"_s));
}

TEST_F(LoginTest, EndsTheProcessOnAnApostropheAndOnALargeColour)
{
    addUser({.fontColor = u"32768"_s});
    for (const QString &password : {u"secret"_s, u"it's"_s, u"x'; delete from users"_s}) {
        ScriptedDialogs dialogs;
        dialogs.expectAnyMessage();
        EXPECT_TRUE(processEnded(1, [&] { logIn(u"agent"_s, password); }));
        const QString number = password == u"secret"_s ? u"'6'"_s : u"'-2147217900 (80040e14)'"_s;
        EXPECT_TRUE(dialogs.shown()[0].text.startsWith(u"Run-time error "_s + number))
            << password.toStdString();
        EXPECT_FALSE(screen.LoginSucceeded);
    }
    EXPECT_EQ(rows(u"select userid,lastlogin from users"_s), QStringList(u"agent|(null)"_s));
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
    fill(screen, "txtUsername", u"somebody"_s);
    screen.showModeless();
    pressKey(screen, Qt::Key_Return);
    EXPECT_EQ(session(), u"in|"_s + operatingSystemUser() + u"|10|ar|New Roman Times|10|True|0"_s);
}

} // namespace
