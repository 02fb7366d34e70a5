// Big databases made by rule, for benchmarks and for tests of size.
#pragma once

#include "sample_builder/database_spec.h"

namespace relvane::samples {

// `tables` tables with seven columns of different types, two indexes, properties of tables and columns, and
// `rowsEach` rows; every tenth table refers to the one before it. The same numbers give the same database.
DatabaseSpec manyTables(int tables, int rowsEach);

// `each` tables with fifteen columns, two indexes and descriptions, and as many queries of the kinds that applications
// have, in turn: joins of two to four tables, outer joins, queries on queries on queries, crosstabs, unions, actions,
// expressions, parameters. The same number gives the same database.
DatabaseSpec manyTablesAndQueries(int each);

} // namespace relvane::samples
