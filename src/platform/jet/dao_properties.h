// Properties as DAO lists them: the members of the object's class first, what is stored in the file behind them.
#pragma once

#include <initializer_list>
#include <vector>

#include "jet/property_blob.h"
#include "platform/dao.h"

namespace relvane::jet {

// A member of the object's class on its way into a list. A braced list hands out its elements as constants; the
// value is mutable so that it is moved on from there: a database has a hundred thousand of them.
struct BuiltInProperty { // `name` is a literal
    TextView name;
    int type;
    mutable Value value;
};
inline BuiltInProperty builtIn(TextView name, int type, Value value) {
    return {name, type, std::move(value)};
}

// A stored property that a built-in one answers for already is left out; the others keep order and spelling.
// Takes the values out of `builtIns`.
dao::Properties joinProperties(std::initializer_list<BuiltInProperty> builtIns,
                               const std::vector<StoredProperty>* stored);

// The value of a stored property; `fallback` when it is absent or of another kind. `stored` may be null.
Text storedText(const std::vector<StoredProperty>* stored, TextView name);
bool storedFlag(const std::vector<StoredProperty>* stored, TextView name, bool fallback);
std::int32_t storedNumber(const std::vector<StoredProperty>* stored, TextView name, std::int32_t fallback);

} // namespace relvane::jet
