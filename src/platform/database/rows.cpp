#include "platform/database/rows.h"

#include "platform/database/sql/storage.h"

#include <bit>

namespace database
{

namespace
{

bool isWide(FieldType type)
{
    return type == FieldType::Money || type == FieldType::Date || type == FieldType::Double;
}

} // namespace

Rows::Rows(std::vector<FieldInfo> fields, bool withRowids)
    : m_fields(std::move(fields)), m_columns(m_fields.size()), m_withRowids(withRowids)
{
    for (std::size_t index = 0; index < m_fields.size(); ++index)
        m_columns[index].isWide = isWide(m_fields[index].type);
}

// --- reading

void Rows::read(Run &run, const std::function<void(int rows)> &progress)
{
    constexpr int stride = 4096;
    const int columns = int(m_fields.size());
    std::vector<KnownDate> known(m_fields.size());
    while (run.next()) {
        for (int column = 0; column < columns; ++column)
            appendCell(column, run, known[std::size_t(column)]);
        if (m_withRowids)
            m_rowids.push_back(run.integer(columns).value());
        ++m_count;
        if (progress && m_count % stride == 0)
            progress(m_count);
    }
}

void Rows::appendCell(int column, const Run &run, KnownDate &known)
{
    const auto cell = plainCell(column, run, known);
    m_columns[std::size_t(column)].append(cell.value_or(0));
    if (!cell)
        setValue(m_count, column, sql::fromStorage(run.column(column), m_fields[std::size_t(column)].type));
}

/// The cell of a value in the form in which the store writes it; nothing for Null and for other forms.
std::optional<qint64> Rows::plainCell(int column, const Run &run, KnownDate &known)
{
    const FieldType type = m_fields[std::size_t(column)].type;
    if (type == FieldType::Text || type == FieldType::Date) {
        const QByteArrayView text = run.text(column);
        if (text.isNull())
            return std::nullopt;
        if (type == FieldType::Text)
            return textCell(m_columns[std::size_t(column)], text);
        if (known.text.isEmpty() || text != known.text) {
            const auto seconds = sql::storedSeconds(text);
            if (!seconds)
                return std::nullopt;
            known = {text.toByteArray(), *seconds};
        }
        return known.seconds;
    }
    const auto number = run.integer(column);
    if (!number)
        return std::nullopt;
    const auto numberIf = [&](bool fits) { return fits ? number : std::nullopt; };
    switch (type) {
    case FieldType::Long:
        return numberIf(*number == qint32(*number));
    case FieldType::Byte:
        return numberIf(*number == quint8(*number));
    case FieldType::Boolean:
        return *number != 0 ? -1 : 0;
    default:
        return numberIf(type == FieldType::Money);
    }
}

/// Neighbours often hold the same, and are compared faster than looked up.
qint64 Rows::textCell(const Column &column, QByteArrayView text)
{
    const int above = column.narrow.empty() ? -1 : column.narrow.back();
    return above >= 0 && m_texts.is(above, text) ? above : m_texts.intern(text);
}

// --- values

std::optional<qint64> Rows::rowid(int row) const
{
    if (!m_withRowids)
        return std::nullopt;
    return m_rowids[std::size_t(row)];
}

double Rows::real(int row, int column) const
{
    const qint64 cell = number(row, column);
    return m_fields[std::size_t(column)].type == FieldType::Double ? std::bit_cast<double>(cell)
                                                                   : double(cell);
}

Value Rows::value(int row, int column) const
{
    if (isNull(row, column))
        return {};
    const qint64 cell = number(row, column);
    switch (m_fields[std::size_t(column)].type) {
    case FieldType::Long:
    case FieldType::Byte:
        return qint32(cell);
    case FieldType::Boolean:
        return cell != 0;
    case FieldType::Text:
        return m_texts.text(int(cell));
    case FieldType::Money:
        return Money::fromTenThousandths(cell);
    case FieldType::Date:
        return QDateTime::fromSecsSinceEpoch(cell, Qt::UTC);
    case FieldType::Double:
        return real(row, column);
    }
    Q_UNREACHABLE();
}

void Rows::setValue(int row, int column, const Value &value)
{
    Column &target = m_columns[std::size_t(column)];
    const FieldType type = m_fields[std::size_t(column)].type;
    const auto cell = [&]() -> qint64 {
        switch (type) {
        case FieldType::Long:
        case FieldType::Byte:
            return value.toInt();
        case FieldType::Boolean:
            return value.toBool() ? -1 : 0;
        case FieldType::Text:
            return m_texts.intern(value.toText().toUtf8());
        case FieldType::Money:
            return value.toMoneyValue().tenThousandths();
        case FieldType::Date:
            return value.toDate().toSecsSinceEpoch();
        case FieldType::Double:
            return std::bit_cast<qint64>(value.toDouble());
        }
        Q_UNREACHABLE();
    };
    if (value.isNull())
        target.set(std::size_t(row), type == FieldType::Text ? -1 : 0, true);
    else
        target.set(std::size_t(row), cell());
}

int Rows::append(qint64 rowid)
{
    for (int column = 0; column < int(m_columns.size()); ++column) {
        m_columns[std::size_t(column)].append(0);
        setValue(m_count, column, {});
    }
    if (m_withRowids)
        m_rowids.push_back(rowid);
    return m_count++;
}

void Rows::Column::append(qint64 cell)
{
    if (isWide)
        wide.push_back(cell);
    else
        narrow.push_back(qint32(cell));
    if (!nulls.empty())
        nulls.push_back(false);
}

void Rows::Column::set(std::size_t row, qint64 cell, bool null)
{
    if (isWide)
        wide[row] = cell;
    else
        narrow[row] = qint32(cell);
    if (null && nulls.empty())
        nulls.resize(isWide ? wide.size() : narrow.size());
    if (!nulls.empty())
        nulls[row] = null;
}

} // namespace database
