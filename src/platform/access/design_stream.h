// The grammars of a stored design: bytes to a tree of objects and values, without knowing what any of them means. They
// are the same for every type of object, so that types and properties that nobody has named pass through them.
#pragma once

#include <span>
#include <vector>

#include "access/design_types.h"
#include "platform/value.h"

namespace relvane::access {

// A value as stored. Booleans, bytes, words and longs are in `number` (0 and 1; a byte unsigned, the others signed), all
// other kinds in `bytes`; a flag has neither.
struct StoredValue {
    PropertyId id = 0;
    PropertyNumber property = PropertyNumber::Unstated; // which one it is, where the stream says so
    ValueKind kind = ValueKind::Flag;
    std::int32_t number = 0;
    Bytes bytes;
};

struct StoredObject {
    DesignType type{};
    std::size_t offset = 0; // of its first byte in the stream
    // In stored order. In the compact grammar ids rise strictly; in the wide one they need not, and a property may stand
    // there twice.
    std::vector<StoredValue> values;
    std::vector<StoredObject> children;

    const StoredValue* find(PropertyId id) const; // the first; nullptr when it stores none
};

struct StoredDesign {
    design_format::Version version;
    StoredObject root;    // a form or a report
    int addedVersion = 0; // of the stream that addLaterProperties took its values from; 0 without one
};

// No design goes deeper than a few levels. The limit keeps a hostile one from exhausting the stack.
constexpr std::size_t deepestLevel = 256; // the root is level 1

// Reads a stream to its last byte. `owner` is what an error names: "フォーム \"Orders\"", and `part` which of its streams.
// Error 3049 with the owner, the offset and the reason when anything does not fit, bytes behind the root's end
// included; 3343 when the version at the head is none of design_format::versions.
StoredDesign readDesignStream(std::span<const std::uint8_t> stream, TextView owner,
                              TextView part = u"デザイン");

// The format of Access 2000 has no room for what later versions add to a design: they keep it in a second stream, a tree
// of the same objects with the added values alone. They go behind those of the design. Where the trees differ, Access
// 2000 has changed the design since, and the additions are out of date: false then, and nothing changes.
bool addLaterProperties(StoredDesign& design, StoredDesign additions);

} // namespace relvane::access
