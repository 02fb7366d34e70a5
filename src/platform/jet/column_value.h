// The value of a column in a row.
#pragma once

#include "jet/row.h"
#include "platform/value.h"

namespace relvane::jet {

// Null for a null column, for a date that is none, and for a calculated column, whose results are kept in a way that is
// not known. Long values are read whole. A column of a type that nobody
// knows gives its bytes.
Value columnValue(const PageFile& file, const Column& column, const Row& row);

} // namespace relvane::jet
