#include "platform/ui/application.h"
#include "support/screens.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <cstdlib>
#include <cxxabi.h>
#include <deque>
#include <memory>
#include <vector>

namespace
{
constexpr int stuckExit = 98;
constexpr int tickMilliseconds = 2;
constexpr int patienceTicks = 100;             // for a modal screen to go after its last action
constexpr qint64 patienceMilliseconds = 60000; // without any action while steps are open

struct Step {
    std::string wanted;
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
        QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), [this] { arm(); });
        m_timer->start(tickMilliseconds);
        m_sinceAction.start();
        m_idleTicks = 0;
    }

    void add(Step step)
    {
        m_steps.push_back(std::move(step));
        m_sinceAction.restart();
    }

    void end()
    {
        m_timer.reset();
        m_acting.clear();
        for (const Step &step : m_steps)
            ADD_FAILURE() << "No modal " << step.wanted << " came";
        m_steps.clear();
    }

private:
    /// A timer does not fire inside its own slot; a posted call does, so steps can nest.
    void arm()
    {
        QMetaObject::invokeMethod(
            m_timer.get(), [this] { runEventRoutine([this] { tick(); }); }, Qt::QueuedConnection);
    }

    void tick()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (modal && modal->isVisible() && !m_steps.empty()) {
            Step step = std::move(m_steps.front());
            m_steps.pop_front();
            const auto depth = m_acting.size();
            m_acting.emplace_back(modal);
            m_idleTicks = 0;
            bool ran = false;
            runStep([&] { ran = step.runsOn(modal); });
            if (m_acting.size() > depth)
                m_acting.resize(depth);
            if (ran) {
                m_sinceAction.restart();
                m_idleTicks = 0;
                return;
            }
            m_steps.push_front(std::move(step));
        }
        if (modal && modal->isVisible() && !isActing(modal) && ++m_idleTicks > patienceTicks) {
            stuck("The modal window " + modal->objectName().toStdString() + " \"" +
                  modal->windowTitle().toStdString() + "\" stands with no action for it");
        } else if (!modal) {
            m_idleTicks = 0;
        }
        if (m_sinceAction.elapsed() > patienceMilliseconds)
            stuck("Nothing has happened for a minute");
    }

    bool isActing(const QWidget *modal) const
    {
        for (const auto &window : m_acting) {
            if (window == modal)
                return true;
        }
        return false;
    }

    [[noreturn]] void stuck(const std::string &why)
    {
        ADD_FAILURE() << why;
        m_steps.clear();
        endProcess(stuckExit);
    }

    std::unique_ptr<QTimer> m_timer;
    std::deque<Step> m_steps;
    std::vector<QPointer<QWidget>> m_acting; ///< windows whose actions are on the stack
    int m_idleTicks = 0;
    QElapsedTimer m_sinceAction;
};
} // namespace

void support::addModalStep(std::string wanted, std::function<bool(QWidget *)> runsOn)
{
    Script::instance().add({std::move(wanted), std::move(runsOn)});
}

std::string support::className(const std::type_info &type)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return name ? name.get() : type.name();
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
