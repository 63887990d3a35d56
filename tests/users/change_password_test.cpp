#include "support/screens.h"
#include "support/store_fixture.h"
#include "users/frmChangePassword.h"

namespace
{

TEST_F(StoreFixture, ChangesThePasswordOfTheSessionsUser)
{
    const QString blank =
        u"Are you sure you want to use a blank password?\r\nهل أنت متأكد بأنك تريد إستخدام كلمة سر فارغه؟؟"_s;
    const QString changed = u"Password changed successfull \r\nتم التغيير بنجاج"_s;
    const QString differ = u"Make sure of the new password \r\nلإختلاف الكلمتين حدث خطأ في عملية التغيير"_s;
    addUser();
    addUser({.userid = u"other"_s});
    const struct {
        bool arabic;
        QString user, present, first, second;
        bool asks, sure;
        QString message; ///< empty: none
        QString password;
        const char *focus;
    } cases[] = {
        {false, u"agent"_s, u"wrong"_s, u"a"_s, u"A"_s, false, false, differ, u"secret"_s, "txtPassword1"},
        {false, u"agent"_s, u""_s, u""_s, u""_s, true, false, u""_s, u"secret"_s, "cmdOK"},
        {true, u"agent"_s, u"wrong"_s, u"new٣"_s, u"new3"_s, false, false, changed, u"new3"_s, "cmdOK"},
        {true, u"agent"_s, u"secret"_s, u""_s, u""_s, true, true, changed, u""_s, "cmdOK"},
        {false, u"nobody"_s, u""_s, u"x"_s, u"x"_s, false, false, changed, u""_s, "cmdOK"},
    };
    frmChangePassword screen;
    const auto enter = [&](const QString &present, const QString &first, const QString &second) {
        fill(screen, "txtPassword", present);
        fill(screen, "txtPassword1", first);
        fill(screen, "txtPassword2", second);
        click(screen, "cmdOK");
    };
    const auto passwords = [] { return rows(u"select password from users"_s).join(u'|'); };
    for (const auto &c : cases) {
        setLanguage(c.arabic);
        engine.currentUser = c.user;
        screen.load();
        ScriptedDialogs dialogs;
        if (c.asks)
            c.sure ? dialogs.expectYes(blank) : dialogs.expectNo(blank);
        if (!c.message.isEmpty())
            dialogs.expectMessage(c.message);
        enter(c.present, c.first, c.second);
        EXPECT_EQ(passwords(), c.password + u"|secret"_s);
        EXPECT_EQ(screen.focusWidget()->objectName(), QLatin1StringView(c.focus));
        EXPECT_TRUE(screen.isLoaded());
    }
    engine.currentUser = u"agent"_s;
    for (const auto &[present, password, number] :
         {std::tuple(u""_s, QString(21, u'x'), u"-2147217833 (80040e57)"_s),
          std::tuple(u"o'hara"_s, u"x"_s, u"-2147217900 (80040e14)"_s)}) {
        ScriptedDialogs dialogs;
        dialogs.expectAnyMessage();
        EXPECT_TRUE(processEnded(
            1, [&, present = present, password = password] { enter(present, password, password); }));
        EXPECT_TRUE(dialogs.shown().back().text.startsWith(u"Run-time error '"_s + number));
    }
    EXPECT_EQ(passwords(), u"|secret"_s);
    EXPECT_EQ(rows(u"select * from audit_users"_s), QStringList());
    click(screen, "cmdCancel");
    EXPECT_TRUE(screen.isLoaded() && !screen.isVisible());
    chooseMenu(screen, "mnuExit");
    EXPECT_FALSE(screen.isLoaded());

    auto *own = new frmChangePassword; // as the commands make it
    own->showModeless();
    click(*own, "cmdCancel");
    EXPECT_TRUE(Screen::loadedScreens().isEmpty());
}

} // namespace
