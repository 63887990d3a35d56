#include "platform/database/sql/collation.h"
#include "platform/runtime/numbers.h"
#include "platform/ui/flex_grid_texts.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace
{
/// The texts of a column, most of them once, and for each row the index of its text.
struct TextsByRow {
    std::vector<QString> texts;
    std::vector<int> ofRow;

    int add(const QString &text)
    {
        texts.push_back(text);
        return int(texts.size()) - 1;
    }
};

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

void readFieldTexts(TextsByRow &result, const ColumnTexts &column)
{
    const RowsShown &rows = *column.rows;
    QHash<QString, int> texts;
    QHash<qint64, int> numbers;
    const auto add = [&](int row) { return result.add(column.textOf(rows.value(row, column.field))); };
    const auto put = [&](int row, auto &known, auto key) {
        auto text = known.constFind(key);
        if (text == known.constEnd())
            text = known.insert(key, add(row));
        result.ofRow[size_t(row)] = *text;
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

TextsByRow textsByRow(const ColumnTexts &column, int rows)
{
    TextsByRow result{{}, std::vector<int>(size_t(rows))};
    result.add(column.textOf({})); // of the rows that hold Null
    if (column.hasField())
        readFieldTexts(result, column);
    for (const auto &[row, text] : column.written.asKeyValueRange())
        result.ofRow[size_t(row)] = result.add(text);
    return result;
}

/// For each text its place among all; equal ones have the same.
std::vector<int> ranks(const std::vector<QString> &texts)
{
    std::vector<SortKey> keys(texts.size());
    std::ranges::transform(texts, keys.begin(), sortKey);
    std::vector<size_t> order(texts.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::ranges::sort(order, [&keys](size_t a, size_t b) { return keys[a] < keys[b]; });
    std::vector<int> result(texts.size());
    for (size_t i = 1; i < order.size(); ++i)
        result[order[i]] = result[order[i - 1]] + (keys[order[i - 1]] < keys[order[i]] ? 1 : 0);
    return result;
}
} // namespace

void sortRows(std::vector<int> &rows, const ColumnTexts &texts, Qt::SortOrder order)
{
    const TextsByRow shown = textsByRow(texts, int(rows.size()));
    const std::vector<int> rankOfText = ranks(shown.texts);
    const int sign = order == Qt::AscendingOrder ? 1 : -1;
    std::ranges::stable_sort(rows, {},
                             [&](int row) { return sign * rankOfText[size_t(shown.ofRow[size_t(row)])]; });
}
