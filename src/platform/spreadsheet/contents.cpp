#include "platform/spreadsheet/contents.h"

#include "platform/runtime/dates.h"
#include "platform/spreadsheet/refusal.h"

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace spreadsheet
{

namespace
{

/// The first day whose number every program reads alike: behind the 29 February 1900 that never was.
constexpr double firstSafeDay = 61;
constexpr int longestText = 32767;

Cell textCell(const QString &text)
{
    if (text.isEmpty())
        return {};
    if (text.size() > longestText)
        throw refused(u"A text of %L1 characters does not fit into a cell, which holds %L2. Save as .txt."_s
                          .arg(text.size())
                          .arg(longestText));
    return {text};
}

Cell dateCell(const QDateTime &date)
{
    const double serial = dateSerial(date);
    if (serial < firstSafeDay)
        return textCell(generalDate(date));
    return {serial, serial == std::floor(serial) ? Format::Date : Format::DateTime};
}

/// The characters that a spreadsheet shows of a value.
int shownLength(const Value &value)
{
    const int length = int(value.toText().size());
    return value.kind() == Value::Kind::Money ? length + length / 3 + 2 : length; // with separators
}

} // namespace

Cell cellOf(const Value &value)
{
    switch (value.kind()) {
    case Value::Kind::Null:
        return {};
    case Value::Kind::Boolean:
        return {value.toBool()};
    case Value::Kind::Long:
    case Value::Kind::Double: {
        const double number = value.toDouble();
        return std::isfinite(number) ? Cell{number} : textCell(value.toText());
    }
    case Value::Kind::Money:
        return {value.toDouble(), Format::Money};
    case Value::Kind::Date:
        return dateCell(value.toDate());
    case Value::Kind::Text:
        return textCell(value.toText());
    }
    Q_UNREACHABLE();
}

Contents::HeadingCell &Contents::headingCell(int row, int column)
{
    if (row < 0 || column < 0 || (m_rows && row >= m_copyRow))
        throw runtime_errors::invalidCall();
    m_columns = std::max(m_columns, column + 1);
    return m_heading[{row, column}];
}

void Contents::setCell(int row, int column, const Value &value)
{
    headingCell(row, column).value = value;
}

void Contents::setBold(int row, int firstColumn, int lastColumn)
{
    for (int column = firstColumn; column <= lastColumn; ++column)
        headingCell(row, column).bold = true;
}

void Contents::copy(int row, std::shared_ptr<const RowsShown> rows, int first)
{
    if (m_rows || row < headingRows())
        throw runtime_errors::invalidCall();
    m_rows = std::move(rows);
    m_columns = std::max(m_columns, int(m_rows->fields().size()));
    m_first = first;
    m_copyRow = row;
}

int Contents::headingRows() const
{
    if (m_rows)
        return m_copyRow;
    return m_heading.empty() ? 0 : m_heading.rbegin()->first.first + 1;
}

std::vector<Sheet> Contents::sheets(int rowsPerSheet) const
{
    const int copied = copiedRows();
    const int room = rowsPerSheet - headingRows();
    if (room < std::min(copied, 1))
        throw refused(u"A sheet of %1 rows has no room for these."_s.arg(rowsPerSheet));
    std::vector<Sheet> sheets;
    int first = 0;
    do {
        const int rows = std::min(copied - first, room);
        sheets.push_back({headingRows() + rows, first});
        first += rows;
    } while (first < copied);
    return sheets;
}

void Contents::watchReading(std::function<void(int)> progress)
{
    m_progress = std::move(progress);
    m_rowsRead = 0;
}

Value Contents::value(const Sheet &sheet, int row, int column) const
{
    constexpr int stride = 256;
    if (column == 0 && ++m_rowsRead % stride == 0 && m_progress)
        m_progress(m_rowsRead);
    const int copied = row - headingRows();
    if (copied >= 0)
        return column < int(m_rows->fields().size())
                   ? m_rows->value(m_first + sheet.firstCopied + copied, column)
                   : Value();
    const auto found = m_heading.find({row, column});
    return found == m_heading.end() ? Value() : found->second.value;
}

bool Contents::isBold(int row, int column) const
{
    if (row >= headingRows())
        return false;
    const auto found = m_heading.find({row, column});
    return found != m_heading.end() && found->second.bold;
}

std::vector<int> Contents::columnWidths() const
{
    constexpr int rowsLookedAt = 100;
    constexpr int narrowest = 9;
    constexpr int widest = 50;
    const Sheet all{rows()};
    std::vector<int> widths;
    for (int column = 0; column < columns(); ++column) {
        int width = narrowest;
        for (int row = 0; row < std::min(all.rows, rowsLookedAt); ++row)
            width = std::max(width, shownLength(value(all, row, column)) + 2);
        widths.push_back(std::min(width, widest));
    }
    return widths;
}

} // namespace spreadsheet
