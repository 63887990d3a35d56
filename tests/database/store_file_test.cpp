#include "database/temp_store.h"
#include "platform/database/compaction.h"

// The file itself: its making and its rewriting.

using StoreFiles = TempStore;

TEST_F(StoreFiles, CreationNeverWritesOverAnything)
{
    const QString folder = m_folder.path();
    const auto created = [](const QString &file, const QString &password = u"pw"_s) {
        return outcome([&] { StoreFile::create(file, password); });
    };
    const QByteArray before = bytesOf(path);
    EXPECT_EQ(created(path), "58 File already exists");
    EXPECT_EQ(created(folder), "58 File already exists");
    QFile::link(folder + u"/nowhere"_s, folder + u"/dangling"_s);
    EXPECT_EQ(created(folder + u"/dangling"_s), "58 File already exists");
    EXPECT_TRUE(bytesOf(path) == before);
    EXPECT_EQ(created(folder + u"/no/x.mdb"_s), "76 Path not found");
    EXPECT_EQ(created(folder + u'/' + QString(300, u'n')), "75 Path/File access error");
    EXPECT_EQ(created(folder + u"/x"_s + QChar()), "75 Path/File access error");
    EXPECT_EQ(failureOf([&] { Connection::create()->open(connectionTo(path + QChar())); }), -2147467259);
    EXPECT_EQ(created(folder + u"/empty.mdb"_s, {}).substr(0, 11), "-2147217843");
    EXPECT_FALSE(QFile::exists(folder + u"/empty.mdb"_s));

    StoreFile file = StoreFile::create(folder + u"/new.mdb"_s, u"p'w;\u0645"_s);
    file.appendTable({u"order"_s, {{u"group"_s, ColumnDefinition::Type::Text, 3}}, {u"group"_s}});
    EXPECT_EQ(failureOf([&] { file.appendTable({u"order"_s, {{u"x"_s}}, {}}); }), -2147467259);
    file.close();
    EXPECT_EQ(failureOf([&] { file.appendTable({u"t"_s, {{u"x"_s}}, {}}); }), 3704);
    const ConnectionPtr other = Connection::create();
    other->open(connectionTo(folder + u"/new.mdb"_s, u"p'w;\u0645"_s));
    other->execute(u"insert into [order] ([group]) values('abc')"_s);
}

TEST_F(StoreFiles, CompactionKeepsRowsRulesAndCounters)
{
    addPeople({u"b"_s, u"a"_s, u"\u0645\u0631\u0649"_s, u"d"_s});
    connection->execute(u"delete from people where name='d'"_s);
    connection->execute(u"select * into [people7] from people"_s);
    for (int doubling = 0; doubling < 8; ++doubling)
        connection->execute(u"insert into [people7] select * from [people7]"_s);
    connection->execute(u"delete from [people7] where id=2"_s);
    const std::string before = rows(u"select * from people"_s);
    connection->close();
    const QString target = m_folder.filePath(u"x.mdb"_s);
    const QString targetString = u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + target +
                                 u";Jet OLEDB:Engine Type=5;Jet OLEDB:Database Password=other"_s;
    const QByteArray source = bytesOf(path);
    chmod(path.toUtf8().constData(), 0600);
    compactStoreFile(connectionTo(path), targetString);
    EXPECT_TRUE(bytesOf(path) == source);
    EXPECT_LT(bytesOf(target).size(), source.size());
    EXPECT_EQ(QFile::permissions(target) & QFile::ReadGroup, 0);
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList(u"x.mdb"_s));

    const QByteArray compacted = bytesOf(target);
    connection->open(connectionTo(target, u"other"_s));
    EXPECT_EQ(shown(*table()), before);
    EXPECT_TRUE(bytesOf(target) == compacted); // nothing was left for the opening to do
    EXPECT_EQ(table(u"people7"_s)->recordCount(), 512);
    const RecordsetPtr set = table();
    addRow(*set, u"e"_s);
    EXPECT_EQ(set->value(u"id"_s), Value(5)); // 4 was deleted before
    EXPECT_TRUE(set->value(u"valid"_s).toBool());
    for (const QString &name : {u"A"_s, u""_s}) // taken, and refused
        EXPECT_NE(
            failureOf([&] { connection->execute(u"insert into people (name) values('%1')"_s.arg(name)); }),
            0);
    connection->close();

    // failures leave both sides as they were
    const QByteArray standing = bytesOf(target);
    EXPECT_EQ(outcome([&] { compactStoreFile(connectionTo(path), targetString); }), "58 File already exists");
    EXPECT_TRUE(bytesOf(target) == standing);
    QFile::remove(target);
    QByteArray damaged = source;
    for (int page = 2; page < damaged.size() / 4096; ++page)
        damaged[page * 4096 + 2000] = char(damaged[page * 4096 + 2000] ^ 1);
    writeFile(path, damaged);
    EXPECT_NE(outcome([&] { compactStoreFile(connectionTo(path), targetString); }), "ok");
    EXPECT_TRUE(bytesOf(path) == damaged);
    EXPECT_FALSE(QFile::exists(target));
}
