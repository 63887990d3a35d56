#include "platform/report/report_font.h"

#include "platform/ui/fonts.h"

#include <QtGui/QPainter>
#include <QtGui/QTextLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int twipsPerPoint = 20;

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
        return c == u'\r' || c == u'\t' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
    };
    if (std::none_of(text.cbegin(), text.cend(), special))
        return text;
    QString lines = text;
    lines.replace(u"\r\n"_s, u"\n"_s);
    for (QChar &c : lines) {
        if (special(c))
            c = c == u'\t' ? u' ' : u'\n';
    }
    return lines;
}

ReportFont::ReportFont(const QString &family, int points, bool bold)
    : m_font(fontInTwips(family, points, bold)), m_bounds(std::make_shared<WidthBounds>(QFontMetrics(m_font)))
{
    QTextLayout sample(u"\u00C1gjy \u0639\u062C\u0625\u0651\u064B"_s, m_font);
    sample.beginLayout();
    const QTextLine line = sample.createLine();
    sample.endLayout();
    m_ascent = line.ascent();
    m_descent = line.descent();
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
                rest += QChar(0x2026);
            const QRectF lastLine = place.translated(0, (lines - 1) * lineHeight());
            const QString elided =
                QFontMetricsF(m_font).elidedText(rest, Qt::ElideRight, place.width(), Qt::TextSingleLine);
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

void ReportFont::drawInOneLine(QPainter &painter, const QRectF &place, const QString &text,
                               const TextStyle &style)
{
    QTextLayout layout(text, m_font);
    layout.setTextOption(optionFor(text, style, QTextOption::NoWrap));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(place.width());
    const double width = line.naturalTextWidth();
    const bool tooWide = width > place.width();
    if (tooWide)
        line.setLineWidth(width);
    const double baseline = tooWide ? 0 : place.top() + m_ascent;
    line.setPosition({tooWide ? 0 : place.left(), baseline - line.ascent()});
    layout.endLayout();
    if (!tooWide) {
        line.draw(&painter, {});
        return;
    }
    painter.save();
    painter.translate(place.left(), place.top() + m_ascent);
    painter.scale(place.width() / width, place.width() / width);
    line.draw(&painter, {});
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
