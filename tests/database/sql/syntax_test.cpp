#include "database/sql/seeded_store.h"
#include "platform/database/engine.h"
#include "platform/database/sql/compiler.h"
#include "platform/runtime/runtime_error.h"

#include <QtCore/QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

TEST(SqlSyntax, RefusalsSayWhatAndWhere)
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
drop table nothing => -2147217865
select id from ledger where name=5 => -2147217913
select id from ledger where name => -2147217913
# found while running
select id from ledger where year(name)=5 => -2147217913
select id/0 from ledger => 11
# where the engine would look no further than the inner table, or sum over the outer one
select (select id from sexes order by amount) from ledger => -2147217904
select (select id from sexes group by amount) from ledger => -2147217904
select (select id from sexes where id=(select max(amount) from sexes)) from ledger => -2147217904
select id from ledger order by true, null, 'x' => 0
select id from ledger; => 0
)"_s;
    SeededStore store;
    for (const auto &[text, expected] : casesOf(cases)) {
        SCOPED_TRACE(text.toStdString());
        bool isNumber = false;
        const int number = expected.toInt(&isNumber);
        QString description;
        EXPECT_EQ(errorOf(store, text, &description), isNumber ? number : -2147217900);
        EXPECT_TRUE(isNumber || description.startsWith(expected)) << description.toStdString();
    }
    EXPECT_EQ(store.rows(u"select count(*) from ledger group by true"_s), u"6"_s);
}

TEST(SqlSyntax, DepthAndLengthAreBounded)
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
    SeededStore store;
    const QString where = u"select id from ledger where "_s;
    const QRegularExpression repeated(u"\\[(.*?)\\]"_s);
    // What passes here also passes the engine's own parser, whose stack is short.
    for (int depth = 1; depth <= 100'000; depth = depth < 20 ? depth + 1 : depth * 10) {
        for (QString text : texts.split(u'\n', Qt::SkipEmptyParts)) {
            text.replace(u"{where} "_s, where);
            for (auto part = repeated.match(text); part.hasMatch(); part = repeated.match(text))
                text.replace(part.capturedStart(), part.capturedLength(), part.captured(1).repeated(depth));
            QString description;
            const int error = errorOf(store, text, &description);
            EXPECT_TRUE(error == 0 ||
                        (error == -2147217900 && description.startsWith(u"The query is too complex."_s)))
                << error << ' ' << description.toStdString() << " at depth " << depth << ": "
                << text.left(300).toStdString();
        }
    }
    QString wide = u"select id"_s;
    for (int column = 1; column < 400; ++column)
        wide += u",%1"_s.arg(column);
    EXPECT_EQ(errorOf(store, wide + u" from ledger"_s), -2147217900);

    const QString name(10'000, u'x');
    EXPECT_EQ(store.rows(where + u"name='"_s + name + u"'"_s), QString());
    EXPECT_EQ(errorOf(store, where + name + u"=1"_s), -2147217904);
    EXPECT_EQ(errorOf(store, name), -2147217900);
    const QString holed = u"a"_s + QChar(0) + u"b"_s;
    store.run(u"update settings set desceased='"_s + holed + u"'"_s);
    EXPECT_EQ(store.rows(u"select desceased from settings"_s), holed);
    EXPECT_EQ(errorOf(store, u"select id from led"_s + QChar(0) + u"ger"_s), -2147217900);
}

/// Whatever is cut out of a statement: it is refused by the dialect, or the engine takes what becomes of it.
TEST(SqlSyntax, DamagedStatementsEndCleanly)
{
    const QString texts =
        uR"(insert into [general] (transactionid,amount,ddate,valid) values(4,1001.5,'15/03/2004',True)
select name,creditordebit,(year(ddate) & format(month(ddate),'0#')) as ddate,sum(iif(creditordebit=true,amount,-1*amount)) as amount from [ledger] where valid=true and ddate between #1/2/2004# and #2/3/2004# group by name,(year(ddate) & format(month(ddate),'0#')),creditordebit order by 1 desc, name;
select id,(select detailen from details where gtype=details.id) as gtype from [ledger] order by gtype
update [general] set [transactiondetail]='x',[gtype]=gtype+1 where not transactionid is null
insert into [ledger] select * from [ledger1])"_s;
    SeededStore store;
    const auto tried = [&store](const QString &text) {
        try {
            for (const sql::Step &step : sql::compile(text, store.catalog()).steps) {
                if (!step.text.startsWith("insert into \"odd"))
                    const database::Statement prepared(store.handle(), step.text);
            }
        } catch (const RuntimeError &error) {
            EXPECT_NE(error.number(), -2147467259) << error.what() << ": " << text.toStdString();
        }
    };
    for (const QString &text : texts.split(u'\n')) {
        for (qsizetype cut = 0; cut < text.size(); ++cut) {
            tried(text.first(cut));
            tried(text.first(cut) + text.sliced(cut + 1));
            tried(text.first(cut) + u"'("_s[cut % 2] + text.sliced(cut));
            tried(text.first(cut) + text.sliced(std::min(cut + 7, text.size())));
        }
    }
}

} // namespace
