#include "stress/soak_user.h"

#include "platform/ui/process.h"
#include "platform/ui/screen.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QTimer>
#include <QtPrintSupport/QPrinter>

#include <stdexcept>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr qint64 patience = 60'000; // milliseconds, also under sanitizers

qint64 currentTime()
{
    return QDeadlineTimer::current().deadline();
}

} // namespace

SoakUser::SoakUser(const QString &exports, std::uint32_t seed, std::function<void()> look)
    : m_before(installDialogService(this)), m_exports(exports), m_chance(seed), m_look(std::move(look))
{
}

SoakUser::~SoakUser()
{
    installDialogService(m_before);
}

int SoakUser::pick(int count)
{
    return int(m_chance() % unsigned(count));
}

void SoakUser::onModal(const char *screenName, Action action)
{
    m_waits.push_back({screenName, std::move(action), currentTime() + patience});
    QTimer::singleShot(1, qApp, [this] { lookForModal(); });
}

// A timer is not raised again inside of its own event, and an action may serve events of its own: each look
// has a new timer.
void SoakUser::lookForModal()
{
    if (m_waits.empty() || processEnding())
        return;
    guarded([this] {
        auto *modal = qobject_cast<Screen *>(QApplication::activeModalWidget());
        const Wait &wait = m_waits.front();
        if (modal && modal->isVisible() && modal->objectName() == QLatin1StringView(wait.screenName)) {
            const Action action = wait.action;
            m_waits.pop_front();
            action(*modal);
            return;
        }
        if (currentTime() > wait.until)
            throw std::runtime_error(std::string("no modal ") + wait.screenName + " came");
        QTimer::singleShot(1, qApp, [this] { lookForModal(); });
    });
}

void SoakUser::guarded(const std::function<void()> &piece)
{
    runEventRoutine([&] {
        try {
            piece();
        } catch (const std::exception &error) {
            if (failure.isEmpty())
                failure = QString::fromUtf8(error.what());
            endProcess(1);
        }
    });
}

bool SoakUser::wasTold(const QString &beginning) const
{
    for (const QString &text : m_told) {
        if (text.startsWith(beginning))
            return true;
    }
    return false;
}

void SoakUser::expectTold(const QString &beginning) const
{
    if (!wasTold(beginning))
        throw std::runtime_error((u"\"%1\" was not told, but: %2"_s.arg(beginning, told())).toStdString());
}

void SoakUser::expectAllWell() const
{
    for (const char *bad :
         {"Run-time error", "transaction aborted", "Error", "error ", "Archiving was", "DeArchiving was",
          "Cancelled", "db creation", "Failed", "The family members", "You are not supposed", "Invalid"}) {
        if (wasTold(QLatin1StringView(bad)))
            throw std::runtime_error("told: " + told().toStdString());
    }
    if (!m_waits.empty())
        throw std::runtime_error(std::string("no modal ") + m_waits.front().screenName + " came");
}

void SoakUser::forget()
{
    m_told.clear();
    m_waits.clear();
}

MessageAnswer SoakUser::message(const MessageRequest &request)
{
    m_told << request.text;
    if (oneIn(50))
        m_look();
    return request.buttons == MessageButtons::YesNo ? MessageAnswer::Yes : MessageAnswer::Ok;
}

QString SoakUser::input(const QString &, const QString &, const QString &)
{
    return u"planted name %1"_s.arg(pick(100));
}

std::optional<FontChoice> SoakUser::font(const FontChoice &)
{
    return FontChoice{.name = u"Arial"_s, .size = 8 + pick(5), .bold = oneIn(2)};
}

std::optional<QString> SoakUser::saveFile(const SaveFileRequest &request)
{
    const QStringList kinds{u"xls"_s, u"xlsx"_s, u"txt"_s};
    const QString kind = request.defaultExtension == u"pdf" ? u"pdf"_s : kinds[pick(3)];
    m_look();
    return lastFile = m_exports + u"/statement %1."_s.arg(pick(3)) + kind;
}

bool SoakUser::print(QPrinter &printer)
{
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(lastFile = m_exports + u"/printed.pdf"_s);
    return true;
}
