#include "store/create_store.h"
#include "support/child_process.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <csignal>

namespace
{

/// In the order of making: columns (`!` behind a text that refuses length zero, a boolean's default) and
/// indexes (`*` behind a unique one).
const QString toldTables = uR"(archives: table text(30)!, archive text(30)!, interval text(30)!; archive*
settings: id long, desceased text(50)!, lastcompacted date, sn long; id*
ledger: id counter, name text(50)!, transactionid long, creditordebit boolean=0, amount money, totalamount money, valid boolean=0, ddate date, enteredon date, enteredby text(20)!, transactiondetail text(100), paymentdetail text(100), paymentmethod text(15)!, gtype long; id*, name, transactionid, creditordebit, gtype
members: name text(50)!, sex byte, title text(10), relation byte, dob date, group byte, valid boolean=-1, lastupdate date; name*
audit_members: idkey counter, name text(50)!, sex byte, title text(10), relation byte, dob date, group byte, valid boolean=0, lastupdate date, updatedon date, updatedby text(20)!, updatetype text(10)!; idkey*, name
relations: id counter, relationar text(20)!, relationen text(20)!; id*
sexes: id counter, sexar text(20)!, sexen text(20)!; id*
details: id counter, detailar text(20)!, detailen text(20)!, credit boolean=0; id*
users: id counter, userid text(20)!, password text(20), name text(50)!, rank byte, lastlogin date, createdon date, createdby text(20)!, valid boolean=0, lastupdate date, language text(10)!, fontname text(50)!, fontsize text(50)!, fontbold text(50)!, fontcolor text(50)!; id*, userid
audit_users: idkey long, id counter, userid text(20)!, password text(20)!, name text(50)!, rank byte, lastlogin date, createdon date, createdby text(20)!, valid boolean=0, lastupdate date, language text(10)!, fontname text(50)!, fontsize text(50)!, fontbold text(50)!, fontcolor text(50)!, updatedon date, updatedby text(20)!, updatetype text(10)!; idkey*, id, userid
general: id counter, transactionid long, valid boolean=0, creditordebit boolean=0, amount money, ddate date, enteredon date, enteredby text(20)!, transactiondetail text(100), paymentdetail text(100), paymentmethod text(15)!, gtype long, lastupdate date; id*, transactionid, creditordebit, gtype
audit_general: idkey counter, id long, transactionid long, valid boolean=0, creditordebit boolean=0, amount money, ddate date, enteredon date, enteredby text(20)!, transactiondetail text(100), paymentdetail text(100), paymentmethod text(15)!, gtype long, lastupdate date, updatedon date, updatedby text(20)!, updatetype text(10)!; idkey*, id, transactionid)"_s;

class CreateStoreTest : public SessionFixture
{
protected:
    static bool create() { return CreateStore(u"quvana"_s, engine.storePassword); }
    const QString backup = folder() + u"/quvana_backup.mdb"_s;
};

TEST_F(StoreFixture, HasTheToldTablesForAnIndependentReader)
{
    QStringList tables;
    const QString list =
        u"select name,sql from sqlite_master where type='table' and name<>'system_counters'"_s;
    for (const QString &sql : shellRows(list)) {
        const QString name = sql.section(u'|', 0, 0);
        QStringList columns;
        for (const QString &line : shellRows(u"pragma table_info(\""_s + name + u"\")"_s)) {
            const QStringList part = line.split(u'|');
            columns += part[1] + u' ' + part[2] +
                       (sql.contains(u'"' + part[1] + u"_empty"_s) ? u"!"_s : u""_s) +
                       (part[4] == u"(null)"_s ? u""_s : u"="_s + part[4]);
        }
        QStringList indexes; // the newest comes first
        for (const QString &line : shellRows(u"pragma index_list(\""_s + name + u"\")"_s)) {
            const QStringList part = line.split(u'|');
            indexes.prepend(part[1].mid(name.size() + 1) + (part[2] == u"1"_s ? u"*"_s : u""_s));
        }
        tables += name + u": "_s + columns.join(u", "_s) + u"; "_s + indexes.join(u", "_s);
    }
    EXPECT_EQ(tables, toldTables.split(u'\n'));
}

