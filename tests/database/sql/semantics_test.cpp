#include "database/sql/seeded_store.h"

namespace
{

class SqlSemantics : public SeededStore
{
protected:
    /// Lines of a SELECT and its rows, joined by blanks, their fields by |.
    void check(const QString &cases)
    {
        for (const auto &[text, rows] : casesOf(cases)) {
            const Result result = tryOut(text);
            EXPECT_EQ(result.rows + result.description, rows) << text.toStdString();
        }
    }
};

TEST_F(SqlSemantics, ComparisonsConvertTheirSides)
{
    check(uR"(
select id from general where amount = 1000 => 1
# Compared as money: 99.99995 is 100.0000, a half to the even digit.
select id from general where amount > 99.99995 and amount < 1e30 => 1
select id from general where amount > transactionid * 50 => 1
select id from general where '100' = amount => 2
select id from general where transactionid = '2' => 2
select id from general where creditordebit = 'true' => 1
select id from general where creditordebit = -1 => 1
select id from general where creditordebit = 1 =>
select id from general where ddate = '15/03/2004' => 1
select id from general where ddate = #3/15/2004# => 1
select id from general where ddate = #20/3/2004 10:30:00# => 2
# month first
select id from general where ddate = #04/05/2004# => 3
select id from general where ddate >= #2004/04/05# => 3
# swapped
select id from general where ddate between #31/03/2004# and #01/03/2004# => 1 2
select id from general where ddate not between #01/03/2004# and #03/31/2004# => 3
# 2 has a time
select id from general where ddate between #15/03/2004# and #20/03/2004# => 1
select id from general where amount between 1000 and 100 => 1 2
select name from members where name between 'd' and 'B' => Badr Carim
select id from general where (year(ddate) & format(month(ddate),'0#'))>=(200404) => 3
select id from general where (year(ddate) & format(month(ddate),'0#'))<=(200403) => 1 2
select id from general where (year(lastupdate) & format(month(lastupdate),'0#'))<=(999999) =>
select id from general where valid => 1 2
select id from general where not valid => 3
select id from general where not (valid and creditordebit) and lastupdate is null => 2 3
select id from general where (amount > 60) = true => 1 2
select id from general where lastupdate = null or lastupdate <> null =>
select name from members where title is not null and title = '' => Carim
select name from members where 'DANA ' = name => Dana
select userid from users where password = 'sEcReT   ' => admin
select name from members where name & title = 'dana' & 'MS' => Dana
select id from details where detailen = (select detailen from details where id = 4) => 2 4
)"_s);
}

TEST_F(SqlSemantics, ExpressionsKeepTheirTypes)
{
    check(uR"(
select amount + 1, amount * 2, -amount, amount / 8, 3 - 2 * id from general where id = 1 => 1001|2000|-1000|125|1
select amount * amount, amount * 0.00005, 0.5 + id from general where id = 2 => 10000|0.005|2.5
select valid & ' ' & ddate & ' ' & amount & lastupdate & id from general where id = 2 => True 20/03/2004 10:30:00 1002
select lastupdate & null, lastupdate & '' from general where id = 2 => Null|
select format(lastupdate,'yyyy'), format(ddate,'yyyy/mm/dd hh:mm:ss'), format(amount,'#,###,##0.00'), format(paymentmethod,'0#') from general where id = 2 => |2004/03/20 10:30:00|100.00|Check
select iif(creditordebit=true,amount,0), iif(lastupdate=null,1,2), iif(valid,ddate,'-') from general => 1000|2|15/03/2004 0|2|20/03/2004 10:30:00 0|2|-
select year(ddate), month(ddate), day(ddate), hour(ddate), year(lastupdate), month('5/6/99') from general where id = 2 => 2004|3|20|10|Null|6
select datediff('d', ddate, '31/03/2004'), datediff('D', #4/1/2004#, ddate) from general => 16|-17 11|-12 -5|4
select amount > 60, valid and creditordebit from general => True|True True|False False|False
select sum(amount), count(*), count(lastupdate), max(ddate), min(amount), avg(amount) from general => 1150|3|0|05/04/2004|50|383.3333
select sum(amount), max(ddate), count(*) from general where id = 99 => Null|Null|0
select max(name), min(name) from members => Ehab|Amina
select relation, count(*) from members where relation = 9 group by relation =>
select 'it''s', "a ""b""" from settings => it's|a "b"
select (select detailen from details where gtype=details.id) from general => Property Sale Phone Other
select (select detailen from details where id = 77) from settings => Null
select (select relationen from relations where relation=id) from members where valid => Daughter Son Son Wife
)"_s);
}

TEST_F(SqlSemantics, RowsComeInATellableOrder)
{
    check(uR"(
select name from members => Dana Badr Carim Amina Ehab
# not the order of the index on name
select id from ledger where name > 'A' => 1 2 3 4 5 6
select name from members order by name => Amina Badr Carim Dana Ehab
select name from members order by relation => Amina Badr Carim Ehab Dana
select name from members order by relation desc, dob => Dana Badr Ehab Carim Amina
select name, sex from members order by 2 desc, 1 desc => Dana|2 Amina|2 Ehab|1 Carim|1 Badr|1
select title from members order by title => Null Null  Mr Ms
select id from details order by detailar => 2 4 3 1
select distinct group from members => 1 2 3
select distinct group from members order by group desc => 3 2 1
select distinct detailen from details => Other Phone Property Sale
select group, count(*) from members group by group => 1|2 2|2 3|1
select count(*) from ledger group by true => 6
select relation,count(*) as x from members group by relation order by x desc => 2|3 1|1 3|1
select creditordebit,sum(amount) as tot from ledger where valid = true group by creditordebit => True|1000 False|100
select creditordebit,(year(ddate) & format(month(ddate),'0#')) as ddate,sum(iif(creditordebit=true,amount,-1*amount)) as amount from ledger where name='Badr' group by name,(year(ddate) & format(month(ddate),'0#')),creditordebit order by (year(ddate) & format(month(ddate),'0#')) => True|200403|350 False|200403|-50
# Names inside expressions and conditions are the table's columns, whatever aliases shadow them.
select format(ddate,'yyyy/mm/dd') as ddate,iif(creditordebit=true,amount,-1*amount) as amount from general where amount > 60 order by ddate desc => 2004/03/20|-100 2004/03/15|1000
select min(name) as name from members group by group order by name => Amina Carim Ehab
)"_s);
}

} // namespace
