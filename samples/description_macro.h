// The lines of a description that belong to a macro.
#pragma once

#include "sample_builder/database_spec.h"
#include "sample_builder/description_line.h"

namespace relvane::samples {

// The rest of a line that begins with `keyword`; false when it is no keyword of macros.
bool readMacroLine(MacroSpec& macro, TextView keyword, DescriptionLine& line);

} // namespace relvane::samples
