#include "browser/archiving.h"
#include "journal_fixture.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <map>
#include <random>
#include <unistd.h>

// The process is killed at random moments of its writes; the store is whole whenever it is opened again.

namespace
{

enum Work : char { Correction, Cancel, Archiving, Merge, WorkCount };

class Kills : public JournalFixture
{
protected:
    static constexpr int transactions = 20;
    static constexpr int oldAudits = 512;

    Kills()
    {
        for (int number = 1; number <= transactions; ++number)
            post(number, u"2004/01/%1"_s.arg(number));
        move(u"ledger"_s, u"ledger1"_s, u"transactionid<10"_s);
        // A correction counts the note up, so that every row tells how far it came.
        for (const char *table : {"general", "ledger", "ledger1"})
            execute({u"update %1 set transactiondetail='0'"_s.arg(QLatin1StringView(table))});
        execute({u"insert into audit_general (ddate,updatetype) values('2004/01/10','old')"_s});
        for (int rows = 1; rows < oldAudits; rows *= 2)
            execute(
                {u"insert into audit_general (ddate,updatetype) select ddate,updatetype from audit_general"_s});
    }

    static QStringList archives()
    {
        return journalTables().filter(QRegularExpression(u"^audit_general\\d"_s));
    }
    int pick(int count) { return int(random() % quint32(count)); }
    QString someDay() { return u"2004/01/%1"_s.arg(1 + pick(transactions)); }

    /// What of the work can be done now.
    Work possible(Work wanted) const
    {
        if (wanted == Merge && archives().isEmpty())
            return Archiving;
        return wanted == Archiving && archives().size() > 3 ? Merge : wanted;
    }
    bool work(Work kind)
    {
        const int number = 1 + pick(transactions);
        switch (kind) {
        case Correction: {
            const QString before =
                openRows(u"select transactiondetail from general where transactionid=%1"_s.arg(number))
                    ->value(0)
                    .toText();
            return correct(number, {{u"transactiondetail"_s, QString::number(before.toInt() + 1)}});
        }
        case Cancel:
            cancelTransaction(u"general"_s, u"general"_s, number, auditAction);
            return true;
        case Archiving:
            return archiveRange(u"audit_general"_s, someDay(), someDay(),
                                [](const QString &, const QString &) {});
        default: {
            const QString archive = archives().at(pick(int(archives().size())));
            return mergeArchive(u"audit_general"_s, archive, *openRows(u"select * from "_s + archive), [] {});
        }
        }
    }

    /// A child goes on with the connection that its parent has opened and uses no more, since the key takes
    /// longer than all the rest; only now and then with one of its own. What the one before has left is
    /// undone in either.
    void takeOver() const
    {
        if (children % 16 == 0) {
            engine.dbConnection->close();
            engine.dbConnection->open(engine.connectionString);
        } else {
            engine.dbConnection->beginTrans(); // its tables are read anew behind a roll-back
            execute({u"select * into [scratch] from archives"_s});
            engine.dbConnection->rollbackTrans();
        }
    }
    /// Looks at what the one before has left, then works until it is killed, telling through the pipe what it
    /// is at. Begins with the wanted work.
    [[noreturn]] void workForever(Work wanted, int pipe)
    {
        takeOver();
        expectWhole();
        bool well = !HasFailure();
        while (well && possible(wanted) != wanted)
            well = work(possible(wanted));
        for (; well; wanted = Work(pick(WorkCount))) {
            const Work kind = possible(wanted);
            well = write(pipe, &kind, 1) == 1 && work(kind);
        }
        _exit(1);
    }
    /// Kills a process some microseconds after its work began. Returns what it was at.
    Work killAt(Work wanted, unsigned microseconds)
    {
        random.seed(quint32(++children));
        int ends[2] = {};
        EXPECT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0)
            workForever(wanted, ends[1]);
        close(ends[1]);
        Work last = WorkCount;
        EXPECT_EQ(read(ends[0], &last, 1), 1);
        usleep(microseconds);
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        while (read(ends[0], &last, 1) == 1)
            ;
        close(ends[0]);
        journals += QFileInfo(engine.storeFilePath + u"-journal"_s).size() > 0 ? 1 : 0;
        return last;
    }

