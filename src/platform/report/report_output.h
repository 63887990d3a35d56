#pragma once

#include "platform/report/report_pages.h"

#include <functional>

class QPrinter;

/// Told before each page, with its number from 0; false stops the output, which then ends with RuntimeError
/// 32755. It must not use the pages that are drawn.
using PageProgress = std::function<bool(int page)>;

/// Writes a report to a PDF file with its fonts in it. An existing file is replaced without a question, in
/// one step, when the new one is complete and durable; only its owner can read it.
/// @throws RuntimeError 75 with a clear description when the file can't be written, 32755 when it was
/// stopped, and what ReportPages throws; what stood there stays then
void saveReportAsPdf(const Report &report, const QString &path, const QPageLayout &paper = reportPaper(),
                     const PageProgress &progress = {});

/// Prints a report on the printer's own paper: the pages, copies and order that the printer is set to. One
/// that is set to a PDF file writes it as saveReportAsPdf() does.
/// @throws RuntimeError 482 when the printer refuses, and as saveReportAsPdf()
void printReport(const Report &report, QPrinter &printer, const PageProgress &progress = {});
