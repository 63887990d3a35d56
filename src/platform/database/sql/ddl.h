#pragma once

#include "platform/database/sql/catalog.h"
#include "platform/database/sql/compiler.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <vector>

struct sqlite3;

/// The texts that make the store's tables, and the reading of them back. All texts are UTF-8 for the engine.
namespace sql
{

/// The store's own table of counters: `table_name` and `last`, the last number drawn.
inline constexpr char countersTable[] = "system_counters";

/// A name as the engine reads it, whatever its letters: `"na""me"`.
QByteArray quotedName(QStringView name);

enum class TableForm {
    Full, ///< with counters, defaults and refused empty texts
    Copy  ///< types and sizes alone: a counter becomes a long, no default True, no refused empty text
};

/// `create table ...`: declared types `counter`, `long`, `byte`, `money`, `boolean`, `date`, `double`,
/// `text(n)`; text columns with `collate arabic`; constraints named `<column>_size`, `<column>_empty`,
/// `<column>_range`, `<column>_boolean`. Booleans are never Null and default to False in both forms.
QByteArray createTableText(const CatalogTable &table, TableForm form = TableForm::Full);

/// One index for each column, named `<table>_<column>`; the first is unique (and takes any number of Nulls).
/// An index on a text leaves the Nulls out: so it serves comparisons alone, and another tool, which lacks the
/// collation, counts and reads the rows without it.
std::vector<QByteArray> createIndexTexts(const CatalogTable &table, const std::vector<QString> &columns);

/// Makes the table of counters.
QByteArray createCountersText();
/// Starts the counter of a new table at 0.
Step startCounterStep(const QString &table);
/// Draws the next number of a table's counter: it is `last` afterwards.
Step drawCounterStep(const QString &table);
/// Gives back the number that such a step has drawn.
Step undrawCounterStep(const Step &draw);
/// Raises a counter to the largest number that stands in its column, when that is larger.
Step raiseCounterStep(const QString &table, const QString &column);
/// Drops a counter with its table.
Step dropCounterStep(const QString &table);

/// The column that a declared type stands for. `defaultText` is the engine's text of the default (empty for
/// none), `tableText` the whole `create table`. A foreign type reads as its nearest own one.
CatalogColumn columnFromDeclaration(const QString &name, const QString &declaredType,
                                    const QString &defaultText, const QString &tableText);

/// Reads the tables and columns of an open store. Tables whose name begins with `system_` are the store's
/// own.
/// @throws RuntimeError -2147467259 when the engine can't read its schema.
Catalog readCatalog(sqlite3 *handle);

} // namespace sql
