// Which of many names a text mentions behind a point or a blank.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/text.h"

namespace relvane {

// Answers what a search for each name would, at the price of a few comparisons for each word of the text.
class NameMatcher {
public:
    // The names are numbered from 0. Some may be the same, and some may begin others.
    explicit NameMatcher(std::vector<Text> names);
    NameMatcher(const NameMatcher&) = delete;
    NameMatcher& operator=(const NameMatcher&) = delete;

    const std::vector<Text>& names() const { return names_; }

    // The numbers, ascending, of the names whose first occurrence in `text` stands right behind a "." or a blank: letter
    // by letter, and as a part of a longer word too. A later occurrence does not count, nor does an empty name.
    std::vector<std::size_t> mentioned(TextView text) const;

private:
    struct Entry {
        TextView name;
        std::vector<std::size_t> numbers; // of all that are called so
        const Entry* beginning = nullptr; // the longest other entry that this name begins with
    };

    const Entry* longestAt(TextView text) const;

    std::vector<Text> names_;
    std::vector<Entry> entries_; // in the order of their names
};

} // namespace relvane
