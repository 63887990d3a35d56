// Workbooks of nine columns of the ledger, beside the library for .xlsx, bare and in its mode of constant
// memory, which writes the same cells out of plain arrays and leaves the file to the system's cache.
//
//   bench_workbook [ROWS...]   65535 by default
//   bench_workbook --memory    what saving adds to the memory of a process, for 65,535 and 1,000,000 rows
//
// Times are medians of nine rounds by turns: by the wall clock, and of the process's own computing. A
// multiple above its limit has a `!`.

#include "bare_store.h"
#include "core/engine.h"
#include "figures.h"
#include "ledger_rows.h"
#include "place.h"
#include "platform/runtime/dates.h"
#include "platform/spreadsheet/workbook.h"
#include "platform/ui/application.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <sys/wait.h>

#include <cstdio>
#include <functional>
#include <malloc.h>
#include <unistd.h>
#include <xlsxwriter.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// Nine columns of so many ledger rows.
struct Ledger {
    QTemporaryDir folder;
    Place place{folder.path(), u"ledger"_s, ledgerMembers()};
    RecordsetPtr rows = Recordset::create();

    explicit Ledger(int count)
    {
        BareStore bare(engine.storeFilePath, benchPassword.toUtf8());
        writeLedgerRows(bare, count);
        rows->open(u"select id,name,transactionid,creditordebit,amount,ddate,transactiondetail,"
                   u"paymentmethod,valid from ledger order by id"_s,
                   engine.dbConnection, CursorType::Static);
    }
    QString path(const QString &form) const { return folder.filePath(u"book."_s + form); }
};

void save(const Ledger &ledger, const QString &form)
{
    Workbook book;
    for (int field = 0; field < ledger.rows->fieldCount(); ++field)
        book.setCell(1, field + 1, ledger.rows->field(field).name);
    book.setBold(1, 1, ledger.rows->fieldCount());
    ledger.rows->moveFirst();
    book.copyFromRecordset(2, *ledger.rows);
    book.saveAs(ledger.path(form));
}

/// The same cells, ready for the bare library.
class BareBook
{
public:
    explicit BareBook(const Ledger &ledger)
        : m_path(QFile::encodeName(ledger.path(u"bare.xlsx"_s))), m_columns(ledger.rows->fieldCount())
    {
        for (int field = 0; field < m_columns; ++field)
            m_names.push_back(ledger.rows->field(field).name.toStdString());
        for (int row = 0; row < ledger.rows->rowCount(); ++row) {
            for (int field = 0; field < m_columns; ++field)
                m_cells.push_back(cell(ledger.rows->valueAt(row, field)));
        }
    }
    void save() const
    {
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        lxw_workbook *book = workbook_new_opt(m_path.constData(), &options);
        lxw_worksheet *sheet = workbook_add_worksheet(book, nullptr);
        lxw_format *bold = workbook_add_format(book);
        format_set_bold(bold);
        lxw_format *formats[2] = {workbook_add_format(book), workbook_add_format(book)};
        format_set_num_format(formats[0], "dd/mm/yyyy");
        format_set_num_format(formats[1], "#,##0.00##");
        for (int column = 0; column < m_columns; ++column)
            worksheet_write_string(sheet, 0, lxw_col_t(column), m_names[std::size_t(column)].c_str(), bold);
        for (std::size_t i = 0; i < m_cells.size(); ++i) {
            const auto row = lxw_row_t(i / std::size_t(m_columns) + 1);
            const auto column = lxw_col_t(i % std::size_t(m_columns));
            const Cell &c = m_cells[i];
            if (c.kind == Value::Kind::Text)
                worksheet_write_string(sheet, row, column, c.text.c_str(), nullptr);
            else if (c.kind == Value::Kind::Boolean)
                worksheet_write_boolean(sheet, row, column, c.number != 0, nullptr);
            else if (c.kind == Value::Kind::Date || c.kind == Value::Kind::Money)
                worksheet_write_number(sheet, row, column, c.number,
                                       formats[c.kind == Value::Kind::Money ? 1 : 0]);
            else
                worksheet_write_number(sheet, row, column, c.number, nullptr);
        }
        if (workbook_close(book) != LXW_NO_ERROR)
            qFatal("the bare library failed");
    }

private:
    struct Cell {
        Value::Kind kind;
        double number = 0;
        std::string text;
    };
    static Cell cell(const Value &value)
    {
        if (value.kind() == Value::Kind::Text)
            return {value.kind(), 0, value.toText().toStdString()};
        if (value.kind() == Value::Kind::Date)
            return {value.kind(), dateSerial(value.toDate()), {}};
        return {value.kind(), value.toDouble(), {}};
    }

