#include "platform/database/sql/parser.h"

#include "platform/database/errors.h"
#include "platform/database/sql/lexer.h"

#include <QtCore/QString>

#include <optional>
#include <utility>

using namespace Qt::Literals::StringLiterals;
using namespace sql::syntax;

namespace sql
{

namespace
{

// Above what any screen writes, and low enough that neither this parser nor the walks over the tree come near
// the end of the stack; the engine's own parser has room for a hundred symbols, some ten to a sub-select.
constexpr int maximumNesting = 8;
constexpr int maximumHeight = 200;
constexpr int maximumColumns = 255;
constexpr qsizetype excerptLength = 100;

QString selectWords()
{
    return u"The SELECT statement includes a reserved word or an argument name that is misspelled or "
           u"missing, "
           "or the punctuation is incorrect."_s;
}

QString excerpt(QStringView text)
{
    text = text.trimmed();
    return text.size() <= excerptLength ? text.toString() : text.first(excerptLength).toString() + u"..."_s;
}

class Parser
{
public:
    explicit Parser(QStringView text) : m_text(text), m_lexer(text), m_token(m_lexer.next()) {}

    Statement statement();

private:
    // --- tokens
    void advance() { m_token = m_lexer.next(); }
    bool is(Keyword keyword) const { return m_token.keyword == keyword; }
    bool is(char16_t symbol) const { return m_token.kind == TokenKind::Symbol && m_token.symbol == symbol; }
    bool isClause(Keyword keyword) const
    {
        return is(keyword) && Lexer(m_lexer).next().keyword == Keyword::By;
    }
    bool isName() const;
    template <typename What>
    bool take(What what)
    {
        if (!is(what))
            return false;
        advance();
        return true;
    }
    template <typename What>
    void expect(What what, const QString &words)
    {
        if (!take(what))
            fail(words);
    }
    QStringView name(const QString &words);

    // --- statements
    enum class Into { Refused, Allowed };
    Select select(Into into);
    Insert insert();
    Update update();
    Delete deleteRows();
    DropTable dropTable();
    SelectItem selectItem();
    TableName tableName();
    std::optional<Expression> where();

    // --- expressions
    Expression clauseExpression(const QString &missingWords);
    Expression binary(int level);
    Expression comparison();
    Expression unary();
    Expression primary();
    Expression columnOrCall();
    Expression call(QStringView function);
    Expression literal(Expression::Kind kind);
    std::optional<Operator> binaryOperator(int level) const;
    Expression node(Expression::Kind kind, qsizetype start, std::vector<Expression> operands,
                    Operator op = Operator::Or) const;

    // --- failures
    [[noreturn]] void fail(const QString &words) const;
    [[noreturn]] void failExpression(const QString &kind) const;

    class Nesting
    {
    public:
        explicit Nesting(Parser &parser) : m_parser(parser)
        {
            if (++m_parser.m_nesting > maximumNesting)
                m_parser.fail(u"The query is too complex."_s);
        }
        ~Nesting() { --m_parser.m_nesting; }
        Nesting(const Nesting &) = delete;
        Nesting &operator=(const Nesting &) = delete;

    private:
        Parser &m_parser;
    };

