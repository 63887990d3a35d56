#include "platform/database/sql/parser.h"

#include "platform/database/sql/expression_parser.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;
using namespace sql::syntax;

namespace sql
{

namespace
{

constexpr int maximumColumns = 255;

QString selectWords()
{
    return u"The SELECT statement includes a reserved word or an argument name that is misspelled or "
           u"missing, "
           "or the punctuation is incorrect."_s;
}

class Parser : public ExpressionParser
{
public:
    explicit Parser(QStringView text) : ExpressionParser(text) {}

    Statement statement();

private:
    enum class Into { Refused, Allowed };
    Select select(Into into);
    Select subselect() override { return select(Into::Refused); }
    SelectItem selectItem();
    TableName tableName();
    std::optional<Expression> where();
    Insert insert();
    Update update();
    Delete deleteRows();
    DropTable dropTable();
};

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
    const bool ended = take(u';');
    if (!atEnd() && !ended && std::holds_alternative<Select>(result))
        fail(selectWords());
    if (!atEnd())
        fail(u"Characters found after end of SQL statement."_s);
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
            if (result.groupBy.size() == maximumColumns)
                failComplexity();
            result.groupBy.push_back(clauseExpression(u"Syntax error in GROUP BY clause."_s));
        } while (take(u','));
    }
    if (isClause(Keyword::Order)) {
        advance();
        advance();
        do {
            if (result.orderBy.size() == maximumColumns)
                failComplexity();
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
        result.select = std::make_shared<Select>(subselect());
        return result;
    }
    expect(Keyword::Values, words);
    expect(u'(', words);
    do {
        if (result.values.size() == maximumColumns)
            fail(u"Too many fields defined."_s);
        result.values.push_back(clauseExpression(words));
        if (!is(u',') && !is(u')'))
            failOperator();
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

} // namespace

Statement parse(QStringView text)
{
    return Parser(text).statement();
}

} // namespace sql
