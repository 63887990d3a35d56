#pragma once

#include "platform/database/engine.h"
#include "platform/database/field.h"
#include "platform/database/text_pool.h"
#include "platform/runtime/value.h"

#include <functional>
#include <optional>
#include <vector>

namespace database
{

/// The rows of a result set, held by column: numbers as numbers, dates as seconds, texts as numbers in one
/// pool of the set's texts. Rows and columns count from 0.
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
    bool isNull(int row, int column) const { return m_columns[std::size_t(column)].isNull(std::size_t(row)); }
    /// The number in a field that is no text and not Null: a money in ten-thousandths, a date in seconds
    /// since 1970, a Boolean as -1 or 0; of a double its bits.
    qint64 number(int row, int column) const { return m_columns[std::size_t(column)].cell(std::size_t(row)); }
    /// A long, byte or double that is not Null.
    double real(int row, int column) const;
    /// The number of a text among texts(); -1 for Null.
    int textNumber(int row, int column) const
    {
        return m_columns[std::size_t(column)].narrow[std::size_t(row)];
    }
    const TextPool &texts() const noexcept { return m_texts; }

    /// A value of the field's own type, or Null.
    void setValue(int row, int column, const Value &value);
    /// Adds a row of Nulls and returns its number.
    int append(qint64 rowid);

private:
    /// Each cell is one integer. All cells of a column are in one of the two lists.
    struct Column {
        bool isWide = false;
        std::vector<qint32> narrow; ///< long, byte, boolean, and a text's number, -1 for Null
        std::vector<qint64> wide;   ///< money, a date's seconds, a double's bits
        std::vector<bool> nulls;    ///< empty while no cell is Null

        bool isNull(std::size_t row) const { return !nulls.empty() && nulls[row]; }
        qint64 cell(std::size_t row) const { return isWide ? wide[row] : narrow[row]; }
        void append(qint64 cell);
        void set(std::size_t row, qint64 cell, bool null = false);
    };
    /// A date's text in the store and what it is; of each column the last one that was read.
    struct KnownDate {
        QByteArray text;
        qint64 seconds = 0;
    };

    void appendCell(int column, const Run &run, KnownDate &known);
    std::optional<qint64> plainCell(int column, const Run &run, KnownDate &known);
    qint64 textCell(const Column &column, QByteArrayView text);

    std::vector<FieldInfo> m_fields;
    std::vector<Column> m_columns;
    TextPool m_texts;
    std::vector<qint64> m_rowids;
    bool m_withRowids;
    int m_count = 0;
};

} // namespace database
