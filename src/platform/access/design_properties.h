// The properties that each kind of object of a design can store: one table per type, which reading and writing
// share. Types that keep the same properties at the same places share a table.
#pragma once

#include <cstdint>
#include <span>

#include "access/design_types.h"
#include "platform/value.h"

namespace relvane::access {

// Confirmed: the name was seen with this value outside the stream too, in a text export, in the code of the
// object, or under the number by which later versions identify the property. Inferred: the order of properties in
// text exports leaves this place alone. Guess: one of a few places.
enum class Confidence : std::uint8_t { Confirmed, Inferred, Guess };

// The value that stands when neither the object nor the default block of its type stores one.
struct BuiltIn {
    enum class Kind : std::uint8_t {
        Unknown, // there is one, but it has not been established
        None,    // there is none: data such as pictures, which is there or is not
        Stored,  // none, because every object (or its default block) stores its own
        Boolean,
        Number,
        Text,
    };
    Kind kind = Kind::Unknown;
    std::int32_t number = 0; // also 0 and 1 of Boolean
    TextView text{};

    constexpr BuiltIn(Kind without) : kind(without) {}
    constexpr BuiltIn(bool value) : kind(Kind::Boolean), number(value ? 1 : 0) {}
    constexpr BuiltIn(int value) : kind(Kind::Number), number(value) {}
    constexpr BuiltIn(const char16_t* value) : kind(Kind::Text), text(value) {}

    Value value() const; // Null for the first three kinds
};

constexpr PropertyId noPlace = 0xFFFF; // that the compact grammar has

struct PropertyFact {
    PropertyId id;      // noPlace for what later versions added
    ValueKind kind;     // Untold nowhere
    TextView name;      // as a text export writes it
    TextView modelName; // as the object model has it; empty for what the model does not show
    BuiltIn builtIn;
    Confidence confidence;
    int since; // the version of the stream that brought it; 17 is the first that is known here
    PropertyNumber number = PropertyNumber::Unstated;

    constexpr PropertyFact(PropertyId place, ValueKind kindOfValue, TextView bothNames, BuiltIn value,
                           Confidence sureness = Confidence::Confirmed, int version = 17)
        : PropertyFact(place, kindOfValue, bothNames, bothNames, value, sureness, version) {}
    constexpr PropertyFact(PropertyId place, ValueKind kindOfValue, TextView exportName, TextView nameInModel,
                           BuiltIn value, Confidence sureness = Confidence::Confirmed, int version = 17)
        : id(place),
          kind(kindOfValue),
          name(exportName),
          modelName(nameInModel),
          builtIn(value),
          confidence(sureness),
          since(version) {}
};

// Those with a place first, rising by it, then those that later versions added, rising by number; empty for an unknown
// type. They live as long as the program.
std::span<const PropertyFact> propertiesOf(DesignType type);

// Nullptr when the type has no such property. Names are looked up without regard to case, those of the object model
// first ("BorderStyle") and then those of the export ("OldBorderStyle").
const PropertyFact* findProperty(DesignType type, PropertyId id);
const PropertyFact* findProperty(DesignType type, PropertyNumber number);
const PropertyFact* findProperty(DesignType type, TextView name);

// What is known of a property whatever object it is met in: nullptr when nobody has named it.
const PropertyFact* findProperty(PropertyNumber number);
const PropertyFact* findProperty(TextView name);

} // namespace relvane::access
