#include "temp_store.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QStringConverter>
#include <sys/stat.h>

namespace
{

using Opening = TempStore;

QByteArray noise(int size)
{
    QRandomGenerator random(7);
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    return bytes;
}

} // namespace

TEST_F(Opening, TellsWhyAFileIsNoStoreAndLeavesItAlone)
{
    const QString folder = m_folder.filePath(u"files"_s);
    QDir().mkpath(folder);
    const QByteArray store = bytes(path);
    const std::string format = "-2147467259 Unrecognized database fo";
    const std::string password = "-2147217843 Not a valid password.";
    const struct {
        const char *what;
        std::string expected;
        QByteArray content;
        QString password = u"romanqvlt"_s;
    } cases[] = {
        {"empty", format, ""},
        {"short", format, store.left(4095)},
        {"cut inside a page", format, store.left(store.size() - 1)},
        {"plain database", format, QByteArray("SQLite format 3\0\x10\0\1\1", 20).leftJustified(8192, '\0')},
        {"text", format, QByteArray("name,amount\n").repeated(1024)},
        {"wide text", format, QStringEncoder(QStringEncoder::Utf16)(QString(4096, u'\u0645'))},
        {"noise", password, noise(8192)},
        {"other password", password, store, u"Romanqvlt"_s},
        {"password with more behind", password, store, u"romanqvlt;x"_s},
        {"no password", password, store, QString()},
        {"lost pages", "-2147467259 database disk image is m", store.left(store.size() - 4096)},
    };
    for (const auto &wrong : cases) {
        SCOPED_TRACE(wrong.what);
        const QString file = folder + u"/f.mdb"_s;
        ASSERT_TRUE(write(file, wrong.content));
        const ConnectionPtr other = Connection::create();
        EXPECT_EQ(outcome([&] { other->open(connectionTo(file, wrong.password)); }), wrong.expected);
        EXPECT_EQ(other->state(), stateClosed);
        EXPECT_TRUE(bytes(file) == wrong.content);
        EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList(u"f.mdb"_s));
    }
    const auto fails = [](const QString &file) {
        return outcome([&] { Connection::create()->open(connectionTo(file)); });
    };
    EXPECT_EQ(fails(folder), format);
    EXPECT_EQ(fails(folder + u"/none.mdb"_s), "-2147467259 Could not find file '/tm");
    EXPECT_EQ(fails(folder + u"/f.mdb/x"_s), "-2147467259 Could not find file '/tm");
    EXPECT_FALSE(QFile::exists(folder + u"/none.mdb"_s));
    EXPECT_EQ(number([] { Connection::create()->open(u"Provider=x"_s); }), 3001);
}

TEST_F(Opening, RefusesAFileThatMayNotBeWritten)
{
    chmod(m_folder.path().toUtf8().constData(), 0755);
    const int code = inChild([&] {
        if (geteuid() != 0)
            chmod(path.toUtf8().constData(), 0444);
        else if (setuid(65534) != 0)
            return 2;
        return outcome([&] { Connection::create()->open(connectionTo(path)); }) ==
                       "-2147467259 Cannot open '" + path.left(11).toStdString()
                   ? 0
                   : 1;
    });
    EXPECT_EQ(code, 0);
}

TEST_F(Opening, StatesAreChecked)
{
    EXPECT_EQ(number([&] { connection->open(connectionTo(path)); }), 3705);
    const RecordsetPtr set = opened(u"select id from people"_s);
    EXPECT_EQ(number([&] { set->open(u"people"_s, connection); }), 3705);
    EXPECT_EQ(number([&] { set->open(u"people"_s, connectionTo(path)); }), 3705);
    connection->beginTrans();
    EXPECT_EQ(number([&] { connection->close(); }), 3246);
    EXPECT_EQ(connection->state(), stateOpen);
    connection->rollbackTrans();
    const RecordsetPtr copy = set->clone();
    const RecordsetPtr editing = table();
    editing->addNew();
    int told = 0;
    set->rowsChanged.connect([&] { ++told; });
    connection->close(); // drops the pending row
    EXPECT_EQ(told, 1);

    const std::vector<std::function<void()>> uses = {
        [&] { connection->execute(u"delete from people"_s); },
        [&] { connection->beginTrans(); },
        [&] { connection->schemaTables(); },
        [&] { set->recordCount(); },
        [&] { set->eof(); },
        [&] { set->value(0); },
        [&] { set->fieldIndex(u"id"_s); },
        [&] { set->requery(); },
        [&] { set->close(); },
        [&] { copy->moveNext(); },
        [&] { editing->update(); },
        [&] { editing->cancelUpdate(); },
    };
    for (const auto &use : uses)
        EXPECT_EQ(number(use), 3704);
    EXPECT_EQ(set->state(), stateClosed);
    EXPECT_EQ(number([&] { set->open(u"people"_s, connection); }), 3709);
    EXPECT_EQ(number([&] { set->open(u"people"_s, ConnectionPtr()); }), 3709);

    connection->open(connectionTo(path)); // a closed object can be opened again
    set->open(u"select name from people"_s, connection);
    EXPECT_EQ(outcome([&] { connection->commitTrans(); }), "-2147168242 No transaction is active");
    EXPECT_EQ(outcome([&] { connection->rollbackTrans(); }), "-2147168242 No transaction is active");
}

TEST_F(Opening, SchemaListsTablesByTypeAndName)
{
    addPeople({u"a"_s});
    for (const auto *archive : {"people10", "People2", "people1"})
        connection->execute(u"select * into [%1] from people"_s.arg(QLatin1StringView(archive)));
    QStringList names;
    for (const SchemaTable &entry : connection->schemaTables())
        names << entry.tableType.left(1) + u':' + entry.tableName;
    EXPECT_EQ(names.join(u' ').toStdString(),
              "S:system_counters T:people T:people1 T:people10 T:People2 T:settings");
}
