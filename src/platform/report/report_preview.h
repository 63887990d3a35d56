#pragma once

#include "platform/report/report.h"

/// Shows the report page by page in a window and serves events until it is closed; no other window takes
/// input meanwhile. From there the report is printed and saved as PDF.
/// @throws RuntimeError 8526 when a text box or function has a field that the rows have not: no window comes
/// then. 3704 for a set that is not open.
void showReportModal(const Report &report);
