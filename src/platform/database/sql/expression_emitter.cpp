#include "platform/database/sql/expression_emitter.h"

#include "platform/database/errors.h"
#include "platform/database/sql/ddl.h"
#include "platform/database/sql/storage.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sql
{

using bound::Expression;
using bound::Operator;
using Kind = bound::Expression::Kind;

namespace
{

constexpr qsizetype maximumText = 100'000; ///< swapped bounds double their texts
constexpr size_t maximumParameters = 900;  ///< the engine takes 999

const char *comparisonSign(Operator op)
{
    switch (op) {
    case Operator::Equal:
        return " = ";
    case Operator::NotEqual:
        return " <> ";
    case Operator::Less:
        return " < ";
    case Operator::LessEqual:
        return " <= ";
    case Operator::Greater:
        return " > ";
    default:
        return " >= ";
    }
}

} // namespace

void ExpressionEmitter::source(int number, const char *behind)
{
    write("t");
    write(QByteArray::number(number));
    write(behind);
}

void ExpressionEmitter::parameter(Parameter value)
{
    std::vector<Parameter> &parameters = m_step.parameters;
    auto place = std::find(parameters.begin(), parameters.end(), value);
    if (place == parameters.end()) {
        if (parameters.size() == maximumParameters)
            throw data_errors::syntax(u"The query is too complex."_s);
        parameters.push_back(std::move(value));
        place = std::prev(parameters.end());
    }
    write("?");
    write(QByteArray::number(place - parameters.begin() + 1));
}

void ExpressionEmitter::value(const Expression &expression, Level level)
{
    if (m_step.text.size() > maximumText)
        throw data_errors::syntax(u"The query is too complex."_s);
    if (expression.isTruth()) {
        write("-(");
        condition(expression, LevelAny);
        write(")");
        return;
    }
    switch (expression.kind) {
    case Kind::Literal:
        if (expression.literal.isNull())
            write("null");
        else if (expression.type == FieldType::Boolean)
            write(expression.literal.toBool() ? "-1" : "0");
        else
            parameter(toStorage(expression.literal, expression.type));
        break;
    case Kind::Column:
        column(expression);
        break;
    case Kind::Cast:
        cast(expression, level);
        break;
    case Kind::Arithmetic:
        arithmetic(expression, level);
        break;
    case Kind::Iif:
        iif(expression);
        break;
    case Kind::Call:
        call(expression);
        break;
    case Kind::Subselect:
        write("(");
        subselect(*expression.select);
        write(")");
        break;
    default:
        Q_UNREACHABLE();
    }
}

void ExpressionEmitter::column(const Expression &expression)
{
    if (m_target != nullptr && expression.source == 0) {
        write(quotedName(m_target->name));
        write(".");
    } else {
        source(expression.source, ".");
    }
    write(quotedName(expression.column->name));
}

void ExpressionEmitter::iif(const Expression &expression)
{
    write("case when ");
    condition(expression.operands[0], LevelAny);
    write(" then ");
    value(expression.operands[1], LevelAny);
    write(" else ");
    value(expression.operands[2], LevelAny);
    write(" end");
}

void ExpressionEmitter::collated(const Expression &expression)
{
    const bool needed = expression.type == FieldType::Text && expression.kind != Kind::Column;
    value(expression, needed ? LevelAtom : LevelOperand);
    if (needed)
        write(" collate arabic");
}

void ExpressionEmitter::condition(const Expression &expression, Level level)
{
    switch (expression.kind) {
    case Kind::Or:
        enclosed(level > LevelOr, [&] {
            condition(expression.operands[0], LevelOr);
            write(" or ");
            condition(expression.operands[1], LevelAnd);
        });
        break;
    case Kind::And:
        enclosed(level > LevelAnd, [&] {
            condition(expression.operands[0], LevelAnd);
            write(" and ");
            condition(expression.operands[1], LevelNot);
        });
        break;
    case Kind::Not:
        enclosed(level > LevelNot, [&] {
            write("not ");
            condition(expression.operands[0], LevelNot);
        });
        break;
    case Kind::IsNull:
        enclosed(level > LevelCompare, [&] {
            value(expression.operands[0], LevelOperand);
            write(" is null");
        });
        break;
    case Kind::Compare:
        enclosed(level > LevelCompare, [&] { comparison(expression); });
        break;
    case Kind::Between:
        between(expression, level);
        break;
    default:
        value(expression, level);
    }
}

void ExpressionEmitter::comparison(const Expression &expression)
{
    const Expression &left = expression.operands[0];
    const Expression &right = expression.operands[1];
    value(left, LevelOperand);
    write(comparisonSign(expression.op));
    if (left.kind == Kind::Column)
        value(right, LevelOperand); // the left column's collation is the one that holds
    else
        collated(right);
}

void ExpressionEmitter::between(const Expression &expression, Level level)
{
    const std::vector<Expression> &operands = expression.operands;
    const auto within = [&](const Expression &low, const Expression &high) {
        collated(operands[0]);
        write(" between ");
        value(low, LevelOperand);
        write(" and ");
        value(high, LevelOperand);
    };
    enclosed(level > LevelOr, [&] {
        within(operands[1], operands[2]);
        write(" or ");
        within(operands[2], operands[1]);
    });
}

void ExpressionEmitter::arithmetic(const Expression &expression, Level level)
{
    Level own = LevelAdd;
    const char *sign = " + ";
    if (expression.op == Operator::Subtract) {
        sign = " - ";
    } else if (expression.op == Operator::Multiply) {
        own = LevelMultiply;
        sign = " * ";
    } else if (expression.op == Operator::Join) {
        own = LevelJoin;
        sign = " || ";
    }
    const bool money = expression.type == FieldType::Money;
    if (money) // the engine goes on with a double where 64 bits end
        write("q_exact");
    enclosed(money || level > own, [&] {
        value(expression.operands[0], own);
        write(sign);
        value(expression.operands[1], Level(own + 1));
    });
}

void ExpressionEmitter::cast(const Expression &expression, Level level)
{
    const Expression &operand = expression.operands[0];
    const auto whole = [](FieldType type) {
        return type == FieldType::Long || type == FieldType::Byte || type == FieldType::Boolean;
    };
    if (whole(operand.type) && (expression.type == FieldType::Long || expression.type == FieldType::Double)) {
        value(operand, level); // they are stored as numbers
    } else if (whole(operand.type) && expression.type == FieldType::Money) {
        enclosed(level > LevelMultiply, [&] {
            value(operand, LevelMultiply);
            write(" * 10000");
        });
    } else if (operand.type == FieldType::Money && expression.type == FieldType::Double) {
        enclosed(level > LevelMultiply, [&] {
            value(operand, LevelMultiply);
            write(" / 10000.0");
        });
    } else {
        write("q_cast(");
        value(operand, LevelAny);
        write(", " + QByteArray::number(int(operand.type)) + ", " + QByteArray::number(int(expression.type)) +
              ')');
    }
}

void ExpressionEmitter::call(const Expression &expression)
{
    write(expression.function);
    write("(");
    const char *separator = "";
    for (const Expression &operand : expression.operands) {
        write(std::exchange(separator, ", "));
        if (expression.aggregate)
            collated(operand); // for the largest and smallest text
        else
            value(operand, LevelAny);
    }
    write(expression.operands.empty() ? "*)" : ")");
}

} // namespace sql
