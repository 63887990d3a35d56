#include "platform/report/report_output.h"

#include "platform/runtime/new_file.h"
#include "platform/runtime/runtime_error.h"

#include <QtCore/QIODevice>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>
#include <QtPrintSupport/QPrinter>

#include <algorithm>
#include <cerrno>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// Which pages, counted from 0, are put out and in which order.
struct Selection {
    int first = 0;
    int last = 1 << 30; ///< pages behind the end don't count
    bool fromTheEnd = false;
    int copies = 1;
    bool pageByPage = false; ///< all copies of a page together
};

Selection selectionOf(const QPrinter &printer)
{
    Selection selection;
    if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        selection.first = printer.fromPage() - 1;
        selection.last = std::max(printer.fromPage(), printer.toPage()) - 1;
    }
    selection.fromTheEnd = printer.pageOrder() == QPrinter::LastPageFirst;
    if (!printer.supportsMultipleCopies()) {
        selection.copies = std::max(1, printer.copyCount());
        selection.pageByPage = !printer.collateCopies();
    }
    return selection;
}

/// Calls `take` for each page of the selection; false from it stops.
bool forEachPage(ReportPages &pages, const Selection &selection, const std::function<bool(int page)> &take)
{
    const int rounds = selection.pageByPage ? 1 : selection.copies;
    const int times = selection.pageByPage ? selection.copies : 1;
    for (int round = 0; round < rounds; ++round) {
        if (selection.fromTheEnd) {
            for (int page = std::min(selection.last, pages.count() - 1); page >= selection.first; --page) {
                for (int i = 0; i < times; ++i) {
                    if (!take(page))
                        return false;
                }
            }
            continue;
        }
        for (int page = selection.first; page <= selection.last && pages.hasPage(page); ++page) {
            for (int i = 0; i < times; ++i) {
                if (!take(page))
                    return false;
            }
        }
    }
    return true;
}

/// Draws the pages on a device in full-page mode. False when the device refuses.
bool drawPages(QPagedPaintDevice &device, ReportPages &pages, const Selection &selection,
               const PageProgress &progress)
{
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    const QRectF sheet(0, 0, device.width(), device.height());
    bool first = true;
    return forEachPage(pages, selection,
                       [&](int page) {
                           if (progress && !progress(page))
                               throw runtime_errors::cancelled();
                           if (!first && !device.newPage())
                               return false;
                           first = false;
                           pages.draw(painter, page, sheet);
                           return true;
                       }) &&
           painter.end();
}

void writePdf(const Report &report, const QString &path, const QPageLayout &paper, const Selection &selection,
              const PageProgress &progress)
{
    ReportPages pages(report, paper);
    NewFile file(path);
    {
        QPdfWriter writer(&file.device());
        QPageLayout whole = paper;
        whole.setMode(QPageLayout::FullPageMode);
        writer.setPageLayout(whole);
        writer.setResolution(1440);
        writer.setTitle(QString(report.title).replace(u"\r\n"_s, u" "_s).simplified());
        writer.setCreator(u"Quvana"_s);
        if (!drawPages(writer, pages, selection, progress))
            throw file.failure(EIO);
    }
    file.commit();
}

} // namespace

void saveReportAsPdf(const Report &report, const QString &path, const QPageLayout &paper,
                     const PageProgress &progress)
{
    writePdf(report, path, paper, {}, progress);
}

void printReport(const Report &report, QPrinter &printer, const PageProgress &progress)
{
    const Selection selection = selectionOf(printer);
    if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty()) {
        writePdf(report, printer.outputFileName(), printer.pageLayout(), selection, progress);
        return;
    }
    ReportPages pages(report, printer.pageLayout());
    printer.setFullPage(true);
    printer.setDocName(QString(report.title).replace(u"\r\n"_s, u" "_s).simplified());
    if (!drawPages(printer, pages, selection, progress) || printer.printerState() == QPrinter::Error)
        throw RuntimeError(482, u"report"_s, u"Printer error"_s);
}
