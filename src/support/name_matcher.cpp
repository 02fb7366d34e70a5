#include "support/name_matcher.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace relvane {

NameMatcher::NameMatcher(std::vector<Text> names) : names_(std::move(names)) {
    std::vector<std::size_t> sorted(names_.size());
    std::iota(sorted.begin(), sorted.end(), std::size_t{0});
    std::ranges::stable_sort(sorted, {},
                             [this](std::size_t number) -> const Text& { return names_[number]; });
    for (const std::size_t number : sorted) {
        const Text& name = names_[number];
        if (!name.empty() && (entries_.empty() || entries_.back().name != name)) {
            entries_.push_back({.name = name, .numbers = {}});
        }
        if (!name.empty()) {
            entries_.back().numbers.push_back(number);
        }
    }
    // What begins a name stands ahead of it, and all between the two begin with it likewise.
    for (std::size_t i = 1; i < entries_.size(); ++i) {
        const Entry* before = &entries_[i - 1];
        while (before != nullptr && !entries_[i].name.starts_with(before->name)) {
            before = before->beginning;
        }
        entries_[i].beginning = before;
    }
}

// The longest entry that `text` begins with, nullptr without one: the last one that does not stand behind the text, or
// what that begins with.
const NameMatcher::Entry* NameMatcher::longestAt(TextView text) const {
    const auto behind = std::ranges::upper_bound(entries_, text, {}, &Entry::name);
    const Entry* entry = behind == entries_.begin() ? nullptr : &*std::prev(behind);
    while (entry != nullptr && !text.starts_with(entry->name)) {
        entry = entry->beginning;
    }
    return entry;
}

std::vector<std::size_t> NameMatcher::mentioned(TextView text) const {
    std::vector<std::size_t> found;
    for (std::size_t at = text.find_first_of(u". "); at != TextView::npos;
         at = text.find_first_of(u". ", at)) {
        ++at;
        for (const Entry* entry = longestAt(text.substr(at)); entry != nullptr; entry = entry->beginning) {
            if (text.find(entry->name) == at) {
                found.insert(found.end(), entry->numbers.begin(), entry->numbers.end());
            }
        }
    }
    std::ranges::sort(found);
    return found;
}

} // namespace relvane
