#pragma once

#include <QtCore/QString>

/// Takes a picture of each screen in both languages at 8 points bold and at 12 points, named
/// `frmMain-arabic-8.png` and so on; of the browser one for each table. The session must stand on a
/// store with a family; its language and font are put back.
void takeTour(const QString &folder);
