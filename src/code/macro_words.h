// What the list of macros makes of the words of a converted macro: a number of each method, a label of each constant.
#pragma once

#include <cstdint>

#include "platform/text.h"

namespace relvane {

inline constexpr std::int16_t unknownMacroAction = 99;

// The number of the action behind "DoCmd.", by the first five characters of the method as they are written; the blank
// behind a shorter name is one of them. Its words stand in RvMacroActions.
std::int16_t GetMacroActionNo(TextView prefix);

// The label of a constant, written in any case; every other text as it is.
Text GetMacroConstantLabel(TextView text);

} // namespace relvane