TEST_F(StoreFixture, BeginsWithTheSeedRowsAndNothingElse)
{
    const struct {
        QString rows;
        QString query;
    } cases[] = {
        {u"1|زوجه|Wife / 2|ولد|Son / 3|بنت|Daughter"_s, u"select * from relations"_s},
        {u"1|ذكر|Male / 2|أنثى|Female"_s, u"select * from sexes"_s},
        {uR"(1|تلفون|Phone|0 / 2|كهرباء|Electricity|0 / 3|دراسه|Education|0 / 4|تذاكر|Travel|0 / 5|أقساط|Fees|0 / 6|مواصلات|Transportation|0 / 7|معيشه|Food|0 / 8|مصروف|Allowance|0 / 9|أرباح|Earnings|0 / 10|أخرى|Other|0 / 11|إيجارات عقارات|Property Rentals|-1 / 12|بيع عقارات|Property Sale|-1 / 13|راتب|Salary|-1 / 14|تقاعد|Pension|-1 / 15|مكافأه|Reward|-1 / 16|بيع سياره|Car Sale|-1 / 17|إستثمار|Investment|-1 / 18|أسهم|Stocks and bonds|-1 / 19|أخرى|Other|-1)"_s,
         u"select id,detailar,detailen,credit from details"_s},
        {u"|unknown|"_s + today().toString(u"yyyy-MM-dd"_s) + u"|0"_s,
         u"select ifnull(id,''),desceased,lastcompacted,sn from settings"_s},
    };
    for (const auto &c : cases)
        EXPECT_EQ(shellRows(c.query).join(u" / "_s), c.rows);
    for (const char *empty : {"users", "members", "ledger", "general", "archives", "audit_members"})
        EXPECT_EQ(shellRows(u"select * from "_s + QLatin1StringView(empty)), QStringList());
}

TEST_F(CreateStoreTest, SeedsInTheSessionsLanguage)
{
    setLanguage(true);
    setClock([] { return makeDate(2004, 3, 15, 13, 5); });
    ASSERT_TRUE(CreateStore(u"testdb"_s, engine.storePassword));
    EXPECT_EQ(shellRows(u"select desceased, lastcompacted, sn from settings"_s, engine.testStorePath),
              QStringList(u"غير معروف|2004-03-15|0"_s));
}

TEST_F(CreateStoreTest, KeepsAnEarlierStoreAndAsksBeforeItDropsAnOlderOne)
{
    ASSERT_TRUE(create());
    const QByteArray first = bytesOf(engine.storeFilePath);
    ASSERT_TRUE(create());
    const QByteArray second = bytesOf(engine.storeFilePath);
    const QString question =
        u"Do you want to Delete the old backup?  هل تريد حذف النسخه الإحتياطيه؟ : \r\n"_s + backup;
    ScriptedDialogs dialogs;
    dialogs.expectNo(question).withIcon(MessageIcon::Critical);
    EXPECT_FALSE(create());
    EXPECT_TRUE(bytesOf(backup) == first && bytesOf(engine.storeFilePath) == second);
    dialogs.expectYes(question);
    EXPECT_TRUE(create());
    EXPECT_TRUE(bytesOf(backup) == second);
}

TEST_F(CreateStoreTest, ShowsAFailureAndNeverDropsTheEarlierStore)
{
    // What stands in the way; where the earlier store then lies.
    const std::tuple<QString, QString> cases[] = {{u"quvana.mdb-new"_s, backup},
                                                  {u"quvana_backup.mdb"_s, engine.storeFilePath}};
    for (const auto &[folderName, earlier] : cases) {
        QFile::remove(backup);
        writeFile(engine.storeFilePath, {});
        QDir(folder()).mkdir(folderName);
        ScriptedDialogs dialogs;
        dialogs.expectMessage(u"File already exists"_s);
        EXPECT_FALSE(create());
        EXPECT_TRUE(QFileInfo(earlier).isFile()) << folderName.toStdString();
        EXPECT_EQ(QDir(folder()).entryList(QDir::Files).size(), 1);
        QDir(folder()).rmdir(folderName);
    }
}

TEST_F(CreateStoreTest, LeavesNoHalfMadeStoreWhereverItIsKilled)
{
    writeFile(engine.storeFilePath + u"-journal"_s, "a journal of a store that is gone");
    // No file may grow beyond so many pages: the system kills the maker at the first write that would.
    for (const rlim_t pages : {0, 1, 20, 40, 1000}) {
        const int end = inChild([&] {
            const rlimit core{0, 0};
            setrlimit(RLIMIT_CORE, &core);
            limitFileSize(pages * 4096);
            return create() ? 0 : 1;
        });
        EXPECT_EQ(end, pages < 1000 ? -SIGXFSZ : 0) << pages;
        EXPECT_EQ(QFile::exists(engine.storeFilePath), pages == 1000) << pages;
    }
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files), QStringList(u"quvana.mdb"_s));
    EXPECT_EQ(shellRows(u"select count(*) from details"_s), QStringList(u"19"_s));
}

} // namespace
