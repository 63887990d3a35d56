#include "hand.h"

#include "platform/ui/controls.h"
#include "platform/ui/screen.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtTest/QtTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionButton>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace
{

[[noreturn]] void fail(const QString &why)
{
    throw std::runtime_error(why.toStdString());
}

QObject &found(const Screen &screen, const char *name)
{
    QObject *object = hand::find(screen, name);
    return object ? *object : (fail(hand::missing(screen, name)), *object);
}

/// What shows or hides a menu or its entry; null for a widget on the screen.
const QAction *actionOf(const QObject &object)
{
    const auto *menu = qobject_cast<const QMenu *>(&object);
    return menu ? menu->menuAction() : qobject_cast<const QAction *>(&object);
}

/// Where a click counts: options and check boxes take it on their mark and text only.
QPoint clickPlace(const QWidget &widget)
{
    const auto *button = qobject_cast<const QAbstractButton *>(&widget);
    const bool option = button && kindOf(button) == ControlKind::OptionButton;
    if (!option && !(button && kindOf(button) == ControlKind::CheckBox))
        return widget.rect().center();
    QStyleOptionButton look;
    look.initFrom(button);
    look.text = button->text();
    const auto mark = option ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator;
    return button->style()->subElementRect(mark, &look, button).center();
}

void sendKey(QWidget &target, int key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(&target, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QCoreApplication::sendEvent(&target, &release);
}

void typeKeys(QWidget &target, const QString &text)
{
    for (const QChar c : text) {
        if (c == u'\n')
            sendKey(target, Qt::Key_Return, Qt::NoModifier, u"\r"_s);
        else
            sendKey(target, c.unicode() < 0x80 ? c.toUpper().unicode() : 0, Qt::NoModifier, c);
    }
}

/// The control with the focus on it.
QWidget &takeUp(const Screen &screen, const char *name)
{
    QWidget &box = hand::reach(screen, name);
    box.setFocus(Qt::OtherFocusReason);
    auto *combo = qobject_cast<QComboBox *>(&box);
    return combo && combo->lineEdit() ? *combo->lineEdit() : box;
}

} // namespace

namespace hand
{

QObject *find(const Screen &screen, const char *name)
{
    const auto controls = controlsOf(screen);
    for (QObject *object : controls) {
        if (object->objectName() == QLatin1StringView(name))
            return object;
    }
    return nullptr;
}

QString missing(const Screen &screen, const char *name)
{
    QString message = u"no %1 on %2; there are"_s.arg(QString::fromLatin1(name), screen.objectName());
    const auto controls = controlsOf(screen);
    for (const QObject *object : controls)
        message +=
            u" %1(%2)"_s.arg(object->objectName(), QString::fromLatin1(object->metaObject()->className()));
    return message;
}

bool isShown(const Screen &screen, const char *name)
{
    const QObject &object = found(screen, name);
    const QAction *action = actionOf(object);
    return action ? action->isVisible() : static_cast<const QWidget &>(object).isVisibleTo(&screen);
}

bool isEnabled(const Screen &screen, const char *name)
{
    const QObject &object = found(screen, name);
    const QAction *action = actionOf(object);
    return action ? action->isEnabled() : static_cast<const QWidget &>(object).isEnabledTo(&screen);
}

QWidget &reach(const Screen &screen, const char *name)
{
    QObject &object = found(screen, name);
    if (!isShown(screen, name) || !isEnabled(screen, name))
        fail(u"%1 of %2 is hidden or disabled: a person can't reach it"_s.arg(QString::fromLatin1(name),
                                                                              screen.objectName()));
    return dynamic_cast<QWidget &>(object);
}

void click(const Screen &screen, const char *name)
{
    QWidget &widget = reach(screen, name);
    QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, clickPlace(widget));
}

void typeText(const Screen &screen, const char *name, const QString &text)
{
    typeKeys(takeUp(screen, name), text);
}

void fill(const Screen &screen, const char *name, const QString &text)
{
    fill(takeUp(screen, name), text);
}

void fill(QWidget &box, const QString &text)
{
    if (auto *date = qobject_cast<QDateTimeEdit *>(&box)) {
        date->setSelectedSection(QDateTimeEdit::DaySection);
        return typeKeys(box, QString(text).remove(u'/')); // a full part goes on to the next by itself
    }
    sendKey(box, Qt::Key_A, Qt::ControlModifier, {});
    if (text.isEmpty())
        sendKey(box, Qt::Key_Delete, Qt::NoModifier, {});
    typeKeys(box, text);
}

void paste(const Screen &screen, const char *name, const QString &text)
{
    QWidget &box = takeUp(screen, name);
    QGuiApplication::clipboard()->setText(text);
    sendKey(box, Qt::Key_A, Qt::ControlModifier, {});
    sendKey(box, Qt::Key_V, Qt::ControlModifier, {});
}

void pressKey(QWidget &target, int key, Qt::KeyboardModifiers modifiers)
{
    sendKey(target, key, modifiers, {});
}

void pressKey(const Screen &screen, int key, Qt::KeyboardModifiers modifiers)
{
    QWidget *focused = screen.focusWidget();
    sendKey(focused ? *focused : const_cast<Screen &>(screen), key, modifiers, {});
}

void choose(const Screen &screen, const char *combo, const QString &entry)
{
    auto &box = dynamic_cast<QComboBox &>(reach(screen, combo));
    const int index = box.findText(entry);
    if (index < 0)
        fail(u"%1 has no entry %2"_s.arg(QString::fromLatin1(combo), entry));
    box.showPopup();
    QAbstractItemView &view = *box.view();
    view.setCurrentIndex(box.model()->index(index, box.modelColumn()));
    QTest::keyClick(&view, Qt::Key_Return);
}

void chooseMenu(const Screen &screen, const char *menu, const char *entry)
{
    QMenuBar &bar = *screen.menuBar();
    const auto place = [](const auto &holder, QAction *action) {
        return holder.actionGeometry(action).center();
    };
    QAction *top = const_cast<QAction *>(actionOf(found(screen, menu)));
    QTest::mouseClick(&bar, Qt::LeftButton, {}, place(bar, top));
    if (entry == nullptr)
        return;
    QMenu &popup = *top->menu();
    QTest::mouseClick(&popup, Qt::LeftButton, {},
                      place(popup, const_cast<QAction *>(actionOf(found(screen, entry)))));
}

void savePicture(QWidget &window, const QString &file)
{
    QDir().mkpath(QFileInfo(file).absolutePath());
    if (!window.grab().save(file, "PNG"))
        fail(u"the picture "_s + file + u" could not be written"_s);
}

} // namespace hand
