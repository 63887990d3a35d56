#pragma once

#include "platform/database/session.h"
#include "platform/runtime/value.h"

#include <QtCore/QString>

#include <optional>
#include <utility>
#include <vector>

namespace database
{

/// The rows of one table, one by one. Columns are numbered by their place in the table; values are of their
/// column's own type.
class TableAccess
{
public:
    struct Cell {
        int column;
        Value value;
    };
    /// Where a row was found. The engine may give a removed row's id to a new one, so the cells that never
    /// come back (a counter's number) belong to it.
    struct Key {
        qint64 rowid;
        std::vector<Cell> identity;
    };
    /// @throws RuntimeError "cannot find the input table" when the table is gone
    TableAccess(Session &session, const QString &table);

    /// The place of a column. @throws RuntimeError 3265
    int column(const QString &name) const;
    /// What a new row holds before anything is set: the default of each column.
    std::vector<Value> defaults() const;

    /// Writes a new row. The given cells are completed by the columns' defaults and a drawn counter. Returns
    /// the row's id and all its cells.
    std::pair<qint64, std::vector<Value>> insert(const std::vector<Cell> &cells);
    /// @throws RuntimeError -2147217864 when there is no such row
    void update(const Key &key, const std::vector<Cell> &cells);
    /// All cells of a row; nothing when there is no such row.
    std::optional<std::vector<Value>> read(const Key &key);

private:
    const sql::CatalogColumn &at(int column) const { return m_table.columns[std::size_t(column)]; }
    void add(sql::Step &step, const Cell &cell, const char *separator, const char *sign) const;
    void addKey(sql::Step &step, const Key &key) const;

    Session &m_session;
    sql::CatalogTable m_table; // a copy: the catalogue is read anew when a write fails
};

} // namespace database
