#pragma once

#include "stress/soak_user.h"

#include <vector>

/// What was done to the store since it was laid out.
struct SoakBooks {
    int posted = 0;
    int audited = 0; ///< corrections and cancels of transactions, each with its audit row
};

/// One piece of work at the program: begins and ends on the main screen with no other screen loaded. What it
/// does is left to the user's chance. @throws std::runtime_error when the program does not do what it must
struct SoakAct {
    const char *name;
    int weight; ///< how often it comes, against the others
    void (*run)(Screen &mainScreen, SoakUser &user, SoakBooks &books);
};
const std::vector<SoakAct> &soakActs();
