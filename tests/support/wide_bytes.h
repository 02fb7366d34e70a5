// Design streams of later versions made by hand, value by value.
#pragma once

#include "access/design_types.h"
#include "platform/value.h"

namespace relvane::test {

using access::DesignType;
namespace design_format = access::design_format;

// The wide grammar: each value with its place, its number, its kind and its length.
class WideBytes {
public:
    explicit WideBytes(std::uint16_t version = 20) { u16(version).u16(20).u32(0); }

    WideBytes& object(DesignType type) { return u16(static_cast<unsigned>(type)); }
    WideBytes& value(unsigned slot, unsigned number, design_format::WideKind kind, const Bytes& content) {
        u32(slot).u16(number).u32(static_cast<unsigned>(kind)).u32(0);
        u32(static_cast<unsigned>(content.size()));
        return raw(content);
    }
    WideBytes& flag(unsigned slot, unsigned number) {
        return value(slot, number, design_format::WideKind::Flag, {});
    }
    WideBytes& boolean(unsigned slot, unsigned number, std::uint8_t isSet) {
        return value(slot, number, design_format::WideKind::Flag, {isSet});
    }
    WideBytes& byte(unsigned slot, unsigned number, std::uint8_t byte) {
        return value(slot, number, design_format::WideKind::Byte, {byte});
    }
    WideBytes& word(unsigned slot, unsigned number, unsigned word) {
        return value(slot, number, design_format::WideKind::Word,
                     {static_cast<std::uint8_t>(word & 0xFF), static_cast<std::uint8_t>(word >> 8 & 0xFF)});
    }
    WideBytes& text(unsigned slot, unsigned number, TextView text) {
        return value(slot, number, design_format::WideKind::Text, utf16(text));
    }
    WideBytes& noChildren() { return u32(design_format::noChildren); }
    WideBytes& oneChild() { return u32(design_format::oneChild); }
    WideBytes& children(unsigned count) { return u32(design_format::manyChildren).u16(count); }

    WideBytes& u16(unsigned number) {
        bytes_.push_back(static_cast<std::uint8_t>(number & 0xFF));
        bytes_.push_back(static_cast<std::uint8_t>(number >> 8 & 0xFF));
        return *this;
    }
    WideBytes& u32(unsigned number) { return u16(number & 0xFFFF).u16(number >> 16); }
    WideBytes& raw(const Bytes& bytes) {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
        return *this;
    }
    static Bytes utf16(TextView text) {
        Bytes bytes;
        for (const char16_t unit : text) {
            bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
            bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
        }
        return bytes;
    }

    const Bytes& bytes() const { return bytes_; }

private:
    Bytes bytes_;
};

} // namespace relvane::test
