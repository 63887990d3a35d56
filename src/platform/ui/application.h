#pragma once

#include <QtWidgets/QApplication>

#include <functional>

class RuntimeError;

/// Thrown to unwind everything that stands behind a wait once the process is ending: modal screens, dialogs,
/// waits. Nobody but the routines below and the event dispatch catches it; it is no std::exception, so no
/// handler of failures takes it.
struct ProcessEnding {
};

/// The application. Its event dispatch ends what an event routine outside of runEventRoutine() throws, by the
/// same rules.
class Application : public QApplication
{
    Q_OBJECT

public:
    Application(int &argc, char **argv);
    ~Application() override;
    bool notify(QObject *receiver, QEvent *event) override;
};

/// The one place where untrapped failures end: runs a routine, reports a RuntimeError that leaves it by
/// reportUntrapped(), which ends the process with exit code 1, and stops the unwinding of an ending process.
void runGuarded(const std::function<void()> &routine);

/// The same around the routine of an event, as the toolkit calls it: no exception crosses the toolkit's own
/// frames, which are not made for it. An event that another routine caused by itself ends that routine too
/// when it ends the process. Nothing runs any more in a process that is ending.
void runEventRoutine(const std::function<void()> &routine);

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

/// The title of boxes that name none: "Quvana" until it is set.
QString programTitle();
void setProgramTitle(const QString &title);

/// The toolkit's own words (OK, Cancel, the calendar, menus of text boxes) in Arabic or English, and the
/// direction of boxes that no screen owns. Screens have a direction of their own.
void loadToolkitWords(bool arabic);

/// Serves events until `done` is true, sleeping between them. Throws ProcessEnding when the process ends
/// meanwhile. A `done` that never becomes true makes a wait that ends only with the process.
void serveEventsUntil(const std::function<bool()> &done);

/// Serves the events that are waiting now and returns (the platform's DoEvents).
/// Throws ProcessEnding when the process ended meanwhile.
void serveEvents();
