#pragma once

#include "platform/ui/dialogs.h"

/// The window over which a dialog comes; null when none is shown.
QWidget *windowInUse();

/// The dialogs as a user sees them: Qt's own, the same on every desktop, over the screen that is in use.
/// Their direction is the application's; each line of a text reads in the direction of its own first letter.
class QtDialogs : public DialogService
{
public:
    /// Enter presses the first button. Escape is No, or Ok where there is no choice. A text too long for the
    /// screen scrolls.
    MessageAnswer message(const MessageRequest &request) override;
    QString input(const QString &prompt, const QString &title, const QString &defaultText) override;
    std::optional<FontChoice> font(const FontChoice &initial) override;
    /// Does not ask whether an existing file is to be replaced; the step that saves does.
    std::optional<QString> saveFile(const SaveFileRequest &request) override;
    bool print(QPrinter &printer) override;
};
