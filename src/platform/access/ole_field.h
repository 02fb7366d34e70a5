// What an OLE object in a field of a table shows without its program: Access puts a header of its own before the object,
// which is kept in the first version of OLE.
#pragma once

#include "access/design_data.h"
#include "platform/picture.h"

namespace relvane::access {

struct OleField {
    Text className;                      // "Paint.Picture"
    std::optional<Picture> bitmap;       // of the object itself, or of its presentation
    std::optional<PictureData> metafile; // of its presentation; points into the bytes that were given
};

// Nothing for bytes that are no such object. Of one whose picture cannot be read both pictures are missing.
std::optional<OleField> readOleField(ByteView bytes);

} // namespace relvane::access
