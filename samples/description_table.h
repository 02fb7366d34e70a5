// The lines of a description that belong to a table and to its columns.
#pragma once

#include "sample_builder/database_spec.h"
#include "sample_builder/description_line.h"

namespace relvane::samples {

// The table that the lines speak of, and its column that was begun last, if one was.
struct TableInProgress {
    TableSpec* table = nullptr;
    ColumnSpec* column = nullptr;
};

// The rest of a line that begins with `keyword`; false when it is no keyword of tables.
bool readTableLine(TableInProgress& progress, TextView keyword, DescriptionLine& line);

} // namespace relvane::samples
