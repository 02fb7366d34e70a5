// What the reader saw in a database file, as JSON: the whole object model by name and by position.
#pragma once

#include <ostream>
#include <string>

#include "jet/open_database.h"

namespace relvane {

// Writes one JSON object for the file at `path` (the system's own bytes). What a damaged object cannot tell stands as
// {"error": number, "description": text} in its place, and once more in the list "problems", so one bad page does not
// hide the rest. Error of openDatabase when the file does not open at all: nothing is written then.
void writeInspection(std::ostream& out, const std::string& path, jet::OpenOptions options = {});

} // namespace relvane
