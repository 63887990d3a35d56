#pragma once

#include "platform/database/field.h"
#include "platform/database/sql/catalog.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <variant>
#include <vector>

/// The front end of the store's SQL dialect: text -> lexer -> parser (syntax tree) -> binder (names against
/// the catalogue, a type for each expression) -> emitter (texts of the engine with parameters for literals).
namespace sql
{

/// A parameter in the engine's own representation: null, an integer (also money as ten-thousandths, a boolean
/// as -1/0), a double, or a UTF-8 text (also a date as `YYYY-MM-DD` or `YYYY-MM-DD HH:MM:SS`).
using Parameter = std::variant<std::monostate, qint64, double, QByteArray>;

/// One text for the engine.
struct Step {
    QByteArray text; ///< UTF-8, one statement, parameters as ?1, ?2 ...
    std::vector<Parameter> parameters;
};

enum class StatementKind { Select, SelectInto, Insert, InsertSelect, Update, Delete, DropTable };

/// What a statement text has become. Plain data that can be cached by its text as long as the catalogue
/// stands.
struct Compiled {
    StatementKind kind = StatementKind::Select;
    /// In the order of running, all of them or none. A Select has exactly one. Each Insert draws its counter
    /// numbers in a step of its own before the row is written.
    std::vector<Step> steps;
    /// Select: one for each column of the result, in order.
    std::vector<FieldInfo> columns;
    /// Select: when the rows of the result are one to one with rows of a single table, that table; the
    /// engine's text then has that table's rowid as an extra last column behind `columns`. Otherwise empty,
    /// and so is the extra column.
    QString baseTable;
    /// The statement makes or drops a table: the catalogue must be read anew behind it and after a roll-back.
    bool changesSchema = false;
};

/// Compiles one statement. @throws RuntimeError with the dialect's numbers and words: -2147217900 for the
/// syntax, a second statement behind the first, expressions that go too deep; -2147217865 for an unknown
/// table and -2147217857 for one that exists; -2147217904 for an unknown column; -2147217913 for types that
/// don't go together or an unreadable literal; -2147217833 and -2147217887 for a text that is too long or
/// refused as empty; 6 for a number outside its column's range.
Compiled compile(const QString &text, const Catalog &catalog);

/// The statement that reads a whole table: all columns in the order of creation, rows in the order of
/// insertion.
Compiled compileTable(const QString &table, const Catalog &catalog);

} // namespace sql
