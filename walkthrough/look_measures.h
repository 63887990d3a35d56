#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

class QColor;
class QWidget;

// What a picture of a text is measured by.

/// The ratio of the lighter to the darker one, 1 to 21; the ink may let the ground through.
double contrast(const QColor &ink, const QColor &ground);

/// The lines of a text in a control's font, in pixels.
QSize textSize(const QWidget &control, const QString &text);

/// How a line of text finds its place between top and bottom: the line of a second font is taller than the
/// font of the control says, and boxes do not look at it.
enum class Centred { ByLine, ByFont };

/// Height that a line needs for no ink to be cut off when it is centred, in pixels.
int inkHeight(const QWidget &control, const QString &text, Centred centred);

/// An amount as the screens write it, and nothing else.
bool isAmount(const QString &text);

/// Two numbers, or one and its sign, whose order would turn around in a line from right to left.
bool turnsAround(const QString &text);
