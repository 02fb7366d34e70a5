// The forms and reports of a database file as part of its inspection.
#pragma once

#include "access/design_source.h"
#include "json_writer.h"

namespace relvane {

// Writes one object: where the design lies, its properties, default blocks, group levels, and its sections with their
// controls, each with every value that it stores and with the values of some properties that count without being
// stored; of the form or report and of each control also the properties by position ("byPosition"); at last what has
// no name ("unknown"). Errors as DesignSource::design, before anything is written.
void writeDesign(JsonWriter& json, const access::DesignSource& source,
                 const access::DesignDocument& document);

// Writes the list of names beside the design, and whether the design agrees with it. Errors as
// DesignSource::typeInfo, before anything is written.
void writeTypeInfo(JsonWriter& json, const access::DesignSource& source,
                   const access::DesignDocument& document);

} // namespace relvane
