#include "platform/ui/reading_order.h"

#include <QtWidgets/QWidget>

#include <algorithm>

namespace
{
/// A control, or what stands together in a frame.
struct Piece {
    QRect place; ///< from the side where the language begins
    QList<QWidget *> controls;
};
using Pieces = QList<Piece>;

QRect fromTheBeginning(QRect place, Qt::LayoutDirection direction)
{
    if (direction == Qt::RightToLeft)
        place.moveLeft(-place.right());
    return place;
}

Pieces piecesOf(const QWidget &page, Qt::LayoutDirection direction)
{
    Pieces pieces;
    const auto children = page.findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        if (child->isWindow())
            continue;
        const QList<QWidget *> controls =
            child->focusPolicy() == Qt::NoFocus ? readingOrder(*child, direction) : QList<QWidget *>{child};
        if (!controls.isEmpty())
            pieces << Piece{fromTheBeginning(child->geometry(), direction), controls};
    }
    return pieces;
}

/// Parts the pieces wherever a line between them crosses none.
QList<Pieces> parted(Pieces pieces, Qt::Orientation line)
{
    const auto begin = [line](const Piece &piece) {
        return line == Qt::Horizontal ? piece.place.top() : piece.place.left();
    };
    const auto end = [line](const Piece &piece) {
        return line == Qt::Horizontal ? piece.place.bottom() : piece.place.right();
    };
    std::ranges::stable_sort(pieces, {}, begin);
    QList<Pieces> parts;
    int reached = 0;
    for (const Piece &piece : std::as_const(pieces)) {
        if (parts.isEmpty() || begin(piece) > reached) {
            parts << Pieces();
            reached = end(piece);
        }
        parts.last() << piece;
        reached = std::max(reached, end(piece));
    }
    return parts;
}

void read(const Pieces &pieces, QList<QWidget *> &order)
{
    for (const Qt::Orientation line : {Qt::Horizontal, Qt::Vertical}) {
        const QList<Pieces> parts = parted(pieces, line);
        if (parts.size() < 2)
            continue;
        for (const Pieces &part : parts)
            read(part, order);
        return;
    }
    // What lies over each other keeps the order of its upper edges, and of its making.
    Pieces heap = pieces;
    std::ranges::stable_sort(heap, {}, [](const Piece &piece) { return piece.place.top(); });
    for (const Piece &piece : std::as_const(heap))
        order << piece.controls;
}

/// The controls of that order as Tab goes over them now.
QList<QWidget *> tabOrder(QWidget *first, const QList<QWidget *> &controls)
{
    QList<QWidget *> order{first};
    for (QWidget *next = first->nextInFocusChain(); next != first; next = next->nextInFocusChain()) {
        if (controls.contains(next))
            order << next;
    }
    return order;
}
} // namespace

QList<QWidget *> readingOrder(const QWidget &page, Qt::LayoutDirection direction)
{
    QList<QWidget *> order;
    read(piecesOf(page, direction), order);
    return order;
}

void tabInReadingOrder(const QWidget &page, Qt::LayoutDirection direction)
{
    const QList<QWidget *> order = readingOrder(page, direction);
    if (order.isEmpty() || tabOrder(order.first(), order) == order)
        return;
    for (qsizetype i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
}
