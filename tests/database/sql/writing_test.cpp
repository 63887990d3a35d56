#include "database/sql/seeded_store.h"
#include "platform/database/engine.h"
#include "support/failures.h"

namespace
{

constexpr int overflow = 6;
constexpr int typeMismatch = -2147217913;
constexpr int fieldTooSmall = -2147217833;
constexpr int refusedValue = -2147217887;
constexpr int duplicateKey = -2147467259;
constexpr int tableExists = -2147217857;

class SqlWriting : public SeededStore
{
protected:
    std::string rows(const QString &text) { return run(text).rows.toStdString(); }
    int error(const QString &text) { return tryOut(text).error; }
};

TEST_F(SqlWriting, ValuesAreConvertedToTheirColumns)
{
    // What the column then holds, or the number of the failure.
    const QString assignments = uR"(
sn=2.5 => 2
sn='1,000' => 1000
sn=true => -1
sn=2147483648 => error 6
sn=sn*2000000000 => error 6
sn='' => error -2147217913
sn=null => Null
lastcompacted=#3/4/2004# => 04/03/2004
lastcompacted='3/4/2004 5:06:07' => 03/04/2004 05:06:07
lastcompacted='31/02/2004' => error -2147217913
desceased=12.50 => 12.5
desceased='' => error -2147217887
desceased=sn & '' => 3
desceased=desceased & '12345678901234567890123456789012345678901234' => error -2147217833
)"_s;
    for (const auto &[assignment, expected] : casesOf(assignments)) {
        const QString column = assignment.section(u'=', 0, 0);
        const Result result =
            tryOut(u"update settings set "_s + assignment, u"select %1 from settings"_s.arg(column));
        EXPECT_EQ(result.error == 0 ? result.rows : u"error %1"_s.arg(result.error), expected)
            << assignment.toStdString();
    }

    EXPECT_EQ(error(u"update settings set desceased='  '"_s), 0); // blanks are no empty text
    run(u"update general set amount=-33.33335, valid=null, lastupdate=ddate where id=1"_s);
    run(u"update general set amount='1,000.25', valid=amount > 1 where id=2"_s);
    run(u"update general set amount=amount/3, valid=lastupdate=null where id=3"_s);
    EXPECT_EQ(rows(u"select amount, valid, lastupdate from general"_s),
              "-33.3334|False|15/03/2004 1000.25|True|Null 16.6667|False|Null");
    run(u"insert into members (name) values('Fadi')"_s);
    EXPECT_EQ(rows(u"select valid, group from members where name='fadi'"_s), "True|Null");
    EXPECT_EQ(error(u"update members set group=256"_s), overflow);
    EXPECT_EQ(error(u"update members set group=group*100"_s), overflow);
}

// A figure beyond all money is an error, never a figure that is nearly right.
TEST_F(SqlWriting, SumsAreExactOrRefused)
{
    run(u"update general set amount=922337203685477.5807 where id < 3"_s);
    EXPECT_EQ(error(u"select sum(amount) from general"_s), overflow);
    EXPECT_EQ(error(u"update settings set sn=(select sum(amount) from general)"_s), overflow);
    run(u"update general set amount='-922337203685477.5808' where id = 2"_s);
    EXPECT_EQ(rows(u"select sum(amount) from general"_s), "49.9999");
    EXPECT_EQ(error(u"select sum(-1*amount) from general"_s), overflow); // -1 times the least amount is none
    EXPECT_EQ(error(u"update general set amount=amount+amount where id = 1"_s), overflow);
}

TEST_F(SqlWriting, FileDefendsItsForms)
{
    const std::pair<const char *, int> foreign[] = {
        // what another tool might try
        {"update ledger set valid = 1", typeMismatch},
        {"update ledger set valid = null", typeMismatch},
        {"update ledger set amount = 1.5", overflow},
        {"update members set \"group\" = 256", overflow},
        {"update members set name = ''", refusedValue},
        {"update members set title = '12345678901'", fieldTooSmall},
        {"insert into members (name) values ('DANA ')", duplicateKey},
        {"insert into settings (sn) values (1)", 0}, // any number of Nulls under a unique index
    };
    for (const auto &[text, error] : foreign) {
        const auto write = [&, text = text] {
            database::Statement writing(handle(), text);
            database::Run(writing, {}).next();
        };
        EXPECT_EQ(failureOf(write), error) << text;
    }
}

