#include "platform/database/sql/emitter.h"

#include "platform/database/errors.h"
#include "platform/database/sql/ddl.h"
#include "platform/database/sql/storage.h"

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sql
{

using bound::Expression;
using bound::Operator;
using Kind = bound::Expression::Kind;

namespace
{

// Operands that bind less tightly than the place they stand at are put into parentheses, and only those: the
// engine's parser has a stack of a hundred entries.
enum Level {
    LevelAny,
    LevelOr,
    LevelAnd,
    LevelNot,
    LevelCompare,
    LevelOperand,
    LevelAdd,
    LevelMultiply,
    LevelJoin,
    LevelAtom
};

constexpr qsizetype maximumText = 100'000;   ///< swapped bounds double their texts
constexpr qsizetype maximumParameters = 900; ///< the engine takes 999

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

class Emitter
{
public:
    /// With a target, columns of source 0 are written with that table's name: the engine knows no alias
    /// there.
    explicit Emitter(const CatalogTable *target = nullptr) : m_target(target) { m_step.text.reserve(512); }

    void select(const bound::Select &select, bool withRowid);
    void insert(const bound::Statement &statement);
    void insertSelected(const bound::Statement &statement);
    void update(const bound::Statement &statement);
    void deleteRows(const bound::Statement &statement);
    Step take() { return std::move(m_step); }

private:
    void write(const char *text) { m_step.text += text; }
    void write(const QByteArray &text) { m_step.text += text; }
    void source(int number, const char *behind);
    void parameter(Parameter value);
    void where(const std::optional<Expression> &condition);
    void columnList(const std::vector<bound::Assignment> &assignments, const CatalogColumn *counter);

    void value(const Expression &expression, Level level);
    void collated(const Expression &expression);
    void condition(const Expression &expression, Level level);
    void between(const Expression &expression, Level level);
    void comparison(const Expression &expression);
    void arithmetic(const Expression &expression, Level level);
    void cast(const Expression &expression, Level level);
    void call(const Expression &expression);

    template <typename Body>
    void enclosed(bool needed, Body body)
    {
        if (needed)
            write("(");
        body();
        if (needed)
            write(")");
    }

    const CatalogTable *m_target;
    Step m_step;
};

// --- statements

void Emitter::select(const bound::Select &select, bool withRowid)
{
    write(select.distinct ? "select distinct " : "select ");
    const char *separator = "";
    for (const bound::Item &item : select.items) {
        write(std::exchange(separator, ", "));
        if (select.distinct)
            collated(item.expression);
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
        collated(term);
    }
    separator = " order by ";
    for (const bound::OrderTerm &term : select.orderBy) {
        write(std::exchange(separator, ", "));
        if (term.position > 0) {
            write(QByteArray::number(term.position));
            if (select.items[size_t(term.position) - 1].info.type == FieldType::Text)
                write(" collate arabic");
        } else {
            collated(term.expression);
        }
        if (term.descending)
            write(" desc");
    }
    if (!select.grouped && !select.distinct) {
        write(separator);
        source(select.source, ".rowid");
    }
}

void Emitter::source(int number, const char *behind)
{
    write("t");
    write(QByteArray::number(number));
    write(behind);
}

/// Equal literals share a parameter, so that an expression written twice is one expression to the engine.
void Emitter::parameter(Parameter value)
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

// --- expressions

/// The expression as a stored value.
void Emitter::value(const Expression &expression, Level level)
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
        if (m_target != nullptr && expression.source == 0) {
            write(quotedName(m_target->name));
            write(".");
        } else {
            source(expression.source, ".");
        }
        write(quotedName(expression.column->name));
        break;
    case Kind::Cast:
        cast(expression, level);
        break;
    case Kind::Arithmetic:
        arithmetic(expression, level);
        break;
    case Kind::Iif:
        write("case when ");
        condition(expression.operands[0], LevelAny);
        write(" then ");
        value(expression.operands[1], LevelAny);
        write(" else ");
        value(expression.operands[2], LevelAny);
        write(" end");
        break;
    case Kind::Call:
        call(expression);
        break;
    case Kind::Subselect:
        write("(");
        select(*expression.select, false);
        write(")");
        break;
    default:
        Q_UNREACHABLE();
    }
}

/// The expression as a value that is compared with others: a text under the dialect's collation. A column
/// carries it already.
void Emitter::collated(const Expression &expression)
{
    const bool needed = expression.type == FieldType::Text && expression.kind != Kind::Column;
    value(expression, needed ? LevelAtom : LevelOperand);
    if (needed)
        write(" collate arabic");
}

/// The expression as a test: the engine takes every number but 0 as true.
void Emitter::condition(const Expression &expression, Level level)
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

void Emitter::comparison(const Expression &expression)
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

void Emitter::between(const Expression &expression, Level level)
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

void Emitter::arithmetic(const Expression &expression, Level level)
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
    enclosed(level > own, [&] {
        value(expression.operands[0], own);
        write(sign);
        value(expression.operands[1], Level(own + 1));
    });
}

void Emitter::cast(const Expression &expression, Level level)
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

void Emitter::call(const Expression &expression)
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
