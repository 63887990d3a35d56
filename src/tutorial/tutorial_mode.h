#pragma once

#include <QtCore/QString>

#include <functional>

/// The commands of the menu `mnuTour`. startTutorial() tells its own failures; what fails in the others
/// reaches the caller. After each that may change `engine.tutorialMode` the main screen shows its marks anew:
/// `modeChanged` is called as soon as the mode is another one, before the store is attached.

/// Tells what the tutorial is for.
void showTutorialIntroduction();
/// Makes the test store with the valid members (or takes the one that is there), turns the session to it and
/// offers the generator. A store that can't be made or attached leaves the session where it was.
void startTutorial(const std::function<void()> &modeChanged);
/// Opens the generator beside the main screen, in tutorial mode.
void generateData();
/// Turns the session back to the real store. The generator goes with the store that it writes to.
void stopTutorial(const std::function<void()> &modeChanged);

/// Turns `engine.dbConnection` to the store that the connection string names; screens with typed input ask
/// about it before. When that store can't be opened the one before is attached again.
/// @throws RuntimeError what opening it gives, 3246 inside a transaction.
void attachStore(const QString &connectionString);
