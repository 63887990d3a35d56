#include "database/sql/seeded_store.h"
#include "platform/database/engine.h"
#include "platform/database/sql/compiler.h"
#include "platform/runtime/runtime_error.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

TEST(SqlSyntax, RefusalsSayWhatAndWhere)
{
    struct Case {
        const char16_t *text;
        const char16_t *words; ///< the description begins with them
    };
    const Case cases[] = {
        {u"", u"Invalid SQL statement; expected 'DELETE', 'DROP', 'INSERT', 'SELECT', or 'UPDATE'."},
        {u"pragma key", u"Invalid SQL statement; expected"},
        {u"select * from users where userid ='O'Brien' and valid=true",
         u"Syntax error (missing operator) in query expression 'userid ='O'Brien' and valid=true'."},
        {u"update settings set desceased='O'Brien'",
         u"Syntax error (missing operator) in query expression ''O'Brien''."},
        {u"insert into archives (archive) values('a'b')",
         u"Syntax error (missing operator) in query expression ''a'b')'."},
        {u"select id from users where name='x", u"Syntax error in string in query expression 'name='x'."},
        {u"select id from users where name='x''", u"Syntax error in string in query expression 'name='x'''."},
        {u"select id from ledger where ddate=#-#", u"Syntax error in date in query expression '#-#'."},
        {u"select id from ledger where ddate=#31/31/2004#", u"Syntax error in date in query expression"},
        {u"select id from ledger where ddate=#1/2", u"Syntax error in date in query expression"},
        {u"select id,,name from users", u"The SELECT statement includes a reserved word or an argument name "
                                        u"that is misspelled or missing, or the "
                                        u"punctuation is incorrect. (at character 11: ,name from users)"},
        {u"select id from", u"Syntax error in FROM clause. (at the end of the statement)"},
        {u"select id from ledger, general", u"Syntax error in FROM clause."},
        {u"select id from ledger where", u"Syntax error in WHERE clause."},
        {u"select id from ledger where id=", u"Syntax error in query expression 'id='."},
        {u"select id from ledger where id in (1)",
         u"Syntax error (missing operator) in query expression 'id in (1)'."},
        {u"select id from ledger order by", u"Syntax error in ORDER BY clause."},
        {u"select id from ledger order by 2", u"Syntax error in ORDER BY clause: '2'."},
        {u"insert into archives (archive) values(,)", u"Syntax error in INSERT INTO statement."},
        {u"insert into archives (archive) values('x','y')", u"Number of query values and destination fields"},
        {u"insert into archives (archive,archive) values('x','y')",
         u"Duplicate output destination 'archive'."},
        {u"update archives set where archive='x'", u"Syntax error in UPDATE statement."},
        {u"drop table", u"Syntax error in DROP TABLE"},
        {u"delete from archives; delete from users",
         u"Characters found after end of SQL statement. (at character 23: "},
        {u"delete from archives delete from users", u"Characters found after end of SQL statement."},
        {u"select noise(id) from ledger", u"Undefined function 'noise' in expression."},
        {u"select year(id,id) from ledger",
         u"Wrong number of arguments used with function in query expression "
         u"'year(id,id)'."},
        {u"select id from ledger where sum(amount)>1",
         u"Cannot have aggregate function in expression 'sum(amount)'."},
        {u"select name, sum(amount) from ledger", u"You tried to execute a query that does not include the "
                                                  u"specified expression 'name' as part of an aggregate"},
        {u"select distinct name from ledger order by id", u"ORDER BY clause (id) conflicts with DISTINCT."},
        {u"select (select id, name from users) from ledger",
         u"You have written a subquery that can return more than one"},
    };
    SeededStore store;
    for (const Case &entry : cases) {
        QString description;
        const int number = errorOf(store, QString::fromUtf16(entry.text), &description);
        EXPECT_EQ(number, -2147217900) << QString::fromUtf16(entry.text).toStdString();
        EXPECT_TRUE(description.startsWith(QString::fromUtf16(entry.words))) << description.toStdString();
    }
    EXPECT_EQ(errorOf(store, u"select nothing from ledger"_s), -2147217904);
    EXPECT_EQ(errorOf(store, u"select general.id from ledger"_s), -2147217904);
    // Where the engine would look no further than the inner table, or sum over the outer one.
    for (const char16_t *inner :
         {u"order by amount", u"group by amount", u"where id=(select max(amount) from sexes)"})
        EXPECT_EQ(
            errorOf(store, u"select (select id from sexes %1) from ledger"_s.arg(QString::fromUtf16(inner))),
            -2147217904);
    EXPECT_EQ(errorOf(store, u"select id from ledger order by true, null, 'x'"_s), 0);
    EXPECT_EQ(store.rows(u"select count(*) from ledger group by true"_s), u"6"_s);
    EXPECT_EQ(errorOf(store, u"insert into archives (nothing) values(1)"_s), -2147217904);
    EXPECT_EQ(errorOf(store, u"drop table nothing"_s), -2147217865);
    EXPECT_EQ(errorOf(store, u"select id from ledger where name=5"_s), -2147217913);
    EXPECT_EQ(errorOf(store, u"select id from ledger where name"_s), -2147217913);
    EXPECT_EQ(errorOf(store, u"select id from ledger where year(name)=5"_s),
              -2147217913); // found while running
    EXPECT_EQ(errorOf(store, u"select id/0 from ledger"_s), 11);
    EXPECT_EQ(errorOf(store, u"select id from ledger;"_s), 0);
}

