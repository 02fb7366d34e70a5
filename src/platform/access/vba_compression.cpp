#include "access/vba_compression.h"

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

#include "access/design_bytes.h"

namespace relvane::access {
namespace {

constexpr std::uint8_t containerSignature = 1;
constexpr std::size_t chunkText = 4096; // bytes that a chunk stands for

// A module has 65,534 lines of 1,023 characters at most. Six bytes can stand for 4096, so a damaged file must not
// decide alone how much room is made.
constexpr std::size_t longestText = std::size_t{64} << 20;

struct ChunkHeader {
    static constexpr std::size_t size = 2;
    std::uint16_t word;

    bool isValid() const { return (word >> 12 & 7) == 3 && (isCompressed() || dataSize() == chunkText); }
    bool isCompressed() const { return (word & 0x8000) != 0; }
    std::size_t dataSize() const { return (word & 0xFFFU) + 3 - size; } // behind the header
};

// One compressed chunk: groups of a flag byte and eight elements, a literal byte or a copy of what stands before.
class ChunkExpander {
public:
    ChunkExpander(DesignBytes& bytes, std::size_t end, Bytes& out)
        : bytes_(bytes), end_(end), out_(out), start_(out.size()) {}

    void expand() {
        while (bytes_.offset() < end_) {
            unsigned flags = bytes_.u8();
            for (int element = 0; element < 8 && bytes_.offset() < end_; ++element, flags >>= 1) {
                (flags & 1) != 0 ? copy() : literal();
            }
        }
    }

private:
    std::size_t done() const { return out_.size() - start_; } // bytes of this chunk so far

    void literal() {
        const std::size_t at = bytes_.offset();
        makeRoom(1, at);
        out_.push_back(bytes_.u8());
    }

    void copy() {
        const std::size_t at = bytes_.offset();
        if (end_ - at < 2) {
            bytes_.fail(at, u"圧縮の終わりが途切れています");
        }
        const unsigned token = bytes_.u16();
        // The further the chunk has come, the more bits of a token are needed for the distance.
        const auto needed = done() == 0 ? 0 : std::bit_width(done() - 1);
        const int lengthBits = 16 - std::max(static_cast<int>(needed), 4);
        const std::size_t distance = (token >> lengthBits) + 1;
        const std::size_t length = (token & ((1U << lengthBits) - 1)) + 3;
        if (distance > done()) {
            bytes_.fail(at, u"圧縮の参照先がありません");
        }
        makeRoom(length, at);
        for (std::size_t i = 0; i < length; ++i) { // what is copied may be what was just written
            out_.push_back(out_[out_.size() - distance]);
        }
    }

    void makeRoom(std::size_t length, std::size_t at) const {
        if (length > chunkText - done()) {
            bytes_.fail(at, u"圧縮のブロックが長すぎます");
        }
    }

    DesignBytes& bytes_;
    std::size_t end_;
    Bytes& out_;
    std::size_t start_;
};

// The first chunk of a text begins so, behind its header: with a byte of flags none of which is set, since nothing in
// this word repeats, or at once when the chunk is stored as it is.
constexpr std::array<std::uint8_t, 9> firstGroup = {0, 'A', 't', 't', 'r', 'i', 'b', 'u', 't'};

std::span<const std::uint8_t> firstBytes(ChunkHeader header) {
    return std::span(firstGroup).subspan(header.isCompressed() ? 0 : 1);
}

// For each place of the stream, whether a chain of chunks leads from it exactly to the end. Found from the end
// backwards, so that no stream makes the search long.
std::vector<bool> chunkStarts(const jet::ByteSpan& stream) {
    std::vector<bool> leadsToEnd(stream.size() + 1);
    leadsToEnd[stream.size()] = true;
    for (std::size_t at = stream.size(); at-- > 0;) {
        if (stream.size() - at <= ChunkHeader::size) {
            continue;
        }
        const ChunkHeader header{stream.u16(at)};
        const std::size_t next = at + ChunkHeader::size + header.dataSize();
        leadsToEnd[at] = header.isValid() && next <= stream.size() && leadsToEnd[next];
    }
    return leadsToEnd;
}

} // namespace

Bytes decompressVba(std::span<const std::uint8_t> compressed, TextView owner, TextView part) {
    DesignBytes bytes(compressed, owner, part);
    if (bytes.u8() != containerSignature) {
        bytes.fail(0, u"圧縮されたデータではありません");
    }
    Bytes out;
    while (!bytes.atEnd()) {
        const std::size_t at = bytes.offset();
        if (out.size() % chunkText != 0) {
            bytes.fail(at, u"圧縮のブロックが短すぎます");
        }
        if (out.size() >= longestText) {
            bytes.fail(at, u"展開すると長すぎます");
        }
        const ChunkHeader header{bytes.u16()};
        if (!header.isValid()) {
            bytes.fail(at, u"圧縮のブロックの見出しが正しくありません");
        }
        if (header.dataSize() > compressed.size() - bytes.offset()) {
            bytes.fail(at, u"データが途切れています");
        }
        if (header.isCompressed()) {
            ChunkExpander(bytes, bytes.offset() + header.dataSize(), out).expand();
        } else {
            const auto stored = bytes.take(header.dataSize());
            out.insert(out.end(), stored.begin(), stored.end());
        }
    }
    return out;
}

std::optional<std::size_t> findVbaText(std::span<const std::uint8_t> stream, std::size_t expected) {
    const jet::ByteSpan bytes(stream, 0);
    const std::vector<bool> starts = chunkStarts(bytes);
    constexpr std::size_t head = 1 + ChunkHeader::size;
    const auto isText = [&](std::size_t at) {
        if (stream.size() <= head + firstGroup.size() || at >= stream.size() - head - firstGroup.size() ||
            stream[at] != containerSignature || !starts[at + 1]) {
            return false;
        }
        const auto expectedBytes = firstBytes({bytes.u16(at + 1)});
        return std::ranges::equal(stream.subspan(at + head, expectedBytes.size()), expectedBytes);
    };
    if (isText(expected)) {
        return expected;
    }
    for (std::size_t at = 0; at < stream.size(); ++at) {
        if (isText(at)) {
            return at;
        }
    }
    return std::nullopt;
}

} // namespace relvane::access
