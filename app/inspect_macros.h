// The macros of a database file as part of its inspection.
#pragma once

#include "access/macro_source.h"
#include "json_writer.h"

namespace relvane {

// Writes one macro: its sheet with every row and what is stored in it, the arguments by name; an argument that the
// action does not have goes by its number. Empty texts are null. Errors as MacroSource::sheet, before anything is
// written.
void writeMacro(JsonWriter& json, const access::MacroSource& source, const access::MacroDocument& macro);

// The sheet alone, `bytes` long as it is stored.
void writeMacroSheet(JsonWriter& json, const access::MacroSheet& sheet, std::size_t bytes);

// Writes the lines of the module that it converts to. Errors likewise.
void writeConvertedMacro(JsonWriter& json, const access::MacroSource& source,
                         const access::MacroDocument& macro);

} // namespace relvane
