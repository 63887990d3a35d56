#pragma once

#include <QtCore/QObject>
#include <QtCore/QPoint>

#include <functional>
#include <optional>

class FlexGrid;
class QHeaderView;
class QMouseEvent;

/// What the mouse does on the headings of a grid besides resizing columns: it asks for the context menu, and
/// drags columns where that is wanted.
class HeadingMouse : public QObject
{
    Q_OBJECT

public:
    explicit HeadingMouse(FlexGrid &grid);

    /// `dropped` is called with the dragged column and the one on which it was dropped.
    void setDragging(int twips, std::function<void(int from, int to)> dropped);
    bool isDragging() const { return m_dropped != nullptr; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool press(const QMouseEvent &event);
    bool move(const QMouseEvent &event);
    bool release(const QMouseEvent &event);
    int columnAt(QPoint place) const; ///< -1 beside the headings and on the fixed one
    bool isEdge(QPoint place) const;

    FlexGrid &m_grid;
    QHeaderView &m_header;
    int m_threshold = 0;
    std::function<void(int from, int to)> m_dropped;
    std::optional<QPoint> m_armed; ///< where the button went down
    int m_dragged = -1;
};
