#include "platform/ui/grid_page.h"

#include <QtWidgets/QWidget>

void layOutGridPage(QWidget &grid, const QList<QWidget *> &moves, const QList<QWidget *> &buttons)
{
    constexpr int bottomMargin = 10; // pixels
    constexpr int gap = 12;
    const int buttonTop = grid.parentWidget()->height() - bottomMargin - buttons.first()->height();
    const int moveTop = buttonTop - gap - moves.first()->height();
    for (QWidget *button : buttons)
        button->move(button->x(), buttonTop);
    for (QWidget *move : moves)
        move->move(move->x(), moveTop);
    grid.resize(grid.width(), moveTop - gap - grid.y());
}
