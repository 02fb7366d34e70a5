// The operators and functions that expressions may use, with what they make of values.
#pragma once

#include <cstddef>
#include <span>

#include "platform/value.h"

namespace relvane::formview {

using Operands = std::span<const Value>;

struct Function {
    TextView name; // in capitals; of an operator its sign or word
    std::size_t fewest, most;
    Value (*compute)(Operands); // throws RunTimeError for operands that it cannot take
    enum class Nulls {
        Spread, // a Null among the operands makes Null
        Taken,
        Skipped // of a total: the operands are the values of all records, without those that are Null
    } nulls = Nulls::Spread;

    bool isTotal() const { return nulls == Nulls::Skipped; }
};

// Without regard to case; nullptr when there is none that takes so many.
const Function* findFunction(TextView name, std::size_t operands);
const Function* findOperator(TextView sign, std::size_t operands);

// Texts without regard to case, numbers by size; Null goes first.
int compareValues(const Value& left, const Value& right);

bool isNull(const Value& value);
bool isNumber(const Value& value); // true and false are -1 and 0
double numberOf(const Value& value);

} // namespace relvane::formview
