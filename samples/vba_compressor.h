// The compression of VBA: what a text or a directory looks like in its stream.
#pragma once

#include <string_view>

#include "platform/value.h"

namespace relvane::samples {

// A signature byte, then a chunk for every 4096 bytes, the last one for what is left. A chunk that compression does not
// make smaller is stored as it is, filled with zeros to its 4096 bytes. Nothing becomes the signature alone.
Bytes compressVba(std::string_view text);

} // namespace relvane::samples
