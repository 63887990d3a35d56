#include "platform/ui/flex_grid_headings.h"

#include "platform/ui/flex_grid.h"
#include "platform/ui/twips.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QStyle>

#include <utility>

HeadingMouse::HeadingMouse(FlexGrid &grid) : QObject(&grid), m_grid(grid), m_header(*grid.horizontalHeader())
{
    m_header.viewport()->installEventFilter(this);
}

void HeadingMouse::setDragging(int twips, std::function<void(int from, int to)> dropped)
{
    m_threshold = twips;
    m_dropped = std::move(dropped);
}

bool HeadingMouse::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonDblClick: // by another button it is a second press
        return static_cast<QMouseEvent *>(event)->button() != Qt::LeftButton;
    case QEvent::MouseMove:
        return move(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        return release(*static_cast<QMouseEvent *>(event));
    default:
        return QObject::eventFilter(watched, event);
    }
}

bool HeadingMouse::press(const QMouseEvent &event)
{
    const QPoint place = event.position().toPoint();
    const int column = columnAt(place);
    m_armed.reset();
    m_dragged = -1;
    if (isDragging() && column >= 0 && !isEdge(place))
        m_armed = place;
    if (event.button() != Qt::RightButton || column < 0)
        return false;
    Q_EMIT m_grid.contextMenuWanted(0, column, m_header.viewport()->mapTo(&m_grid, place));
    return true;
}

bool HeadingMouse::move(const QMouseEvent &event)
{
    const QPoint place = event.position().toPoint();
    if (m_dragged < 0 && m_armed && event.buttons().testFlag(Qt::LeftButton) &&
        (place - *m_armed).manhattanLength() * twipsPerPixel >= m_threshold) {
        m_dragged = columnAt(place);
        if (m_dragged >= 0)
            m_header.viewport()->setCursor(Qt::ClosedHandCursor);
    }
    return m_dragged >= 0;
}

bool HeadingMouse::release(const QMouseEvent &event)
{
    const int to = columnAt(event.position().toPoint());
    const int from = std::exchange(m_dragged, -1);
    m_armed.reset();
    m_header.viewport()->unsetCursor();
    if (from >= 0 && from < m_grid.cols() && to >= 0) // the columns can be others by now
        m_dropped(from, to);
    return false;
}

int HeadingMouse::columnAt(QPoint place) const
{
    const bool inside = m_header.viewport()->rect().contains(place);
    const int column = inside ? m_header.visualIndexAt(place.x()) : -1;
    return column >= m_grid.fixedCols() ? column : -1;
}

/// Whether a press here resizes a column.
bool HeadingMouse::isEdge(QPoint place) const
{
    const int grip = m_header.style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, &m_header);
    const int section = m_header.logicalIndexAt(place.x());
    const int left = m_header.sectionViewportPosition(section);
    return place.x() < left + grip || place.x() > left + m_header.sectionSize(section) - grip;
}
