#include "database/temp_store.h"
#include "platform/database/session.h"

#include <csignal>

// What a transaction keeps, and what is left when it, the disk or the process ends early.

namespace
{

class Transactions : public TempStore
{
protected:
    // Rows enough to make the file grow.
    static void addMany(Connection &connection, int count)
    {
        for (int row = 0; row < count; ++row)
            connection.execute(
                u"insert into people (name,note) values('n%1','%2')"_s.arg(row).arg(QString(100, u'x')));
    }
    std::string tables() const
    {
        QStringList names;
        for (const SchemaTable &entry : connection->schemaTables())
            names << entry.tableName;
        return names.join(u' ').toStdString();
    }
};

// Every later write of this process fails that would make a file longer than `path` is.
void fillDisk(const QString &path)
{
    std::signal(SIGXFSZ, SIG_IGN);
    limitFileSize(rlim_t(QFileInfo(path).size()));
}

} // namespace

TEST_F(Transactions, AStatementTakesEffectWholeOrNotAtAll)
{
    addPeople({u"a"_s, u"b"_s});
    connection->execute(u"select * into [copy] from people"_s);
    connection->execute(u"update people set name='c' where name='a'"_s);
    const struct {
        QString statement;
        std::string expected;
    } cases[] = {
        {u"insert into people select * from [copy]"_s, "-2147467259 The changes you requeste"},
        {u"update people set name='x'"_s, "-2147467259 The changes you requeste"},
        {u"insert into people (name) values('B  ')"_s, "-2147467259 The changes you requeste"},
        {u"insert into people (name) values('12345678901')"_s, "-2147217833 The field is too small t"},
        {u"update people set note=note & note & name & '%1'"_s.arg(QString(100, u'x')),
         "-2147217833 The field is too small t"},
        {u"insert into people (name) values('')"_s, "-2147217887 Field 'name' cannot be a"},
        {u"update people set rank=[group]*200"_s, "6 Overflow"},
        {u"insert into nobody (name) values('a')"_s, "-2147217865 The database engine cann"},
        {u"update people set nobody=1"_s, "-2147217904 No value given for one o"},
        {u"select * into [people] from settings"_s, "-2147217857 Table 'people' already e"},
        {u"insert into people (name) values('d');delete from people"_s,
         "-2147217900 Characters found after e"},
    };
    for (const bool inside : {false, true}) {
        for (const auto &[statement, expected] : cases) {
            if (inside)
                connection->beginTrans();
            EXPECT_EQ(outcome([&, statement = statement] { connection->execute(statement); }), expected)
                << statement.toStdString();
            if (inside)
                connection->commitTrans();
        }
        EXPECT_EQ(rows(u"select id,name,note,rank from people"_s), "1 c null null,2 b null null");
    }
    connection->execute(u"update people set rank=1 where name='nobody'"_s); // no row is no failure
}

TEST_F(Transactions, ARollBackUndoesRowsAndTables)
{
    addPeople({u"a"_s});
    const RecordsetPtr held = table(); // an open set stands in nobody's way
    connection->beginTrans();
    EXPECT_TRUE(connection->inTransaction());
    EXPECT_EQ(failureOf([&] { connection->beginTrans(); }), 3219);
    connection->execute(u"select * into [people1] from people"_s);
    connection->execute(u"delete from people"_s);
    connection->execute(u"drop table [settings]"_s);
    const RecordsetPtr set = table(u"people1"_s);
    set->setValue(u"note"_s, u"x"_s);
    set->update();
    EXPECT_EQ(outcome([&] { table(u"settings"_s); }), "-2147217865 The database engine cann");
    EXPECT_EQ(outcome([&] { connection->execute(u"insert into people1 (name) values('12345678901')"_s); }),
              "-2147217833 The field is too small t");
    EXPECT_EQ(tables(), "system_counters people people1"); // a failure keeps what went before
    EXPECT_EQ(rows(u"select name from people"_s), "a");    // as others see it
    connection->rollbackTrans();
    EXPECT_EQ(tables(), "system_counters people settings");
    EXPECT_EQ(rows(u"select name,note from people"_s), "a null");
    EXPECT_EQ(outcome([&] { table(u"people1"_s); }), "-2147217865 The database engine cann");
    EXPECT_EQ(table(u"settings"_s)->recordCount(), 0);
}

