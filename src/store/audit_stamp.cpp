#include "store/audit_stamp.h"

#include "core/engine.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"

using namespace Qt::Literals::StringLiterals;

RecordsetPtr newAuditRow(const QString &tableName)
{
    auto audit = Recordset::create();
    audit->open(u"audit_"_s + tableName, engine.dbConnection, CursorType::Keyset, LockType::Optimistic,
                CommandKind::Table);
    audit->addNew();
    return audit;
}

void writeAuditRow(Recordset &audit, const QString &updateType)
{
    audit.setValue(u"updatedby"_s, engine.currentUser);
    audit.setValue(u"updatedon"_s, generalDate(now()));
    audit.setValue(u"updatetype"_s, updateType);
    audit.update();
    audit.close();
}
