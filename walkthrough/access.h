#pragma once

#include <QtCore/QStringList>

class Screen;

/// What a user of the keyboard or of a screen reader would miss on a shown screen, one line for each fault
/// that names the control. Reads the screen through the accessibility interface.
QStringList accessFaults(Screen &screen);
