#pragma once

#include <QtCore/QList>

class QWidget;

/// Lays out a page with one grid and two rows of controls below it: the row of buttons stands at the page's
/// lower edge, the row of moves above it, and the grid takes what is left below its own top. No control
/// changes its distance from the sides. Rows are as high as their first control.
void layOutGridPage(QWidget &grid, const QList<QWidget *> &moves, const QList<QWidget *> &buttons);
