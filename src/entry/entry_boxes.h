#pragma once

#include <QtCore/QString>

class QComboBox;
class QDateEdit;
class QLineEdit;
class QPlainTextEdit;
class QStatusBar;
class QWidget;

/// Shows why an entry is refused and sets the focus to the box at fault.
void refuse(const QString &message, QWidget *boxAtFault);

/// Asks for the amount that a division needs.
QString askForAmount();

/// The prompts that a note and a payment detail begin with. They are content: what nobody changes is posted.
void setPrompts(QPlainTextEdit *note, QPlainTextEdit *paymentDetail);

/// Lists the kinds of transaction that the statement selects from `details`, in the session's language; the
/// first one is selected.
void listKinds(QComboBox *box, const QString &statement);

/// The panels of an entry screen's status bar, the user and the date, aligned to the language.
void addStatusPanels(QStatusBar *bar);

/// The content of a box of several lines with the line ends that the store keeps: CR LF.
QString linesOf(const QPlainTextEdit *box);

/// Writes a box's text from the side where the session's language begins, digits and empty text too.
void writeFrom(QLineEdit *box, Qt::LayoutDirection direction);
void writeFrom(QDateEdit *box, Qt::LayoutDirection direction);
void writeFrom(QPlainTextEdit *box, Qt::LayoutDirection direction);
