#include "platform/database/row_condition.h"

#include "platform/database/errors.h"
#include "platform/database/sql/collation.h"
#include "platform/database/sql/lexer.h"
#include "platform/database/sql/literals.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace database
{

namespace
{

constexpr int deepestNesting = 200;

template <typename T>
int order(const T &a, const T &b)
{
    return a < b ? -1 : b < a ? 1 : 0;
}

bool fulfils(RowCondition::Comparison comparison, int order)
{
    using enum RowCondition::Comparison;
    switch (comparison) {
    case Less:
        return order < 0;
    case LessEqual:
        return order <= 0;
    case NotEqual:
        return order != 0;
    case GreaterEqual:
        return order >= 0;
    case Greater:
        return order > 0;
    default:
        return order == 0;
    }
}

/// A date, money or Boolean as rows hold it; 0 for other kinds.
qint64 heldNumber(const Value &value)
{
    switch (value.kind()) {
    case Value::Kind::Money:
        return value.toMoneyValue().tenThousandths();
    case Value::Kind::Date:
        return value.toDate().toSecsSinceEpoch();
    case Value::Kind::Boolean:
        return value.toBool() ? -1 : 0;
    default:
        return 0;
    }
}

// `*` or `%` stands for any text, at either end or both.
bool isLike(const QString &text, QString pattern)
{
    const auto isWildcard = [](QChar character) { return character == u'*' || character == u'%'; };
    const bool openStart = pattern.size() > 1 && isWildcard(pattern.front());
    const bool openEnd = !pattern.isEmpty() && isWildcard(pattern.back());
    if (openStart)
        pattern.remove(0, 1);
    if (openEnd)
        pattern.chop(1);
    if (openStart && openEnd)
        return text.contains(pattern, Qt::CaseInsensitive);
    if (openEnd)
        return text.startsWith(pattern, Qt::CaseInsensitive);
    if (openStart)
        return text.endsWith(pattern, Qt::CaseInsensitive);
    return sql::compareTexts(text, pattern) == 0;
}

bool textFulfils(const QString &text, RowCondition::Comparison comparison, const QString &value)
{
    return comparison == RowCondition::Comparison::Like ? isLike(text, value)
                                                        : fulfils(comparison, sql::compareTexts(text, value));
}

} // namespace

class ConditionParser
{
public:
    ConditionParser(const QString &text, const std::vector<FieldInfo> &fields)
        : m_lexer(text), m_fields(fields)
    {
        advance();
    }

    RowCondition::Node parse(RowCondition::Form form)
    {
        RowCondition::Node node = form == RowCondition::Form::Criterion ? clause() : any(0);
        if (m_token.kind != sql::TokenKind::End)
            throw data_errors::wrongArguments();
        return node;
    }

private:
    using Node = RowCondition::Node;
    using Comparison = RowCondition::Comparison;

    void advance() { m_token = m_lexer.next(); }

    bool takeSymbol(char16_t symbol)
    {
        if (m_token.kind != sql::TokenKind::Symbol || m_token.symbol != symbol)
            return false;
        advance();
        return true;
    }

    bool takeKeyword(sql::Keyword keyword)
    {
        if (m_token.kind != sql::TokenKind::Name || m_token.keyword != keyword)
            return false;
        advance();
        return true;
    }

    Node any(int depth)
    {
        Node first = all(depth);
        return m_token.keyword == sql::Keyword::Or
                   ? joined(Node::Kind::Any, std::move(first), sql::Keyword::Or, [&] { return all(depth); })
                   : first;
    }

    Node all(int depth)
    {
        Node first = primary(depth);
        return m_token.keyword == sql::Keyword::And
                   ? joined(Node::Kind::All, std::move(first), sql::Keyword::And,
                            [&] { return primary(depth); })
                   : first;
    }

    template <typename Part>
    Node joined(Node::Kind kind, Node first, sql::Keyword keyword, Part part)
    {
        Node node;
        node.kind = kind;
        node.parts.push_back(std::move(first));
        while (takeKeyword(keyword))
            node.parts.push_back(part());
        return node;
    }

    Node primary(int depth)
    {
        if (depth > deepestNesting)
            throw data_errors::wrongArguments();
        if (!takeSymbol(u'('))
            return clause();
        Node node = any(depth + 1);
        if (!takeSymbol(u')'))
            throw data_errors::wrongArguments();
        return node;
    }

    Node clause()
    {
        Node node;
        node.clause.field = field();
        node.clause.comparison = comparison();
        node.clause.value = value(m_fields[std::size_t(node.clause.field)].type, node.clause.comparison);
        node.clause.number = heldNumber(node.clause.value);
        return node;
    }

    int field()
    {
        if (m_token.kind != sql::TokenKind::Name && m_token.kind != sql::TokenKind::Bracketed)
            throw data_errors::wrongArguments();
        for (std::size_t index = 0; index < m_fields.size(); ++index) {
            if (m_token.text.compare(m_fields[index].name, Qt::CaseInsensitive) == 0) {
                advance();
                return int(index);
            }
        }
        throw data_errors::noSuchItem();
    }

    Comparison comparison()
    {
        if (m_token.kind == sql::TokenKind::Name && m_token.text.compare(u"like", Qt::CaseInsensitive) == 0) {
            advance();
            return Comparison::Like;
        }
        constexpr std::pair<char16_t, Comparison> signs[] = {
            {u'=', Comparison::Equal},
            {u'<', Comparison::Less},
            {u'>', Comparison::Greater},
            {u'\u2264', Comparison::LessEqual},
            {u'\u2265', Comparison::GreaterEqual},
            {u'\u2260', Comparison::NotEqual},
        };
        for (const auto &[sign, comparison] : signs) {
            if (takeSymbol(sign))
                return comparison;
        }
        throw data_errors::wrongArguments();
    }

    Value value(FieldType type, Comparison comparison)
    {
        const bool isEquality = comparison == Comparison::Equal || comparison == Comparison::NotEqual;
        if (m_token.keyword == sql::Keyword::Null && isEquality) {
            advance();
            return {};
        }
        try {
            Value value = converted(type);
            if (comparison == Comparison::Like && type != FieldType::Text)
                throw data_errors::wrongArguments();
            return value;
        } catch (const RuntimeError &) { // a text that is no number or no date, or one out of range
            throw data_errors::wrongArguments();
        }
    }

    Value converted(FieldType type)
    {
        const bool negative = takeSymbol(u'-');
        const sql::Token token = m_token;
        advance();
        if (negative && token.kind != sql::TokenKind::Number)
            throw data_errors::wrongArguments();
        const QString text = (negative ? u"-"_s : QString()) + token.text.toString();
        switch (token.kind) {
        case sql::TokenKind::Text:
            if (token.symbol == u'\'')
                return fromText(sql::textLiteral(token.text, u'\''), type);
            break;
        case sql::TokenKind::Number:
            if (type == FieldType::Boolean)
                return readDouble(text) != 0;
            if (type != FieldType::Text && type != FieldType::Date)
                return fromText(text, type);
            break;
        case sql::TokenKind::Date:
            if (type == FieldType::Date)
                return dateOf(sql::dateLiteral(token.text));
            break;
        case sql::TokenKind::Name:
            if (type == FieldType::Boolean && token.keyword == sql::Keyword::True)
                return true;
            if (type == FieldType::Boolean && token.keyword == sql::Keyword::False)
                return false;
            break;
        default:
            break;
        }
        throw data_errors::wrongArguments();
    }

    static Value dateOf(const std::optional<QDateTime> &date)
    {
        return date ? Value(*date) : throw data_errors::wrongArguments();
    }

    static Value fromText(const QString &text, FieldType type)
    {
        switch (type) {
        case FieldType::Text:
            return text;
        case FieldType::Date:
            return readDate(text);
        case FieldType::Boolean:
            return toBoolean(text);
        case FieldType::Money:
            return readMoney(text);
        default:
            return readDouble(text);
        }
    }

    sql::Lexer m_lexer;
    sql::Token m_token;
    const std::vector<FieldInfo> &m_fields;
};

RowCondition::RowCondition(const QString &text, const std::vector<FieldInfo> &fields, Form form)
    : m_root(ConditionParser(text, fields).parse(form))
{
}

bool RowCondition::matches(const Rows &rows, int row) const
{
    return holds(m_root, rows, row);
}

bool RowCondition::holds(const Node &node, const Rows &rows, int row)
{
    const auto holdsPart = [&](const Node &part) { return holds(part, rows, row); };
    switch (node.kind) {
    case Node::Kind::All:
        return std::ranges::all_of(node.parts, holdsPart);
    case Node::Kind::Any:
        return std::ranges::any_of(node.parts, holdsPart);
    case Node::Kind::One:
        return holds(node.clause, rows, row);
    }
    Q_UNREACHABLE();
}

bool RowCondition::holds(const Clause &clause, const Rows &rows, int row)
{
    const bool isNull = rows.isNull(row, clause.field);
    const qint64 held = rows.number(row, clause.field);
    switch (clause.value.kind()) {
    case Value::Kind::Null:
        return isNull == (clause.comparison == Comparison::Equal);
    case Value::Kind::Text:
        return !isNull && holdsText(clause, rows, int(held));
    case Value::Kind::Double:
        return !isNull &&
               fulfils(clause.comparison, order(rows.real(row, clause.field), clause.value.toDouble()));
    default:
        return !isNull && fulfils(clause.comparison, order(held, clause.number));
    }
}

bool RowCondition::holdsText(const Clause &clause, const Rows &rows, int text)
{
    if (clause.outcomes.size() <= std::size_t(text))
        clause.outcomes.resize(std::size_t(rows.texts().count()));
    signed char &outcome = clause.outcomes[std::size_t(text)];
    if (outcome == 0)
        outcome = textFulfils(rows.texts().text(text), clause.comparison, clause.value.toText()) ? 1 : -1;
    return outcome > 0;
}

} // namespace database
