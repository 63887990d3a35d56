#include "player.h"

#include "hand.h"
#include "platform/ui/screen.h"

#include <QtCore/QScopeGuard>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int pollInterval = 10;    // milliseconds
constexpr qint64 patience = 10'000; // milliseconds that a step may wait

/// What a message box says, without the marks for its directions.
QString textOf(const QMessageBox &box)
{
    return box.text().remove(QChar(0x2068)).remove(QChar(0x2069)).remove(QChar(0x200E));
}

/// What is on the display, for the report of a story that stopped.
QString display()
{
    QStringList windows;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->isVisible())
            continue;
        const auto *box = qobject_cast<const QMessageBox *>(window);
        windows += box != nullptr ? u"message \""_s + textOf(*box) + u'"' : window->objectName();
    }
    return windows.join(u", "_s);
}

} // namespace

Screen *Player::screenOnTop(const QString &name)
{
    QWidget *modal = QApplication::activeModalWidget();
    for (Screen *screen : Screen::loadedScreens()) {
        if (screen->objectName() == name && screen->isVisible() && (modal == nullptr || modal == screen))
            return screen;
    }
    return nullptr;
}

Player::Player(const QString &pictureFolder) : m_pictureFolder(pictureFolder) {}

void Player::step(const QString &what, std::function<bool()> ready, Action action)
{
    m_steps.push_back({what, std::move(ready), std::move(action)});
}

void Player::on(const QString &screenName, std::function<void(Screen &)> action)
{
    step(
        screenName, [screenName] { return screenOnTop(screenName) != nullptr; },
        [screenName, action = std::move(action)] { action(*screenOnTop(screenName)); });
}

void Player::onIdle(const QString &screenName, std::function<void(Screen &)> action)
{
    step(
        screenName, [this, screenName] { return m_running == 0 && screenOnTop(screenName) != nullptr; },
        [screenName, action = std::move(action)] { action(*screenOnTop(screenName)); });
}

void Player::click(const QString &screenName, const char *control)
{
    on(screenName, [control](Screen &screen) { hand::click(screen, control); });
}

void Player::chooseMenu(const QString &screenName, const char *entry)
{
    on(screenName, [entry](Screen &screen) { hand::chooseMenu(screen, entry, nullptr); });
}

void Player::acceptMessage(const QString &part, const QString &pictureName)
{
    const auto box = [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()); };
    step(
        u"message "_s + part, [box, part] { return box() != nullptr && textOf(*box()).contains(part); },
        [this, box, pictureName] {
            if (!pictureName.isEmpty())
                picture(*box(), pictureName);
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
            hand::fill(*box, text);
            hand::pressKey(*box, Qt::Key_Return);
        });
}

void Player::saveAs(const QString &path)
{
    const auto dialog = [] { return qobject_cast<QFileDialog *>(QApplication::activeModalWidget()); };
    step(
        u"save dialog"_s, [dialog] { return dialog() != nullptr; }, [dialog] { dialog()->activateWindow(); });
    // Without the keys the dialog would keep the file that it proposes.
    step(
        u"keys for the save dialog"_s, [dialog] { return dialog()->isActiveWindow(); },
        [dialog, path] {
            auto *box = dialog()->findChild<QLineEdit *>(u"fileNameEdit"_s);
            box->setFocus();
            QGuiApplication::clipboard()->setText(path);
            hand::pressKey(*box, Qt::Key_A, Qt::ControlModifier);
            hand::pressKey(*box, Qt::Key_V, Qt::ControlModifier);
            hand::pressKey(*box, Qt::Key_Return);
        });
}

void Player::picture(QWidget &window, const QString &name)
{
    hand::savePicture(window,
                      u"%1/%2-%3.png"_s.arg(m_pictureFolder).arg(++m_pictures, 2, 10, QChar(u'0')).arg(name));
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
            hand::savePicture(*window, u"%1/stopped-%2.png"_s.arg(m_pictureFolder, window->objectName()));
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
    ++m_running;
    const auto returned = qScopeGuard([this] { --m_running; });
    try {
        step.action();
    } catch (const std::runtime_error &error) {
        stop(u"%1: %2"_s.arg(step.what, QString::fromUtf8(error.what())));
    }
}
