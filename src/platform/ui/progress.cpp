#include "platform/ui/progress.h"

#include "platform/database/recordset.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/qt_dialogs.h"
#include "platform/ui/wait.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QScopeGuard>
#include <QtGui/QWindow>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int stride = 100;         // ms between two tellings
constexpr int latestExposure = 500; // ms until a new window is painted
int patience = 2000;                // ms
ProgressLine *innermost = nullptr;

/// The window of a notice. What can't be stopped keeps it open.
class NoticeWindow : public QDialog
{
public:
    NoticeWindow(bool stops, QWidget *owner) : QDialog(owner), m_stops(stops) {}
    void reject() override
    {
        if (m_stops)
            QDialog::reject();
    }

private:
    const bool m_stops;
};

} // namespace

void setProgressPatience(int milliseconds)
{
    patience = milliseconds;
}

bool ProgressClock::strikes()
{
    const qint64 now = m_since.elapsed();
    if (now < std::max<qint64>(patience, m_next))
        return false;
    m_next = now + std::min(stride, patience);
    return true;
}

QString ProgressClock::time() const
{
    const qint64 seconds = m_since.elapsed() / 1000;
    return u"%1:%2"_s.arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'));
}

// --- a line of a screen

ProgressLine::ProgressLine(QLabel *line, QString doing)
    : m_line(line), m_doing(std::move(doing)), m_outer(std::exchange(innermost, this))
{
}

ProgressLine::~ProgressLine()
{
    innermost = m_outer;
    if (m_line && !m_shown.isNull() && m_line->text() == m_shown)
        m_line->setText(m_before);
}

void ProgressLine::tell(int done, const QString &unit)
{
    m_counts = true;
    if (m_clock.strikes())
        show(QString::number(done) + unit);
}

void ProgressLine::tellSeconds()
{
    if (innermost && !innermost->m_counts && innermost->m_clock.strikes())
        innermost->show(innermost->m_clock.time());
}

void ProgressLine::show(const QString &howFar)
{
    if (!m_line)
        return;
    if (m_shown.isNull())
        m_before = m_line->text();
    m_shown = m_doing.isEmpty() ? howFar : m_doing + u" : "_s + howFar;
    m_line->setText(m_shown);
    m_line->repaint();
}

void readUnderLine(QLabel *line, const QString &doing, Recordset &rows, const std::function<void()> &reading)
{
    ProgressLine progress(line, doing);
    rows.setReadProgress([&progress](int read) { progress.tell(read); });
    const auto forget = qScopeGuard([&rows] { rows.setReadProgress({}); });
    reading();
}

// --- a window

ProgressNotice::ProgressNotice(QString doing, QString stop)
    : m_doing(std::move(doing)), m_stop(std::move(stop))
{
}

ProgressNotice::~ProgressNotice()
{
    delete m_window.data();
}

QLabel *ProgressNotice::show()
{
    constexpr int width = 320;
    m_standing.emplace();
    m_window = new NoticeWindow(!m_stop.isEmpty(), windowInUse());
    m_window->setWindowTitle(programTitle());
    m_window->setWindowModality(Qt::ApplicationModal);
    auto *layout = new QVBoxLayout(m_window);
    m_line = new QLabel(m_doing);
    m_line->setMinimumWidth(width);
    layout->addWidget(m_line);
    m_bar = new QProgressBar;
    m_bar->setAccessibleName(m_doing);
    m_bar->setRange(0, 100);
    m_bar->setTextVisible(false); // the style leaves it out where a bar runs from right to left
    layout->addWidget(m_bar);
    if (m_stop.isEmpty()) {
        m_bar->hide();
    } else {
        auto *button = new QPushButton(m_stop);
        button->setObjectName(u"cmdStop"_s);
        QObject::connect(button, &QPushButton::clicked, m_window.data(), &QDialog::reject);
        layout->addWidget(button, 0, Qt::AlignCenter);
    }
    m_window->show();
    m_window->activateWindow();
    const QDeadlineTimer late(latestExposure);
    do {
        serveEventsButInput();
    } while (m_window && !m_window->windowHandle()->isExposed() && !late.hasExpired());
    return m_line;
}

bool ProgressNotice::goOn(int done, int all)
{
    if (!m_stopped && m_clock.strikes()) {
        if (!m_bar)
            show();
        const int percent = int(100.0 * done / std::max(all, 1));
        m_line->setText(m_doing + u" : "_s + QString::number(percent) + u" %"_s);
        m_bar->setValue(percent);
        serveEvents();
        m_stopped = !m_window || m_window->isHidden();
    }
    return !m_stopped;
}
