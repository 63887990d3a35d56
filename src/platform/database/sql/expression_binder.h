#pragma once

#include "platform/database/sql/bound.h"

#include <functional>

namespace sql
{

/// What names mean at one place of a statement: the table of the innermost FROM, and the places around it.
struct Scope {
    const CatalogTable *table = nullptr; ///< null where no column stands, as among VALUES
    QStringView alias;                   ///< replaces the table's name
    int source = 0;
    const Scope *outer = nullptr;

    /// The same without the places around it: in an aggregate, GROUP BY and ORDER BY the engine either does
    /// not look there or takes the aggregate for one of the outer statement.
    Scope alone() const { return {.table = table, .alias = alias, .source = source, .outer = nullptr}; }
};

/// Finds the names of expressions and gives each expression its type.
class ExpressionBinder
{
public:
    using SelectBinder = std::function<bound::Select(const syntax::Select &, const Scope &)>;

    /// The binder of sub-selects is called with the scope around them.
    explicit ExpressionBinder(SelectBinder bindSelect) : m_bindSelect(std::move(bindSelect)) {}

    enum class Aggregates { Refused, Allowed };

    /// @throws RuntimeError -2147217904 for an unknown column, -2147217913 for types that don't go together,
    /// -2147217900 for an unknown function or an aggregate where none may stand.
    bound::Expression bind(const syntax::Expression &expression, const Scope &scope,
                           Aggregates aggregates = Aggregates::Refused);
    /// The same for a test of rows: a boolean or a number.
    bound::Expression bindCondition(const syntax::Expression &expression, const Scope &scope,
                                    Aggregates aggregates = Aggregates::Refused);

private:
    using Expression = bound::Expression;

    Expression column(const syntax::Expression &expression, const Scope &scope) const;
    Expression logical(Expression::Kind kind, const syntax::Expression &expression, const Scope &scope,
                       Aggregates aggregates);
    Expression negated(Expression operand) const;
    Expression binary(const syntax::Expression &expression, const Scope &scope, Aggregates aggregates);
    Expression join(const syntax::Expression &expression, const Scope &scope, Aggregates aggregates);
    void collectJoined(const syntax::Expression &expression, const Scope &scope, Aggregates aggregates,
                       std::vector<Expression> &operands);
    Expression arithmetic(bound::Operator op, Expression left, Expression right) const;
    Expression between(const syntax::Expression &expression, const Scope &scope, Aggregates aggregates);
    Expression subselect(const syntax::Expression &expression, const Scope &scope);
    Expression function(const syntax::Expression &expression, const Scope &scope, Aggregates aggregates);
    Expression aggregate(const syntax::Expression &expression, const char *name, const Scope &scope,
                         Aggregates aggregates);
    Expression iif(const syntax::Expression &expression, const Scope &scope, Aggregates aggregates);
    Expression format(std::vector<Expression> arguments) const;
    Expression dateDifference(const syntax::Expression &expression, std::vector<Expression> arguments) const;

    SelectBinder m_bindSelect;
};

} // namespace sql
