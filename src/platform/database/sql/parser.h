#pragma once

#include "platform/database/sql/syntax.h"

namespace sql
{

/// Reads one statement. A single `;` may end it.
/// @throws RuntimeError -2147217900 with the dialect's words and the place: a text that is no statement, a
/// second statement behind the first, expressions nested too deeply.
syntax::Statement parse(QStringView text);

} // namespace sql
