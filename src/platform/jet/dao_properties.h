// Properties as DAO lists them: the members of the object's class first, what is stored in the file behind them.
#pragma once

#include <algorithm>
#include <memory>
#include <span>
#include <type_traits>
#include <vector>

#include "jet/property_blob.h"
#include "platform/dao.h"

namespace relvane::jet {

// A member of a class whose objects list it among their properties.
template <class Object>
struct BuiltIn {
    TextView name; // a literal
    int type;
    Value (*value)(Object&);
};

// What the member function answers, for a row of a class's built-in properties.
template <auto member, class Object>
Value answerOf(Object& object) {
    if constexpr (std::is_same_v<decltype((object.*member)()), int>) {
        return std::int64_t{(object.*member)()};
    } else {
        return (object.*member)();
    }
}

// The properties of an object that outlives them: its built-in ones, and of the stored ones those that no built-in
// one answers for, in their order and spelling. `stored` may be null.
template <class Object>
class ObjectProperties : public dao::PropertySource {
public:
    ObjectProperties(Object& object, std::span<const BuiltIn<Object>> builtIns,
                     const std::vector<StoredProperty>* stored)
        : object_(object), builtIns_(builtIns) {
        const auto isBuiltIn = [&](const StoredProperty& property) {
            return std::ranges::any_of(builtIns, [&](const BuiltIn<Object>& builtIn) {
                return equalsIgnoringCase(builtIn.name, property.name);
            });
        };
        for (std::size_t i = 0; stored != nullptr && i < stored->size(); ++i) {
            if (!isBuiltIn((*stored)[i])) {
                stored_.push_back(&(*stored)[i]);
            }
        }
    }

    int Count() const override { return static_cast<int>(builtIns_.size() + stored_.size()); }
    TextView Name(int position) const override {
        const auto place = static_cast<std::size_t>(position);
        return place < builtIns_.size() ? builtIns_[place].name : stored_[place - builtIns_.size()]->name;
    }
    dao::Property Item(int position) const override {
        const auto place = static_cast<std::size_t>(position);
        if (place < builtIns_.size()) {
            const BuiltIn<Object>& builtIn = builtIns_[place];
            return {.Name = dao::PropertyName::ofLiteral(builtIn.name),
                    .value = builtIn.value(object_),
                    .Type = builtIn.type,
                    .builtIn = true};
        }
        const StoredProperty& stored = *stored_[place - builtIns_.size()];
        return {.Name = stored.name,
                .value = stored.value,
                .Type = stored.type,
                .needsDesignPermission = stored.needsDesignPermission};
    }

private:
    Object& object_;
    std::span<const BuiltIn<Object>> builtIns_;
    std::vector<const StoredProperty*> stored_;
};

// `builtIns` is a table that lives as long as the program.
template <class Object, std::size_t count>
dao::Properties propertiesOf(Object& object, const BuiltIn<Object> (&builtIns)[count],
                             const std::vector<StoredProperty>* stored) {
    return dao::Properties(std::make_shared<ObjectProperties<Object>>(object, builtIns, stored));
}

// The value of a stored property; `fallback` when it is absent or of another kind. `stored` may be null.
Text storedText(const std::vector<StoredProperty>* stored, TextView name);
bool storedFlag(const std::vector<StoredProperty>* stored, TextView name, bool fallback);
std::int32_t storedNumber(const std::vector<StoredProperty>* stored, TextView name, std::int32_t fallback);

} // namespace relvane::jet
