#include "platform/ui/application.h"

#include "platform/database/connection.h"
#include "platform/ui/fonts.h"
#include "platform/ui/process.h"
#include "platform/ui/program_style.h"
#include "platform/ui/progress.h"
#include "platform/ui/screen.h"

#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>
#include <QtGui/QKeyEvent>
#include <QtGui/QPalette>
#include <QtGui/QPixmapCache>

using namespace Qt::Literals::StringLiterals;

namespace
{
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
    if (processEnding() && isRoutineEvent(event->type()))
        return true;

    const Screen::InUse inUse(Screen::of(receiver));
    bool taken = true;
    runDispatch([&] {
        if (event->type() == QEvent::KeyPress && receiver->isWidgetType()) {
            auto *screen = qobject_cast<Screen *>(static_cast<QWidget *>(receiver)->window());
            bool seen = false;
            runEventRoutine([&] { seen = screen && screen->previewKey(static_cast<QKeyEvent *>(event)); });
            if (seen || processEnding())
                return;
        }
        taken = QApplication::notify(receiver, event);
    });
    return taken;
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
