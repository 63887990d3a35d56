#include "family/member_records.h"

#include "core/engine.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"
#include "presentation/vocabulary.h"

#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace
{

RecordsetPtr openRows(const QString &statement)
{
    auto rows = Recordset::create();
    rows->open(statement, engine.dbConnection, CursorType::Static);
    return rows;
}

QStringList ledgerTables(const std::function<bool(const QString &name)> &isOne)
{
    QStringList names;
    for (const SchemaTable &table : engine.dbConnection->schemaTables()) {
        if (isOne(table.tableName))
            names << table.tableName;
    }
    return names;
}

QString sexWord(qint32 code)
{
    return code == 1 ? u"Male"_s : code == 2 ? u"Female"_s : u"Other"_s;
}

QString relationWord(qint32 code)
{
    return code == 1 ? u"Wife"_s : code == 2 ? u"Son"_s : code == 3 ? u"Daughter"_s : u"Unknown"_s;
}

} // namespace

QStringList codeNames(const QString &stem)
{
    const auto rows = openRows(u"select "_s + stem + engine.languageSuffix + u" from "_s + stem +
                               (stem == u"sex" ? u"es"_s : u"s"_s) + u" order by id"_s);
    QStringList names;
    for (int i = 0; i < rows->rowCount(); ++i)
        names << rows->valueAt(i, 0).toText();
    rows->close();
    return names;
}

Value codeOf(const QString &stem, const QString &word)
{
    const auto rows = openRows(u"select id from "_s + stem + (stem == u"sex" ? u"es"_s : u"s"_s) +
                               u" where "_s + stem + engine.languageSuffix + u"='"_s + word + u'\'');
    const Value code = rows->value(0);
    rows->close();
    return code;
}

void writeMemberAudit(const Recordset &members, bool asRead, const QString &updateType)
{
    const auto audit = Recordset::create();
    audit->open(u"audit_members"_s, engine.dbConnection, CursorType::Keyset, LockType::Optimistic,
                CommandKind::Table);
    audit->addNew();
    for (int i = 0; i < members.fieldCount(); ++i)
        audit->setValue(members.field(i).name, asRead ? members.originalValue(i) : members.value(i));
    audit->setValue(u"updatedby"_s, engine.currentUser);
    audit->setValue(u"updatedon"_s, generalDate(now()));
    audit->setValue(u"updatetype"_s, translate(updateType));
    audit->update();
    audit->close();
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
    for (const QString &table : ledgerTables([](const QString &t) { return t.startsWith(u"ledger"); })) {
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
    for (const QString &table : ledgerTables([](const QString &t) { return t.contains(u"ledger"); }))
        engine.dbConnection->execute(u"update "_s + table + u" set name='"_s + newName + u"' where name='"_s +
                                     oldName + u'\'');
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
