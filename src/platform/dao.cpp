#include "platform/dao.h"

#include <algorithm>

namespace relvane::dao {

const Property& Properties::Item(int position) const {
    if (position < 0 || position >= Count()) {
        throw RunTimeError(ErrorNumber::ItemNotInCollection);
    }
    return properties_[static_cast<std::size_t>(position)];
}

const Property* Properties::find(TextView name) const {
    const auto found = std::ranges::find_if(
        properties_, [&](const Property& property) { return equalsIgnoringCase(property.Name, name); });
    return found == properties_.end() ? nullptr : &*found;
}

const Value& Properties::operator()(TextView name) const {
    if (const Property* property = find(name)) {
        return property->value;
    }
    throw RunTimeError(ErrorNumber::PropertyNotFound, name);
}

void Properties::set(TextView name, Value value) {
    for (Property& property : properties_) {
        if (equalsIgnoringCase(property.Name, name)) {
            property.value = std::move(value);
            return;
        }
    }
    throw RunTimeError(ErrorNumber::PropertyNotFound, name);
}

} // namespace relvane::dao
