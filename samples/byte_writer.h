// Bytes put together in the file's order: little-endian integers, IEEE numbers as their bits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/value.h"

namespace relvane::samples {

// The low `count` bytes of `number` at `place`, lowest first.
inline void putAt(std::span<std::uint8_t> bytes, std::size_t place, std::uint64_t number, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        bytes[place + i] = static_cast<std::uint8_t>(number >> (8 * i));
    }
}

class ByteWriter {
public:
    void u8(std::uint64_t number) { put(number, 1); }
    void u16(std::uint64_t number) { put(number, 2); }
    void u32(std::uint64_t number) { put(number, 4); }
    void u64(std::uint64_t number) { put(number, 8); }
    void bytes(std::span<const std::uint8_t> more) { bytes_.insert(bytes_.end(), more.begin(), more.end()); }
    void text(std::string_view more) { bytes_.insert(bytes_.end(), more.begin(), more.end()); }
    void zeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }

    std::size_t size() const { return bytes_.size(); }
    Bytes& data() { return bytes_; }
    const Bytes& data() const { return bytes_; }

private:
    void put(std::uint64_t number, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            bytes_.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
        }
    }

    Bytes bytes_;
};

} // namespace relvane::samples
