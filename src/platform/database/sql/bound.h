#pragma once

#include "platform/database/field.h"
#include "platform/database/sql/catalog.h"
#include "platform/database/sql/compiler.h"
#include "platform/database/sql/syntax.h"
#include "platform/runtime/value.h"

#include <memory>
#include <optional>
#include <vector>

/// A statement whose names are found and whose expressions have types: what the binder makes of a syntax tree
/// and the emitter writes down. All conversions between types are nodes or done on the literals already.
namespace sql::bound
{

using syntax::Operator;

struct Select;

struct Expression {
    enum class Kind : quint8 {
        Literal, ///< literal, of the expression's type; Null of any type
        Column,  ///< source and column
        Cast,    ///< one operand, of another type
        Arithmetic,
        Compare, ///< its result is the engine's truth, as of Between, IsNull, And, Or and Not
        And,
        Or,
        Not,
        IsNull,
        Between, ///< three operands; the bounds may be swapped
        Iif,     ///< condition and two values
        Call, ///< one of the engine's functions, aggregate or not; an aggregate without operand counts rows
        Subselect
    };
    Kind kind = Kind::Literal;
    Operator op = Operator::Or;
    bool aggregate = false;
    FieldType type = FieldType::Text;
    int size = 255; ///< as FieldInfo::definedSize
    Value literal;
    QStringView digits; ///< a number as it is written (without its sign), for an exact reading as money
    const char *function = nullptr;
    int source = 0; ///< the number of the table that a Column belongs to
    const CatalogTable *table = nullptr;
    const CatalogColumn *column = nullptr;
    std::vector<Expression> operands;
    std::shared_ptr<Select> select;

    bool isNullLiteral() const { return kind == Kind::Literal && literal.isNull(); }
    /// Its result is the engine's truth: 1 or 0, where a stored boolean is -1 or 0.
    bool isTruth() const
    {
        return kind == Kind::Compare || kind == Kind::And || kind == Kind::Or || kind == Kind::Not ||
               kind == Kind::IsNull || kind == Kind::Between;
    }
};

/// The same expression over the same columns. Sub-selects are never the same.
bool equal(const Expression &left, const Expression &right);

struct Item {
    Expression expression;
    FieldInfo info;
};

struct OrderTerm {
    int position = 0; ///< of a result column from 1; 0 for an expression
    Expression expression;
    bool descending = false;
};

struct Select {
    bool distinct = false;
    bool grouped = false; ///< has a GROUP BY or an aggregate: its rows are no rows of the table
    int source = 0;
    const CatalogTable *table = nullptr;
    std::vector<Item> items;
    std::optional<Expression> where;
    std::vector<Expression> groupBy;
    std::vector<OrderTerm> orderBy; ///< complete: with every tie-break but the order of insertion
};

struct Assignment {
    const CatalogColumn *column = nullptr;
    Expression value; ///< already of the column's type
};

struct Statement {
    StatementKind kind = StatementKind::Select;
    const CatalogTable *table = nullptr; ///< written to or dropped
    CatalogTable newTable;               ///< of a SelectInto
    std::optional<Select> select;        ///< its items match the assignments of an InsertSelect
    std::vector<Assignment> assignments; ///< of an InsertSelect without values
    std::optional<Expression> where;     ///< of an Update or Delete
};

} // namespace sql::bound
