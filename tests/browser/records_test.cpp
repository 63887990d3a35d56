#include "journal_fixture.h"

// The writes of the grid of transactions, looked at in the rows of the store.

namespace
{

class Records : public JournalFixture, public testing::WithParamInterface<bool>
{
protected:
    Records()
    {
        setLanguage(GetParam());
        for (const int number : {7, 8})
            post(number);
    }
    /// The notice of a save that came to nothing.
    static QString nothingSaved()
    {
        return either(u"حدث خطأ و ألغيت العمليه"_s, u"An error occurred and update was cancelled"_s);
    }

    /// Runs a save that is to change nothing.
    void refuse(const EditedRow &row, const QStringList &notices)
    {
        const QStringList before = dumpOf(engine.dbConnection, journalTables());
        EXPECT_FALSE(save(row));
        EXPECT_EQ(told(), notices);
        EXPECT_EQ(dumpOf(engine.dbConnection, journalTables()), before);
        EXPECT_FALSE(engine.dbConnection->inTransaction());
    }
};

} // namespace

TEST_P(Records, ASaveThatFailsLeavesEverythingAndClearsTheFilter)
{
    execute({u"select * into [ledger10] from [ledger]"_s});
    const QString long100(100, u'n');
    const Edits cases[] = {
        {},                                         // no change
        {{u"amount"_s, u"31"_s}},                   // nor here
        {{u"transactiondetail"_s, {}}},             // an empty cell
        {{u"paymentmethod"_s, {}}},                 //
        {{u"transactiondetail"_s, long100 + u'n'}}, // one too many
        {{u"paymentmethod"_s, u"1234567890123456"_s}},
        {{u"ddate"_s, {}}},
        {{u"ddate"_s, u"soon"_s}},
        {{u"ddate"_s, u"5"_s}}, // days count as a date elsewhere
        {{u"ddate"_s, u"2004/02/03 11:00:00"_s}},
        {{u"transactiondetail"_s, u"the heirs' shop"_s}},
        {{u"gtype"_s, u"heirs' shop"_s}},
        {{u"gtype"_s, {}}},
        {{u"paymentdetail"_s, u"good"_s}, {u"transactiondetail"_s, {}}}, // one of two
    };
    for (const Edits &edits : cases) {
        SCOPED_TRACE(edits.empty() ? "" : edits.back().text.left(20).toStdString());
        const RecordsetPtr set = browse();
        set->setFilter(u"transactionid=7"_s);
        refuse(edited(set, 7, edits), {nothingSaved()});
        EXPECT_EQ(set->recordCount(), 2);
    }
    // Under a range of dates the kind of transaction is a number, and no number is a date.
    const RecordsetPtr ranged = openRows(u"select  * from [general]"_s);
    refuse(edited(ranged, 7, {{u"gtype"_s, u"14"_s}}), {nothingSaved()});
    refuse(edited(ranged, 7, {{u"transactionid"_s, u"number"_s}}), {nothingSaved()});

    EXPECT_TRUE(correct(7, {{u"transactiondetail"_s, long100}, {u"gtype"_s, u"no such kind"_s}}));
    EXPECT_EQ(rows(u"select distinct transactiondetail,gtype from ledger10 where transactionid=7"_s),
              QStringList{long100 + u"|10"_s});
    engine.dbConnection->close();
    engine.dbConnection->open(engine.connectionString);
}

TEST_P(Records, AFailingLedgerTableTakesTheCorrectionBack)
{
    execute({u"select transactionid into [ledger9] from [ledger]"_s,
             u"select * into [general1] from [general] where transactionid=8"_s,
             u"delete from [general] where transactionid=8"_s});
    const QString noColumn = u"No value given for one or more required parameters."_s;
    const RecordsetPtr set = browse();
    set->setFilter(u"valid=true"_s);
    refuse(edited(set, 7, {{u"transactiondetail"_s, u"new"_s}}), {noColumn});
    EXPECT_EQ(set->filter(), u"valid=true"_s);

    // With an archive of `general` on show the replaced text names archives of ledgers that nobody made.
    const RecordsetPtr archive = browse(u"general1"_s);
    refuse(
        edited(archive, 8, {{u"transactiondetail"_s, u"new"_s}}, u"general1"_s),
        {u"The database engine cannot find the input table or query 'ledger1'. Make sure it exists and that "
         "its name is spelled correctly."_s});
    EXPECT_TRUE(
        UpdateLedgerTables(u"update [general] set [transactionid]=8 where transactionid=8"_s, u"general"_s));
}

