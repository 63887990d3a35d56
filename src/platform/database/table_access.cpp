#include "platform/database/table_access.h"

#include "platform/database/errors.h"
#include "platform/database/sql/ddl.h"
#include "platform/database/sql/storage.h"

namespace database
{

namespace
{

sql::CatalogTable tableNamed(Session &session, const QString &name)
{
    if (const sql::CatalogTable *table = session.catalog().find(name))
        return *table;
    throw data_errors::unknownTable(name);
}

} // namespace

TableAccess::TableAccess(Session &session, const QString &table)
    : m_session(session), m_table(tableNamed(session, table))
{
}

int TableAccess::column(const QString &name) const
{
    const sql::CatalogColumn *found = m_table.find(name);
    if (!found)
        throw data_errors::noSuchItem();
    return int(found - m_table.columns.data());
}

std::vector<Value> TableAccess::defaults() const
{
    std::vector<Value> values;
    for (const sql::CatalogColumn &column : m_table.columns)
        values.push_back(column.type == FieldType::Boolean ? Value(column.defaultTrue) : Value());
    return values;
}

std::pair<qint64, std::vector<Value>> TableAccess::insert(const std::vector<Cell> &cells)
{
    std::vector<Value> values = defaults();
    for (const Cell &cell : cells)
        values[std::size_t(cell.column)] = cell.value;

    sql::Step row{"insert into " + sql::quotedName(m_table.name) + " values (", {}};
    std::vector<sql::Step> steps;
    std::vector<sql::Step> behind;
    for (std::size_t index = 0; index < values.size(); ++index) {
        const sql::CatalogColumn &column = m_table.columns[index];
        if (index > 0)
            row.text += ',';
        if (column.counter && values[index].isNull()) {
            steps.push_back(sql::drawCounterStep(m_table.name));
            row.parameters.push_back(m_table.name.toUtf8());
            row.text += "(select last from system_counters where table_name = ?" +
                        QByteArray::number(qsizetype(row.parameters.size())) + ')';
            continue;
        }
        if (column.counter) // a number of the caller's own
            behind.push_back(sql::raiseCounterStep(m_table.name, column.name));
        row.parameters.push_back(sql::toStorage(values[index], column.type));
        row.text += '?' + QByteArray::number(qsizetype(row.parameters.size()));
    }
    row.text += ')';
    steps.push_back(std::move(row));
    steps.insert(steps.end(), behind.begin(), behind.end());
    m_session.write(steps);

    const qint64 rowid = m_session.engine().lastRowid();
    const auto written = read({rowid, {}});
    if (!written)
        throw data_errors::rowNotLocated();
    return {rowid, *written};
}

void TableAccess::update(const Key &key, const std::vector<Cell> &cells)
{
    sql::Step step{"update " + sql::quotedName(m_table.name), {}};
    for (const Cell &cell : cells)
        add(step, cell, &cell == &cells.front() ? " set " : ",", " = ?");
    addKey(step, key);
    m_session.write({step});
    if (m_session.engine().changes() == 0)
        throw data_errors::rowNotLocated();
}

std::optional<std::vector<Value>> TableAccess::read(const Key &key)
{
    sql::Step step{"select * from " + sql::quotedName(m_table.name), {}};
    addKey(step, key);
    Run run(m_session.prepared(step.text), step.parameters);
    if (!run.next())
        return std::nullopt;
    std::vector<Value> values;
    for (const sql::CatalogColumn &column : m_table.columns)
        values.push_back(sql::fromStorage(run.column(int(values.size())), column.type));
    return values;
}

void TableAccess::add(sql::Step &step, const Cell &cell, const char *separator, const char *sign) const
{
    step.parameters.push_back(sql::toStorage(cell.value, at(cell.column).type));
    step.text += separator + sql::quotedName(at(cell.column).name) + sign +
                 QByteArray::number(qsizetype(step.parameters.size()));
}

void TableAccess::addKey(sql::Step &step, const Key &key) const
{
    step.parameters.push_back(key.rowid);
    step.text += " where rowid = ?" + QByteArray::number(qsizetype(step.parameters.size()));
    for (const Cell &cell : key.identity)
        add(step, cell, " and ", " is ?");
}

} // namespace database
