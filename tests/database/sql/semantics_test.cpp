#include "database/sql/seeded_store.h"
#include "platform/database/sql/compiler.h"
#include "platform/runtime/runtime_error.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// A SELECT and its rows, joined by blanks, their fields by |.
struct RowsCase {
    const char16_t *text;
    const char16_t *rows;
};

template <size_t count>
void check(const RowsCase (&cases)[count])
{
    SeededStore store;
    for (const RowsCase &entry : cases) {
        const QString text = QString::fromUtf16(entry.text);
        SCOPED_TRACE(text.toStdString());
        try {
            EXPECT_EQ(store.rows(text).toStdString(), QString::fromUtf16(entry.rows).toStdString());
        } catch (const RuntimeError &error) {
            ADD_FAILURE() << error.what();
        }
    }
}

TEST(SqlSemantics, ComparisonsConvertTheirSides)
{
    const RowsCase cases[] = {
        {u"select id from general where amount = 1000", u"1"},
        // Compared as money: 99.99995 is 100.0000, a half to the even digit.
        {u"select id from general where amount > 99.99995 and amount < 1e30", u"1"},
        {u"select id from general where amount > transactionid * 50", u"1"},
        {u"select id from general where '100' = amount", u"2"},
        {u"select id from general where transactionid = '2'", u"2"},
        {u"select id from general where creditordebit = 'true'", u"1"},
        {u"select id from general where creditordebit = -1", u"1"},
        {u"select id from general where creditordebit = 1", u""},
        {u"select id from general where ddate = '15/03/2004'", u"1"},
        {u"select id from general where ddate = #3/15/2004#", u"1"},
        {u"select id from general where ddate = #20/3/2004 10:30:00#", u"2"},
        {u"select id from general where ddate = #04/05/2004#", u"3"}, // month first
        {u"select id from general where ddate >= #2004/04/05#", u"3"},
        {u"select id from general where ddate between #31/03/2004# and #01/03/2004#", u"1 2"}, // swapped
        {u"select id from general where ddate not between #01/03/2004# and #03/31/2004#", u"3"},
        {u"select id from general where ddate between #15/03/2004# and #20/03/2004#", u"1"}, // 2 has a time
        {u"select id from general where amount between 1000 and 100", u"1 2"},
        {u"select name from members where name between 'd' and 'B'", u"Badr Carim"},
        {u"select id from general where (year(ddate) & format(month(ddate),'0#'))>=(200404)", u"3"},
        {u"select id from general where (year(ddate) & format(month(ddate),'0#'))<=(200403)", u"1 2"},
        {u"select id from general where (year(lastupdate) & format(month(lastupdate),'0#'))<=(999999)", u""},
        {u"select id from general where valid", u"1 2"},
        {u"select id from general where not valid", u"3"},
        {u"select id from general where not (valid and creditordebit) and lastupdate is null", u"2 3"},
        {u"select id from general where (amount > 60) = true", u"1 2"},
        {u"select id from general where lastupdate = null or lastupdate <> null", u""},
        {u"select name from members where title is not null and title = ''", u"Carim"},
        {u"select name from members where 'DANA ' = name", u"Dana"},
        {u"select userid from users where password = 'sEcReT   '", u"admin"},
        {u"select name from members where name & title = 'dana' & 'MS'", u"Dana"},
        {u"select id from details where detailen = (select detailen from details where id = 4)", u"2 4"},
    };
    check(cases);
}

TEST(SqlSemantics, ExpressionsKeepTheirTypes)
{
    const RowsCase cases[] = {
        {u"select amount + 1, amount * 2, -amount, amount / 8, 3 - 2 * id from general where id = 1",
         u"1001|2000|-1000|125|1"},
        {u"select amount * amount, amount * 0.00005, 0.5 + id from general where id = 2", u"10000|0.005|2.5"},
        {u"select valid & ' ' & ddate & ' ' & amount & lastupdate & id from general where id = 2",
         u"True 20/03/2004 10:30:00 1002"},
        {u"select lastupdate & null, lastupdate & '' from general where id = 2", u"Null|"},
        {u"select format(lastupdate,'yyyy'), format(ddate,'yyyy/mm/dd hh:mm:ss'), "
         u"format(amount,'#,###,##0.00'), format(paymentmethod,'0#') from general where id = 2",
         u"|2004/03/20 10:30:00|100.00|Check"},
        {u"select iif(creditordebit=true,amount,0), iif(lastupdate=null,1,2), iif(valid,ddate,'-') from "
         u"general",
         u"1000|2|15/03/2004 0|2|20/03/2004 10:30:00 0|2|-"},
        {u"select year(ddate), month(ddate), day(ddate), hour(ddate), year(lastupdate), month('5/6/99') "
         u"from general where id = 2",
         u"2004|3|20|10|Null|6"},
        {u"select datediff('d', ddate, '31/03/2004'), datediff('D', #4/1/2004#, ddate) from general",
         u"16|-17 11|-12 -5|4"},
        {u"select amount > 60, valid and creditordebit from general", u"True|True True|False False|False"},
        {u"select sum(amount), count(*), count(lastupdate), max(ddate), min(amount), avg(amount) from "
         u"general",
         u"1150|3|0|05/04/2004|50|383.3333"},
        {u"select sum(amount), max(ddate), count(*) from general where id = 99", u"Null|Null|0"},
        {u"select max(name), min(name) from members", u"Ehab|Amina"},
        {u"select relation, count(*) from members where relation = 9 group by relation", u""},
        {u"select 'it''s', \"a \"\"b\"\"\" from settings", u"it's|a \"b\""},
        {u"select (select detailen from details where gtype=details.id) from general",
         u"Property Sale Phone Other"},
        {u"select (select detailen from details where id = 77) from settings", u"Null"},
        {u"select (select relationen from relations where relation=id) from members where valid",
         u"Daughter Son Son Wife"},
    };
    check(cases);
}

