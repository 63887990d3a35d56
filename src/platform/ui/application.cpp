#include "platform/ui/application.h"

#include "platform/database/connection.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/fonts.h"
#include "platform/ui/program_style.h"
#include "platform/ui/progress.h"
#include "platform/ui/screen.h"
#include "platform/ui/wait.h"

#include <QtCore/QEventLoop>
#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QThread>
#include <QtCore/QTranslator>
#include <QtGui/QKeyEvent>
#include <QtGui/QPalette>
#include <QtGui/QPixmapCache>

#include <exception>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{
struct Process {
    bool reporting = false;
    bool ending = false;
    int exitCode = 0;
    int life = 0; ///< changes with resetProcess(), so that what was posted before does not count any more
    int dialogs = 0;
    bool endsWithLastScreen = true;
    int waits = 0;         ///< own waits on the stack
    int routineUnder = -1; ///< event loops and waits that stood when the innermost routine was called; -1 in
                           ///< the toolkit's own frames
    std::function<void()> untrappedHook;
    QString title = u"Quvana"_s;
};
Process process;

int standingLoops()
{
    return QThread::currentThread()->loopLevel() + process.waits;
}

/// Whether the frame below is a routine of the program, and not one of the toolkit that an exception must not
/// cross.
bool isCalledByRoutine()
{
    return process.routineUnder == standingLoops() && std::uncaught_exceptions() == 0;
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

/// The events on which event routines hang.
bool isRoutineEvent(QEvent::Type type)
{
    switch (type) {
    case QEvent::Timer:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::Close:
    case QEvent::Resize:
    case QEvent::Drop:
    case QEvent::MetaCall:
        return true;
    default:
        return false;
    }
}

RuntimeError asRuntimeError(const std::exception &failure)
{
    if (const auto *error = dynamic_cast<const RuntimeError *>(&failure))
        return *error;
    if (dynamic_cast<const std::bad_alloc *>(&failure))
        return {7, u"Quvana"_s, u"Out of memory"_s};
    return {51, u"Quvana"_s, u"Internal error: "_s + QString::fromUtf8(failure.what())};
}

int &argumentsOf96Dpi(int &argc)
{
    // Screens are laid out at 96 dpi; where a desktop asks for more, the toolkit scales whole windows.
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    return argc;
}

QPalette lightPalette()
{
    QPalette palette(QColor(239, 239, 239), QColor(239, 239, 239));
    palette.setColor(QPalette::WindowText, Qt::black);
    palette.setColor(QPalette::ButtonText, Qt::black);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(247, 247, 247));
    palette.setColor(QPalette::PlaceholderText, QColor(110, 110, 110));
    palette.setColor(QPalette::Highlight, QColor(38, 92, 160));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(255, 255, 220));
    palette.setColor(QPalette::ToolTipText, Qt::black);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, QColor(120, 120, 120));
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(239, 239, 239));
    return palette;
}
} // namespace

Application::Application(int &argc, char **argv) : QApplication(argumentsOf96Dpi(argc), argv)
{
    setApplicationName(u"Quvana"_s);
    setQuitOnLastWindowClosed(false);  // screens, not windows, keep the process alive
    QLocale::setDefault(QLocale::c()); // no text of the program follows the machine's regional settings
    // The style keeps pictures of what it draws under a name for each palette, and each window has palettes
    // of its own: the cache would grow to its limit, and the names are never let go of.
    QPixmapCache::setCacheLimit(0);
    setStyle(new ProgramStyle);
    setPalette(lightPalette());
    setFont(readableFont(u"Noto Sans"_s, 9, false));
    setLayoutDirection(Qt::LeftToRight);
    setStatementProgress(&ProgressLine::tellSeconds);
}

Application::~Application()
{
    setStatementProgress({});
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    if (process.ending && isRoutineEvent(event->type()))
        return true;

    const bool sentByRoutine = isCalledByRoutine();
    const QScopedValueRollback dispatching(process.routineUnder, -1);
    const Screen::InUse inUse(Screen::of(receiver));
    bool taken = true;
    runGuarded([&] {
        if (event->type() == QEvent::KeyPress && receiver->isWidgetType()) {
            auto *screen = qobject_cast<Screen *>(static_cast<QWidget *>(receiver)->window());
            bool seen = false;
            runEventRoutine([&] { seen = screen && screen->previewKey(static_cast<QKeyEvent *>(event)); });
            if (seen || process.ending)
                return;
        }
        taken = QApplication::notify(receiver, event);
    });
    // A routine that sent the event itself must not go on behind it; a loop or wait below ends by itself.
    if (sentByRoutine && process.ending)
        throw ProcessEnding{};
    return taken;
}

void runEventRoutine(const std::function<void()> &routine)
{
    if (process.ending)
        return;
    const bool causedByRoutine = isCalledByRoutine();
    {
        const QScopedValueRollback running(process.routineUnder, standingLoops());
        runGuarded(routine);
    }
    if (causedByRoutine && process.ending)
        throw ProcessEnding{};
}

void runGuarded(const std::function<void()> &routine)
{
    try {
        routine();
    } catch (const ProcessEnding &) {
    } catch (const std::exception &failure) {
        reportUntrapped(asRuntimeError(failure));
    }
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
            if (life == process.life && process.endsWithLastScreen && process.dialogs == 0 &&
                Screen::loadedScreens().isEmpty())
                beginEnd(0);
        },
        Qt::QueuedConnection);
}

DialogWait::DialogWait()
{
    ++process.dialogs;
}

DialogWait::~DialogWait()
{
    --process.dialogs;
    if (Screen::loadedScreens().isEmpty())
        lookForLastScreen();
}

QString programTitle()
{
    return process.title;
}

void setProgramTitle(const QString &title)
{
    process.title = title;
}

void loadToolkitWords(bool arabic)
{
    static QTranslator words;
    static bool installed = false;
    if (arabic && !installed) {
        installed = words.load(u"qtbase_ar"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)) &&
                    QCoreApplication::installTranslator(&words);
    } else if (!arabic && installed) {
        QCoreApplication::removeTranslator(&words);
        installed = false;
    }
    QGuiApplication::setLayoutDirection(arabic ? Qt::RightToLeft : Qt::LeftToRight);
}

void serveEventsUntil(const std::function<bool()> &done)
{
    QEventLoop loop;
    const QScopedValueRollback standing(process.waits, process.waits + 1);
    for (;;) {
        if (process.ending)
            throw ProcessEnding{};
        if (done())
            return;
        loop.processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

namespace
{
void serveOnce(QEventLoop::ProcessEventsFlags which)
{
    {
        const QScopedValueRollback standing(process.waits, process.waits + 1);
        QCoreApplication::processEvents(which);
    }
    if (process.ending)
        throw ProcessEnding{};
}
} // namespace

void serveEvents()
{
    serveOnce(QEventLoop::AllEvents);
}

void serveEventsButInput()
{
    serveOnce(QEventLoop::ExcludeUserInputEvents);
}
