#include "platform/ui/text_widths.h"

#include <algorithm>
#include <array>
#include <limits>

namespace
{
constexpr qsizetype mostWidths = 100'000;
constexpr char16_t none = 0; // where a text begins

// The same letters can be wider or narrower in a text of another script, which can take another font for its
// digits and blanks, too.
constexpr std::array<QStringView, 3> surroundings = {u"", u"a ", u"\u0627 "};

enum class Kind { Neutral, Latin, Arabic, ArabicMark, Other };

bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

char16_t zeroed(char16_t c)
{
    return isDigit(c) ? u'0' : c;
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

WidestText::WidestText(const QFontMetrics &metrics) : m_metrics(metrics) {}

void WidestText::take(const QString &text)
{
    if (bound(text, Digits::AsWritten) > m_width)
        m_width = std::max(m_width, qRound(measure(text)));
}

int WidestText::boundOfPattern(const QString &text)
{
    return bound(text, Digits::Any);
}

double WidestText::measure(const QString &text)
{
    ++m_measured;
    return m_metrics.horizontalAdvance(text);
}

int WidestText::bound(const QString &text, Digits digits)
{
    // A tab's width depends on what stands before it.
    const auto isControl = [](QChar c) { return c < u' '; };
    if (std::any_of(text.cbegin(), text.cend(), isControl))
        return std::numeric_limits<int>::max();
    double width = widthOfWords(text);
    char16_t before = none;
    for (const QChar c : text) {
        const char16_t letter = c.unicode();
        if (isDigit(before) || isDigit(letter))
            width += digits == Digits::Any ? greatestGain(before, letter) : gain(before, letter);
        before = letter;
    }
    return qRound(width);
}

/// Words of one script are set independently of each other: a text is as wide as they are together.
double WidestText::widthOfWords(const QString &text)
{
    const Kind script = scriptOf(text);
    if (script == Kind::Other)
        return widthWithZeros({}, text);
    const QStringView before = script == Kind::Latin ? u"a " : u"\u0627 ";
    const double widthBefore = widthWithZeros({}, before);
    // The first letter rules what stands in front of it.
    const auto isLetter = [script](QChar c) { return kindOf(c.unicode()) == script; };
    const qsizetype letter = std::find_if(text.cbegin(), text.cend(), isLetter) - text.cbegin();
    double width = 0;
    for (qsizetype begin = 0, end = 0; begin < text.size(); begin = end) {
        const qsizetype blank = text.indexOf(u' ', begin == 0 ? letter : begin);
        end = blank < 0 ? text.size() : blank + 1;
        const QStringView word = QStringView(text).sliced(begin, end - begin);
        width += begin == 0 ? widthWithZeros({}, word) : widthWithZeros(before, word) - widthBefore;
    }
    return width;
}

double WidestText::widthWithZeros(QStringView before, QStringView text)
{
    m_key.resize(0);
    m_key += before;
    for (const QChar c : text)
        m_key += QChar(zeroed(c.unicode()));
    const auto known = m_widths.constFind(m_key);
    if (known != m_widths.constEnd())
        return *known;
    if (m_widths.size() >= mostWidths)
        m_widths.clear();
    return *m_widths.insert(m_key, measure(m_key));
}

/// How much wider a text can become when its zeros are these two neighbours.
double WidestText::gain(char16_t before, char16_t letter)
{
    const quint32 key = quint32(before) << 16 | letter;
    const auto known = m_gains.constFind(key);
    if (known != m_gains.constEnd())
        return *known;
    const auto step = [this](QString text, char16_t from, char16_t to) {
        if (from != none)
            text += QChar(from);
        return m_metrics.horizontalAdvance(text + QChar(to)) - m_metrics.horizontalAdvance(text);
    };
    double most = -std::numeric_limits<double>::infinity();
    for (const QStringView around : surroundings) {
        const QString text = around.toString();
        most = std::max(most, step(text, before, letter) - step(text, zeroed(before), zeroed(letter)));
    }
    return *m_gains.insert(key, most);
}

double WidestText::greatestGain(char16_t before, char16_t letter)
{
    const quint32 key = quint32(zeroed(before)) << 16 | zeroed(letter);
    const auto known = m_greatestGains.constFind(key);
    if (known != m_greatestGains.constEnd())
        return *known;
    double most = 0;
    for (char16_t first = u'0'; first <= u'9'; ++first) {
        for (char16_t second = u'0'; second <= u'9'; ++second)
            most = std::max(most, gain(isDigit(before) ? first : before, isDigit(letter) ? second : letter));
    }
    return *m_greatestGains.insert(key, most);
}
