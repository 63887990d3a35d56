#include "platform/ui/controls.h"

#include "platform/runtime/numbers.h"
#include "platform/ui/flex_grid.h"
#include "platform/ui/screen.h"

#include <QtGui/QAction>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QValidator>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStatusBar>

#include <memory>
#include <utility>

namespace
{
bool isNamed(const QObject *object)
{
    return !object->objectName().isEmpty() && !object->objectName().startsWith(QLatin1String("qt_"));
}

void collect(const QObject *parent, QList<QObject *> &found)
{
    for (QObject *child : parent->children()) {
        const ControlKind kind = kindOf(child);
        const bool bar = qobject_cast<QMenuBar *>(child);
        if (!bar && isNamed(child) && (child->isWidgetType() || kind == ControlKind::Menu))
            found << child;
        const bool menu = kind == ControlKind::Menu && child->isWidgetType();
        if (bar || menu || holdsControls(child))
            collect(child, found);
    }
}

class AsciiDigits : public QValidator
{
public:
    using QValidator::QValidator;
    State validate(QString &input, int &) const override
    {
        input = asciiDigits(input);
        return Acceptable;
    }
};

/// The document keeps its cursor and its undo steps: the digits are exchanged where they stand.
void turnDigits(QTextDocument *document)
{
    const QString before = document->toPlainText();
    const QString after = asciiDigits(before);
    if (before == after)
        return;
    QTextCursor cursor(document);
    cursor.joinPreviousEditBlock();
    for (qsizetype i = 0; i < before.size(); ++i) {
        if (before[i] == after[i])
            continue;
        cursor.setPosition(static_cast<int>(i));
        cursor.setPosition(static_cast<int>(i) + 1, QTextCursor::KeepAnchor);
        cursor.insertText(after.mid(i, 1));
    }
    cursor.endEditBlock();
}
} // namespace

QList<QObject *> controlsOf(const Screen &screen)
{
    QList<QObject *> found;
    for (QObject *child : screen.children()) {
        if (child == screen.surface() || qobject_cast<QMenuBar *>(child)) {
            collect(child, found);
        } else if (isNamed(child) &&
                   (kindOf(child) == ControlKind::Menu || kindOf(child) == ControlKind::StatusBar)) {
            found << child;
            if (child->isWidgetType() && kindOf(child) == ControlKind::Menu)
                collect(child, found);
        }
    }
    return found;
}

bool holdsControls(const QObject *control)
{
    const ControlKind kind = kindOf(control);
    return kind == ControlKind::Frame || kind == ControlKind::PictureBox ||
           qobject_cast<const QScrollArea *>(control);
}

ControlKind kindOf(const QObject *control)
{
    if (const auto *action = qobject_cast<const QAction *>(control))
        return action->isSeparator() ? ControlKind::Other : ControlKind::Menu;
    if (qobject_cast<const QMenu *>(control))
        return ControlKind::Menu;
    if (qobject_cast<const QPushButton *>(control))
        return ControlKind::CommandButton;
    if (qobject_cast<const QRadioButton *>(control))
        return ControlKind::OptionButton;
    if (qobject_cast<const QCheckBox *>(control))
        return ControlKind::CheckBox;
    if (qobject_cast<const QGroupBox *>(control))
        return ControlKind::Frame;
    if (const auto *label = qobject_cast<const QLabel *>(control))
        return label->pixmap(Qt::ReturnByValue).isNull() ? ControlKind::Label : ControlKind::Image;
    if (qobject_cast<const QLineEdit *>(control) || qobject_cast<const QPlainTextEdit *>(control))
        return ControlKind::TextBox;
    if (qobject_cast<const QComboBox *>(control))
        return ControlKind::ComboBox;
    if (qobject_cast<const QDateTimeEdit *>(control))
        return ControlKind::DTPicker;
    if (qobject_cast<const FlexGrid *>(control))
        return ControlKind::FlexGrid;
    if (qobject_cast<const QTableView *>(control))
        return ControlKind::DataGrid;
    if (qobject_cast<const QStatusBar *>(control))
        return ControlKind::StatusBar;
    if (control && control->metaObject() == &QFrame::staticMetaObject) {
        const auto shape = static_cast<const QFrame *>(control)->frameShape();
        return shape == QFrame::HLine || shape == QFrame::VLine ? ControlKind::Line : ControlKind::PictureBox;
    }
    if (control && control->metaObject() == &QWidget::staticMetaObject)
        return ControlKind::PictureBox;
    return ControlKind::Other;
}

