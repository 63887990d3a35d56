#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// The same store by the engine's bare C API: what the benchmarks measure the program's own layers against.
/// It sets the same cipher, journal and cache, and registers the same collation, without which the file's
/// indexes can't be written.
class BareStore
{
public:
    BareStore(const QString &path, const QByteArray &password);

    sqlite3 *handle() const { return m_handle.get(); }
    void run(const char *sql);
    /// Prepares once and keeps the statement, as a careful user of the C API does.
    sqlite3_stmt *prepared(std::string_view sql);
    /// Runs a prepared statement to its end and resets it; the first column of the last row, or 0.
    long long runPrepared(sqlite3_stmt *statement);

    /// One posting of a revenue for four members: number, `general`, four rows of `ledger`, each with the
    /// reads that go before it. Not committed.
    void post();

private:
    struct Close {
        void operator()(sqlite3 *handle) const;
        void operator()(sqlite3_stmt *statement) const;
    };
    std::unique_ptr<sqlite3, Close> m_handle;
    std::vector<std::pair<std::string_view, std::unique_ptr<sqlite3_stmt, Close>>> m_statements;
};
