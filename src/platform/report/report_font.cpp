#include "platform/report/report_font.h"

#include "platform/ui/fonts.h"

#include <QtGui/QPainter>
#include <QtGui/QTextLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int twipsPerPoint = 20;
constexpr QChar ellipsis(0x2026);

QFont fontInTwips(const QString &family, int points, bool bold)
{
    QFont font = readableFont(family, points, bold);
    font.setPixelSize(std::max(points, 1) * twipsPerPoint);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

Qt::LayoutDirection directionOf(const QString &text, const TextStyle &style)
{
    return !style.leftToRight && text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

QTextOption optionFor(const QString &text, const TextStyle &style, QTextOption::WrapMode wrap)
{
    QTextOption option(style.side | Qt::AlignAbsolute);
    option.setTextDirection(directionOf(text, style));
    option.setWrapMode(wrap);
    return option;
}

} // namespace

QString withLineFeeds(const QString &text)
{
    const auto special = [](QChar c) {
        return c == u'\r' || c == u'\t' || c == u'\n' || c == QChar::LineSeparator ||
               c == QChar::ParagraphSeparator;
    };
    if (std::none_of(text.cbegin(), text.cend(), special))
        return text;
    QString lines = text;
    lines.replace(u"\r\n"_s, u"\n"_s);
    for (QChar &c : lines) {
        if (special(c))
            c = c == u'\t' ? u' ' : u'\n';
    }
    while (lines.endsWith(u'\n'))
        lines.chop(1);
    return lines;
}

ReportFont::ReportFont(const QString &family, int points, bool bold)
    : m_font(fontInTwips(family, points, bold)), m_bounds(std::make_shared<WidthBounds>(QFontMetrics(m_font)))
{
    // Arabic fonts leave room for marks upon marks, nearly twice what words with all their vowels need.
    const QFontMetricsF metrics(m_font);
    const QRectF ink =
        metrics.tightBoundingRect(u"\u0644\u064E\u0623\u064F\u0645\u0651\u064B\u0627 \u062C\u0639\u064A"_s);
    m_ascent = std::max(metrics.ascent(), -ink.top());
    m_descent = std::max(metrics.descent(), ink.bottom());
}

bool ReportFont::fits(const QString &text, double width)
{
    return !text.contains(u'\n') && m_bounds->bound(text) <= width;
}

int ReportFont::breakIntoLines(const QString &text, const QRectF &place, const TextStyle &style,
                               QPainter *painter)
{
    const QStringList paragraphs = text.split(u'\n');
    int lines = 0;
    for (qsizetype i = 0; i < paragraphs.size() && lines < style.lines; ++i) {
        const QString &paragraph = paragraphs[i];
        const bool isLast = i + 1 == paragraphs.size();
        QTextLayout layout(paragraph, m_font);
        layout.setTextOption(optionFor(paragraph, style, QTextOption::WrapAtWordBoundaryOrAnywhere));
        layout.beginLayout();
        int end = 0;
        do {
            QTextLine line = layout.createLine();
            if (!line.isValid())
                break;
            line.setLineWidth(place.width());
            const double baseline = place.top() + lines * lineHeight() + m_ascent;
            line.setPosition({place.left(), baseline - line.ascent()});
            ++lines;
            if (lines == style.lines && (!isLast || line.textStart() + line.textLength() < paragraph.size()))
                break; // more follows than has room
            end = line.textStart() + line.textLength();
        } while (end < paragraph.size());
        layout.endLayout();
        if (!painter)
            continue;

        for (int line = 0; line < layout.lineCount(); ++line) {
            const QTextLine drawn = layout.lineAt(line);
            if (drawn.textStart() + drawn.textLength() <= end)
                drawn.draw(painter, {});
        }
        if (lines == style.lines && (end < paragraph.size() || !isLast)) {
            QString rest = paragraph.mid(end);
            if (!isLast)
                rest += ellipsis;
            const QRectF lastLine = place.translated(0, (lines - 1) * lineHeight());
            QString elided =
                QFontMetricsF(m_font).elidedText(rest, Qt::ElideRight, place.width(), Qt::TextSingleLine);
            if (elided.isEmpty())
                elided = ellipsis; // no room for a letter beside it
            drawInOneLine(*painter, lastLine, elided, style);
        }
    }
    return std::max(lines, 1);
}

int ReportFont::linesOf(const QString &text, double width, const TextStyle &style)
{
    if (style.lines <= 1 || style.unbroken || fits(text, width))
        return 1;
    return breakIntoLines(text, QRectF(0, 0, width, 0), style, nullptr);
}

const ReportFont::Shaped &ReportFont::shaped(const QString &text, const TextStyle &style)
{
    constexpr qsizetype mostKept = 4000;
    QHash<QString, Shaped> &known =
        directionOf(text, style) == Qt::RightToLeft ? m_rightToLeft : m_leftToRight;
    if (const auto found = known.constFind(text); found != known.constEnd())
        return *found;
    if (known.size() >= mostKept)
        known.clear();
    QTextLayout layout(text, m_font);
    QTextOption option = optionFor(text, style, QTextOption::NoWrap);
    option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(1e6);
    line.setPosition({0, -line.ascent()});
    layout.endLayout();
    return *known.insert(text, {layout.glyphRuns(), line.horizontalAdvance()});
}

void ReportFont::drawInOneLine(QPainter &painter, const QRectF &place, const QString &text,
                               const TextStyle &style)
{
    const Shaped &line = shaped(text, style);
    const double spare = place.width() - line.width;
    const QPointF baseline(place.left(), place.top() + m_ascent);
    if (spare >= 0) {
        const double before = style.side & Qt::AlignHCenter ? spare / 2
                              : style.side & Qt::AlignRight ? spare
                                                            : 0;
        for (const QGlyphRun &run : line.glyphs)
            painter.drawGlyphRun(baseline + QPointF(before, 0), run);
        return;
    }
    painter.save();
    painter.translate(baseline);
    painter.scale(place.width() / line.width, place.width() / line.width);
    for (const QGlyphRun &run : line.glyphs)
        painter.drawGlyphRun({}, run);
    painter.restore();
}

void ReportFont::draw(QPainter &painter, const QRectF &place, const QString &text, const TextStyle &style)
{
    if (text.isEmpty())
        return;
    if (style.unbroken || fits(text, place.width()))
        drawInOneLine(painter, place, text, style);
    else
        breakIntoLines(text, place, style, &painter);
}

std::shared_ptr<ReportFont> ReportFonts::font(const QString &family, int points, bool bold)
{
    std::shared_ptr<ReportFont> &font = m_fonts[{family, points, bold}];
    if (!font)
        font = std::make_shared<ReportFont>(family, points, bold);
    return font;
}
