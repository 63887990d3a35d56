#include "platform/database/sql/conversions.h"

#include "platform/database/errors.h"
#include "platform/database/sql/storage.h"
#include "platform/runtime/numbers.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sql
{

using bound::Expression;
using Kind = bound::Expression::Kind;

namespace
{

bool isNumeric(FieldType type)
{
    return type != FieldType::Text && type != FieldType::Date && type != FieldType::Boolean;
}

/// @throws RuntimeError as fieldValue().
Value literalAs(const Expression &expression, FieldType type)
{
    if (type != FieldType::Money || expression.digits.isEmpty())
        return fieldValue(expression.literal, type);
    // As it is written, not by way of a double: 0.00005 is a half exactly.
    const Money amount = readMoney(expression.digits.toString());
    return expression.literal.toDouble() < 0 ? -amount : amount;
}

Expression retyped(Expression expression, Value value, FieldType type)
{
    expression.literal = std::move(value);
    expression.type = type;
    expression.size = type == FieldType::Text ? 255 : fixedSize(type);
    return expression;
}

void alignText(Expression &text, Expression &other)
{
    if (text.kind == Kind::Literal) {
        const bool whole = other.type == FieldType::Long || other.type == FieldType::Byte;
        text = converted(std::move(text), whole ? FieldType::Double : other.type);
    } else if (text.kind == Kind::Column) {
        throw data_errors::typeMismatch();
    } else if (isNumeric(other.type)) {
        std::vector<Expression> operands;
        operands.push_back(std::move(text));
        text = call("q_number", FieldType::Double, std::move(operands));
        other = converted(std::move(other), FieldType::Double);
    } else {
        text = converted(std::move(text), other.type);
    }
}

void alignMoney(Expression &money, Expression &other)
{
    try {
        other = converted(other, FieldType::Money);
    } catch (const RuntimeError &) { // a number beyond all money still compares with it
        other = converted(std::move(other), FieldType::Double);
        money = converted(std::move(money), FieldType::Double);
    }
}

} // namespace

int fixedSize(FieldType type)
{
    switch (type) {
    case FieldType::Long:
        return 4;
    case FieldType::Byte:
        return 1;
    case FieldType::Boolean:
        return 2;
    default:
        return 8;
    }
}

Expression node(Kind kind, FieldType type, std::vector<Expression> operands)
{
    Expression result;
    result.kind = kind;
    result.type = type;
    if (type != FieldType::Text)
        result.size = fixedSize(type);
    result.operands = std::move(operands);
    return result;
}

Expression literal(Value value, FieldType type)
{
    Expression result = node(Kind::Literal, type, {});
    result.literal = std::move(value);
    return result;
}

Expression call(const char *function, FieldType type, std::vector<Expression> operands)
{
    Expression result = node(Kind::Call, type, std::move(operands));
    result.function = function;
    return result;
}

Expression converted(Expression expression, FieldType type)
{
    if (expression.type == type)
        return expression;
    if (expression.kind == Kind::Literal) {
        try {
            Value value = literalAs(expression, type);
            return retyped(std::move(expression), std::move(value), type);
        } catch (const RuntimeError &) {
            throw data_errors::typeMismatch();
        }
    }
    std::vector<Expression> operands;
    operands.push_back(std::move(expression));
    return node(Kind::Cast, type, std::move(operands));
}

FieldType commonType(const Expression &left, const Expression &right)
{
    if (left.type == right.type || right.isNullLiteral())
        return left.type;
    if (left.isNullLiteral())
        return right.type;
    const auto either = [&](FieldType type) { return left.type == type || right.type == type; };
    if (either(FieldType::Text) || either(FieldType::Date))
        return FieldType::Text;
    if (either(FieldType::Double))
        return FieldType::Double;
    return either(FieldType::Money) ? FieldType::Money : FieldType::Long;
}

void alignForComparison(Expression &left, Expression &right)
{
    if (left.type == right.type || left.isNullLiteral() || right.isNullLiteral())
        return;
    if (left.type == FieldType::Text)
        alignText(left, right);
    else if (right.type == FieldType::Text)
        alignText(right, left);
    else if (left.type == FieldType::Date)
        right = converted(std::move(right), FieldType::Date);
    else if (right.type == FieldType::Date)
        left = converted(std::move(left), FieldType::Date);
    else if (left.type == FieldType::Money)
        alignMoney(left, right);
    else if (right.type == FieldType::Money)
        alignMoney(right, left);
}

Expression assigned(Expression expression, const CatalogColumn &column)
{
    if (expression.kind != Kind::Literal) {
        const bool ownBoolean = expression.kind == Kind::Column && expression.type == FieldType::Boolean;
        Expression result = converted(std::move(expression), column.type);
        if (column.type != FieldType::Boolean || ownBoolean)
            return result;
        std::vector<Expression> operands;
        operands.push_back(std::move(result));
        operands.push_back(literal(false, FieldType::Boolean));
        return call("ifnull", FieldType::Boolean, std::move(operands));
    }
    Value value;
    try {
        value = literalAs(expression, column.type);
    } catch (const RuntimeError &error) {
        if (error.number() == runtime_errors::overflow().number())
            throw;
        throw data_errors::typeMismatch();
    }
    if (column.type == FieldType::Boolean && value.isNull())
        value = false; // a stored boolean is never Null
    if (column.type == FieldType::Text && !value.isNull()) {
        const QString text = value.toText();
        if (!textFits(text, column.size))
            throw data_errors::fieldTooSmall(false);
        if (text.isEmpty() && !column.emptyTextAllowed)
            throw data_errors::zeroLength(column.name);
    }
    return retyped(std::move(expression), std::move(value), column.type);
}

} // namespace sql
