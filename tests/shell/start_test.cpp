#include "core/program_place.h"
#include "platform/ui/process.h"
#include "shell/frmLogin.h"
#include "shell/main.h"
#include "store/create_store.h"
#include "support/child_process.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "users/frmNewUser.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <sys/stat.h>

namespace
{

const QString programKey = u"Software\\Lomvex\\quvana"_s;

/// Starts the program as its main function does, on the fixture's place; the exit code.
int start()
{
    engine = {};
    resetProcess();
    setEndsWithLastScreen(true);
    const int exitCode = runProcess(Main);
    resetProcess();
    return exitCode;
}

TEST_F(SessionFixture, MakesTheStoreSilentlyAndEndsTheFirstRun)
{
    ScriptedDialogs dialogs;
    dialogs.expectUntrapped(u"3705"_s, u"Operation is not allowed when the object is open."_s);
    EXPECT_EQ(start(), 1);
    EXPECT_FALSE(KeyExists(programKey)); // comes with the run that goes through
    dialogs.expectAnyMessage();          // there is no user yet
    onModal<frmNewUser>([](frmNewUser &newUser) { newUser.close(); });
    onModal<frmLogin>([](frmLogin &login) { click(login, "cmdCancel"); });
    EXPECT_EQ(start(), 0);
    EXPECT_TRUE(KeyExists(programKey));
    EXPECT_EQ(engine.deceasedName, u"unknown"_s);
    EXPECT_EQ(engine.mainScreen, nullptr);
}

TEST_F(SessionFixture, KeepsItsStoresInTheDataFolderWhenInstalled)
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(folder() + u"/data"_s));
    const QString bin = folder() + u"/usr/bin"_s;
    QDir().mkpath(bin);
    EXPECT_EQ(folderOfStores(bin), bin); // copied there by hand
    QDir().mkpath(folder() + u"/usr/share/applications"_s);
    writeFile(folder() + u"/usr/share/applications/quvana.desktop"_s, "[Desktop Entry]\n");
    EXPECT_EQ(folderOfStores(bin), folder() + u"/data/quvana"_s); // though it could write beside itself
    EXPECT_TRUE(QFileInfo(folder() + u"/data/quvana"_s).isDir());
    qunsetenv("XDG_DATA_HOME");
}

TEST_F(SessionFixture, AsksWhetherALostStoreIsToBeMadeAnew)
{
    CreateProgramKey(programKey);
    const QString lost =
        u"Database CANNOT BE FOUND! CANNOT continue \r\nقاعدة البيانات ليست في مكانها المعهود   حصل خطأ جسيم ولن يستطيع البرنامج الإكمال"_s;
    const QString question =
        u"Do you want to create a new Database from scratch?  هل ترغب في إنشاء قاعدة بيانات جديده ؟"_s;
    ScriptedDialogs dialogs;
    dialogs.expectMessage(lost);
    dialogs.expectNo(question);
    EXPECT_EQ(start(), 0);
    EXPECT_FALSE(QFile::exists(engine.storeFilePath));
    dialogs.expectMessage(lost);
    dialogs.expectYes(question);
    dialogs.expectAnyMessage(); // there is no user yet: this start goes through
    onModal<frmNewUser>([](frmNewUser &newUser) { newUser.close(); });
    onModal<frmLogin>([](frmLogin &login) { login.close(); });
    EXPECT_EQ(start(), 0);
    QFile::remove(engine.storeFilePath);
    QDir(folder()).mkdir(u"quvana.mdb"_s); // where no store can be made
    dialogs.expectMessage(lost);
    dialogs.expectYes(question);
    dialogs.expectMessage(u"File already exists"_s);
    dialogs.expectMessage(u"db creation failed.. try again later"_s);
    EXPECT_EQ(start(), 1);
}

