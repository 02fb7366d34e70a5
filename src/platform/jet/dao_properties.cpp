#include "jet/dao_properties.h"

namespace relvane::jet {
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
