// Values as text boxes show them, by the property Format and the settings of a Japanese Windows.
#pragma once

#include "platform/value.h"

namespace relvane::formview {

constexpr int automaticDecimals = 255; // DecimalPlaces

// `format` is one of the names (in English, as designs store them: "Short Date", "Currency", "Yes/No" ...), or a
// pattern of digits, letters of a date or places of a text. What a format cannot say of a value is left as it is. Null
// and data are empty, but for a pattern that has a text for Null.
Text formattedValue(const Value& value, TextView format, int decimals = automaticDecimals);

} // namespace relvane::formview
