// The ledger browser on generated ledgers. R is the time of reading the rows of the same statement as text by
// the bare C API, in the same run and by turns with the rest, both with what their caches hold of the file.
//
//   bench_browser [--stores FOLDER] [ROWS...]   the times; 10000, 100000 and 1000000 rows by default
//   bench_browser [--stores FOLDER] --memory ROWS   the memory of a process that has opened one browser
//
// Generated stores are kept in FOLDER, if it is given, and used again. Times are medians: by the wall clock,
// and of the process's own computing, which the multiples of R are of. A multiple above its limit has a `!`.

#include "bare_store.h"
#include "browser/frmUniversalGrid.h"
#include "core/engine.h"
#include "figures.h"
#include "ledger_rows.h"
#include "place.h"
#include "platform/ui/application.h"
#include "platform/ui/flex_grid.h"
#include "platform/ui/process.h"
#include "store/logical_tables.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtGui/QAction>
#include <QtWidgets/QScrollBar>
#include <sqlcipher/sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <map>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// A stretch of time in milliseconds.
struct Span {
    double wall = 0;
    double computing = 0;
};

class Stopwatch
{
public:
    Stopwatch() { m_wall.start(); }
    Span elapsed() const
    {
        return {double(m_wall.nsecsElapsed()) / 1e6, double(std::clock() - m_start) * 1000 / CLOCKS_PER_SEC};
    }

private:
    QElapsedTimer m_wall;
    std::clock_t m_start = std::clock();
};

/// The session on a store with so many rows in its ledger, which are generated when they are not there.
class Ledger
{
public:
    Ledger(const QString &folder, int rows)
        : m_rows(rows), m_place(folder, u"ledger_%1"_s.arg(rows), ledgerMembers()),
          m_bare(engine.storeFilePath, benchPassword.toUtf8())
    {
        engine.isArabic = true;
        engine.languageSuffix = u"ar"_s;
        engine.browseTable = u"ledger"_s;
        if (countOf(u"ledger"_s) != rows)
            writeLedgerRows(m_bare, rows);
    }

    int rows() const { return m_rows; }

    /// Reads every column of every row of the browser's statement as text.
    void readBare()
    {
        sqlite3_stmt *statement = m_bare.prepared(m_statement);
        const int columns = sqlite3_column_count(statement);
        int rows = 0;
        for (; sqlite3_step(statement) == SQLITE_ROW; ++rows) {
            for (int column = 0; column < columns; ++column)
                sqlite3_column_text(statement, column);
        }
        sqlite3_reset(statement);
        if (rows != m_rows)
            qFatal("%d rows were read", rows);
    }

private:
    int m_rows;
    Place m_place;
    BareStore m_bare;
    const std::string m_statement = getstrsql(u"ledger"_s, u"ledger"_s).toStdString();
};

/// The browser under measurement.
class Browser : public QObject
{
public:
    /// Opens it until it is fully formatted.
    void open()
    {
        m_screen.emplace();
        grid().viewport()->installEventFilter(this);
        m_firstRows.reset();
        m_opening = Stopwatch();
        m_screen->load();
    }
    void close()
    {
        m_screen->unload();
        m_screen.reset();
    }
    /// From the beginning of open() until rows stood on the screen.
    Span firstRows() const { return m_firstRows.value(); }

    void choose(const char *item) { action(item).trigger(); }
    void sortBy(const QString &field) { Q_EMIT grid().headingDoubleClicked(grid().columnOf(field)); }
    void scrollTo(int row) { grid().setTopRow(row); }
    int rows() const { return grid().rows() - grid().fixedRows(); }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && rows() > 1 && !m_firstRows)
            m_firstRows = m_opening.elapsed();
        return false;
    }

private:
    FlexGrid &grid() const { return *m_screen->findChild<FlexGrid *>(u"FGrid"_s); }
    QAction &action(const char *name) const
    {
        return *m_screen->findChild<QAction *>(QLatin1StringView(name));
    }

    std::optional<frmUniversalGrid> m_screen;
    Stopwatch m_opening;
    std::optional<Span> m_firstRows;
};

struct Workload {
    const char *name;
    std::function<std::optional<Span>()> run; ///< a time of its own in place of that of the whole
    std::map<int, double> limits = {};        ///< in R, by the rows of the ledger
    std::vector<Span> times = {};

    double median(double Span::*clock) const
    {
        std::vector<double> spans;
        for (const Span &time : times)
            spans.push_back(time.*clock);
        return ::median(std::move(spans));
    }
};

/// Work that is timed as a whole.
std::function<std::optional<Span>()> whole(std::function<void()> work)
{
    return [work = std::move(work)] {
        work();
        QCoreApplication::processEvents();
        return std::optional<Span>();
    };
}

