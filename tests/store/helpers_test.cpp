#include "core/program_place.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/application.h"
#include "store/compaction.h"
#include "store/data_helpers.h"
#include "store/logical_tables.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

#include <ctime>

using namespace Qt::Literals::StringLiterals;

namespace
{

qint32 failureOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const RuntimeError &error) {
        return error.number();
    }
    return 0;
}

TEST_F(StoreFixture, CompactsInPlaceWithPasswordRowsAndCounters)
{
    addMember({.name = u"Fatima"_s, .relation = 1, .sex = 2});
    QString big =
        u"insert into general (transactiondetail,amount) values ('"_s + QString(100, u'x') + u"',1.5)"_s;
    for (int i = 0; i < 400; ++i)
        execute({big});
    execute({u"delete from general"_s});
    engine.dbConnection->close();
    const qint64 before = QFileInfo(engine.storeFilePath).size();
    QFile stale(engine.compactTempPath);
    ASSERT_TRUE(stale.open(QFile::WriteOnly));
    stale.write("left by a crash");
    stale.close();

    EXPECT_TRUE(CompactStore(engine.storeFilePath, engine.compactTempPath, engine.storePassword));
    EXPECT_LT(QFileInfo(engine.storeFilePath).size(), before);
    EXPECT_FALSE(QFile::exists(engine.compactTempPath));
    EXPECT_EQ(shellRows(u"select name, relation from members"_s), QStringList(u"Fatima|1"_s));
    engine.dbConnection->open(engine.connectionString);
    execute({u"insert into general (amount) values (2)"_s});
    EXPECT_EQ(rows(u"select id from general"_s), QStringList(u"401"_s)) << "a counter's number came back";
}

TEST_F(StoreFixture, LeavesTheStoreAloneWhenCompactionFails)
{
    engine.dbConnection->close();
    const QString path = engine.storeFilePath;
    EXPECT_EQ(failureOf([&] { CompactStore(path + u"!"_s, engine.compactTempPath, engine.storePassword); }),
              -2147467259);
    EXPECT_EQ(failureOf([&] { CompactStore(path, folder() + u"/none/x.mdb"_s, engine.storePassword); }), 76);
    EXPECT_EQ(failureOf([&] { CompactStore(path, engine.compactTempPath, u"wrong"_s); }), -2147217843);
    EXPECT_EQ(shellRows(u"select count(*) from details"_s), QStringList(u"19"_s));
}

TEST_F(StoreFixture, LooksUpAKindOfTransactionInTheSessionsLanguage)
{
    const struct {
        bool arabic;
        QString text;
        qint16 id;
    } cases[] = {
        {false, u"Phone"_s, 1}, {false, u"Salary"_s, 13}, {false, u"Other"_s, 10}, // the expense of the two
        {false, u"Gift"_s, 10}, {true, u"Phone"_s, 10},   {true, u"راتب"_s, 13}};
    for (const auto &c : cases) {
        setLanguage(c.arabic);
        EXPECT_EQ(LookupDetailId(c.text), c.id) << c.text.toStdString();
        EXPECT_EQ(engine.rsShared, nullptr);
    }
    EXPECT_EQ(failureOf([] { LookupDetailId(u"it's"_s); }), -2147217900);
}

TEST(FormatStamp, ShowsATimeFromOneOClockOnOnly)
{
    EXPECT_EQ(FormatStamp(makeDate(2004, 3, 5)), u"2004/03/05"_s);
    EXPECT_EQ(FormatStamp(makeDate(2004, 3, 5, 0, 30)), u"2004/03/05"_s);
    EXPECT_EQ(FormatStamp(makeDate(2004, 3, 5, 1, 0, 7)), u"2004/03/05 01:00:07"_s);
}

TEST(Pause, ServesEventsAndEndsOnlyWithTheProcess)
{
    Pause(0);
    bool served = false;
    QElapsedTimer wall;
    std::clock_t cpu = 0;
    EXPECT_TRUE(processEnded(3, [&] {
        QTimer::singleShot(300, qApp, [&] {
            served = true;
            cpu = std::clock() - cpu;
            endProcess(3);
        });
        cpu = std::clock();
        wall.start();
        Pause(1000);
        ADD_FAILURE() << "a statement behind the wait ran";
    }));
    EXPECT_TRUE(served);
    EXPECT_LT(cpu, CLOCKS_PER_SEC / 5) << "the wait burns a core";
}

TEST_F(StoreFixture, GivesAStatementThatTheStoreRunsForEachLogicalTable)
{
    const struct {
        const char *logical;
        const char *source;
        int fields; ///< 0: the store refuses it
    } cases[] = {{"ledger", "ledger", 14},    {"audit_ledger", "ledger", 0},
                 {"users", "users", 7},       {"audit_users", "audit_users", 11},
                 {"members", "members", 7},   {"audit_members", "audit_members", 11},
                 {"revenues", "general", 0},  {"audit_revenues", "audit_general", 15},
                 {"expenses", "general", 12}, {"audit_expenses", "audit_general", 17},
                 {"general", "general", 12},  {"audit_general", "audit_general", 14}};
    for (const auto &c : cases) {
        const QString sql = getstrsql(QString::fromLatin1(c.logical), QString::fromLatin1(c.source));
        const RecordsetPtr set = Recordset::create();
        const qint32 failure = failureOf([&] { set->open(sql, engine.dbConnection, CursorType::Static); });
        EXPECT_EQ(failure != 0, c.fields == 0) << sql.toStdString();
        if (failure == 0) {
            EXPECT_EQ(set->fieldCount(), c.fields) << sql.toStdString();
        }
    }
    setLanguage(true);
    EXPECT_EQ(getstrsql(u"members"_s, u"members7"_s),
              u"select name,sex,title,(select relationar from relations where relation=id) as "
              u"relation,dob,group,lastupdate "
              "from [members7] Order by dob"_s);
    EXPECT_EQ(
        getstrsql(u"general"_s, u"general"_s),
        u"select transactionid,amount,ddate,creditordebit,(select detailar from details where "
        u"gtype=details.id) as gtype,"
        "valid,enteredon,enteredby,transactiondetail,paymentdetail,paymentmethod,lastupdate from [general]  Order by ddate"_s);
    ScriptedDialogs dialogs;
    dialogs.expectMessage(u" getstrsql!  unknown table.."_s);
    EXPECT_EQ(getstrsql(u"Ledger"_s, u"ledger1"_s), u"select * from [ledger1]"_s); // letter case counts
}

TEST_F(SessionFixture, KeepsTheMarkOfAFirstRun)
{
    const QString key = u"Software\\Lomvex\\quvana"_s;
    EXPECT_FALSE(KeyExists(key));
    CreateProgramKey(key);
    EXPECT_TRUE(KeyExists(key));
    EXPECT_FALSE(KeyExists(u"Software\\Lomvex\\other"_s));
    QFile file(engine.keyFile);
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("dbpath=" + engine.storeFilePath.toUtf8()));
    engine.keyFile = folder() + u"/quvana.ini/quvana.ini"_s;
    CreateProgramKey(key); // a failure is not reported
    EXPECT_FALSE(KeyExists(key));
}

TEST_F(SessionFixture, StandsBesideItsExecutable)
{
    setProgramPlace({}, {}, {});
    locateProgram();
    EXPECT_EQ(engine.appPath, QCoreApplication::applicationDirPath());
    EXPECT_EQ(engine.exeName, u"tests_store"_s);
    EXPECT_EQ(engine.keyFile,
              QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/quvana.ini"_s);
}

} // namespace