QStringView kindName(ControlKind kind)
{
    switch (kind) {
    case ControlKind::CommandButton:
        return u"CommandButton";
    case ControlKind::OptionButton:
        return u"OptionButton";
    case ControlKind::CheckBox:
        return u"CheckBox";
    case ControlKind::Frame:
        return u"Frame";
    case ControlKind::Menu:
        return u"Menu";
    case ControlKind::Label:
        return u"Label";
    case ControlKind::TextBox:
        return u"TextBox";
    case ControlKind::ComboBox:
        return u"ComboBox";
    case ControlKind::DTPicker:
        return u"DTPicker";
    case ControlKind::PictureBox:
        return u"PictureBox";
    case ControlKind::Image:
        return u"Image";
    case ControlKind::Line:
        return u"Line";
    case ControlKind::FlexGrid:
        return u"FlexGrid";
    case ControlKind::DataGrid:
        return u"DataGrid";
    case ControlKind::StatusBar:
        return u"StatusBar";
    case ControlKind::Other:
        break;
    }
    return {};
}

QString captionOf(const QObject *control)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(control))
        return button->text();
    if (const auto *frame = qobject_cast<const QGroupBox *>(control))
        return frame->title();
    if (const auto *label = qobject_cast<const QLabel *>(control))
        return label->text();
    if (const auto *action = qobject_cast<const QAction *>(control))
        return action->text();
    if (const auto *menu = qobject_cast<const QMenu *>(control))
        return menu->title();
    return kindOf(control) == ControlKind::DataGrid ? control->property("caption").toString() : QString();
}

void setCaption(QObject *control, const QString &caption)
{
    if (auto *button = qobject_cast<QAbstractButton *>(control))
        button->setText(caption);
    else if (auto *frame = qobject_cast<QGroupBox *>(control))
        frame->setTitle(caption);
    else if (auto *label = qobject_cast<QLabel *>(control); label && kindOf(label) == ControlKind::Label)
        label->setText(caption);
    else if (auto *action = qobject_cast<QAction *>(control))
        action->setText(caption);
    else if (auto *menu = qobject_cast<QMenu *>(control))
        menu->setTitle(caption);
    else if (kindOf(control) == ControlKind::DataGrid)
        control->setProperty("caption", caption);
}

bool rightToLeftOf(const QObject *control)
{
    return control && control->isWidgetType() && static_cast<const QWidget *>(control)->isRightToLeft();
}

void setRightToLeft(QObject *control, bool on)
{
    if (control && control->isWidgetType())
        static_cast<QWidget *>(control)->setLayoutDirection(on ? Qt::RightToLeft : Qt::LeftToRight);
}

void setAccessibleText(QWidget *control, const QString &text)
{
    QString name = text;
    name.remove(u'&');
    if (name.endsWith(u':'))
        name.chop(1);
    control->setAccessibleName(name);
    if (kindOf(control) == ControlKind::ComboBox)
        control->setAccessibleDescription(name);
}

void takeAsciiDigits(QWidget *textBox)
{
    if (auto *line = qobject_cast<QLineEdit *>(textBox)) {
        line->setValidator(new AsciiDigits(line));
        return;
    }
    auto *box = qobject_cast<QPlainTextEdit *>(textBox);
    if (!box)
        return;
    QTextDocument *document = box->document();
    // Only what came in is looked at, and the document is touched once its change is complete.
    auto toTurn = std::make_shared<bool>(false);
    QObject::connect(document, &QTextDocument::contentsChange, textBox,
                     [document, toTurn](int position, int, int added) {
                         const int end = qMin(position + added, document->characterCount() - 1);
                         for (int i = position; i < end && !*toTurn; ++i) {
                             const QString character(document->characterAt(i));
                             *toTurn = asciiDigits(character) != character;
                         }
                     });
    QObject::connect(document, &QTextDocument::contentsChanged, textBox, [document, toTurn] {
        if (std::exchange(*toTurn, false))
            turnDigits(document);
    });
}
