// How the analyses of objects word what they read: names cut to the width of their column, the author's description,
// the kind of a link.
#pragma once

#include <optional>

#include "core/analysis_context.h"

namespace relvane {

// The first `length` characters without the blanks at their end.
Text cutText(TextView text, std::int64_t length);

// The last property of exactly that name, if there is one. The search begins at the end, since what a person added
// stands behind the built-in properties.
std::optional<dao::Property> lastProperty(dao::Properties& properties, TextView name);

// Writes the description into the field of that name of the cursor's new row; without one the field is not written.
void writeDescription(Recordset& row, dao::Properties& properties);

// "Link(Access)", "Link(ODBC)" or "Link(その他)", by the connect text of a linked table.
Text linkType(TextView connect);

} // namespace relvane
