// Drives the readers of pictures with arbitrary bytes: those of a design's property, of a field's object, of a file.
#include <numeric>

#include "access/old_metafile.h"
#include "access/ole_field.h"
#include "access/stored_bitmap.h"

namespace {

// Every pixel is looked at.
std::uint32_t sumOf(const std::optional<relvane::Picture>& picture) {
    std::uint32_t sum = 0;
    if (picture) {
        for (const std::uint32_t pixel : picture->pixels) {
            sum += pixel;
        }
    }
    return sum;
}

volatile std::uint32_t seen; // keeps the reads

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace relvane::access;
    const ByteView bytes(data, size);
    seen = sumOf(readBitmap(bytes)) + sumOf(readBitmapFile(bytes));
    if (const auto field = readOleField(bytes)) {
        seen = sumOf(field->bitmap);
        if (field->metafile) {
            seen = static_cast<std::uint32_t>(field->metafile->data.size());
        }
    }
    if (const auto stored = readPictureData(bytes); stored && stored->format == PictureData::Format::Bitmap) {
        seen = sumOf(readBitmap(stored->data));
    }
    if (const auto records = readOldMetafile(bytes)) {
        for (const MetafileRecord& record : *records) {
            seen = std::accumulate(record.parameters.begin(), record.parameters.end(), std::uint32_t{0});
        }
    }
    if (const auto object = readOleData(bytes)) {
        readPictureData(object->presentation);
    }
    return 0;
}
