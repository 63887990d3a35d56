#include "core/navigation.h"
#include "platform/ui/wait.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "users/frmChanges.h"
#include "users/frmNewUser.h"

namespace
{

class NewUserTest : public StoreFixture
{
protected:
    /// Fills the boxes in their order, without the second password when it is to equal the first.
    void enter(const QString &userid, const QString &name, const QString &password, const QString &rank,
               const QString &again = {})
    {
        screen.load();
        fill(screen, "txtUserid", userid);
        paste(screen, "txtUsername", name);
        fill(screen, "txtPassword1", password);
        fill(screen, "txtPassword2", again.isNull() ? password : again);
        choose(screen, "ComboRank", rank);
        click(screen, "cmdOK");
    }
    frmNewUser screen;
};

TEST_F(NewUserTest, WritesTheFirstUserWhateverTheRank)
{
    setClock([] { return makeDate(2004, 3, 15, 13, 5, 9); });
    const QString blank =
        u"Are you sure you want to use a blank password?\r\nهل أنت متأكد بأنك تريد إستخدام كلمة سر فارغه؟؟"_s;
    ScriptedDialogs dialogs;
    dialogs.expectNo(blank);
    enter(u"agent٣"_s, u"The agent"_s, u""_s, u"1"_s); // a typed Arabic digit becomes 3
    dialogs.expectYes(blank);
    dialogs.expectMessage(u"User added successfully \r\nتم إضافة المستخدم الجديد بنجاج"_s);
    click(screen, "cmdOK");
    const QString row =
        u"1|agent3||The agent|1|(null)|15/03/2004 13:05:09|TEST|True|(null)|ARABIC|Arial|8|true|0"_s;
    EXPECT_EQ(rows(u"select * from users"_s), QStringList(row));
    EXPECT_FALSE(engine.topUserRank.has_value());
    const std::tuple<QString, QString, QString> refused[] = {
        // by the store: user id, name, beginning
        {u""_s, u"x"_s, u"-2147217887 (80040e21)"_s},
        {QString(21, u'x'), u"x"_s, u"-2147217887 (80040e21)"_s},
        {u"x"_s, QString(10000, u'ن'), u"-2147217887 (80040e21)"_s},
        {u"o'hara"_s, u"x"_s, u"-2147217900 (80040e14)"_s}};
    for (const auto &[userid, name, number] : refused) {
        dialogs.expectAnyMessage();
        EXPECT_TRUE(
            processEnded(1, [&, userid = userid, name = name] { enter(userid, name, u"x"_s, u"1"_s); }));
        EXPECT_TRUE(dialogs.shown().back().text.startsWith(u"Run-time error '"_s + number));
    }
    EXPECT_EQ(rows(u"select * from users"_s), QStringList(row));
    EXPECT_EQ(rows(u"select * from audit_users"_s), QStringList()); // new users leave none
}

TEST_F(NewUserTest, RefusesInTheToldOrder)
{
    addUser({.userid = u"old"_s, .rank = 2, .valid = false});
    const struct {
        bool master;
        int userRank;
        QString userid, name, rank;
        const char *focus;
        QString text;
    } cases[] = {
        {true, 1, u"OLD"_s, u""_s, u"2"_s, "txtUsername",
         u"You have to select the highest RANK for the Master User\r\nيجب عليك أن تختار أعلى الصلاحيات لأول مستخدم"_s},
        {true, 1, u"OLD"_s, u""_s, u"3"_s, "txtUsername",
         u"You have to enter the full name of this new user\r\nيجب إدخال الإسم الحقيقي لهذا المستخدم"_s},
        {false, 1, u"OLD"_s, u"x"_s, u"3"_s, "txtUserid",
         u"User already used, choose another one\r\nهذا الإسم مستخدم حالياً فضلاً قم بإختيار إسم آخر  "_s},
        {false, 1, u"new"_s, u"x"_s, u"3"_s, "ComboRank",
         u"You need to lower the rank.. too high!\r\nيجب عليك تقليل الصلاحيات وأن لا تتفوق على المستخدم الرئيس"_s},
        {false, 1, u"new"_s, u"x"_s, u"2"_s, "cmdOK",
         u"You cannot give higher rank than yours\r\nلا تستطيع منح صلاحيات أعلى من صلاحياتك أنت"_s},
        {false, 2, u"new"_s, u"x"_s, u"2"_s, "txtUserid",
         u"An error occured...! \r\nحدث خطأ في عملية الإضافه"_s},
    };
    for (const auto &c : cases) {
        setLanguage(!c.master);
        engine.masterUserEntry = c.master;
        engine.userRank = c.userRank;
        ScriptedDialogs dialogs;
        dialogs.expectMessage(c.text);
        enter(c.userid, c.name, u"a"_s, c.rank, u"b"_s);
        EXPECT_EQ(screen.focusWidget()->objectName(), QLatin1StringView(c.focus));
    }
    EXPECT_EQ(rows(u"select userid from users"_s), QStringList(u"old"_s));
}

TEST_F(NewUserTest, ShowsTheRightsOfARankInTheSessionsLanguage)
{
    const auto rights = [](bool arabic, const QString &rank) {
        setLanguage(arabic);
        frmNewUser fresh;
        fresh.load();
        choose(fresh, "ComboRank", rank);
        return textOf(fresh, "rights").replace(u'\n', u' ');
    };
    EXPECT_EQ(rights(false, u"1"_s), u"view"_s);
    EXPECT_EQ(rights(false, u"2"_s), u"Add Delete Modify View Reports"_s);
    EXPECT_EQ(rights(false, u"3"_s), u"add delete modify view reports"_s);
    EXPECT_EQ(rights(true, u"3"_s), u"إضافه حذف تعديل مشاهده كشوفات"_s);
    EXPECT_EQ(rights(true, u"2"_s), u"تعديل مشاهده كشوفات"_s);
}

TEST_F(StoreFixture, KeepsABrowserForEachTable)
{
    QString log;
    navigation.newBrowser = [&] {
        const QCursor *pointer = QGuiApplication::overrideCursor();
        log = pointer && pointer->shape() == Qt::WaitCursor ? engine.browseTable : u"no hourglass"_s;
        return new Screen(u"frmUniversalGrid"_s);
    };
    auto *screen = new frmChanges;
    const auto logOf = [&](const char *button) {
        log.clear();
        engine.browseTable = u"another"_s;
        click(*screen, button);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        return log + u'>' + engine.browseTable;
    };
    screen->load();
    for (const auto &[button, table] :
         {std::pair("Command10", u"ledger"_s), std::pair("Command3", u"general"_s),
          std::pair("Command5", u"audit_users"_s), std::pair("Command6", u"audit_members"_s),
          std::pair("Command7", u"audit_general"_s)}) {
        EXPECT_EQ(logOf(button), table + u'>' + table);
        EXPECT_EQ(logOf(button), u'>' + table); // the same one again
        Screen::loadedScreens().back()->unload();
        EXPECT_EQ(logOf(button), table + u'>' + table); // a closed one loads afresh
    }
    EXPECT_EQ(Screen::loadedScreens().size(), 6);
    screen->unload();
    serveEvents();
    screen = new frmChanges;
    screen->load();
    EXPECT_EQ(logOf("Command3"), u">general"_s); // no second browser of a table
    EXPECT_EQ(Screen::loadedScreens().size(), 6);
}

TEST_F(StoreFixture, HidesAndPlacesTheFrameOfTheChangesMenu)
{
    frmChanges screen;
    screen.load();
    chooseMenu(screen, "mnuInverse");
    const QString lefts = u"users left : 210\r\nfamily left: 210\r\nGeneral left: 210"_s;
    ScriptedDialogs dialogs;
    dialogs.expectMessage(u"Frame left : 360\r\n"_s + lefts); // 600 - (298 + 278) pixels
    chooseMenu(screen, "mnuHideFrame");
    EXPECT_FALSE(isShown(screen, "Frame1"));
    chooseMenu(screen, "mnuInverse");
    dialogs.expectMessage(u"Frame left : 4470\r\n"_s + lefts);
    chooseMenu(screen, "mnuHideFrame");
    EXPECT_TRUE(isShown(screen, "Frame1"));
}

} // namespace
