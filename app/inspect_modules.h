// The VBA modules of a database file as part of its inspection.
#pragma once

#include "access/module_source.h"
#include "json_writer.h"

namespace relvane {

// "form", "report" or "module": what a module belongs to.
TextView ownerWord(access::ModuleOwner owner);

// Writes one module: its type, its counts, each procedure with kind and lines, and every line. Errors as
// ModuleSource::text, before anything is written.
void writeModule(JsonWriter& json, const access::ModuleSource& source,
                 const access::ModuleDocument& document);

// Writes every line of a text.
void writeLines(JsonWriter& json, const access::ModuleText& text);

} // namespace relvane
