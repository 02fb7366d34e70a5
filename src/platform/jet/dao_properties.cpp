#include "jet/dao_properties.h"

#include <algorithm>

namespace relvane::jet {

dao::Properties joinProperties(std::initializer_list<BuiltInProperty> builtIns,
                               const std::vector<StoredProperty>* stored) {
    std::vector<dao::Property> properties;
    properties.reserve(builtIns.size() + (stored == nullptr ? 0 : stored->size()));
    for (const BuiltInProperty& property : builtIns) {
        properties.push_back({.Name = dao::PropertyName::ofLiteral(property.name),
                              .value = std::move(property.value),
                              .Type = property.type,
                              .builtIn = true});
    }
    if (stored == nullptr) {
        return dao::Properties(std::move(properties));
    }
    for (const StoredProperty& property : *stored) {
        const bool known = std::ranges::any_of(builtIns, [&](const BuiltInProperty& other) {
            return equalsIgnoringCase(other.name, property.name);
        });
        if (!known) {
            properties.push_back({.Name = property.name,
                                  .value = property.value,
                                  .Type = property.type,
                                  .needsDesignPermission = property.needsDesignPermission});
        }
    }
    return dao::Properties(std::move(properties));
}

namespace {

const Value* storedValue(const std::vector<StoredProperty>* stored, TextView name) {
    const StoredProperty* property = stored == nullptr ? nullptr : findProperty(*stored, name);
    return property == nullptr ? nullptr : &property->value;
}

} // namespace

Text storedText(const std::vector<StoredProperty>* stored, TextView name) {
    const Value* value = storedValue(stored, name);
    return value == nullptr || std::holds_alternative<Bytes>(*value) ? Text() : toText(*value);
}

bool storedFlag(const std::vector<StoredProperty>* stored, TextView name, bool fallback) {
    if (const Value* value = storedValue(stored, name)) {
        skipErrors([&] { fallback = toBoolean(*value); });
    }
    return fallback;
}

std::int32_t storedNumber(const std::vector<StoredProperty>* stored, TextView name, std::int32_t fallback) {
    if (const Value* value = storedValue(stored, name)) {
        skipErrors([&] { fallback = toLong(*value); });
    }
    return fallback;
}

} // namespace relvane::jet
