#pragma once

#include "platform/database/field.h"

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/Qt>

// What the grids do with the texts of their cells.

/// Amounts stand with their last digits below each other, in either direction. Whole numbers are mostly codes
/// that are shown as words.
Qt::Alignment alignmentOf(FieldType type);
/// The same to the left or right of the page itself, for a grid of that direction.
Qt::Alignment absoluteAlignment(Qt::Alignment alignment, Qt::LayoutDirection direction);

/// The text with the marks that keep it as it is written inside a line of that direction.
QString isolated(const QString &text, Qt::LayoutDirection direction);

/// What a hidden heading of a row says to who cannot see where the row stands: its number, from 1.
QVariant rowHeading(int row, int role);

/// The text with blanks for its line breaks and tabs.
QString inOneLine(const QString &text);
