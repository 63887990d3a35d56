#pragma once

#include "platform/database/connection.h"

/// Writes the rows that every new store begins with, into empty tables: one row of `settings` in the
/// session's language, then `relations`, `sexes` and `details`, whose counters the program relies on.
/// @throws RuntimeError as the recordset does.
void writeSeedRows(const ConnectionPtr &connection);
