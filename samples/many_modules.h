// Databases of many lines of VBA made by rule, for benchmarks and for tests of size.
#pragma once

#include <filesystem>

#include "sample_builder/database_spec.h"

namespace relvane::samples {

// `lines` lines in `modules` modules that have `procedures` procedures in all, each shared out evenly: declarations,
// comments, calls, blocks, statements that go on, and in every fourth module, a class, properties. At least 10 lines
// a module and 8 a procedure, else std::invalid_argument. The same numbers give the same database.
DatabaseSpec manyModules(int modules, int lines, int procedures);

// Each module of the database as the editor exports it, for other tools: NAME.bas, or NAME.cls for a class, in the code
// page of the database. The folder is made when it is not there.
void exportModules(const DatabaseSpec& spec, const std::filesystem::path& folder);

} // namespace relvane::samples
