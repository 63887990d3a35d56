#pragma once

#include <functional>

/// The commands of the menu `mnuTour`. Each tells its own failures. After each that may change
/// `engine.tutorialMode` or the store in use the main screen shows its marks anew.

/// Tells what the tutorial is for.
void showTutorialIntroduction();
/// Makes the test store with the valid members (or takes the one that is there), and turns the session to it.
/// `modeChanged` is called as soon as the mode is on, before the store is attached.
void startTutorial(const std::function<void()> &modeChanged);
/// Opens the generator beside the main screen, in tutorial mode.
void generateData();
/// Turns the session back to the real store.
void stopTutorial(const std::function<void()> &modeChanged);
