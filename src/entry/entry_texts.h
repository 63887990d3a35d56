#pragma once

#include <QtCore/QString>

class QPlainTextEdit;
class QWidget;

/// Shows why an entry is refused and sets the focus to the box at fault.
void refuse(const QString &message, QWidget *boxAtFault);

/// The content of a box of several lines with the line ends that the store keeps: CR LF.
QString linesOf(const QPlainTextEdit *box);
