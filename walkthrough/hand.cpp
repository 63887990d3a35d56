#include "hand.h"

#include "platform/ui/controls.h"
#include "platform/ui/flex_grid.h"
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
#include <QtWidgets/QHeaderView>
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

/// Opens the submenu by the keys, which do not wait before they show it.
QMenu &openSubmenu(QMenu &popup, QAction &holder)
{
    for (int i = 0; popup.activeAction() != &holder && i <= popup.actions().size(); ++i)
        QTest::keyClick(&popup, Qt::Key_Down);
    QTest::keyClick(&popup, Qt::Key_Return);
    return *holder.menu();
}

void clickEntry(QMenu &popup, QAction &entry)
{
    QMenu *menu = &popup;
    const auto actions = popup.actions();
    for (QAction *action : actions) {
        if (action->menu() != nullptr && action->menu()->actions().contains(&entry))
            menu = &openSubmenu(popup, *action);
    }
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(&entry).center());
}

FlexGrid &gridOf(const Screen &screen, const char *name)
{
    return dynamic_cast<FlexGrid &>(hand::reach(screen, name));
}

/// The middle of the part of a cell that is in view.
QPoint cellPlace(const FlexGrid &grid, int row, int column)
{
    const QRect cell = grid.cellRect(row, column);
    if (cell.isEmpty())
        fail(u"cell %1, %2 of %3 is out of view"_s.arg(row).arg(column).arg(grid.objectName()));
    return cell.center();
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
    QAction *top = const_cast<QAction *>(actionOf(found(screen, menu)));
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(top).center());
    if (entry != nullptr)
        clickEntry(*top->menu(), const_cast<QAction &>(*actionOf(found(screen, entry))));
}

void choosePopup(const Screen &screen, const char *entry)
{
    auto *popup = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (popup == nullptr)
        fail(u"no menu stands open for "_s + QString::fromLatin1(entry));
    clickEntry(*popup, const_cast<QAction &>(*actionOf(found(screen, entry))));
}

void clickCell(const Screen &screen, const char *grid, int row, int column, Qt::MouseButton button)
{
    const FlexGrid &table = gridOf(screen, grid);
    QWidget *cells = table.viewport();
    QTest::mouseClick(cells, button, {}, cells->mapFrom(&table, cellPlace(table, row, column)));
}

void doubleClickCell(const Screen &screen, const char *grid, int row, int column)
{
    const FlexGrid &table = gridOf(screen, grid);
    QWidget *cells = table.viewport();
    QTest::mouseDClick(cells, Qt::LeftButton, {}, cells->mapFrom(&table, cellPlace(table, row, column)));
}

void doubleClickHeading(const Screen &screen, const char *grid, int column)
{
    const FlexGrid &table = gridOf(screen, grid);
    QWidget *headings = table.horizontalHeader()->viewport();
    QTest::mouseDClick(headings, Qt::LeftButton, {}, headings->mapFrom(&table, cellPlace(table, 0, column)));
}

void savePicture(QWidget &window, const QString &file)
{
    QDir().mkpath(QFileInfo(file).absolutePath());
    if (!window.grab().save(file, "PNG"))
        fail(u"the picture "_s + file + u" could not be written"_s);
}

} // namespace hand
