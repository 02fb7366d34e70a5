// Keys of index entries, the same in both formats. Numbers, dates, GUIDs and bytes are keyed as Jet 3 does; a text's key
// is its characters by a plain rule that stands for the sort order of the file (see textKey).
//
// Every key begins with a byte that says "Null" or "a value follows"; a descending column has all its bytes
// complemented. So comparing keys as bytes orders the rows.
#pragma once

#include "sample_builder/byte_writer.h"
#include "sample_builder/database_spec.h"

namespace relvane::samples {

// The order of texts: without regard to case, width (half, full), kind of kana and accents; blanks and
// punctuation, then digits, letters, and the rest in the order of the code page (kana and then JIS order in 932); last
// what the code page lacks, by its UTF-16. Texts that are equal by that follow in the order of their bytes. The rule is
// the same in both formats, so that both list the same objects in the same order.
Bytes textKey(TextView text, int codePage);

// Appends the key of one column's value.
void appendKey(ByteWriter& key, const Value& value, const ColumnSpec& column, bool descending, int codePage);

} // namespace relvane::samples
