#include "platform/ui/bound_grid.h"
#include "platform/ui/wait.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "users/frmUsers.h"

#include <QtTest/QtTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QToolButton>

namespace
{

const QString yes = u"yes"_s; ///< answers to "Are you sure?"
const QString no = u"no"_s;
const QString notPermitted = u"You do not have enough permission to perform this task!"_s;
const QString notPermittedArabic = u"لا تملك الصلاحيات الكافيه لإتمام هذه العمليه"_s;
const QString invalid =
    u"Invalid entry..  update cancelled  \r\nهذه القيمه غير مناسبه فضلا قم بإدخال شئ مناسب\r\n"_s;
const QString tooLong =
    u"The field is too small to accept the amount of data you attempted to add. Try inserting "
    "or pasting less data."_s;

class UsersTest : public StoreFixture
{
protected:
    UsersTest()
    {
        setClock([] { return makeDate(2004, 3, 15, 13, 5, 9); });
        for (const TestUser &user :
             {TestUser{.userid = u"zaid"_s, .rank = 1}, TestUser{.userid = u"clerk"_s},
              TestUser{.userid = u"agent"_s, .rank = 2}, TestUser{.userid = u"gone"_s, .valid = false}})
            addUser(user);
        execute({u"update users set name='N',lastlogin='01/02/2004 10:00:00'"_s});
        engine.currentUser = u"clerk"_s;
        open();
    }
    ~UsersTest() override { delete screen; }
    /// A fresh screen; its rows are agent, clerk, zaid, and the columns id, userid, name, rank, ...
    void open()
    {
        delete screen;
        screen = new frmUsers;
        screen->showModeless();
        ASSERT_TRUE(QTest::qWaitForWindowActive(screen));
        grid = &control<BoundGrid>(*screen, "grdDataGrid");
    }
    void type(const QString &text)
    {
        pressKey(*grid, Qt::Key_F2);
        fill(*screen->focusWidget(), text);
        pressKey(*screen->focusWidget(), Qt::Key_Return);
        serveEvents();
        serveEvents();
    }
    void stand(int row, int column)
    {
        grid->setFocus();
        grid->setCurrentIndex(grid->model()->index(row, column));
    }
    static void expect(ScriptedDialogs &dialogs, const QStringList &texts,
                       MessageIcon icon = MessageIcon::None)
    {
        for (const QString &text : texts) {
            if (text == yes)
                dialogs.expectYes(engine.textAreYouSure);
            else if (text == no)
                dialogs.expectNo(engine.textAreYouSure);
            else
                dialogs.expectMessage(text).withIcon(icon);
        }
    }
    static QString user(const QString &userid)
    {
        return rows(u"select name,rank,valid from users where userid='"_s + userid + u"'"_s)[0];
    }
    /// The audit rows since the last call.
    static QStringList audits()
    {
        QStringList found = rows(u"select * from audit_users"_s);
        execute({u"delete from audit_users"_s});
        return found;
    }

