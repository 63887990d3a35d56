#pragma once

#include "platform/database/field.h"
#include "platform/database/sql/compiler.h"
#include "platform/runtime/value.h"

#include <optional>

/// The one place that knows how values stand in the file.
namespace sql
{

/// A value as a field of that type holds it: Long for a byte too, Null as it is. Texts are converted by the
/// run-time's rules.
/// @throws RuntimeError 13 when it can't be converted, 6 outside the type's range.
Value fieldValue(const Value &value, FieldType type);

/// Whether a text goes into a field of that many UTF-16 units, as the file's own check has it: behind a NUL,
/// where the engine's counting ends, every byte counts.
bool textFits(const QString &text, int size);

/// A value as a column of that type stores it. The value is converted to the type first, texts by the
/// run-time's rules.
/// @throws RuntimeError 13 when it can't be converted, 6 outside the type's range.
Parameter toStorage(const Value &value, FieldType type);

/// The seconds from 1970 to a date in the form in which a column stores it; nothing for any other text.
std::optional<qint64> storedSeconds(QByteArrayView text);

/// A stored value as a field of that type gives it. A stored value that is not of the type's own form
/// (written by another tool) is converted if it can be; otherwise RuntimeError -2147217887.
Value fromStorage(const Parameter &stored, FieldType type);

} // namespace sql
