#include "browser/archiving.h"
#include "browser/frmUniversalGrid.h"
#include "core/engine.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/hourglass.h"
#include "platform/ui/progress.h"
#include "platform/ui/twips.h"
#include "presentation/vocabulary.h"
#include "presentation/work_name.h"
#include "store/archive_tables.h"
#include "store/logical_tables.h"
#include "ui_frmUniversalGrid.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int listHeightWithoutList = 30; // twips

void tell(const QStringList &lines)
{
    showMessage(lines.join(u"\r\n"_s));
}

QString refusal(bool arabic)
{
    return arabic ? u"المعذره ولكنك الصلاحيات المسجله لك تجعلك غير مخول للقيام بهذه العمليه الدقيقه"_s
                  : u"Sorry!  You are not permitted to perform this function."_s;
}

bool hasRows(const QString &table)
{
    const RecordsetPtr count = Recordset::create();
    count->open(u"select count(*) as n from ["_s + table + u']', engine.dbConnection);
    return count->value(0).toInt() > 0;
}

} // namespace

// --- the list

void frmUniversalGrid::fillArchivesList()
{
    FillArchivesList(m_tableName, m_ui->ArchivesList);
    showArchivesList();
}

/// The list is of use only with an archive in it.
void frmUniversalGrid::showArchivesList()
{
    QComboBox &list = *m_ui->ArchivesList;
    const bool on = list.count() > 1;
    list.setEnabled(on);
    list.setVisible(on);
    m_listHeight = on ? twipsFromPixels(list.height()) : listHeightWithoutList;
    placeGrid();
}

/// After a move that failed behind its change of the list.
void frmUniversalGrid::restoreArchivesList()
{
    fillArchivesList();
    for (int i = 0; i < m_ui->ArchivesList->count(); ++i) {
        if (m_ui->ArchivesList->itemText(i).section(u" : "_s, 0, 0) == m_currentTable)
            m_ui->ArchivesList->setCurrentIndex(i);
    }
}

void frmUniversalGrid::ArchivesList_Click()
{
    const QString entry = m_ui->ArchivesList->currentText();
    if (!askYesNo(
            u"Are you sure you want to load this archive?  هل أنت متأكد بأنك تريد مراجعة هذا الإرشيف؟"_s))
        return; // the list shows the entry all the same: that is meant
    bool listed = false;
    for (int i = 0; i < m_ui->ArchivesList->count(); ++i)
        listed = listed || entry.contains(m_ui->ArchivesList->itemText(i));
    if (!listed)
        return tell(
            {u"You are not supposed to change the archive name, just make a selection from the damn list!!"_s,
             u"لا تقم بتغيير إسم الإرشيف!!  فقط قم بإختيار المطلوب من القائمه"_s});
    try {
        const QString table = archiveTableOf(entry);
        if (table != m_currentTable) // by the table that a browser was opened on last: that is meant
            showTable(table, getstrsql(engine.browseTable, table), translate(m_tableName) + u' ' + entry);
    } catch (const RuntimeError &failure) {
        showMessage(failure.description());
    }
}

/// False when the screen was closed meanwhile, or the rows have changed once more.
bool frmUniversalGrid::showTable(const QString &table, const QString &statement, const QString &caption)
{
    const Hourglass hourglass;
    const RecordsetPtr rows = openRows(statement);
    m_currentTable = table;
    setRange({}, {});
    m_prevRow = m_prevCol = 0;
    m_cellPicked = false;
    if (m_primary->isOpen())
        m_primary->close();
    setCaption(caption);
    bind(rows);
    return showRows();
}

bool frmUniversalGrid::showBaseTable()
{
    m_ui->ArchivesList->setCurrentIndex(m_ui->ArchivesList->findText(m_tableName));
    return showTable(m_tableName, getstrsql(m_tableName, m_tableName), translate(m_tableName));
}

// --- moving rows

bool frmUniversalGrid::isBelowTopRank()
{
    // Nobody is refused as long as the highest rank is not known: that is meant.
    return engine.userRank && engine.topUserRank && *engine.userRank < *engine.topUserRank;
}

