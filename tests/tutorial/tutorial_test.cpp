#include "browser/frmUniversalGrid.h"
#include "entry/posting.h"
#include "family/frmMembers.h"
#include "platform/ui/flex_grid.h"
#include "shell/frmMain.h"
#include "tutorial_fixture.h"
#include "users/frmNewUser.h"

#include <QtCore/QDir>

namespace
{

class TutorialTest : public TutorialFixture
{
protected:
    /// Which of the marks are to be seen.
    QString marks()
    {
        QString shown;
        for (const char *name : {"lblTutorial", "mnuGenerateData", "mnuStopTutorial", "mnuStartTutorial"})
            shown += isShown(main, name) ? u'1' : u'0';
        return shown;
    }
    const QString off = u"0001"_s;
    const QString on = u"1110"_s;
    const QString existing =
        u"Do you want to delete the existing Tutorial database and creaet a new one from scratch?"_s;
    const QString offer =
        u"You can now generate data automatically to practice the program, do you want to do it now?"_s;
    frmMain main;
    ScriptedDialogs dialogs;
};

TEST_F(TutorialTest, TellsWhatItIsForAndWantsAFitFamily)
{
    execute({u"update members set relation=9"_s});
    QFile::copy(engine.storeFilePath, engine.testStorePath);
    main.load();
    const std::pair<QString, QString> texts[] = {
        {u"This tool will enable you to create automatically generated transactions that \r\nwill enable you to examine this program and all of its functions.  You can  \r\nuse this exercise to generate several hundreds of transactions after you have \r\nentered the family members information and when you have decided to enter valid\r\ntransactions, you can stop the Tutorial.                                      "_s,
         u"بإمكانك التدرًب على هذا البرنامج قبل الإستخدام الفعلي له عن طريق تكوين\r\nمعلومات وهميه سوف يقوم البرنامج بتكوينها لك بعد إدخال أفراد العائله "_s},
        {u"You have to create family members in order to use this exercise"_s,
         u"يتوجًب عليك إدخال أفراد العائله لكي تبدأ هذا التمرين"_s},
        {u"You have to Start the tutorial first!"_s, u"يجب أن تبدأ التمرين أولاً!"_s},
        {u"The family members information is not valid, please correct the problem!"_s,
         u"معلومات أفراد العائله غير صحيحه أو ناقصه.  يجب إصلاح ذلك أولاً!"_s}, // at its load
        {u"The family members information is not valid, please correct the problem!"_s,
         u"معلومات أفراد العائله غير صحيحه أو ناقصه.  يجب إصلاح ذلك أولاً!"_s}}; // and at a start
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        for (const auto &[english, inArabic] : texts)
            dialogs.expectMessage(arabic ? inArabic : english);
        for (const char *entry : {"mnuTutorial", "mnuStartTutorial", "mnuGenerateData"})
            control<QAction>(main, entry).trigger();
        EXPECT_EQ(marks(), off);
        frmGenerateData generator;
        generator.load();
        click(generator, "cmdStart");
    }
}

TEST_F(TutorialTest, LeavesTheRealStoreAsItWas)
{
    execute({u"update settings set lastcompacted='01/01/2000',sn=41"_s});
    addUser({.userid = u"taken"_s});
    setLanguage(true);
    writeFile(engine.testStorePath, "old");
    main.load();
    QStringList expected = realRows();
    dialogs.expectYes(
        u"هل تريد حذف قاعدة البيانات التدريبيه الموجوده الآن وإنشاء قاعدة بيانات جديده بالكامل؟"_s);
    dialogs
        .expectYes(
            u"تستطيع الآن تكوين معلومات وههميه بمساعدة البرنامج لكي تتعود على إستخدامه,\nهل تريد القيام بذلك الآن؟                                              "_s)
        .meanwhile([&] {
            EXPECT_EQ(marks(), on);
            EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
            EXPECT_EQ(testRows(u"select * from members"_s),
                      shellRows(u"select * from members where valid = -1"_s));
            EXPECT_EQ(testRows(u"select desceased, sn from settings"_s), QStringList{u"غير معروف|0"_s});
        });
    onModal<frmGenerateData>([&](frmGenerateData &generator) {
        dialogs.expectAnyMessage();
        click(generator, "cmdStart");
        click(generator, "cmdExit");
    });
    chooseMenu(main, "mnuStartTutorial");

    Entry entry;
    entry.date = makeDate(2004, 1, 2);
    entry.paymentMethod = u"x"_s;
    for (int box = 0; box < 3; ++box) // success twice, and the browser's "changes now"
        dialogs.expectAnyMessage();
    postRevenue(entry, u"100"_s, {u"Omar"_s}, [](const QString &) { return Money::fromUnits(100); });
    postExpense(entry, u"50"_s, {u"Omar"_s});
    engine.browseTable = u"general"_s;
    frmUniversalGrid browser;
    browser.showModeless();
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
        testRows(u"select count(*) from general where transactiondetail||'' = 'rent'; select count(*) from "
                 "audit_general; select sn from settings"_s),
        (QStringList{u"1"_s, u"1"_s, u"22"_s}));
    browser.unload();
    frmNewUser user;
    user.load();
    for (const char *box : {"txtUsername", "txtPassword1", "txtPassword2"})
        fill(user, box, u"x"_s);
    for (const QString &id : {u"taken"_s, u"trainee"_s}) { // the name is looked for in the real store
        dialogs.expectAnyMessage();
        fill(user, "txtUserid", id);
        click(user, "cmdOK");
    }
    EXPECT_EQ(testRows(u"select userid from users"_s), QStringList{u"trainee"_s});

    EXPECT_EQ(realRows(), expected);
    expected.replaceInStrings(u"01/01/2000"_s, generalDate(today()));
    dialogs.expectAnyMessage();
    dialogs.expectAnyMessage();
    chooseMenu(main, "mnuCompact"); // works on the real store, and stays there
    EXPECT_TRUE(engine.tutorialMode && engine.dbConnection->connectionString() == engine.connectionString);
    chooseMenu(main, "mnuStopTutorial");
    EXPECT_EQ(marks(), off);
    EXPECT_EQ(realRows(), expected);
    EXPECT_EQ(Screen::loadedScreens(), (QList<Screen *>{&main, &user})) << "the generator stayed";
}

