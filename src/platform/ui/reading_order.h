#pragma once

#include <QtCore/QList>
#include <QtCore/Qt>

class QWidget;

/// The controls of a page that can take the keyboard, as a reader goes over it: bands one below the other, in
/// a band columns one beside the other from the side where the language begins, in a column bands again. A
/// frame or an area with its controls is read as a whole. Hidden controls stand where they would be shown.
QList<QWidget *> readingOrder(const QWidget &page, Qt::LayoutDirection direction);

/// Lets Tab go over a page in its reading order.
void tabInReadingOrder(const QWidget &page, Qt::LayoutDirection direction);
