// Workloads, each beside the same work by the bare C API in the same run:
//
//   Open            opening a store with its key and reading the catalogue
//   Statements      preparing and running the statements of one posting, rolled back
//   Posting         one durable posting of a revenue for four members, on a store with N rows in its ledger
//   FrontEnd        parsing, binding and emitting the longest statement of a posting, nothing cached

#include "bare_store.h"
#include "core/engine.h"
#include "entry/posting.h"
#include "place.h"
#include "platform/database/sql/compiler.h"
#include "platform/database/sql/ddl.h"
#include "platform/runtime/dates.h"

#include <QtCore/QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

const QStringList members{u"Ahmad"_s, u"Fatima"_s, u"Maryam"_s, u"Salih"_s};

/// A store of its own with a family of four and so many rows in its ledger.
class Ledger
{
public:
    explicit Ledger(int rows)
    {
        BareStore bare(engine.storeFilePath, benchPassword.toUtf8());
        bare.run("begin");
        for (int row = 0; row < rows; row += 4)
            bare.post();
        bare.run("commit");
        m_place.reopen();
    }

private:
    QTemporaryDir m_folder;
    Place m_place{m_folder.path(), u"bench"_s, members};
};

Entry entryOfBench()
{
    return {.isRevenue = true,
            .total = Money::fromUnits(1000),
            .date = makeDate(2026, 11, 22),
            .note = u"Rent of the shop"_s,
            .paymentDetail = u"by cheque 4711"_s,
            .paymentMethod = u"cash"_s,
            .kind = u"Salary"_s};
}

/// A member's share by the statement that the revenue screen asks for it.
Money shareOf(const QString &member)
{
    const auto row = Recordset::create();
    row->open(u"select [relation] from members where name='"_s + member + u" '"_s, engine.dbConnection);
    return Money::fromUnits(qint64(125) * row->value(0).toInt());
}

void Open(benchmark::State &state)
{
    const Ledger ledger(0);
    engine.dbConnection->close();
    for ([[maybe_unused]] auto _ : state) {
        engine.dbConnection->open(engine.connectionString);
        engine.dbConnection->close();
    }
}

void OpenBare(benchmark::State &state)
{
    const Ledger ledger(0);
    for ([[maybe_unused]] auto _ : state)
        BareStore store(engine.storeFilePath, benchPassword.toUtf8());
}

/// The statements of a posting without its message and without the commit.
void postStatements()
{
    const Entry entry = entryOfBench();
    const auto settings = Recordset::create();
    settings->open(u"select sn as maxid from settings"_s, engine.dbConnection, CursorType::Keyset,
                   LockType::Optimistic);
    const qint32 number = settings->value(u"maxid"_s).toInt() + 1;
    settings->close();
    engine.dbConnection->execute(u"update settings set sn=sn+1"_s);
    engine.dbConnection->execute(generalInsert(entry, number, entry.date, 13, entry.date));
    const auto ledger = Recordset::create();
    ledger->open(u"ledger"_s, engine.dbConnection, CursorType::Keyset, LockType::Optimistic,
                 CommandKind::Table);
    for (const QString &member : members)
        appendLedgerRow(*ledger, entry, number, member, shareOf(member));
    ledger->close();
}

void Statements(benchmark::State &state)
{
    const Ledger ledger(0);
    for ([[maybe_unused]] auto _ : state) {
        engine.dbConnection->beginTrans();
        postStatements();
        engine.dbConnection->rollbackTrans();
    }
    if (countOf(u"ledger"_s) != 0)
        state.SkipWithError("rows were left behind");
}

void StatementsBare(benchmark::State &state)
{
    const Ledger ledger(0);
    BareStore store(engine.storeFilePath, benchPassword.toUtf8());
    for ([[maybe_unused]] auto _ : state) {
        store.run("begin");
        store.post();
        store.run("rollback");
    }
}

void Posting(benchmark::State &state)
{
    const int before = static_cast<int>(state.range(0));
    const Ledger ledger(before);
    int postings = 0;
    for ([[maybe_unused]] auto _ : state) {
        postRevenue(entryOfBench(), u"1000"_s, members, shareOf);
        ++postings;
    }
    if (countOf(u"ledger"_s) != before + 4 * postings || countOf(u"general"_s) != before / 4 + postings)
        state.SkipWithError("the rows are not there");
}

void PostingBare(benchmark::State &state)
{
    const Ledger ledger(static_cast<int>(state.range(0)));
    BareStore store(engine.storeFilePath, benchPassword.toUtf8());
    for ([[maybe_unused]] auto _ : state) {
        store.run("begin");
        store.post();
        store.run("commit");
    }
}

void FrontEnd(benchmark::State &state)
{
    const Ledger ledger(0);
    BareStore store(engine.storeFilePath, benchPassword.toUtf8());
    const sql::Catalog catalog = sql::readCatalog(store.handle());
    const QString text =
        generalInsert(entryOfBench(), 4711, makeDate(2026, 11, 22, 10), 13, makeDate(2026, 11, 22, 10));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(sql::compile(text, catalog));
    state.SetLabel(std::to_string(text.size()) + " characters");
}

BENCHMARK(Open)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenBare)->Unit(benchmark::kMillisecond);
BENCHMARK(Statements)->Unit(benchmark::kMicrosecond);
BENCHMARK(StatementsBare)->Unit(benchmark::kMicrosecond);
BENCHMARK(Posting)->Arg(0)->Arg(100'000)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(PostingBare)->Arg(0)->Arg(100'000)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(FrontEnd)->Unit(benchmark::kMicrosecond);

} // namespace
