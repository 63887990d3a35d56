#pragma once

#include "platform/database/engine.h"
#include "platform/database/sql/catalog.h"
#include "platform/database/sql/compiler.h"

#include <QtCore/QCache>

#include <memory>

namespace database
{

/// One open store: the engine's handle, the catalogue, what was compiled and prepared, and the state of the
/// transaction. Shared by a connection and nobody else.
class Session
{
public:
    /// @throws RuntimeError as Engine::open
    Session(const QString &path, const QString &password);
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    const sql::Catalog &catalog() const noexcept { return m_catalog; }
    Engine &engine() noexcept { return m_engine; }

    using CompiledPtr = std::shared_ptr<const sql::Compiled>;
    CompiledPtr compile(const QString &text);
    CompiledPtr compileTable(const QString &table);

    /// Runs all steps of a statement or none.
    void run(const sql::Compiled &compiled);
    /// The prepared form of an engine text. Valid until the next call.
    Statement &prepared(const QByteArray &text);
    void run(const sql::Step &step);
    sql::Parameter first(const sql::Step &step);

    /// Compares two texts by the store's collation: below, at or above 0.
    int compareTexts(const QString &left, const QString &right);

    /// Runs a piece of work whose writes take effect together or not at all: in a transaction of its own, or
    /// as a part of the one that is open. @throws what the work throws, or the failure of the commit.
    template <typename Work>
    void atomically(Work &&work)
    {
        const Mark mark = openMark();
        try {
            work();
            closeMark(mark);
        } catch (...) {
            undoMark(mark);
            throw;
        }
    }

    void begin();
    void commit();
    void rollback();
    bool inTransaction() const noexcept { return m_transaction == Transaction::Active || isLost(); }

private:
    /// Where the one level of transaction stands.
    enum class Transaction {
        None,
        Active,
        Lost,        ///< the engine has rolled back by itself; the owner has still to end the level
        CommitFailed ///< ended and rolled back; a roll-back by the owner's failure path is still due
    };
    enum class Mark { Transaction, Savepoint };
    Mark openMark();
    void closeMark(Mark mark);
    void undoMark(Mark mark) noexcept;
    bool isLost() const noexcept;
    void requireWritable();
    void readCatalog();

    Engine m_engine;
    sql::Catalog m_catalog;
    QCache<QString, CompiledPtr> m_compiled;
    QCache<QByteArray, Statement> m_prepared;
    Transaction m_transaction = Transaction::None;
    bool m_schemaChanged = false; ///< inside the open transaction
};

} // namespace database