    QPointer<frmUsers> screen;
    BoundGrid *grid = nullptr;
};

TEST_F(UsersTest, ListsTheValidUsersAndMovesAmongThem)
{
    EXPECT_EQ(grid->rowCount(), 3);
    EXPECT_EQ(grid->cellText(1, 1) + grid->cellText(1, 2) + grid->cellText(1, 3), u"agentclerkzaid"_s);
    EXPECT_EQ(grid->caption(3) + screen->caption(), u"rankProgram Users"_s);
    for (int column = 0; column < grid->columnCount(); ++column) {
        grid->setCurrentIndex(grid->model()->index(0, column));
        EXPECT_EQ(grid->currentIndex().flags().testFlag(Qt::ItemIsEditable), column == 2 || column == 3);
        EXPECT_EQ(grid->findChild<QToolButton *>()->isVisible(), column == 3);
    }
    const std::tuple<int, Qt::KeyboardModifiers, const char *, int> moves[] = {
        {Qt::Key_Up, Qt::NoModifier, "cmdPrevious", 1}, {Qt::Key_PageUp, Qt::NoModifier, "cmdPrevious", 1},
        {Qt::Key_Down, Qt::NoModifier, "cmdNext", 3},   {Qt::Key_PageDown, Qt::NoModifier, "cmdNext", 3},
        {Qt::Key_Home, Qt::NoModifier, "cmdFirst", 1},  {Qt::Key_Up, Qt::ControlModifier, "cmdFirst", 1},
        {Qt::Key_End, Qt::NoModifier, "cmdLast", 3},    {Qt::Key_Down, Qt::ControlModifier, "cmdLast", 3},
    };
    for (const auto &[key, modifiers, button, record] : moves) {
        for (const bool byKey : {true, false}) {
            stand(1, 0);
            byKey ? pressKey(*screen, key, modifiers) : click(*screen, button);
            EXPECT_EQ(textOf(*screen, "lblStatus"), u"Record: %1"_s.arg(record)) << button;
        }
    }
    click(*screen, "cmdNext"); // beyond the last
    EXPECT_EQ(grid->row(), 2);
    setLanguage(true);
    open();
    EXPECT_EQ(grid->caption(3) + screen->caption(), u"الصلاحياتمستخدمي البرنامج"_s);
    pressKey(*screen, Qt::Key_Escape);
    EXPECT_FALSE(screen && screen->isLoaded());
}

TEST_F(UsersTest, AsksChecksAndAuditsEachUpdate)
{
    const QString before = u"N|2|True"_s;
    const QString audit =
        u"(null)|3|agent|(null)|N|2|01/02/2004 10:00:00|(null)|(null)|False|(null)|(null)|(null)|"
        "(null)|(null)|(null)|15/03/2004 13:05:09|clerk|تعديل"_s;
    const struct {
        bool arabic;
        int userRank, column;
        QString typed;
        QStringList dialogs;
        QString stored;
        QString audit;
    } cases[] = {
        {false, 2, 2, u"M"_s, {no}, before, {}},
        {true, 3, 2, u""_s, {yes, invalid + u"الإسم"_s}, before, {}},
        {false, 1, 2, u"M"_s, {yes, notPermitted, invalid + u"rank"_s}, before, {}},
        {true, 1, 3, u"1"_s, {yes, notPermittedArabic, invalid + u"الصلاحيات"_s}, before, {}},
        {false, 1, 2, u""_s, {yes, notPermitted, invalid + u"name"_s}, before, {}},
        {false, 3, 3, u"0"_s, {yes, invalid + u"rank"_s}, before, {}},
        {false, 10, 3, u"4"_s, {yes, invalid + u"rank"_s}, before, {}},
        {false, 10, 3, u"10"_s, {yes, invalid + u"rank"_s}, before, {}},
        {false, 3, 3, u""_s, {yes, invalid + u"rank"_s}, before, {}},
        {false, 2, 3, u"3"_s, {yes, invalid + u"rank"_s}, before, {}},
        {false, 2, 2, u"M"_s, {yes}, u"M|2|True"_s, audit},
        {true, 3, 3, u"3"_s, {yes}, u"N|3|True"_s, audit},
    };
    for (const auto &c : cases) {
        setLanguage(c.arabic);
        engine.userRank = c.userRank;
        execute({u"update users set name='N',rank=2 where userid='agent'"_s});
        open();
        ScriptedDialogs dialogs;
        stand(0, c.column);
        type(c.typed);
        expect(dialogs, c.dialogs);
        pressKey(*screen, Qt::Key_Down);
        EXPECT_EQ(user(u"agent"_s), c.stored);
        EXPECT_EQ(audits().join(u'\n'), c.audit);
        EXPECT_EQ(grid->cellText(2, 1) + u'|' + grid->cellText(3, 1) + u"|True"_s, c.stored);
        EXPECT_EQ(grid->row(), c.audit.isEmpty() ? 0 : 1); // a refused row is not left
        EXPECT_FALSE(grid->isEditing());
    }
    setLanguage(false);
    for (const QString &text : {u"300"_s, u"x"_s}) {
        ScriptedDialogs dialogs;
        dialogs.expectMessage(invalid + u"rank"_s);
        stand(0, 3);
        type(text); // offered again, to be mended
        pressKey(*screen->focusWidget(), Qt::Key_Escape);
        EXPECT_FALSE(grid->isEditing());
    }
}

TEST_F(UsersTest, TakesTheRankFromAListOverItsCell)
{
    stand(0, 3);
    auto &ranks = control<QComboBox>(*screen, "ComboRank");
    const auto press = [&] { grid->findChild<QToolButton *>()->click(); };
    press();
    EXPECT_EQ(ranks.currentText() + ranks.itemText(0) + ranks.itemText(ranks.count() - 1), u"209"_s);
    EXPECT_TRUE(ranks.geometry().contains(grid->cellRect().translated(grid->pos()).center()));
    ranks.showPopup();
    EXPECT_TRUE(ranks.view()->isVisible());
    ranks.hidePopup();
    pressKey(ranks, Qt::Key_Escape);
    EXPECT_FALSE(ranks.isVisible());
    press();
    click(*screen, "cmdNext"); // the focus goes
    EXPECT_FALSE(ranks.isVisible());
    stand(0, 3);
    press();
    choose(*screen, "ComboRank", u"2"_s); // as it was, which is an update all the same
    EXPECT_FALSE(ranks.isVisible());
    ScriptedDialogs dialogs;
    expect(dialogs, {yes});
    click(*screen, "cmdLast");
    EXPECT_EQ(grid->row(), 2);
    EXPECT_EQ(audits().size(), 1);
    execute({u"update users set rank=null"_s});
    click(*screen, "cmdRefresh");
    stand(0, 3);
    press();
    pressKey(ranks, Qt::Key_Return); // nothing is chosen
    EXPECT_FALSE(ranks.isVisible() || grid->isEditing());
}

TEST_F(UsersTest, DeletesByTheOrderOfNames)
{
    const QString own = u"You cannot delete your account!  لا تستطيع إلغاء حسابك بنفسك"_s;
    const QString other =
        u"You cannot delete this account!  لا تستطيع إلغاء حساب مستخدم لديه صلاحيات أعلى من صلاحياتك"_s;
    // A row of no user at all, behind its own number.
    const QString audit =
        u"(null)|(null)|(null)|(null)|(null)|(null)|(null)|False|(null)|(null)|(null)|(null)|"
        "(null)|(null)|15/03/2004 13:05:09|%1|غير معروف"_s;
    const struct {
        bool arabic;
        QString currentUser;
        int userRank, row;
        QStringList dialogs;
        bool deleted, audited;
    } cases[] = {
        {false, u"clerk"_s, 3, 1, {own}, false, false},
        {false, u"clerk"_s, 3, 2, {other}, false, false},
        {true, u"Zaid"_s, 3, 0, {other}, false, false}, // capitals stand before small letters
        {true, u"clerk"_s, 3, 0, {no}, false, false},
        {true, u"clerk"_s, 2, 0, {yes}, true, true},
        {false, u"zaid"_s, 3, 1, {yes}, true, true},
        // Without the right there is no audit row, and the user is deleted all the same.
        {false, u"zaid"_s, 1, 1, {yes, notPermitted, invalid + u"rank"_s}, true, false},
    };
    const QStringList names{u"agent"_s, u"clerk"_s, u"zaid"_s};
    for (const auto &c : cases) {
        setLanguage(c.arabic);
        engine.currentUser = c.currentUser;
        engine.userRank = c.userRank;
        execute({u"update users set valid=true where userid<>'gone'"_s});
        open();
        stand(c.row, 0);
        ScriptedDialogs dialogs;
        expect(dialogs, c.dialogs,
               c.dialogs[0] == own || c.dialogs[0] == other ? MessageIcon::Critical : MessageIcon::None);
        click(*screen, "cmdDelete");
        EXPECT_EQ(user(names[c.row]).endsWith(u"False"), c.deleted);
        EXPECT_EQ(audits().join(u'\n').section(u'|', 2), c.audited ? audit.arg(c.currentUser) : QString());
        EXPECT_EQ(grid->rowCount(), c.deleted ? 2 : 3);
        EXPECT_EQ(grid->row(), c.deleted ? 0 : c.row);
    }
    execute({u"update users set valid=false"_s});
    click(*screen, "cmdRefresh");
    ScriptedDialogs dialogs;
    click(*screen, "cmdDelete"); // nothing in an empty grid
    dialogs.expectMessage(u"Either BOF or EOF is True, or the current record has been deleted. Requested "
                          "operation requires a current record."_s);
    click(*screen, "cmdFirst");
}

TEST_F(UsersTest, LosesNoEditWhenItIsClosedOrTheStoreFails)
{
    const QString save = u"Do you want to save the changes?"_s;
    const auto change = [this] {
        open();
        stand(0, 2);
        type(u"M"_s);
    };
    ScriptedDialogs dialogs;
    change();
    click(*screen, "cmdClose"); // not with an edit
    EXPECT_TRUE(screen->isLoaded());
    pressKey(*screen, Qt::Key_Escape); // which is taken back
    click(*screen, "cmdClose");
    EXPECT_FALSE(screen->isLoaded());

    change();
    dialogs.expectNo(save);
    chooseMenu(*screen, "mnuExit");
    EXPECT_FALSE(screen->isLoaded());
    change();
    engine.userRank = 1;
    dialogs.expectYes(save);
    expect(dialogs, {notPermitted, invalid + u"rank"_s});
    screen->close();
    EXPECT_TRUE(screen->isLoaded());
    EXPECT_EQ(user(u"agent"_s), u"N|2|True"_s);
    engine.userRank = 3;
    open();
    stand(0, 2);
    pressKey(*grid, Qt::Key_F2);
    fill(*screen->focusWidget(), u"M"_s);
    pressKey(*screen, Qt::Key_End); // moves in the cell, which stays open
    dialogs.expectYes(save);
    screen->saveTyped(); // as the end of the program does
    EXPECT_EQ(user(u"agent"_s), u"M|2|True"_s);
    EXPECT_EQ(audits().size(), 1);
    pressKey(*grid, Qt::Key_F2);
    fill(*screen->focusWidget(), QString(51, u'x'));
    expect(dialogs, {tooLong});
    screen->saveTyped(); // tells it before the store is closed
    EXPECT_EQ(dialogs.shown().back().text, tooLong);
    pressKey(*screen->focusWidget(), Qt::Key_Escape);

    execute({u"drop table audit_users"_s, u"update users set name='N'"_s});
    change();
    expect(dialogs, {yes});
    dialogs.expectAnyMessage();
    click(*screen, "cmdNext");
    EXPECT_EQ(grid->row(), 0);
    EXPECT_EQ(grid->cellText(2, 1) + user(u"agent"_s), u"MN|2|True"_s);
    engine.dbConnection->close();
    expect(dialogs, {u"Operation is not allowed when the object is closed."_s});
    click(*screen, "cmdNext");
    click(*screen, "cmdClose");
    EXPECT_FALSE(screen->isLoaded());
}

} // namespace
