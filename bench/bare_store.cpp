#include "bare_store.h"

#include "platform/database/sql/functions.h"

#include <sqlcipher/sqlite3.h>

#include <stdexcept>

namespace
{

void check(int code, sqlite3 *handle)
{
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(handle));
}

void bindText(sqlite3_stmt *statement, int index, const char *text)
{
    sqlite3_bind_text(statement, index, text, -1, SQLITE_STATIC);
}

} // namespace

void BareStore::Close::operator()(sqlite3 *handle) const
{
    sqlite3_close_v2(handle);
}

void BareStore::Close::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

BareStore::BareStore(const QString &path, const QByteArray &password)
{
    sqlite3 *handle = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &handle, SQLITE_OPEN_READWRITE, nullptr);
    m_handle.reset(handle);
    check(code, handle);
    check(sqlite3_key(handle, password.constData(), static_cast<int>(password.size())), handle);
    run("pragma cipher_page_size = 4096");
    run("pragma kdf_iter = 64000");
    run("pragma journal_mode = delete");
    run("pragma synchronous = extra");
    run("pragma cache_size = -65536");
    sql::registerFunctions(handle);
    run("select count(*) from sqlite_master");
}

void BareStore::run(const char *sql)
{
    check(sqlite3_exec(m_handle.get(), sql, nullptr, nullptr, nullptr), m_handle.get());
}

sqlite3_stmt *BareStore::prepared(std::string_view sql)
{
    for (const auto &[text, statement] : m_statements) {
        if (text == sql)
            return statement.get();
    }
    sqlite3_stmt *statement = nullptr;
    check(sqlite3_prepare_v2(m_handle.get(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr),
          m_handle.get());
    m_statements.emplace_back(sql, statement);
    return statement;
}

long long BareStore::runPrepared(sqlite3_stmt *statement)
{
    long long last = 0;
    int code = sqlite3_step(statement);
    for (; code == SQLITE_ROW; code = sqlite3_step(statement))
        last = sqlite3_column_int64(statement, 0);
    sqlite3_reset(statement);
    check(code, m_handle.get());
    return last;
}

void BareStore::post()
{
    constexpr std::string_view lookUp = "select id from details where detailen = 'Salary'";
    const long long number = runPrepared(prepared("select sn from settings")) + 1;
    runPrepared(prepared("update settings set sn = sn + 1"));
    const long long kind = runPrepared(prepared(lookUp));

    runPrepared(prepared("update system_counters set last = last + 1 where table_name = 'general'"));
    sqlite3_stmt *general = prepared("insert into general(id, transactionid, amount, ddate, enteredon, "
                                     "enteredby, valid, creditordebit, transactiondetail, "
                                     "paymentdetail, paymentmethod, gtype, lastupdate) values((select last "
                                     "from system_counters where table_name = "
                                     "'general'), ?1, 10000000, '2026-11-22', '2026-11-22 10:00:00', ?2, -1, "
                                     "-1, ?3, ?4, ?5, ?6, '2026-11-22 10:00:00')");
    sqlite3_bind_int64(general, 1, number);
    bindText(general, 2, "agent");
    bindText(general, 3, "Rent of the shop");
    bindText(general, 4, "by cheque 4711");
    bindText(general, 5, "cash");
    sqlite3_bind_int64(general, 6, kind);
    runPrepared(general);

    for (const char *name : {"Ahmad", "Fatima", "Maryam", "Salih"}) {
        sqlite3_stmt *relation = prepared("select relation from members where name = ?1");
        bindText(relation, 1, name);
        const long long share = 1'250'000 * runPrepared(relation);
        runPrepared(prepared(lookUp));
        runPrepared(prepared("update system_counters set last = last + 1 where table_name = 'ledger'"));
        sqlite3_stmt *ledger = prepared("insert into ledger(id, name, transactionid, creditordebit, amount, "
                                        "totalamount, ddate, enteredon, enteredby, valid, "
                                        "transactiondetail, paymentdetail, paymentmethod, gtype) "
                                        "values((select last from system_counters where table_name = "
                                        "'ledger'), ?1, ?2, -1, ?3, 10000000, '2026-11-22', '2026-11-22 "
                                        "10:00:00', ?4, -1, ?5, ?6, ?7, ?8)");
        bindText(ledger, 1, name);
        sqlite3_bind_int64(ledger, 2, number);
        sqlite3_bind_int64(ledger, 3, share);
        bindText(ledger, 4, "agent");
        bindText(ledger, 5, "Rent of the shop");
        bindText(ledger, 6, "by cheque 4711");
        bindText(ledger, 7, "cash");
        sqlite3_bind_int64(ledger, 8, kind);
        runPrepared(ledger);
    }
}
