// A macro as its window shows it, as database_spec.h has the rest of a database.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/text.h"

namespace relvane::samples {

struct MacroRowSpec {
    Text name{}, condition{};
    std::uint16_t action = 0; // its number, 0 for none
    // Every argument is a text: -1 for yes, an enumeration by its number. Empty ones are blank; at most 10.
    std::vector<Text> arguments{};
    Text comment{};
    std::uint16_t emptyRowsBefore = 0;
};

struct MacroSpec {
    std::vector<MacroRowSpec> rows{};
    // Columns that the window shows; without a value those that some row fills.
    std::optional<bool> showsNames{}, showsConditions{};
    // Early files have no version: false leaves it out.
    bool hasVersion = true;
    std::size_t lostBytes = 0; // damage: missing at the end of the sheet
};

} // namespace relvane::samples
