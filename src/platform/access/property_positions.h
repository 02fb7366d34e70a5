// The order in which the object model lists the properties of an object: Properties(0), Properties(1) ...
#pragma once

#include <vector>

#include "access/design_tree.h"

namespace relvane::access {

// The same type of control has lists of up to three lengths, by where the control stands.
enum class Arrangement {
    WithColumns, // detail section of a form: what is bound has its width, order and hiding in the datasheet too
    WithoutColumns, // other sections, reports
    InOptionGroup,  // a choice of an option group, whose value and tab stop are the group's
};
Arrangement arrangementOf(const DesignObject& object);

struct PropertyPlace {
    TextView name;   // empty where nobody knows which property it is
    bool isSupposed; // the name is not certain
    bool showsValue; // otherwise an empty text stands there, whatever the property's value is
};

// Place by place; nothing for a type whose order is not known.
std::vector<PropertyPlace> propertyPlaces(DesignType type, Arrangement arrangement);

} // namespace relvane::access
