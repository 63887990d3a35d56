#include "platform/ui/text_widths.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr qsizetype mostKnown = 20'000;
constexpr double unbounded = 1e9;
constexpr char16_t none = 0; // where a text begins

// The same letters can be wider or narrower in a text of another script, which can take another font for its
// digits and blanks, too.
constexpr std::array<QStringView, 3> surroundings = {u"", u"a ", u"\u0627 "};

enum class Kind { Neutral, Latin, Arabic, ArabicMark, Other };

bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

QChar zeroed(QChar c)
{
    return isDigit(c.unicode()) ? u'0' : c;
}

bool isBetween(char16_t c, char16_t first, char16_t last)
{
    return c >= first && c <= last;
}

Kind kindOf(char16_t c)
{
    if (isBetween(c, u'a', u'z') || isBetween(c, u'A', u'Z'))
        return Kind::Latin;
    if (isBetween(c, u' ', u'~'))
        return Kind::Neutral;
    if (isBetween(c, u'\u00C0', u'\u024F') && c != u'\u00D7' && c != u'\u00F7')
        return Kind::Latin;
    if (isBetween(c, u'\u064B', u'\u0652') || c == u'\u0670' || c == u'\u060C')
        return Kind::ArabicMark;
    if (isBetween(c, u'\u0620', u'\u064A') || isBetween(c, u'\u066E', u'\u06D3') || c == u'\u061B' ||
        c == u'\u061F')
        return Kind::Arabic;
    return Kind::Other;
}

/// A tab's width depends on what stands before it, that of a sign which spans a number on the number.
bool isUnbounded(QChar c)
{
    return c < u' ' || isBetween(c.unicode(), u'\u0600', u'\u0605') || c == u'\u06DD';
}

/// The only script of a text's letters; Other when there are several or none.
Kind scriptOf(QStringView text)
{
    bool latin = false;
    bool arabic = false;
    bool mark = false;
    for (const QChar c : text) {
        const Kind kind = kindOf(c.unicode());
        if (kind == Kind::Other)
            return Kind::Other;
        latin = latin || kind == Kind::Latin;
        arabic = arabic || kind == Kind::Arabic;
        mark = mark || kind == Kind::ArabicMark;
    }
    if (latin == arabic || (latin && mark))
        return Kind::Other;
    return latin ? Kind::Latin : Kind::Arabic;
}
} // namespace

WidthBounds::WidthBounds(const QFontMetrics &metrics) : m_metrics(metrics) {}

int WidthBounds::width(const QString &text)
{
    return qRound(measure(text));
}

int WidthBounds::bound(const QString &text)
{
    Known width = known(text);
    if (width.gain == 0)
        return qRound(width.withZeros);
    width.gain = 0;
    char16_t before = none;
    for (const QChar c : text) {
        if (isDigit(before) || isDigit(c.unicode()))
            width.gain += gain(before, c.unicode());
        before = c.unicode();
    }
    return qRound(width.withZeros + width.gain);
}

int WidthBounds::boundForAnyDigits(const QString &text)
{
    const Known width = known(text);
    return qRound(width.withZeros + width.gain);
}

WidthBounds::Known WidthBounds::known(const QString &text)
{
    if (std::any_of(text.cbegin(), text.cend(), isUnbounded))
        return {unbounded, 0};
    m_key.resize(text.size());
    std::transform(text.cbegin(), text.cend(), m_key.begin(), zeroed);
    const auto found = m_texts.constFind(m_key);
    if (found != m_texts.constEnd())
        return *found;
    const QString key = m_key;
    Known result{widthOfWords(key), 0};
    char16_t before = none;
    for (const QChar c : key) {
        if (isDigit(before) || isDigit(c.unicode()))
            result.gain += greatestGain(before, c.unicode());
        before = c.unicode();
    }
    if (m_texts.size() >= mostKnown)
        m_texts.clear();
    return *m_texts.insert(key, result);
}

double WidthBounds::measure(const QString &text)
{
    ++m_measured;
    return m_metrics.horizontalAdvance(text);
}

/// Words of one script are set independently of each other: a text is as wide as they are together.
double WidthBounds::widthOfWords(const QString &text)
{
    const Kind script = scriptOf(text);
    if (script == Kind::Other)
        return measure(text);
    const QStringView before = script == Kind::Latin ? u"a " : u"\u0627 ";
    const double widthBefore = widthOfWord({}, before);
    // The first letter rules what stands in front of it.
    const auto isLetter = [script](QChar c) { return kindOf(c.unicode()) == script; };
    const qsizetype letter = std::find_if(text.cbegin(), text.cend(), isLetter) - text.cbegin();
    double width = 0;
    for (qsizetype begin = 0, end = 0; begin < text.size(); begin = end) {
        const qsizetype blank = text.indexOf(u' ', begin == 0 ? letter : begin);
        end = blank < 0 ? text.size() : blank + 1;
        const QStringView word = QStringView(text).sliced(begin, end - begin);
        width += begin == 0 ? widthOfWord({}, word) : widthOfWord(before, word) - widthBefore;
    }
    return width;
}

double WidthBounds::widthOfWord(QStringView before, QStringView word)
{
    m_key.resize(0);
    m_key += before;
    m_key += word;
    const auto found = m_words.constFind(m_key);
    if (found != m_words.constEnd())
        return *found;
    if (m_words.size() >= mostKnown)
        m_words.clear();
    return *m_words.insert(m_key, measure(m_key));
}

/// The room that a letter takes behind another one (or at the beginning) in those surroundings.
double WidthBounds::step(QStringView around, char16_t before, char16_t letter)
{
    QString text = around.toString();
    if (before != none)
        text += QChar(before);
    return m_metrics.horizontalAdvance(text + QChar(letter)) - m_metrics.horizontalAdvance(text);
}

/// How much wider a text can become when two neighbours are these and not zeros.
double WidthBounds::gain(char16_t before, char16_t letter)
{
    const quint32 key = quint32(before) << 16 | letter;
    const auto found = m_gains.constFind(key);
    if (found != m_gains.constEnd())
        return *found;
    double most = -std::numeric_limits<double>::infinity();
    for (const QStringView around : surroundings)
        most = std::max(most, step(around, before, letter) -
                                  step(around, zeroed(before).unicode(), zeroed(letter).unicode()));
    return *m_gains.insert(key, most);
}

double WidthBounds::greatestGain(char16_t before, char16_t letter)
{
    const quint32 key = quint32(before) << 16 | letter;
    const auto found = m_greatestGains.constFind(key);
    if (found != m_greatestGains.constEnd())
        return *found;
    const auto choices = [](char16_t c) { return isDigit(c) ? u"0123456789"_s : QString(QChar(c)); };
    double most = 0;
    for (const QChar first : choices(before)) {
        for (const QChar second : choices(letter))
            most = std::max(most, gain(first.unicode(), second.unicode()));
    }
    return *m_greatestGains.insert(key, most);
}

WidestText::WidestText(std::shared_ptr<WidthBounds> bounds) : m_bounds(std::move(bounds)) {}

void WidestText::take(const QString &text)
{
    if (m_bounds->bound(text) > m_width)
        m_width = std::max(m_width, m_bounds->width(text));
}
