#include "presentation/grow_screen.h"

#include "platform/ui/controls.h"
#include "platform/ui/fonts.h"
#include "platform/ui/screen.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QScreen>
#include <QtWidgets/QScrollArea>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int designedPoints = 12;
constexpr int titleBarHeight = 40; ///< of the window, in pixels
constexpr char growthProperty[] = "growth";

double roomFor(const QFont &font)
{
    const QFontMetricsF asked(font);
    const QFontMetricsF designed(readableFont({}, designedPoints, true));
    const QString letters = u"abcdefghijklmnopqrstuvwxyz ABC ابتثجحخدذرزسشصضطظعغفقكلمنهوي 0123456789"_s;
    return std::max({1.0, asked.height() / designed.height(),
                     asked.horizontalAdvance(letters) / designed.horizontalAdvance(letters)});
}

QSize scaled(QSize size, double ratio)
{
    return {qRound(size.width() * ratio), qRound(size.height() * ratio)};
}

/// Each limit that is set.
void scaleLimits(QWidget &widget, double ratio)
{
    const QSize least = scaled(widget.minimumSize(), ratio);
    QSize most = scaled(widget.maximumSize(), ratio);
    if (widget.maximumWidth() == QWIDGETSIZE_MAX)
        most.setWidth(QWIDGETSIZE_MAX);
    if (widget.maximumHeight() == QWIDGETSIZE_MAX)
        most.setHeight(QWIDGETSIZE_MAX);
    widget.setMaximumSize(most);
    widget.setMinimumSize(least);
}

void scaleControls(const QWidget &parent, double ratio)
{
    const auto children = parent.findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        if (child->isWindow())
            continue;
        // Both edges are rounded, so that what stands in line stays so.
        const QPoint topLeft(qRound(child->x() * ratio), qRound(child->y() * ratio));
        const QPoint bottomRight(qRound((child->x() + child->width()) * ratio),
                                 qRound((child->y() + child->height()) * ratio));
        child->setGeometry(QRect(topLeft, bottomRight - QPoint(1, 1)));
        if (const auto *area = qobject_cast<const QScrollArea *>(child); area && area->widget()) {
            area->widget()->resize(scaled(area->widget()->size(), ratio));
            scaleControls(*area->widget(), ratio);
        } else if (holdsControls(child)) {
            scaleControls(*child, ratio);
        }
    }
}
} // namespace

void growScreen(Screen &screen, const QFont &font)
{
    QWidget &surface = *screen.surface();
    const QVariant known = surface.property(growthProperty);
    const double before = known.isValid() ? known.toDouble() : 1;
    const QSize least = scaled(surface.minimumSize(), 1 / before); // as designed
    const QSize display = screen.screen()->availableSize() - QSize(0, titleBarHeight);
    const QSize bars = screen.minimumSizeHint() - surface.minimumSize();
    double growth = roomFor(font);
    if (!least.isEmpty())
        growth = std::clamp(std::min(double(display.width() - bars.width()) / least.width(),
                                     double(display.height() - bars.height()) / least.height()),
                            1.0, growth);
    if (qFuzzyCompare(growth, before))
        return;
    surface.setProperty(growthProperty, growth);
    const double ratio = growth / before;
    const QSize window = (screen.size() + scaled(surface.size(), ratio) - surface.size())
                             .boundedTo(display.expandedTo(screen.size()));
    scaleControls(surface, ratio);
    for (QWidget *widget : {static_cast<QWidget *>(&screen), &surface})
        scaleLimits(*widget, ratio);
    screen.resize(window);
}
