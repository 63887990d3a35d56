#include "core/engine.h"
#include "core/program_place.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/ui/process.h"
#include "platform/ui/screen.h"
#include "platform/ui/wait.h"
#include "shell/main.h"
#include "stress/operations.h"
#include "stress/soak_acts.h"
#include "stress/soak_checks.h"
#include "stress/trials.h"
#include "walkthrough/hand.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>

#include <algorithm>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace
{

// A sanitizer keeps what was freed.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool memoryIsItsOwn = false;
#elif defined(__has_feature)
constexpr bool memoryIsItsOwn = !__has_feature(address_sanitizer);
#else
constexpr bool memoryIsItsOwn = true;
#endif

/// A day of work: the program is started on a store laid out afresh, used, and closed. So the store stays
/// small, and a day can be played again by its seed alone.
constexpr int operationsOfDay = 250;
constexpr int operationsBetweenChecks = 50;
constexpr double barKib = 1.0; // of growth per 1,000 operations
constexpr int enoughFindings = 10;

struct Places {
    QString store;   ///< the folder of the program's files
    QString exports; ///< what the user asks for goes there
    QStringList searched;
};

/// The template with a user who can log in, and two more.
void makeOffice(const QString &templateFolder, const QString &folder)
{
    layOut(templateFolder, folder);
    attachSession(folder);
    for (const QString &statement :
         {u"update users set name='planted user',valid=true,createdby='planted',[language]='english',"
          "fontname='Arial',fontsize='8',fontbold='true',fontcolor='0'"_s,
          u"insert into users (userid,[password],name,rank,valid) values "
          "('planted2','planted secret','planted user',2,true)"_s,
          u"update settings set desceased='planted name'"_s,
          u"insert into audit_members "
          u"(name,sex,title,relation,dob,[group],valid,updatedon,updatedby,updatetype) "
          "values ('planted',1,'planted',2,'01/01/1980',1,true,'15/03/2004','planted','add')"_s,
          u"insert into audit_users (userid,[password],name,rank,valid,updatedon,updatedby,updatetype) "
          "values ('planted','planted','planted',2,true,'15/03/2004','planted','add')"_s})
        engine.dbConnection->execute(statement);
    detachSession();
}

/// Drops what the platform without a display says of windows that it can't raise.
void reportMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
    if (!message.startsWith(u"This plugin does not support"))
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

class Day
{
public:
    Day(const Places &places, std::uint32_t seed, int operations, const QString &onlyAct)
        : m_places(places), m_operations(operations), m_onlyAct(onlyAct),
          m_user(places.exports, seed, [&places] { expectNoPlainText(places.searched, places.exports); })
    {
    }

    /// From the start of the program to its end. True when all went well.
    bool play()
    {
        setClock([] { return makeDate(2004, 3, 15, 10, 20, 30); });
        m_before = readSoakStore(m_places.store + u"/quvana.mdb"_s);
        m_user.onModal("frmLogin", [](Screen &login) {
            hand::fill(login, "txtUsername", u"planted"_s);
            hand::fill(login, "txtPassword", u"planted secret"_s);
            hand::click(login, "cmdOK");
        });
        engine = {};
        resetProcess();
        QTimer::singleShot(1, qApp, [this] { goOn(); });
        runProcess(Main);
        if (m_user.failure.isEmpty() && (m_done < m_operations || processExitCode() != 0))
            m_user.failure = u"the program ended by itself; told: "_s + m_user.told();
        resetProcess();
        letGo();
        return m_user.failure.isEmpty();
    }

    int done() const { return m_done; }
    const char *act() const { return m_act; }
    const QString &failure() const { return m_user.failure; }

private:
    /// One operation each time that the main screen stands alone.
    void goOn()
    {
        m_user.guarded([this] {
            Screen *mainScreen = engine.mainScreen;
            if (!mainScreen || QApplication::activeModalWidget()) // not logged in yet
                return QTimer::singleShot(1, qApp, [this] { goOn(); });
            if (m_done == m_operations) {
                check();
                return hand::click(*mainScreen, "Command4");
            }
            m_user.forget();
            const SoakAct &act = someAct();
            m_act = act.name;
            act.run(*mainScreen, m_user, m_books);
            serveEvents();
            m_user.expectAllWell();
            if (Screen::loadedScreens().size() != 1)
                throw std::runtime_error("a screen was left open");
            if (QGuiApplication::overrideCursor())
                throw std::runtime_error("the hourglass was left");
            if (++m_done % operationsBetweenChecks == 0)
                check();
            QTimer::singleShot(1, qApp, [this] { goOn(); });
        });
    }

    const SoakAct &someAct()
    {
        const auto weightOf = [this](const SoakAct &act) {
            return m_onlyAct.isEmpty() || m_onlyAct == QLatin1StringView(act.name) ? act.weight : 0;
        };
        int all = 0;
        for (const SoakAct &act : soakActs())
            all += weightOf(act);
        if (all == 0)
            throw std::runtime_error("no operation of this name");
        int place = m_user.pick(all);
        const auto act = std::find_if(soakActs().begin(), soakActs().end(),
                                      [&](const SoakAct &one) { return (place -= weightOf(one)) < 0; });
        return *act;
    }

    void check()
    {
        const SoakStore now = readSoakStore(m_places.store + u"/quvana.mdb"_s);
        if (now.transactions != m_before.transactions + m_books.posted)
            throw std::runtime_error("transactions were lost or doubled");
        if (now.audits != m_before.audits + m_books.audited)
            throw std::runtime_error("audit rows were lost or doubled");
        expectNoPlainText(m_places.searched, m_places.exports);
    }

    /// What a real process would take with it.
    static void letGo()
    {
        QCoreApplication::sendPostedEvents();
        for (Screen *screen : Screen::loadedScreens()) {
            if (screen->deletesItself())
                delete screen;
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        while (QGuiApplication::overrideCursor())
            QGuiApplication::restoreOverrideCursor();
        const QString password = engine.storePassword; // for looks at the store
        engine = {};
        engine.storePassword = password;
    }

    const Places &m_places;
    int m_operations;
    QString m_onlyAct;
    SoakUser m_user;
    SoakBooks m_books;
    SoakStore m_before;
    int m_done = 0;
    const char *m_act = "start";
};

void judge(Findings &findings, const QList<SoakSample> &samples)
{
    const QList<SoakSample> warm = samples.mid(samples.size() / 4);
    if (warm.size() < 2)
        return;
    const double resident = growth(warm, &SoakSample::residentKib);
    const double anonymous = growth(warm, &SoakSample::anonymousKib);
    const double heap = growth(warm, &SoakSample::heapKib);
    const auto [fewest, most] =
        std::minmax_element(warm.begin(), warm.end(), [](const SoakSample &a, const SoakSample &b) {
            return a.openFiles < b.openFiles;
        });
    std::printf(
        "behind a warm-up of %d operations: resident memory %+.2f KiB (anonymous %+.2f) and heap %+.2f "
        "KiB per 1,000 operations; %d to %d open files\n",
        warm.front().operation, resident, anonymous, heap, fewest->openFiles, most->openFiles);
    if (memoryIsItsOwn && resident >= barKib && warm.size() > 20)
        findings.finding(u"memory grows"_s);
    if (most->openFiles > warm.front().openFiles)
        findings.finding(u"open files grow"_s);
    if (warm.back().widgets > warm.front().widgets)
        findings.finding(u"%1 widgets became %2"_s.arg(warm.front().widgets).arg(warm.back().widgets));
}

} // namespace

Findings soakScreens(const QString &templateFolder, int operations, std::uint32_t seed,
                     const QString &onlyAct)
{
    const QTemporaryDir folder;
    const QString office = folder.filePath(u"office"_s);
    makeOffice(templateFolder, office);
    Places places;
    places.store = folder.filePath(u"store"_s);
    places.exports = places.store + u"/exports"_s;
    places.searched = {QDir::tempPath(), QDir::homePath()}; // the store lies in the first
    setProgramPlace(places.store, u"quvana"_s, places.store + u"/quvana.ini"_s);

    Findings findings;
    QList<SoakSample> samples;
    QStringList files;
    QElapsedTimer timer;
    timer.start();
    const QtMessageHandler before = qInstallMessageHandler(reportMessage);
    for (int done = 0, day = 0; done < operations && findings.bad < enoughFindings; ++day) {
        const int count = std::min(operationsOfDay, operations - done);
        const std::uint32_t daySeed = seed + std::uint32_t(day);
        layOut(office, places.store);
        QDir().mkpath(places.exports);
        {
            Day today(places, daySeed, count, onlyAct);
            if (!today.play())
                findings.finding(u"--seed %1, operation %2 (%3): %4"_s.arg(daySeed)
                                     .arg(today.done() + 1)
                                     .arg(QLatin1StringView(today.act()), today.failure()));
            findings.replays += today.done();
        }
        const QStringList left = filesIn(places.searched, places.exports);
        if (files.isEmpty())
            files = left;
        for (const QString &path : left) {
            if (!files.contains(path) && !path.endsWith(u"/testdb.mdb"))
                findings.finding(u"--seed %1 left %2"_s.arg(daySeed).arg(path));
        }
        done += count;
        samples << sampleProcess(done);
        const SoakSample &last = samples.last();
        if (day % 4 == 0 || done >= operations)
            std::printf("%6d operations, %5lld s: resident %.0f KiB (anonymous %.0f), heap %.0f KiB, %d open "
                        "files, %d "
                        "widgets\n",
                        done, timer.elapsed() / 1000, last.residentKib, last.anonymousKib, last.heapKib,
                        last.openFiles, last.widgets);
        std::fflush(stdout);
    }
    qInstallMessageHandler(before);
    judge(findings, samples);
    setProgramPlace({}, {}, {});
    findings.print("soak");
    return findings;
}
