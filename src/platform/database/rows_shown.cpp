#include "platform/database/rows_shown.h"

#include "platform/database/rows.h"

#include <algorithm>

RowsShown::RowsShown(std::shared_ptr<const database::Rows> rows, std::optional<std::vector<int>> view)
    : m_rows(std::move(rows)), m_view(std::move(view)),
      m_count(m_view ? int(m_view->size()) : m_rows->count())
{
}

int RowsShown::count() const noexcept
{
    return m_count;
}

const std::vector<FieldInfo> &RowsShown::fields() const noexcept
{
    return m_rows->fields();
}

Value RowsShown::value(int row, int field) const
{
    return m_rows->value(rowAt(row), field);
}

QStringList RowsShown::distinctTexts(int field, int first, int count, std::vector<bool> &met) const
{
    QStringList result;
    if (met.size() < m_rows->texts().size())
        met.resize(m_rows->texts().size());
    const int end = first + std::min(count, m_count - first);
    for (int row = first; row < end; ++row) {
        const int text = m_rows->textIndex(rowAt(row), field);
        if (text < 0 || met[std::size_t(text)])
            continue;
        met[std::size_t(text)] = true;
        result << m_rows->texts()[std::size_t(text)];
    }
    return result;
}

void RowsShown::visitNumbers(int field, int first, int count,
                             const std::function<void(int row, qint64 number)> &visit) const
{
    const int end = first + std::min(count, m_count - first);
    for (int row = first; row < end; ++row) {
        if (const auto number = m_rows->number(rowAt(row), field))
            visit(row, *number);
    }
}

int RowsShown::rowAt(int row) const
{
    return m_view ? (*m_view)[std::size_t(row)] : row;
}
