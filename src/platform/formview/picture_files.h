// A picture as the bytes of a .png file; platform/bitmap_file.h makes bitmaps.
#pragma once

#include "platform/picture.h"
#include "platform/value.h"

namespace relvane::formview {

Bytes pngFile(const Picture& picture);

} // namespace relvane::formview
