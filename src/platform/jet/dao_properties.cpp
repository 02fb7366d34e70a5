#include "jet/dao_properties.h"

#include <algorithm>

namespace relvane::jet {

dao::Property builtIn(TextView name, int type, Value value) {
    return {.Name = Text(name), .value = std::move(value), .Type = type, .builtIn = true};
}

dao::Properties joinProperties(std::vector<dao::Property> properties,
                               const std::vector<StoredProperty>* stored) {
    if (stored == nullptr) {
        return dao::Properties(std::move(properties));
    }
    const std::size_t builtIns = properties.size();
    for (const StoredProperty& property : *stored) {
        const bool known = std::any_of(
            properties.begin(), properties.begin() + static_cast<std::ptrdiff_t>(builtIns),
            [&](const dao::Property& other) { return equalsIgnoringCase(other.Name, property.name); });
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
