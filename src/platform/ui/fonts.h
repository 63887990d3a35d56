#pragma once

#include <QtGui/QFont>

/// A font of a family by name, at a size in points (at least 1). Behind the family stand others that have
/// Latin and Arabic letters, so that a family that the machine lacks, or one without Arabic, still gives
/// readable text.
QFont readableFont(const QString &family, int points, bool bold);
