#include "access/stored_bitmap.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>

#include "jet/byte_span.h"

namespace relvane::access {
namespace {

using jet::ByteSpan;

enum Compression : std::uint32_t { plain = 0, runs8 = 1, runs4 = 2, masks = 3 };

constexpr std::size_t oldHeaderSize = 12, headerSize = 40;

struct Header {
    std::size_t size = 0; // of the header alone
    std::int32_t width = 0, height = 0;
    bool topDown = false;
    std::uint32_t bits = 0, compression = 0;
    std::size_t colours = 0, colourSize = 4;
    std::array<std::uint32_t, 3> masks{}; // red, green, blue

    bool hasRuns() const { return compression == runs8 || compression == runs4; }
    std::size_t masksSize() const { return compression == Compression::masks && size == headerSize ? 12 : 0; }
    std::size_t bitsAt() const { return size + masksSize() + colours * colourSize; }
    std::size_t rowSize() const { return (static_cast<std::size_t>(width) * bits + 31) / 32 * 4; }
};

// The platform's own masks where the bitmap has none.
constexpr std::array<std::uint32_t, 3> masks16{0x7C00, 0x03E0, 0x001F}, masks32{0xFF0000, 0x00FF00, 0x0000FF};

bool isSane(const Header& header) {
    constexpr std::array<std::uint32_t, 6> depths{1, 4, 8, 16, 24, 32};
    const bool fits = header.width > 0 && header.width <= widestBitmap && header.height > 0 &&
                      header.height <= widestBitmap && std::ranges::count(depths, header.bits) == 1;
    switch (header.compression) {
    case plain:
        return fits;
    case runs8:
        return fits && header.bits == 8;
    case runs4:
        return fits && header.bits == 4;
    case masks:
        return fits && (header.bits == 16 || header.bits == 32);
    default:
        return false;
    }
}

Header readHeader(const ByteSpan& bytes) {
    Header header;
    header.size = bytes.u32(0);
    std::uint32_t colours = 0;
    if (header.size == oldHeaderSize) {
        header.width = bytes.u16(4);
        header.height = bytes.u16(6);
        header.bits = bytes.u16(10);
        header.colourSize = 3;
    } else {
        bytes.require(header.size >= headerSize, u"ビットマップの見出し");
        header.width = bytes.i32(4);
        const std::int64_t height = bytes.i32(8);
        header.topDown = height < 0;
        header.height = static_cast<std::int32_t>(std::min<std::int64_t>(std::abs(height), widestBitmap + 1));
        header.bits = bytes.u16(14);
        header.compression = bytes.u32(16);
        colours = bytes.u32(32);
    }
    bytes.require(isSane(header), u"ビットマップの見出し");
    if (header.bits <= 8) {
        const std::uint32_t most = 1U << header.bits;
        header.colours = colours == 0 || colours > most ? most : colours;
    } else {
        bytes.require(colours <= 256, u"ビットマップの色");
        header.colours = colours;
    }
    header.masks = header.bits == 16 ? masks16 : masks32;
    if (header.compression == masks) {
        for (std::size_t i = 0; i < header.masks.size(); ++i) {
            header.masks[i] = bytes.u32(headerSize + 4 * i);
        }
    }
    return header;
}

// What a mask selects, as one byte of colour.
std::uint32_t channel(std::uint32_t pixel, std::uint32_t mask) {
    if (mask == 0) {
        return 0;
    }
    const std::uint32_t most = mask >> std::countr_zero(mask);
    return static_cast<std::uint32_t>(std::uint64_t{(pixel & mask) >> std::countr_zero(mask)} * 255 / most);
}

std::vector<std::uint32_t> readColours(const ByteSpan& bytes, const Header& header) {
    std::vector<std::uint32_t> colours(256, 0); // an index without a colour is black
    const std::size_t from = header.size + header.masksSize();
    for (std::size_t i = 0; i < std::min<std::size_t>(header.colours, colours.size()); ++i) {
        colours[i] = bytes.u24(from + i * header.colourSize);
    }
    return colours;
}

std::uint32_t packedIndex(const ByteSpan& row, std::size_t x, std::uint32_t bits) {
    const std::size_t bit = x * bits;
    const std::uint32_t mask = (1U << bits) - 1;
    return (row.u8(bit / 8) >> (8 - bits - bit % 8)) & mask;
}

std::uint32_t pixelOf(const ByteSpan& row, std::size_t x, const Header& header,
                      const std::vector<std::uint32_t>& colours) {
    switch (header.bits) {
    case 16:
    case 32: {
        const std::uint32_t pixel = header.bits == 16 ? row.u16(2 * x) : row.u32(4 * x);
        return channel(pixel, header.masks[0]) << 16 | channel(pixel, header.masks[1]) << 8 |
               channel(pixel, header.masks[2]);
    }
    case 24:
        return row.u24(3 * x);
    default:
        return colours[packedIndex(row, x, header.bits)];
    }
}

Picture blank(const Header& header) {
    Picture picture{header.width, header.height, {}};
    picture.pixels.resize(static_cast<std::size_t>(header.width) * static_cast<std::size_t>(header.height));
    return picture;
}

Picture readRows(const ByteSpan& bytes, const Header& header) {
    const auto colours = readColours(bytes, header);
    const auto height = static_cast<std::size_t>(header.height);
    const ByteSpan rows =
        bytes.part(header.bitsAt(), header.rowSize() * height); // before room is made for them
    Picture picture = blank(header);
    for (std::size_t y = 0; y < height; ++y) {
        const std::size_t stored = header.topDown ? y : height - 1 - y;
        const ByteSpan row = rows.part(stored * header.rowSize(), header.rowSize());
        for (int x = 0; x < header.width; ++x) {
            picture.at(x, static_cast<int>(y)) = pixelOf(row, static_cast<std::size_t>(x), header, colours);
        }
    }
    return picture;
}

// Run lengths: a count and an index; or 0 and a code: 0 ends the row, 1 the bitmap, 2 moves on, others are that many
// indexes as they stand, filled up to two bytes.
Picture readRuns(const ByteSpan& bytes, const Header& header) {
    constexpr std::int64_t mostPixels = 16'000'000; // a few bytes may stand for many
    bytes.require(std::int64_t{header.width} * header.height <= mostPixels, u"ビットマップの大きさ");
    const auto colours = readColours(bytes, header);
    const ByteSpan runs = bytes.from(header.bitsAt());
    Picture picture = blank(header);
    std::ranges::fill(picture.pixels, colours[0]);
    int x = 0, y = 0;
    const auto put = [&](std::uint32_t index) {
        if (x < header.width && y < header.height) {
            picture.at(x, header.height - 1 - y) = colours[index];
        }
        ++x;
    };
    const auto indexIn = [&](std::size_t at, std::size_t i) -> std::uint32_t {
        if (header.compression == runs8) {
            return runs.u8(at + i);
        }
        const std::uint32_t pair = runs.u8(at + i / 2);
        return i % 2 == 0 ? pair >> 4 : pair & 0x0F;
    };
    std::size_t at = 0;
    while (at + 1 < runs.size() && y < header.height) {
        const std::size_t count = runs.u8(at), code = runs.u8(at + 1);
        at += 2;
        if (count > 0) {
            for (std::size_t i = 0; i < count; ++i) {
                put(header.compression == runs8 ? static_cast<std::uint32_t>(code)
                                                : (i % 2 == 0 ? static_cast<std::uint32_t>(code >> 4)
                                                              : static_cast<std::uint32_t>(code & 0x0F)));
            }
        } else if (code == 0) {
            x = 0;
            ++y;
        } else if (code == 1) {
            break;
        } else if (code == 2) {
            x += runs.u8(at);
            y += runs.u8(at + 1);
            at += 2;
        } else {
            for (std::size_t i = 0; i < code; ++i) {
                put(indexIn(at, i));
            }
            const std::size_t used = header.compression == runs8 ? code : (code + 1) / 2;
            at += (used + 1) / 2 * 2;
        }
    }
    return picture;
}

} // namespace

std::optional<Picture> readBitmap(std::span<const std::uint8_t> bytes) {
    try {
        const ByteSpan span(bytes, 0);
        const Header header = readHeader(span);
        return header.hasRuns() ? readRuns(span, header) : readRows(span, header);
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

std::optional<Picture> readBitmapFile(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t fileHeaderSize = 14;
    if (bytes.size() < fileHeaderSize || bytes[0] != 'B' || bytes[1] != 'M') {
        return std::nullopt;
    }
    return readBitmap(bytes.subspan(fileHeaderSize));
}

} // namespace relvane::access
