#pragma once

#include "stress/soak_user.h"

class FlexGrid;

/// What several acts of the soak do with the screens. All throw std::runtime_error when the program does not
/// do what it must.

/// The screen of this name, that must be loaded.
Screen &loaded(const char *name);
/// Opens a screen of the modifications menu, and closes both behind.
void useScreen(Screen &mainScreen, const char *button, const char *name, const SoakUser::Action &use);
/// The grid of rows that a screen has.
FlexGrid &gridOf(Screen &screen);

/// Some day of 2004 as it is typed.
QString someDay(SoakUser &user);
QString someText(SoakUser &user);
void chooseSome(Screen &screen, SoakUser &user, const char *combo);

/// Gives a screen a range of days, as they are typed.
void chooseDates(Screen &screen, SoakUser &user, const QString &from, const QString &to);
/// Turns the pages of a report, and now and then puts it out.
void readReport(Screen &preview, SoakUser &user);
/// What the last export left: a whole file of its kind.
void expectFile(const SoakUser &user);
