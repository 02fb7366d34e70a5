// Words of a description as values of the database.
#pragma once

#include "sample_builder/database_spec.h"
#include "sample_builder/description_line.h"

namespace relvane::samples {

// The type of a column or property: boolean byte integer long currency single double date binary text ole memo guid.
ColumnType takeType(DescriptionLine& line);

// A value of that type. "-" unquoted is Null.
Value takeValue(DescriptionLine& line, ColumnType type);

// A line's "NAME TYPE VALUE".
PropertySpec takeProperty(DescriptionLine& line);

int takeNumber(DescriptionLine& line, const char* what); // decimal, or hexadecimal with 0x
DateTime takeDate(DescriptionLine& line);                // "1998-04-01" or "1998-04-01T09:30:00"

} // namespace relvane::samples
