#pragma once

#include <QtCore/QStringList>

class Screen;

/// What a user would frown at on a shown screen, one line for each fault that names the control: none on a
/// screen that looks as it should.
QStringList lookFaults(Screen &screen);
