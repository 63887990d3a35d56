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
    const database::TextPool &texts = m_rows->texts();
    if (met.size() < std::size_t(texts.count()))
        met.resize(std::size_t(texts.count()));
    const int end = first + std::min(count, m_count - first);
    for (int row = first; row < end; ++row) {
        const int text = m_rows->textNumber(rowAt(row), field);
        if (text < 0 || met[std::size_t(text)])
            continue;
        met[std::size_t(text)] = true;
        result << texts.text(text);
    }
    return result;
}

void RowsShown::visitNumbers(int field, int first, int count,
                             const std::function<void(int row, qint64 number)> &visit) const
{
    const int end = first + std::min(count, m_count - first);
    for (int row = first; row < end; ++row) {
        const int held = rowAt(row);
        if (!m_rows->isNull(held, field))
            visit(row, m_rows->number(held, field));
    }
}

int RowsShown::rowAt(int row) const
{
    return m_view ? (*m_view)[std::size_t(row)] : row;
}