TEST_P(Records, ASaveLooksForItsRowFromTheCurrentRowOn)
{
    post(9);
    execute({u"update general set paymentdetail='' where transactionid=8"_s});
    const RecordsetPtr set = browse();
    EXPECT_TRUE(save(edited(set, 9, {{u"transactiondetail"_s, u"new"_s}})));
    EXPECT_EQ(set->value(u"transactionid"_s).toInt(), 9);
    // A row above it is not found: every column counts as changed, and all five are written.
    EXPECT_TRUE(save(edited(set, 7, {})));
    EXPECT_TRUE(set->eof());
    EXPECT_EQ(rows(u"select transactionid,updatetype from audit_general"_s).size(), 2);
    // At the end there is no row to start from; after that the set stands on its first row again.
    refuse(edited(set, 9, {{u"transactiondetail"_s, u"newer"_s}}), {nothingSaved()});
    EXPECT_EQ(set->absolutePosition(), 1);
    EXPECT_TRUE(save(edited(set, 9, {{u"transactiondetail"_s, u"newer"_s}})));
    refuse(edited(set, 8, {{u"transactiondetail"_s, u"new"_s}}), {nothingSaved()}); // an empty one spoils it
    EXPECT_TRUE(save(edited(set, 8, {{u"transactiondetail"_s, u"new"_s}})));
}

TEST_P(Records, ACellIsComparedInTheTypeOfItsField)
{
    execute({u"insert into general (transactionid,gtype,ddate,transactiondetail) values "
             "(9,40000,'05/01/2004','Note ')"_s,
             u"insert into general (transactionid,gtype) values (10,3)"_s});
    const auto set = openRows(u"select * from general where transactionid>8 order by id"_s);
    const std::tuple<int, const char *, QString, bool> cases[] = {
        {1, "gtype", u"40000"_s, true}, // beyond 16 bits
        {2, "gtype", u"3"_s, false},
        {2, "gtype", u"4"_s, true},
        {2, "gtype", u"x"_s, true},
        {1, "ddate", u"2004/01/05"_s, false},
        {1, "ddate", u"5/1/2004"_s, false},
        {1, "ddate", u"2004/01/06"_s, true},
        {1, "ddate", {}, true},
        {2, "ddate", {}, false}, // Null
        {1, "transactiondetail", u"Note "_s, false},
        {1, "transactiondetail", u"note "_s, true},
        {2, "transactiondetail", u"x"_s, true},
    };
    for (const auto &[row, field, text, changed] : cases) {
        set->setAbsolutePosition(row);
        EXPECT_EQ(FieldChanged(text, QString::fromLatin1(field), *set), changed)
            << field << ' ' << text.toStdString();
    }
    EXPECT_EQ(ColumnEditable(u"التاريخ"_s), engine.isArabic);
}

TEST_P(Records, AnAuditRowThatTheStoreRefusesIsGivenUpInSilence)
{
    engine.currentUser.clear();
    EXPECT_TRUE(correct(8, {{u"transactiondetail"_s, u"new"_s}}));
    EXPECT_EQ(rows(u"select transactiondetail,lastupdate from general where transactionid=8"_s),
              QStringList{u"new|15/03/2004 10:20:30"_s});
    EXPECT_EQ(stored({u"audit_general"_s}), QStringList());
    EXPECT_EQ(told(), QStringList());
}

TEST_P(Records, ACancelInAnArchiveHasNothingToKeep)
{
    move(u"general"_s, u"general1"_s, u"transactionid=8"_s);
    cancelTransaction(u"general"_s, u"general1"_s, 8, auditAction);
    EXPECT_EQ(rows(u"select valid,(select count(*) from audit_general) as n from general1"_s),
              QStringList{u"False|0"_s});
    EXPECT_EQ(rows(u"select distinct transactionid,valid from ledger"_s),
              QStringList({u"7|True"_s, u"8|False"_s}));
}

INSTANTIATE_TEST_SUITE_P(Both, Records, testing::Bool(),
                         [](const auto &test) { return test.param ? "ar" : "en"; });
