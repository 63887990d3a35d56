#include "statements/export_rows.h"

#include "platform/runtime/runtime_error.h"
#include "platform/spreadsheet/workbook.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/hourglass.h"
#include "platform/ui/progress.h"
#include "platform/ui/wait.h"
#include "presentation/vocabulary.h"
#include "presentation/work_name.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr qint32 saveRefused = 1004;

void fill(Workbook &workbook, Recordset &rows)
{
    const int fields = rows.fieldCount();
    for (int i = 0; i < fields; ++i)
        workbook.setCell(1, i + 1, rows.field(i).name); // as the store names it, in both languages
    serveEventsButInput();                              // a click waits: it would change the rows
    workbook.setBold(1, 1, fields);
    workbook.copyFromRecordset(2, rows);
}

QString chooseFile(const QString &proposedName)
{
    return askSaveFile({.fileName = proposedName,
                        .filter = u"Excel Files (*.xls)|*.xls|Text (*.txt)|*.txt|All Files (*.*)|*.*"_s,
                        .defaultExtension = u"xls"_s});
}

/// What to tell of an export: the empty text for nothing. `name` becomes what the user picks.
QString exported(Recordset &rows, QString &name, ExportFailure failure)
{
    const Hourglass hourglass;
    bool saving = false;
    try {
        Workbook workbook;
        fill(workbook, rows);
        name = chooseFile(name);
        serveEventsButInput();
        saving = true;
        ProgressNotice notice(workName(Work::Saving), translate(u"Stop"_s));
        workbook.saveAs(name, [&notice](int done, int all) { return notice.goOn(done, all); });
        return u"Export complete..   تم التصدير بنجاح"_s;
    } catch (const RuntimeError &error) {
        if (runtime_errors::isCancelled(error) && !saving)
            return {};
        if (runtime_errors::isCancelled(error) || error.number() == saveRefused ||
            (saving && failure == ExportFailure::Silent))
            return u"Cancelled.. تم الإلغاء"_s;
        return failure == ExportFailure::Told ? error.numberText() + u" -> "_s + error.description()
                                              : QString();
    }
}

} // namespace

QString exportRows(Recordset &rows, const QString &proposedName, ExportFailure failure)
{
    QString name = proposedName;
    const QString text = exported(rows, name, failure);
    if (!text.isEmpty())
        showMessage(text);
    return name;
}
