#include "entry/entry_boxes.h"

#include "core/engine.h"
#include "platform/database/recordset.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/ui/dialogs.h"

#include <QtGui/QTextDocument>
#include <QtGui/QTextOption>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QStatusBar>

using namespace Qt::Literals::StringLiterals;

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

QString askForAmount()
{
    return u"Please enter the amount then Enter  فضلاً أدخل المبلغ ثم إضغط إدخال"_s;
}

void setPrompts(QPlainTextEdit *note, QPlainTextEdit *paymentDetail)
{
    note->setPlainText(u"شرح العمليه\n"_s);
    paymentDetail->setPlainText(u"تفاصيل الدفع\n"_s);
}

void listKinds(QComboBox *box, const QString &statement)
{
    box->clear();
    const auto kinds = Recordset::create();
    kinds->open(statement, engine.dbConnection, CursorType::Static);
    for (; !kinds->eof(); kinds->moveNext())
        box->addItem(kinds->value(u"detail"_s + engine.languageSuffix).toText());
    kinds->close();
    box->setCurrentIndex(0);
}

void addStatusPanels(QStatusBar *bar)
{
    for (const QString &text : {engine.currentUser, shortDate(today())}) {
        auto *panel = new QLabel(text);
        panel->setAlignment(engine.isArabic ? Qt::AlignCenter : Qt::AlignLeft);
        panel->setFont(bar->window()->font());
        bar->addWidget(panel, 1);
    }
}

QString linesOf(const QPlainTextEdit *box)
{
    return box->toPlainText().replace(u'\n', u"\r\n"_s);
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
