// Text as the file stores it: bytes of a code page in Jet 3, UTF-16 in newer files.
#pragma once

#include "jet/page_file.h"

namespace relvane::jet {

// A name in a definition or a property blob, never compressed. Error 3049 for an odd number of bytes of UTF-16.
Text decodeName(const PageFile& file, const ByteSpan& bytes);

// A value of a text or memo column. `codePage` is the column's; one that nobody knows gives way to the file's.
// UTF-16 may stand in the compressed form; a byte left over at the end is dropped.
Text decodeText(const PageFile& file, const ByteSpan& bytes, int codePage);

} // namespace relvane::jet
