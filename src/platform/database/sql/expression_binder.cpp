#include "platform/database/sql/expression_binder.h"

#include "platform/database/errors.h"
#include "platform/database/sql/conversions.h"
#include "platform/database/sql/literals.h"

#include <QtCore/QLatin1StringView>

#include <array>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sql
{

using bound::Expression;
using bound::Operator;
using Kind = bound::Expression::Kind;
using Syntax = syntax::Expression::Kind;

namespace
{

std::vector<Expression> list(Expression first)
{
    std::vector<Expression> expressions;
    expressions.push_back(std::move(first));
    return expressions;
}

std::vector<Expression> list(Expression first, Expression second)
{
    std::vector<Expression> expressions;
    expressions.reserve(2);
    expressions.push_back(std::move(first));
    expressions.push_back(std::move(second));
    return expressions;
}

bool is(QStringView name, QLatin1StringView word)
{
    return name.compare(word, Qt::CaseInsensitive) == 0;
}

RuntimeError wrongArgumentCount(const syntax::Expression &expression)
{
    return data_errors::syntax(
        u"Wrong number of arguments used with function in query expression '%1'."_s.arg(expression.source));
}

constexpr std::array dateParts = {"year"_L1, "month"_L1, "day"_L1, "hour"_L1, "minute"_L1, "second"_L1};
constexpr std::array aggregateNames = {"sum", "count", "max", "min", "avg"};
constexpr size_t maximumJoined = 100; ///< the engine takes a few more arguments

} // namespace

Expression ExpressionBinder::bind(const syntax::Expression &expression, const Scope &scope,
                                  Aggregates aggregates)
{
    switch (expression.kind) {
    case Syntax::Null:
        return literal({}, FieldType::Text);
    case Syntax::True:
        return literal(true, FieldType::Boolean);
    case Syntax::False:
        return literal(false, FieldType::Boolean);
    case Syntax::Number: {
        Value value = numberLiteral(expression.text);
        const FieldType type = value.kind() == Value::Kind::Long ? FieldType::Long : FieldType::Double;
        Expression result = literal(std::move(value), type);
        result.digits = expression.text;
        return result;
    }
    case Syntax::Text:
        return literal(textLiteral(expression.text, expression.quote), FieldType::Text);
    case Syntax::Date: {
        std::optional<QDateTime> date = dateLiteral(expression.text);
        if (!date)
            throw data_errors::syntax(
                u"Syntax error in date in query expression '%1'."_s.arg(expression.source));
        return literal(*std::move(date), FieldType::Date);
    }
    case Syntax::Column:
        return column(expression, scope);
    case Syntax::Call:
        return function(expression, scope, aggregates);
    case Syntax::Subselect:
        return subselect(expression, scope);
    case Syntax::Negate:
        return negated(bind(expression.operands[0], scope, aggregates));
    case Syntax::Not:
        return logical(Kind::Not, expression, scope, aggregates);
    case Syntax::IsNull:
        return node(Kind::IsNull, FieldType::Boolean, list(bind(expression.operands[0], scope, aggregates)));
    case Syntax::Between:
        return between(expression, scope, aggregates);
    case Syntax::Binary:
        return binary(expression, scope, aggregates);
    }
    Q_UNREACHABLE();
}

Expression ExpressionBinder::bindCondition(const syntax::Expression &expression, const Scope &scope,
                                           Aggregates aggregates)
{
    Expression result = bind(expression, scope, aggregates);
    if ((result.type == FieldType::Text && !result.isNullLiteral()) || result.type == FieldType::Date)
        throw data_errors::typeMismatch();
    return result;
}

Expression ExpressionBinder::column(const syntax::Expression &expression, const Scope &scope) const
{
    if (expression.star)
        throw data_errors::syntax(u"Syntax error in query expression '%1.*'."_s.arg(expression.qualifier));
    for (const Scope *place = &scope; place != nullptr; place = place->outer) {
        if (place->table == nullptr)
            continue;
        if (!expression.qualifier.isEmpty()) {
            const QStringView name = place->alias.isEmpty() ? QStringView(place->table->name) : place->alias;
            if (name.compare(expression.qualifier, Qt::CaseInsensitive) != 0)
                continue;
        }
        if (const CatalogColumn *found = place->table->find(expression.text)) {
            Expression result;
            result.kind = Kind::Column;
            result.type = found->type;
            result.size = found->size;
            result.source = place->source;
            result.table = place->table;
            result.column = found;
            return result;
        }
    }
    throw data_errors::unknownParameter();
}

Expression ExpressionBinder::logical(Kind kind, const syntax::Expression &expression, const Scope &scope,
                                     Aggregates aggregates)
{
    std::vector<Expression> operands;
    operands.reserve(expression.operands.size());
    for (const syntax::Expression &operand : expression.operands)
        operands.push_back(bindCondition(operand, scope, aggregates));
    return node(kind, FieldType::Boolean, std::move(operands));
}

Expression ExpressionBinder::negated(Expression operand) const
{
    if (operand.kind == Kind::Literal && !operand.digits.isEmpty()) {
        if (operand.type == FieldType::Long)
            operand.literal = -operand.literal.toInt();
        else
            operand.literal = -operand.literal.toDouble();
        return operand;
    }
    return arithmetic(Operator::Subtract, literal(0, FieldType::Long), std::move(operand));
}

Expression ExpressionBinder::binary(const syntax::Expression &expression, const Scope &scope,
                                    Aggregates aggregates)
{
    switch (expression.op) {
    case Operator::And:
        return logical(Kind::And, expression, scope, aggregates);
    case Operator::Or:
        return logical(Kind::Or, expression, scope, aggregates);
    case Operator::Join:
        return join(expression, scope, aggregates);
    default:
        break;
    }
    Expression left = bind(expression.operands[0], scope, aggregates);
    Expression right = bind(expression.operands[1], scope, aggregates);
    switch (expression.op) {
    case Operator::Add:
    case Operator::Subtract:
    case Operator::Multiply:
    case Operator::Divide:
        return arithmetic(expression.op, std::move(left), std::move(right));
    default:
        break;
    }
    alignForComparison(left, right);
    Expression result = node(Kind::Compare, FieldType::Boolean, list(std::move(left), std::move(right)));
    result.op = expression.op;
    return result;
}

Expression ExpressionBinder::join(const syntax::Expression &expression, const Scope &scope,
                                  Aggregates aggregates)
{
    std::vector<Expression> operands;
    collectJoined(expression, scope, aggregates, operands);
    return call("q_join", FieldType::Text, std::move(operands));
}

/// A chain of `&` is one call.
void ExpressionBinder::collectJoined(const syntax::Expression &expression, const Scope &scope,
                                     Aggregates aggregates, std::vector<Expression> &operands)
{
    if (expression.kind == Syntax::Binary && expression.op == Operator::Join) {
        collectJoined(expression.operands[0], scope, aggregates, operands);
        collectJoined(expression.operands[1], scope, aggregates, operands);
        return;
    }
    if (operands.size() == maximumJoined)
        throw data_errors::syntax(u"The query is too complex."_s);
    Expression operand = bind(expression, scope, aggregates);
    const bool digits = operand.type == FieldType::Long || operand.type == FieldType::Byte;
    operands.push_back(digits ? std::move(operand) : converted(std::move(operand), FieldType::Text));
}

Expression ExpressionBinder::arithmetic(Operator op, Expression left, Expression right) const
{
    if (op == Operator::Add && left.type == FieldType::Text && right.type == FieldType::Text) {
        Expression result = node(Kind::Arithmetic, FieldType::Text, list(std::move(left), std::move(right)));
        result.op = Operator::Join; // Null when either is
        return result;
    }
    for (Expression *operand : {&left, &right}) {
        if (operand->type == FieldType::Text && !operand->isNullLiteral()) {
            Expression number = literal(0.0, FieldType::Double);
            alignForComparison(*operand, number); // the same reading of a text as a number
        }
    }
    if (op == Operator::Divide)
        return call("q_divide", FieldType::Double,
                    list(converted(std::move(left), FieldType::Double),
                         converted(std::move(right), FieldType::Double)));
    FieldType type = commonType(left, right);
    if (type == FieldType::Text || type == FieldType::Date) // days of the calendar are no numbers here
        throw data_errors::typeMismatch();
    if (type == FieldType::Byte || type == FieldType::Boolean)
        type = FieldType::Long;
    const bool product = op == Operator::Multiply;
    if (product && left.type == FieldType::Money && right.type == FieldType::Money) {
        Expression doubles = node(Kind::Arithmetic, FieldType::Double,
                                  list(converted(std::move(left), FieldType::Double),
                                       converted(std::move(right), FieldType::Double)));
        doubles.op = op;
        return converted(std::move(doubles), FieldType::Money);
    }
    if (!(product && type == FieldType::Money)) { // money times a whole number counts ten-thousandths already
        left = converted(std::move(left), type);
        right = converted(std::move(right), type);
    }
    Expression result = node(Kind::Arithmetic, type, list(std::move(left), std::move(right)));
    result.op = op;
    return result;
}

Expression ExpressionBinder::between(const syntax::Expression &expression, const Scope &scope,
                                     Aggregates aggregates)
{
    std::vector<Expression> operands;
    operands.reserve(3);
    for (const syntax::Expression &operand : expression.operands)
        operands.push_back(bind(operand, scope, aggregates));
    // The value is made comparable with each bound, and once more with the first in its final type.
    alignForComparison(operands[0], operands[1]);
    alignForComparison(operands[0], operands[2]);
    alignForComparison(operands[0], operands[1]);
    return node(Kind::Between, FieldType::Boolean, std::move(operands));
}

Expression ExpressionBinder::subselect(const syntax::Expression &expression, const Scope &scope)
{
    auto select = std::make_shared<bound::Select>(m_bindSelect(*expression.select, scope));
    if (select->items.size() != 1)
        throw data_errors::syntax(
            u"You have written a subquery that can return more than one field: '%1'."_s.arg(
                expression.source));
    const Expression &item = select->items.front().expression;
    Expression result = node(Kind::Subselect, item.type, {});
    result.size = item.size;
    result.select = std::move(select);
    return result;
}

// --- functions

Expression ExpressionBinder::function(const syntax::Expression &expression, const Scope &scope,
                                      Aggregates aggregates)
{
    const QStringView name = expression.text;
    for (const char *entry : aggregateNames) {
        if (is(name, QLatin1StringView(entry)))
            return aggregate(expression, entry, scope, aggregates);
    }
    if (expression.star)
        throw wrongArgumentCount(expression);
    if (is(name, "iif"_L1))
        return iif(expression, scope, aggregates);

    std::vector<Expression> arguments;
    arguments.reserve(expression.operands.size());
    for (const syntax::Expression &operand : expression.operands)
        arguments.push_back(bind(operand, scope, aggregates));
    if (is(name, "format"_L1)) {
        if (arguments.empty() || arguments.size() > 2)
            throw wrongArgumentCount(expression);
        return format(std::move(arguments));
    }
    if (is(name, "datediff"_L1))
        return dateDifference(expression, std::move(arguments));
    for (size_t part = 0; part < dateParts.size(); ++part) {
        if (!is(name, dateParts[part]))
            continue;
        if (arguments.size() != 1)
            throw wrongArgumentCount(expression);
        return call("q_datepart", FieldType::Long,
                    list(converted(std::move(arguments[0]), FieldType::Date),
                         literal(qint32(part), FieldType::Long)));
    }
    throw data_errors::syntax(u"Undefined function '%1' in expression."_s.arg(name));
}

Expression ExpressionBinder::aggregate(const syntax::Expression &expression, const char *name,
                                       const Scope &scope, Aggregates aggregates)
{
    if (aggregates == Aggregates::Refused)
        throw data_errors::syntax(
            u"Cannot have aggregate function in expression '%1'."_s.arg(expression.source));
    const QLatin1StringView word(name);
    if (expression.star ? word != "count"_L1 : expression.operands.size() != 1)
        throw wrongArgumentCount(expression);

    Expression result = call(name, FieldType::Long, {});
    if (!expression.star) {
        Expression operand = bind(expression.operands[0], scope.alone(), Aggregates::Refused);
        const bool number = operand.type != FieldType::Text && operand.type != FieldType::Date;
        if (word == "max"_L1 || word == "min"_L1) {
            result.type = operand.type;
            result.size = operand.size;
        } else if (word != "count"_L1) {
            if (!number)
                throw data_errors::typeMismatch();
            const bool money = operand.type == FieldType::Money;
            result.type = money ? FieldType::Money : FieldType::Double;
            result.size = fixedSize(result.type);
            if (word == "avg"_L1 && money) {
                result.type = FieldType::Double;
                result.operands = list(converted(std::move(operand), FieldType::Double));
                result.aggregate = true;
                return converted(std::move(result), FieldType::Money);
            }
        }
        result.operands = list(std::move(operand));
    }
    result.aggregate = true;
    return result;
}

Expression ExpressionBinder::iif(const syntax::Expression &expression, const Scope &scope,
                                 Aggregates aggregates)
{
    if (expression.operands.size() != 3)
        throw wrongArgumentCount(expression);
    std::vector<Expression> operands;
    operands.reserve(3);
    operands.push_back(bindCondition(expression.operands[0], scope, aggregates));
    operands.push_back(bind(expression.operands[1], scope, aggregates));
    operands.push_back(bind(expression.operands[2], scope, aggregates));
    const FieldType type = commonType(operands[1], operands[2]);
    operands[1] = converted(std::move(operands[1]), type);
    operands[2] = converted(std::move(operands[2]), type);
    return node(Kind::Iif, type, std::move(operands));
}

Expression ExpressionBinder::format(std::vector<Expression> arguments) const
{
    const FieldType type = arguments[0].type;
    if (arguments.size() == 1)
        arguments.push_back(literal(QString(), FieldType::Text));
    arguments[1] = converted(std::move(arguments[1]), FieldType::Text);
    std::vector<Expression> operands = list(std::move(arguments[0]), literal(qint32(type), FieldType::Long));
    operands.push_back(std::move(arguments[1]));
    return call("q_format", FieldType::Text, std::move(operands));
}

Expression ExpressionBinder::dateDifference(const syntax::Expression &expression,
                                            std::vector<Expression> arguments) const
{
    if (arguments.size() != 3)
        throw wrongArgumentCount(expression);
    if (arguments[0].kind != Kind::Literal || !is(arguments[0].literal.toText(), "d"_L1))
        throw runtime_errors::invalidCall(); // days are the one unit of this dialect
    return call("q_days", FieldType::Long,
                list(converted(std::move(arguments[1]), FieldType::Date),
                     converted(std::move(arguments[2]), FieldType::Date)));
}

} // namespace sql
