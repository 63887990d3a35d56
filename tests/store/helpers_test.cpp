#include "platform/ui/process.h"
#include "store/compaction.h"
#include "store/data_helpers.h"
#include "store/logical_tables.h"
#include "support/failures.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTimer>

#include <ctime>

namespace
{

TEST_F(StoreFixture, CompactsInPlaceWithPasswordRowsAndCounters)
{
    addMember({.name = u"Fatima"_s, .relation = 1, .sex = 2});
    engine.dbConnection->beginTrans();
    for (int i = 0; i < 400; ++i)
        execute({u"insert into general (transactiondetail) values ('"_s + QString(100, u'x') + u"')"_s});
    engine.dbConnection->commitTrans();
    execute({u"delete from general"_s});
    engine.dbConnection->close();
    const qint64 before = QFileInfo(engine.storeFilePath).size();
    ASSERT_TRUE(QFile::copy(engine.storeFilePath, engine.compactTempPath)); // left by a crash
    EXPECT_TRUE(CompactStore(engine.storeFilePath, engine.compactTempPath, engine.storePassword));
    EXPECT_LT(QFileInfo(engine.storeFilePath).size(), before);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files), QStringList(u"quvana.mdb"_s));
    EXPECT_EQ(shellRows(u"select name, relation from members"_s), QStringList(u"Fatima|1"_s));
    engine.dbConnection->open(engine.connectionString);
    execute({u"insert into general (amount) values (2)"_s});
    EXPECT_EQ(rows(u"select id from general"_s), QStringList(u"401"_s)) << "a counter's number came back";
}

TEST_F(StoreFixture, RaisesTheFailureOfACompactionAndKeepsTheStore)
{
    engine.dbConnection->close();
    QDir(folder()).mkdir(u"quvanax.mdb"_s);
    const std::tuple<QString, QString, QString, int> cases[] = {
        {engine.storeFilePath, folder() + u"/none/x.mdb"_s, engine.storePassword, 76},
        {engine.storeFilePath, engine.compactTempPath, engine.storePassword, 58}, // a folder in its place
        {engine.storeFilePath, folder() + u"/y.mdb"_s, u"wrong"_s, -2147217843},
        {folder() + u"/none.mdb"_s, folder() + u"/y.mdb"_s, engine.storePassword, -2147467259}};
    for (const auto &[source, temp, password, number] : cases)
        EXPECT_EQ(failureOf([source = source, temp = temp, password = password] {
                      CompactStore(source, temp, password);
                  }),
                  number);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files), QStringList(u"quvana.mdb"_s));
    EXPECT_EQ(shellRows(u"select count(*) from details"_s), QStringList(u"19"_s));
}

TEST_F(SessionFixture, SaysThatALogicalTableIsUnknownAndShowsAllColumns)
{
    for (const QString &name : {u"Ledger"_s, u"ledger "_s, u"ledger1"_s, u""_s}) { // letter case counts
        ScriptedDialogs dialogs;
        dialogs.expectMessage(u" getstrsql!  unknown table.."_s);
        EXPECT_EQ(getstrsql(name, u"ledger1"_s), u"select * from [ledger1]"_s);
    }
}

TEST(Pause, ServesEventsWithoutBurningACoreAndEndsOnlyWithTheProcess)
{
    Pause(0);
    const std::clock_t begin = std::clock();
    EXPECT_TRUE(processEnded(3, [] {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [] { endProcess(3); });
        timer.start(300);
        Pause(1000);
        ADD_FAILURE() << "a statement behind the wait ran";
    }));
    EXPECT_LT(std::clock() - begin, CLOCKS_PER_SEC / 5);
}

} // namespace
