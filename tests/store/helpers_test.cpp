#include "platform/runtime/dates.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/application.h"
#include "store/compaction.h"
#include "store/data_helpers.h"
#include "store/logical_tables.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>

#include <ctime>
#include <map>

using namespace Qt::Literals::StringLiterals;

namespace
{

int failureOf(const std::function<void()> &action)
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
    for (int i = 0; i < 400; ++i)
        execute({u"insert into general (transactiondetail) values ('"_s + QString(100, u'x') + u"')"_s});
    execute({u"delete from general"_s});
    engine.dbConnection->close();
    const qint64 before = QFileInfo(engine.storeFilePath).size();
    ASSERT_TRUE(QFile::copy(engine.storeFilePath, engine.compactTempPath)); // left by a crash
    EXPECT_TRUE(CompactStore(engine.storeFilePath, engine.compactTempPath, engine.storePassword));
    EXPECT_LT(QFileInfo(engine.storeFilePath).size(), before);
    EXPECT_FALSE(QFile::exists(engine.compactTempPath));
    EXPECT_EQ(shellRows(u"select name, relation from members"_s), QStringList(u"Fatima|1"_s));
    engine.dbConnection->open(engine.connectionString);
    execute({u"insert into general (amount) values (2)"_s});
    EXPECT_EQ(rows(u"select id from general"_s), QStringList(u"401"_s)) << "a counter's number came back";
}

TEST_F(StoreFixture, RaisesTheFailureOfACompaction)
{
    engine.dbConnection->close();
    const QString nowhere = folder() + u"/none/x.mdb"_s;
    EXPECT_EQ(failureOf([&] { CompactStore(engine.storeFilePath, nowhere, engine.storePassword); }), 76);
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
    EXPECT_EQ(FormatStamp(makeDate(2004, 3, 5, 0, 30)), u"2004/03/05"_s);
    EXPECT_EQ(FormatStamp(makeDate(2004, 3, 5, 1, 0, 7)), u"2004/03/05 01:00:07"_s);
}

TEST(Pause, ServesEventsWithoutBurningACoreAndEndsOnlyWithTheProcess)
{
    Pause(0);
    const std::clock_t begin = std::clock();
    EXPECT_TRUE(processEnded(3, [] {
        QTimer::singleShot(300, qApp, [] { endProcess(3); });
        Pause(1000);
        ADD_FAILURE() << "a statement behind the wait ran";
    }));
    EXPECT_LT(std::clock() - begin, CLOCKS_PER_SEC / 5);
}

TEST_F(StoreFixture, GivesAStatementForEachLogicalTable)
{
    // How many fields the store gives for it; none where it refuses the statement.
    const std::map<QString, int> fields = {
        {u"ledger"_s, 14},   {u"audit_ledger"_s, 0},    {u"users"_s, 7},    {u"audit_users"_s, 11},
        {u"members"_s, 7},   {u"audit_members"_s, 11},  {u"revenues"_s, 0}, {u"audit_revenues"_s, 15},
        {u"expenses"_s, 12}, {u"audit_expenses"_s, 17}, {u"general"_s, 12}, {u"audit_general"_s, 14}};
    for (const auto &[logical, count] : fields) {
        QString source = logical == u"audit_ledger"_s ? u"ledger"_s : logical;
        source.replace(QRegularExpression(u"revenues|expenses"_s), u"general"_s);
        const RecordsetPtr set = Recordset::create();
        ignoringErrors(
            [&] { set->open(getstrsql(logical, source), engine.dbConnection, CursorType::Static); });
        EXPECT_EQ(set->isOpen() ? set->fieldCount() : 0, count) << logical.toStdString();
    }
    ScriptedDialogs dialogs;
    dialogs.expectMessage(u" getstrsql!  unknown table.."_s);
    EXPECT_EQ(getstrsql(u"Ledger"_s, u"ledger1"_s), u"select * from [ledger1]"_s); // letter case counts
}

} // namespace
