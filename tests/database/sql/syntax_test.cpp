#include "database/sql/seeded_store.h"

#include <QtCore/QRegularExpression>

namespace
{

using SqlSyntax = SeededStore;

TEST_F(SqlSyntax, RefusalsSayWhatAndWhere)
{
    // What follows is the number of the failure, or how the text of a syntax error begins.
    const QString cases = uR"(
 => Invalid SQL statement; expected 'DELETE', 'DROP', 'INSERT', 'SELECT', or 'UPDATE'.
pragma key => Invalid SQL statement; expected
select * from users where userid ='O'Brien' and valid=true => Syntax error (missing operator) in query expression 'userid ='O'Brien' and valid=true'.
update settings set desceased='O'Brien' => Syntax error (missing operator) in query expression ''O'Brien''.
insert into archives (archive) values('a'b') => Syntax error (missing operator) in query expression ''a'b')'.
select id from users where name='x => Syntax error in string in query expression 'name='x'.
select id from users where name='x'' => Syntax error in string in query expression 'name='x'''.
select id from ledger where ddate=#-# => Syntax error in date in query expression '#-#'.
select id from ledger where ddate=#31/31/2004# => Syntax error in date in query expression
select id from ledger where ddate=#1/2 => Syntax error in date in query expression
select id,,name from users => The SELECT statement includes a reserved word or an argument name that is misspelled or missing, or the punctuation is incorrect. (at character 11: ,name from users)
select id from => Syntax error in FROM clause. (at the end of the statement)
select id from ledger, general => Syntax error in FROM clause.
select id from ledger where => Syntax error in WHERE clause.
select id from ledger where id= => Syntax error in query expression 'id='.
select id from ledger where id in (1) => Syntax error (missing operator) in query expression 'id in (1)'.
select id from ledger order by => Syntax error in ORDER BY clause.
select id from ledger order by 2 => Syntax error in ORDER BY clause: '2'.
insert into archives (archive) values(,) => Syntax error in INSERT INTO statement.
insert into archives (archive) values('x','y') => Number of query values and destination fields
insert into archives (archive,archive) values('x','y') => Duplicate output destination 'archive'.
update archives set where archive='x' => Syntax error in UPDATE statement.
drop table => Syntax error in DROP TABLE
delete from archives; delete from users => Characters found after end of SQL statement. (at character 23:
delete from archives delete from users => Characters found after end of SQL statement.
select noise(id) from ledger => Undefined function 'noise' in expression.
select year(id,id) from ledger => Wrong number of arguments used with function in query expression 'year(id,id)'.
select id from ledger where sum(amount)>1 => Cannot have aggregate function in expression 'sum(amount)'.
select name, sum(amount) from ledger => You tried to execute a query that does not include the specified expression 'name' as part of an aggregate
select distinct name from ledger order by id => ORDER BY clause (id) conflicts with DISTINCT.
select (select id, name from users) from ledger => You have written a subquery that can return more than one
select nothing from ledger => -2147217904
select general.id from ledger => -2147217904
insert into archives (nothing) values(1) => -2147217904
select sum(amount) as tot from [members] where valid = true => -2147217904
select * into [ledger2] from [ledger] where updatedon between #01/03/2004# and #31/03/2004# => -2147217904
delete from [general] where updatedon between #01/03/2004# and #31/03/2004# => -2147217904
select id from expenses where (datediff('d',ddate,'15/03/2004')<=0) Order by id => -2147217865
drop table nothing => -2147217865
select id from ledger where name=5 => -2147217913
select id from ledger where name => -2147217913
# found while running
select id from ledger where year(name)=5 => -2147217913
select * from [general] where (datediff('d',ddate,'-')<=0) and (datediff('d',ddate,'-')>=0) => -2147217913
select id/0 from ledger => 11
# where the engine would look no further than the inner table, or sum over the outer one
select (select id from sexes order by amount) from ledger => -2147217904
select (select id from sexes group by amount) from ledger => -2147217904
select (select id from sexes where id=(select max(amount) from sexes)) from ledger => -2147217904
select id from ledger order by true, null, 'x' => 0
select id from ledger; => 0
)"_s;
    for (const auto &[text, expected] : casesOf(cases)) {
        bool isNumber = false;
        const int number = expected.toInt(&isNumber);
        const Result result = tryOut(text);
        EXPECT_EQ(result.error, isNumber ? number : -2147217900) << text.toStdString();
        EXPECT_TRUE(isNumber || result.description.startsWith(expected)) << result.description.toStdString();
    }
}

TEST_F(SqlSyntax, DepthAndLengthAreBounded)
{
    const QString texts = uR"(
{where} [(]id=1[)]
{where} [not ]valid
{where} [iif(valid,1,]2[)]=2
{where} [id=(select max(id) from ledger where ]valid[)]
{where} [id*(1+]1[)]=2
{where} [id between 1 and (id+]1[)]
{where} [(id between 1 and ]2[)]
{where} [format(]id[)]='1'
{where} [- ]id=1
{where} [valid or valid and id=1+2*(select id from ledger where ]valid[)]
{where} [valid or valid and id between 3 and 1+2*(]1[)]
{where} [id=(select 1 from ledger order by id,iif(]valid[,1,2))]
select id from ledger order by id[,id]
select count(*) from ledger group by id[,id]
{where} id=1[ or id=1]
{where} '1'[&'1']=''
{where} 1[+1]=1
)"_s;
    const QString where = u"select id from ledger where "_s;
    const QRegularExpression repeated(u"\\[(.*?)\\]"_s);
    // What passes here also passes the engine's own parser, whose stack is short.
    for (int depth = 1; depth <= 100'000; depth = depth < 20 ? depth + 1 : depth * 10) {
        for (QString text : texts.split(u'\n', Qt::SkipEmptyParts)) {
            text.replace(u"{where} "_s, where);
            for (auto part = repeated.match(text); part.hasMatch(); part = repeated.match(text))
                text.replace(part.capturedStart(), part.capturedLength(), part.captured(1).repeated(depth));
            const Result result = tryOut(text);
            EXPECT_TRUE(result.error == 0 || result.description.startsWith(u"The query is too complex."_s))
                << result.description.toStdString() << " at depth " << depth << ": "
                << text.left(300).toStdString();
        }
    }
    QString wide = u"select id"_s;
    for (int column = 1; column < 400; ++column)
        wide += u",%1"_s.arg(column);
    EXPECT_EQ(tryOut(wide + u" from ledger"_s).error, -2147217900);

    const QString name(10'000, u'x');
    EXPECT_EQ(run(where + u"name='"_s + name + u"'"_s).rows, QString());
    EXPECT_EQ(tryOut(where + name + u"=1"_s).error, -2147217904);
    EXPECT_EQ(tryOut(name).error, -2147217900);
    const QString holed = u"a"_s + QChar(0) + u"b"_s;
    run(u"update settings set desceased='"_s + holed + u"'"_s);
    EXPECT_EQ(run(u"select desceased from settings"_s).rows, holed);
    EXPECT_EQ(tryOut(u"select id from led"_s + QChar(0) + u"ger"_s).error, -2147217900);
}

} // namespace
