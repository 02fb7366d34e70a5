// A picture as the bytes of a file.
#pragma once

#include "platform/picture.h"
#include "platform/value.h"

namespace relvane::formview {

Bytes bitmapFile(const Picture& picture); // .bmp, 24 bits a pixel
Bytes pngFile(const Picture& picture);

} // namespace relvane::formview
