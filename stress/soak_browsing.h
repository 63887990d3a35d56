#pragma once

#include "stress/soak_acts.h"

/// The acts of the soak at the screen of the tables: each as SoakAct::run.
namespace browsing
{
void correct(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void cancel(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void look(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void filter(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void rangeOfDates(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void search(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void sort(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void total(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void details(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void exportRows(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void archive(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void merge(Screen &mainScreen, SoakUser &user, SoakBooks &books);
void printRows(Screen &mainScreen, SoakUser &user, SoakBooks &books);
} // namespace browsing
