// The design of a form or report, as database_spec.h has the rest of a database: what every object of it sets, in the
// order in which it is stored. See design_writer.h for what becomes of it.
#pragma once

#include <vector>

#include "access/design_types.h"
#include "platform/value.h"

namespace relvane::samples {

using access::DesignType;

// One property by its name, that of the object model or of a text export. A flag is a bool, a number an int64_t, data
// are Bytes.
struct DesignPropertySpec {
    Text name{};
    Value value{};
};

// The root, a default block, a group level, a section or a control. Children of the root are default blocks, then
// group levels, then sections as on the screen; those of a section its controls; those of a control its attached
// label, its choices, its pages or what stands on a page.
struct DesignObjectSpec {
    DesignType type{};
    std::vector<DesignPropertySpec> properties{}; // Name among them
    std::vector<DesignObjectSpec> children{};

    const Value* find(TextView name) const; // nullptr when it does not set it; the name as it was given
    Text name() const;                      // empty when it has none
};

struct DesignSpec {
    DesignObjectSpec root{};
    // What the list of names has behind the controls: fields of the record source without a control of their name.
    std::vector<Text> unusedFields{};
};

} // namespace relvane::samples
