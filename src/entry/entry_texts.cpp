#include "entry/entry_texts.h"

#include "platform/ui/dialogs.h"

#include <QtWidgets/QPlainTextEdit>

void refuse(const QString &message, QWidget *boxAtFault)
{
    showMessage(message);
    boxAtFault->setFocus();
}

QString linesOf(const QPlainTextEdit *box)
{
    return box->toPlainText().replace(u'\n', QStringLiteral("\r\n"));
}
