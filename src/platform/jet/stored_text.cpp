#include "jet/stored_text.h"

#include <algorithm>

#include "platform/codepage.h"

namespace relvane::jet {
namespace {

constexpr std::uint16_t compressedMark = 0xFEFF; // bytes FF FE

Text utf16(const ByteSpan& bytes) {
    Text text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text += static_cast<char16_t>(bytes.u16(i));
    }
    return text;
}

// Behind the mark come stretches, by turns of one byte a character below 0100 and of plain UTF-16. Any byte 00
// ends a stretch: text that needs a 00 inside plain UTF-16 is not stored in this form.
Text expand(const ByteSpan& bytes) {
    Text text;
    bool compressed = true;
    for (std::size_t start = 2; start < bytes.size(); compressed = !compressed) {
        const auto rest = bytes.from(start).bytes();
        const auto length = static_cast<std::size_t>(std::ranges::find(rest, 0) - rest.begin());
        const ByteSpan stretch = bytes.part(start, length);
        if (compressed) {
            text.append(stretch.bytes().begin(), stretch.bytes().end());
        } else {
            text += utf16(stretch);
        }
        start += length + 1;
    }
    return text;
}

} // namespace

Text decodeName(const PageFile& file, const ByteSpan& bytes) {
    if (file.format().textUnit == 1) {
        return decode(bytes.bytes(), file.header().codePage);
    }
    bytes.require(bytes.size() % 2 == 0, u"名前の長さが奇数です");
    return utf16(bytes);
}

Text decodeText(const PageFile& file, const ByteSpan& bytes, int codePage) {
    if (file.format().textUnit == 1) {
        return decode(bytes.bytes(), isKnownCodePage(codePage) ? codePage : file.header().codePage);
    }
    return bytes.size() >= 2 && bytes.u16(0) == compressedMark ? expand(bytes) : utf16(bytes);
}

} // namespace relvane::jet
