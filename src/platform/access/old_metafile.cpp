#include "access/old_metafile.h"

#include "jet/byte_span.h"

namespace relvane::access {
namespace {

using jet::ByteSpan;

constexpr std::uint32_t fileSignature = 0x9AC6CDD7;
constexpr std::size_t fileHeaderSize = 22, recordHead = 6, word = 2;

// The header says its own length, in words like every other length here.
std::optional<std::size_t> startOfRecords(const ByteSpan& bytes) {
    const std::size_t at = bytes.u32(0) == fileSignature ? fileHeaderSize : 0;
    constexpr std::uint16_t inMemory = 1, inFile = 2, headerWords = 9;
    const std::uint16_t kind = bytes.u16(at);
    if ((kind != inMemory && kind != inFile) || bytes.u16(at + word) != headerWords) {
        return std::nullopt;
    }
    return at + headerWords * word;
}

} // namespace

std::optional<std::vector<MetafileRecord>> readOldMetafile(ByteView metafile) {
    const ByteSpan bytes(metafile, 0);
    std::vector<MetafileRecord> records;
    try {
        const auto start = startOfRecords(bytes);
        if (!start) {
            return std::nullopt;
        }
        for (std::size_t at = *start;;) {
            const std::size_t length = std::size_t{bytes.u32(at)} * word;
            const std::uint16_t function = bytes.u16(at + 4);
            if (length < recordHead || function == 0) {
                return records;
            }
            records.push_back({function, bytes.part(at + recordHead, length - recordHead).bytes()});
            at += length;
        }
    } catch (const RunTimeError&) { // the bytes end here
        return records.empty() ? std::nullopt : std::optional(std::move(records));
    }
}

} // namespace relvane::access
