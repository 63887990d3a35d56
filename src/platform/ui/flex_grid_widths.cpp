#include "platform/ui/cell_text.h"
#include "platform/ui/flex_grid_texts.h"

#include <QtCore/QElapsedTimer>

#include <algorithm>
#include <utility>

namespace
{
/// Walks a column's rows in short pieces, between which other work goes on.
class WidthSearch
{
public:
    WidthSearch(ColumnTexts texts, std::shared_ptr<WidthBounds> bounds, const std::function<bool()> &goOn)
        : m_texts(std::move(texts)), m_goOn(goOn), m_bounds(std::move(bounds)), m_widest(m_bounds)
    {
        m_sincePause.start();
    }

    std::optional<int> run()
    {
        const bool done = m_texts.hasField() && m_texts.written.isEmpty() ? takeField() : takeEveryText();
        return done && m_goOn() ? std::optional(m_widest.width()) : std::nullopt;
    }

private:
    enum class Walk { On, Done };

    /// False when the work was called off.
    bool inPieces(int rows, const std::function<Walk(int first, int count)> &piece)
    {
        constexpr int pieceRows = 512;
        constexpr qint64 pause = 15; // milliseconds
        for (int first = 0; first < rows; first += pieceRows) {
            if (piece(first, std::min(pieceRows, rows - first)) == Walk::Done)
                return true;
            if (m_sincePause.elapsed() < pause)
                continue;
            if (!m_goOn())
                return false;
            m_sincePause.restart();
        }
        return true;
    }

    bool takeField()
    {
        if (m_texts.type() == FieldType::Text)
            return takeDistinctTexts() && takeNull();
        const auto pattern = patternOfNumbers();
        return pattern ? takePatterns(pattern) && takeNull() : takeEveryText();
    }

    bool takeEveryText()
    {
        const int rows = m_texts.rows ? std::max(1, m_texts.rows->count()) : 1; // the blank row, too
        return inPieces(rows, [this](int first, int count) {
            for (int row = first; row < first + count; ++row)
                m_widest.take(inOneLine(m_texts.text(row)));
            return Walk::On;
        });
    }

    bool takeDistinctTexts()
    {
        std::vector<bool> met;
        return inPieces(m_texts.rows->count(), [&](int first, int count) {
            for (const QString &text : m_texts.rows->distinctTexts(m_texts.field, first, count, met))
                m_widest.take(inOneLine(m_texts.textOf(text)));
            return Walk::On;
        });
    }

    /// A format can write something for Null, of which the set's texts and numbers tell nothing.
    bool takeNull()
    {
        WidestText withNull = m_widest;
        withNull.take(inOneLine(m_texts.textOf({})));
        if (withNull.width() == m_widest.width())
            return true;
        return inPieces(m_texts.rows->count(), [&](int first, int count) {
            for (int row = first; row < first + count; ++row) {
                if (m_texts.rows->value(row, m_texts.field).isNull()) {
                    m_widest = withNull;
                    return Walk::Done;
                }
            }
            return Walk::On;
        });
    }

    std::function<int(qint64)> patternOfNumbers() const
    {
        const FieldType type = m_texts.type();
        if (type == FieldType::Boolean)
            return [](qint64 number) { return int(number); };
        if (m_texts.format.text)
            return type == FieldType::Double ? nullptr : m_texts.format.pattern;
        if (type == FieldType::Long || type == FieldType::Byte)
            return digitsAndSign;
        return nullptr;
    }

    static int digitsAndSign(qint64 number)
    {
        int digits = 1;
        for (qint64 rest = number / 10; rest != 0; rest /= 10)
            ++digits;
        return number < 0 ? -digits : digits;
    }

    bool takePatterns(const std::function<int(qint64)> &patternOf)
    {
        QHash<int, int> firstRows; // by pattern
        if (!inPieces(m_texts.rows->count(), [&](int first, int count) {
                m_texts.rows->visitNumbers(m_texts.field, first, count, [&](int row, qint64 number) {
                    const int pattern = patternOf(number);
                    if (!firstRows.contains(pattern))
                        firstRows.insert(pattern, row);
                });
                return Walk::On;
            }))
            return false;

        std::vector<std::pair<int, int>> patterns; // with their bounds in front
        for (const auto &[pattern, row] : firstRows.asKeyValueRange())
            patterns.emplace_back(m_bounds->bound(inOneLine(m_texts.text(row))), pattern);
        std::ranges::sort(patterns, std::greater());
        for (const auto &[bound, pattern] : patterns) {
            if (bound > m_widest.width() && !takePattern(patternOf, pattern, bound))
                return false;
        }
        return true;
    }

    /// Takes a pattern's texts until one is as wide as any of them can be.
    bool takePattern(const std::function<int(qint64)> &patternOf, int pattern, int bound)
    {
        return inPieces(m_texts.rows->count(), [&](int first, int count) {
            m_texts.rows->visitNumbers(m_texts.field, first, count, [&](int row, qint64 number) {
                if (m_widest.width() < bound && patternOf(number) == pattern)
                    m_widest.take(inOneLine(m_texts.text(row)));
            });
            return m_widest.width() < bound ? Walk::On : Walk::Done;
        });
    }

    const ColumnTexts m_texts;
    const std::function<bool()> &m_goOn;
    std::shared_ptr<WidthBounds> m_bounds;
    WidestText m_widest;
    QElapsedTimer m_sincePause;
};
} // namespace

QString ColumnTexts::text(int row) const
{
    const auto own = written.constFind(row);
    if (own != written.constEnd())
        return *own;
    return hasField() && row < rows->count() ? textOf(rows->value(row, field)) : QString();
}

std::optional<int> widestPixels(ColumnTexts texts, std::shared_ptr<WidthBounds> bounds,
                                const std::function<bool()> &goOn)
{
    return WidthSearch(std::move(texts), std::move(bounds), goOn).run();
}
