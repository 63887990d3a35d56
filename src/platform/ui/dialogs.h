#pragma once

#include <QtCore/QString>
#include <QtGui/QFont>

#include <optional>

class QPrinter;
class QWidget;

enum class MessageIcon { None, Critical, Question, Information };
enum class MessageButtons { Ok, YesNo };
enum class MessageAnswer { Ok, Yes, No };

struct MessageRequest {
    QString text;
    QString title; ///< the program's title when empty
    MessageIcon icon = MessageIcon::None;
    MessageButtons buttons = MessageButtons::Ok;
    bool rightAligned = false; ///< text aligned to the right, as an Arabic notice that asks for it
};

/// A font with the colour that the font dialog chooses beside it.
struct FontChoice {
    QString name;
    int size = 8; ///< points
    bool bold = false;
    qint32 color = 0; ///< 0xBBGGRR
};

struct SaveFileRequest {
    QString fileName;         ///< what the dialog proposes
    QString filter;           ///< "text|pattern|text|pattern"
    QString defaultExtension; ///< added to a name without one
};

/// Message boxes, questions, input boxes, font, save and print dialogs. The program reaches them only through
/// the functions below, which call the installed service.
class DialogService
{
public:
    virtual ~DialogService() = default;
    virtual MessageAnswer message(const MessageRequest &request) = 0;
    /// The typed text; empty when cancelled. Arabic-Indic digits come as ASCII digits.
    virtual QString input(const QString &prompt, const QString &title, const QString &defaultText) = 0;
    /// Nothing when cancelled.
    virtual std::optional<FontChoice> font(const FontChoice &initial) = 0;
    virtual std::optional<QString> saveFile(const SaveFileRequest &request) = 0;
    /// Lets the user choose the printer, its paper and the pages, beginning with what `printer` is set to;
    /// false when cancelled. Prints nothing.
    virtual bool print(QPrinter &printer) = 0;
};

/// Installs a service and returns the one before; null installs the one with Qt's dialogs. The caller keeps
/// ownership.
DialogService *installDialogService(DialogService *service);

/// The title of boxes that name none: "Quvana" until it is set.
QString programTitle();
void setProgramTitle(const QString &title);

/// A box with one button.
void showMessage(const QString &text, MessageIcon icon = MessageIcon::None, const QString &title = {});
void showMessage(const MessageRequest &request);
/// A Yes/No question; True for Yes.
bool askYesNo(const QString &question, MessageIcon icon = MessageIcon::Question);
/// The typed text; empty when cancelled.
QString askText(const QString &prompt, const QString &title, const QString &defaultText);
/// @throws RuntimeError 32755 when cancelled.
FontChoice askFont(const FontChoice &initial);
/// @throws RuntimeError 32755 when cancelled.
QString askSaveFile(const SaveFileRequest &request);
/// Gives the printer the user's settings. @throws RuntimeError 32755 when cancelled.
void askPrint(QPrinter &printer);
