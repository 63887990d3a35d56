#pragma once

#include <functional>

class RuntimeError;

/// Thrown to unwind everything that stands behind a wait once the process is ending: modal screens, dialogs,
/// waits. Nobody but the routines below catches it; it is no std::exception, so no handler of failures takes
/// it.
struct ProcessEnding {
};

/// The one place where untrapped failures end: runs a routine, reports a RuntimeError that leaves it by
/// reportUntrapped(), which ends the process with exit code 1, and stops the unwinding of an ending process.
void runGuarded(const std::function<void()> &routine);

/// The same around the routine of an event, as the toolkit calls it: no exception crosses the toolkit's own
/// frames, which are not made for it. An event that another routine caused by itself ends that routine too
/// when it ends the process. Nothing runs any more in a process that is ending.
void runEventRoutine(const std::function<void()> &routine);

/// The same around a dispatch of the toolkit, which calls event routines in its turn. It runs in a process
/// that is ending, too: the windows have still to go.
void runDispatch(const std::function<void()> &dispatch);

/// The whole life of the process: the routine, then its screens' events until the last screen is unloaded or
/// the process ends. Ends at once when the routine leaves no screen loaded. Returns the exit code.
int runProcess(const std::function<void()> &routine);

/// What an untrapped failure does first, before its box comes: the roll-back of an open transaction. It must
/// not throw.
void setUntrappedHook(std::function<void()> hook);

/// Rolls back through the hook, shows the one box `Run-time error '<n>':`, blank line, description (line
/// feeds between them, critical icon), and begins the end of the process with exit code 1. A second failure
/// while the box stands or the process ends is not shown.
void reportUntrapped(const RuntimeError &error);

/// Ends the process at once: no statement behind the call runs, no event routine is called any more. Inside
/// of waits the stack is unwound by ProcessEnding.
[[noreturn]] void endProcess(int exitCode = 0);

/// True from the moment when the process began to end.
bool processEnding();
/// The exit code that it ends with.
int processExitCode();
/// Forgets that the process ended; for tests, which go on.
void resetProcess();

/// Whether the process ends, with exit code 0, once its last screen is unloaded and events are served again
/// (also by a wait, but not under a dialog that still stands). It does, unless a test sets it off.
void setEndsWithLastScreen(bool on);
/// Told by the screens and the dialogs: looks, when events are next served, whether the process is to end.
void lookForLastScreen();
