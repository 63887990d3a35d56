#pragma once

#include "platform/report/report.h"

/// Shows the report page by page in a window and serves events until it is closed; no other window takes
/// input meanwhile. From there the report is printed and saved as PDF.
/// @throws RuntimeError as ReportPages does, before any window comes
void showReportModal(const Report &report);
