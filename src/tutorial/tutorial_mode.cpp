#include "tutorial/tutorial_mode.h"

void showTutorialIntroduction() {}
void startTutorial(const std::function<void()> &) {}
void generateData() {}
void stopTutorial(const std::function<void()> &) {}
