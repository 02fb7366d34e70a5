#include "access/ole_field.h"

#include <algorithm>

#include "access/stored_bitmap.h"
#include "jet/byte_span.h"
#include "platform/codepage.h"

namespace relvane::access {
namespace {

using jet::ByteSpan;

constexpr std::uint16_t accessSignature = 0x1C15;
constexpr std::uint32_t embedded = 2, presentation = 5;
constexpr int latinCodePage = 1252; // names of classes are ASCII

// Reads one value behind the other.
class Reader {
public:
    explicit Reader(const ByteSpan& bytes) : bytes_(bytes) {}

    std::uint32_t u32() {
        const std::uint32_t value = bytes_.u32(at_);
        at_ += 4;
        return value;
    }
    // A length, then bytes.
    ByteSpan block() {
        const std::size_t length = u32();
        const ByteSpan block = bytes_.part(at_, length);
        at_ += length;
        return block;
    }
    Text name() {
        const ByteSpan stored = block(); // with a zero at its end
        return decode(stored.bytes().first(stored.size() - std::min<std::size_t>(stored.size(), 1)),
                      latinCodePage);
    }

private:
    ByteSpan bytes_;
    std::size_t at_ = 0;
};

// An old metafile with what its display needs before it: mapping mode and size, in hundredths of a millimetre.
std::optional<PictureData> metafileIn(const ByteSpan& block) {
    constexpr std::size_t head = 8;
    PictureData picture;
    picture.format = PictureData::Format::Metafile;
    picture.mappingMode = block.u16(0);
    picture.width = block.u16(2);
    picture.height = block.u16(4);
    picture.data = block.from(head).bytes();
    return picture;
}

void readPresentation(Reader& reader, OleField& field) {
    reader.u32(); // version
    if (reader.u32() != presentation) {
        return;
    }
    const Text kind = reader.name();
    reader.u32(); // width and
    reader.u32(); // height, which the picture has too
    const ByteSpan block = reader.block();
    if (kind == u"DIB") {
        field.bitmap = readBitmap(block.bytes());
    } else if (kind == u"METAFILEPICT") {
        field.metafile = metafileIn(block);
    }
}

} // namespace

std::optional<OleField> readOleField(ByteView bytes) {
    try {
        const ByteSpan span(bytes, 0);
        if (span.u16(0) != accessSignature) {
            return std::nullopt;
        }
        OleField field;
        Reader reader(span.from(span.u16(2)));
        reader.u32(); // version
        if (reader.u32() != embedded) {
            return std::nullopt;
        }
        field.className = reader.name();
        reader.name(); // of a linked document
        reader.name(); // and its part
        const ByteSpan object = reader.block();
        field.bitmap = readBitmapFile(object.bytes());
        if (!field.bitmap) {
            try {
                readPresentation(reader, field);
            } catch (const RunTimeError&) { // it has none that could be shown
            }
        }
        return field;
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

} // namespace relvane::access
