#pragma once

#include "platform/database/connection.h"
#include "platform/database/sql/catalog.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

struct sqlite3;

/// A store file with the twelve tables and a small family's accounts, and an open connection to it.
/// - members: Dana (daughter, group 2), Badr and Carim (sons, groups 1 and 2), Amina (wife, group 1), in this
///   order, and Ehab (son, group 3), who is not valid
/// - general: 1 a revenue of 1000 on 15 March 2004; 2 an expense of 100 on 20 March 2004 at 10:30; 3 an
/// expense
///   of 50 on 5 April 2004 that is cancelled. ledger: four rows for 1, two rows of 50 (Badr, Dana) for 2.
/// - ledger1: an archive with the four rows of transaction 1
class SeededStore
{
public:
    SeededStore();

    struct Result {
        QString columns;  ///< `id long, name text(50)`
        QStringList rows; ///< `1|Badr`; Null as `Null`, a date in its general form
        int changes = 0;  ///< rows written, those of counters not counted
    };
    /// Runs one statement; a SELECT by way of a record set.
    Result run(const QString &text);
    /// The rows alone, joined by blanks.
    QString rows(const QString &text);
    /// Runs a statement and rolls it back.
    Result tryOut(const QString &text);

    const sql::Catalog &catalog() const;
    sqlite3 *handle() const;

private:
    QTemporaryDir m_folder;
    ConnectionPtr m_connection;
};

/// The number of the RuntimeError that the statement ends with, 0 for none; its words in `description`.
int errorOf(SeededStore &store, const QString &text, QString *description = nullptr);

/// The lines `text => what is expected` of a table; blank ones and those that begin with `#` are passed over.
inline std::vector<std::pair<QString, QString>> casesOf(const QString &table)
{
    std::vector<std::pair<QString, QString>> cases;
    for (const QString &line : table.split(u'\n', Qt::SkipEmptyParts)) {
        const qsizetype end = line.indexOf(u" =>");
        if (!line.startsWith(u'#'))
            cases.emplace_back(line.first(end), line.sliced(end + 3).trimmed());
    }
    return cases;
}