std::vector<Workload> workloads(Ledger &ledger, Browser &browser)
{
    const auto readRows = [] {
        const RecordsetPtr rows = Recordset::create();
        rows->setCursorLocation(CursorLocation::Client);
        rows->open(getstrsql(u"ledger"_s, u"ledger"_s), engine.dbConnection, CursorType::Static,
                   LockType::Optimistic);
    };
    return {
        {"R: the bare C API", whole([&] { ledger.readBare(); })},
        {"the record set alone", whole(readRows)},
        {"open, fully formatted", whole([&] { browser.open(); }), {{100'000, 1.5}, {1'000'000, 1.5}}},
        {"open, first rows painted", [&] { return browser.firstRows(); }},
        {"filter: invalid", whole([&] { browser.choose("mnuInValid"); }), {{100'000, 1.5}}},
        {"filter: and expenses", whole([&] { browser.choose("mnuExpenses"); }), {{100'000, 1.5}}},
        {"filter: all revenues", whole([&] { browser.choose("mnuBothValid"); }), {{100'000, 1.5}}},
        {"filter: all rows", whole([&] { browser.choose("mnuBothCreditOrDebit"); }), {{100'000, 1.5}}},
        {"sort by amount", whole([&] { browser.sortBy(u"amount"_s); }), {{100'000, 2}}},
        {"sort by amount, back", whole([&] { browser.sortBy(u"amount"_s); }), {{100'000, 2}}},
        {"scroll to the end", whole([&] { browser.scrollTo(browser.rows()); }), {{100'000, 0.2}}},
        {"close", whole([&] { browser.close(); })},
    };
}

std::vector<Workload> measured(Ledger &ledger)
{
    Browser browser;
    std::vector<Workload> loads = workloads(ledger, browser);
    const int repetitions = ledger.rows() > 500'000 ? 5 : 11;
    for (int i = -1; i < repetitions; ++i) { // the first one warms the caches
        for (Workload &load : loads) {
            const Stopwatch watch;
            const std::optional<Span> own = load.run();
            if (i >= 0)
                load.times.push_back(own ? *own : watch.elapsed());
        }
    }
    return loads;
}

void print(int rows, const std::vector<Workload> &loads)
{
    const double r = loads.front().median(&Span::computing);
    std::printf("\n%d rows %30s %12s %8s\n", rows, "wall, ms", "computing, ms", "R");
    for (const Workload &load : loads) {
        const double multiple = load.median(&Span::computing) / r;
        const auto limit = load.limits.find(rows);
        std::printf("%-26s %12.1f %12.1f %8.2f", load.name, load.median(&Span::wall),
                    load.median(&Span::computing), multiple);
        if (limit != load.limits.end())
            std::printf("  limit %.1f%s", limit->second, multiple > limit->second ? " !" : "");
        std::printf("\n");
    }
    std::fflush(stdout);
}

void measureMemory(const QString &folder, int rows)
{
    const Ledger ledger(folder, rows);
    const long empty = memoryOf("VmRSS");
    Browser browser;
    browser.open();
    std::printf("%d rows: %ld MiB above the %ld MiB of the program without a browser, %ld MiB at the peak\n",
                rows, (memoryOf("VmRSS") - empty) / 1024, empty / 1024, (memoryOf("VmHWM") - empty) / 1024);
    browser.close();
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    setEndsWithLastScreen(false);
    const SilentDialogs dialogs;
    const QTemporaryDir temporary;
    QString folder = temporary.path();
    QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.value(0) == u"--stores"_s) {
        folder = arguments.value(1);
        QDir().mkpath(folder);
        arguments = arguments.mid(2);
    }
    if (arguments.value(0) == u"--memory"_s) {
        measureMemory(folder, arguments.value(1).toInt());
        return 0;
    }
    if (arguments.isEmpty())
        arguments = {u"10000"_s, u"100000"_s, u"1000000"_s};
    if (!std::ranges::all_of(arguments, [](const QString &argument) { return argument.toInt() > 0; })) {
        std::fputs("usage: bench_browser [--stores FOLDER] [ROWS... | --memory ROWS]\n", stderr);
        return 2;
    }
    std::vector<Workload> before;
    for (const QString &argument : std::as_const(arguments)) {
        Ledger ledger(folder, argument.toInt());
        const std::vector<Workload> loads = measured(ledger);
        print(ledger.rows(), loads);
        for (std::size_t i = 0; i < before.size(); ++i) {
            std::printf("%-26s %8.1f times that before\n", loads[i].name,
                        loads[i].median(&Span::computing) / before[i].median(&Span::computing));
        }
        before = loads;
    }
    return 0;
}
