#include "platform/ui/process.h"

#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/screen.h"
#include "platform/ui/wait.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QThread>

#include <exception>
#include <new>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{
struct Process {
    bool reporting = false;
    bool ending = false;
    int exitCode = 0;
    int life = 0; ///< changes with resetProcess(), so that what was posted before does not count any more
    bool endsWithLastScreen = true;
    int routineUnder = -1; ///< event loops and waits that stood when the innermost routine was called; -1 in
                           ///< the toolkit's own frames
    std::function<void()> untrappedHook;
};
Process process;

int standingLoops()
{
    return QThread::currentThread()->loopLevel() + standingWaits();
}

/// Whether the frame below is a routine of the program, and not one of the toolkit that an exception must not
/// cross.
bool isCalledByRoutine()
{
    return process.routineUnder == standingLoops() && std::uncaught_exceptions() == 0;
}

/// `routineUnder` as Process has it.
void runUnder(int routineUnder, const std::function<void()> &routine)
{
    const bool calledByRoutine = isCalledByRoutine();
    {
        const QScopedValueRollback running(process.routineUnder, routineUnder);
        runGuarded(routine);
    }
    // A routine that caused this by itself must not go on behind it; a loop or wait below ends by itself.
    if (calledByRoutine && process.ending)
        throw ProcessEnding{};
}

void beginEnd(int exitCode)
{
    if (!process.ending) {
        process.ending = true;
        process.exitCode = exitCode;
    }
    // Outside of exec() this would only spoil the next one.
    if (QThread::currentThread()->loopLevel() > 0)
        QCoreApplication::exit(process.exitCode);
}

RuntimeError asRuntimeError(const std::exception &failure)
{
    if (const auto *error = dynamic_cast<const RuntimeError *>(&failure))
        return *error;
    if (dynamic_cast<const std::bad_alloc *>(&failure))
        return {7, u"Quvana"_s, u"Out of memory"_s};
    return {51, u"Quvana"_s, u"Internal error: "_s + QString::fromUtf8(failure.what())};
}
} // namespace

void runGuarded(const std::function<void()> &routine)
{
    try {
        routine();
    } catch (const ProcessEnding &) {
    } catch (const std::exception &failure) {
        reportUntrapped(asRuntimeError(failure));
    }
}

void runEventRoutine(const std::function<void()> &routine)
{
    if (!process.ending)
        runUnder(standingLoops(), routine);
}

void runDispatch(const std::function<void()> &dispatch)
{
    runUnder(-1, dispatch);
}

int runProcess(const std::function<void()> &routine)
{
    runEventRoutine(routine);
    if (!process.ending && !Screen::loadedScreens().isEmpty())
        QCoreApplication::exec();
    return process.exitCode;
}

void setUntrappedHook(std::function<void()> hook)
{
    process.untrappedHook = std::move(hook);
}

void reportUntrapped(const RuntimeError &error)
{
    if (process.ending || process.reporting)
        return;
    {
        const QScopedValueRollback reporting(process.reporting, true);
        if (process.untrappedHook)
            process.untrappedHook();
        try {
            showMessage(u"Run-time error '"_s + error.numberText() + u"':\n\n"_s + error.description(),
                        MessageIcon::Critical);
        } catch (const ProcessEnding &) {
        }
    }
    beginEnd(1);
}

void endProcess(int exitCode)
{
    beginEnd(exitCode);
    throw ProcessEnding{};
}

bool processEnding()
{
    return process.ending;
}

int processExitCode()
{
    return process.exitCode;
}

void resetProcess()
{
    process.ending = false;
    process.reporting = false;
    process.exitCode = 0;
    ++process.life;
}

void setEndsWithLastScreen(bool on)
{
    process.endsWithLastScreen = on;
}

void lookForLastScreen()
{
    QMetaObject::invokeMethod(
        qApp,
        [life = process.life] {
            if (life == process.life && process.endsWithLastScreen && !dialogStands() &&
                Screen::loadedScreens().isEmpty())
                beginEnd(0);
        },
        Qt::QueuedConnection);
}
