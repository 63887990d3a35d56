#include "store/create_store.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace
{

class CreateStoreTest : public SessionFixture
{
protected:
    static bool create() { return CreateStore(u"quvana"_s, engine.storePassword); }
    const QString backup = folder() + u"/quvana_backup.mdb"_s;
};

TEST_F(StoreFixture, BeginsWithTheSeedRowsAndNothingElse)
{
    EXPECT_EQ(
        shellRows(u"select id,detailar,detailen,credit from details"_s).join(u" / "_s),
        uR"(1|تلفون|Phone|0 / 2|كهرباء|Electricity|0 / 3|دراسه|Education|0 / 4|تذاكر|Travel|0 / 5|أقساط|Fees|0 / 6|مواصلات|Transportation|0 / 7|معيشه|Food|0 / 8|مصروف|Allowance|0 / 9|أرباح|Earnings|0 / 10|أخرى|Other|0 / 11|إيجارات عقارات|Property Rentals|-1 / 12|بيع عقارات|Property Sale|-1 / 13|راتب|Salary|-1 / 14|تقاعد|Pension|-1 / 15|مكافأه|Reward|-1 / 16|بيع سياره|Car Sale|-1 / 17|إستثمار|Investment|-1 / 18|أسهم|Stocks and bonds|-1 / 19|أخرى|Other|-1)"_s);
    EXPECT_EQ(shellRows(u"select ifnull(id,''),desceased,lastcompacted,sn from settings"_s),
              QStringList{u"|unknown|"_s + today().toString(u"yyyy-MM-dd"_s) + u"|0"_s});
    for (const char *empty : {"users", "members", "ledger", "general", "archives", "audit_members"})
        EXPECT_EQ(shellRows(u"select * from "_s + QLatin1StringView(empty)), QStringList());
}

TEST_F(CreateStoreTest, KeepsAnEarlierStoreAndAsksBeforeItDropsAnOlderOne)
{
    writeFile(engine.storeFilePath + u"-journal"_s, "a journal of a store that is gone");
    ASSERT_TRUE(create());
    EXPECT_EQ(shellRows(u"select count(*) from details"_s), QStringList(u"19"_s));
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

} // namespace
