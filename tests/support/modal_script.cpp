#include "platform/ui/application.h"
#include "support/screens.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <deque>
#include <memory>
#include <vector>

namespace
{
constexpr int stuckExit = 98;
constexpr int tickMilliseconds = 2;
constexpr int patienceTicks = 100; // for a modal window without an action to go

struct Step {
    const char *wanted;
    std::function<bool(QWidget *)> runsOn;
};

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

class Script
{
public:
    static Script &instance()
    {
        static Script script;
        return script;
    }

    void begin()
    {
        m_timer = std::make_unique<QTimer>();
        // A timer does not fire inside its own slot; a posted call does, so steps can nest.
        QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), [this] {
            QMetaObject::invokeMethod(
                m_timer.get(), [this] { runEventRoutine([this] { tick(); }); }, Qt::QueuedConnection);
        });
        m_timer->start(tickMilliseconds);
        m_idleTicks = 0;
    }

    void add(Step step) { m_steps.push_back(std::move(step)); }

    void end()
    {
        m_timer.reset();
        m_acting.clear();
        for (const Step &step : m_steps)
            ADD_FAILURE() << "No modal " << step.wanted << " came";
        m_steps.clear();
    }

private:
    void tick()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || !modal->isVisible()) {
            m_idleTicks = 0;
            return;
        }
        if (!m_steps.empty()) {
            Step step = std::move(m_steps.front());
            m_steps.pop_front();
            const auto depth = m_acting.size();
            m_acting.emplace_back(modal);
            bool ran = false;
            runStep([&] { ran = step.runsOn(modal); });
            m_acting.resize(qMin(depth, m_acting.size()));
            if (ran) {
                m_idleTicks = 0;
                return;
            }
            m_steps.push_front(std::move(step));
        }
        const bool acting = std::find(m_acting.cbegin(), m_acting.cend(), modal) != m_acting.cend();
        if (!acting && ++m_idleTicks > patienceTicks) {
            ADD_FAILURE() << "The modal window " << modal->objectName().toStdString() << " \""
                          << modal->windowTitle().toStdString() << "\" stands with no action for it";
            m_steps.clear();
            endProcess(stuckExit);
        }
    }

    std::unique_ptr<QTimer> m_timer;
    std::deque<Step> m_steps;
    std::vector<QPointer<QWidget>> m_acting; ///< windows whose actions are on the stack
    int m_idleTicks = 0;
};
} // namespace

void support::addModalStep(const char *wanted, std::function<bool(QWidget *)> runsOn)
{
    Script::instance().add({wanted, std::move(runsOn)});
}

void later(std::function<void()> action)
{
    QTimer::singleShot(0, qApp, [action = std::move(action)] { runStep(action); });
}

void support::beginTest()
{
    resetProcess();
    setEndsWithLastScreen(false);
    Script::instance().begin();
}

void support::endTest()
{
    Script::instance().end();
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
