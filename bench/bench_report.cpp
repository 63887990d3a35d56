// The report engine on a member's detailed statement in Arabic. The yardstick is a bare drawing of the same
// texts at the same places: QPainter::drawText on a QPdfWriter, with every text at hand beforehand.
//
//   bench_report   medians of the process's own computing in milliseconds, on 1000, 10000 and 100000 rows
//
// A ratio above its limit has a `!`.

#include "bare_store.h"
#include "core/engine.h"
#include "figures.h"
#include "ledger_rows.h"
#include "place.h"
#include "platform/report/preview_window.h"
#include "platform/ui/application.h"
#include "platform/ui/data_format.h"
#include "platform/ui/fonts.h"
#include "platform/ui/process.h"
#include "statements/report_designs.h"
#include "statements/reports.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>
#include <QtWidgets/QAbstractScrollArea>

#include <cstdio>
#include <map>

using namespace Qt::Literals::StringLiterals;

namespace
{

Report statementOf(const QString &folder, int rows)
{
    const Place place(folder, u"ledger_%1"_s.arg(rows), ledgerMembers());
    engine.isArabic = true;
    engine.userFontName = u"Arial"_s;
    engine.userFontSize = 8;
    engine.userFontBold = true;
    BareStore store(engine.storeFilePath, benchPassword.toUtf8());
    writeLedgerRows(store, rows);

    const RecordsetPtr set = Recordset::create();
    set->open(u"select id,transactionid,ddate,iif(creditordebit=true,amount,-1*amount) as amount,"
              "transactiondetail,creditordebit,"
              "(select detailar from details where gtype=details.id) as gtype,paymentmethod "
              "from ledger order by ddate"_s,
              engine.connectionString, CursorType::Static);
    Report report = ledgerReport();
    report.dataSource = set;
    report.rightToLeft = true;
    report.title = u"العوائد و المصروفات أحمد\r\n من 01/01/2004 إلى 31/12/2004"_s;
    ReformatStatementReport(report, *set);
    return report;
}

/// The texts of a report's columns, drawn by nothing but the toolkit.
class BareDrawing
{
public:
    explicit BareDrawing(const Report &report)
    {
        for (const ReportSection &section : report.sections) {
            if (section.kind == ReportSection::Kind::Detail) {
                m_columns = section.controls;
                m_height = section.height;
            }
        }
        const auto rows = report.dataSource->rowsShown();
        for (int row = 0; row < rows->count(); ++row) {
            for (const ReportControl &column : m_columns) {
                const int field = report.dataSource->fieldIndex(column.dataField);
                m_texts << formatted(rows->value(row, field), column.dataFormat);
            }
        }
        m_font = readableFont(report.fontName, report.fontSize, report.fontBold);
        m_font.setPixelSize(report.fontSize * 20);
        m_pages = ReportPages(report, reportPaper()).count();
    }

    void draw(const QString &path) const
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("no file");
        QPdfWriter writer(&file);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setResolution(1440);
        QPainter painter(&writer);
        painter.setFont(m_font);
        painter.setLayoutDirection(Qt::RightToLeft);
        const qsizetype rows = m_texts.size() / qsizetype(m_columns.size());
        const qsizetype rowsOnPage = (rows + m_pages - 1) / m_pages;
        qsizetype text = 0;
        for (qsizetype row = 0; row < rows; ++row) {
            if (row > 0 && row % rowsOnPage == 0)
                writer.newPage();
            for (const ReportControl &column : m_columns) {
                const QRect place = column.place.translated(0, int(row % rowsOnPage) * m_height);
                painter.drawText(place, Qt::AlignRight | Qt::TextSingleLine, m_texts[text++]);
            }
        }
    }

private:
    std::vector<ReportControl> m_columns;
    int m_height = 0;
    int m_pages = 1;
    QStringList m_texts;
    QFont m_font;
};

/// Notices when a widget was painted.
class Painted : public QObject
{
public:
    explicit Painted(QWidget &widget) { widget.installEventFilter(this); }
    bool is = false;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        is = is || event->type() == QEvent::Paint;
        return false;
    }
};

/// The preview from its making until its first page stands on the screen.
void showFirstPage(const Report &report)
{
    PreviewWindow preview(report);
    Painted page(*preview.findChild<QAbstractScrollArea *>(u"page"_s)->viewport());
    preview.showModeless();
    while (!page.is)
        QCoreApplication::processEvents();
}

void tell(const char *what, double time, double ratio = 0, double limit = 0)
{
    std::printf("%-44s %9.1f", what, time);
    if (limit > 0)
        std::printf("  %6.3f  limit %.2f%s", ratio, limit, ratio > limit ? " !" : "");
    std::printf("\n");
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    setEndsWithLastScreen(false);
    const SilentDialogs dialogs;
    const QTemporaryDir folder;
    const QString pdf = folder.filePath(u"report.pdf"_s);

    std::map<int, Report> reports;
    for (const int rows : {1'000, 10'000, 100'000})
        reports[rows] = statementOf(folder.path(), rows);
    const Report &report = reports[10'000];
    const BareDrawing bare(report);

    std::vector<double> bareTimes;
    std::vector<double> pdfTimes;
    std::map<int, std::vector<double>> previewTimes;
    for (int i = -1; i < 9; ++i) { // the first one warms the caches
        const double bareTime = computingOf([&] { bare.draw(pdf); });
        const double pdfTime = computingOf([&] { saveReportAsPdf(report, pdf); });
        if (i >= 0) {
            bareTimes.push_back(bareTime);
            pdfTimes.push_back(pdfTime);
        }
        for (const int rows : {1'000, 100'000}) {
            const double time = computingOf([&] { showFirstPage(reports[rows]); });
            if (i >= 0)
                previewTimes[rows].push_back(time);
        }
    }
    const double yardstick = median(bareTimes);
    const double whole = median(pdfTimes);
    const double small = median(previewTimes[1'000]);
    const double large = median(previewTimes[100'000]);
    tell("bare drawing of 10,000 rows", yardstick);
    tell("PDF of 10,000 rows, by the bare drawing", whole, whole / yardstick, 1.3);
    tell("first page of 1,000 rows, by the PDF", small, small / whole, 0.05);
    tell("first page of 100,000 rows, by that of 1,000", large, large / small, 1.1);
    return 0;
}
