// Rounding of money-like numbers, and the measures of designs with it.
#pragma once

#include "platform/value.h"

namespace relvane {

// The nearest currency value: four decimals, a half to the even one. Error 6 when it does not fit.
Currency toCurrency(double number);

// Adds half of the last wanted place and cuts downwards: halves rise, below zero too. `digits` counts places behind the
// point; 0 rounds to whole numbers, -2 to hundreds. Error 6 when the result does not fit.
Currency RoundHalfUp(Currency value, int digits);

// A length of `twips` in centimetres with three digits, as the shortest text: "1.764".
Text centimetres(const Value& twips);

} // namespace relvane
