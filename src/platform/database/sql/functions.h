#pragma once

struct sqlite3;

namespace sql
{

/// Registers the dialect's functions and the collation `arabic` on an engine handle. The emitter's texts and
/// the store's own indexes need them. A function that meets a value it can't convert fails with the engine's
/// code SQLITE_MISMATCH, which stands for a data type mismatch; any other failure has SQLITE_ERROR and the
/// run-time's words, such as "Overflow".
/// @throws RuntimeError when the collation can't be made.
void registerFunctions(sqlite3 *handle);

} // namespace sql
