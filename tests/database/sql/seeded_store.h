#pragma once

#include "platform/database/connection.h"

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

struct sqlite3;

/// A store file with the twelve tables and a small family's accounts, and an open connection to it.
/// - members: Dana (daughter, group 2), Badr and Carim (sons, groups 1 and 2), Amina (wife, group 1), in this
///   order, and Ehab (son, group 3), who is not valid
/// - general: 1 a revenue of 1000 on 15 March 2004; 2 an expense of 100 on 20 March 2004 at 10:30; 3 an
///   expense of 50 on 5 April 2004 that is cancelled. ledger: four rows for 1, two rows of 50 for 2.
/// - ledger1: an archive with the four rows of transaction 1
class SeededStore : public testing::Test
{
protected:
    SeededStore();

    struct Result {
        QString columns = {};     ///< `id long, name text(50)`
        QString rows = {};        ///< `1|Badr 2|Dana`; Null as `Null`, a date in its general form
        int error = 0;            ///< the number of the failure, 0 for none
        QString description = {}; ///< its words
    };
    /// Runs one statement; a SELECT by way of a record set.
    Result run(const QString &text);
    /// The same, and maybe another one, whose result counts, and rolls them back. Failures are in the result.
    Result tryOut(const QString &text, const QString &behind = {});

    sqlite3 *handle() const;

private:
    QTemporaryDir m_folder;
    ConnectionPtr m_connection;
};

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
