// A picture as the bytes of a bitmap file (.bmp).
#pragma once

#include "platform/picture.h"
#include "platform/value.h"

namespace relvane {

// 24 bits a pixel, uncompressed, rows from the bottom; 96 pixels an inch.
Bytes bitmapFile(const Picture& picture);

} // namespace relvane
