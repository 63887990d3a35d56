#include "entry/entry_screen.h"

#include "core/engine.h"
#include "entry/entry_layout.h"
#include "entry/posting.h"
#include "platform/database/recordset.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"
#include "platform/ui/controls.h"
#include "platform/ui/date_picker.h"
#include "platform/ui/dialogs.h"
#include "presentation/status_panels.h"
#include "presentation/vocabulary.h"

#include <QtGui/QAction>
#include <QtGui/QTextDocument>
#include <QtGui/QTextOption>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QStatusBar>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// The prompts are content: what nobody changes is posted.
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

/// The content of a box of several lines with the line ends that the store keeps: CR LF.
QString linesOf(const QPlainTextEdit *box)
{
    return box->toPlainText().replace(u'\n', u"\r\n"_s);
}

Qt::Alignment beginningOf(Qt::LayoutDirection direction)
{
    return (direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute;
}

/// Writes a box's text from the side where the session's language begins, digits and empty text too.
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

} // namespace

EntryScreen::EntryScreen(const QString &name) : Screen(name) {}

EntryScreen::~EntryScreen() = default;

void EntryScreen::setUp()
{
    m_members = new MemberSelection(m_controls.places, this);
    m_layout = std::make_unique<EntryLayout>(
        EntryLayout::Parts{this,
                           m_members,
                           m_controls.places.groupArea,
                           m_controls.places.memberArea,
                           m_controls.all,
                           {m_controls.divide, m_controls.reDivide, m_controls.entry}});
    for (QWidget *box : {static_cast<QWidget *>(m_boxes.amount), static_cast<QWidget *>(m_boxes.note),
                         static_cast<QWidget *>(m_boxes.paymentDetail)})
        takeAsciiDigits(box);
    setPrompts(m_boxes.note, m_boxes.paymentDetail);
    setFixedWidth(surface()->minimumWidth());

    connect(m_boxes.amount, &QLineEdit::returnPressed, this, &EntryScreen::enterAmount);
    connect(m_controls.all, &QPushButton::clicked, this, &EntryScreen::cmdAll_Click);
    connect(m_controls.clear, &QPushButton::clicked, this, &EntryScreen::cmdClear_Click);
    connect(m_members, &MemberSelection::groupClicked, m_members, &MemberSelection::tickGroup);
    connect(m_controls.divide, &QPushButton::clicked, this, &EntryScreen::cmdDivide_Click);
    connect(m_controls.reDivide, &QPushButton::clicked, this, &EntryScreen::cmdReDivide_Click);
    connect(m_controls.entry, &QPushButton::clicked, this, &EntryScreen::cmdEntry_Click);
    connect(m_controls.exit, &QAction::triggered, this, &EntryScreen::mnuExit_Click);
}

void EntryScreen::loadBoxes(const QString &kinds)
{
    listKinds(m_controls.kind, kinds);
    m_boxes.amount->setLayoutDirection(layoutDirection());
    m_boxes.amount->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    writeFrom(m_controls.date, layoutDirection());
    writeFrom(m_boxes.note, layoutDirection());
    writeFrom(m_boxes.paymentDetail, layoutDirection());
    setAccessibleText(m_boxes.paymentDetail,
                      engine.isArabic ? translate(u"paymentdetail"_s) : u"Payment detail"_s);
    m_paymentMethod = u"نقداً"_s;
    m_controls.date->setValue(today());
    for (const QString &text : {engine.currentUser, shortDate(today())})
        addStatusPanel(m_controls.statusBar, text);
    m_boxes.amount->setFocus();
}

void EntryScreen::listMembers(const QString &statement, const MemberSelection::CaptionOf &captionOf)
{
    m_members->rebuildMembers(statement, captionOf);
    m_layout->grow();
}

QString EntryScreen::amountText() const
{
    return m_boxes.amount->text();
}

qint16 EntryScreen::CountSelected() const
{
    return m_members->CountSelected();
}

bool EntryScreen::refuse(const QString &message, QWidget *boxAtFault)
{
    showMessage(message);
    boxAtFault->setFocus();
    return false;
}

bool EntryScreen::amountIsNumeric(const QString &orElse)
{
    return isNumeric(amountText()) || refuse(orElse, m_boxes.amount);
}

bool EntryScreen::amountIsGiven()
{
    return amountIsNumeric(u"Please enter the amount then Enter  فضلاً أدخل المبلغ ثم إضغط إدخال"_s);
}

bool EntryScreen::boxesAreFilled()
{
    if (linesOf(m_boxes.note).isEmpty())
        return refuse(u"يجب صياغة شرح لهذا الإدخال "_s, m_boxes.note);
    if (linesOf(m_boxes.paymentDetail).isEmpty() && m_controls.payByCheck->isChecked())
        return refuse(u"يجب إدخال معلومات الشيك"_s, m_boxes.paymentDetail);
    const QString date = generalDate(m_controls.date->value());
    return isDate(date) || refuse(date + u" is not a valid date."_s, m_controls.date);
}

void EntryScreen::refuseNobody()
{
    if (!amountIsGiven())
        return;
    enterAmount();
    showMessage(u"لا بد من إختيار على الأقل فرد واحد لإتمام الإدخال"_s);
}

Entry EntryScreen::entry() const
{
    Entry entry;
    entry.date = m_controls.date->value();
    entry.note = linesOf(m_boxes.note);
    entry.paymentDetail = linesOf(m_boxes.paymentDetail);
    entry.paymentMethod = m_paymentMethod;
    entry.kind = m_controls.kind->currentText();
    return entry;
}

void EntryScreen::cmdAll_Click()
{
    m_members->tickAll();
}

void EntryScreen::cmdClear_Click()
{
    m_members->clearTicks();
    m_members->clearShares();
}

void EntryScreen::mnuExit_Click()
{
    unload();
}

void EntryScreen::Form_Unload()
{
    m_members->clearArrays();
}

void EntryScreen::Form_Resize()
{
    m_layout->layOut();
}
