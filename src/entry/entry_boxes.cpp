#include "entry/entry_boxes.h"

#include "platform/ui/dialogs.h"

#include <QtGui/QTextDocument>
#include <QtGui/QTextOption>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>

namespace
{

Qt::Alignment beginningOf(Qt::LayoutDirection direction)
{
    return (direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute;
}

} // namespace

void refuse(const QString &message, QWidget *boxAtFault)
{
    showMessage(message);
    boxAtFault->setFocus();
}

QString linesOf(const QPlainTextEdit *box)
{
    return box->toPlainText().replace(u'\n', QStringLiteral("\r\n"));
}

void writeFrom(QLineEdit *box, Qt::LayoutDirection direction)
{
    box->setAlignment(beginningOf(direction) | Qt::AlignVCenter);
}

void writeFrom(QDateEdit *box, Qt::LayoutDirection direction)
{
    box->setAlignment(beginningOf(direction) | Qt::AlignVCenter);
}

void writeFrom(QPlainTextEdit *box, Qt::LayoutDirection direction)
{
    QTextOption option = box->document()->defaultTextOption();
    option.setTextDirection(direction);
    option.setAlignment(beginningOf(direction));
    box->document()->setDefaultTextOption(option);
}
