#pragma once

#include "platform/database/sql/bound.h"

namespace sql
{

/// Writes a bound statement down for the engine.
/// @throws RuntimeError -2147217900 for a statement beyond what the engine takes.
Compiled emitStatement(bound::Statement statement);

} // namespace sql
