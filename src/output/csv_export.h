// The lists of objects, tables, queries, forms, reports and macros as comma-separated files: a heading line, and a line
// for each row.
#pragma once

#include <optional>

#include "output/frm_out.h"

namespace relvane {

// Gives the buttons for them their handlers.
void wireCsvExports(FrmOut& window);

// A value as the Write statement of Basic puts it: texts in quotes, whatever stands in them; #TRUE#; #1997-09-12#, with
// a time unless it is midnight; #NULL#; nothing for a value that was never given.
Text writtenValue(const std::optional<Value>& value);

} // namespace relvane
