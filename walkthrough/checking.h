#pragma once

#include <QtCore/QStringList>

/// Visits each screen in both languages at 8, 10 and 12 points, and once at more, and gives a line for each
/// fault of its looks and of what the keyboard and a screen reader meet; a screen that looks wrong leaves its
/// picture in the folder. The session must stand on a store with a family.
QStringList checkEveryScreen(const QString &folder);
