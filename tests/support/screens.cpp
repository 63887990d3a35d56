#include "support/screens.h"

#include "platform/ui/application.h"
#include "platform/ui/controls.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTextEdit>

#include <stdexcept>

namespace
{
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
} // namespace

void support::missControl(const Screen &screen, const char *name, const std::type_info &wanted)
{
    throw std::runtime_error(className(wanted) + ": " + hand::missing(screen, name).toStdString());
}

void choose(Screen &screen, const char *name, const QString &entry)
{
    auto &combo = dynamic_cast<QComboBox &>(hand::reach(screen, name));
    const int index = combo.findText(entry);
    if (index < 0)
        throw std::runtime_error(std::string(name) + " has no entry " + entry.toStdString());
    dispatch([&combo, index] {
        combo.setCurrentIndex(index);
        Q_EMIT combo.activated(index);
    });
}

void chooseMenu(Screen &screen, const char *name)
{
    auto &entry = control<QAction>(screen, name);
    if (!isShown(screen, name) || !isEnabled(screen, name))
        throw std::runtime_error(std::string(name) + " is hidden or disabled");
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

void savePicture(QWidget &window, const QString &path)
{
    const QString folder = qEnvironmentVariable("QUVANA_PICTURES");
    if (!QFileInfo(path).isRelative() || !folder.isEmpty())
        hand::savePicture(window, QDir(folder).absoluteFilePath(path));
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