    QStringView m_text;
    Lexer m_lexer;
    Token m_token;
    qsizetype m_consumed = 0;        ///< end of the last expression's last token
    qsizetype m_expressionStart = 0; ///< of the clause's expression, which failures quote
    QString m_missingWords;          ///< what to say when an operand is missing in that expression
    int m_nesting = 0;
};

// --- tokens

bool Parser::isName() const
{
    if (m_token.kind == TokenKind::Bracketed)
        return !m_token.text.isEmpty();
    // These three words are names too wherever they don't begin a clause.
    return m_token.kind == TokenKind::Name &&
           (is(Keyword::None) || is(Keyword::Table) ||
            ((is(Keyword::Group) || is(Keyword::Order)) && Lexer(m_lexer).next().keyword != Keyword::By));
}

QStringView Parser::name(const QString &words)
{
    if (!isName())
        fail(words);
    const QStringView text = m_token.text;
    m_consumed = m_token.start + text.size() + (m_token.kind == TokenKind::Bracketed ? 2 : 0);
    advance();
    return text;
}

// --- statements

Statement Parser::statement()
{
    const auto parsed = [this]() -> Statement {
        if (take(Keyword::Select))
            return select(Into::Allowed);
        if (take(Keyword::Insert))
            return insert();
        if (take(Keyword::Update))
            return update();
        if (take(Keyword::Delete))
            return deleteRows();
        if (take(Keyword::Drop))
            return dropTable();
        fail(u"Invalid SQL statement; expected 'DELETE', 'DROP', 'INSERT', 'SELECT', or 'UPDATE'."_s);
    };
    Statement result = parsed();
    if (is(u';')) {
        advance();
        if (m_token.kind != TokenKind::End)
            fail(u"Characters found after end of SQL statement."_s);
    } else if (m_token.kind != TokenKind::End) {
        fail(std::holds_alternative<Select>(result) ? selectWords()
                                                    : u"Characters found after end of SQL statement."_s);
    }
    return result;
}

Select Parser::select(Into into)
{
    Select result;
    result.distinct = take(Keyword::Distinct);
    do {
        if (result.items.size() == maximumColumns)
            fail(u"Too many fields defined."_s);
        result.items.push_back(selectItem());
    } while (take(u','));
    if (into == Into::Allowed && take(Keyword::Into))
        result.into = name(selectWords());
    expect(Keyword::From, selectWords());
    result.from = tableName();
    result.where = where();
    if (isClause(Keyword::Group)) {
        advance();
        advance();
        do {
            result.groupBy.push_back(clauseExpression(u"Syntax error in GROUP BY clause."_s));
        } while (take(u','));
    }
    if (isClause(Keyword::Order)) {
        advance();
        advance();
        do {
            OrderTerm term;
            term.expression = clauseExpression(u"Syntax error in ORDER BY clause."_s);
            term.descending = take(Keyword::Desc);
            if (!term.descending)
                take(Keyword::Asc);
            result.orderBy.push_back(std::move(term));
        } while (take(u','));
    }
    return result;
}

SelectItem Parser::selectItem()
{
    SelectItem item;
    if (take(u'*')) {
        item.star = true;
        return item;
    }
    item.expression = clauseExpression(selectWords());
    if (item.expression.kind == Expression::Kind::Column && item.expression.star) {
        item.star = true;
        item.starQualifier = item.expression.qualifier;
        return item;
    }
    if (take(Keyword::As))
        item.alias = name(selectWords());
    return item;
}

TableName Parser::tableName()
{
    const QString words = u"Syntax error in FROM clause."_s;
    TableName result;
    result.name = name(words);
    if (take(Keyword::As) || (isName() && !isClause(Keyword::Group) && !isClause(Keyword::Order)))
        result.alias = name(words);
    if (is(u','))
        fail(words); // one table a statement; the program's own statements never join
    return result;
}

std::optional<Expression> Parser::where()
{
    if (!take(Keyword::Where))
        return std::nullopt;
    return clauseExpression(u"Syntax error in WHERE clause."_s);
}

Insert Parser::insert()
{
    const QString words = u"Syntax error in INSERT INTO statement."_s;
    Insert result;
    expect(Keyword::Into, words);
    result.table = name(words);
    if (take(u'(')) {
        do {
            result.columns.push_back(name(words));
        } while (take(u','));
        expect(u')', words);
    }
    if (take(Keyword::Select)) {
        result.select = std::make_shared<Select>(select(Into::Refused));
        return result;
    }
    expect(Keyword::Values, words);
    expect(u'(', words);
    do {
        if (result.values.size() == maximumColumns)
            fail(u"Too many fields defined."_s);
        result.values.push_back(clauseExpression(words));
        if (!is(u',') && !is(u')'))
            failExpression(u"(missing operator) "_s);
    } while (take(u','));
    expect(u')', words);
    return result;
}

Update Parser::update()
{
    const QString words = u"Syntax error in UPDATE statement."_s;
    Update result;
    result.table = name(words);
    expect(Keyword::Set, words);
    do {
        Assignment assignment;
        assignment.column = name(words);
        expect(u'=', words);
        assignment.value = clauseExpression(words);
        result.assignments.push_back(std::move(assignment));
    } while (take(u','));
    result.where = where();
    return result;
}

Delete Parser::deleteRows()
{
    Delete result;
    take(u'*');
    expect(Keyword::From, u"Syntax error in FROM clause."_s);
    result.table = name(u"Syntax error in FROM clause."_s);
    result.where = where();
    return result;
}

DropTable Parser::dropTable()
{
    const QString words = u"Syntax error in DROP TABLE or DROP INDEX."_s;
    expect(Keyword::Table, words);
    return {name(words)};
}

// --- expressions

/// The expression of one place of a statement: everything up to what may follow it there.
Expression Parser::clauseExpression(const QString &missingWords)
{
    const qsizetype outerStart = std::exchange(m_expressionStart, m_token.start);
    const QString outerWords = std::exchange(m_missingWords, missingWords);
    Expression result = binary(0);
    switch (m_token.kind) {
    case TokenKind::Symbol:
        if (is(u',') || is(u')') || is(u';'))
            break;
        failExpression(u"(missing operator) "_s);
    case TokenKind::End:
        break;
    default:
        if (is(Keyword::None) || is(Keyword::True) || is(Keyword::False) || is(Keyword::Null) ||
            is(Keyword::Not) || is(Keyword::Is) || is(Keyword::Between) ||
            (isName() && !isClause(Keyword::Group) && !isClause(Keyword::Order)))
            failExpression(m_token.kind == TokenKind::Unfinished && m_token.symbol != u'['
                               ? u"in string "_s
                               : u"(missing operator) "_s);
    }
    m_expressionStart = outerStart;
    m_missingWords = outerWords;
    return result;
}

/// Levels of binding, the loosest first: or, and, (not, comparisons), &, + -, * /.
std::optional<Operator> Parser::binaryOperator(int level) const
{
    switch (level) {
    case 0:
        return is(Keyword::Or) ? std::optional(Operator::Or) : std::nullopt;
    case 1:
        return is(Keyword::And) ? std::optional(Operator::And) : std::nullopt;
    case 3:
        return is(u'&') ? std::optional(Operator::Join) : std::nullopt;
    case 4:
        return is(u'+')   ? std::optional(Operator::Add)
               : is(u'-') ? std::optional(Operator::Subtract)
                          : std::nullopt;
    case 5:
        return is(u'*')   ? std::optional(Operator::Multiply)
               : is(u'/') ? std::optional(Operator::Divide)
                          : std::nullopt;
    default:
        return std::nullopt;
    }
}

Expression Parser::binary(int level)
{
    if (level == 2)
        return comparison();
    if (level == 6)
        return unary();
    const qsizetype start = m_token.start;
    Expression left = binary(level + 1);
    while (const std::optional<Operator> op = binaryOperator(level)) {
        advance();
        std::vector<Expression> operands;
        operands.reserve(2);
        operands.push_back(std::move(left));
        operands.push_back(binary(level + 1));
        left = node(Expression::Kind::Binary, start, std::move(operands), *op);
    }
    return left;
}

Expression Parser::comparison()
{
    const qsizetype start = m_token.start;
    if (take(Keyword::Not)) {
        const Nesting nesting(*this);
        std::vector<Expression> operands;
        operands.push_back(comparison());
        return node(Expression::Kind::Not, start, std::move(operands));
    }
    Expression left = binary(3);
    for (;;) {
        std::vector<Expression> operands;
        const bool negated = is(Keyword::Not) && Lexer(m_lexer).next().keyword == Keyword::Between;
        if (negated || is(Keyword::Between)) {
            if (negated)
                advance();
            advance();
            operands.push_back(std::move(left));
            operands.push_back(binary(3));
            if (!take(Keyword::And))
                failExpression(u"Between operator without And "_s);
            operands.push_back(binary(3));
            left = node(Expression::Kind::Between, start, std::move(operands));
        } else if (take(Keyword::Is)) {
            const bool isNot = take(Keyword::Not);
            if (!is(Keyword::Null))
                failExpression({});
            m_consumed = m_token.start + m_token.text.size();
            advance();
            operands.push_back(std::move(left));
            left = node(Expression::Kind::IsNull, start, std::move(operands));
            if (isNot) {
                operands = {};
                operands.push_back(std::move(left));
                left = node(Expression::Kind::Not, start, std::move(operands));
            }
            continue;
        } else if (m_token.kind == TokenKind::Symbol) {
            Operator op;
            switch (m_token.symbol) {
            case u'=':
                op = Operator::Equal;
                break;
            case u'\u2260':
                op = Operator::NotEqual;
                break;
            case u'<':
                op = Operator::Less;
                break;
            case u'\u2264':
                op = Operator::LessEqual;
                break;
            case u'>':
                op = Operator::Greater;
                break;
            case u'\u2265':
                op = Operator::GreaterEqual;
                break;
            default:
                return left;
            }
            advance();
            operands.push_back(std::move(left));
            operands.push_back(binary(3));
            left = node(Expression::Kind::Binary, start, std::move(operands), op);
        } else {
            return left;
        }
        if (negated) {
            operands = {};
            operands.push_back(std::move(left));
            left = node(Expression::Kind::Not, start, std::move(operands));
        }
    }
}

Expression Parser::unary()
{
    const qsizetype start = m_token.start;
    if (take(u'-')) {
        const Nesting nesting(*this);
        std::vector<Expression> operands;
        operands.push_back(unary());
        return node(Expression::Kind::Negate, start, std::move(operands));
    }
    if (take(u'+')) {
        const Nesting nesting(*this);
        return unary();
    }
    return primary();
}

Expression Parser::primary()
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
    if (!is(u'(')) {
        // At the beginning of its clause nothing of an expression stands there: the clause itself is at
        // fault.
        if (m_token.start == m_expressionStart)
            fail(m_missingWords);
        failExpression({});
    }
    const Nesting nesting(*this);
    const qsizetype start = m_token.start;
    advance();
    Expression result;
    if (take(Keyword::Select)) {
        result.kind = Expression::Kind::Subselect;
        result.select = std::make_shared<Select>(select(Into::Refused));
    } else {
        result = binary(0);
    }
    if (!is(u')'))
        failExpression(u"(missing operator) "_s);
    m_consumed = m_token.start + 1;
    advance();
    result.source = m_text.sliced(start, m_consumed - start);
    return result;
}

Expression Parser::columnOrCall()
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

Expression Parser::call(QStringView function)
{
    const Nesting nesting(*this);
    Expression result;
    result.kind = Expression::Kind::Call;
    result.text = function;
    const qsizetype start = function.utf16() - m_text.utf16();
    advance();
    if (take(u'*')) {
        result.star = true;
    } else if (!is(u')')) {
        do {
            result.operands.push_back(binary(0));
            result.height = std::max(result.height, result.operands.back().height + 1);
        } while (take(u','));
    }
    if (!is(u')'))
        failExpression(u"(missing operator) "_s);
    m_consumed = m_token.start + 1;
    advance();
    result.source = m_text.sliced(start, m_consumed - start);
    return result;
}

Expression Parser::literal(Expression::Kind kind)
{
    Expression result;
    result.kind = kind;
    result.text = m_token.text;
    result.quote = m_token.symbol;
    const bool enclosed = kind == Expression::Kind::Text || kind == Expression::Kind::Date;
    m_consumed = m_token.start + m_token.text.size() + (enclosed ? 2 : 0);
    result.source = m_text.sliced(m_token.start, m_consumed - m_token.start);
    advance();
    return result;
}

Expression Parser::node(Expression::Kind kind, qsizetype start, std::vector<Expression> operands,
                        Operator op) const
{
    Expression result;
    result.kind = kind;
    result.op = op;
    for (const Expression &operand : operands)
        result.height = std::max(result.height, operand.height + 1);
    if (result.height > maximumHeight)
        fail(u"The query is too complex."_s);
    result.source = m_text.sliced(start, m_consumed - start);
    result.operands = std::move(operands);
    return result;
}

// --- failures

void Parser::fail(const QString &words) const
{
    const QString where =
        m_token.kind == TokenKind::End
            ? u" (at the end of the statement)"_s
            : u" (at character %1: %2)"_s.arg(m_token.start + 1).arg(excerpt(m_text.sliced(m_token.start)));
    throw data_errors::syntax(words + where);
}

void Parser::failExpression(const QString &kind) const
{
    throw data_errors::syntax(
        u"Syntax error %1in query expression '%2'."_s.arg(kind, excerpt(m_text.sliced(m_expressionStart))));
}

} // namespace

Statement parse(QStringView text)
{
    return Parser(text).statement();
}

} // namespace sql
