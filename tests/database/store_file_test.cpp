#include "database/temp_store.h"
#include "platform/database/compaction.h"
#include "platform/database/session.h"

#include <QtCore/QRandomGenerator>
#include <sqlcipher/sqlite3.h>

#include <cstring>

// The file of a store: its opening, its making and its rewriting.

using Files = TempStore;

TEST_F(Files, TellsWhyAFileIsNoStoreAndLeavesItAlone)
{
    const QString folder = m_folder.filePath(u"files"_s);
    QDir().mkpath(folder);
    const QByteArray store = bytesOf(path);
    QByteArray noise(8192, '\0');
    QRandomGenerator random(7);
    random.generate(noise.begin(), noise.end());
    const std::string format = "-2147467259 Unrecognized database fo";
    const std::string password = "-2147217843 Not a valid password.";
    const struct {
        const char *what;
        std::string expected;
        QByteArray content;
        QString password = u"romanqvlt"_s;
    } cases[] = {
        {"short", format, store.left(4095)},
        {"cut inside a page", format, store.left(store.size() - 1)},
        {"wide text", format, QStringEncoder(QStringEncoder::Utf16)(QString(4096, u'\u0645'))},
        {"noise", password, noise},
        {"other password", password, store, u"Romanqvlt"_s},
        {"password with more behind", password, store, u"romanqvlt;x"_s},
        {"no password", password, store, QString()},
        {"lost pages", "-2147467259 database disk image is m", store.left(store.size() - 4096)},
    };
    for (const auto &wrong : cases) {
        SCOPED_TRACE(wrong.what);
        const QString file = folder + u"/f.mdb"_s;
        writeFile(file, wrong.content);
        const ConnectionPtr other = Connection::create();
        EXPECT_EQ(outcome([&] { other->open(connectionTo(file, wrong.password)); }), wrong.expected);
        EXPECT_EQ(other->state(), stateClosed);
        EXPECT_TRUE(bytesOf(file) == wrong.content);
        EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList(u"f.mdb"_s));
    }
    const auto fails = [](const QString &file) {
        return outcome([&] { Connection::create()->open(connectionTo(file)); });
    };
    EXPECT_EQ(fails(folder), format);
    EXPECT_EQ(fails(folder + u"/none.mdb"_s), "-2147467259 Could not find file '/tm");
    EXPECT_EQ(fails(folder + u"/f.mdb/x"_s), "-2147467259 Could not find file '/tm");
    EXPECT_FALSE(QFile::exists(folder + u"/none.mdb"_s));
    EXPECT_EQ(failureOf([] { Connection::create()->open(u"Provider=x"_s); }), 3001);
}

// As after an upgrade of the library that orders the texts.
TEST_F(Files, IndexesOfAnotherOrderAreMadeAnew)
{
    const auto written = [&](int (*order)(void *, int, const void *, int, const void *),
                             const QStringList &names) {
        database::Engine &engine = connection->session().engine();
        connection->execute(u"delete from people"_s);
        sqlite3_create_collation_v2(engine.handle(), "arabic", SQLITE_UTF8, nullptr, order, nullptr);
        addPeople(names);
        engine.run("pragma user_version = 1");
        connection->close();
        connection->open(connectionTo(path));
    };
    const auto first = [&](const char *text) { return connection->session().engine().first(text); };
    const auto backwards = [](void *, int leftSize, const void *left, int rightSize, const void *right) {
        return -std::memcmp(left, right, std::size_t(std::min(leftSize, rightSize)));
    };
    written(backwards, {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s});
    EXPECT_EQ(first("pragma integrity_check"), sql::Parameter(QByteArray("ok")));
    EXPECT_EQ(rows(u"select [group] from people where name='a' or name='e'"_s), "1,5");
    EXPECT_NE(first("pragma user_version"), sql::Parameter(qint64(1)));
    const QByteArray before = bytesOf(path);
    connection->close();
    connection->open(connectionTo(path));
    EXPECT_TRUE(bytesOf(path) == before); // once is enough

    const auto byBytes = [](void *, int leftSize, const void *left, int rightSize, const void *right) {
        return QByteArrayView(static_cast<const char *>(left), leftSize)
            .compare(QByteArrayView(static_cast<const char *>(right), rightSize));
    };
    written(byBytes, {u"a"_s, u"A"_s});
    EXPECT_EQ(rows(u"select name from people"_s), "a,A"); // it opens all the same
    EXPECT_EQ(first("pragma user_version"), sql::Parameter(qint64(1)));
}

TEST_F(Files, StatesAreChecked)
{
    EXPECT_EQ(failureOf([&] { connection->open(connectionTo(path)); }), 3705);
    const RecordsetPtr set = opened(u"select id from people"_s);
    EXPECT_EQ(failureOf([&] { set->open(u"people"_s, connection); }), 3705);
    EXPECT_EQ(failureOf([&] { set->open(u"people"_s, connectionTo(path)); }), 3705);
    connection->beginTrans();
    EXPECT_EQ(failureOf([&] { connection->close(); }), 3246);
    EXPECT_EQ(connection->state(), stateOpen);
    connection->rollbackTrans();
    const RecordsetPtr copy = set->clone();
    const RecordsetPtr editing = table();
    editing->addNew();
    int told = 0;
    set->rowsChanged.connect([&] { ++told; });
    connection->close(); // drops the pending row
    EXPECT_EQ(told, 1);

    const std::vector<std::function<void()>> uses = {[&] { connection->execute(u"delete from people"_s); },
                                                     [&] { connection->beginTrans(); },
                                                     [&] { connection->schemaTables(); },
                                                     [&] { set->recordCount(); },
                                                     [&] { set->value(0); },
                                                     [&] { set->requery(); },
                                                     [&] { copy->moveNext(); },
                                                     [&] { editing->update(); }};
    for (const auto &use : uses)
        EXPECT_EQ(failureOf(use), 3704);
    EXPECT_EQ(set->state(), stateClosed);
    EXPECT_EQ(failureOf([&] { set->open(u"people"_s, connection); }), 3709);
    EXPECT_EQ(failureOf([&] { set->open(u"people"_s, ConnectionPtr()); }), 3709);

    connection->open(connectionTo(path)); // a closed object can be opened again
    set->open(u"select name from people"_s, connection);
    EXPECT_EQ(outcome([&] { connection->commitTrans(); }), "-2147168242 No transaction is active");
    EXPECT_EQ(outcome([&] { connection->rollbackTrans(); }), "-2147168242 No transaction is active");
}

TEST_F(Files, CreationNeverWritesOverAnything)
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

TEST_F(Files, CompactionKeepsRowsRulesAndCounters)
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
