#include "platform/database/sql/emitter.h"

#include "platform/database/sql/conversions.h"
#include "platform/database/sql/ddl.h"
#include "platform/database/sql/expression_emitter.h"
#include "platform/database/sql/storage.h"

#include <algorithm>
#include <utility>

namespace sql
{

using bound::Expression;

namespace
{

class Emitter : public ExpressionEmitter
{
public:
    explicit Emitter(const CatalogTable *target = nullptr) : ExpressionEmitter(target) {}

    void select(const bound::Select &select, bool withRowid);
    void insert(const bound::Statement &statement);
    void insertSelected(const bound::Statement &statement);
    void update(const bound::Statement &statement);
    void deleteRows(const bound::Statement &statement);
    Step take() { return std::move(m_step); }

private:
    void subselect(const bound::Select &inner) override { select(inner, false); }
    void item(const Expression &expression);
    void where(const std::optional<Expression> &condition);
    void sortKey(const Expression &expression);
    void columnList(const std::vector<bound::Assignment> &assignments, const CatalogColumn *counter);
};

/// The column of the outer row that alone decides what a sub-select of the form `select column from table
/// where column = outer column` gives, all of whole numbers but the first; null for any other expression.
const Expression *outerKey(const Expression &expression)
{
    if (expression.kind != Expression::Kind::Subselect)
        return nullptr;
    const bound::Select &inner = *expression.select;
    const auto isInner = [&](const Expression &part) {
        return part.kind == Expression::Kind::Column && part.source == inner.source;
    };
    if (inner.distinct || !inner.orderBy.empty() || !isInner(inner.items.front().expression) ||
        !inner.where || inner.where->kind != Expression::Kind::Compare ||
        inner.where->op != bound::Operator::Equal)
        return nullptr;
    const Expression *inside = &inner.where->operands[0];
    const Expression *outside = &inner.where->operands[1];
    if (isInner(*outside))
        std::swap(inside, outside);
    const bool wholeNumbers = inside->type == FieldType::Long && outside->type == FieldType::Long;
    const bool isKey = outside->kind == Expression::Kind::Column && !isInner(*outside);
    return wholeNumbers && isInner(*inside) && isKey ? outside : nullptr;
}

// --- statements

void Emitter::select(const bound::Select &select, bool withRowid)
{
    write(select.distinct ? "select distinct " : "select ");
    const char *separator = "";
    for (const bound::Item &item : select.items) {
        write(std::exchange(separator, ", "));
        if (select.distinct)
            collated(item.expression);
        else if (withRowid)
            this->item(item.expression);
        else
            value(item.expression, LevelAny);
    }
    if (withRowid) {
        write(", ");
        source(select.source, ".rowid");
    }
    write(" from ");
    write(quotedName(select.table->name));
    write(" as ");
    source(select.source, "");
    where(select.where);
    separator = " group by ";
    for (const Expression &term : select.groupBy) {
        write(std::exchange(separator, ", "));
        sortKey(term);
    }
    separator = " order by ";
    for (const bound::OrderTerm &term : select.orderBy) {
        write(std::exchange(separator, ", "));
        if (term.position > 0) {
            write(QByteArray::number(term.position));
            if (select.items[size_t(term.position) - 1].info.type == FieldType::Text)
                write(" collate arabic");
        } else {
            sortKey(term.expression);
        }
        if (term.descending)
            write(" desc");
    }
    if (!select.grouped && !select.distinct) {
        write(separator);
        source(select.source, ".rowid");
    }
}

/// A field of a record set. What the rows look up in another table by a number, such as the word for it, is
/// read once for each number: the engine itself would open that table anew for each row.
void Emitter::item(const Expression &expression)
{
    const Expression *key = outerKey(expression);
    if (key == nullptr)
        return value(expression, LevelAny);
    bound::Select inner = *expression.select;
    inner.where->operands[key == &expression.select->where->operands[0] ? 0 : 1] =
        literal(0, FieldType::Long);
    Emitter looking;
    looking.select(inner, false);
    write("q_lookup(");
    parameter(looking.take().text);
    write(", ");
    value(*key, LevelAny);
    write(")");
}

/// An expression of GROUP BY or ORDER BY. A written number would be the place of a result column there.
void Emitter::sortKey(const Expression &expression)
{
    if (expression.kind == Expression::Kind::Literal)
        parameter(toStorage(expression.literal, expression.type));
    else
        collated(expression);
}

void Emitter::where(const std::optional<Expression> &test)
{
    if (!test)
        return;
    write(" where ");
    condition(*test, LevelAny);
}

void Emitter::columnList(const std::vector<bound::Assignment> &assignments, const CatalogColumn *counter)
{
    const char *separator = " (";
    for (const bound::Assignment &assignment : assignments) {
        write(std::exchange(separator, ", "));
        write(quotedName(assignment.column->name));
    }
    if (counter != nullptr) {
        write(separator);
        write(quotedName(counter->name));
    }
    write(")");
}

/// Where the counter's column is not given, its number has been drawn by the step before.
void Emitter::insert(const bound::Statement &statement)
{
    const CatalogColumn *drawn = nullptr;
    for (const CatalogColumn &column : statement.table->columns) {
        const bool given =
            std::any_of(statement.assignments.begin(), statement.assignments.end(),
                        [&column](const auto &assignment) { return assignment.column == &column; });
        if (column.counter && !given)
            drawn = &column;
    }
    write("insert into ");
    write(quotedName(statement.table->name));
    columnList(statement.assignments, drawn);
    const char *separator = " values (";
    for (const bound::Assignment &assignment : statement.assignments) {
        write(std::exchange(separator, ", "));
        value(assignment.value, LevelAny);
    }
    if (drawn != nullptr) {
        write(separator);
        write("(select last from system_counters where table_name = ");
        parameter(statement.table->name.toUtf8());
        write(")");
    }
    write(")");
}

void Emitter::insertSelected(const bound::Statement &statement)
{
    write("insert into ");
    if (statement.kind == StatementKind::SelectInto) {
        write(quotedName(statement.newTable.name));
    } else {
        write(quotedName(statement.table->name));
        columnList(statement.assignments, nullptr);
    }
    write(" ");
    select(*statement.select, false);
}

void Emitter::update(const bound::Statement &statement)
{
    write("update ");
    write(quotedName(statement.table->name));
    const char *separator = " set ";
    for (const bound::Assignment &assignment : statement.assignments) {
        write(std::exchange(separator, ", "));
        write(quotedName(assignment.column->name));
        write(" = ");
        value(assignment.value, LevelAny);
    }
    where(statement.where);
}

void Emitter::deleteRows(const bound::Statement &statement)
{
    write("delete from ");
    write(quotedName(statement.table->name));
    where(statement.where);
}

// --- the steps of a statement

const CatalogColumn *counterColumn(const CatalogTable &table)
{
    const auto found = std::find_if(table.columns.begin(), table.columns.end(),
                                    [](const CatalogColumn &column) { return column.counter; });
    return found == table.columns.end() ? nullptr : &*found;
}

void emitSelect(bound::Statement &statement, Compiled &result)
{
    Emitter emitter;
    const bool ofOneTable = !statement.select->grouped && !statement.select->distinct;
    emitter.select(*statement.select, ofOneTable);
    if (ofOneTable)
        result.baseTable = statement.select->table->name;
    for (bound::Item &item : statement.select->items)
        result.columns.push_back(std::move(item.info));
    result.steps.push_back(emitter.take());
}

void emitSelectInto(const bound::Statement &statement, Compiled &result)
{
    Emitter emitter;
    emitter.insertSelected(statement);
    result.steps.push_back({createTableText(statement.newTable, TableForm::Copy), {}});
    result.steps.push_back(emitter.take());
    result.changesSchema = true;
}

void emitInsert(const bound::Statement &statement, Compiled &result)
{
    Emitter emitter;
    emitter.insert(statement);
    const CatalogColumn *counter = counterColumn(*statement.table);
    const bool given =
        std::any_of(statement.assignments.begin(), statement.assignments.end(),
                    [counter](const auto &assignment) { return assignment.column == counter; });
    if (counter != nullptr && !given)
        result.steps.push_back(drawCounterStep(statement.table->name));
    result.steps.push_back(emitter.take());
    if (counter != nullptr && given)
        result.steps.push_back(raiseCounterStep(statement.table->name, counter->name));
}

void emitInsertSelect(const bound::Statement &statement, Compiled &result)
{
    Emitter emitter;
    emitter.insertSelected(statement);
    result.steps.push_back(emitter.take());
    const CatalogColumn *counter = counterColumn(*statement.table);
    if (counter == nullptr)
        return;
    // Numbers that came with their rows count first; rows without one then get theirs in their order.
    const Step raise = raiseCounterStep(statement.table->name, counter->name);
    const QByteArray table = quotedName(statement.table->name);
    const QByteArray column = quotedName(counter->name);
    result.steps.push_back(raise);
    result.steps.push_back({"update " + table + " set " + column +
                                " = (select last from system_counters where table_name = ?1) + rowid - "
                                "(select min(rowid) from " +
                                table + " where " + column + " is null) + 1 where " + column + " is null",
                            {statement.table->name.toUtf8()}});
    result.steps.push_back(raise);
}

} // namespace

Compiled emitStatement(bound::Statement statement)
{
    Compiled result;
    result.kind = statement.kind;
    Emitter onTarget(statement.table);
    switch (statement.kind) {
    case StatementKind::Select:
        emitSelect(statement, result);
        break;
    case StatementKind::SelectInto:
        emitSelectInto(statement, result);
        break;
    case StatementKind::Insert:
        emitInsert(statement, result);
        break;
    case StatementKind::InsertSelect:
        emitInsertSelect(statement, result);
        break;
    case StatementKind::Update:
        onTarget.update(statement);
        result.steps.push_back(onTarget.take());
        break;
    case StatementKind::Delete:
        onTarget.deleteRows(statement);
        result.steps.push_back(onTarget.take());
        break;
    case StatementKind::DropTable:
        result.steps.push_back({"drop table " + quotedName(statement.table->name), {}});
        if (counterColumn(*statement.table) != nullptr)
            result.steps.push_back(dropCounterStep(statement.table->name));
        result.changesSchema = true;
        break;
    }
    return result;
}

} // namespace sql
