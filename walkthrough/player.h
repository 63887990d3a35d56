#pragma once

#include <QtCore/QObject>
#include <QtWidgets/QWidget>

#include <deque>
#include <functional>

class Screen;
class QMessageBox;

/// Plays a story on the running program with real key presses and clicks. The story is a row of steps; each
/// waits until what it needs is on the display and then acts. A step may open a screen or a dialog that
/// serves events of its own: the steps behind it are then played inside.
class Player : public QObject
{
    Q_OBJECT

public:
    using Action = std::function<void()>;

    /// The screen of this name where it takes input: shown, and not below another modal window; else null.
    static Screen *screenOnTop(const QString &name);

    /// Pictures go to this folder, numbered in the order of taking.
    explicit Player(const QString &pictureFolder);

    /// Waits until `ready`, then acts. `what` names the step where the story fails.
    void step(const QString &what, std::function<bool()> ready, Action action);
    /// Waits until the screen of this name is on top, then acts on it.
    void on(const QString &screenName, std::function<void(Screen &)> action);
    /// The same, and until no action before it still runs: for a screen whose routines serve events in the
    /// middle of their work.
    void onIdle(const QString &screenName, std::function<void(Screen &)> action);
    /// Clicks a control of the screen, or an entry of its menu bar, once the screen is on top.
    void click(const QString &screenName, const char *control);
    void chooseMenu(const QString &screenName, const char *entry);
    /// Waits for a message box whose text holds this, takes a picture of it where one is named, and presses
    /// the button that closes it: Yes of a question. Line breaks in `part` are "\n".
    void acceptMessage(const QString &part, const QString &pictureName = {});
    /// Waits for the input box, types the text in place of what stands there, and accepts.
    void answerInput(const QString &text);

    /// Waits for the save dialog, puts the file's path in place of its proposal, and accepts.
    void saveAs(const QString &path);

    /// Takes a picture of a window.
    void picture(QWidget &window, const QString &name);

    /// Plays on from here; the steps run as soon as events are served.
    void play();
    /// True when all steps have been played.
    bool finished() const { return m_steps.empty(); }
    /// Why the story stopped; empty when it did not.
    const QString &failure() const { return m_failure; }

private:
    struct Step {
        QString what;
        std::function<bool()> ready;
        Action action;
    };
    void arm();
    void poll();
    [[noreturn]] void stop(const QString &why);

    std::deque<Step> m_steps;
    int m_running = 0;   ///< actions that have not returned yet
    qint64 m_waited = 0; ///< milliseconds since the last step was played
    bool m_wasReady = false;
    QString m_failure;
    QString m_pictureFolder;
    int m_pictures = 0;
};
