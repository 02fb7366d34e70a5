// Properties as DAO lists them: the members of the object's class first, what is stored in the file behind them.
#pragma once

#include <vector>

#include "jet/property_blob.h"
#include "platform/dao.h"

namespace relvane::jet {

dao::Property builtIn(TextView name, int type, Value value);

// A stored property that a built-in one answers for already is left out; the others keep order and spelling.
dao::Properties joinProperties(std::vector<dao::Property> builtIn, const std::vector<StoredProperty>* stored);

// The value of a stored property; `fallback` when it is absent or of another kind. `stored` may be null.
Text storedText(const std::vector<StoredProperty>* stored, TextView name);
bool storedFlag(const std::vector<StoredProperty>* stored, TextView name, bool fallback);
std::int32_t storedNumber(const std::vector<StoredProperty>* stored, TextView name, std::int32_t fallback);

} // namespace relvane::jet
