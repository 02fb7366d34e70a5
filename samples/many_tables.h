// Big databases made by rule, for benchmarks and for tests of size.
#pragma once

#include "sample_builder/database_spec.h"

namespace relvane::samples {

// `tables` tables with seven columns of different types, two indexes, properties of tables and columns, and
// `rowsEach` rows; every tenth table refers to the one before it. The same numbers give the same database.
DatabaseSpec manyTables(int tables, int rowsEach);

} // namespace relvane::samples
