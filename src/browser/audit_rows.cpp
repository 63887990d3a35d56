#include "browser/audit_rows.h"

#include "core/engine.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/runtime_error.h"
#include "store/audit_stamp.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

QString actionWord(const QString &auditAction)
{
    if (auditAction == u"delete")
        return engine.isArabic ? u"حذف"_s : u"Deleted"_s;
    if (auditAction == u"add")
        return engine.isArabic ? u"إضافة"_s : u"Added"_s;
    if (auditAction == u"update")
        return engine.isArabic ? u"تعديل"_s : u"Modified"_s;
    return engine.isArabic ? u"غير معروف"_s : u"Unknown"_s;
}

} // namespace

void WriteAuditRow(const QString &tableName, qint32 transaction, QString &auditAction)
{
    ignoringErrors([&] { // the change itself goes on without its audit row: that is meant
        const RecordsetPtr audit = newAuditRow(tableName);
        const auto source = Recordset::create();
        source->open(u"select * from ["_s + tableName + u"] where transactionid="_s +
                         QString::number(transaction),
                     engine.dbConnection, CursorType::Keyset, LockType::Pessimistic);
        if (source->eof())
            return; // the new audit row is given up without a word: that is meant
        for (int i = 0; i < source->fieldCount(); ++i)
            audit->setValue(source->field(i).name, source->value(i));
        source->setValue(u"lastupdate"_s, generalDate(now()));
        source->update();
        source->close();
        writeAuditRow(*audit, actionWord(auditAction));
        if (!engine.isArabic)
            auditAction.clear(); // not in Arabic: that is meant
    });
}
