// The only way into the bytes of a stored design or module: reads one number or run of bytes behind the other, and
// fails with the object's name and the offset where the bytes do not suffice.
#pragma once

#include "jet/byte_span.h"

namespace relvane::access {

// Error 3049: `owner` is damaged at `offset` of its `part` ("デザイン"), for this reason.
[[noreturn]] void failDamagedDesign(TextView owner, TextView part, std::size_t offset, TextView reason);

// UTF-16, as newer versions keep their texts; half a unit at the end is left out.
Text textOfUtf16(std::span<const std::uint8_t> bytes);

class DesignBytes {
public:
    // `owner` must outlive the reader.
    DesignBytes(std::span<const std::uint8_t> bytes, TextView owner, TextView part = u"デザイン")
        : bytes_(bytes, 0), owner_(owner), part_(part) {}

    std::size_t offset() const { return at_; }
    bool atEnd() const { return at_ == bytes_.size(); }
    TextView owner() const { return owner_; }
    [[noreturn]] void fail(std::size_t offset, TextView reason) const {
        failDamagedDesign(owner_, part_, offset, reason);
    }

    std::uint8_t u8() { return bytes_.u8(advance(1)); }
    std::uint16_t u16() { return bytes_.u16(advance(2)); }
    std::uint32_t u32() { return bytes_.u32(advance(4)); }
    std::span<const std::uint8_t> take(std::size_t length) {
        return bytes_.part(advance(length), length).bytes();
    }
    Bytes copy(std::size_t length) {
        const auto bytes = take(length);
        return {bytes.begin(), bytes.end()};
    }
    // The bytes before the next zero, which is passed over.
    std::span<const std::uint8_t> zeroTerminated();
    // The same of UTF-16, where the zero is a unit.
    std::span<const std::uint8_t> zeroTerminatedUtf16();

private:
    std::size_t advance(std::size_t length) {
        if (length > bytes_.size() - at_) {
            fail(at_, u"データが途切れています");
        }
        const std::size_t start = at_;
        at_ += length;
        return start;
    }

    jet::ByteSpan bytes_;
    TextView owner_, part_;
    std::size_t at_ = 0; // never beyond the end
};

} // namespace relvane::access
