#pragma once

#include "platform/database/engine.h"
#include "platform/database/field.h"
#include "platform/runtime/value.h"

#include <QtCore/QHash>

#include <functional>
#include <optional>
#include <variant>
#include <vector>

namespace database
{

/// The rows of a result set, held by column: numbers as numbers, dates as seconds, texts as indexes into one
/// list of the set's texts. Rows and columns count from 0.
class Rows
{
public:
    Rows(std::vector<FieldInfo> fields, bool withRowids);

    /// Reads a run to its end. Where the rows have an id it stands behind the fields. `progress`, if there is
    /// one, is called now and then with the rows read so far. @throws RuntimeError
    void read(Run &run, const std::function<void(int rows)> &progress);

    const std::vector<FieldInfo> &fields() const noexcept { return m_fields; }
    int count() const noexcept { return m_count; }
    /// The id of the row in its table, where the rows are those of one table.
    std::optional<qint64> rowid(int row) const;

    Value value(int row, int column) const;
    /// The number in a field that is no text and no double: money in ten-thousandths, a date in seconds since
    /// 1970, a Boolean as -1 or 0. None for Null.
    std::optional<qint64> number(int row, int column) const;
    /// The index of a text among texts(); -1 for Null. Equal texts of rows that were read have one index.
    int textIndex(int row, int column) const;
    const std::vector<QString> &texts() const noexcept { return m_texts; }

    /// A value of the field's own type, or Null.
    void setValue(int row, int column, const Value &value);
    /// Adds a row of Nulls and returns its number.
    int append(qint64 rowid);

private:
    using Narrow = std::vector<qint32>; // long, byte, boolean; of a text its index + 1, 0 for Null
    using Wide = std::vector<qint64>;   // money, date in seconds
    using Real = std::vector<double>;
    struct Column {
        std::variant<Narrow, Wide, Real> cells;
        std::vector<bool> nulls; ///< empty while no cell is Null; never used for a text
    };
    /// What reading has met: the cell of every text by its bytes in the store, and each column's last text or
    /// date.
    struct Known {
        struct Last {
            QByteArray bytes;
            qint64 cell = 0;
        };
        QHash<QByteArray, qint64> texts;
        std::vector<Last> lasts;
    };

    void appendCell(int column, Run &run, Known &known);
    void appendZero(int column);
    void setNull(int column, int row, bool null);
    qint64 cell(int column, int row) const;
    void setCell(int column, int row, qint64 cell);

    std::vector<FieldInfo> m_fields;
    std::vector<Column> m_columns;
    std::vector<QString> m_texts;
    std::vector<qint64> m_rowids;
    bool m_withRowids;
    int m_count = 0;
};

} // namespace database
