// Hand-made design streams: bytes from hexadecimal digits and texts, in the order in which a stream has them.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/value.h"
#include "support/wide_bytes.h"

namespace relvane::access::test {

class StreamBytes {
public:
    // "96 00 fd", blanks ignored.
    StreamBytes& hex(std::string_view digits) {
        int half = -1;
        for (const char digit : digits) {
            if (digit == ' ') {
                continue;
            }
            const int value = digit <= '9' ? digit - '0' : digit - 'a' + 10;
            if (half < 0) {
                half = value;
            } else {
                bytes_.push_back(static_cast<std::uint8_t>(half * 16 + value));
                half = -1;
            }
        }
        return *this;
    }
    StreamBytes& text(std::string_view characters) {
        bytes_.insert(bytes_.end(), characters.begin(), characters.end());
        return *this;
    }
    // A property of the variable class with a short length.
    StreamBytes& property(std::uint8_t id, std::string_view characters) {
        bytes_.push_back(id);
        bytes_.push_back(static_cast<std::uint8_t>(characters.size()));
        return text(characters);
    }
    StreamBytes& filler(std::size_t count, std::uint8_t byte) {
        bytes_.insert(bytes_.end(), count, byte);
        return *this;
    }
    StreamBytes& raw(const Bytes& bytes) {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
        return *this;
    }

    const Bytes& bytes() const { return bytes_; }

private:
    Bytes bytes_;
};

using relvane::test::WideBytes;

constexpr std::string_view header97 = "11 00 11 00 00 00 00 00";

constexpr std::string_view header2000 = "13 00 13 00 00 00 00 00";

inline StreamBytes form97() {
    return StreamBytes().hex(header97).hex("96 00");
}

} // namespace relvane::access::test
