#include "browser/frmUniversalGrid.h"
#include "entry/posting.h"
#include "platform/ui/application.h"
#include "platform/ui/flex_grid.h"
#include "shell/frmMain.h"
#include "tutorial_fixture.h"
#include "users/frmNewUser.h"

#include <QtCore/QDir>
#include <QtGui/QGuiApplication>

namespace
{

class TutorialTest : public TutorialFixture
{
protected:
    /// The marks of the screen, those that are to be seen.
    QString marks()
    {
        QString shown;
        for (const char *name : {"lblTutorial", "mnuGenerateData", "mnuStopTutorial", "mnuStartTutorial"})
            shown += isShown(main, name) ? u'1' : u'0';
        return shown;
    }
    QString either(const QString &english, const QString &arabic) const
    {
        return engine.isArabic ? arabic : english;
    }
    QString existing() const
    {
        return either(
            u"Do you want to delete the existing Tutorial database and creaet a new one from scratch?"_s,
            u"هل تريد حذف قاعدة البيانات التدريبيه الموجوده الآن وإنشاء قاعدة بيانات جديده بالكامل؟"_s);
    }
    QString offer() const
    {
        return either(
            u"You can now generate data automatically to practice the program, do you want to do it now?"_s,
            u"تستطيع الآن تكوين معلومات وههميه بمساعدة البرنامج لكي تتعود على إستخدامه,\nهل تريد القيام بذلك الآن؟                                              "_s);
    }
    QString notMade() const
    {
        return either(u"db creation failed.. try again later"_s, u"فشل البرنامج في إنشاء قاعدة البيانات!"_s);
    }
    const QString off = u"0001"_s;
    const QString on = u"1110"_s;
    frmMain main;
    ScriptedDialogs dialogs;
};

TEST_F(TutorialTest, TellsWhatItIsForAndWantsAFitFamily)
{
    execute({u"update members set relation=9"_s});
    QFile::copy(engine.storeFilePath, engine.testStorePath);
    main.load();
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        EXPECT_EQ(marks(), off);
        dialogs.expectMessage(
            arabic
                ? u"بإمكانك التدرًب على هذا البرنامج قبل الإستخدام الفعلي له عن طريق تكوين\r\nمعلومات وهميه سوف يقوم البرنامج بتكوينها لك بعد إدخال أفراد العائله "_s
                : u"This tool will enable you to create automatically generated transactions that \r\nwill enable you to examine this program and all of its functions.  You can  \r\nuse this exercise to generate several hundreds of transactions after you have \r\nentered the family members information and when you have decided to enter valid\r\ntransactions, you can stop the Tutorial.                                      "_s);
        chooseMenu(main, "mnuTutorial");
        dialogs.expectMessage(either(u"You have to create family members in order to use this exercise"_s,
                                     u"يتوجًب عليك إدخال أفراد العائله لكي تبدأ هذا التمرين"_s));
        chooseMenu(main, "mnuStartTutorial");
        dialogs.expectMessage(
            either(u"You have to Start the tutorial first!"_s, u"يجب أن تبدأ التمرين أولاً!"_s));
        control<QAction>(main, "mnuGenerateData").trigger();
        EXPECT_EQ(marks(), off);
        for (int i = 0; i < 2; ++i) // at its load and at a start
            dialogs.expectMessage(
                either(u"The family members information is not valid, please correct the problem!"_s,
                       u"معلومات أفراد العائله غير صحيحه أو ناقصه.  يجب إصلاح ذلك أولاً!"_s));
        frmGenerateData generator;
        generator.load();
        click(generator, "cmdStart");
    }
}

