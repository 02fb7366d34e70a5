// A macro in the sheet that Access 97 stores of it.
#pragma once

#include "platform/value.h"
#include "sample_builder/macro_spec.h"

namespace relvane::samples {

// std::invalid_argument when the format cannot hold a row: more than ten arguments, more than 64 KB of text, a
// character that the code page lacks.
Bytes macroSheet(const MacroSpec& macro, int codePage);

} // namespace relvane::samples
