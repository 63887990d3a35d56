#pragma once

#include <QtCore/QString>

class QDateEdit;
class QLineEdit;
class QPlainTextEdit;
class QWidget;

/// Shows why an entry is refused and sets the focus to the box at fault.
void refuse(const QString &message, QWidget *boxAtFault);

/// The content of a box of several lines with the line ends that the store keeps: CR LF.
QString linesOf(const QPlainTextEdit *box);

/// Writes a box's text from the side where the session's language begins, digits and empty text too.
void writeFrom(QLineEdit *box, Qt::LayoutDirection direction);
void writeFrom(QDateEdit *box, Qt::LayoutDirection direction);
void writeFrom(QPlainTextEdit *box, Qt::LayoutDirection direction);