    void expectWhole() const
    {
        std::map<int, QStringList> modified; // notes before a correction, by transaction
        std::map<int, int> deleted;
        QSet<int> keys;
        int old = 0;
        int count = 0;
        for (const QString &table : archives() + QStringList{u"audit_general"_s}) {
            const auto set =
                openRows(u"select idkey,transactionid,transactiondetail,updatetype from "_s + table);
            for (; !set->eof(); set->moveNext(), ++count) {
                keys << set->value(0).toInt();
                const QString type = set->value(3).toText();
                if (type == u"old")
                    ++old;
                else if (type == u"Deleted")
                    ++deleted[set->value(1).toInt()];
                else
                    modified[set->value(1).toInt()] << set->value(2).toText();
            }
        }
        EXPECT_EQ(keys.size(), count) << "an audit row stands twice";
        EXPECT_EQ(old, oldAudits);
        QStringList entries;
        for (const auto set = openRows(u"select archive from archives order by archive"_s); !set->eof();
             set->moveNext())
            entries << set->value(0).toText();
        EXPECT_EQ(entries, archives());

        std::map<int, std::pair<QString, bool>> general;
        const auto set = openRows(u"select transactionid,transactiondetail,valid from general"_s);
        for (; !set->eof(); set->moveNext()) {
            const int number = set->value(0).toInt();
            const QString note = set->value(1).toText();
            general[number] = {note, set->value(2).toBool()};
            QStringList notes;
            for (int earlier = 0; earlier < note.toInt(); ++earlier)
                notes << QString::number(earlier);
            notes.sort();
            modified[number].sort();
            EXPECT_EQ(modified[number], notes) << "audit rows of " << number;
            // A cancel may stop between its statements, in their order.
            EXPECT_TRUE(set->value(2).toBool() || deleted[number] > 0);
        }
        EXPECT_EQ(general.size(), std::size_t(transactions));
        int shares = 0;
        for (const char *table : {"ledger", "ledger1"}) {
            const auto ledger = openRows(
                u"select transactionid,transactiondetail,valid from %1"_s.arg(QLatin1StringView(table)));
            for (; !ledger->eof(); ledger->moveNext(), ++shares) {
                const auto &[note, valid] = general[ledger->value(0).toInt()];
                EXPECT_EQ(ledger->value(1).toText(), note);
                EXPECT_TRUE(ledger->value(2).toBool() || !valid);
            }
        }
        EXPECT_EQ(shares, 2 * transactions);
    }

    std::mt19937 random;
    int children = 0;
    int journals = 0; ///< kills that left a transaction to undo
};

} // namespace

TEST_F(Kills, AProcessKilledAtAnyMomentLeavesNoHalfTransaction)
{
    std::map<Work, unsigned> longest; // microseconds
    for (int round = 0; round < 3; ++round) {
        for (const Work kind : {Correction, Cancel, Archiving, Merge}) {
            QElapsedTimer timer;
            timer.start();
            ASSERT_TRUE(work(kind));
            longest[kind] = std::max(longest[kind], unsigned(timer.nsecsElapsed() / 1000));
        }
    }
    std::mt19937 moments(1);
    std::map<Work, int> kills;
    for (const auto &[kind, count] :
         {std::pair(Correction, 100), {Cancel, 20}, {Archiving, 100}, {Merge, 100}}) {
        while (kills[kind] < count && children < 600 && !HasFailure())
            ++kills[killAt(kind, moments() % (longest[kind] + 1))];
        EXPECT_GE(kills[kind], count);
        RecordProperty("kills_" + std::to_string(kind), kills[kind]);
    }
    EXPECT_GT(journals, 50);
    RecordProperty("journals", journals);
    engine.dbConnection->close();
    engine.dbConnection->open(engine.connectionString);
    expectWhole();
}
