// Workloads, each beside the same work by the bare C API in the same run:
//
//   Archive         archiving 100,000 of 1,000,000 rows of audit_general and merging them back
//   Correction      correcting one transaction in a store with ten ledger tables of 10,000 rows each

#include "bare_store.h"
#include "browser/archiving.h"
#include "browser/corrections.h"
#include "core/engine.h"
#include "ledger_rows.h"
#include "place.h"
#include "store/ledger_tables.h"
#include "store/logical_tables.h"

#include <QtCore/QTemporaryDir>
#include <benchmark/benchmark.h>
#include <sqlcipher/sqlite3.h>

#include <set>
#include <string>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int auditRows = 1'000'000;
constexpr int archivedRows = 100'000; // of the fourth of ten years

/// A store with audit rows of ten years, day by day in no order.
struct Audits {
    QTemporaryDir folder;
    Place place{folder.path(), u"audits"_s, {}};
    BareStore bare{engine.storeFilePath, benchPassword.toUtf8()};

    Audits()
    {
        bare.run("begin; "
                 "with recursive n(i) as (select 1 union all select i + 1 from n where i < 1000000) "
                 "insert into audit_general select i, i, i / 3, -1, -1, i * 10000, "
                 "date('2000-01-01', (i * 7919 % 1000000 * 3650 / 1000000) || ' days'), '2026-11-22 "
                 "10:00:00', 'agent', "
                 "'Rent of the shop ' || i, 'by cheque ' || i, 'cash', 13, '2026-11-22 10:00:00', "
                 "'2026-11-22 10:00:00', 'agent', 'Modified' from n; "
                 "update system_counters set last = 1000000 where table_name = 'audit_general'; commit");
        place.reopen();
    }
};

void Archive(benchmark::State &state)
{
    const Audits store;
    for ([[maybe_unused]] auto _ : state) {
        int archived = 0;
        const bool went =
            archiveRange(u"audit_general"_s, u"31/12/2002"_s, u"30/12/2003"_s,
                         [&](const QString &archive, const QString &) { archived = countOf(archive); });
        const auto shown = Recordset::create();
        shown->open(u"select * from archives"_s, engine.dbConnection);
        if (!went || archived != archivedRows ||
            !mergeArchive(u"audit_general"_s, u"audit_general1"_s, *shown, [] {}))
            state.SkipWithError("the rows were not moved");
    }
    if (countOf(u"audit_general"_s) != auditRows)
        state.SkipWithError("the rows are not there");
}

void ArchiveBare(benchmark::State &state)
{
    Audits store;
    for ([[maybe_unused]] auto _ : state) {
        store.bare.run("begin; "
                       "create table audit_general1 as select * from audit_general "
                       "where ddate between '2002-12-31' and '2003-12-30'; "
                       "delete from audit_general where ddate between '2002-12-31' and '2003-12-30'; "
                       "insert into archives values ('audit_general', 'audit_general1', 'x'); commit; "
                       "begin; "
                       "insert into audit_general select * from audit_general1; "
                       "drop table audit_general1; "
                       "delete from archives where archive = 'audit_general1'; commit");
    }
}

/// A store whose ledger rows stand in ten tables, and the grid's rows of its transactions.
struct Ledgers {
    QTemporaryDir folder;
    Place place{folder.path(), u"ledgers"_s, ledgerMembers()};
    BareStore bare{engine.storeFilePath, benchPassword.toUtf8()};

    Ledgers()
    {
        writeLedgerRows(bare, 100'000);
        place.reopen();
        for (int archive = 1; archive < 10; ++archive) {
            const QString rows =
                u" from [ledger] where transactionid>%1 and transactionid<=%2"_s.arg(archive * 2500)
                    .arg(archive * 2500 + 2500);
            engine.dbConnection->execute(u"select * into [ledger%1]"_s.arg(archive) + rows);
            engine.dbConnection->execute(u"delete"_s + rows);
        }
    }
    static RecordsetPtr browse()
    {
        auto rows = Recordset::create();
        rows->open(getstrsql(u"general"_s, u"general"_s), engine.dbConnection, CursorType::Static,
                   LockType::Optimistic);
        return rows;
    }
};

void Correction(benchmark::State &state)
{
    const Ledgers store;
    EditedRow row{u"general"_s, u"general"_s, Ledgers::browse(), {}};
    for (int i = 0; i < row.datPrimaryRS->fieldCount(); ++i)
        row.cells.push_back({row.datPrimaryRS->field(i).name, row.datPrimaryRS->value(i).toText()});
    QString auditAction;
    int corrections = 0;
    for ([[maybe_unused]] auto _ : state) {
        for (CellText &cell : row.cells) {
            if (cell.fieldName == u"transactiondetail")
                cell.text = u"Rent of the shop %1"_s.arg(++corrections);
        }
        if (!SaveRowChanges(row, auditAction))
            state.SkipWithError("the correction failed");
    }
    if (countOf(u"audit_general"_s) != corrections)
        state.SkipWithError("audit rows are missing");
}

void CorrectionBare(benchmark::State &state)
{
    Ledgers store;
    static std::set<std::string> texts; // outlive their statements
    const int number = Ledgers::browse()->value(u"transactionid"_s).toInt();
    std::vector<sqlite3_stmt *> updates{store.bare.prepared(
        "update general set lastupdate = '2026-11-22 10:00:00' where transactionid = ?1 and ?2 is not null")};
    for (const QString &table : QStringList{u"general"_s} + ledgerTables()) {
        const QString text = u"update %1 set transactiondetail = ?2 where transactionid = ?1"_s.arg(table);
        updates.push_back(store.bare.prepared(*texts.emplace(text.toStdString()).first));
    }
    sqlite3_stmt *audit = store.bare.prepared(
        "insert into audit_general select (select last from system_counters where table_name = "
        "'audit_general'), *, '2026-11-22 10:00:00', 'agent', 'Modified' from general where transactionid = "
        "?1");
    sqlite3_bind_int64(audit, 1, number);
    const auto correct = [&] {
        store.bare.run("begin");
        store.bare.runPrepared(store.bare.prepared(
            "update system_counters set last = last + 1 where table_name = 'audit_general'"));
        store.bare.runPrepared(audit);
        for (sqlite3_stmt *update : updates) {
            sqlite3_bind_int64(update, 1, number);
            sqlite3_bind_text(update, 2, "Rent of the shop", -1, SQLITE_STATIC);
            store.bare.runPrepared(update);
        }
        store.bare.run("commit");
    };
    correct(); // with the tables in its cache, as the other side has them
    for ([[maybe_unused]] auto _ : state)
        correct();
}

BENCHMARK(Archive)->Iterations(3)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ArchiveBare)->Iterations(3)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Correction)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(CorrectionBare)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace
