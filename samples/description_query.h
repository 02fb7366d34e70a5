// The lines of a description that belong to a query.
#pragma once

#include "sample_builder/database_spec.h"
#include "sample_builder/description_line.h"

namespace relvane::samples {

// The rest of a line "query NAME TYPE".
QuerySpec startQuery(DescriptionLine& line);

// The rest of a line that begins with `keyword`; false when it is no keyword of queries.
bool readQueryLine(QuerySpec& query, TextView keyword, DescriptionLine& line);

} // namespace relvane::samples
