#pragma once

#include <sqlcipher/sqlite3.h>

namespace sql
{

/// The engine's function q_lookup(select, key): the first column of the select's first row, in which ?1 is
/// the whole number `key`; Null without a row or key. The select is a constant, is prepared once for a run of
/// the outer statement, and runs once for each key.
/// @throws RuntimeError with the engine's words
void lookup(sqlite3_context *context, int count, sqlite3_value **arguments);

} // namespace sql
