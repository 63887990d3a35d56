#include "platform/database/sql/collation.h"
#include "platform/runtime/numbers.h"
#include "platform/ui/flex_grid_texts.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace
{
/// A text's place in the order: empty texts, then numbers, then others by their letters.
struct SortKey {
    enum class Kind { Empty, Number, Letters } kind = Kind::Empty;
    Money number = {};
    QByteArray letters = {};

    friend bool operator<(const SortKey &a, const SortKey &b)
    {
        return std::tie(a.kind, a.number, a.letters) < std::tie(b.kind, b.number, b.letters);
    }
};

SortKey sortKey(const QString &text)
{
    if (text.isEmpty())
        return {};
    if (isNumeric(text))
        return {SortKey::Kind::Number, readMoney(text)};
    return {SortKey::Kind::Letters, {}, sql::sortKey(text)};
}

/// The keys of a column's texts, most of them once, and for each row the index of its key.
struct KeysByRow {
    std::vector<SortKey> keys;
    std::vector<int> ofRow;

    int add(const QString &text)
    {
        keys.push_back(sortKey(text));
        return int(keys.size()) - 1;
    }
};

void readField(KeysByRow &result, const ColumnTexts &column)
{
    const RowsShown &rows = *column.rows;
    QHash<QString, int> texts;
    QHash<qint64, int> numbers;
    const auto add = [&](int row) { return result.add(column.textOf(rows.value(row, column.field))); };
    const auto put = [&](int row, auto &known, auto value) {
        auto key = known.constFind(value);
        if (key == known.constEnd())
            key = known.insert(value, add(row));
        result.ofRow[size_t(row)] = *key;
    };
    switch (column.type()) {
    case FieldType::Text:
        for (int row = 0; row < rows.count(); ++row) {
            const Value value = rows.value(row, column.field);
            if (!value.isNull())
                put(row, texts, value.toText());
        }
        break;
    case FieldType::Double:
        for (int row = 0; row < rows.count(); ++row)
            result.ofRow[size_t(row)] = add(row);
        break;
    default:
        rows.visitNumbers(column.field, 0, rows.count(),
                          [&](int row, qint64 number) { put(row, numbers, number); });
    }
}

KeysByRow keysByRow(const ColumnTexts &column, int rows)
{
    KeysByRow result{{}, std::vector<int>(size_t(rows))};
    result.add(column.textOf({})); // of the rows that hold Null
    if (column.hasField())
        readField(result, column);
    for (const auto &[row, text] : column.written.asKeyValueRange())
        result.ofRow[size_t(row)] = result.add(text);
    return result;
}

/// For each key its place among all; equal ones have the same.
std::vector<int> ranks(const std::vector<SortKey> &keys)
{
    std::vector<size_t> order(keys.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::ranges::sort(order, [&keys](size_t a, size_t b) { return keys[a] < keys[b]; });
    std::vector<int> result(keys.size());
    for (size_t i = 1; i < order.size(); ++i)
        result[order[i]] = result[order[i - 1]] + (keys[order[i - 1]] < keys[order[i]] ? 1 : 0);
    return result;
}
} // namespace

void sortRows(std::vector<int> &rows, const ColumnTexts &texts, Qt::SortOrder order)
{
    const KeysByRow shown = keysByRow(texts, int(rows.size()));
    const std::vector<int> rankOfKey = ranks(shown.keys);
    const int sign = order == Qt::AscendingOrder ? 1 : -1;
    std::ranges::stable_sort(rows, {},
                             [&](int row) { return sign * rankOfKey[size_t(shown.ofRow[size_t(row)])]; });
}
