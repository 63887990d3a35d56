#include "player.h"

#include "platform/ui/application.h"
#include "platform/ui/screen.h"

#include <QtCore/QDir>
#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtTest/QtTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int pollInterval = 10;    // milliseconds
constexpr qint64 patience = 10'000; // milliseconds that a step may wait

[[noreturn]] void fail(const QString &why)
{
    throw std::runtime_error(why.toStdString());
}

Screen *topScreen(const QString &name)
{
    QWidget *modal = QApplication::activeModalWidget();
    for (Screen *screen : Screen::loadedScreens()) {
        if (screen->objectName() == name && screen->isVisible() && (modal == nullptr || modal == screen))
            return screen;
    }
    return nullptr;
}

/// What is on the display, for the report of a story that stopped.
QString display()
{
    QStringList windows;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->isVisible())
            continue;
        const auto *box = qobject_cast<const QMessageBox *>(window);
        windows += box != nullptr ? u"message \""_s + box->text() + u'"' : window->objectName();
    }
    return windows.join(u", "_s);
}

} // namespace

Player::Player(const QString &pictureFolder) : m_pictureFolder(pictureFolder)
{
    QDir().mkpath(pictureFolder);
}

void Player::step(const QString &what, std::function<bool()> ready, Action action)
{
    m_steps.push_back({what, std::move(ready), std::move(action)});
}

void Player::on(const QString &screenName, std::function<void(Screen &)> action)
{
    step(
        screenName, [screenName] { return topScreen(screenName) != nullptr; },
        [screenName, action = std::move(action)] { action(*topScreen(screenName)); });
}

void Player::acceptMessage(const QString &part)
{
    const auto box = [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()); };
    step(
        u"message "_s + part, [box, part] { return box() != nullptr && box()->text().contains(part); },
        [box] {
            QAbstractButton *button = box()->button(QMessageBox::Yes);
            if (button == nullptr)
                button = box()->buttons().value(0);
            QTest::mouseClick(button, Qt::LeftButton);
        });
}

void Player::answerInput(const QString &text)
{
    const auto dialog = [] { return qobject_cast<QInputDialog *>(QApplication::activeModalWidget()); };
    step(
        u"input box"_s, [dialog] { return dialog() != nullptr; },
        [dialog, text] {
            auto *box = dialog()->findChild<QLineEdit *>();
            hand::typeInto(*box, text);
            hand::press(*box, Qt::Key_Return);
        });
}

void Player::picture(const QWidget &window, const QString &name)
{
    const QString file =
        u"%1/%2-%3.png"_s.arg(m_pictureFolder).arg(++m_pictures, 2, 10, QChar(u'0')).arg(name);
    if (!const_cast<QWidget &>(window).grab().save(file))
        fail(u"the picture "_s + file + u" could not be written"_s);
}

void Player::play()
{
    m_waited = 0;
    arm();
}

// A timer is not raised again inside of its own event, and a step may serve events of its own: each look has
// a new timer.
void Player::arm()
{
    QTimer::singleShot(pollInterval, this, &Player::poll);
}

void Player::stop(const QString &why)
{
    m_failure = why;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            window->grab().save(u"%1/stopped-%2.png"_s.arg(m_pictureFolder, window->objectName()));
    }
    endProcess(1);
}

void Player::poll()
{
    if (m_steps.empty())
        return;
    // Looked at twice: the routine behind a dialog that was just answered runs first.
    const bool ready = m_steps.front().ready();
    const bool steady = ready && m_wasReady;
    m_wasReady = ready && !steady;
    if (!steady) {
        m_waited += pollInterval;
        if (m_waited > patience)
            stop(u"waiting for %1; on the display: %2"_s.arg(m_steps.front().what, display()));
        arm();
        return;
    }
    const Step step = m_steps.front();
    m_steps.pop_front();
    m_waited = 0;
    arm();
    try {
        step.action();
    } catch (const std::runtime_error &error) {
        stop(u"%1: %2"_s.arg(step.what, QString::fromUtf8(error.what())));
    }
}

namespace hand
{

QWidget &control(const Screen &screen, const char *name)
{
    auto *widget = screen.findChild<QWidget *>(QString::fromLatin1(name));
    if (widget == nullptr)
        fail(u"%1 has no control %2"_s.arg(screen.objectName(), QString::fromLatin1(name)));
    if (!widget->isVisible() || !widget->isEnabled())
        fail(u"%1 can't be used on %2"_s.arg(QString::fromLatin1(name), screen.objectName()));
    return *widget;
}

void click(const Screen &screen, const char *button)
{
    QWidget &widget = control(screen, button);
    // A check box or an option takes the click on its mark, which stands at the leading edge.
    const bool marked = qobject_cast<QAbstractButton *>(&widget) != nullptr &&
                        qobject_cast<QPushButton *>(&widget) == nullptr;
    const int edge = widget.layoutDirection() == Qt::RightToLeft ? widget.width() - 10 : 10;
    QTest::mouseClick(&widget, Qt::LeftButton, {},
                      marked ? QPoint(edge, widget.height() / 2) : widget.rect().center());
}

void press(QWidget &target, Qt::Key key)
{
    QTest::keyClick(&target, key);
}

void typeInto(QWidget &box, const QString &text)
{
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        QTest::keyClick(&box, Qt::Key_Delete);
    for (const QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, QString(letter), Qt::NoModifier);
}

void type(const Screen &screen, const char *box, const QString &text)
{
    QWidget &widget = control(screen, box);
    widget.setFocus(Qt::MouseFocusReason);
    typeInto(widget, text);
}

void choose(const Screen &screen, const char *combo, const QString &entry)
{
    auto &box = dynamic_cast<QComboBox &>(control(screen, combo));
    const int index = box.findText(entry);
    if (index < 0)
        fail(u"%1 has no entry %2"_s.arg(QString::fromLatin1(combo), entry));
    box.showPopup();
    QAbstractItemView &view = *box.view();
    QTest::qWait(1);
    const QModelIndex item = box.model()->index(index, box.modelColumn());
    view.scrollTo(item);
    view.setCurrentIndex(item);
    QTest::keyClick(&view, Qt::Key_Return);
}

void chooseMenu(const Screen &screen, const char *menu, const char *entry)
{
    QMenuBar &bar = *screen.menuBar();
    const auto find = [](const QWidget &holder, const char *name) -> QAction * {
        for (QAction *action : holder.actions()) {
            if (action->objectName() == QLatin1StringView(name) ||
                (action->menu() != nullptr && action->menu()->objectName() == QLatin1StringView(name)))
                return action;
        }
        fail(u"there is no menu "_s + QString::fromLatin1(name));
    };
    QAction *top = find(bar, menu);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(top).center());
    if (entry == nullptr)
        return;
    QMenu &popup = *top->menu();
    QTest::mouseClick(&popup, Qt::LeftButton, {}, popup.actionGeometry(find(popup, entry)).center());
}

} // namespace hand
