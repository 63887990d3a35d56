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
    /// What a statement's text has become; kept by its text until the catalogue changes.
    /// @throws RuntimeError as sql::compile()
    CompiledPtr compile(const QString &text);
    /// @throws RuntimeError as sql::compileTable()
    CompiledPtr compileTable(const QString &table);

    /// Runs a statement; rows that it gives are not read. @throws RuntimeError, and nothing of it remains
    void run(const sql::Compiled &compiled);
    /// Runs steps that take effect together or not at all: in a transaction of their own, or as a part of the
    /// one that is open. @throws RuntimeError, and nothing of them remains
    void write(const std::vector<sql::Step> &steps);
    /// The prepared form of an engine text, for reading. Valid until the next call.
    Statement &prepared(const QByteArray &text);
    /// The one level of transaction, as Connection::beginTrans() describes it, failures included.
    void begin();
    void commit();
    void rollback();
    bool inTransaction() const noexcept { return m_transaction == Transaction::Active; }

private:
    /// Where the one level of transaction stands.
    enum class Transaction {
        None,
        Active,
        CommitFailed ///< ended and rolled back; a roll-back by the owner's failure path is still due
    };
    void run(const sql::Step &step);
    void writeBetween(const char *start, const std::vector<sql::Step> &steps, const char *end);
    void writeDrawn(const std::vector<sql::Step> &steps);
    void undo() noexcept;
    /// Whether the engine has rolled back by itself, and the owner has still to end the level.
    bool isLost() const noexcept { return inTransaction() && m_engine.autocommit(); }
    void requireWritable() const;
    void readCatalog();

    Engine m_engine;
    sql::Catalog m_catalog;
    QCache<QString, CompiledPtr> m_compiled;
    QCache<QByteArray, Statement> m_prepared;
    Transaction m_transaction = Transaction::None;
    bool m_schemaChanged = false; ///< inside the open transaction
};

} // namespace database
