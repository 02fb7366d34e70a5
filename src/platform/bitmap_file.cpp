#include "platform/bitmap_file.h"

#include <concepts>

namespace relvane {
namespace {

constexpr std::uint32_t fileHeaderSize = 14, infoHeaderSize = 40;
constexpr std::uint16_t bitsPerPixel = 24;
constexpr std::uint32_t pixelsPerMetre = 3780; // 96 an inch

void put(Bytes& bytes, std::unsigned_integral auto value) {
    for (std::size_t i = 0; i < sizeof value; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
}

void putHeaders(Bytes& bytes, const Picture& picture, std::uint32_t sizeOfRows) {
    constexpr std::uint32_t headers = fileHeaderSize + infoHeaderSize;
    bytes.push_back('B');
    bytes.push_back('M');
    put(bytes, headers + sizeOfRows);
    put(bytes, std::uint32_t{0}); // reserved
    put(bytes, headers);          // where the rows begin

    put(bytes, infoHeaderSize);
    put(bytes, static_cast<std::uint32_t>(picture.width));
    put(bytes, static_cast<std::uint32_t>(picture.height));
    put(bytes, std::uint16_t{1}); // planes
    put(bytes, bitsPerPixel);
    put(bytes, std::uint32_t{0}); // not compressed
    put(bytes, sizeOfRows);
    put(bytes, pixelsPerMetre);
    put(bytes, pixelsPerMetre);
    put(bytes, std::uint32_t{0}); // no palette
    put(bytes, std::uint32_t{0});
}

} // namespace

Bytes bitmapFile(const Picture& picture) {
    const std::size_t row = (static_cast<std::size_t>(picture.width) * 3 + 3) / 4 * 4;
    const std::size_t rows = row * static_cast<std::size_t>(picture.height);
    Bytes bytes;
    bytes.reserve(fileHeaderSize + infoHeaderSize + rows);
    putHeaders(bytes, picture, static_cast<std::uint32_t>(rows));
    for (int y = picture.height - 1; y >= 0; --y) {
        for (int x = 0; x < picture.width; ++x) {
            const std::uint32_t pixel = picture.at(x, y);
            bytes.push_back(static_cast<std::uint8_t>(pixel)); // blue
            bytes.push_back(static_cast<std::uint8_t>(pixel >> 8));
            bytes.push_back(static_cast<std::uint8_t>(pixel >> 16));
        }
        while (bytes.size() % 4 != (fileHeaderSize + infoHeaderSize) % 4) {
            bytes.push_back(0); // a row fills whole words
        }
    }
    return bytes;
}

} // namespace relvane
