#include "access/design_data.h"

#include <algorithm>

#include "jet/byte_span.h"
#include "platform/codepage.h"

namespace relvane::access {
namespace {

using jet::ByteSpan;

constexpr std::uint32_t bitmapHeaderSize = 40, enhancedMetafileFormat = 14, metafileFormat = 3;

// What `read` makes of the bytes; nothing when it reads beyond them or gives up.
template <class Read>
auto readView(ByteView bytes, Read read) -> decltype(read(ByteSpan())) {
    try {
        return read(ByteSpan(bytes, 0));
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

std::optional<PictureData> readBitmap(const ByteSpan& bytes) {
    PictureData picture;
    picture.format = PictureData::Format::Bitmap;
    picture.data = bytes.bytes();
    picture.width = bytes.i32(4);
    picture.height = bytes.i32(8);
    picture.bits = bytes.u16(14);
    picture.compression = bytes.u32(16);
    bytes.part(0, bitmapHeaderSize);
    return picture;
}

std::optional<PictureData> readEnhancedMetafile(const ByteSpan& bytes) {
    constexpr std::size_t head = 8, frame = 24, signatureAt = 40;
    constexpr std::uint32_t headerRecord = 1, smallestHeader = 0x58, signature = 0x464D4520; // " EMF"
    const ByteSpan file = bytes.part(head, bytes.size() - std::min(bytes.size(), head));
    if (file.u32(0) != headerRecord || file.u32(4) < smallestHeader || file.u32(signatureAt) != signature) {
        return std::nullopt;
    }
    PictureData picture;
    picture.format = PictureData::Format::EnhancedMetafile;
    picture.data = file.bytes();
    const auto extent = [&](std::size_t from, std::size_t to) {
        return static_cast<std::int32_t>(file.u32(to) - file.u32(from));
    };
    picture.width = extent(frame, frame + 8);
    picture.height = extent(frame + 4, frame + 12);
    return picture;
}

std::optional<PictureData> readMetafile(const ByteSpan& bytes) {
    constexpr std::size_t head = 24;
    PictureData picture;
    picture.format = PictureData::Format::Metafile;
    picture.mappingMode = bytes.i32(8);
    picture.width = bytes.i32(12);
    picture.height = bytes.i32(16);
    picture.data = bytes.part(head, bytes.size() - std::min(bytes.size(), head)).bytes();
    return picture;
}

Text textUntilZero(ByteView bytes, int codePage) {
    return decode(bytes.first(static_cast<std::size_t>(std::ranges::find(bytes, 0) - bytes.begin())),
                  codePage);
}

} // namespace

std::optional<PictureData> readPictureData(ByteView bytes) {
    return readView(bytes, [](const ByteSpan& span) -> std::optional<PictureData> {
        switch (span.u32(0)) {
        case bitmapHeaderSize:
            return readBitmap(span);
        case enhancedMetafileFormat:
            return readEnhancedMetafile(span);
        case metafileFormat:
            return readMetafile(span);
        default:
            return std::nullopt;
        }
    });
}

std::optional<std::vector<PaletteColour>> readPalette(ByteView bytes) {
    return readView(bytes, [](const ByteSpan& span) -> std::optional<std::vector<PaletteColour>> {
        constexpr std::uint16_t version = 0x0300;
        constexpr std::size_t head = 4, colourSize = 4;
        if (span.u16(0) != version) {
            return std::nullopt;
        }
        const std::size_t count = span.u16(2);
        const ByteSpan stored = span.part(head, count * colourSize);
        std::vector<PaletteColour> colours;
        for (std::size_t at = 0; at < stored.size(); at += colourSize) {
            colours.push_back({stored.u8(at), stored.u8(at + 1), stored.u8(at + 2), stored.u8(at + 3)});
        }
        return colours;
    });
}

std::optional<PrinterLayout> readPrinterLayout(ByteView bytes) {
    return readView(bytes, [](const ByteSpan& span) -> std::optional<PrinterLayout> {
        const auto at = [&](std::size_t number) { return span.i32(4 * number); };
        return PrinterLayout{at(0),      at(1), at(2), at(3),  at(4) != 0, at(5),       at(6),
                             at(7) != 0, at(8), at(9), at(10), at(11),     at(12) != 0, at(13) != 0};
    });
}

std::optional<PrinterMode> readPrinterMode(ByteView bytes, int codePage) {
    return readView(bytes, [&](const ByteSpan& span) -> std::optional<PrinterMode> {
        constexpr std::size_t nameSize = 32;
        return PrinterMode{textUntilZero(span.part(0, nameSize).bytes(), codePage),
                           span.from(nameSize).bytes()};
    });
}

std::optional<PrinterNames> readPrinterNames(ByteView bytes, int codePage) {
    return readView(bytes, [&](const ByteSpan& span) -> std::optional<PrinterNames> {
        const auto text = [&](std::size_t offsetAt) {
            const std::size_t start = span.u16(offsetAt);
            span.u8(start);
            return textUntilZero(span.from(start).bytes(), codePage);
        };
        return PrinterNames{text(0), text(2), text(4), span.u16(6) != 0};
    });
}

std::optional<MacroSheet> readEmbeddedMacro(ByteView bytes, int codePage) {
    return readView(bytes, [&](const ByteSpan& span) -> std::optional<MacroSheet> {
        return readMacroSheet(span.bytes(), codePage, {});
    });
}

std::optional<OleData> readOleData(ByteView bytes) {
    return readView(bytes, [](const ByteSpan& span) -> std::optional<OleData> {
        constexpr std::uint32_t signature = 0xE011CFD0;
        const ByteSpan file = span.part(4, span.u32(0));
        if (file.u32(0) != signature) {
            return std::nullopt;
        }
        return OleData{file.bytes(), span.from(4 + file.size()).bytes()};
    });
}

} // namespace relvane::access
