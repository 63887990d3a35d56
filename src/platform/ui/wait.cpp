#include "platform/ui/wait.h"

#include "platform/ui/process.h"
#include "platform/ui/screen.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QScopedValueRollback>

namespace
{
int waits = 0;
int dialogs = 0;

void serveOnce(QEventLoop::ProcessEventsFlags which)
{
    {
        const QScopedValueRollback standing(waits, waits + 1);
        QCoreApplication::processEvents(which);
    }
    if (processEnding())
        throw ProcessEnding{};
}
} // namespace

void serveEventsUntil(const std::function<bool()> &done)
{
    QEventLoop loop;
    const QScopedValueRollback standing(waits, waits + 1);
    for (;;) {
        if (processEnding())
            throw ProcessEnding{};
        if (done())
            return;
        loop.processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

void serveEvents()
{
    serveOnce(QEventLoop::AllEvents);
}

void serveEventsButInput()
{
    serveOnce(QEventLoop::ExcludeUserInputEvents);
}

DialogWait::DialogWait()
{
    ++dialogs;
}

DialogWait::~DialogWait()
{
    --dialogs;
    if (Screen::loadedScreens().isEmpty())
        lookForLastScreen();
}

int standingWaits()
{
    return waits;
}

bool dialogStands()
{
    return dialogs > 0;
}
