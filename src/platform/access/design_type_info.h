// The list of names that Access keeps beside a design, from which VBA knows its controls. Nothing is read from it that
// the design does not say: it serves to check the tree.
#pragma once

#include <span>
#include <vector>

#include "access/design_types.h"

namespace relvane::access {

class Design;

// Behind the texts of an ActiveX control stands where it comes from: the ids of its library and its class, and a version.
constexpr std::size_t libraryReferenceSize = 16 + 16 + 2 + 2;

struct TypeInfoEntry {
    std::uint8_t type = 0;      // DesignType, or 0xFF for a field of the record source without a control
    std::uint8_t classCode = 0; // the VBA class of the member
    std::uint32_t index = 0;
    Text prefix; // of its event procedures
    Text name;   // never empty: the prefix where no other name is stored

    bool isField() const { return type == 0xFF; }
};

struct TypeInfo {
    bool isReport = false;
    std::vector<TypeInfoEntry> entries;
};

// Reads the list to its last byte. `owner` is what an error names. Error 3049 when anything does not fit.
TypeInfo readTypeInfo(std::span<const std::uint8_t> bytes, int codePage, TextView owner);

// Whether sections and controls of the design are those of the list, with the same types, names and prefixes, in any
// order: later versions list what was added last behind the others. They need not be: Access itself leaves old names in
// the list of an object that was edited.
bool agrees(const TypeInfo& list, const Design& design);

} // namespace relvane::access
