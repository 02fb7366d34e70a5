#include "objects/round_half_up.h"

#include <cmath>

#include "platform/runtime_error.h"

namespace relvane {
namespace {

constexpr int currencyDigits = 4;
constexpr double unitsOfOne = 10000.0;
constexpr double twipsOfCentimetre = 567.0;
constexpr int measureDigits = 3;

// The largest power of ten that 64 bits hold; a place above it has no value but 0.
constexpr int largestPower = 18;

constexpr std::int64_t powerOfTen(int exponent) {
    std::int64_t power = 1;
    while (exponent-- > 0) {
        power *= 10;
    }
    return power;
}

} // namespace

Currency toCurrency(double number) {
    const double units = std::nearbyint(number * unitsOfOne);
    if (!(std::fabs(units) < 9223372036854775807.0)) {
        throw RunTimeError(ErrorNumber::Overflow);
    }
    return {static_cast<std::int64_t>(units)};
}

Currency RoundHalfUp(Currency value, int digits) {
    if (digits >= currencyDigits) {
        return value; // there is nothing behind that place
    }
    if (digits < currencyDigits - largestPower) {
        return {};
    }
    const std::int64_t place = powerOfTen(currencyDigits - digits);
    std::int64_t whole = value.tenThousandths / place;
    std::int64_t rest = value.tenThousandths % place;
    if (rest < 0) {
        rest += place;
        --whole;
    }
    if (rest >= place / 2) {
        ++whole;
    }
    std::int64_t rounded = 0;
    if (__builtin_mul_overflow(whole, place, &rounded)) {
        throw RunTimeError(ErrorNumber::Overflow);
    }
    return {rounded};
}

Text centimetres(const Value& twips) {
    return toText(Value(RoundHalfUp(toCurrency(toDouble(twips) / twipsOfCentimetre), measureDigits)));
}

} // namespace relvane
