#include "browser/audit_rows.h"
#include "journal_fixture.h"
#include "platform/runtime/runtime_error.h"

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

    /// Puts the rows of transaction 7 into three ledger tables.
    static void spread()
    {
        move(u"ledger"_s, u"ledger1"_s, u"name='girl' and transactionid=7"_s);
        execute({u"select * into [ledger10] from [ledger1]"_s});
    }
    /// What an audit row adds to the row of `general`.
    static QString audit(int key, const QString &generalLine, const QString &word)
    {
        return u"audit_general|%1"_s.arg(key) + generalLine.sliced(7) + u"|2004-03-15 10:20:30|TEST|"_s +
               word;
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

TEST_P(Records, ACorrectionReachesEveryTableAndLeavesTheOldValues)
{
    spread();
    const struct {
        QString column, typed, before, after;
    } cases[] = {
        {u"transactiondetail"_s, u" إيجار of the general shop "_s, u"note7"_s, {}},
        {u"paymentdetail"_s, QString(50, u'x') + u"😀"_s.repeated(25), u"paid7"_s, {}},
        {u"paymentmethod"_s, u"123456789012345"_s, u"cash7"_s, {}},
        {u"ddate"_s, u"2004/02/03"_s, u"2004-01-05|"_s, u"2004-02-03|"_s},
        {u"gtype"_s, either(u"تقاعد"_s, u"Pension"_s), u"|13"_s, u"|14"_s},
    };
    int key = 0;
    for (const auto &[column, typed, oldText, newText] : cases) {
        SCOPED_TRACE(column.toStdString());
        QStringList expected = stored();
        const QString general = expected.filter(u"general|1|7|"_s).last();
        for (QString &line : expected) {
            const QString table = line.section(u'|', 0, 0);
            if (table.startsWith(u"audit") || !line.contains(u"|7|"_s))
                continue;
            QString after = newText.isEmpty() ? typed : newText;
            if (table.startsWith(u"ledger"))
                after.replace(u"general"_s, table); // the table's name, wherever it stands
            line.replace(oldText, after);
            if (table == u"general")
                line = line.section(u'|', 0, -2) + u"|2004-03-15 10:20:30"_s;
        }
        const auto behind = [](const QString &line) { return !line.startsWith(u"audit"); };
        expected.insert(std::find_if(expected.begin(), expected.end(), behind) - expected.begin(),
                        audit(++key, general, either(u"تعديل"_s, u"Modified"_s)));
        EXPECT_TRUE(correct(7, {{column, typed}}));
        EXPECT_EQ(stored(), expected);
        EXPECT_EQ(auditAction, either(u"update"_s, {}));
    }
    EXPECT_EQ(told(), QStringList());
}

TEST_P(Records, ASaveThatFailsLeavesEverythingAndClearsTheFilter)
{
    spread();
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
    EXPECT_EQ(rows(u"select transactiondetail,gtype from ledger10"_s), QStringList{long100 + u"|10"_s});
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
    execute({u"insert into general (transactionid,amount,ddate,enteredon,valid,transactiondetail) values "
             "(40000,1000.5,'05/01/2004','05/01/2004 00:30:00',true,'Note ')"_s,
             u"insert into general (transactionid,gtype) values (3,40000)"_s});
    const auto set =
        openRows(u"select * from general where transactionid<>7 and transactionid<>8 order by id"_s);
    const struct {
        int row;
        const char *field;
        QString text;
        bool changed;
    } cases[] = {
        {1, "transactionid", u"40000"_s, true}, // beyond 16 bits
        {2, "transactionid", u"3"_s, false},
        {2, "transactionid", u"4"_s, true},
        {2, "transactionid", u"x"_s, true},
        {1, "amount", u"1,000.50"_s, false},
        {1, "amount", u"1000.5001"_s, true},
        {1, "amount", u"1e300"_s, true},
        {1, "ddate", u"2004/01/05"_s, false},
        {1, "ddate", u"5/1/2004"_s, false},
        {1, "ddate", u"2004/01/06"_s, true},
        {1, "ddate", {}, true},
        {1, "enteredon", u"2004/01/05"_s, true}, // the first hour is not shown
        {1, "transactiondetail", u"Note "_s, false},
        {1, "transactiondetail", u"note "_s, true},
        {1, "valid", u"True"_s, false},
        {1, "valid", u"YES"_s, true},
        {2, "paymentdetail", {}, false}, // Null
        {2, "paymentdetail", u"x"_s, true},
        {2, "ddate", {}, false},
        {2, "nothing", u"x"_s, true},
        {3, "transactionid", u"3"_s, true}, // no row
    };
    for (const auto &[row, field, text, changed] : cases) {
        SCOPED_TRACE(field + (' ' + text.toStdString()));
        set->setAbsolutePosition(row < 3 ? row : positionEof);
        EXPECT_EQ(FieldChanged(text, QString::fromLatin1(field), *set), changed);
    }
    EXPECT_FALSE(ColumnEditable(u"DDATE"_s));
    EXPECT_EQ(ColumnEditable(u"التاريخ"_s), engine.isArabic);
}

TEST_P(Records, AnAuditRowTellsWhatHappenedOrIsGivenUpInSilence)
{
    const struct {
        QString action, english, arabic;
    } words[] = {{u"delete"_s, u"Deleted"_s, u"حذف"_s},
                 {u"add"_s, u"Added"_s, u"إضافة"_s},
                 {u"update"_s, u"Modified"_s, u"تعديل"_s},
                 {u"Update"_s, u"Unknown"_s, u"غير معروف"_s},
                 {{}, u"Unknown"_s, u"غير معروف"_s}};
    for (const auto &[action, english, arabic] : words) {
        QString given = action;
        WriteAuditRow(u"general"_s, 7, given);
        EXPECT_EQ(given, either(action, {}));
        EXPECT_EQ(rows(u"select updatetype from audit_general order by idkey"_s).last(),
                  either(arabic, english));
    }
    QString action = u"update"_s;
    const QStringList before = stored();
    WriteAuditRow(u"general"_s, 99, action); // no such row
    WriteAuditRow(u"ledger"_s, 7, action);   // no such audit table
    EXPECT_EQ(stored(), before);
    engine.currentUser.clear(); // the store refuses it, after the row itself got its stamp
    WriteAuditRow(u"general"_s, 8, action);
    EXPECT_EQ(stored({u"audit_general"_s}), before.filter(QRegularExpression(u"^audit"_s)));
    EXPECT_EQ(rows(u"select lastupdate from general where transactionid=8"_s),
              QStringList{u"15/03/2004 10:20:30"_s});
    EXPECT_EQ(action, u"update"_s);
    EXPECT_EQ(told(), QStringList());
}

TEST_P(Records, ACancelTakesEffectStatementByStatement)
{
    spread();
    const QString general = stored({u"general"_s}).first();
    const auto valid = [] {
        QStringList flags;
        for (const char *table : {"general", "ledger", "ledger1", "ledger10"})
            flags << rows(
                u"select distinct valid from [%1] where transactionid=7"_s.arg(QLatin1StringView(table)));
        return flags.join(u' ');
    };
    cancelTransaction(u"general"_s, u"general"_s, 7, auditAction);
    EXPECT_EQ(valid(), u"False False False False"_s);
    EXPECT_EQ(rows(u"select distinct valid from general where transactionid=8"_s), QStringList{u"True"_s});
    EXPECT_EQ(stored({u"audit_general"_s}), QStringList{audit(1, general, either(u"حذف"_s, u"Deleted"_s))});
    EXPECT_EQ(auditAction, either(u"delete"_s, {}));
    cancelTransaction(u"general"_s, u"general"_s, 7, auditAction); // again, with another audit row
    EXPECT_EQ(rows(u"select valid from audit_general"_s), QStringList({u"True"_s, u"False"_s}));

    // A ledger table that can't be written stops it there.
    execute({u"update general set valid=true"_s, u"update ledger set valid=true"_s,
             u"update ledger10 set valid=true"_s, u"drop table [ledger1]"_s,
             u"select transactionid into [ledger1] from [ledger]"_s});
    EXPECT_THROW(cancelTransaction(u"general"_s, u"general"_s, 7, auditAction), RuntimeError);
    EXPECT_EQ(rows(u"select valid,(select count(*) from audit_general) as n from general"_s),
              QStringList({u"False|3"_s, u"True|3"_s}));
    EXPECT_EQ(rows(u"select valid from ledger where transactionid=7"_s), QStringList{u"False"_s});
    EXPECT_EQ(rows(u"select valid from ledger10"_s), QStringList{u"True"_s});

    // In an archive of `general` the row is found, but nothing to keep of it.
    move(u"general"_s, u"general1"_s, u"transactionid=8"_s);
    execute({u"drop table [ledger1]"_s});
    cancelTransaction(u"general"_s, u"general1"_s, 8, auditAction);
    EXPECT_EQ(rows(u"select valid,(select count(*) from audit_general) as n from general1"_s),
              QStringList{u"False|3"_s});
}

INSTANTIATE_TEST_SUITE_P(Both, Records, testing::Bool(),
                         [](const auto &test) { return test.param ? "ar" : "en"; });
