#pragma once

#include "platform/database/sql/compiler.h"
#include "platform/runtime/value.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

struct sqlite3;

/// A store in memory that runs the dialect's statements: the twelve tables with a small family's accounts.
/// - members: Dana (daughter, group 2), Badr and Carim (sons, groups 1 and 2), Amina (wife, group 1), in this
///   order, and Ehab (son, group 3), who is not valid
/// - general: 1 a revenue of 1000 on 15 March 2004; 2 an expense of 100 on 20 March 2004 at 10:30; 3 an
/// expense
///   of 50 on 5 April 2004 that is cancelled. ledger: four rows for 1, two rows of 50 (Badr, Dana) for 2.
/// - ledger1: an archive with the four rows of transaction 1
class MemoryStore
{
public:
    MemoryStore();

    struct Result {
        QString columns;  ///< `id long, name text(50)`
        QStringList rows; ///< `1|Badr`; Null as `Null`, a date in its general form
        int changes = 0;  ///< rows written, those of counters not counted
    };
    /// Compiles and runs one statement, all its steps or none.
    Result run(const QString &text);
    /// The rows alone, joined by blanks.
    QString rows(const QString &text);
    /// Runs a statement and rolls it back.
    Result tryOut(const QString &text);

    const sql::Catalog &catalog() const { return m_catalog; }
    sqlite3 *handle() const { return m_handle.get(); }

private:
    void raw(const QByteArray &text);

    struct Close {
        void operator()(sqlite3 *handle) const;
    };
    std::unique_ptr<sqlite3, Close> m_handle;
    sql::Catalog m_catalog;
};

/// The number of the RuntimeError that the statement ends with, 0 for none; its words in `description`.
int errorOf(MemoryStore &store, const QString &text, QString *description = nullptr);
