// Workloads, each made-up transaction for a family of eight, in revenues and expenses:
//
//   Run      a run of so many transactions on its screen, which is shown and serves events in every step
//   RunBare  the same rows and numbers by the bare C API: prepared statements and one commit for fifty
//            transactions, as the run commits
//
// The label of Run tells the longest time in which the screen's events had to wait.

#include "bare_store.h"
#include "core/engine.h"
#include "place.h"
#include "platform/ui/process.h"
#include "tutorial/frmGenerateData.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <benchmark/benchmark.h>
#include <sqlcipher/sqlite3.h>

#include <random>

using namespace Qt::Literals::StringLiterals;

namespace
{

const QStringList family{u"Ahmad"_s,  u"Fatima"_s, u"Khalid"_s, u"Layla"_s,
                         u"Maryam"_s, u"Omar"_s,   u"Salih"_s,  u"Zaynab"_s};

/// A test store with a family of two wives, three sons and three daughters.
class TestStore
{
public:
    TestStore()
    {
        engine.testStorePath = engine.storeFilePath;
        engine.testConnectionString = engine.connectionString;
        engine.dbConnection->execute(u"update members set relation=1 where name='Fatima' or name='Layla'"_s);
        engine.dbConnection->execute(u"update members set relation=3 where name>='M' and name<>'Salih'"_s);
    }

private:
    QTemporaryDir m_folder;
    Place m_place{m_folder.path(), u"testdb"_s, family};
};

/// Notes the longest wait of an event that comes as often as it can.
class Heartbeat : public QTimer
{
public:
    Heartbeat()
    {
        connect(this, &QTimer::timeout, this, [this] {
            m_longest = qMax(m_longest, m_since.nsecsElapsed());
            m_since.start();
        });
    }
    void beat()
    {
        m_since.start();
        start(0);
    }
    double longestMilliseconds() const { return double(m_longest) / 1e6; }

private:
    QElapsedTimer m_since;
    qint64 m_longest = 0;
};

void Run(benchmark::State &state)
{
    const TestStore store;
    const bool expense = state.range(1) != 0;
    setEndsWithLastScreen(false);
    frmGenerateData screen;
    screen.showModeless();
    screen.findChild<QLineEdit *>(u"Text1"_s)->setText(QString::number(state.range(0)));
    screen.findChild<QRadioButton *>(expense ? u"Option1_1"_s : u"Option1_0"_s)->click();
    Heartbeat heart;
    qint64 runs = 0;
    for ([[maybe_unused]] auto _ : state) {
        heart.beat();
        screen.findChild<QPushButton *>(u"cmdStart"_s)->click();
        heart.stop();
        ++runs;
    }
    if (countOf(u"general"_s) != runs * state.range(0))
        state.SkipWithError("the rows are not there");
    state.SetLabel("longest wait " + std::to_string(heart.longestMilliseconds()) + " ms");
    screen.unload();
}

class BareGenerator
{
public:
    explicit BareGenerator(bool expense) : m_expense(expense) {}

    void make()
    {
        const qint64 amount = std::uniform_int_distribution<qint64>(200, 200'199)(m_random) * 10'000;
        const qint64 day = std::uniform_int_distribution<qint64>(1, 5000)(m_random);
        const qint64 parts = m_expense ? std::uniform_int_distribution<qint64>(1, 8)(m_random) : 8;
        if (m_number % 50 == 0)
            m_store.run("begin");
        ++m_number;
        insert("general",
               "insert into general(id, transactionid, valid, creditordebit, amount, ddate, enteredon, "
               "enteredby, transactiondetail, paymentdetail, paymentmethod, gtype, lastupdate) "
               "values((select last from system_counters where table_name = 'general'), ?1, -1, ?2, ?3, "
               "date('1995-01-31', ?5 || ' days'), '2026-11-22', 'SYSTEM', 'Sale of building', "
               "'Agreed to wait on payment', 'Cash', 5, '2026-11-22')",
               amount, day, {});
        for (qint64 part = 0; part < parts; ++part) {
            insert("ledger",
                   "insert into ledger(id, transactionid, valid, creditordebit, amount, totalamount, ddate, "
                   "enteredon, enteredby, transactiondetail, paymentdetail, paymentmethod, gtype, name) "
                   "values((select last from system_counters where table_name = 'ledger'), ?1, -1, ?2, "
                   "?3 / 8, ?3, date('1995-01-31', ?5 || ' days'), '2026-11-22', 'system', "
                   "'Sale of building', 'Agreed to wait on payment', 'Cash', 5, ?4)",
                   amount, day, family[part].toUtf8());
        }
        if (m_number % 50 != 0)
            return;
        sqlite3_stmt *settings = m_store.prepared("update settings set sn = ?1");
        sqlite3_bind_int64(settings, 1, m_number);
        m_store.runPrepared(settings);
        m_store.run("commit");
    }

private:
    void insert(const char *table, const char *text, qint64 amount, qint64 day, const QByteArray &name)
    {
        sqlite3_stmt *counter =
            m_store.prepared("update system_counters set last = last + 1 where table_name = ?1");
        sqlite3_bind_text(counter, 1, table, -1, SQLITE_STATIC);
        m_store.runPrepared(counter);
        sqlite3_stmt *row = m_store.prepared(text);
        sqlite3_bind_int64(row, 1, m_number);
        sqlite3_bind_int(row, 2, m_expense ? 0 : -1);
        sqlite3_bind_int64(row, 3, amount);
        if (!name.isEmpty())
            sqlite3_bind_text(row, 4, name.constData(), -1, SQLITE_STATIC);
        sqlite3_bind_int64(row, 5, day);
        m_store.runPrepared(row);
    }

    BareStore m_store{engine.storeFilePath, benchPassword.toUtf8()};
    std::mt19937_64 m_random{42};
    bool m_expense;
    qint64 m_number = 0;
};

void RunBare(benchmark::State &state)
{
    const TestStore store;
    BareGenerator bare(state.range(1) != 0);
    qint64 runs = 0;
    for ([[maybe_unused]] auto _ : state) {
        for (qint64 n = 0; n < state.range(0); ++n)
            bare.make();
        ++runs;
    }
    if (countOf(u"general"_s) != runs * state.range(0))
        state.SkipWithError("the rows are not there");
}

void lengths(benchmark::internal::Benchmark *workload)
{
    workload->ArgNames({"transactions", "expense"})
        ->ArgsProduct({{1000}, {0, 1}})
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

BENCHMARK(Run)->Apply(lengths);
BENCHMARK(RunBare)->Apply(lengths);

} // namespace
