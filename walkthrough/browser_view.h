#pragma once

#include <QtCore/QStringList>

class FlexGrid;
class Player;
class Screen;

// How the stories read and check what a browser shows.

inline const QString browser = QStringLiteral("frmUniversalGrid");

/// The browser's grid. @throws std::runtime_error when a person can't reach it
FlexGrid &gridOf(const Screen &screen);
/// The shown texts of a column in the order of the rows.
QStringList column(const Screen &screen, const QString &field);
QStringList sorted(QStringList texts);
/// @throws std::runtime_error with both lists when they differ; `what` names what was looked at
void expect(const QStringList &found, const QStringList &expected, const QString &what);

/// Chooses an entry of a menu, or closes the browser, once its work is done.
void chooseInBrowser(Player &player, const char *menu, const char *entry);
void closeBrowser(Player &player);
