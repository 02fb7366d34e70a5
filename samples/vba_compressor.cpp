#include "sample_builder/vba_compressor.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include "sample_builder/byte_writer.h"

namespace relvane::samples {

namespace {

constexpr std::size_t chunkText = 4096, shortestCopy = 3, chunkHeader = 2;
constexpr unsigned chunkSignature = 3U << 12, compressedChunk = 1U << 15;

struct Copy {
    std::size_t distance = 0, length = 0;
};

// Finds what can be copied: the places of a chunk where the same three bytes stood before, the latest first.
class Matcher {
public:
    explicit Matcher(std::string_view text) : text_(text) { latest_.fill(none); }

    // The longest of the nearest ones, of at most `longest` bytes; its length is 0 when there is none. Only for the
    // place behind all that were entered.
    Copy find(std::size_t at, std::size_t longest) const {
        Copy best;
        if (text_.size() - at < shortestCopy) {
            return best;
        }
        longest = std::min(longest, text_.size() - at);
        constexpr int mostTries = 64; // further ones make chunks hardly smaller
        std::size_t place = latest_[hash(at)];
        for (int tries = 0; place != none && tries < mostTries; ++tries, place = before_[place]) {
            std::size_t length = 0;
            while (length < longest && text_[place + length] == text_[at + length]) {
                ++length;
            }
            if (length >= shortestCopy && length > best.length) {
                best = {at - place, length};
            }
        }
        return best;
    }

    void enter(std::size_t at) {
        if (text_.size() - at >= shortestCopy) {
            before_[at] = std::exchange(latest_[hash(at)], static_cast<std::uint16_t>(at));
        }
    }

private:
    static constexpr std::uint16_t none = 0xFFFF;

    std::size_t hash(std::size_t at) const {
        const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(text_[place]); };
        return (byte(at) * 961U + byte(at + 1) * 31U + byte(at + 2)) % latest_.size();
    }

    std::string_view text_;
    std::array<std::uint16_t, 4096> latest_{};
    std::array<std::uint16_t, chunkText> before_{};
};

// Groups of a flag byte and eight elements, a byte or a copy.
Bytes compressedData(std::string_view text) {
    Matcher matcher(text);
    ByteWriter out;
    std::size_t flags = 0;
    unsigned element = 0;
    for (std::size_t at = 0; at < text.size(); ++element) {
        if (element % 8 == 0) {
            flags = out.size();
            out.u8(0);
        }
        // The further the chunk has come, the more bits a copy needs for its distance.
        const unsigned distanceBits =
            at == 0 ? 4U : std::max(4U, static_cast<unsigned>(std::bit_width(at - 1)));
        const unsigned lengthBits = 16 - distanceBits;
        const Copy copy = matcher.find(at, (std::size_t{1} << lengthBits) - 1 + shortestCopy);
        const std::size_t length = std::max(copy.length, std::size_t{1});
        if (copy.length == 0) {
            out.u8(static_cast<unsigned char>(text[at]));
        } else {
            out.data()[flags] = static_cast<std::uint8_t>(out.data()[flags] | 1U << element % 8);
            out.u16((copy.distance - 1) << lengthBits | (copy.length - shortestCopy));
        }
        for (const std::size_t end = at + length; at < end; ++at) {
            matcher.enter(at);
        }
    }
    return out.data();
}

} // namespace

Bytes compressVba(std::string_view text) {
    ByteWriter out;
    out.u8(1);
    for (; !text.empty(); text.remove_prefix(std::min(text.size(), chunkText))) {
        const std::string_view chunk = text.substr(0, chunkText);
        const Bytes data = compressedData(chunk);
        const auto header = [](std::size_t size) { return (size + chunkHeader - 3) | chunkSignature; };
        if (data.size() < chunkText) {
            out.u16(header(data.size()) | compressedChunk);
            out.bytes(data);
        } else {
            out.u16(header(chunkText));
            out.text(chunk);
            out.zeros(chunkText - chunk.size());
        }
    }
    return out.data();
}

} // namespace relvane::samples
