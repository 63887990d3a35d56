#pragma once

#include "platform/database/session.h"
#include "platform/runtime/value.h"

#include <QtCore/QString>

#include <vector>

namespace database
{

/// Writes single rows of one table, found by their row ids. Values are of their column's own type.
class RowWriter
{
public:
    struct Cell {
        int column; ///< its place in table()
        Value value;
    };
    /// @throws RuntimeError "cannot find the input table" when the table is gone
    RowWriter(Session &session, const QString &table);

    const sql::CatalogTable &table() const noexcept { return m_table; }
    /// The place of a column in the table. @throws RuntimeError 3265
    int column(const QString &name) const;

    /// What a new row holds before anything is set: the default of each column of the table, in order.
    std::vector<Value> defaults() const;
    /// Writes a new row. The given cells are completed by the columns' defaults and a drawn counter. Returns
    /// the row's id and all cells of the table, in order.
    std::pair<qint64, std::vector<Value>> insert(const std::vector<Cell> &cells);
    /// Changes cells of the row of that id, provided that the columns of `identity` still hold those values.
    /// @throws RuntimeError -2147217864 when there is no such row
    void update(qint64 rowid, const std::vector<Cell> &cells, const std::vector<Cell> &identity);

private:
    const sql::CatalogColumn &at(int column) const { return m_table.columns[std::size_t(column)]; }
    qint32 drawCounter();

    Session &m_session;
    sql::CatalogTable m_table; // a copy: the catalogue may be read anew under a failing write
};

} // namespace database
