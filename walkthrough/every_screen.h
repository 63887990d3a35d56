#pragma once

#include <QtCore/QString>

#include <functional>

class Screen;

/// How the screens are shown on a visit.
struct Look {
    bool arabic = true;
    qint16 points = 8;
    bool bold = false;
};

/// Called with each screen while it is shown, and a name that tells apart what one screen shows: `frmMain`,
/// `frmMain-tutorial`, `frmUniversalGrid-ledger`.
using Visit = std::function<void(Screen &screen, const QString &name)>;

/// Shows each screen of the program in turn with that look, filled as in use. The session must stand on a
/// store with a family; its language and font are put back, and so is the store.
void visitEveryScreen(const Look &look, const Visit &visit);