void frmUniversalGrid::mnuArchive_Click()
{
    if (isBelowTopRank())
        return showMessage(refusal(engine.isArabic));
    const QString from = m_ui->DateFromx->text();
    const QString to = m_ui->DateTox->text();
    if (!isDate(from) || !isDate(to) || !m_dateRangeOn) {
        tell({u"You have to select a date range before you can start archiving"_s,
              u"يجب عليك تحديد تواريخ قبل القيام بهذه العمليه وعليك تجنبها أصلاً"_s});
        return m_ui->btnDateSelect->setFocus();
    }
    if (m_primary->recordCount() < 1)
        return tell({u"There is nothing to Archive! Please go back to main table"_s,
                     u"لا يوجد ما يمكنك أرشفته!  فضلاً قم بإختيار الملف الأساسي"_s});
    if (!askYesNo(u"Are you sure you want to do it?  هل أنت متأكد من أنك تريد إتمام الإختزال؟"_s))
        return;
    tell(
        {u"This may take some time..  Please be patient.."_s,
         u"تحذير .. هذه العمليه دقيقه جداًوضروريه فقط عندما يكون فتح الصفحه بطيء جداً"_s,
         u"وتعتمد على القيام بإختزال السجل إلى العمليات الحديثه فقط ونقل القديمه إلى ملفات آخرى حسب التواريخ اللتي تحددها"_s});
    if (!askYesNo(u"Are you sure you want to do it?  هل أنت متأكد من أنك لا تزال تريد إتمام الإختزال؟"_s))
        return;

    const ProgressLine waiting(m_ui->Label1, workName(Work::Waiting));
    const bool archived =
        archiveRange(m_tableName, from, to, [this](const QString &archive, const QString &interval) {
            m_ui->ArchivesList->addItem(archive + u" : "_s + interval);
            showArchivesList();
        });
    if (!archived)
        restoreArchivesList();
    else if (showBaseTable())
        showMessage(u"Archiving Finished sucessfully..  تمت عملية الأرشفه بنجاح"_s);
}

void frmUniversalGrid::mnuDeArchive_Click()
{
    if (isBelowTopRank())
        return tell({refusal(false), refusal(true)});
    if (m_currentTable == m_tableName || m_currentTable.isEmpty())
        return tell({u"You have to know the details before you can start dearchiving"_s,
                     u"يجب عليك معرفة التفاصيل لهذه الخطوه قبل القيام بها وعليك تفاديها أصلاً"_s});
    if (!hasRows(m_currentTable)) { // in the store: a filter or a range only hides them
        tell({u"There is nothing to DeArchive! Please go back to the tables list"_s,
              u"لا يوجد ما يمكنك دمجه!  فضلاً قم بإختيار الملف المطلوب"_s});
        removeListEntry();
        return removeEmptyArchive(m_currentTable);
    }
    if (!askYesNo(u"Are you sure you want to do it?  هل أنت متأكد من أنك تريد دمج هذا الإرشيف؟"_s))
        return;
    tell({u"This may take some time..  Please be patient.."_s, u"تحذير ..  هذه العمليه دقيقه جداً"_s,
          u"وتعتمد على القيام بدمج هذا الإرشيف مع الدفتر الأصلي وعليك الإنتظار حتى تنتهي تماماً"_s});
    if (!askYesNo(
            u"Are you sure you want to do it?  هل أنت متأكد من أنك لا تزال تريد دمج وإستعادة هذا الإرشيف؟"_s))
        return;

    const ProgressLine waiting(m_ui->Label1, workName(Work::Waiting));
    if (mergeArchive(m_tableName, m_currentTable, *m_primary, [this] { removeListEntry(); }))
        showBaseTable();
    else
        restoreArchivesList();
}

/// The current entry, also when that is not of the archive on show after a pick that was refused: that is
/// meant.
void frmUniversalGrid::removeListEntry()
{
    m_ui->ArchivesList->removeItem(m_ui->ArchivesList->currentIndex());
    m_ui->ArchivesList->setCurrentIndex(m_ui->ArchivesList->findText(m_tableName));
    showArchivesList();
}