    QByteArray m_path;
    int m_columns;
    std::vector<std::string> m_names;
    std::vector<Cell> m_cells;
};

struct Times {
    std::vector<double> wall;
    std::vector<double> computing;
};

void measure(Times &times, const std::function<void()> &work)
{
    QElapsedTimer wall;
    wall.start();
    times.computing.push_back(computingOf(work));
    times.wall.push_back(double(wall.nsecsElapsed()) / 1e6);
}

void tell(const char *name, const Times &times, const Times &bare, double limit)
{
    const auto multiple = [&](const std::vector<double> &mine, const std::vector<double> &other) {
        const double factor = median(mine) / median(other);
        std::printf("  %8.0f ms  %5.2f%s", median(mine), factor, factor > limit ? "!" : " ");
    };
    std::printf("%-22s", name);
    multiple(times.wall, bare.wall);
    multiple(times.computing, bare.computing);
    std::printf("  (at most %.1f)\n", limit);
}

void measureTimes(int rows)
{
    constexpr int rounds = 9;
    const Ledger ledger(rows);
    const BareBook bare(ledger);
    Times xls;
    Times xlsx;
    Times text;
    Times library;
    for (int round = 0; round < rounds; ++round) {
        measure(xls, [&] { save(ledger, u"xls"_s); });
        measure(library, [&] { bare.save(); });
        measure(xlsx, [&] { save(ledger, u"xlsx"_s); });
        measure(text, [&] { save(ledger, u"txt"_s); });
    }
    std::printf("%d rows: wall, its multiple, computing, its multiple\n", rows);
    tell("the bare library", library, library, 1);
    tell(".xls", xls, library, 1);
    tell(".xlsx", xlsx, library, 1.2);
    tell(".txt", text, library, 1);
}

void measureMemory(int rows)
{
    const Ledger ledger(rows);
    for (const QString &form : {u"xls"_s, u"xlsx"_s, u"txt"_s}) {
        std::fflush(stdout);
        const pid_t child = fork();
        if (child == 0) {
            malloc_trim(0); // what making the rows has left
            QFile peak(u"/proc/self/clear_refs"_s);
            if (!peak.open(QFile::WriteOnly) || peak.write("5") != 1 || !peak.flush())
                qFatal("the peak can't be reset");
            const long before = memoryOf("VmRSS");
            save(ledger, form);
            std::printf("%8d rows  .%-5s %8.1f MB more at the peak\n", rows, qPrintable(form),
                        double(memoryOf("VmHWM") - before) / 1024);
            std::fflush(stdout);
            _exit(0);
        }
        waitpid(child, nullptr, 0);
    }
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    const SilentDialogs dialogs;
    const QStringList arguments = QCoreApplication::arguments().sliced(1);
    if (arguments == QStringList(u"--memory"_s)) {
        for (const int rows : {65'535, 1'000'000})
            measureMemory(rows);
        return 0;
    }
    for (const QString &rows : arguments.isEmpty() ? QStringList(u"65535"_s) : arguments)
        measureTimes(rows.toInt());
    return 0;
}
