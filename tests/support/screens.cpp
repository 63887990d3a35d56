#include "support/screens.h"

#include "platform/ui/application.h"
#include "platform/ui/controls.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtTest/QtTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionButton>
#include <QtWidgets/QTextEdit>

#include <stdexcept>

namespace
{
/// What shows or hides a menu or its entry.
const QAction *actionOf(const QObject *object)
{
    const auto *menu = qobject_cast<const QMenu *>(object);
    return menu ? menu->menuAction() : qobject_cast<const QAction *>(object);
}

/// Fails the test when a user could not reach the control.
bool usable(const Screen &screen, const char *name)
{
    const bool shown = isShown(screen, name);
    if (shown && isEnabled(screen, name))
        return true;
    ADD_FAILURE() << name << " of " << screen.objectName().toStdString() << " is "
                  << (shown ? "disabled" : "hidden") << ": a user can't reach it";
    return false;
}

/// Where a click counts: options and check boxes take it on their mark and text only.
QPoint clickPlace(QWidget &widget)
{
    auto *button = qobject_cast<QAbstractButton *>(&widget);
    const bool option = button && kindOf(button) == ControlKind::OptionButton;
    if (!option && !(button && kindOf(button) == ControlKind::CheckBox))
        return widget.rect().center();
    QStyleOptionButton look;
    look.initFrom(button);
    look.text = button->text();
    const auto mark = option ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator;
    return button->style()->subElementRect(mark, &look, button).center();
}

/// Runs a callable as an event, so that it stands under the dispatch as a user's click does.
class Dispatched : public QObject
{
public:
    explicit Dispatched(std::function<void()> action) : m_action(std::move(action)) {}
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        m_action();
        return true;
    }

private:
    std::function<void()> m_action;
};

void dispatch(std::function<void()> action)
{
    Dispatched receiver(std::move(action));
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&receiver, &event);
}

void sendKey(QWidget *target, int key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QCoreApplication::sendEvent(target, &release);
}

void typeKeys(QWidget *target, const QString &text)
{
    for (const QChar c : text) {
        if (c == u'\n')
            sendKey(target, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
        else
            sendKey(target, c.unicode() < 0x80 ? c.toUpper().unicode() : 0, Qt::NoModifier, c);
    }
}

/// The control with the focus on it and all of its text selected.
QWidget *takeUp(Screen &screen, const char *name)
{
    QWidget *box = &control(screen, name);
    if (!usable(screen, name))
        return nullptr;
    box->setFocus(Qt::OtherFocusReason);
    auto *combo = qobject_cast<QComboBox *>(box);
    return combo && combo->lineEdit() ? combo->lineEdit() : box;
}
} // namespace

QObject *support::findControl(const Screen &screen, const char *name)
{
    const auto controls = controlsOf(screen);
    for (QObject *object : controls) {
        if (object->objectName() == QLatin1String(name))
            return object;
    }
    return nullptr;
}

void support::missControl(const Screen &screen, const char *name, const std::type_info &wanted)
{
    std::string message =
        "no " + className(wanted) + ' ' + name + " on " + screen.objectName().toStdString() + "; there are";
    const auto controls = controlsOf(screen);
    for (const QObject *object : controls)
        message += ' ' + object->objectName().toStdString() + '(' + object->metaObject()->className() + ')';
    throw std::runtime_error(message);
}

void click(Screen &screen, const char *name)
{
    QWidget &widget = control(screen, name);
    if (usable(screen, name))
        QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, clickPlace(widget));
}

void typeText(Screen &screen, const char *name, const QString &text)
{
    if (QWidget *box = takeUp(screen, name))
        typeKeys(box, text);
}

void fill(Screen &screen, const char *name, const QString &text)
{
    QWidget *box = takeUp(screen, name);
    if (!box)
        return;
    if (auto *date = qobject_cast<QDateTimeEdit *>(box)) {
        date->setSelectedSection(QDateTimeEdit::DaySection);
        return typeKeys(box, QString(text).remove(u'/')); // a full part goes on to the next by itself
    }
    sendKey(box, Qt::Key_A, Qt::ControlModifier, {});
    if (text.isEmpty())
        sendKey(box, Qt::Key_Delete, Qt::NoModifier, {});
    typeKeys(box, text);
}

void paste(Screen &screen, const char *name, const QString &text)
{
    QWidget *box = takeUp(screen, name);
    if (!box)
        return;
    QGuiApplication::clipboard()->setText(text);
    sendKey(box, Qt::Key_A, Qt::ControlModifier, {});
    sendKey(box, Qt::Key_V, Qt::ControlModifier, {});
}

void pressKey(Screen &screen, int key, Qt::KeyboardModifiers modifiers)
{
    QWidget *focused = screen.focusWidget();
    sendKey(focused ? focused : &screen, key, modifiers, {});
}

void choose(Screen &screen, const char *name, const QString &entry)
{
    auto &combo = control<QComboBox>(screen, name);
    const int index = combo.findText(entry);
    if (!usable(screen, name))
        return;
    if (index < 0) {
        ADD_FAILURE() << name << " has no entry \"" << entry.toStdString() << '"';
        return;
    }
    dispatch([&combo, index] {
        combo.setCurrentIndex(index);
        Q_EMIT combo.activated(index);
    });
}

void chooseMenu(Screen &screen, const char *name)
{
    auto &entry = control<QAction>(screen, name);
    if (usable(screen, name))
        dispatch([&entry] { entry.trigger(); });
}

QString textOf(const Screen &screen, const char *name)
{
    auto *object = &control<QObject>(screen, name);
    if (const auto *line = qobject_cast<const QLineEdit *>(object))
        return line->text();
    if (const auto *plain = qobject_cast<const QPlainTextEdit *>(object))
        return plain->toPlainText();
    if (const auto *rich = qobject_cast<const QTextEdit *>(object))
        return rich->toPlainText();
    if (const auto *combo = qobject_cast<const QComboBox *>(object))
        return combo->currentText();
    if (const auto *date = qobject_cast<const QDateTimeEdit *>(object))
        return date->text();
    return captionOf(object);
}

bool isShown(const Screen &screen, const char *name)
{
    auto *object = &control<QObject>(screen, name);
    if (const auto *widget = qobject_cast<const QWidget *>(object);
        widget && !qobject_cast<const QMenu *>(object))
        return widget->isVisibleTo(&screen);
    return actionOf(object)->isVisible();
}

bool isEnabled(const Screen &screen, const char *name)
{
    auto *object = &control<QObject>(screen, name);
    if (const auto *widget = qobject_cast<const QWidget *>(object);
        widget && !qobject_cast<const QMenu *>(object))
        return widget->isEnabledTo(&screen);
    return actionOf(object)->isEnabled();
}

void savePicture(QWidget &window, const QString &path)
{
    const QString folder = qEnvironmentVariable("QUVANA_PICTURES");
    if (QFileInfo(path).isRelative() && folder.isEmpty())
        return;
    const QString file = QDir(folder).absoluteFilePath(path);
    QDir().mkpath(QFileInfo(file).absolutePath());
    if (!window.grab().save(file, "PNG"))
        throw std::runtime_error("can't write the picture " + file.toStdString());
}

testing::AssertionResult processEnded(int exitCode, const std::function<void()> &action)
{
    resetProcess();
    runGuarded(action);
    const bool ended = processEnding();
    const int code = processExitCode();
    resetProcess();
    if (!ended)
        return testing::AssertionFailure() << "the process goes on";
    if (code != exitCode)
        return testing::AssertionFailure() << "the process ended with exit code " << code;
    return testing::AssertionSuccess();
}
