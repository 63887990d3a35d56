#include "platform/database/sql/binder.h"

#include "platform/database/errors.h"
#include "platform/database/sql/conversions.h"
#include "platform/database/sql/expression_binder.h"

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sql
{

using bound::Expression;
using Aggregates = ExpressionBinder::Aggregates;
using Kind = bound::Expression::Kind;
using Syntax = syntax::Expression::Kind;

namespace
{

constexpr int fixedAttributes = 122;
constexpr int textAttributes = 106;

bool hasAggregate(const Expression &expression)
{
    return expression.aggregate ||
           std::any_of(expression.operands.begin(), expression.operands.end(), hasAggregate);
}

RuntimeError duplicateDestination(QStringView column)
{
    return data_errors::syntax(u"Duplicate output destination '%1'."_s.arg(column));
}

RuntimeError countsDiffer()
{
    return data_errors::syntax(u"Number of query values and destination fields are not the same."_s);
}

class Binder
{
public:
    explicit Binder(const Catalog &catalog) : m_catalog(catalog) {}

    bound::Statement operator()(const syntax::Select &select);
    bound::Statement operator()(const syntax::Insert &insert);
    bound::Statement operator()(const syntax::Update &update);
    bound::Statement operator()(const syntax::Delete &deletion);
    bound::Statement operator()(const syntax::DropTable &drop);

private:
    const CatalogTable *table(QStringView name) const;
    const CatalogTable *writableTable(QStringView name) const;
    const CatalogColumn *target(const CatalogTable &table, QStringView name,
                                const std::vector<const CatalogColumn *> &taken) const;
    std::vector<const CatalogColumn *> targets(const CatalogTable &table,
                                               const std::vector<QStringView> &names) const;
    void checkNewTable(QStringView name, const std::vector<bound::Item> &items) const;
    void assignSelected(bound::Statement &statement, const syntax::Insert &insert);

    bound::Select select(const syntax::Select &select, const Scope *outer);
    void bindItem(const syntax::SelectItem &item, const Scope &scope, bound::Select &select);
    bound::OrderTerm orderTerm(const syntax::OrderTerm &term, const Scope &scope,
                               const bound::Select &select);
    int aliasPosition(const syntax::Expression &name, const bound::Select &select) const;
    int itemPosition(const Expression &expression, const bound::Select &select) const;
    void completeOrder(bound::Select &select) const;
    void checkGrouping(const bound::Select &select, const Expression &expression, QStringView name) const;

    const Catalog &m_catalog;
    int m_sources = 0;
    int m_unnamed = 1000; ///< columns without a name are Expr1000, Expr1001 ...
    ExpressionBinder m_expressions{
        [this](const syntax::Select &inner, const Scope &outer) { return select(inner, &outer); }};
};

// --- tables and target columns

const CatalogTable *Binder::table(QStringView name) const
{
    const CatalogTable *found = m_catalog.find(name);
    if (found == nullptr)
        throw data_errors::unknownTable(name.toString());
    return found;
}

/// The store's own tables can be read, never written by a statement.
const CatalogTable *Binder::writableTable(QStringView name) const
{
    const CatalogTable *found = table(name);
    if (found->system)
        throw data_errors::unknownTable(name.toString());
    return found;
}

const CatalogColumn *Binder::target(const CatalogTable &table, QStringView name,
                                    const std::vector<const CatalogColumn *> &taken) const
{
    const CatalogColumn *column = table.find(name);
    if (column == nullptr)
        throw data_errors::unknownParameter();
    if (std::find(taken.begin(), taken.end(), column) != taken.end())
        throw duplicateDestination(name);
    return column;
}

std::vector<const CatalogColumn *> Binder::targets(const CatalogTable &table,
                                                   const std::vector<QStringView> &names) const
{
    std::vector<const CatalogColumn *> columns;
    if (names.empty()) {
        for (const CatalogColumn &column : table.columns)
            columns.push_back(&column);
    }
    for (const QStringView name : names)
        columns.push_back(target(table, name, columns));
    return columns;
}

// --- statements

bound::Statement Binder::operator()(const syntax::Select &selection)
{
    bound::Statement result;
    if (!selection.into.isEmpty())
        result.kind = StatementKind::SelectInto;
    result.select = select(selection, nullptr);
    if (result.kind == StatementKind::Select)
        return result;
    checkNewTable(selection.into, result.select->items);
    result.newTable.name = selection.into.toString();
    for (const bound::Item &item : result.select->items) {
        CatalogColumn column;
        column.name = item.info.name;
        column.type = item.info.type;
        column.size = item.info.definedSize;
        result.newTable.columns.push_back(std::move(column));
    }
    for (size_t index = 0; index < result.select->items.size(); ++index) {
        Expression &expression = result.select->items[index].expression;
        expression = assigned(std::move(expression), result.newTable.columns[index]);
    }
    return result;
}

void Binder::checkNewTable(QStringView name, const std::vector<bound::Item> &items) const
{
    if (m_catalog.find(name) != nullptr)
        throw data_errors::tableExists(name.toString());
    // The beginnings are the engine's and the store's own.
    const auto isControl = [](QChar character) { return character < u' '; };
    if (std::any_of(name.begin(), name.end(), isControl) ||
        name.startsWith("sqlite_"_L1, Qt::CaseInsensitive) ||
        name.startsWith("system_"_L1, Qt::CaseInsensitive))
        throw data_errors::syntax(u"'%1' is not a valid name."_s.arg(name));
    for (size_t index = 0; index < items.size(); ++index) {
        for (size_t before = 0; before < index; ++before) {
            if (items[before].info.name.compare(items[index].info.name, Qt::CaseInsensitive) == 0)
                throw duplicateDestination(items[index].info.name);
        }
    }
}

bound::Statement Binder::operator()(const syntax::Insert &insert)
{
    bound::Statement result;
    result.table = writableTable(insert.table);
    if (insert.select) {
        result.kind = StatementKind::InsertSelect;
        assignSelected(result, insert);
        return result;
    }
    result.kind = StatementKind::Insert;
    const std::vector<const CatalogColumn *> columns = targets(*result.table, insert.columns);
    if (columns.size() != insert.values.size())
        throw countsDiffer();
    const Scope scope;
    for (size_t index = 0; index < columns.size(); ++index) {
        Expression value = m_expressions.bind(insert.values[index], scope);
        result.assignments.push_back({columns[index], assigned(std::move(value), *columns[index])});
    }
    return result;
}

/// INSERT ... SELECT: by position into the named columns, by name where none are named.
void Binder::assignSelected(bound::Statement &statement, const syntax::Insert &insert)
{
    statement.select = select(*insert.select, nullptr);
    std::vector<bound::Item> &items = statement.select->items;
    std::vector<const CatalogColumn *> columns;
    if (insert.columns.empty()) {
        for (const bound::Item &item : items)
            columns.push_back(target(*statement.table, item.info.name, columns));
    } else {
        columns = targets(*statement.table, insert.columns);
        if (columns.size() != items.size())
            throw countsDiffer();
    }
    for (size_t index = 0; index < items.size(); ++index) {
        statement.assignments.push_back({columns[index], {}});
        items[index].expression = assigned(std::move(items[index].expression), *columns[index]);
    }
}

bound::Statement Binder::operator()(const syntax::Update &update)
{
    bound::Statement result;
    result.kind = StatementKind::Update;
    result.table = writableTable(update.table);
    const Scope scope{.table = result.table, .alias = {}, .source = m_sources++, .outer = nullptr};
    std::vector<const CatalogColumn *> taken;
    for (const syntax::Assignment &assignment : update.assignments) {
        const CatalogColumn *column = target(*result.table, assignment.column, taken);
        if (column->counter)
            throw data_errors::syntax(u"Cannot update '%1'; field not updateable."_s.arg(column->name));
        taken.push_back(column);
        Expression value = m_expressions.bind(assignment.value, scope);
        result.assignments.push_back({column, assigned(std::move(value), *column)});
    }
    if (update.where)
        result.where = m_expressions.bindCondition(*update.where, scope);
    return result;
}

bound::Statement Binder::operator()(const syntax::Delete &deletion)
{
    bound::Statement result;
    result.kind = StatementKind::Delete;
    result.table = writableTable(deletion.table);
    const Scope scope{.table = result.table, .alias = {}, .source = m_sources++, .outer = nullptr};
    if (deletion.where)
        result.where = m_expressions.bindCondition(*deletion.where, scope);
    return result;
}

bound::Statement Binder::operator()(const syntax::DropTable &drop)
{
    bound::Statement result;
    result.kind = StatementKind::DropTable;
    result.table = writableTable(drop.table);
    return result;
}

// --- SELECT

bound::Select Binder::select(const syntax::Select &selection, const Scope *outer)
{
    bound::Select result;
    result.distinct = selection.distinct;
    result.table = table(selection.from.name);
    result.source = m_sources++;
    const Scope scope{
        .table = result.table, .alias = selection.from.alias, .source = result.source, .outer = outer};
    if (selection.where)
        result.where = m_expressions.bindCondition(*selection.where, scope);
    for (const syntax::Expression &term : selection.groupBy)
        result.groupBy.push_back(m_expressions.bind(term, scope.alone()));
    result.items.reserve(selection.items.size());
    for (const syntax::SelectItem &item : selection.items)
        bindItem(item, scope, result);
    result.grouped = !result.groupBy.empty() ||
                     std::any_of(result.items.begin(), result.items.end(),
                                 [](const bound::Item &item) { return hasAggregate(item.expression); });
    for (const syntax::OrderTerm &term : selection.orderBy)
        result.orderBy.push_back(orderTerm(term, scope, result));
    if (result.grouped) {
        for (const bound::Item &item : result.items)
            checkGrouping(result, item.expression, item.info.name);
    }
    completeOrder(result);
    return result;
}

void Binder::bindItem(const syntax::SelectItem &item, const Scope &scope, bound::Select &select)
{
    const auto add = [&select](Expression expression, QString name) {
        FieldInfo info;
        info.name = std::move(name);
        info.type = expression.type;
        info.definedSize = expression.size;
        info.attributes = expression.type == FieldType::Text ? textAttributes : fixedAttributes;
        if (expression.kind == Kind::Column) {
            info.baseTable = expression.table->name;
            info.baseColumn = expression.column->name;
            info.counter = expression.column->counter;
        }
        select.items.push_back({std::move(expression), std::move(info)});
    };
    if (!item.star) {
        Expression expression = m_expressions.bind(item.expression, scope, Aggregates::Allowed);
        QString name;
        if (!item.alias.isEmpty())
            name = item.alias.toString();
        else if (expression.kind == Kind::Column)
            name = item.expression.text.toString();
        else
            name = u"Expr%1"_s.arg(m_unnamed++);
        add(std::move(expression), std::move(name));
        return;
    }
    const QStringView own = scope.alias.isEmpty() ? QStringView(select.table->name) : scope.alias;
    if (!item.starQualifier.isEmpty() && own.compare(item.starQualifier, Qt::CaseInsensitive) != 0)
        throw data_errors::unknownParameter();
    for (const CatalogColumn &column : select.table->columns) {
        Expression expression;
        expression.kind = Kind::Column;
        expression.type = column.type;
        expression.size = column.size;
        expression.source = select.source;
        expression.table = select.table;
        expression.column = &column;
        add(std::move(expression), column.name);
    }
}

/// The position of the result column that a bare name stands for as an alias; 0 for none.
int Binder::aliasPosition(const syntax::Expression &name, const bound::Select &select) const
{
    if (name.kind != Syntax::Column || !name.qualifier.isEmpty())
        return 0;
    for (size_t index = 0; index < select.items.size(); ++index) {
        if (name.text.compare(select.items[index].info.name, Qt::CaseInsensitive) == 0)
            return int(index) + 1;
    }
    return 0;
}

int Binder::itemPosition(const Expression &expression, const bound::Select &select) const
{
    for (size_t index = 0; index < select.items.size(); ++index) {
        if (equal(expression, select.items[index].expression))
            return int(index) + 1;
    }
    return 0;
}

bound::OrderTerm Binder::orderTerm(const syntax::OrderTerm &term, const Scope &scope,
                                   const bound::Select &select)
{
    bound::OrderTerm result;
    result.descending = term.descending;
    const syntax::Expression &written = term.expression;
    if (written.kind == Syntax::Number) {
        bool number = false;
        result.position = written.text.toInt(&number);
        if (!number || result.position < 1 || size_t(result.position) > select.items.size())
            throw data_errors::syntax(u"Syntax error in ORDER BY clause: '%1'."_s.arg(written.source));
        return result;
    }
    // A column of the table comes before an alias, except where the rows are no rows of the table any more.
    const int alias = aliasPosition(written, select);
    const bool ownColumn = written.kind == Syntax::Column && select.table->find(written.text) != nullptr;
    if (alias > 0 && !ownColumn) {
        result.position = alias;
        return result;
    }
    result.expression = m_expressions.bind(written, scope.alone(), Aggregates::Allowed);
    if (select.distinct) {
        const int position = itemPosition(result.expression, select);
        result.position = position > 0 ? position : alias;
        if (result.position == 0)
            throw data_errors::syntax(u"ORDER BY clause (%1) conflicts with DISTINCT."_s.arg(written.source));
    } else if (select.grouped) {
        try {
            checkGrouping(select, result.expression, written.source);
        } catch (const RuntimeError &) {
            if (alias == 0)
                throw;
            result.position = alias;
        }
    }
    return result;
}

void Binder::completeOrder(bound::Select &select) const
{
    if (select.grouped && select.groupBy.empty()) {
        select.orderBy.clear(); // one row
        return;
    }
    if (select.distinct) {
        for (int position = 1; position <= int(select.items.size()); ++position) {
            if (std::none_of(select.orderBy.begin(), select.orderBy.end(),
                             [position](const bound::OrderTerm &term) { return term.position == position; }))
                select.orderBy.push_back({.position = position, .expression = {}, .descending = false});
        }
        return;
    }
    for (const Expression &group : select.groupBy) {
        if (std::none_of(select.orderBy.begin(), select.orderBy.end(),
                         [&group](const bound::OrderTerm &term) {
                             return term.position == 0 && equal(term.expression, group);
                         }))
            select.orderBy.push_back({.position = 0, .expression = group, .descending = false});
    }
}

/// Every column of the group's own table must stand in a group term or an aggregate.
void Binder::checkGrouping(const bound::Select &select, const Expression &expression, QStringView name) const
{
    if (expression.aggregate || std::any_of(select.groupBy.begin(), select.groupBy.end(),
                                            [&](const auto &group) { return equal(expression, group); }))
        return;
    if (expression.kind == Kind::Column && expression.source == select.source)
        throw data_errors::syntax(
            u"You tried to execute a query that does not include the specified expression "
            "'%1' as part of an aggregate function."_s.arg(name));
    for (const Expression &operand : expression.operands)
        checkGrouping(select, operand, name);
}

} // namespace

bound::Statement bindStatement(const syntax::Statement &statement, const Catalog &catalog)
{
    return std::visit(Binder(catalog), statement);
}

} // namespace sql
