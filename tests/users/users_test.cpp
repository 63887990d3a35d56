#include "core/navigation.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "users/frmChanges.h"
#include "users/frmNewUser.h"

#include <QtWidgets/QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace
{

class NewUserTest : public StoreFixture
{
protected:
    struct Entry {
        QString userid = u"agent"_s;
        QString name = u"The agent"_s;
        QString password1 = u"secret"_s;
        QString password2 = u"secret"_s;
        QString rank = u"3"_s;
    };
    void enter(const Entry &entry)
    {
        screen.load();
        fill(screen, "txtUserid", entry.userid);
        fill(screen, "txtUsername", entry.name);
        fill(screen, "txtPassword1", entry.password1);
        fill(screen, "txtPassword2", entry.password2);
        choose(screen, "ComboRank", entry.rank);
        click(screen, "cmdOK");
    }
    frmNewUser screen;
};

const QString added = u"User added successfully \r\nتم إضافة المستخدم الجديد بنجاج"_s;
const QString blankPassword =
    u"Are you sure you want to use a blank password?\r\nهل أنت متأكد بأنك تريد إستخدام كلمة سر فارغه؟؟"_s;

TEST_F(NewUserTest, WritesTheFirstUser)
{
    setClock([] { return makeDate(2004, 3, 15, 13, 5, 9); });
    ScriptedDialogs dialogs;
    dialogs.expectMessage(added);
    enter({.userid = u"agent٣"_s, .rank = u"1"_s}); // a typed Arabic digit becomes 3
    EXPECT_EQ(
        rows(u"select "
             u"id,userid,[password],name,rank,lastlogin,createdon,createdby,valid,lastupdate,[language],"
             "fontname,fontsize,fontbold,fontcolor from users"_s),
        QStringList(
            u"1|agent3|secret|The agent|1|(null)|15/03/2004 13:05:09|TEST|True|(null)|ARABIC|Arial|8|true|0"_s));
    EXPECT_FALSE(engine.topUserRank.has_value());
    EXPECT_EQ(textOf(screen, "txtUserid"), u"agent3"_s) << "the boxes stay for the next user";
}

TEST_F(NewUserTest, RefusesInTheToldOrder)
{
    addUser({.userid = u"old"_s, .rank = 2, .valid = false});
    const struct {
        Entry entry;
        qint32 userRank;
        QString text;
        const char *focus; ///< null: stays where it was
    } cases[] = {
        {{.userid = u"OLD"_s, .name = u""_s},
         1,
         u"You have to enter the full name of this new user\r\nيجب إدخال الإسم الحقيقي لهذا المستخدم"_s,
         "txtUsername"},
        {{.userid = u"OLD"_s},
         1,
         u"User already used, choose another one\r\nهذا الإسم مستخدم حالياً فضلاً قم بإختيار إسم آخر  "_s,
         "txtUserid"},
        {{},
         1,
         u"You need to lower the rank.. too high!\r\nيجب عليك تقليل الصلاحيات وأن لا تتفوق على المستخدم الرئيس"_s,
         "ComboRank"},
        {{.password1 = u"x"_s, .rank = u"2"_s},
         1,
         u"You cannot give higher rank than yours\r\nلا تستطيع منح صلاحيات أعلى من صلاحياتك أنت"_s,
         nullptr},
        {{.password1 = u""_s, .rank = u"2"_s},
         2,
         u"An error occured...! \r\nحدث خطأ في عملية الإضافه"_s,
         "txtUserid"},
    };
    for (const auto &c : cases) {
        engine.userRank = c.userRank;
        ScriptedDialogs dialogs;
        dialogs.expectMessage(c.text);
        enter(c.entry);
        EXPECT_EQ(screen.focusWidget()->objectName(), QString::fromLatin1(c.focus ? c.focus : "cmdOK"));
    }
    EXPECT_EQ(engine.topUserRank, 2);
    EXPECT_EQ(rows(u"select userid from users"_s), QStringList(u"old"_s));
}

TEST_F(NewUserTest, AsksBeforeItTakesABlankPasswordAndEndsOnAnEmptyId)
{
    ScriptedDialogs dialogs;
    dialogs.expectNo(blankPassword);
    enter({.password1 = u""_s, .password2 = u""_s});
    dialogs.expectYes(blankPassword);
    dialogs.expectMessage(added);
    enter({.password1 = u""_s, .password2 = u""_s});
    dialogs.expectUntrapped(u"-2147217887 (80040e21)"_s, u"Field 'userid' cannot be a zero-length string."_s);
    EXPECT_TRUE(processEnded(1, [&] { enter({.userid = u""_s}); }));
    EXPECT_EQ(rows(u"select userid,[password] from users"_s), QStringList(u"agent|"_s));
}

TEST_F(NewUserTest, ShowsTheRightsOfARankInTheSessionsLanguage)
{
    const struct {
        bool arabic;
        QString rank;
        QString rights;
    } cases[] = {
        {false, u"1"_s, u"view"_s},
        {false, u"2"_s, u"Add\r\nDelete\r\nModify\r\nView\r\nReports"_s},
        {false, u"3"_s, u"add\r\ndelete\r\nmodify\r\nview\r\nreports"_s},
        {true, u"1"_s, u"مشاهده"_s},
        {true, u"2"_s, u"تعديل\r\nمشاهده\r\nكشوفات"_s},
    };
    for (const auto &c : cases) {
        setLanguage(c.arabic);
        frmNewUser fresh;
        fresh.load();
        EXPECT_EQ(textOf(fresh, "ComboRank"), u"3"_s);
        choose(fresh, "ComboRank", c.rank);
        EXPECT_EQ(textOf(fresh, "rights"), c.rights);
    }
}

TEST_F(StoreFixture, GoesFromTheChangesMenuToEachTable)
{
    QStringList opened;
    navigation.showMembers = [&] { opened << u"members"_s; };
    navigation.newBrowser = [&] {
        opened << u"new "_s + engine.browseTable;
        return new Screen(u"frmUniversalGrid"_s);
    };
    frmChanges screen;
    screen.load();
    for (const char *button :
         {"Command1", "Command2", "Command10", "Command10", "Command3", "Command5", "Command6", "Command7"})
        click(screen, button); // users come with a later version; the second press shows the same browser
    EXPECT_EQ(opened, (QStringList{u"members"_s, u"new ledger"_s, u"new general"_s, u"new audit_users"_s,
                                   u"new audit_members"_s, u"new audit_general"_s}));
    EXPECT_EQ(Screen::loadedScreens().size(), 6);
    click(screen, "Command9");
    EXPECT_FALSE(screen.isLoaded());
}

TEST_F(StoreFixture, MirrorsTheChangesMenuAndHidesItsFrame)
{
    frmChanges screen;
    screen.load();
    const QPoint before = control(screen, "Command2").pos();
    chooseMenu(screen, "mnuInverse");
    EXPECT_NE(control(screen, "Command2").pos(), before);
    chooseMenu(screen, "mnuInverse");
    EXPECT_EQ(control(screen, "Command2").pos(), before);
    for (const bool shown : {false, true}) {
        ScriptedDialogs dialogs;
        dialogs.expectMessage(
            u"Frame left : 4470\r\nusers left : 210\r\nfamily left: 210\r\nGeneral left: 210"_s);
        chooseMenu(screen, "mnuHideFrame");
        EXPECT_EQ(isShown(screen, "Frame1"), shown);
    }
}

} // namespace
