// The grammar of a stored design: bytes to a tree of objects and values, without knowing what any of them means. It
// is the same for every type of object, so that types and properties that nobody has named pass through it.
#pragma once

#include <span>
#include <vector>

#include "access/design_types.h"
#include "platform/value.h"

namespace relvane::access {

// A value as stored. Bytes, words and longs are in `number` (a byte unsigned, the others signed), texts and
// binaries in `bytes`; a flag has neither.
struct StoredValue {
    PropertyId id = 0;
    std::int32_t number = 0;
    Bytes bytes;
};

struct StoredObject {
    DesignType type{};
    std::size_t offset = 0;          // of its first byte in the stream
    std::vector<StoredValue> values; // ids strictly rising
    std::vector<StoredObject> children;

    const StoredValue* find(PropertyId id) const; // nullptr when it stores none
};

struct StoredDesign {
    design_format::Version version;
    StoredObject root; // a form or a report
};

// No design goes deeper than a few levels. The limit keeps a hostile one from exhausting the stack.
constexpr std::size_t deepestLevel = 256; // the root is level 1

// Reads a stream to its last byte. `owner` is what an error names: "フォーム \"Orders\"".
// Error 3049 with the owner, the offset and the reason when anything does not fit, bytes behind the root's end
// included; 3343 when the version at the head is none of design_format::versions.
StoredDesign readDesignStream(std::span<const std::uint8_t> stream, TextView owner);

} // namespace relvane::access
