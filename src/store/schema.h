#pragma once

#include "platform/database/store_file.h"

#include <vector>

/// The twelve tables of a store with their columns and indexes, in the order of their creation.
const std::vector<TableDefinition> &storeTables();
