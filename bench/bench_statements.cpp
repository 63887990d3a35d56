// A member's statement of 80,000 rows out of 1,000,000, row by row and by month, each beside the same work by
// the bare C API: the engine's own SQL, and every field of every row taken as text.
//
//   bench_statements [--stores FOLDER] [--benchmark_...]
//
// The generated store is kept in FOLDER, if it is given, and used again. On a machine with other work compare
// the computing time, by turns: --benchmark_repetitions=5 --benchmark_enable_random_interleaving=true

#include "bare_store.h"
#include "core/engine.h"
#include "ledger_rows.h"
#include "place.h"
#include "platform/ui/application.h"
#include "statements/statement_sql.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <benchmark/benchmark.h>
#include <sqlcipher/sqlite3.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int ledgerRows = 1'000'000;
constexpr int statementRows = 80'000; // of any side, cancelled ones among them
const QString member = u"يوسف"_s;

/// The session on the ledger, of which every 25th pair of rows is the member's.
class Ledger
{
public:
    explicit Ledger(const QString &folder)
        : m_place(folder, u"statements_%1"_s.arg(ledgerRows), ledgerMembers() + QStringList{member}),
          m_bare(engine.storeFilePath, benchPassword.toUtf8())
    {
        engine.languageSuffix = u"ar"_s;
        if (countOf(u"ledger"_s) != ledgerRows) {
            writeLedgerRows(m_bare, ledgerRows);
            m_bare.run("update ledger set name = 'يوسف', valid = -1 where id % 25 < 2");
            m_place.reopen();
        }
    }

    /// Rows that the statement gives.
    static int open(bool monthly)
    {
        const auto rows = Recordset::create();
        rows->open(statementSql(MemberStatement{u"both"_s, monthly, u"ledger"_s, member}),
                   engine.dbConnection, CursorType::Static, LockType::ReadOnly);
        return rows->recordCount();
    }

    int readBare(std::string_view sql)
    {
        sqlite3_stmt *statement = m_bare.prepared(sql);
        const int columns = sqlite3_column_count(statement);
        int rows = 0;
        for (; sqlite3_step(statement) == SQLITE_ROW; ++rows) {
            for (int column = 0; column < columns; ++column)
                benchmark::DoNotOptimize(sqlite3_column_text(statement, column));
        }
        sqlite3_reset(statement);
        return rows;
    }

private:
    Place m_place;
    BareStore m_bare;
};

std::unique_ptr<Ledger> ledger;
int months = 0; // rows of the monthly statement

constexpr std::string_view bareDetailed =
    "select id, transactionid, ddate, case when creditordebit then amount else -amount end as amount, "
    "transactiondetail, creditordebit, (select detailar from details where gtype = details.id) as gtype, "
    "paymentmethod from ledger where valid = -1 and name = 'يوسف' order by ddate, rowid";
constexpr std::string_view bareMonthly =
    "select name, creditordebit, strftime('%Y%m', ddate) as ddate, "
    "sum(case when creditordebit then amount else -amount end) as amount from ledger "
    "where valid = -1 and name = 'يوسف' "
    "group by name, strftime('%Y%m', ledger.ddate), creditordebit order by strftime('%Y%m', ledger.ddate)";

/// Repeats a work that must give so many rows each time.
template <typename Work>
void measure(benchmark::State &state, int rows, const Work &work)
{
    for ([[maybe_unused]] auto _ : state) {
        if (work() != rows)
            state.SkipWithError("another number of rows");
    }
}

void Detailed(benchmark::State &state)
{
    measure(state, statementRows, [] { return Ledger::open(false); });
}
void DetailedBare(benchmark::State &state)
{
    measure(state, statementRows, [] { return ledger->readBare(bareDetailed); });
}
void Monthly(benchmark::State &state)
{
    measure(state, months, [] { return Ledger::open(true); });
}
void MonthlyBare(benchmark::State &state)
{
    measure(state, months, [] { return ledger->readBare(bareMonthly); });
}

BENCHMARK(Detailed)->Unit(benchmark::kMillisecond);
BENCHMARK(DetailedBare)->Unit(benchmark::kMillisecond);
BENCHMARK(Monthly)->Unit(benchmark::kMillisecond);
BENCHMARK(MonthlyBare)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argc, argv);
    Application application(argc, argv);
    const SilentDialogs dialogs;
    const QTemporaryDir temporary;
    QString folder = temporary.path();
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--stores"_s) {
        folder = arguments.value(2);
        QDir().mkpath(folder);
    }
    ledger = std::make_unique<Ledger>(folder);
    months = ledger->readBare(bareMonthly);
    benchmark::RunSpecifiedBenchmarks();
    ledger.reset();
    return 0;
}
