// An old Windows metafile (.wmf): a header, then records that are the calls of the drawing functions of 16-bit Windows.
#pragma once

#include <optional>
#include <vector>

#include "access/design_data.h"

namespace relvane::access {

struct MetafileRecord {
    std::uint16_t function = 0; // the number of the drawing function
    ByteView parameters;        // 16-bit words, as a rule the last parameter first
};

// The records before the one that ends the metafile. Of a metafile that is cut off those that are whole. The parts point
// into the bytes. Nothing for bytes that do not begin as such a metafile does, with the header of its files or without.
std::optional<std::vector<MetafileRecord>> readOldMetafile(ByteView bytes);

} // namespace relvane::access
