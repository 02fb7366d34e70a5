// The data type that an expression of a saved query gives.
#pragma once

#include <optional>

#include "platform/text.h"

namespace relvane::jet {

// Type codes of fields, as DAO numbers them.
namespace fieldType {
constexpr int Boolean = 1, Byte = 2, Integer = 3, Long = 4, Currency = 5, Single = 6, Double = 7, Date = 8,
              Binary = 9, Text = 10, Ole = 11, Memo = 12, Guid = 15, Decimal = 20;
}

// The size of a field of that type whose size is not said: 255 for a text.
std::int32_t sizeOfType(int type);

// What the names in an expression stand for.
class ExpressionScope {
public:
    virtual ~ExpressionScope() = default;
    // `table` is empty for a field named alone.
    virtual std::optional<int> typeOfField(TextView table, TextView field) = 0;
    // The parts of the name joined by "!".
    virtual std::optional<int> typeOfParameter(TextView name) = 0;
    // A subquery that stands for a value.
    virtual std::optional<int> typeOfSubquery(TextView statement) = 0;
};

// Text for what cannot be known, such as the value of a function of the application's own.
int typeOfExpression(TextView expression, ExpressionScope& scope);

} // namespace relvane::jet
