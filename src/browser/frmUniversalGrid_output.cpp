#include "browser/frmUniversalGrid.h"
#include "browser/report_title.h"
#include "core/engine.h"
#include "platform/ui/dialogs.h"
#include "statements/export_rows.h"
#include "statements/report_designs.h"
#include "statements/reports.h"
#include "ui_frmUniversalGrid.h"

using namespace Qt::Literals::StringLiterals;

void frmUniversalGrid::cmdExcell_Click()
{
    if (m_primary->recordCount() < 1)
        return showMessage(u"Sorry! There is none to show.  المعذره ولكن لا يوجد أي معلومات لللتصدير"_s);
    // From the current row on, in the order of reading: that is meant.
    exportRows(*m_primary, m_currentTable + u".xls"_s, ExportFailure::Silent);
}

void frmUniversalGrid::btnPrint_Click()
{
    if (m_primary->recordCount() < 1)
        return showMessage(u"Sorry! There is none to show.  المعذره ولكن لا يوجد أي معلومات للإظهار"_s);
    std::optional<QString> title = reportTitle(m_tableName, m_filters.credit);
    if (!title)
        return showMessage(engine.isArabic ? u"فضلاً قم بتصدير المعلومات إلى اكسل وأطبع من هناك"_s
                                           : u"Please Export to Excel and print from there"_s);
    if (m_dateRangeOn)
        *title += dateRangeLine(m_ui->DateFromx->text(), m_ui->DateTox->text());

    Report report;
    if (m_tableName == u"ledger"_s)
        report = ledgerAllReport();
    else if (m_tableName == u"general"_s)
        report = generalReport();
    else
        return showMessage(engine.isArabic
                               ? u"فضلاً إستخدم تصديرإلى إكسل وقم بالطباعة من هناك"_s
                               : u"Plese consider using Export to Excel and print from there.."_s);
    report.dataSource = m_primary;
    report.caption = *title;
    report.title = *title;
    report.rightToLeft = engine.isArabic;
    ReformatReport(report);
    showReport(std::move(report));
}
