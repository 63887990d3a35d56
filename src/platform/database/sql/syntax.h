#pragma once

#include <QtCore/QStringView>

#include <memory>
#include <optional>
#include <variant>
#include <vector>

/// The syntax tree of one statement: pure data, nothing looked up in a schema. Its views stand on the
/// statement's text, which must outlive it.
namespace sql::syntax
{

enum class Operator : quint8 {
    Or,
    And,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Join, ///< `&`
    Add,
    Subtract,
    Multiply,
    Divide
};

struct Select;

struct Expression {
    enum class Kind : quint8 {
        Null,
        True,
        False,
        Number,    ///< text
        Text,      ///< text as it stands between the quotes, and the quote
        Date,      ///< text as it stands between the signs
        Column,    ///< text and qualifier
        Call,      ///< text is the function's name, operands its arguments; or star
        Subselect, ///< select
        Negate,    ///< one operand, as in Not and IsNull
        Not,
        IsNull,
        Between, ///< three operands
        Binary   ///< op and two operands
    };
    Kind kind = Kind::Null;
    Operator op = Operator::Or;
    bool star = false;
    char16_t quote = 0;
    int height = 1; ///< of the tree below; the parser keeps it within bounds
    QStringView text;
    QStringView qualifier;
    QStringView source; ///< the expression as it is written
    std::vector<Expression> operands;
    std::shared_ptr<Select> select;
};

struct SelectItem {
    bool star = false; ///< `*` or `name.*`; without an expression
    QStringView starQualifier;
    Expression expression;
    QStringView alias;
};

struct OrderTerm {
    Expression expression;
    bool descending = false;
};

struct TableName {
    QStringView name;
    QStringView alias;
};

struct Select {
    bool distinct = false;
    std::vector<SelectItem> items;
    QStringView into; ///< the table to make; empty for none
    TableName from;
    std::optional<Expression> where;
    std::vector<Expression> groupBy;
    std::vector<OrderTerm> orderBy;
};

struct Insert {
    QStringView table;
    std::vector<QStringView> columns; ///< empty when none are named
    std::vector<Expression> values;   ///< empty when the rows come from the select
    std::shared_ptr<Select> select;
};

struct Assignment {
    QStringView column;
    Expression value;
};

struct Update {
    QStringView table;
    std::vector<Assignment> assignments;
    std::optional<Expression> where;
};

struct Delete {
    QStringView table;
    std::optional<Expression> where;
};

struct DropTable {
    QStringView table;
};

using Statement = std::variant<Select, Insert, Update, Delete, DropTable>;

} // namespace sql::syntax
