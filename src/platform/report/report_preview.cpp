#include "platform/report/report_preview.h"

void showReportModal(const Report &) {}
