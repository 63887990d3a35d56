#include "look_measures.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QColor>
#include <QtGui/QTextLayout>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
double luminance(const QColor &color)
{
    const auto part = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}
} // namespace

double contrast(const QColor &ink, const QColor &ground)
{
    const double cover = ink.alphaF();
    const auto mixed = [cover](double over, double under) { return over * cover + under * (1 - cover); };
    const double a = luminance(QColor::fromRgbF(static_cast<float>(mixed(ink.redF(), ground.redF())),
                                                static_cast<float>(mixed(ink.greenF(), ground.greenF())),
                                                static_cast<float>(mixed(ink.blueF(), ground.blueF()))));
    const double b = luminance(ground);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QSize textSize(const QWidget &control, const QString &text)
{
    return control.fontMetrics().boundingRect(QRect(0, 0, 10000, 10000), Qt::TextShowMnemonic, text).size();
}

int inkHeight(const QWidget &control, const QString &text, Centred centred)
{
    QTextLayout layout(text, control.font());
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    const QFontMetricsF metrics(control.font());
    const QRectF ink = metrics.tightBoundingRect(text); // about the baseline
    const bool byLine = centred == Centred::ByLine && line.isValid();
    const double height = byLine ? line.height() : metrics.height();
    const double baseline = byLine ? line.ascent() : metrics.ascent();
    const double above = height / 2 - baseline - ink.top();
    const double below = baseline + ink.bottom() - height / 2;
    return int(std::ceil(2 * std::max(above, below)));
}

bool isAmount(const QString &text)
{
    static const QRegularExpression amount(
        u"^[\\x{2066}-\\x{2069}]*-?[0-9,]+\\.[0-9]+[\\x{2066}-\\x{2069}]*$"_s);
    return amount.match(text).hasMatch();
}

bool turnsAround(const QString &text)
{
    static const QRegularExpression isolate(u"[\\x{2066}-\\x{2068}][^\\x{2069}]*\\x{2069}"_s);
    static const QRegularExpression turning(u"[0-9][-+ ]+[0-9]|(^|[^0-9])[-+][0-9]"_s);
    return turning.match(QString(text).remove(isolate)).hasMatch();
}
