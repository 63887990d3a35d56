#pragma once

#include "platform/database/sql/lexer.h"
#include "platform/database/sql/syntax.h"

#include <QtCore/QString>

#include <optional>

namespace sql
{

/// The half of the parser that reads expressions, with the tokens and the failures that both halves share. It
/// stands one token ahead.
class ExpressionParser
{
protected:
    using Expression = syntax::Expression;
    using Operator = syntax::Operator;

    explicit ExpressionParser(QStringView text) : m_text(text), m_lexer(text), m_token(m_lexer.next()) {}
    virtual ~ExpressionParser() = default;

    /// Reads a sub-select behind its SELECT.
    virtual syntax::Select subselect() = 0;

    /// The expression of one place of a statement: everything up to what may follow it there. `missingWords`
    /// is the failure when nothing of an expression stands there.
    Expression clauseExpression(const QString &missingWords);

    // --- tokens
    void advance() { m_token = m_lexer.next(); }
    bool is(Keyword keyword) const { return m_token.keyword == keyword; }
    bool is(char16_t symbol) const { return m_token.kind == TokenKind::Symbol && m_token.symbol == symbol; }
    /// One of the two words that begin a clause together with BY.
    bool isClause(Keyword keyword) const { return is(keyword) && following() == Keyword::By; }
    bool isName() const;
    bool atEnd() const { return m_token.kind == TokenKind::End; }
    Keyword following() const { return Lexer(m_lexer).next().keyword; }
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

    // --- failures
    /// The words, and the place where the parser stands.
    [[noreturn]] void fail(const QString &words) const;
    /// `Syntax error <kind>in query expression '<the clause's expression>'.`
    [[noreturn]] void failExpression(const QString &kind) const;
    [[noreturn]] void failOperator() const;
    [[noreturn]] void failComplexity() const;

private:
    /// One level of what is written inside something else; refuses to go too deep.
    class Nesting
    {
    public:
        explicit Nesting(ExpressionParser &parser);
        ~Nesting() { --m_parser.m_nesting; }
        Nesting(const Nesting &) = delete;
        Nesting &operator=(const Nesting &) = delete;

    private:
        ExpressionParser &m_parser;
    };

    Expression binary(int level);
    Expression comparison();
    Expression between(Expression value, qsizetype start);
    Expression isNull(Expression value, qsizetype start);
    Expression unary();
    Expression primary();
    Expression parenthesized();
    Expression columnOrCall();
    Expression call(QStringView function);
    Expression literal(Expression::Kind kind);
    std::optional<Operator> binaryOperator(int level) const;
    std::optional<Operator> comparisonOperator() const;
    /// Behind the last token of the expression that began at `start`.
    Expression node(Expression::Kind kind, qsizetype start, std::vector<Expression> operands,
                    Operator op = Operator::Or) const;

    QStringView m_text;
    Lexer m_lexer;
    Token m_token;
    qsizetype m_consumed = 0;        ///< end of the last expression's last token
    qsizetype m_expressionStart = 0; ///< of the clause's expression, which failures quote
    QString m_missingWords;
    int m_nesting = 0;
};

} // namespace sql
