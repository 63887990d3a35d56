#pragma once

#include "platform/ui/hourglass.h"
#include "platform/ui/wait.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtCore/QString>

#include <functional>
#include <optional>

class QDialog;
class QLabel;
class QProgressBar;
class Recordset;

/// How long a work goes on before it tells how far it is: two seconds, unless a test sets another time. With
/// none it tells at each call.
void setProgressPatience(int milliseconds);

/// When a work is to tell: once it has gone on for too long, and then some times a second.
class ProgressClock
{
public:
    ProgressClock() { m_since.start(); }
    bool strikes();
    /// Minutes and seconds since its beginning.
    QString time() const;

private:
    QElapsedTimer m_since;
    qint64 m_next = -1;
};

/// A work under the hourglass that tells in a line of its screen when it takes long. While one statement of
/// the store runs, the line counts the seconds by itself. It is painted at once; no event is served. What it
/// held comes back at the end, unless somebody has written another text meanwhile.
class ProgressLine
{
public:
    /// `line` may go meanwhile, and none tells nothing. `doing` names the work; without a name the number
    /// stands alone.
    ProgressLine(QLabel *line, QString doing);
    ~ProgressLine();
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;

    /// To be called often, with the number of what is done, or a share of it ("40 %").
    void tell(int done, const QString &unit = {});

private:
    friend class Application;
    static void tellSeconds();
    void show(const QString &howFar);

    const Hourglass m_hourglass;
    const QPointer<QLabel> m_line;
    const QString m_doing;
    ProgressClock m_clock;
    QString m_before;
    QString m_shown; ///< null until it tells
    bool m_counts = false;
    ProgressLine *const m_outer;
};

/// Runs the reading of these rows under a line that tells how many they are by now.
void readUnderLine(QLabel *line, const QString &doing, Recordset &rows, const std::function<void()> &reading);

/// The same as a line for a work that can be stopped, or that has no screen: a small window over the one in
/// use, which alone takes input as long as it stands. Its button and the Escape key stop the work.
class ProgressNotice
{
public:
    /// `stop` is the caption of the button; without one the work can't be stopped.
    ProgressNotice(QString doing, QString stop);
    ~ProgressNotice();
    ProgressNotice(const ProgressNotice &) = delete;
    ProgressNotice &operator=(const ProgressNotice &) = delete;

    /// To be called often. Serves events while the window stands. False when the user has stopped the work.
    /// @throws ProcessEnding when the process ended meanwhile
    bool goOn(int done, int all);

    /// Shows the window at once, without a bar when it can't be stopped, for a work that can't call goOn().
    /// Serves events, but no keys and clicks. Returns the window's line, which goes with the window.
    QLabel *show();

private:
    const Hourglass m_hourglass;
    const QString m_doing;
    const QString m_stop;
    ProgressClock m_clock;
    std::optional<DialogWait> m_standing; ///< as long as the window does
    QPointer<QDialog> m_window;
    QPointer<QLabel> m_line;
    QPointer<QProgressBar> m_bar;
    bool m_stopped = false;
};
