#pragma once

#include "platform/ui/dialogs.h"

#include <deque>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

/// A dialog that was shown, as the program asked for it.
struct ShownDialog {
    enum class Kind { Message, Question, Input, Font, SaveFile, Print };
    Kind kind = Kind::Message;
    QString text; ///< the message, question or prompt; the proposed file name of a save dialog
    QString title = {};
    MessageIcon icon = MessageIcon::None;
    bool rightAligned = false;
    QString defaultText = {}; ///< of an input box; the default extension of a save dialog
    QString filter = {};      ///< of a save dialog
};

/// The dialogs of one test. While an object of this class lives, every dialog of the program comes here. The
/// test writes down beforehand, in order, what is to come and what is answered:
///
///     ScriptedDialogs dialogs;
///     dialogs.expectYes(engine.textAreYouSure);
///     dialogs.expectMessage(u"Successful"_s).withIcon(MessageIcon::None);
///     click(screen, "cmdEntry");
///
/// A dialog that was not expected, or of another text, fails the test at once and ends the process with exit
/// code unexpectedExit, which unwinds every wait. Dialogs that were expected and did not come fail the test
/// when the object goes.
class ScriptedDialogs : public DialogService
{
public:
    using Kind = ShownDialog::Kind;
    static constexpr int unexpectedExit = 99;

    ScriptedDialogs();
    ~ScriptedDialogs() override;

    /// One expected dialog; the calls narrow it down.
    struct Expected {
        Expected &withIcon(MessageIcon value) { return set(icon, value); }
        Expected &withTitle(const QString &value) { return set(title, value); }
        Expected &rightAligned(bool value = true) { return set(aligned, value); }
        Expected &withDefault(const QString &value) { return set(defaultText, value); }
        Expected &withFilter(const QString &value) { return set(filter, value); }
        /// Runs while the dialog stands, before it is answered.
        Expected &meanwhile(std::function<void()> value) { return set(action, std::move(value)); }

        template <typename Member, typename T>
        Expected &set(Member &member, T &&value)
        {
            member = std::forward<T>(value);
            return *this;
        }
        Kind kind = Kind::Message;
        std::optional<QString> text = {}; ///< nothing: any
        std::optional<MessageIcon> icon = {};
        std::optional<QString> title = {};
        std::optional<bool> aligned = {};
        std::optional<QString> defaultText = {};
        std::optional<QString> filter = {};
        std::function<void()> action = {};
        bool yes = false;
        QString typed = {};
        std::optional<FontChoice> font = {};
        std::optional<QString> path = {};
        std::function<void(QPrinter &)> printer = {};
    };

    Expected &expectMessage(const QString &text) { return expect({.text = text}); }
    Expected &expectAnyMessage() { return expect({}); }
    /// The box of an untrapped failure: number as boxes print it ("6", "-2147217900 (80040e14)").
    Expected &expectUntrapped(const QString &number, const QString &description);
    Expected &expectYes(const QString &question)
    {
        return expect({.kind = Kind::Question, .text = question, .yes = true});
    }
    Expected &expectNo(const QString &question) { return expect({.kind = Kind::Question, .text = question}); }
    /// An empty answer is a cancelled box.
    Expected &expectInput(const QString &prompt, const QString &typed)
    {
        return expect({.kind = Kind::Input, .text = prompt, .typed = typed});
    }
    /// Nothing is Cancel.
    Expected &expectFont(const std::optional<FontChoice> &chosen)
    {
        return expect({.kind = Kind::Font, .font = chosen});
    }
    /// `proposed` is the file name that the dialog begins with. Nothing chosen is Cancel.
    Expected &expectSaveFile(const QString &proposed, const std::optional<QString> &chosen)
    {
        return expect({.kind = Kind::SaveFile, .text = proposed, .path = chosen});
    }
    /// `choose` sets the printer as the user would; none is Cancel.
    Expected &expectPrint(std::function<void(QPrinter &)> choose)
    {
        return expect({.kind = Kind::Print, .printer = std::move(choose)});
    }

    /// All dialogs that came, the unexpected among them.
    const std::vector<ShownDialog> &shown() const { return m_shown; }

    MessageAnswer message(const MessageRequest &request) override;
    QString input(const QString &prompt, const QString &title, const QString &defaultText) override;
    std::optional<FontChoice> font(const FontChoice &initial) override;
    std::optional<QString> saveFile(const SaveFileRequest &request) override;
    bool print(QPrinter &printer) override;

private:
    Expected &expect(Expected expected);
    Expected take(const ShownDialog &dialog);

    DialogService *m_before;
    std::deque<Expected> m_expected;
    std::vector<ShownDialog> m_shown;
};
