#pragma once

#include "platform/database/sql/bound.h"

namespace sql
{

/// Finds a statement's names in the catalogue. The result views the syntax tree's text and points into the
/// catalogue: both must outlive it.
/// @throws RuntimeError as compile() does.
bound::Statement bindStatement(const syntax::Statement &statement, const Catalog &catalog);

} // namespace sql
