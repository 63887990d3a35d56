#pragma once

#include "platform/database/rows_shown.h"
#include "platform/runtime/value.h"

#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

namespace spreadsheet
{

/// How a cell shows its number.
enum class Format { General, Date, DateTime, Money };

/// A value in the terms of a binary workbook.
struct Cell {
    std::variant<std::monostate, bool, double, QString> content; ///< a text is not empty, a number finite
    Format format = Format::General;
};

/// A date is the number of its day since 30 December 1899. The days before 1 March 1900 are a text in the
/// general form, since programs do not agree on their numbers; so is a number that is not finite. Null and
/// the empty text are an empty cell.
/// @throws RuntimeError 5 for a text that is longer than the 32,767 UTF-16 units of a cell
Cell cellOf(const Value &value);

/// One sheet of a workbook: the heading rows and a piece of the copied rows.
struct Sheet {
    int rows = 0;
    int firstCopied = 0; ///< the copied row that stands under the heading
};

/// What a workbook holds, whatever the form in which it is written. Rows and columns count from 0.
class Contents
{
public:
    /// @throws RuntimeError 5 for a cell among or behind the copied rows
    void setCell(int row, int column, const Value &value);
    void setBold(int row, int firstColumn, int lastColumn);
    /// Puts the rows from the one numbered `first` on at `row` and below.
    /// @throws RuntimeError 5 when rows were copied before, and when a cell is set there
    void copy(int row, std::shared_ptr<const RowsShown> rows, int first);

    int columns() const noexcept { return m_columns; }
    int rows() const { return headingRows() + copiedRows(); }
    /// Tells now and then, while the values are read row by row, how many rows were read since this call.
    void watchReading(std::function<void(int rows)> progress);
    /// The sheets that are needed when one has so many rows: at least one. The copied rows go on from sheet
    /// to sheet; what is above them stands on each. @throws RuntimeError 5 when that leaves no room for them
    std::vector<Sheet> sheets(int rowsPerSheet) const;
    Value value(const Sheet &sheet, int row, int column) const;
    bool isBold(int row, int column) const;
    /// A width for each column by its heading and its first rows, in characters.
    std::vector<int> columnWidths() const;

private:
    struct HeadingCell {
        Value value;
        bool bold = false;
    };
    int headingRows() const;
    int copiedRows() const { return m_rows ? m_rows->count() - m_first : 0; }
    HeadingCell &headingCell(int row, int column);

    std::map<std::pair<int, int>, HeadingCell> m_heading; ///< by row and column
    std::shared_ptr<const RowsShown> m_rows;
    int m_columns = 0;
    int m_first = 0;   ///< among m_rows
    int m_copyRow = 0; ///< where they start on a sheet
    std::function<void(int)> m_progress;
    mutable int m_rowsRead = 0;
};

} // namespace spreadsheet