TEST_F(TutorialTest, LeavesTheRealStoreAsItWas)
{
    execute({u"update settings set lastcompacted='01/01/2000',sn=41"_s});
    addUser({.userid = u"taken"_s});
    main.load();
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        const QStringList before = realRows();
        if (arabic)
            dialogs.expectYes(existing());
        dialogs.expectYes(offer()).meanwhile([&] {
            EXPECT_EQ(marks(), on);
            EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
            EXPECT_EQ(
                testRows(
                    u"select name, sex, title, relation, dob, [group], valid, lastupdate from members"_s),
                shellRows(u"select name, sex, title, relation, dob, [group], valid, lastupdate from members "
                          "where valid = -1"_s));
            EXPECT_EQ(testRows(u"select desceased, sn from settings"_s),
                      QStringList{arabic ? u"غير معروف|0"_s : u"unknown|0"_s});
        });
        onModal<frmGenerateData>([&](frmGenerateData &generator) {
            dialogs.expectAnyMessage();
            click(generator, "cmdStart");
            click(generator, "cmdExit");
        });
        chooseMenu(main, "mnuStartTutorial");
        EXPECT_EQ(testRows(u"select count(*) from general"_s), QStringList{u"20"_s});

        Entry entry;
        entry.date = makeDate(2004, 1, 2);
        entry.paymentMethod = u"x"_s;
        dialogs.expectAnyMessage();
        postRevenue(entry, u"100"_s, {u"Omar"_s}, [](const QString &) { return Money::fromUnits(100); });
        dialogs.expectAnyMessage();
        postExpense(entry, u"50"_s, {u"Omar"_s});
        engine.browseTable = u"general"_s;
        frmUniversalGrid browser;
        browser.showModeless();
        dialogs.expectAnyMessage();
        chooseMenu(browser, "mnuModify");
        auto &grid = control<FlexGrid>(browser, "FGrid");
        grid.setFocus();
        grid.setCell(1, grid.columnOf(u"transactiondetail"_s));
        pressKey(browser, Qt::Key_F2);
        hand::fill(*browser.focusWidget(), u"rent"_s);
        dialogs.expectYes(engine.textSaveChanges); // asked before the generator attaches the store anew
        dialogs.expectAnyMessage();
        chooseMenu(main, "mnuGenerateData");
        EXPECT_EQ(
            testRows(
                u"select count(*) from general where transactiondetail||'' = 'rent'; select count(*) from "
                "audit_general; select sn from settings"_s),
            (QStringList{u"1"_s, u"1"_s, u"22"_s}));
        browser.unload();
        frmNewUser user;
        user.load();
        for (const char *box : {"txtUserid", "txtUsername", "txtPassword1", "txtPassword2"})
            fill(user, box, u"taken"_s);
        dialogs.expectAnyMessage(); // the name is looked for in the real store
        click(user, "cmdOK");
        fill(user, "txtUserid", u"trainee"_s);
        dialogs.expectAnyMessage();
        click(user, "cmdOK");
        EXPECT_EQ(testRows(u"select userid from users"_s), QStringList{u"trainee"_s});

        QStringList expected = before;
        EXPECT_EQ(realRows(), expected);
        expected.replaceInStrings(u"01/01/2000"_s, generalDate(today()));
        dialogs.expectAnyMessage();
        dialogs.expectAnyMessage();
        chooseMenu(main, "mnuCompact"); // works on the real store, and stays there
        EXPECT_TRUE(engine.tutorialMode &&
                    engine.dbConnection->connectionString() == engine.connectionString);
        chooseMenu(main, "mnuStopTutorial");
        EXPECT_EQ(marks(), off);
        EXPECT_FALSE(engine.tutorialMode);
        EXPECT_EQ(realRows(), expected);
        EXPECT_EQ(Screen::loadedScreens(), (QList<Screen *>{&main, &user}));
        user.unload();
    }
}

TEST_F(TutorialTest, KeepsOrReplacesTheStoreThatIsThere)
{
    main.load();
    const QStringList before = realRows();
    for (const auto &[yes, kept] :
         {std::pair(false, u"unknown"_s), {false, u"kept"_s}, {true, u"unknown"_s}}) {
        if (QFile::exists(engine.testStorePath)) {
            if (yes)
                dialogs.expectYes(existing());
            else
                dialogs.expectNo(existing());
        }
        dialogs.expectNo(offer());
        chooseMenu(main, "mnuStartTutorial");
        EXPECT_EQ(testRows(u"select desceased from settings"_s), QStringList{kept});
        execute({u"update settings set desceased='kept'"_s, u"delete from members"_s});
        chooseMenu(main, "mnuStopTutorial");
        EXPECT_EQ(realRows(), before);
    }
    // A kept store without a family: no generator.
    dialogs.expectNo(existing());
    dialogs.expectYes(offer());
    dialogs.expectMessage(u"The family members information is not valid, please correct the problem!"_s);
    chooseMenu(main, "mnuStartTutorial");
    EXPECT_EQ(marks(), on);
}

TEST_F(TutorialTest, GoesOnWithTheRealStoreWhenItCannotStart)
{
    main.load();
    const QStringList before = realRows();
    const QString &path = engine.testStorePath;
    const QString backup = folder() + u"/testdb_backup.mdb"_s;
    const auto startFails = [&] {
        chooseMenu(main, "mnuStartTutorial");
        EXPECT_EQ(marks(), off);
        EXPECT_FALSE(engine.tutorialMode);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(engine.dbConnection->connectionString(), engine.connectionString);
        EXPECT_EQ(dumpOf(engine.dbConnection, {u"members"_s}).size(), 4);
        EXPECT_EQ(realRows(), before);
    };
    for (const QByteArray &content : {QByteArray(), QByteArray(4096, 'x'), QByteArray(5000, 'x')}) {
        writeFile(path, content);
        dialogs.expectNo(existing());
        dialogs.expectAnyMessage();
        startFails();
        const QString told = dialogs.shown().back().text;
        EXPECT_TRUE(told.startsWith(u"-2147"_s) && told.contains(u" -> "_s)) << told.toStdString();
        EXPECT_EQ(bytesOf(path), content);
    }
    QFile::remove(path);
    QDir().mkdir(path);
    dialogs.expectMessage(u"File already exists"_s);
    dialogs.expectMessage(notMade());
    startFails();
    QDir().rmdir(path);
    writeFile(backup, "x");
    dialogs.expectNo(u"Do you want to Delete the old backup?  هل تريد حذف النسخه الإحتياطيه؟ : \r\n"_s +
                     backup);
    dialogs.expectMessage(notMade());
    startFails();
    QFile::remove(backup);
    engine.dbConnection->beginTrans(); // the store in use can't be left now
    dialogs.expectMessage(u"3246 -> Connection object cannot be explicitly closed while in a transaction."_s);
    startFails();
    engine.dbConnection->rollbackTrans();
    // A family that the generator can't take: the tutorial stands.
    for (int i = 0; i < 98; ++i)
        addMember({.name = u"m%1"_s.arg(i)});
    dialogs.expectYes(existing());
    dialogs.expectYes(offer());
    dialogs.expectMessage(u"9 -> Subscript out of range"_s);
    chooseMenu(main, "mnuStartTutorial");
    EXPECT_EQ(marks(), on);
    EXPECT_EQ(engine.dbConnection->connectionString(), engine.testConnectionString);
}

} // namespace
