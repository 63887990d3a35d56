#pragma once

#include "platform/ui/text_widths.h"

#include <QtCore/QHash>
#include <QtCore/QRectF>
#include <QtGui/QFont>
#include <QtGui/QGlyphRun>

#include <map>
#include <memory>
#include <tuple>

class QPainter;

/// How a text stands in its place.
struct TextStyle {
    Qt::Alignment side = Qt::AlignLeft; ///< left, right or centre of the page itself
    bool leftToRight = false;           ///< as numbers read; else in the direction of its first letter
    bool unbroken = false;              ///< one line, written smaller when it is too wide
    int lines = 1;                      ///< the most that it may take; what is longer ends in an ellipsis
};

/// A font of a report. All lengths are twips: texts are measured without any device, so that a page breaks at
/// the same places on the screen, on paper and in a file. Lines are as high as Arabic and Latin letters need.
class ReportFont
{
public:
    ReportFont(const QString &family, int points, bool bold);

    double lineHeight() const { return m_ascent + m_descent; }
    /// The lines, from 1 to the style's most, that a text takes at that width.
    int linesOf(const QString &text, double width, const TextStyle &style);
    /// Writes a text from the top of a place downwards.
    void draw(QPainter &painter, const QRectF &place, const QString &text, const TextStyle &style);

private:
    /// A line of text with the glyphs that show it, from its left end on the baseline.
    struct Shaped {
        QList<QGlyphRun> glyphs;
        double width = 0;
    };
    const Shaped &shaped(const QString &text, const TextStyle &style);
    bool fits(const QString &text, double width);
    void drawInOneLine(QPainter &painter, const QRectF &place, const QString &text, const TextStyle &style);
    /// Breaks a text into lines, draws them if there is a painter, and returns their number.
    int breakIntoLines(const QString &text, const QRectF &place, const TextStyle &style, QPainter *painter);

    QFont m_font;
    std::shared_ptr<WidthBounds> m_bounds;
    QHash<QString, Shaped> m_leftToRight; ///< many texts of a report come again and again
    QHash<QString, Shaped> m_rightToLeft;
    double m_ascent = 0;
    double m_descent = 0;
};

/// The fonts of one report, each made once.
class ReportFonts
{
public:
    std::shared_ptr<ReportFont> font(const QString &family, int points, bool bold);

private:
    std::map<std::tuple<QString, int, bool>, std::shared_ptr<ReportFont>> m_fonts;
};

/// A text with line feeds as its only line breaks, none at its end, and blanks for its tabs.
QString withLineFeeds(const QString &text);