QString nested(const QString &open, const QString &middle, const QString &close, int depth)
{
    return open.repeated(depth) + middle + close.repeated(depth);
}

TEST(SqlSyntax, DepthAndLengthAreBounded)
{
    SeededStore store;
    const QString where = u"select id from ledger where "_s;
    // What passes here also passes the engine's own parser, whose stack is short.
    for (int depth = 1; depth <= 100'000; depth = depth < 20 ? depth + 1 : depth * 10) {
        const QString texts[] = {
            where + nested(u"("_s, u"id=1"_s, u")"_s, depth),
            where + nested(u"not "_s, u"valid"_s, u""_s, depth),
            where + nested(u"iif(valid,1,"_s, u"2"_s, u")"_s, depth) + u"=2"_s,
            where + nested(u"id=(select max(id) from ledger where "_s, u"valid"_s, u")"_s, depth),
            where + nested(u"id*(1+"_s, u"1"_s, u")"_s, depth) + u"=2"_s,
            where + nested(u"id between 1 and (id+"_s, u"1"_s, u")"_s, depth),
            where + nested(u"(id between 1 and "_s, u"2"_s, u")"_s, depth),
            where + nested(u"format("_s, u"id"_s, u")"_s, depth) + u"='1'"_s,
            where + nested(u"- "_s, u"id"_s, u""_s, depth) + u"=1"_s,
            where + nested(u"valid or valid and id=1+2*(select id from ledger where "_s, u"valid"_s, u")"_s,
                           depth),
            where + nested(u"valid or valid and id between 3 and 1+2*("_s, u"1"_s, u")"_s, depth),
            where + nested(u"id=(select 1 from ledger order by id,iif("_s, u"valid"_s, u",1,2))"_s, depth),
            u"select id from ledger order by id"_s + u",id"_s.repeated(depth),
            u"select count(*) from ledger group by id"_s + u",id"_s.repeated(depth),
            where + u"id=1"_s + u" or id=1"_s.repeated(depth),
            where + u"'1'"_s + u"&'1'"_s.repeated(depth) + u"=''"_s,
            where + u"1"_s + u"+1"_s.repeated(depth) + u"=1"_s,
        };
        for (const QString &text : texts) {
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
    const char16_t *texts[] = {
        u"insert into [general] (transactionid,amount,ddate,valid) values(4,1001.5,'15/03/2004',True)",
        u"select name,creditordebit,(year(ddate) & format(month(ddate),'0#')) as "
        u"ddate,sum(iif(creditordebit=true,"
        u"amount,-1*amount)) as amount from [ledger] where valid=true and ddate between #1/2/2004# and "
        u"#2/3/2004# "
        u"group by name,(year(ddate) & format(month(ddate),'0#')),creditordebit order by 1 desc, name;",
        u"select id,(select detailen from details where gtype=details.id) as gtype from [ledger] order by "
        u"gtype",
        u"update [general] set [transactiondetail]='x',[gtype]=gtype+1 where not transactionid is null",
        u"insert into [ledger] select * from [ledger1]",
    };
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
    for (const char16_t *entry : texts) {
        const QString text = QString::fromUtf16(entry);
        for (qsizetype cut = 0; cut < text.size(); ++cut) {
            tried(text.first(cut));
            tried(text.first(cut) + text.sliced(cut + 1));
            tried(text.first(cut) + u"'("_s[cut % 2] + text.sliced(cut));
            tried(text.first(cut) + text.sliced(std::min(cut + 7, text.size())));
        }
    }
}

} // namespace
