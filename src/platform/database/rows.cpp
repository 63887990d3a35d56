#include "platform/database/rows.h"

#include "platform/database/sql/storage.h"

namespace database
{

Rows::Rows(std::vector<FieldInfo> fields, bool withRowids)
    : m_fields(std::move(fields)), m_columns(m_fields.size()), m_withRowids(withRowids)
{
    for (std::size_t index = 0; index < m_fields.size(); ++index) {
        auto &cells = m_columns[index].cells;
        switch (m_fields[index].type) {
        case FieldType::Money:
        case FieldType::Date:
            cells = Wide();
            break;
        case FieldType::Double:
            cells = Real();
            break;
        default:
            cells = Narrow();
        }
    }
}

void Rows::read(Run &run, const std::function<void(int rows)> &progress)
{
    constexpr int stride = 4096;
    const int columns = int(m_fields.size());
    Known known;
    known.lasts.resize(m_fields.size());
    while (run.next()) {
        for (int column = 0; column < columns; ++column)
            appendCell(column, run, known);
        if (m_withRowids)
            m_rowids.push_back(std::get<qint64>(run.column(columns)));
        ++m_count;
        if (progress && m_count % stride == 0)
            progress(m_count);
    }
}

std::optional<qint64> Rows::rowid(int row) const
{
    if (!m_withRowids)
        return std::nullopt;
    return m_rowids[std::size_t(row)];
}

Value Rows::value(int row, int column) const
{
    const auto index = std::size_t(row);
    const Column &source = m_columns[std::size_t(column)];
    if (!source.nulls.empty() && source.nulls[index])
        return {};
    switch (m_fields[std::size_t(column)].type) {
    case FieldType::Long:
    case FieldType::Byte:
        return std::get<Narrow>(source.cells)[index];
    case FieldType::Boolean:
        return std::get<Narrow>(source.cells)[index] != 0;
    case FieldType::Text: {
        const int text = textIndex(row, column);
        return text < 0 ? Value() : Value(m_texts[std::size_t(text)]);
    }
    case FieldType::Money:
        return Money::fromTenThousandths(std::get<Wide>(source.cells)[index]);
    case FieldType::Date:
        return QDateTime::fromSecsSinceEpoch(std::get<Wide>(source.cells)[index], Qt::UTC);
    case FieldType::Double:
        return std::get<Real>(source.cells)[index];
    }
    Q_UNREACHABLE();
}

std::optional<qint64> Rows::number(int row, int column) const
{
    const auto &nulls = m_columns[std::size_t(column)].nulls;
    if (!nulls.empty() && nulls[std::size_t(row)])
        return std::nullopt;
    return cell(column, row);
}

int Rows::textIndex(int row, int column) const
{
    return int(cell(column, row)) - 1;
}

void Rows::setValue(int row, int column, const Value &value)
{
    const FieldType type = m_fields[std::size_t(column)].type;
    if (type != FieldType::Text)
        setNull(column, row, value.isNull());
    if (value.isNull()) {
        setCell(column, row, 0);
        return;
    }
    switch (type) {
    case FieldType::Long:
    case FieldType::Byte:
        setCell(column, row, value.toInt());
        break;
    case FieldType::Boolean:
        setCell(column, row, value.toBool() ? -1 : 0);
        break;
    case FieldType::Text:
        m_texts.push_back(value.toText());
        setCell(column, row, qint64(m_texts.size()));
        break;
    case FieldType::Money:
        setCell(column, row, value.toMoneyValue().tenThousandths());
        break;
    case FieldType::Date:
        setCell(column, row, value.toDate().toSecsSinceEpoch());
        break;
    case FieldType::Double:
        std::get<Real>(m_columns[std::size_t(column)].cells)[std::size_t(row)] = value.toDouble();
        break;
    }
}

int Rows::append(qint64 rowid)
{
    for (int column = 0; column < int(m_columns.size()); ++column) {
        appendZero(column);
        setValue(m_count, column, {});
    }
    if (m_withRowids)
        m_rowids.push_back(rowid);
    return m_count++;
}

void Rows::appendCell(int column, Run &run, Known &known)
{
    const FieldType type = m_fields[std::size_t(column)].type;
    appendZero(column);
    const bool isText = type == FieldType::Text;
    const QByteArray bytes = isText || type == FieldType::Date ? run.text(column) : QByteArray();
    if (bytes.isNull()) {
        setValue(m_count, column, sql::fromStorage(run.column(column), type));
        return;
    }
    // Neighbours often hold the same, and many rows few different texts: each is converted once.
    Known::Last &last = known.lasts[std::size_t(column)];
    if (last.bytes.isNull() || last.bytes != bytes) {
        const QByteArray copy(bytes.constData(), bytes.size());
        const auto met = isText ? known.texts.constFind(bytes) : known.texts.constEnd();
        if (met != known.texts.constEnd()) {
            last = {met.key(), *met};
        } else {
            setValue(m_count, column, sql::fromStorage(copy, type));
            last = {copy, cell(column, m_count)};
            if (isText)
                known.texts.insert(last.bytes, last.cell);
        }
    }
    setCell(column, m_count, last.cell);
}

void Rows::appendZero(int column)
{
    Column &target = m_columns[std::size_t(column)];
    std::visit([](auto &cells) { cells.push_back(0); }, target.cells);
    if (!target.nulls.empty())
        target.nulls.push_back(false);
}

void Rows::setNull(int column, int row, bool null)
{
    Column &target = m_columns[std::size_t(column)];
    if (target.nulls.empty() && null)
        target.nulls.resize(std::visit([](const auto &cells) { return cells.size(); }, target.cells));
    if (!target.nulls.empty())
        target.nulls[std::size_t(row)] = null;
}

qint64 Rows::cell(int column, int row) const
{
    const auto &cells = m_columns[std::size_t(column)].cells;
    if (const auto *narrow = std::get_if<Narrow>(&cells))
        return (*narrow)[std::size_t(row)];
    return std::get<Wide>(cells)[std::size_t(row)];
}

void Rows::setCell(int column, int row, qint64 cell)
{
    auto &cells = m_columns[std::size_t(column)].cells;
    if (auto *narrow = std::get_if<Narrow>(&cells))
        (*narrow)[std::size_t(row)] = qint32(cell);
    else if (auto *wide = std::get_if<Wide>(&cells))
        (*wide)[std::size_t(row)] = cell;
}

} // namespace database
