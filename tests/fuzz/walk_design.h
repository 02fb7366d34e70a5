// Reads everything that the design of a form or report can tell, as the analyses together would.
#pragma once

#include "access/design_source.h"
#include "platform/dao.h"

namespace relvane::test {

// Every value of its tree, the data inside the values, and every property of the object model over it.
void walkDesign(const std::shared_ptr<const access::Design>& design);

// The same for every form and report of a database that openDatabase opened, each with its list of names; a run-time
// error ends the reading of that object alone. Returns how many were read to the end.
int walkDesigns(const dao::Database& database);
int walkDesigns(const access::DesignSource& source);

// Takes bytes for each kind of data that a property can hold.
void lookInside(std::span<const std::uint8_t> bytes);

} // namespace relvane::test
