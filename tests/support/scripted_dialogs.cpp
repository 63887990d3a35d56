#include "support/scripted_dialogs.h"

#include "platform/ui/process.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{
/// A dialog in a failure's message.
std::string told(ShownDialog::Kind kind, const QString &text)
{
    static constexpr const char *names[] = {"message",     "question",    "input box",
                                            "font dialog", "save dialog", "print dialog"};
    return std::string(names[int(kind)]) + " \"" + text.toStdString() + '"';
}

std::string told(const ScriptedDialogs::Expected &expected)
{
    return told(expected.kind, expected.text.value_or(u"(any)"_s));
}
} // namespace

ScriptedDialogs::ScriptedDialogs() : m_before(installDialogService(this)) {}

ScriptedDialogs::~ScriptedDialogs()
{
    installDialogService(m_before);
    for (const Expected &expected : m_expected)
        ADD_FAILURE() << "This did not come: " << told(expected);
}

ScriptedDialogs::Expected &ScriptedDialogs::expect(Expected expected)
{
    return m_expected.emplace_back(std::move(expected));
}

ScriptedDialogs::Expected &ScriptedDialogs::expectUntrapped(const QString &number, const QString &description)
{
    return expectMessage(u"Run-time error '"_s + number + u"':\n\n"_s + description)
        .withIcon(MessageIcon::Critical);
}

ScriptedDialogs::Expected ScriptedDialogs::take(const ShownDialog &dialog)
{
    m_shown.push_back(dialog);
    const std::string came = told(dialog.kind, dialog.text);
    if (m_expected.empty()) {
        ADD_FAILURE() << "Unexpected " << came;
        endProcess(unexpectedExit);
    }
    Expected expected = std::move(m_expected.front());
    m_expected.pop_front();

    std::string difference;
    const auto compare = [&difference](const char *what, const auto &wanted, const auto &shown) {
        if (wanted && *wanted != shown)
            difference += std::string(" another ") + what;
    };
    compare("kind of dialog", std::optional(expected.kind), dialog.kind);
    compare("text", expected.text, dialog.text);
    compare("icon", expected.icon, dialog.icon);
    compare("title", expected.title, dialog.title);
    compare("alignment", expected.aligned, dialog.rightAligned);
    compare("default text", expected.defaultText, dialog.defaultText);
    compare("filter", expected.filter, dialog.filter);
    if (!difference.empty()) {
        ADD_FAILURE() << "Expected the " << told(expected) << " and got the " << came << ':' << difference;
        endProcess(unexpectedExit);
    }
    if (expected.action)
        expected.action();
    return expected;
}

MessageAnswer ScriptedDialogs::message(const MessageRequest &request)
{
    const bool question = request.buttons == MessageButtons::YesNo;
    const Expected expected = take({.kind = question ? Kind::Question : Kind::Message,
                                    .text = request.text,
                                    .title = request.title,
                                    .icon = request.icon,
                                    .rightAligned = request.rightAligned});
    return !question ? MessageAnswer::Ok : expected.yes ? MessageAnswer::Yes : MessageAnswer::No;
}

QString ScriptedDialogs::input(const QString &prompt, const QString &title, const QString &defaultText)
{
    return take({.kind = Kind::Input, .text = prompt, .title = title, .defaultText = defaultText}).typed;
}

std::optional<FontChoice> ScriptedDialogs::font(const FontChoice &)
{
    return take({.kind = Kind::Font, .text = {}}).font;
}

std::optional<QString> ScriptedDialogs::saveFile(const SaveFileRequest &request)
{
    return take({.kind = Kind::SaveFile,
                 .text = request.fileName,
                 .defaultText = request.defaultExtension,
                 .filter = request.filter})
        .path;
}

bool ScriptedDialogs::print(QPrinter &printer)
{
    const Expected expected = take({.kind = Kind::Print, .text = {}});
    if (expected.printer)
        expected.printer(printer);
    return bool(expected.printer);
}
