// Long values: memos, OLE objects and property blobs, which a row holds by reference.
#pragma once

#include "jet/page_file.h"

namespace relvane::jet {

// The bytes of the value whose head stands in `cell`: in the row behind the head, in one row of a long-value page,
// or in a chain of such rows.
Bytes readLongValue(const PageFile& file, const ByteSpan& cell);

} // namespace relvane::jet
