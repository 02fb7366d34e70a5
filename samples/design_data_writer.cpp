#include "sample_builder/design_data_writer.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "sample_builder/byte_writer.h"
#include "sample_builder/column_value.h"
#include "sample_builder/compound_file_writer.h"

namespace relvane::samples {

namespace {

struct Colour {
    unsigned red, green, blue;
};

// The sixteen of the system's palette, in its order.
constexpr std::array<Colour, 16> colours = {{{0, 0, 0},
                                             {128, 0, 0},
                                             {0, 128, 0},
                                             {128, 128, 0},
                                             {0, 0, 128},
                                             {128, 0, 128},
                                             {0, 128, 128},
                                             {192, 192, 192},
                                             {128, 128, 128},
                                             {255, 0, 0},
                                             {0, 255, 0},
                                             {255, 255, 0},
                                             {0, 0, 255},
                                             {255, 0, 255},
                                             {0, 255, 255},
                                             {255, 255, 255}}};

constexpr std::size_t black = 0, navy = 4, grey = 7, yellow = 11, white = 15;

// Pale enough for texts to stand on it.
std::size_t weave(int x, int y, int, int) {
    return (x + y) % 4 == 0 || (x - y) % 4 == 0 ? grey : white;
}

// A frame, a disc in it, and stripes outside the disc.
std::size_t discAndStripes(int x, int y, int width, int height) {
    if (x == 0 || y == 0 || x == width - 1 || y == height - 1) {
        return black;
    }
    const int radius = std::min(width, height) / 2 - 1;
    const int dx = x - width / 2, dy = y - height / 2;
    if (dx * dx + dy * dy <= radius * radius) {
        return yellow;
    }
    return (x + y) / 4 % 2 == 0 ? navy : white;
}

void put32(ByteWriter& bytes, int number) {
    bytes.u32(static_cast<std::uint32_t>(number));
}

// Padded with zeros to a fixed length; a text too long is cut.
void putFixedText(ByteWriter& bytes, std::string text, std::size_t length) {
    text.resize(length - 1, '\0');
    bytes.text(text);
    bytes.u8(0);
}

using Motif = std::size_t (*)(int x, int y, int width, int height); // the number of the colour there

Bytes bitmapOf(Motif motif, int width, int height, int bits) {
    if (width < 1 || height < 1 || (bits != 1 && bits != 4 && bits != 8 && bits != 24)) {
        throw std::invalid_argument("no such bitmap");
    }
    constexpr std::uint32_t headerSize = 40;
    const bool hasColours = bits <= 8;
    const std::size_t count = bits == 1 ? 2 : colours.size();
    const auto rowSize = static_cast<std::size_t>((width * bits + 31) / 32 * 4);
    ByteWriter bytes;
    bytes.u32(headerSize);
    put32(bytes, width);
    put32(bytes, height);
    bytes.u16(1);
    bytes.u16(static_cast<std::uint16_t>(bits));
    bytes.u32(0); // not compressed
    bytes.u32(rowSize * static_cast<std::size_t>(height));
    bytes.u64(0); // no resolution
    bytes.u32(hasColours ? count : 0);
    bytes.u32(0);
    for (std::size_t i = 0; hasColours && i < count; ++i) {
        const Colour& colour = bits == 1 && i == 1 ? colours.back() : colours[i];
        bytes.u32(colour.blue | colour.green << 8 | colour.red << 16);
    }
    for (int y = height - 1; y >= 0; --y) { // the last line first
        Bytes row(rowSize);
        for (int x = 0; x < width; ++x) {
            const std::size_t colour = motif(x, y, width, height);
            const auto at = static_cast<std::size_t>(x);
            if (bits == 24) {
                row[3 * at] = static_cast<std::uint8_t>(colours[colour].blue);
                row[3 * at + 1] = static_cast<std::uint8_t>(colours[colour].green);
                row[3 * at + 2] = static_cast<std::uint8_t>(colours[colour].red);
            } else {
                const std::size_t number = bits == 1 ? (colour == 0 ? 0 : 1) : colour;
                const auto perByte = static_cast<std::size_t>(8 / bits);
                const std::size_t shift = (perByte - 1 - at % perByte) * static_cast<std::size_t>(bits);
                row[at / perByte] = static_cast<std::uint8_t>(row[at / perByte] | number << shift);
            }
        }
        bytes.bytes(row);
    }
    return std::move(bytes.data());
}

} // namespace

Bytes bitmapPicture(int width, int height, int bits) {
    return bitmapOf(discAndStripes, width, height, bits);
}

Bytes groundPicture(int width, int height, int bits) {
    return bitmapOf(weave, width, height, bits);
}

Bytes metafilePicture(int width, int height) {
    enum Record : std::uint32_t { Header = 1, Ellipse = 42, Rectangle = 43, EndOfFile = 14 };
    constexpr std::uint32_t clipboardFormat = 14, headerSize = 0x58, shapeSize = 24, endSize = 20;
    constexpr std::uint32_t signature = 0x464D4520, version = 0x10000; // " EMF"
    constexpr int pixelsWide = 1024, pixelsHigh = 768, millimetresWide = 320, millimetresHigh = 240;
    const int right = width * pixelsWide / (millimetresWide * 100);
    const int bottom = height * pixelsHigh / (millimetresHigh * 100);
    ByteWriter bytes;
    bytes.u32(clipboardFormat);
    bytes.u32(0);
    bytes.u32(Header);
    bytes.u32(headerSize);
    for (const int edge : {0, 0, right, bottom, 0, 0, width, height}) {
        put32(bytes, edge);
    }
    bytes.u32(signature);
    bytes.u32(version);
    bytes.u32(headerSize + 2 * shapeSize + endSize);
    bytes.u32(4); // records
    bytes.u16(1); // handles
    bytes.u16(0);
    bytes.zeros(12); // no description, no palette
    for (const int size : {pixelsWide, pixelsHigh, millimetresWide, millimetresHigh}) {
        put32(bytes, size);
    }
    for (const Record shape : {Rectangle, Ellipse}) {
        bytes.u32(shape);
        bytes.u32(shapeSize);
        for (const int edge : {0, 0, right, bottom}) {
            put32(bytes, edge);
        }
    }
    bytes.u32(EndOfFile);
    bytes.u32(endSize);
    bytes.u32(0);
    bytes.u32(0x10);
    bytes.u32(endSize);
    return std::move(bytes.data());
}

Bytes paletteOf(int count) {
    constexpr std::uint16_t version = 0x0300;
    const auto used = std::min(static_cast<std::size_t>(count), colours.size());
    ByteWriter bytes;
    bytes.u16(version);
    bytes.u16(used);
    for (std::size_t i = 0; i < used; ++i) {
        bytes.u32(colours[i].red | colours[i].green << 8 | colours[i].blue << 16);
    }
    bytes.u32(0);
    return std::move(bytes.data());
}

Bytes printerLayout(const PageSettings& page) {
    constexpr int acrossFirst = 1953, downFirst = 1954;
    ByteWriter bytes;
    const bool defaultSize = page.itemWidth == 0 && page.itemHeight == 0;
    for (const int number : {page.left, page.top, page.right, page.bottom, 0, page.itemWidth, page.itemHeight,
                             defaultSize ? 1 : 0, page.itemsAcross, page.columnSpacing, page.rowSpacing,
                             page.downFirst ? downFirst : acrossFirst, 1, 0}) {
        put32(bytes, number);
    }
    return std::move(bytes.data());
}

Bytes printerMode(TextView printer, bool landscape, int codePage) {
    constexpr std::uint16_t specVersion = 0x0400, driverVersion = 0x0400, size = 148;
    constexpr std::uint32_t orientationAndPaper = 3;
    constexpr std::uint16_t paperA4 = 9, copies = 1;
    ByteWriter bytes;
    putFixedText(bytes, encodeText(printer, codePage), 32);
    bytes.u16(specVersion);
    bytes.u16(driverVersion);
    bytes.u16(size);
    bytes.u16(0); // nothing of the driver's own
    bytes.u32(orientationAndPaper);
    bytes.u16(landscape ? 2 : 1);
    bytes.u16(paperA4);
    bytes.u16(0); // length and width of the paper: as its kind says
    bytes.u16(0);
    bytes.u16(100); // per cent
    bytes.u16(copies);
    bytes.zeros(size - bytes.size());
    return std::move(bytes.data());
}

Bytes printerNames(TextView driver, TextView printer, TextView port, int codePage) {
    constexpr std::size_t head = 8;
    const std::string texts[] = {encodeText(driver, codePage), encodeText(printer, codePage),
                                 encodeText(port, codePage)};
    ByteWriter bytes;
    std::size_t at = head;
    for (const std::string& text : texts) {
        bytes.u16(at);
        at += text.size() + 1;
    }
    bytes.u16(1); // the printer that Windows prefers
    for (const std::string& text : texts) {
        bytes.text(text);
        bytes.u8(0);
    }
    return std::move(bytes.data());
}

Bytes embeddedObject(std::size_t presentation) {
    const Bytes file = CompoundFileWriter().bytes();
    ByteWriter bytes;
    bytes.u32(file.size());
    bytes.bytes(file);
    for (std::size_t i = 0; i < presentation; ++i) {
        bytes.u8(i * 7 % 251);
    }
    return std::move(bytes.data());
}

} // namespace relvane::samples
