#include "support/scripted_dialogs.h"

#include "platform/ui/application.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{
const char *nameOf(ShownDialog::Kind kind)
{
    static constexpr const char *names[] = {"message", "question", "input box", "font dialog", "save dialog"};
    return names[int(kind)];
}

/// What the test wrote down, for a failure's message.
std::string told(const ScriptedDialogs::Expected &expected)
{
    return std::string(nameOf(expected.kind)) + " \"" + expected.text.value_or(u"(any)"_s).toStdString() +
           '"';
}

/// What differs between the expected and the shown, for the failure's message; empty when it fits.
template <typename T>
void compare(std::string &difference, const char *what, const std::optional<T> &expected, const T &shown)
{
    if (expected && *expected != shown)
        difference += std::string(" another ") + what;
}
} // namespace

ScriptedDialogs::ScriptedDialogs() : m_before(installDialogService(this)) {}

ScriptedDialogs::~ScriptedDialogs()
{
    installDialogService(m_before);
    for (const Expected &expected : m_expected)
        ADD_FAILURE() << "This did not come: " << told(expected);
}

ScriptedDialogs::Expected &ScriptedDialogs::expect(ShownDialog::Kind kind, std::optional<QString> text)
{
    Expected &expected = m_expected.emplace_back();
    expected.kind = kind;
    expected.text = std::move(text);
    return expected;
}

ScriptedDialogs::Expected &ScriptedDialogs::expectMessage(const QString &text)
{
    return expect(ShownDialog::Kind::Message, text);
}

ScriptedDialogs::Expected &ScriptedDialogs::expectAnyMessage()
{
    return expect(ShownDialog::Kind::Message, std::nullopt);
}

ScriptedDialogs::Expected &ScriptedDialogs::expectUntrapped(const QString &number, const QString &description)
{
    return expectMessage(u"Run-time error '"_s + number + u"':\n\n"_s + description)
        .withIcon(MessageIcon::Critical);
}

ScriptedDialogs::Expected &ScriptedDialogs::expectYes(const QString &question)
{
    Expected &expected = expect(ShownDialog::Kind::Question, question);
    expected.yes = true;
    return expected;
}

ScriptedDialogs::Expected &ScriptedDialogs::expectNo(const QString &question)
{
    return expect(ShownDialog::Kind::Question, question);
}

ScriptedDialogs::Expected &ScriptedDialogs::expectInput(const QString &prompt, const QString &typed)
{
    Expected &expected = expect(ShownDialog::Kind::Input, prompt);
    expected.typed = typed;
    return expected;
}

ScriptedDialogs::Expected &ScriptedDialogs::expectFont(const std::optional<FontChoice> &chosen)
{
    Expected &expected = expect(ShownDialog::Kind::Font, std::nullopt);
    expected.font = chosen;
    return expected;
}

ScriptedDialogs::Expected &ScriptedDialogs::expectSaveFile(const std::optional<QString> &chosen)
{
    Expected &expected = expect(ShownDialog::Kind::SaveFile, std::nullopt);
    expected.file = chosen;
    return expected;
}

ScriptedDialogs::Expected ScriptedDialogs::take(const ShownDialog &dialog)
{
    m_shown.push_back(dialog);
    const std::string came = std::string(nameOf(dialog.kind)) + " \"" + dialog.text.toStdString() + '"';
    if (m_expected.empty()) {
        ADD_FAILURE() << "Unexpected " << came;
        endProcess(unexpectedExit);
    }
    Expected expected = std::move(m_expected.front());
    m_expected.pop_front();

    std::string difference;
    compare(difference, "kind of dialog", std::optional(expected.kind), dialog.kind);
    compare(difference, "text", expected.text, dialog.text);
    compare(difference, "icon", expected.icon, dialog.icon);
    compare(difference, "title", expected.title, dialog.title);
    compare(difference, "alignment", expected.aligned, dialog.rightAligned);
    compare(difference, "default text", expected.defaultText, dialog.defaultText);
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
    ShownDialog dialog;
    dialog.kind = question ? ShownDialog::Kind::Question : ShownDialog::Kind::Message;
    dialog.text = request.text;
    dialog.title = request.title;
    dialog.icon = request.icon;
    dialog.rightAligned = request.rightAligned;
    const Expected expected = take(dialog);
    if (!question)
        return MessageAnswer::Ok;
    return expected.yes ? MessageAnswer::Yes : MessageAnswer::No;
}

QString ScriptedDialogs::input(const QString &prompt, const QString &title, const QString &defaultText)
{
    ShownDialog dialog;
    dialog.kind = ShownDialog::Kind::Input;
    dialog.text = prompt;
    dialog.title = title;
    dialog.defaultText = defaultText;
    return take(dialog).typed;
}

std::optional<FontChoice> ScriptedDialogs::font(const FontChoice &initial)
{
    ShownDialog dialog;
    dialog.kind = ShownDialog::Kind::Font;
    dialog.font = initial;
    return take(dialog).font;
}

std::optional<QString> ScriptedDialogs::saveFile(const SaveFileRequest &request)
{
    ShownDialog dialog;
    dialog.kind = ShownDialog::Kind::SaveFile;
    dialog.text = request.fileName;
    dialog.file = request;
    return take(dialog).file;
}
