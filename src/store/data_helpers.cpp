#include "store/data_helpers.h"

#include "core/engine.h"
#include "platform/runtime/format.h"
#include "platform/runtime/numbers.h"
#include "platform/ui/wait.h"

using namespace Qt::Literals::StringLiterals;

qint16 LookupDetailId(const QString &detailText)
{
    qint16 result = 10; // "Other" of the expenses, for a revenue too: that is meant
    engine.rsShared = Recordset::create();
    engine.strSql =
        u"select id from details where detail"_s + engine.languageSuffix + u"='"_s + detailText + u"'"_s;
    engine.rsShared->open(engine.strSql, engine.dbConnection, CursorType::Keyset, LockType::ReadOnly);
    if (!engine.rsShared->eof())
        result = toInteger(engine.rsShared->value(u"id"_s).toDouble());
    engine.rsShared->close();
    engine.rsShared.reset();
    return result;
}

QString FormatStamp(const QDateTime &value)
{
    // Only the hour decides: a time in the first hour of a day is not shown, and that is meant.
    return format(value, value.time().hour() > 0 ? u"yyyy/mm/dd hh:mm:ss"_s : u"yyyy/mm/dd"_s);
}

void Pause(int ticks)
{
    const int elapsed = 0; // nothing ever advances it; that is meant
    serveEventsUntil([ticks] { return elapsed == ticks; });
}
