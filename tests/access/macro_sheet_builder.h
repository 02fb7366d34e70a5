// Hand-made macro sheets: one record behind the other, as Access stores them.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "design_bytes_builder.h"
#include "platform/value.h"

namespace relvane::access::test {

// The fourteen slots of a record, in stored order.
enum SheetSlot : std::size_t { Reserved, Comment, Condition, Name, FirstArgument, SlotCount = 14 };

class SheetBytes {
public:
    using Texts = std::map<std::size_t, std::string>; // by slot

    SheetBytes& record(std::uint16_t first, std::uint16_t row, const Texts& texts = {}) {
        return record(first, row, texts, 1);
    }
    // With texts in UTF-16, as newer versions write rows.
    SheetBytes& record16(std::uint16_t first, std::uint16_t row, const std::map<std::size_t, Text>& texts) {
        Texts bytes;
        for (const auto& [slot, text] : texts) {
            const Bytes stored = WideBytes::utf16(text);
            bytes[slot] = std::string(stored.begin(), stored.end());
        }
        return record(first, row, bytes, 2);
    }
    SheetBytes& header(std::uint16_t columns = 0) { return record(columns, 0); }
    SheetBytes& header16(std::uint16_t columns = 0) {
        return record(columns, 0, {{FirstArgument, "3"}, {FirstArgument + 1, "3"}});
    }

    const Bytes& bytes() const { return bytes_; }

private:
    // Strings in the order in which Access writes them: name, comment, condition, arguments; each with that many zeros
    // behind it.
    SheetBytes& record(std::uint16_t first, std::uint16_t row, const Texts& texts, std::size_t zeros) {
        std::array<std::uint16_t, SlotCount> slots;
        slots.fill(0xFFFF);
        std::string area;
        const auto place = [&](std::size_t slot) {
            if (const auto text = texts.find(slot); text != texts.end()) {
                slots[slot] = static_cast<std::uint16_t>(area.size());
                area += text->second;
                area.append(zeros, '\0');
            }
        };
        for (const std::size_t slot : {Name, Comment, Condition}) {
            place(slot);
        }
        place(Reserved);
        for (std::size_t slot = FirstArgument; slot < SlotCount; ++slot) {
            place(slot);
        }
        u16(first).u16(row);
        for (const std::uint16_t slot : slots) {
            u16(slot);
        }
        u16(static_cast<std::uint16_t>(area.size()));
        bytes_.insert(bytes_.end(), area.begin(), area.end());
        return u16(0);
    }
    SheetBytes& u16(std::uint16_t number) {
        bytes_.push_back(static_cast<std::uint8_t>(number & 0xFF));
        bytes_.push_back(static_cast<std::uint8_t>(number >> 8));
        return *this;
    }

    Bytes bytes_;
};

} // namespace relvane::access::test