TEST(SqlSemantics, RowsComeInATellableOrder)
{
    const RowsCase cases[] = {
        {u"select name from members", u"Dana Badr Carim Amina Ehab"},
        {u"select id from ledger where name > 'A'", u"1 2 3 4 5 6"}, // not the order of the index on name
        {u"select name from members order by name", u"Amina Badr Carim Dana Ehab"},
        {u"select name from members order by relation", u"Amina Badr Carim Ehab Dana"},
        {u"select name from members order by relation desc, dob", u"Dana Badr Ehab Carim Amina"},
        {u"select name, sex from members order by 2 desc, 1 desc", u"Dana|2 Amina|2 Ehab|1 Carim|1 Badr|1"},
        {u"select title from members order by title", u"Null Null  Mr Ms"},
        {u"select id from details order by detailar", u"2 4 3 1"},
        {u"select distinct group from members", u"1 2 3"},
        {u"select distinct group from members order by group desc", u"3 2 1"},
        {u"select distinct detailen from details", u"Other Phone Property Sale"},
        {u"select group, count(*) from members group by group", u"1|2 2|2 3|1"},
        {u"select relation,count(*) as x from members group by relation order by x desc", u"2|3 1|1 3|1"},
        {u"select creditordebit,sum(amount) as tot from ledger where valid = true group by creditordebit",
         u"True|1000 False|100"},
        {u"select creditordebit,(year(ddate) & format(month(ddate),'0#')) as ddate,"
         u"sum(iif(creditordebit=true,amount,-1*amount)) as amount from ledger where name='Badr' group by "
         u"name,(year(ddate) & format(month(ddate),'0#')),creditordebit order by "
         u"(year(ddate) & format(month(ddate),'0#'))",
         u"True|200403|350 False|200403|-50"},
        // Names inside expressions and conditions are the table's columns, whatever aliases shadow them.
        {u"select format(ddate,'yyyy/mm/dd') as ddate,iif(creditordebit=true,amount,-1*amount) as amount "
         u"from general where amount > 60 order by ddate desc",
         u"2004/03/20|-100 2004/03/15|1000"},
        {u"select min(name) as name from members group by group order by name", u"Amina Carim Ehab"},
    };
    check(cases);
}

TEST(SqlSemantics, ResultTellsWhereItsFieldsComeFrom)
{
    SeededStore store;
    const sql::Compiled set = sql::compile(
        u"select sn as maxid, SN, sn+1, (select name from members) from settings as s order by s.sn"_s,
        store.catalog());
    EXPECT_EQ(set.baseTable, u"settings"_s);
    EXPECT_EQ(set.columns[0].baseColumn, u"sn"_s);
    EXPECT_EQ(set.columns[0].attributes, 122);
    EXPECT_EQ(set.columns[1].name, u"SN"_s);
    EXPECT_EQ(set.columns[2].name, u"Expr1000"_s);
    EXPECT_TRUE(set.columns[2].baseColumn.isEmpty());
    EXPECT_EQ(set.columns[3].definedSize, 50);
    EXPECT_EQ(set.columns[3].attributes, 106);
    for (const char16_t *text : {u"select distinct sn from settings", u"select count(*) from settings",
                                 u"select sn from settings group by sn"})
        EXPECT_TRUE(sql::compile(QString::fromUtf16(text), store.catalog()).baseTable.isEmpty());

    const sql::Compiled table = sql::compileTable(u"[Relations]"_s, store.catalog());
    EXPECT_EQ(table.baseTable, u"relations"_s);
    ASSERT_EQ(table.columns.size(), 3U);
    EXPECT_TRUE(table.columns[0].counter);
    EXPECT_EQ(table.columns[2].name, u"relationen"_s);
}

} // namespace
