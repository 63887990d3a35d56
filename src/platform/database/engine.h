#pragma once

#include "platform/database/sql/compiler.h"
#include "platform/runtime/runtime_error.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

namespace database
{

/// What the engine reports of its last failed call, in the store's own words.
RuntimeError engineError(sqlite3 *handle);

/// One prepared statement of the engine. It must end before its Engine does.
class Statement
{
public:
    /// @throws RuntimeError when the engine refuses the text.
    Statement(sqlite3 *handle, const QByteArray &text);

private:
    friend class Run;
    struct Finalize {
        void operator()(sqlite3_stmt *statement) const noexcept;
    };
    sqlite3 *m_handle;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

/// One run of a statement, from its parameters to its reset: as long as it lives it may hold a lock.
class Run
{
public:
    Run(Statement &statement, const std::vector<sql::Parameter> &parameters);
    ~Run();
    Run(const Run &) = delete;
    Run &operator=(const Run &) = delete;

    /// Goes to the next row; False behind the last one. @throws RuntimeError
    bool next();
    /// A column of the current row.
    sql::Parameter column(int index) const;
    /// A column that is an integer; nothing for other kinds.
    std::optional<qint64> integer(int index) const;
    /// A column that is a text: its UTF-8 bytes, valid until next(). Null for other kinds.
    QByteArrayView text(int index) const;

private:
    Statement &m_owner;
};

/// An open, keyed store file: owner of the engine's handle. The key is tested and the store's functions are
/// registered; journal, page size and cipher are those that every store has.
class Engine
{
public:
    /// Opens a file that is there. It is left as it was when this throws. Its text indexes are made anew when
    /// another version of the collation wrote them.
    /// @throws RuntimeError "Could not find file", "Unrecognized database format", "Not a valid password.",
    /// or the engine's own words for a file that can't be reached.
    static Engine open(const QString &path, const QString &password);
    /// Keys an empty file, which becomes a store with the first table.
    static Engine initialize(const QString &path, const QString &password);

    sqlite3 *handle() const noexcept { return m_handle.get(); }
    /// Runs one text without parameters. @throws RuntimeError
    void run(const QByteArray &text);
    /// Runs one step to its first row and drops that. @throws RuntimeError
    void run(const sql::Step &step);
    /// The first column of the first row, or nothing. @throws RuntimeError
    sql::Parameter first(const QByteArray &text, const std::vector<sql::Parameter> &parameters = {});
    /// False while a transaction of any kind is open.
    bool autocommit() const noexcept;
    /// Changes of the last writing statement.
    int changes() const noexcept;
    qint64 lastRowid() const noexcept;
    /// Attaches a second, empty file under a name, keyed and set up like every store.
    void attach(const QString &path, const QString &password, const QByteArray &name);
    /// Notes in a file that its text indexes are those of this collation.
    void stampCollation(const QByteArray &schema);

private:
    struct Close {
        void operator()(sqlite3 *handle) const noexcept;
    };
    enum class Access { Writing, Still };
    /// Still: what is beside the file is not looked at, and nothing is ever written.
    explicit Engine(const QString &path, Access access = Access::Writing);
    void key(const QString &password);
    void setUp(const QByteArray &schema);
    /// Whether the first page can be read; it is the first read, which undoes what a crash has left.
    /// @throws RuntimeError for a file that somebody keeps locked
    bool keyFits() const;
    bool keyFitsAside(const QString &password) const;
    void renewTextIndexes();

    std::unique_ptr<sqlite3, Close> m_handle;
};

} // namespace database
