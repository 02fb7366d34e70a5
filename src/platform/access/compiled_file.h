// Files that Access made for people who shall not see the source (.mde, .accde): the modules are compiled in them, and
// their texts are taken out. All else is as in any other file.
#pragma once

#include "jet/jet_file.h"

namespace relvane::access {

// What tells it is a property of the database, whatever the file is named.
bool isCompiledFile(const jet::JetFile& file);

// Error 2046, for the source of `title`.
[[noreturn]] void failCompiled(TextView title);

} // namespace relvane::access
