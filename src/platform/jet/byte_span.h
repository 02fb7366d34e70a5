// The only way into the bytes of a file: a span whose every read is checked. A read beyond its end is error 3049
// with the page and what was being read, so a reader above it never tests a length by itself.
#pragma once

#include <bit>
#include <cstdint>
#include <span>

#include "platform/runtime_error.h"
#include "platform/value.h"

namespace relvane::jet {

// Error 3049 for `page` of the file; `what` names the record or field that makes no sense.
[[noreturn]] void failDamaged(std::uint32_t page, TextView what);

class ByteSpan {
public:
    ByteSpan() = default;
    // `page` is where the bytes come from, for the error alone.
    ByteSpan(std::span<const std::uint8_t> bytes, std::uint32_t page) : bytes_(bytes), page_(page) {}

    std::size_t size() const { return bytes_.size(); }
    std::uint32_t page() const { return page_; }
    std::span<const std::uint8_t> bytes() const { return bytes_; }
    Bytes copy() const { return {bytes_.begin(), bytes_.end()}; }

    std::uint8_t u8(std::size_t at) const { return checked(at, 1)[0]; }
    std::uint16_t u16(std::size_t at) const { return static_cast<std::uint16_t>(number(at, 2)); }
    std::uint32_t u24(std::size_t at) const { return static_cast<std::uint32_t>(number(at, 3)); }
    std::uint32_t u32(std::size_t at) const { return static_cast<std::uint32_t>(number(at, 4)); }
    std::uint64_t u64(std::size_t at) const { return number(at, 8); }
    std::int16_t i16(std::size_t at) const { return static_cast<std::int16_t>(u16(at)); }
    std::int32_t i32(std::size_t at) const { return static_cast<std::int32_t>(u32(at)); }
    std::int64_t i64(std::size_t at) const { return static_cast<std::int64_t>(u64(at)); }
    float f32(std::size_t at) const { return std::bit_cast<float>(u32(at)); }
    double f64(std::size_t at) const { return std::bit_cast<double>(u64(at)); }
    // A count or length of 1, 2 or 4 bytes, as the version of the file has it.
    std::uint32_t count(std::size_t at, std::size_t bytes) const {
        return static_cast<std::uint32_t>(number(at, bytes));
    }
    // Index pages alone keep their numbers with the high byte first.
    std::uint32_t bigEndian(std::size_t at, std::size_t bytes) const {
        std::uint32_t value = 0;
        for (const std::uint8_t byte : checked(at, bytes)) {
            value = value << 8 | byte;
        }
        return value;
    }

    ByteSpan part(std::size_t at, std::size_t length) const { return {checked(at, length), page_}; }
    ByteSpan from(std::size_t at) const { return part(at, at > size() ? 0 : size() - at); }

    // Error 3049 for the page of these bytes unless `holds`.
    void require(bool holds, TextView what) const {
        if (!holds) {
            failDamaged(page_, what);
        }
    }

private:
    std::span<const std::uint8_t> checked(std::size_t at, std::size_t length) const {
        if (at > bytes_.size() || length > bytes_.size() - at) {
            failDamaged(page_, u"データが途切れています");
        }
        return bytes_.subspan(at, length);
    }
    std::uint64_t number(std::size_t at, std::size_t bytes) const {
        std::uint64_t value = 0;
        unsigned shift = 0;
        for (const std::uint8_t byte : checked(at, bytes)) {
            value |= static_cast<std::uint64_t>(byte) << shift;
            shift += 8;
        }
        return value;
    }

    std::span<const std::uint8_t> bytes_;
    std::uint32_t page_ = 0;
};

// A row somewhere in the file.
struct RowPointer {
    std::uint32_t page = 0;
    std::uint8_t row = 0;
    auto operator<=>(const RowPointer&) const = default;

    // Stored as the row in the low byte and the page in the three others.
    static RowPointer read(const ByteSpan& bytes, std::size_t at) {
        return {bytes.u24(at + 1), bytes.u8(at)};
    }
};

} // namespace relvane::jet
