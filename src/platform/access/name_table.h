// Finds a name in a list without regard to case, in one step however long the list is. The names are plain ASCII, as
// those of properties are.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/text.h"

namespace relvane::access {

class NameTable {
public:
    NameTable() = default;
    // The names must outlive the table. Of equal ones the first counts; empty ones are not found.
    explicit NameTable(std::span<const TextView> names);

    std::optional<std::size_t> find(TextView name) const; // the place in the list

private:
    struct Slot {
        TextView name; // empty: free
        std::size_t place = 0;
    };

    std::size_t slotOf(TextView name) const; // that of the name, or the free one where it would stand

    std::vector<Slot> slots_; // a power of two, at least half of them free
};

} // namespace relvane::access