TEST_F(TutorialTest, LosesNothingTypedIntoTheMembersAndLeavesThemStanding)
{
    engine.deceasedName = u"Saad"_s;
    main.load();
    frmMembers members;
    members.showModeless();
    click(members, "cmdEdit");
    fill(members, "txtFields_2", u"Haja"_s);
    dialogs.expectYes(u"Do you want to save changes!!?"_s);
    dialogs.expectYes(engine.textAreYouSure);
    dialogs.expectNo(offer);
    chooseMenu(main, "mnuStartTutorial");
    EXPECT_EQ(shellRows(u"select count(*) from members where title||'' = 'Haja'"_s), QStringList{u"1"_s});
    const QString closed = u"Operation is not allowed when the object is closed."_s;
    dialogs.expectMessage(closed);
    chooseMenu(members, "mnuValid");
    members.close();
    EXPECT_FALSE(members.isLoaded());

    members.showModeless();
    click(members, "cmdEdit");
    click(members, "txtFields_1");
    chooseMenu(main, "mnuStopTutorial");
    dialogs.expectMessage(closed);
    choose(members, "Combo1", u"Female"_s);
    click(members, "txtFields_4");
    dialogs.expectMessage(closed);
    pressKey(control(members, "DTPicker1"), Qt::Key_Return);
    click(members, "cmdCancel");
}

TEST_F(TutorialTest, KeepsOrReplacesTheStoreThatIsThere)
{
    main.load();
    const QStringList before = realRows();
    for (const QString &found : {u"unknown"_s, u"kept"_s, u"unknown"_s}) {
        if (found == u"kept"_s)
            dialogs.expectNo(existing);
        else if (QFile::exists(engine.testStorePath))
            dialogs.expectYes(existing);
        dialogs.expectNo(offer);
        chooseMenu(main, "mnuStartTutorial");
        EXPECT_EQ(testRows(u"select desceased from settings"_s), QStringList{found});
        execute({u"update settings set desceased='kept'"_s, u"delete from members"_s});
        chooseMenu(main, "mnuStopTutorial");
        EXPECT_EQ(realRows(), before);
    }
    dialogs.expectNo(existing); // kept, it has no family
    dialogs.expectYes(offer);
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
    const auto startFails = [&](const QString &told = u"db creation failed.. try again later"_s) {
        dialogs.expectAnyMessage();
        chooseMenu(main, "mnuStartTutorial");
        EXPECT_TRUE(dialogs.shown().back().text.startsWith(told))
            << dialogs.shown().back().text.toStdString();
        EXPECT_EQ(marks(), off);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(engine.dbConnection->connectionString(), engine.connectionString);
        EXPECT_EQ(dumpOf(engine.dbConnection, {u"members"_s}).size(), 4);
        EXPECT_EQ(realRows(), before);
    };
    const QByteArray torn = bytesOf(engine.storeFilePath).left(4096) + QByteArray(16384, 'x');
    for (const auto &[content, told] : {std::pair(QByteArray(), u"Unrecognized database format"_s),
                                        {QByteArray(5000, 'x'), u"Unrecognized database format"_s},
                                        {torn, u"database disk image is malformed"_s}}) {
        writeFile(path, content);
        dialogs.expectNo(existing);
        startFails(u"-2147467259 -> "_s + told);
        EXPECT_EQ(bytesOf(path), content);
    }
    QFile::remove(path);
    QDir().mkdir(path);
    dialogs.expectMessage(u"File already exists"_s);
    startFails();
    QDir().rmdir(path);
    writeFile(backup, "x");
    dialogs.expectNo(u"Do you want to Delete the old backup?  هل تريد حذف النسخه الإحتياطيه؟ : \r\n"_s +
                     backup);
    startFails();
    QFile::remove(backup);
    engine.dbConnection->beginTrans(); // the store in use can't be left now
    startFails(u"3246 -> Connection object cannot be explicitly closed while in a transaction."_s);
    engine.dbConnection->rollbackTrans();

    for (int i = 0; i < 98; ++i) // more than the generator can take: the tutorial stands all the same
        addMember({.name = u"m%1"_s.arg(i)});
    dialogs.expectYes(existing);
    dialogs.expectYes(offer);
    dialogs.expectMessage(u"9 -> Subscript out of range"_s);
    chooseMenu(main, "mnuStartTutorial");
    EXPECT_EQ(marks(), on);
    EXPECT_EQ(engine.dbConnection->connectionString(), engine.testConnectionString);
}

} // namespace
