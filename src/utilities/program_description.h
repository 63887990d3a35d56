#pragma once

#include <QtCore/QStringList>

/// The brief description of the program, in the language: 20 lines; blank ones are strings of blanks.
QStringList briefDescription(bool arabic);

/// The longer one, at most 50 lines.
QStringList longDescription(bool arabic);
