#include "support/screens.h"

#include "platform/ui/controls.h"
#include "platform/ui/process.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>

#include <stdexcept>

void support::missControl(const Screen &screen, const char *name, const char *wanted)
{
    throw std::runtime_error(wanted + (": " + hand::missing(screen, name).toStdString()));
}

void chooseMenu(Screen &screen, const char *name)
{
    auto &entry = control<QAction>(screen, name);
    if (!isShown(screen, name) || !isEnabled(screen, name))
        throw std::runtime_error(std::string(name) + " is hidden or disabled");
    // By the entry's key, which needs no menu on the display.
    QShortcutEvent key({}, -1);
    QCoreApplication::sendEvent(&entry, &key);
}

QString textOf(const Screen &screen, const char *name)
{
    auto *object = &control<QObject>(screen, name);
    if (const auto *line = qobject_cast<const QLineEdit *>(object))
        return line->text();
    if (const auto *plain = qobject_cast<const QPlainTextEdit *>(object))
        return plain->toPlainText();
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

QRect inkOf(QWidget &widget, const QRect &part)
{
    constexpr int dark = 128;
    const QImage picture = widget.grab(part).toImage();
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qGray(picture.pixel(x, y)) < dark)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
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
