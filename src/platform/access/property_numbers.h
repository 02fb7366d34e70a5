// The numbers of properties. Access 2002 and later write beside each stored value a number that tells the property, the
// same in all types of objects and all versions; the place beside it is the one that Access 97 knows, or one behind all
// of those. One table has them all, with the types that a later version gave the property to.
#pragma once

#include <span>

#include "access/design_properties.h"

namespace relvane::access {

// A set of types of objects.
class TypeSet {
public:
    constexpr TypeSet() = default;
    constexpr TypeSet(DesignType type) : bits_(bitOf(type)) {}

    constexpr bool contains(DesignType type) const { return (bits_ & bitOf(type)) != 0; }
    constexpr TypeSet with(TypeSet other) const {
        other.bits_ |= bits_;
        return other;
    }

private:
    static constexpr std::uint64_t bitOf(DesignType type) {
        const auto place = static_cast<unsigned>(type) - static_cast<unsigned>(DesignType::Label);
        return place < 64 ? std::uint64_t{1} << place : 0;
    }

    std::uint64_t bits_ = 0;
};

constexpr TypeSet operator|(TypeSet one, TypeSet other) {
    return one.with(other);
}
constexpr TypeSet operator|(DesignType one, DesignType other) {
    return TypeSet(one).with(other);
}

struct NumberedProperty {
    PropertyNumber number;
    ValueKind kind;
    TextView name;
    TextView modelName;
    // The types that have it beside those with a place for it in the compact grammar, and what is built in there.
    TypeSet laterTypes;
    BuiltIn builtIn;
    Confidence confidence;

    constexpr NumberedProperty(std::uint16_t code, ValueKind valueKind, TextView bothNames,
                               TypeSet types = {}, BuiltIn value = BuiltIn::Kind::Unknown,
                               Confidence sureness = Confidence::Confirmed)
        : NumberedProperty(code, valueKind, bothNames, bothNames, types, value, sureness) {}
    constexpr NumberedProperty(std::uint16_t code, ValueKind valueKind, TextView exportName, TextView inModel,
                               TypeSet types = {}, BuiltIn value = BuiltIn::Kind::Unknown,
                               Confidence sureness = Confidence::Confirmed)
        : number(static_cast<PropertyNumber>(code)),
          kind(valueKind),
          name(exportName),
          modelName(inModel),
          laterTypes(types),
          builtIn(value),
          confidence(sureness) {}

    PropertyFact fact() const; // without a place
};

// Rising by number. A number stands twice where types differ in what is built in; its names are the same then.
std::span<const NumberedProperty> numberedProperties();

} // namespace relvane::access