TEST_F(Transactions, AKilledProcessLeavesNothing)
{
    addPeople({u"a"_s});
    connection->close();
    const QByteArray before = bytesOf(path);
    const QString link = m_folder.filePath(u"link.mdb"_s); // the journal stands beside the file itself
    QFile::link(path, link);
    enum { InMemory, Spilled, Committing }; // how much of the transaction has reached the file
    for (const auto state : {InMemory, Spilled, Committing}) {
        const int code = inChild([&] {
            const ConnectionPtr own = Connection::create();
            own->open(connectionTo(path));
            if (state == Spilled)
                own->session().engine().run("pragma cache_size = 5");
            own->beginTrans();
            own->execute(u"update people set name='z'"_s);
            addMany(*own, 300);
            if (state == Committing) {
                fillDisk(path);
                std::signal(SIGXFSZ, [](int) { kill(getpid(), SIGKILL); });
                own->commitTrans();
            }
            return kill(getpid(), SIGKILL);
        });
        ASSERT_EQ(code, -SIGKILL);
        QByteArray left = bytesOf(path);
        EXPECT_EQ(left == before, state == InMemory);
        if (state == Committing) { // as when the power fails inside the first page
            left.replace(2048, 2048, before.mid(2048, 2048));
            writeFile(path, left);
        }
        const QString journalPath = path + u"-journal"_s;
        const QByteArray journal = bytesOf(journalPath);
        for (const QString &name : {path, link})
            EXPECT_EQ(outcome([&] { connection->open(connectionTo(name, u"no"_s)); }),
                      "-2147217843 Not a valid password.");
        EXPECT_TRUE(bytesOf(path) == left && bytesOf(journalPath) == journal);
        EXPECT_EQ(rows(u"select name from people"_s), "a");
        EXPECT_EQ(bytesOf(path).size(), before.size());
        EXPECT_EQ(QFileInfo(journalPath).size() == 0,
                  state != InMemory); // what is not hot stays, of no effect
    }
}

TEST_F(Transactions, AFullDiskLeavesNothing)
{
    addPeople({u"a"_s});
    connection->close();
    const std::string failure = "-2147467259 disk I/O error";
    const auto child = [&](const std::function<bool(Connection &)> &work) {
        return inChild([&] {
            const ConnectionPtr own = Connection::create();
            own->open(connectionTo(path));
            fillDisk(path);
            return work(*own) && !own->inTransaction() ? 0 : 1;
        });
    };
    // at the commit: it has rolled back, and the caller's own roll-back is taken
    EXPECT_EQ(child([&](Connection &own) {
                  own.beginTrans();
                  addMany(own, 100);
                  const bool failed = outcome([&] { own.commitTrans(); }) == failure && !own.inTransaction();
                  own.rollbackTrans();
                  return failed && outcome([&] { own.rollbackTrans(); }).substr(0, 11) == "-2147168242";
              }),
              0);
    // inside a statement: nothing more is taken until the roll-back, so that nothing takes effect alone
    EXPECT_EQ(child([&](Connection &own) {
                  own.session().engine().run("pragma cache_size = 5");
                  own.beginTrans();
                  const bool failed = outcome([&] { addMany(own, 1000); }) == failure;
                  const auto refused = [](const std::string &text) {
                      return text == "-2147467259 The transaction has been";
                  };
                  const auto small = [&] { own.execute(u"update people set name='q'"_s); };
                  const bool kept = refused(outcome(small)) && refused(outcome([&] { own.commitTrans(); }));
                  own.rollbackTrans();
                  return failed && kept;
              }),
              0);
    // outside a transaction
    EXPECT_EQ(child([&](Connection &own) {
                  const RecordsetPtr set = Recordset::create();
                  set->open(u"people"_s, own.shared_from_this(), CursorType::Keyset, LockType::Optimistic,
                            CommandKind::Table);
                  const std::string result = outcome([&] {
                      for (int row = 0; row < 1000; ++row)
                          addRow(*set, u"r%1"_s.arg(row));
                  });
                  const std::string left = rows(u"select count(name) as n from people"_s);
                  return result == failure && set->editMode() == EditMode::Add &&
                         left == std::to_string(set->recordCount());
              }),
              0);
    EXPECT_EQ(rows(u"select name,note from people where name='a' or name='q' or name='n0'"_s), "a null");
}
