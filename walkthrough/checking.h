#pragma once

#include <QtCore/QStringList>

/// Visits each screen in both languages at 8, 10 and 12 points, plain and bold, and gives a line for each
/// fault of its looks and of what the keyboard and a screen reader meet. The session must stand on a store
/// with a family.
QStringList checkEveryScreen();
