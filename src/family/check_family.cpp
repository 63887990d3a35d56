#include "family/check_family.h"

#include "core/engine.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

bool isCode(const Value &value, qint32 highest)
{
    return !value.isNull() && value.toInt() >= 1 && value.toInt() <= highest;
}

bool isBad(const QString &field, const Value &value)
{
    if (field == u"name")
        return value.toText().isEmpty();
    if (field == u"relation")
        return !isCode(value, 3);
    if (field == u"sex")
        return !isCode(value, 2);
    if (field == u"group")
        return value.isNull();
    return false;
}

} // namespace

bool CheckFamily()
{
    const auto members = Recordset::create();
    members->open(u"select * from members where valid=true"_s, engine.dbConnection, CursorType::Static);
    bool bad = false;
    for (; !members->eof() && !bad; members->moveNext()) {
        for (int i = 0; i < members->fieldCount() && !bad; ++i)
            bad = isBad(members->field(i).name, members->value(i));
    }
    const bool usable = members->recordCount() >= 2 && !bad;
    members->close();
    return usable;
}
