// A macro in the sheet that Access stores of it.
#pragma once

#include "sample_builder/macro_spec.h"
#include "sample_builder/text_coding.h"

namespace relvane::samples {

// With wide texts it is one of Access 2000; without a version its texts are in the code page all the same.
// std::invalid_argument when the format cannot hold a row: more than ten arguments, more than 64 KB of text, a character
// that the code page lacks.
Bytes macroSheet(const MacroSpec& macro, TextCoding coding);

} // namespace relvane::samples
