#pragma once

#include "platform/report/report.h"

/// Gives a statement's report the session's language, font and display of values: margins of 300 twips, the
/// session's font and colour on every control, translated labels, dates and Booleans by the types of the
/// fields of `rows`. Errors are ignored control by control.
void ReformatStatementReport(Report &report, const Recordset &rows);

/// The same for the reports of the browser, with its own words for Booleans; the report's own rows tell the
/// fields' types.
void ReformatReport(Report &report);

/// Shows a report modally with the preview's words in the session's language.
/// @throws RuntimeError as showReportModal()
void showReport(Report report);
