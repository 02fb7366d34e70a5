#include "access/name_table.h"

#include <algorithm>
#include <bit>

namespace relvane::access {
namespace {

constexpr char16_t capital(char16_t letter) {
    return letter >= u'a' && letter <= u'z' ? static_cast<char16_t>(letter - u'a' + u'A') : letter;
}

bool isSame(TextView left, TextView right) {
    return std::ranges::equal(left, right, {}, capital, capital);
}

// FNV-1a of the capitals.
std::size_t hashOf(TextView name) {
    std::uint32_t hash = 2166136261u;
    for (const char16_t letter : name) {
        hash = (hash ^ capital(letter)) * 16777619u;
    }
    return hash;
}

} // namespace

NameTable::NameTable(std::span<const TextView> names) : slots_(std::bit_ceil(2 * names.size() + 1)) {
    for (std::size_t place = 0; place < names.size(); ++place) {
        Slot& slot = slots_[slotOf(names[place])];
        if (slot.name.empty()) {
            slot = {names[place], place};
        }
    }
}

std::size_t NameTable::slotOf(TextView name) const {
    std::size_t at = hashOf(name) & (slots_.size() - 1);
    while (!slots_[at].name.empty() && !isSame(slots_[at].name, name)) {
        at = (at + 1) & (slots_.size() - 1);
    }
    return at;
}

std::optional<std::size_t> NameTable::find(TextView name) const {
    if (slots_.empty() || name.empty()) {
        return std::nullopt;
    }
    const Slot& slot = slots_[slotOf(name)];
    return slot.name.empty() ? std::nullopt : std::optional(slot.place);
}

} // namespace relvane::access
