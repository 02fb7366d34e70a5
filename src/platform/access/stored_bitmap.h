// Bitmaps as designs and OLE fields hold them, turned into pixels.
#pragma once

#include <optional>
#include <span>

#include "platform/picture.h"

namespace relvane::access {

constexpr std::int32_t widestBitmap = 16384; // pixels, and highest

// A header (of 12, 40 or more bytes), the colours and the bits, without a file header; bytes behind the bits are left
// alone. 1, 4, 8, 16, 24 and 32 bits a pixel, plain or with run lengths, either way up.
// Nothing for bytes that are no such bitmap, that end before its last row, or for a side beyond `widestBitmap`.
std::optional<Picture> readBitmap(std::span<const std::uint8_t> bytes);

// The same behind the header of a .bmp file.
std::optional<Picture> readBitmapFile(std::span<const std::uint8_t> bytes);

} // namespace relvane::access
