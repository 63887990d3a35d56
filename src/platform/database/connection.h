#pragma once

#include "platform/database/field.h"

#include <QtCore/QString>

#include <functional>
#include <memory>
#include <vector>

class Recordset;
namespace database
{
class Session; // one open store file: handle, catalogue, statement cache; private to this folder
}

enum class CursorLocation { Server = 2, Client = 3 };
enum class CursorType { ForwardOnly = 0, Keyset = 1, Dynamic = 2, Static = 3 };
enum class LockType { ReadOnly = 1, Pessimistic = 2, Optimistic = 3, BatchOptimistic = 4 };
enum class CommandKind { Text, Table };

inline constexpr int stateClosed = 0;
inline constexpr int stateOpen = 1;

/// One row of the schema list.
struct SchemaTable {
    QString tableName;
    QString tableType; ///< "TABLE", or "SYSTEM TABLE" for the store's own helper tables
};

/// A connection to one store file. Create it with create(); recordsets that stand on it keep it alive.
/// Unless said otherwise every routine throws RuntimeError 3704 when the connection is closed.
class Connection : public std::enable_shared_from_this<Connection>
{
public:
    static std::shared_ptr<Connection> create();
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Opens the file that the connection string's Data Source names, with its password. Nothing is ever
    /// created, and a file that can't be opened is left as it was.
    /// @throws RuntimeError 3705 when already open; otherwise "Could not find file", "Unrecognized database
    /// format" or "Not a valid password."
    void open(const QString &connectionString);
    /// Closes the connection and every recordset on it; pending edits are dropped.
    /// @throws RuntimeError 3246 inside a transaction.
    void close();
    int state() const noexcept; ///< stateOpen or stateClosed; never throws
    bool isOpen() const noexcept { return state() == stateOpen; }
    const QString &connectionString() const noexcept; ///< of the last open(); never throws

    /// Runs one statement of the store's dialect; rows that it may give are not read. A second statement
    /// behind the first is refused and nothing is run. The statement's effect is durable when the call
    /// returns, or at commitTrans() inside a transaction; when it throws, nothing of it remains.
    void execute(const QString &sql);

    /// One level of transaction around execute() and recordset writes.
    /// @throws RuntimeError -2147168242 from commitTrans() and rollbackTrans() when none is active, 3219 from
    /// beginTrans() inside one. A store that another program has locked is told by the first statement that
    /// the lock keeps out, inside the transaction. A failed commit ends the transaction and rolls everything
    /// back before it throws; a rollbackTrans() right behind it is taken, so that one failure path serves
    /// every failure. When the engine itself has rolled back at a failure (a full disk), the level stays open
    /// for that rollbackTrans(), and every write and the commit are refused until then: no later statement of
    /// the transaction can take effect alone.
    void beginTrans();
    void commitTrans();
    void rollbackTrans();
    bool inTransaction() const noexcept;

    CursorLocation cursorLocation() const noexcept;
    void setCursorLocation(CursorLocation location) noexcept;

    /// The schema list: ordered by type, then by name; read anew at each call.
    std::vector<SchemaTable> schemaTables();

    /// The store behind an open connection, for this folder's own files.
    database::Session &session();

private:
    Connection();
    friend class Recordset;
    void attach(const std::shared_ptr<Recordset> &recordset);
    struct Private;
    std::unique_ptr<Private> d;
};

using ConnectionPtr = std::shared_ptr<Connection>;

/// Called now and then, some times a second, while one statement of any store runs: reading, sorting,
/// writing. It must not throw, use a store or serve events; null for none.
void setStatementProgress(std::function<void()> progress);
