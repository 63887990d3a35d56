#include "platform/report/report_preview.h"

#include "platform/report/preview_window.h"

void showReportModal(const Report &report)
{
    PreviewWindow preview(report);
    preview.showModal();
}
