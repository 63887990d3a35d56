#include "family/member_records.h"

#include "core/engine.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"
#include "presentation/vocabulary.h"
#include "store/audit_stamp.h"
#include "store/ledger_tables.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

RecordsetPtr openRows(const QString &statement)
{
    auto rows = Recordset::create();
    rows->open(statement, engine.dbConnection, CursorType::Static);
    return rows;
}

QString sexWord(qint32 code)
{
    return code == 1 ? u"Male"_s : code == 2 ? u"Female"_s : u"Other"_s;
}

QString relationWord(qint32 code)
{
    return code == 1 ? u"Wife"_s : code == 2 ? u"Son"_s : code == 3 ? u"Daughter"_s : u"Unknown"_s;
}

/// The table of the codes of a stem: `sexes`, `relations`.
QString codeTable(const QString &stem)
{
    return stem + (stem == u"sex" ? u"es"_s : u"s"_s);
}

} // namespace

QStringList codeNames(const QString &stem)
{
    const auto rows = openRows(u"select "_s + stem + engine.languageSuffix + u" from "_s + codeTable(stem) +
                               u" order by id"_s);
    QStringList names;
    for (int i = 0; i < rows->rowCount(); ++i)
        names << rows->valueAt(i, 0).toText();
    rows->close();
    return names;
}

Value codeOf(const QString &stem, const QString &word)
{
    const auto rows = openRows(u"select id from "_s + codeTable(stem) + u" where "_s + stem +
                               engine.languageSuffix + u"='"_s + word + u'\'');
    Value code = rows->value(0);
    rows->close();
    return code;
}

void writeMemberAudit(const Recordset &members, bool asRead, const QString &updateType)
{
    const RecordsetPtr audit = newAuditRow(u"members"_s);
    for (int i = 0; i < members.fieldCount(); ++i)
        audit->setValue(members.field(i).name, asRead ? members.originalValue(i) : members.value(i));
    writeAuditRow(*audit, translate(updateType));
}

bool isChanged(const Recordset &members)
{
    for (int i = 0; i < members.fieldCount(); ++i) {
        if (members.originalValue(i) != members.value(i))
            return true;
    }
    return false;
}

bool hasLedgerRows(const QString &name)
{
    for (const QString &table : ledgerTables()) {
        const auto rows = openRows(u"select id from "_s + table + u" where name='"_s + name + u'\'');
        const bool found = rows->recordCount() > 0;
        rows->close();
        if (found)
            return true;
    }
    return false;
}

void renameInLedgers(const QString &oldName, const QString &newName)
{
    for (const SchemaTable &table : engine.dbConnection->schemaTables()) {
        if (table.tableName.contains(u"ledger"))
            engine.dbConnection->execute(u"update "_s + table.tableName + u" set name='"_s + newName +
                                         u"' where name='"_s + oldName + u'\'');
    }
}

bool isRefused(const QString &field, const QString &text)
{
    if (field == u"dob")
        return !isDate(text);
    const bool needed = field == u"name" || field == u"sex" || field == u"relation" || field == u"group";
    return needed && text.isEmpty();
}

QString memberCellText(const QString &field, const Value &value)
{
    if (field == u"valid")
        return translate(value.toText().toUpper() == u"TRUE" ? u"YES"_s : u"NO"_s);
    if (field == u"sex")
        return translate(sexWord(value.isNull() ? 0 : value.toInt()));
    if (field == u"relation")
        return translate(relationWord(value.isNull() ? 0 : value.toInt()));
    if (value.kind() != Value::Kind::Date)
        return value.toText();
    const bool withTime = value.toDate().time() != QTime(0, 0);
    return format(value, withTime ? u"hh:mm:ss yyyy/mm/dd"_s : u"yyyy/mm/dd"_s);
}
