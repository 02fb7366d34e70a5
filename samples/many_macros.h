// Databases of very many macros made by rule, for benchmarks.
#pragma once

#include "sample_builder/database_spec.h"

namespace relvane::samples {

// `rows` rows in `macros` macros that have `members` members in all, each shared out evenly: actions with and without
// arguments, comments, conditions that go on in the next row. At least one row a member and one member a macro, else
// std::invalid_argument. The same numbers give the same database.
DatabaseSpec manyMacros(int macros, int rows, int members);

} // namespace relvane::samples
