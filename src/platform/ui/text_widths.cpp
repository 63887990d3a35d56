#include "platform/ui/text_widths.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr qsizetype mostKnown = 20'000;
constexpr QChar none; // where a text begins

// A font can set the same digits closer or wider in texts of another script.
constexpr std::array<QStringView, 3> surroundings = {u"", u"a ", u"\u0627 "};

enum class Kind { Neutral, Latin, Arabic, ArabicMark, Other };

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

QChar zeroed(QChar c)
{
    return isDigit(c) ? u'0' : c;
}

bool isBetween(char16_t c, char16_t first, char16_t last)
{
    return c >= first && c <= last;
}

Kind kindOf(QChar letter)
{
    const char16_t c = letter.unicode();
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

/// Whether all letters are of one script, of those whose words are known to be set independently.
bool isOfOneScript(QStringView text)
{
    bool latin = false;
    bool arabic = false;
    bool mark = false;
    for (const QChar c : text) {
        const Kind kind = kindOf(c);
        if (kind == Kind::Other)
            return false;
        latin = latin || kind == Kind::Latin;
        arabic = arabic || kind == Kind::Arabic;
        mark = mark || kind == Kind::ArabicMark;
    }
    return latin != arabic && !(latin && mark);
}

/// Where a word that begins there ends: before the next letter behind a blank. So each word has letters,
/// which rule how the font sets its digits and signs.
qsizetype endOfWord(QStringView text, qsizetype begin)
{
    bool letters = false;
    for (qsizetype i = begin; i < text.size(); ++i) {
        const Kind kind = kindOf(text[i]);
        const bool letter = kind == Kind::Latin || kind == Kind::Arabic;
        if (letter && letters && text[i - 1] == u' ')
            return i;
        letters = letters || letter;
    }
    return text.size();
}
} // namespace

WidthBounds::WidthBounds(const QFontMetrics &metrics) : m_metrics(metrics) {}

int WidthBounds::width(const QString &text)
{
    return qRound(measure(text));
}

int WidthBounds::bound(const QString &text)
{
    m_key.resize(text.size());
    std::transform(text.cbegin(), text.cend(), m_key.begin(), zeroed);
    const auto found = m_bounds.constFind(m_key);
    if (found != m_bounds.constEnd())
        return *found;
    const QString key = m_key;
    if (m_bounds.size() >= mostKnown)
        m_bounds.clear();
    return *m_bounds.insert(key, qRound(boundWithZeros(key)));
}

double WidthBounds::measure(const QString &text)
{
    ++m_measured;
    return m_metrics.horizontalAdvance(text);
}

double WidthBounds::boundWithZeros(const QString &text)
{
    double bound = widthOfWords(text);
    QChar before = none;
    for (const QChar c : text) {
        if (isDigit(before) || isDigit(c))
            bound += gain(before, c);
        before = c;
    }
    return bound;
}

/// Words of one script are set independently of each other: a text is as wide as they are together.
double WidthBounds::widthOfWords(const QString &text)
{
    if (!isOfOneScript(text))
        return measure(text);
    const QStringView blank = u" ";
    double width = 0;
    for (qsizetype begin = 0, end = 0; begin < text.size(); begin = end) {
        end = endOfWord(text, begin);
        const QStringView word = QStringView(text).sliced(begin, end - begin);
        width += begin == 0 ? widthOfWord({}, word) : widthOfWord(blank, word) - widthOfWord({}, blank);
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
double WidthBounds::step(QStringView around, QChar before, QChar letter)
{
    QString text = around.toString();
    if (before != none)
        text += before;
    return m_metrics.horizontalAdvance(text + letter) - m_metrics.horizontalAdvance(text);
}

/// How much wider a text can become when of two neighbours the zeros are other digits.
double WidthBounds::gain(QChar before, QChar letter)
{
    const auto found = m_gains.constFind({before, letter});
    if (found != m_gains.constEnd())
        return *found;
    const auto choices = [](QChar c) { return isDigit(c) ? u"0123456789"_s : QString(c); };
    double most = 0;
    for (const QStringView around : surroundings) {
        const double withZeros = step(around, before, letter);
        for (const QChar first : choices(before)) {
            for (const QChar second : choices(letter))
                most = std::max(most, step(around, first, second) - withZeros);
        }
    }
    return *m_gains.insert({before, letter}, most);
}

WidestText::WidestText(std::shared_ptr<WidthBounds> bounds) : m_bounds(std::move(bounds)) {}

void WidestText::take(const QString &text)
{
    if (m_bounds->bound(text) > m_width)
        m_width = std::max(m_width, m_bounds->width(text));
}