TEST_F(SqlWriting, TextsAreCountedInUtf16UnitsOnEveryRoad)
{
    const QString fitting = u"\U0001F600\U0010FFFF\U000E0041"_s.repeated(8) + u"xy"_s; // 50 units
    const QString holed = u'a' + QString(QChar(0)) + u'b';
    const struct {
        QString text;
        int error;
    } cases[] = {
        {fitting, 0},
        {fitting + u'z', fieldTooSmall},
        {QString(50, u'\u0645'), 0},
        {QString(51, u'\u0645'), fieldTooSmall},
        {holed + QString(47, u'x'), 0},
        {holed + QString(48, u'x'), fieldTooSmall},
        {holed + QString(40, u'\u0645'), fieldTooSmall}, // behind a NUL bytes count
    };
    for (const auto &[text, expected] : cases) {
        run(u"select '%1' as wide into [wide] from settings"_s.arg(text));
        const QString half = text.first(20) + u"' & '"_s + text.sliced(20);
        const QString roads[] = {
            u"update settings set desceased='%1'"_s.arg(text),
            u"update settings set desceased='%1'"_s.arg(half),
            u"insert into settings (desceased) values('%1')"_s.arg(half),
            u"update settings set desceased=(select wide from [wide])"_s,
            u"insert into settings (desceased) select wide from [wide]"_s,
        };
        for (const QString &road : roads)
            EXPECT_EQ(error(road), expected) << road.toStdString();
        run(u"drop table [wide]"_s);
    }
}

TEST_F(SqlWriting, CountersNeverComeBackAndRowsOfASelectKeepOrDrawTheirNumbers)
{
    run(u"insert into relations values(7,'z','z')"_s);
    run(u"insert into relations (id,relationar,relationen) values(10+1,'y','y')"_s);
    run(u"delete from relations where id > 7"_s);
    EXPECT_EQ(error(u"insert into relations (relationar,relationen) values('tried','and rolled back')"_s), 0);
    EXPECT_EQ(error(u"insert into relations (relationar,relationen) values('','')"_s), refusedValue);
    run(u"insert into relations (relationar,relationen) values('w','w')"_s);
    EXPECT_EQ(rows(u"select id from relations"_s), "1 2 3 7 12");
    run(u"insert into relations (relationen,relationar) select sexen,sexar from sexes order by sexen desc"_s);
    EXPECT_EQ(rows(u"select id, relationen from relations where id > 12"_s), "13|Male 14|Female");
    EXPECT_NE(error(u"insert into relations select sexar, sexen from sexes"_s), 0); // no such names there
    EXPECT_NE(error(u"update relations set id=5 where id=1"_s), 0);
    // A counter without a unique index takes repeated numbers.
    run(u"insert into audit_users (id,userid) values(1,'again')"_s);
    run(u"insert into audit_users (userid) values('next')"_s);
    EXPECT_EQ(rows(u"select id from audit_users"_s), "1 1 2");

    run(u"delete from ledger where transactionid=1"_s);
    run(u"insert into [ledger] select * from [ledger1]"_s);
    EXPECT_EQ(rows(u"select id, amount from ledger"_s), "5|50 6|50 1|125 2|350 3|350 4|175");
    run(u"insert into ledger (name) values('x')"_s);
    EXPECT_EQ(rows(u"select max(id) from ledger"_s), "7");
}

TEST_F(SqlWriting, SelectIntoCopiesTypesAndNothingElse)
{
    run(u"select * into [general1] from [general] where valid=true"_s);
    EXPECT_EQ(run(u"select * from general1"_s).columns, run(u"select * from general"_s).columns);
    EXPECT_EQ(rows(u"select * from general1"_s), rows(u"select * from general where valid=true"_s));
    run(u"insert into general1 (id,enteredby) values(1,'')"_s); // no key, no refused empty text, no counter
    run(u"insert into general1 (enteredby) values('x')"_s);
    EXPECT_EQ(rows(u"select id, valid from general1"_s), "1|True 2|True 1|False Null|False");
    EXPECT_EQ(error(u"update general1 set enteredby='123456789012345678901'"_s), fieldTooSmall);
    EXPECT_EQ(error(u"select * into general1 from general"_s), tableExists);
    EXPECT_NE(error(u"select id, id into twice from general"_s), 0);
    EXPECT_NE(error(u"select * into sqlite_x from general"_s), 0);

    run(u"select name & '!' as loud, amount*2 as twice, amount/3 as part, ddate is null as bare, count(*) as "
        u"n "
        "into [odd table] from ledger where id=1 group by name, amount, ddate"_s);
    const Result odd = run(u"select * from [odd table]"_s);
    EXPECT_EQ(odd.columns, u"loud text(255), twice money, part double, bare boolean, n long"_s);
    EXPECT_EQ(odd.rows, u"Amina!|250|41.6666666666667|False|1"_s);
    run(u"drop table [odd table]"_s);
    EXPECT_NE(error(u"select * from [odd table]"_s), 0);

    run(u"drop table relations"_s);
    EXPECT_EQ(rows(u"select last from system_counters where table_name='relations'"_s), "");
    EXPECT_NE(error(u"delete from system_counters"_s), 0);
}

} // namespace