TEST_F(SessionFixture, EndsOnAFileThatIsNoStoreAndLeavesItAlone)
{
    ASSERT_TRUE(CreateStore(u"other"_s, u"another"_s));
    const QString plain = folder() + u"/plain.db"_s;
    outputOf(u"sqlcipher"_s, {plain, u"create table notes(text); insert into notes values('a note')"_s});
    const QString unknown = u"Unrecognized database format '"_s + engine.storeFilePath + u"'."_s;
    const std::tuple<QByteArray, QString, QString> cases[] = {
        {bytesOf(folder() + u"/other.mdb"_s), u"-2147217843 (80040e4d)"_s, u"Not a valid password."_s},
        {QByteArray("notes of the family\n").repeated(1024), u"-2147467259 (80004005)"_s, unknown},
        {bytesOf(plain), u"-2147467259 (80004005)"_s, unknown},
        {QByteArray(1, 'x'), u"-2147467259 (80004005)"_s, unknown},
        {QByteArray(), u"-2147467259 (80004005)"_s, unknown}};
    for (const auto &[bytes, number, text] : cases) {
        writeFile(engine.storeFilePath, bytes);
        ScriptedDialogs dialogs;
        dialogs.expectUntrapped(number, text);
        EXPECT_EQ(start(), 1);
        EXPECT_TRUE(bytesOf(engine.storeFilePath) == bytes) << text.toStdString();
    }
    const QByteArray store = std::get<0>(cases[0]);
    writeFile(engine.storeFilePath, store);
    chmod(folder().toUtf8().constData(), 0755);
    chmod(engine.storeFilePath.toUtf8().constData(), 0400); // the owner's; root becomes somebody else
    EXPECT_EQ(inChild([] {
                  if (geteuid() == 0 && setuid(65534) != 0)
                      return 2;
                  ScriptedDialogs dialogs;
                  dialogs.expectUntrapped(u"-2147467259 (80004005)"_s, u"Cannot open '"_s +
                                                                           engine.storeFilePath +
                                                                           u"': Permission denied"_s);
                  return start() == 1 && !HasFailure() ? 0 : 1;
              }),
              0);
    EXPECT_TRUE(bytesOf(engine.storeFilePath) == store);
}

class StartTest : public StoreFixture
{
protected:
    /// Starts on the store as a statement has left it, logs in and leaves; gives the settings then.
    QString startAfter(const QString &statement)
    {
        setClock([] { return makeDate(2004, 3, 31, 9, 0); });
        execute({u"delete from users"_s, statement});
        addUser();
        engine.dbConnection->close();
        onModal<frmLogin>([](frmLogin &login) {
            fill(login, "txtUsername", u"agent"_s);
            fill(login, "txtPassword", u"secret"_s);
            click(login, "cmdOK");
            later([] { click(*engine.mainScreen, "Command4"); });
        });
        EXPECT_EQ(start(), 0);
        engine.dbConnection = Connection::create();
        engine.dbConnection->open(engine.connectionString);
        return rows(u"select desceased,lastcompacted,sn from settings"_s).join(u' ');
    }
};

TEST_F(StartTest, RepairsSettingsAndCompactsWhenTheLastTimeIsThirtyDaysOld)
{
    EXPECT_EQ(startAfter(u"update settings set lastcompacted=null, sn=7"_s), u"unknown|31/03/2004|7"_s);
    shellRows(u"update settings set lastcompacted='soon'"_s); // by another program
    EXPECT_EQ(startAfter(u"update settings set sn=7"_s), u"unknown|31/03/2004|7"_s);
    EXPECT_EQ(startAfter(u"update settings set lastcompacted='02/03/2004'"_s), u"unknown|02/03/2004|7"_s);
    ScriptedDialogs dialogs;
    dialogs.expectAnyMessage(); // please wait
    dialogs.expectMessage(u"Successful\r\nتمت العمليه بنجاح"_s);
    EXPECT_EQ(startAfter(u"update settings set lastcompacted='01/03/2004'"_s), u"unknown|31/03/2004|7"_s);
    EXPECT_EQ(startAfter(u"delete from settings"_s), u"غير معروف|31/03/2004|1"_s);
    EXPECT_EQ(engine.deceasedName, QString());
}

TEST_F(StartTest, RollsBackAnOpenTransactionWhenAFailureIsUntrapped)
{
    addUser();
    ScriptedDialogs dialogs;
    dialogs.expectUntrapped(u"3705"_s, u"Operation is not allowed when the object is open."_s);
    onModal<frmLogin>([](frmLogin &login) {
        QTimer::singleShot(0, &login, [] { // a routine of the program, under the event dispatch
            engine.dbConnection->beginTrans();
            engine.dbConnection->execute(u"update settings set sn=5"_s);
            engine.dbConnection->open(engine.connectionString);
        });
    });
    EXPECT_EQ(start(), 1);
    EXPECT_FALSE(engine.dbConnection->inTransaction());
    EXPECT_EQ(rows(u"select sn from settings"_s), QStringList(u"0"_s));
}

} // namespace
