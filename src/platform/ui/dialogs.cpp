#include "platform/ui/dialogs.h"

#include "platform/runtime/runtime_error.h"
#include "platform/ui/process.h"
#include "platform/ui/qt_dialogs.h"
#include "platform/ui/screen.h"

#include <QtGui/QGuiApplication>

using namespace Qt::Literals::StringLiterals;

namespace
{
DialogService *installed = nullptr;
QString titleOfBoxes = u"Quvana"_s;

/// A dialog has its own pointer, also one that comes up under the hourglass.
class NoHourglass
{
public:
    NoHourglass() { Screen::setHourglass(false); }
    ~NoHourglass() { Screen::setHourglass(m_before); }
    NoHourglass(const NoHourglass &) = delete;
    NoHourglass &operator=(const NoHourglass &) = delete;

private:
    const bool m_before = QGuiApplication::overrideCursor() != nullptr;
};

/// Calls the service, unless the process is ending: then nothing is shown and the caller does not go on.
template <typename Ask>
auto ask(Ask &&question)
{
    static QtDialogs qtDialogs;
    if (processEnding())
        throw ProcessEnding{};
    DialogService &service = installed ? *installed : qtDialogs;
    const NoHourglass pointer;
    auto answer = question(service);
    if (processEnding())
        throw ProcessEnding{};
    return answer;
}
} // namespace

DialogService *installDialogService(DialogService *service)
{
    DialogService *before = installed;
    installed = service;
    return before;
}

QString programTitle()
{
    return titleOfBoxes;
}

void setProgramTitle(const QString &title)
{
    titleOfBoxes = title;
}

void showMessage(const QString &text, MessageIcon icon, const QString &title)
{
    showMessage(MessageRequest{text, title, icon, MessageButtons::Ok, false});
}

void showMessage(const MessageRequest &request)
{
    ask([&](DialogService &service) { return service.message(request); });
}

bool askYesNo(const QString &question, MessageIcon icon)
{
    const MessageRequest request{question, {}, icon, MessageButtons::YesNo, false};
    return ask([&](DialogService &service) { return service.message(request); }) == MessageAnswer::Yes;
}

QString askText(const QString &prompt, const QString &title, const QString &defaultText)
{
    return ask([&](DialogService &service) { return service.input(prompt, title, defaultText); });
}

FontChoice askFont(const FontChoice &initial)
{
    const auto chosen = ask([&](DialogService &service) { return service.font(initial); });
    if (!chosen)
        throw runtime_errors::cancelled();
    return *chosen;
}

QString askSaveFile(const SaveFileRequest &request)
{
    const auto chosen = ask([&](DialogService &service) { return service.saveFile(request); });
    if (!chosen)
        throw runtime_errors::cancelled();
    return *chosen;
}

void askPrint(QPrinter &printer)
{
    if (!ask([&](DialogService &service) { return service.print(printer); }))
        throw runtime_errors::cancelled();
}
