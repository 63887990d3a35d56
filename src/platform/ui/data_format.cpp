#include "platform/ui/data_format.h"

#include "platform/runtime/format.h"

QString formatted(const Value &value, const DataFormat &format)
{
    if (value.isNull())
        return format.nullValue;
    if (format.type != DataFormat::Type::Boolean)
        return ::format(value, format.format);
    if (value.kind() == Value::Kind::Text)
        return value.toText();
    return value.toBool() ? format.trueValue : format.falseValue;
}
