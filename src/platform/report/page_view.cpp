#include "platform/report/page_view.h"

#include "platform/runtime/runtime_error.h"

#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QScrollBar>

#include <algorithm>

namespace
{
constexpr int edge = 14; ///< of the ground around the paper, in pixels
constexpr double leastZoom = 0.2;
constexpr double mostZoom = 5;
} // namespace

PageView::PageView(ReportPages &pages, const QString &failureText)
    : m_pages(&pages), m_failureText(failureText)
{
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Dark);
    horizontalScrollBar()->setSingleStep(30);
    verticalScrollBar()->setSingleStep(30);
}

void PageView::setPages(ReportPages &pages)
{
    if (!pages.hasPage(m_page))
        m_page = pages.count() - 1;
    m_pages = &pages;
    layOut();
}

void PageView::showPage(int page)
{
    m_page = page;
    verticalScrollBar()->setValue(0);
    viewport()->update();
}

/// Pixels at the zoom of 1.
QSizeF PageView::paperSize() const
{
    constexpr double pixelsPerPoint = 96.0 / 72;
    return m_pages->paper().fullRect(QPageLayout::Point).size() * pixelsPerPoint;
}

QSize PageView::sheetSize() const
{
    return (paperSize() * m_zoom).toSize();
}

QRect PageView::sheet() const
{
    const QSize size = sheetSize();
    const QSize room = viewport()->size();
    const QScrollBar &across = *horizontalScrollBar();
    const int scrolled = isRightToLeft() ? across.maximum() - across.value() : across.value();
    const int x = std::max((room.width() - size.width()) / 2, edge) - scrolled;
    const int y = std::max((room.height() - size.height()) / 2, edge) - verticalScrollBar()->value();
    return {{x, y}, size};
}

void PageView::zoomBy(double factor)
{
    m_fit = Fit::None;
    m_zoom = std::clamp(m_zoom * factor, leastZoom, mostZoom);
    layOut();
}

void PageView::fit(Fit fit)
{
    m_fit = fit;
    layOut();
}

void PageView::layOut()
{
    const QSizeF paper = paperSize();
    const QSizeF room = maximumViewportSize() - QSize(2 * edge, 2 * edge);
    const double across = room.width() / paper.width();
    const double down = room.height() / paper.height();
    if (m_fit == Fit::Page) {
        m_zoom = std::min(across, down);
    } else if (m_fit == Fit::Width) {
        const bool scrolls = across > down;
        m_zoom = across - (scrolls ? verticalScrollBar()->sizeHint().width() / paper.width() : 0);
    }
    m_zoom = std::clamp(m_zoom, leastZoom, mostZoom);

    const auto setRange = [](QScrollBar &bar, int sheetLength, int roomLength) {
        bar.setRange(0, std::max(0, sheetLength + 2 * edge - roomLength));
        bar.setPageStep(roomLength);
    };
    setRange(*verticalScrollBar(), sheetSize().height(), viewport()->height());
    setRange(*horizontalScrollBar(), sheetSize().width(), viewport()->width());
    viewport()->update();
}

void PageView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const QRect paper = sheet();
    painter.fillRect(event->rect(), QColor(150, 154, 160));
    painter.fillRect(paper.translated(3, 3), QColor(105, 108, 114));
    painter.fillRect(paper, Qt::white);
    painter.setClipRect(paper & event->rect());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    try {
        m_pages->draw(painter, m_page, paper);
    } catch (const RuntimeError &error) {
        painter.setPen(Qt::darkRed);
        painter.drawText(paper.adjusted(edge, edge, -edge, -edge), Qt::AlignCenter | Qt::TextWordWrap,
                         m_failureText + u'\n' + error.description());
    }
}

void PageView::resizeEvent(QResizeEvent *)
{
    layOut();
}

void PageView::wheelEvent(QWheelEvent *event)
{
    const int turned = event->angleDelta().y();
    const QScrollBar &bar = *verticalScrollBar();
    if (event->modifiers() & Qt::ControlModifier) {
        if (turned != 0)
            zoomBy(turned > 0 ? zoomStep : 1 / zoomStep);
    } else if (turned < 0 && bar.value() == bar.maximum()) {
        Q_EMIT leftPage(1);
    } else if (turned > 0 && bar.value() == bar.minimum()) {
        Q_EMIT leftPage(-1);
    } else {
        QAbstractScrollArea::wheelEvent(event);
    }
}
