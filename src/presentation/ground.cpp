#include "platform/ui/screen.h"
#include "platform/ui/twips.h"
#include "presentation/prepare_screen.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <numbers>

namespace
{
constexpr int bands = 100;

/// Radians counted from the right, against the clock, as sixteenths of a degree.
int sixteenths(double radians)
{
    return qRound(radians * 180 / std::numbers::pi * 16);
}

void fillSlice(QPainter &painter, QPoint center, int radius, double from, double to)
{
    const QRect circle(center - QPoint(radius, radius), QSize(2 * radius, 2 * radius));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawPie(circle, sixteenths(from), sixteenths(to) - sixteenths(from));
}

void paintFrame(QPainter &painter, QSize surface)
{
    constexpr int strip = 5;
    constexpr int radius = 7;
    const int width = surface.width();
    const int height = surface.height();
    const QColor grey(128, 128, 128);
    painter.fillRect(0, 0, strip, height, Qt::white);
    painter.fillRect(0, 0, width, strip, Qt::white);
    painter.fillRect(width - strip, 0, strip, height, grey);
    painter.fillRect(0, height - strip, width, strip, grey);
    fillSlice(painter, {strip, height - strip}, radius, 3.1415926, 3.90953745);
    fillSlice(painter, {width - strip, strip}, radius, 0.78539815, 1.5707963);
    painter.setPen(Qt::black);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(0, 0, width - 1, height - 1);
}
} // namespace

void PaintGradient(Screen &screen, int red, int green, int blue, int style)
{
    if (style < 1 || style > 4)
        style = 1;
    screen.paintGround([=](QPainter &painter, QSize surface) {
        const bool across = style <= 2; // bands that lie across the screen
        const bool reversed = style == 2 || style == 4;
        const int length = twipsFromPixels(across ? surface.height() : surface.width());
        const int size = length / bands; // whole twips: what is left over at the end stays unpainted
        for (int band = 1; band <= bands; ++band) {
            const auto part = [band](int start) { return std::clamp(start - 3 * band, 0, 255); };
            int from = (band - 1) * size;
            int to = band * size;
            if (reversed) {
                const int end = length - from;
                from = band == bands ? 0 : length - to; // the last one reaches the edge
                to = end;
            }
            const int start = pixelsFromTwips(from);
            const int extent = pixelsFromTwips(to) - start;
            const QColor color(part(red), part(green), part(blue));
            if (across)
                painter.fillRect(0, start, surface.width(), extent, color);
            else
                painter.fillRect(start, 0, extent, surface.height(), color);
        }
    });
}

void PaintScreenFrame(Screen &screen)
{
    screen.clearGround();
    screen.paintGround(paintFrame);
}
