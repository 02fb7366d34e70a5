// One row of the table MSysQueries as the file holds it. A saved query is the list of its rows in the order of
// `attribute` and, within one attribute, of `order`.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/text.h"
#include "platform/value.h"

namespace relvane::jet {

struct QueryRow {
    int attribute =
        0;       // what the row speaks of: 1 kind, 2 parameter, 3 options, 5 source, 6 column, 7 join ...
    Bytes order; // a big-endian number counting from 1 within one attribute
    std::optional<Text> name1, name2, expression;
    std::optional<int> flag;
    std::optional<std::int32_t> size; // Jet 4 alone: characters of a text parameter
};

} // namespace relvane::jet
