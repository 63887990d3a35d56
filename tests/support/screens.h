#pragma once

#include "platform/ui/flex_grid.h"
#include "platform/ui/screen.h"
#include "support/printing.h"
#include "support/scripted_dialogs.h"
#include "walkthrough/hand.h"

#include <gtest/gtest.h>

#include <functional>

// Tests with screens. Link tests_support: its main() makes the application and sees to it that each test, of
// whatever fixture, begins and ends with no screen loaded, a process that is not ending and English boxes.
// The process does not end with its last screen unless the test calls setEndsWithLastScreen(true).
//
//     ScriptedDialogs dialogs;
//     dialogs.expectMessage(u"..."_s);
//     frmRevenue screen;
//     screen.load();
//     fill(screen, "txtAmount", u""_s);
//     click(screen, "cmdEntry");
//
// A failure that a routine does not trap shows its box (to be expected in the ScriptedDialogs) and ends the
// process; it does not come out of the helper. Put processEnded() around that. In an action of onModal() or
// later() nothing behind a click that ended the process runs.

/// The control of a screen by its name; one that is missing, or of another class, throws and names those
/// that are there. `control<QAction>(screen, "mnuFont")` gives a menu's entry.
template <typename Class = QWidget>
Class &control(const Screen &screen, const char *name);

using hand::choose;
using hand::click;
using hand::fill;
using hand::isEnabled;
using hand::isShown;
using hand::paste;
using hand::pressKey;
using hand::typeText;
/// Triggers a menu's entry. A hidden or disabled one fails the test.
void chooseMenu(Screen &screen, const char *name);

/// Caption of a label, button, option, check box, frame, menu or entry; else the text of a box.
QString textOf(const Screen &screen, const char *name);

/// Saves a picture of a window to a PNG file and makes its folder. A relative path stands for a file in the
/// folder that the environment's QUVANA_PICTURES names; without it nothing is saved.
void savePicture(QWidget &window, const QString &path);
/// What dark pixels inside of a part of a widget's picture fill; empty without any.
QRect inkOf(QWidget &widget, const QRect &part);

/// Runs an action as soon as a modal window of that class stands: a screen that showModal() shows, or one of
/// the toolkit's dialogs. Actions run in the order in which they were written down, one modal window or
/// several. When a modal screen has no action left, and is not hidden or unloaded by then, the test fails and
/// the process ends, so that nothing hangs; likewise when an action's window never comes.
template <typename Window>
void onModal(std::function<void(Window &)> action);

/// Runs an action once, when events are served next: the way into a wait that is no modal screen.
void later(std::function<void()> action);

/// Runs an action and tells whether it ended the process with that exit code; forgets the end then. For
/// EXPECT_TRUE.
testing::AssertionResult processEnded(int exitCode, const std::function<void()> &action);

// --- details of the templates

namespace support
{
[[noreturn]] void missControl(const Screen &screen, const char *name, const char *wanted);
void beginTest();
void endTest();
/// `runsOn` runs the action and tells whether the window is the one that it is for.
void addModalStep(const char *wanted, std::function<bool(QWidget *)> runsOn);
} // namespace support

template <typename Class>
Class &control(const Screen &screen, const char *name)
{
    auto *found = dynamic_cast<Class *>(hand::find(screen, name));
    if (!found)
        support::missControl(screen, name, Class::staticMetaObject.className());
    return *found;
}

template <typename Window>
void onModal(std::function<void(Window &)> action)
{
    support::addModalStep(Window::staticMetaObject.className(),
                          [action = std::move(action)](QWidget *window) {
                              auto *wanted = dynamic_cast<Window *>(window);
                              if (wanted)
                                  action(*wanted);
                              return wanted != nullptr;
                          });
}
