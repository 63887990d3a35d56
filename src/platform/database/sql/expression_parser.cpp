#include "platform/database/sql/expression_parser.h"

#include "platform/database/errors.h"

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sql
{

using syntax::Expression;
using syntax::Operator;

namespace
{

// Above what any screen writes, and low enough that neither this parser nor the walks over the tree come near
// the end of the stack. The engine's own parser, with room for a hundred symbols, may give up before.
constexpr int maximumNesting = 8;
constexpr int maximumHeight = 200;
constexpr qsizetype excerptLength = 100;

// Levels of binding, the loosest first.
enum Level { LevelOr, LevelAnd, LevelComparison, LevelJoin, LevelSum, LevelProduct, LevelUnary };

QString excerpt(QStringView text)
{
    text = text.trimmed();
    return text.size() <= excerptLength ? text.toString() : text.first(excerptLength).toString() + u"..."_s;
}

template <typename... Expressions>
std::vector<Expression> list(Expressions &&...expressions)
{
    std::vector<Expression> result;
    result.reserve(sizeof...(expressions));
    (result.push_back(std::forward<Expressions>(expressions)), ...);
    return result;
}

} // namespace

ExpressionParser::Nesting::Nesting(ExpressionParser &parser) : m_parser(parser)
{
    if (++m_parser.m_nesting > maximumNesting)
        m_parser.failComplexity();
}

// --- tokens

bool ExpressionParser::isName() const
{
    if (m_token.kind == TokenKind::Bracketed)
        return !m_token.text.isEmpty();
    // These three words are names too wherever they don't begin a clause.
    return m_token.kind == TokenKind::Name &&
           (is(Keyword::None) || is(Keyword::Table) ||
            ((is(Keyword::Group) || is(Keyword::Order)) && following() != Keyword::By));
}

QStringView ExpressionParser::name(const QString &words)
{
    if (!isName())
        fail(words);
    const QStringView text = m_token.text;
    m_consumed = m_token.start + text.size() + (m_token.kind == TokenKind::Bracketed ? 2 : 0);
    advance();
    return text;
}

// --- expressions

Expression ExpressionParser::clauseExpression(const QString &missingWords)
{
    const qsizetype outerStart = std::exchange(m_expressionStart, m_token.start);
    const QString outerWords = std::exchange(m_missingWords, missingWords);
    Expression result = binary(LevelOr);
    // What follows must be able to follow: anything that could go on an expression lacks its operator.
    const bool clauseWord = m_token.kind == TokenKind::Name && !isName() && !is(Keyword::True) &&
                            !is(Keyword::False) && !is(Keyword::Null) && !is(Keyword::Not);
    if (m_token.kind == TokenKind::Unfinished && m_token.symbol != u'[')
        failExpression(u"in string "_s);
    if (!atEnd() && !clauseWord && !is(u',') && !is(u')') && !is(u';'))
        failOperator();
    m_expressionStart = outerStart;
    m_missingWords = outerWords;
    return result;
}

std::optional<Operator> ExpressionParser::binaryOperator(int level) const
{
    const auto found = [](bool here, Operator op) { return here ? std::optional(op) : std::nullopt; };
    switch (level) {
    case LevelOr:
        return found(is(Keyword::Or), Operator::Or);
    case LevelAnd:
        return found(is(Keyword::And), Operator::And);
    case LevelJoin:
        return found(is(u'&'), Operator::Join);
    case LevelSum:
        return is(u'+') ? Operator::Add : found(is(u'-'), Operator::Subtract);
    default:
        return is(u'*') ? Operator::Multiply : found(is(u'/'), Operator::Divide);
    }
}

Expression ExpressionParser::binary(int level)
{
    if (level == LevelComparison)
        return comparison();
    if (level == LevelUnary)
        return unary();
    const qsizetype start = m_token.start;
    Expression left = binary(level + 1);
    while (const std::optional<Operator> op = binaryOperator(level)) {
        advance();
        Expression right = binary(level + 1);
        left = node(Expression::Kind::Binary, start, list(std::move(left), std::move(right)), *op);
    }
    return left;
}

std::optional<Operator> ExpressionParser::comparisonOperator() const
{
    if (m_token.kind != TokenKind::Symbol)
        return std::nullopt;
    switch (m_token.symbol) {
    case u'=':
        return Operator::Equal;
    case u'\u2260':
        return Operator::NotEqual;
    case u'<':
        return Operator::Less;
    case u'\u2264':
        return Operator::LessEqual;
    case u'>':
        return Operator::Greater;
    case u'\u2265':
        return Operator::GreaterEqual;
    default:
        return std::nullopt;
    }
}

Expression ExpressionParser::comparison()
{
    const qsizetype start = m_token.start;
    if (take(Keyword::Not)) {
        const Nesting nesting(*this);
        return node(Expression::Kind::Not, start, list(comparison()));
    }
    Expression left = binary(LevelJoin);
    for (;;) {
        if (const std::optional<Operator> op = comparisonOperator()) {
            advance();
            Expression right = binary(LevelJoin);
            left = node(Expression::Kind::Binary, start, list(std::move(left), std::move(right)), *op);
        } else if (is(Keyword::Between) || (is(Keyword::Not) && following() == Keyword::Between)) {
            left = between(std::move(left), start);
        } else if (take(Keyword::Is)) {
            left = isNull(std::move(left), start);
        } else {
            return left;
        }
    }
}

Expression ExpressionParser::between(Expression value, qsizetype start)
{
    const bool negated = take(Keyword::Not);
    advance();
    Expression low = binary(LevelJoin);
    if (!take(Keyword::And))
        failExpression(u"(Between operator without And) "_s);
    Expression high = binary(LevelJoin);
    Expression result =
        node(Expression::Kind::Between, start, list(std::move(value), std::move(low), std::move(high)));
    return negated ? node(Expression::Kind::Not, start, list(std::move(result))) : result;
}

Expression ExpressionParser::isNull(Expression value, qsizetype start)
{
    const bool negated = take(Keyword::Not);
    if (!is(Keyword::Null))
        failExpression({});
    m_consumed = m_token.start + m_token.text.size();
    advance();
    Expression result = node(Expression::Kind::IsNull, start, list(std::move(value)));
    return negated ? node(Expression::Kind::Not, start, list(std::move(result))) : result;
}

Expression ExpressionParser::unary()
{
    const qsizetype start = m_token.start;
    if (take(u'-')) {
        const Nesting nesting(*this);
        return node(Expression::Kind::Negate, start, list(unary()));
    }
    if (take(u'+')) {
        const Nesting nesting(*this);
        return unary();
    }
    return primary();
}

Expression ExpressionParser::primary()
{
    switch (m_token.kind) {
    case TokenKind::Number:
        return literal(Expression::Kind::Number);
    case TokenKind::Text:
        return literal(Expression::Kind::Text);
    case TokenKind::Date:
        return literal(Expression::Kind::Date);
    case TokenKind::Unfinished:
        failExpression(m_token.symbol == u'#' ? u"in date "_s : u"in string "_s);
    default:
        break;
    }
    if (is(Keyword::True))
        return literal(Expression::Kind::True);
    if (is(Keyword::False))
        return literal(Expression::Kind::False);
    if (is(Keyword::Null))
        return literal(Expression::Kind::Null);
    if (isName())
        return columnOrCall();
    if (is(u'('))
        return parenthesized();
    // At the beginning of its clause nothing of an expression stands there: the clause itself is at fault.
    if (m_token.start == m_expressionStart)
        fail(m_missingWords);
    failExpression({});
}

Expression ExpressionParser::parenthesized()
{
    const Nesting nesting(*this);
    const qsizetype start = m_token.start;
    advance();
    Expression result;
    if (take(Keyword::Select)) {
        result.kind = Expression::Kind::Subselect;
        result.select = std::make_shared<syntax::Select>(subselect());
    } else {
        result = binary(LevelOr);
    }
    if (!is(u')'))
        failOperator();
    m_consumed = m_token.start + 1;
    advance();
    result.source = m_text.sliced(start, m_consumed - start);
    return result;
}

Expression ExpressionParser::columnOrCall()
{
    Expression result;
    result.kind = Expression::Kind::Column;
    const qsizetype start = m_token.start;
    const bool bare = m_token.kind == TokenKind::Name;
    result.text = name({});
    if (bare && is(u'('))
        return call(result.text);
    if (take(u'.')) {
        result.qualifier = result.text;
        if (is(u'*')) {
            result.star = true;
            advance();
            return result;
        }
        if (!isName())
            failExpression({});
        result.text = name({});
    }
    result.source = m_text.sliced(start, m_consumed - start);
    return result;
}

Expression ExpressionParser::call(QStringView function)
{
    const Nesting nesting(*this);
    const qsizetype start = function.utf16() - m_text.utf16();
    advance();
    const bool star = take(u'*');
    std::vector<Expression> arguments;
    if (!star && !is(u')')) {
        do {
            arguments.push_back(binary(LevelOr));
        } while (take(u','));
    }
    if (!is(u')'))
        failOperator();
    m_consumed = m_token.start + 1;
    advance();
    Expression result = node(Expression::Kind::Call, start, std::move(arguments));
    result.text = function;
    result.star = star;
    return result;
}

Expression ExpressionParser::literal(Expression::Kind kind)
{
    const bool enclosed = kind == Expression::Kind::Text || kind == Expression::Kind::Date;
    m_consumed = m_token.start + m_token.text.size() + (enclosed ? 2 : 0);
    Expression result = node(kind, m_token.start, {});
    result.text = m_token.text;
    result.quote = m_token.symbol;
    advance();
    return result;
}

Expression ExpressionParser::node(Expression::Kind kind, qsizetype start, std::vector<Expression> operands,
                                  Operator op) const
{
    Expression result;
    result.kind = kind;
    result.op = op;
    for (const Expression &operand : operands)
        result.height = std::max(result.height, operand.height + 1);
    if (result.height > maximumHeight)
        failComplexity();
    result.source = m_text.sliced(start, m_consumed - start);
    result.operands = std::move(operands);
    return result;
}

// --- failures

void ExpressionParser::fail(const QString &words) const
{
    const QString where =
        atEnd()
            ? u" (at the end of the statement)"_s
            : u" (at character %1: %2)"_s.arg(m_token.start + 1).arg(excerpt(m_text.sliced(m_token.start)));
    throw data_errors::syntax(words + where);
}

void ExpressionParser::failExpression(const QString &kind) const
{
    throw data_errors::syntax(
        u"Syntax error %1in query expression '%2'."_s.arg(kind, excerpt(m_text.sliced(m_expressionStart))));
}

void ExpressionParser::failOperator() const
{
    failExpression(u"(missing operator) "_s);
}

void ExpressionParser::failComplexity() const
{
    fail(u"The query is too complex."_s);
}

} // namespace sql
