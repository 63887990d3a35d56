#include "platform/ui/application.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/process.h"
#include "support/screens.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <deque>
#include <memory>

namespace
{
constexpr int stuckExit = 98;
constexpr int tickMilliseconds = 2;
constexpr int patienceTicks = 1000; // for a modal window without an action to go

struct Step {
    const char *wanted;
    std::function<bool(QWidget *)> runsOn;
};

struct Script {
    std::unique_ptr<QTimer> timer;
    std::deque<Step> steps;
    int idleTicks = 0;
} script;

/// Runs a part of a test inside the event loop: what it throws fails the test instead of reaching the
/// program.
void runStep(const std::function<void()> &action)
{
    runEventRoutine([&] {
        try {
            action();
        } catch (const std::exception &failure) {
            ADD_FAILURE() << failure.what();
            endProcess(stuckExit);
        }
    });
}

void lookForModal()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (!modal || !modal->isVisible()) {
        script.idleTicks = 0;
        return;
    }
    if (!script.steps.empty()) {
        Step step = std::move(script.steps.front());
        script.steps.pop_front();
        if (step.runsOn(modal)) {
            script.idleTicks = 0;
            return;
        }
        script.steps.push_front(std::move(step));
    }
    if (++script.idleTicks > patienceTicks) {
        ADD_FAILURE() << "The modal window " << modal->objectName().toStdString() << " \""
                      << modal->windowTitle().toStdString() << "\" stands with no action for it";
        script.steps.clear();
        endProcess(stuckExit);
    }
}
} // namespace

void support::addModalStep(const char *wanted, std::function<bool(QWidget *)> runsOn)
{
    script.steps.push_back({wanted, std::move(runsOn)});
}

void later(std::function<void()> action)
{
    QTimer::singleShot(0, qApp, [action = std::move(action)] { runStep(action); });
}

void support::beginTest()
{
    resetProcess();
    setEndsWithLastScreen(false);
    script.idleTicks = 0;
    script.timer = std::make_unique<QTimer>();
    // A timer does not fire inside its own slot; a posted call does, so steps can nest.
    QObject::connect(script.timer.get(), &QTimer::timeout, script.timer.get(), [] {
        QMetaObject::invokeMethod(
            script.timer.get(), [] { runStep(lookForModal); }, Qt::QueuedConnection);
    });
    script.timer->start(tickMilliseconds);
}

void support::endTest()
{
    script.timer.reset();
    for (const Step &step : script.steps)
        ADD_FAILURE() << "No modal " << step.wanted << " came";
    script.steps.clear();
    resetProcess();
    // A screen takes its menus with it, which are windows too.
    const auto windows = QApplication::topLevelWidgets();
    const QList<QPointer<QWidget>> left(windows.begin(), windows.end());
    for (const QPointer<QWidget> &window : left) {
        auto *screen = qobject_cast<Screen *>(window.data());
        if (screen && screen->deletesItself())
            delete screen;
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::removePostedEvents(qApp, QEvent::MetaCall);
    setUntrappedHook({});
    setProgramTitle(QStringLiteral("Quvana"));
    loadToolkitWords(false);
    Screen::setHourglass(false);
    resetProcess();
}
