// One value of a field or a property, as the data access and automation interfaces hand it over.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

#include "platform/text.h"

namespace relvane {

using Bytes = std::vector<std::uint8_t>;

struct Null {
    auto operator<=>(const Null&) const = default;
};

// Ten-thousandths of the unit, as Jet stores currency.
struct Currency {
    std::int64_t tenThousandths = 0;
    auto operator<=>(const Currency&) const = default;
};

// A number of up to 28 digits, kept as its shortest decimal text ("-12.5"): nothing here computes with it.
struct Decimal {
    Text digits;
    auto operator<=>(const Decimal&) const = default;
};

struct Guid {
    std::array<std::uint8_t, 16> bytes{}; // in stored order: the first three groups little-endian
    auto operator<=>(const Guid&) const = default;
};

// A moment in local time, in whole seconds. Jet keeps days since 1899-12-30 as a double.
struct DateTime {
    int year = 1899, month = 12, day = 30, hour = 0, minute = 0, second = 0;
    auto operator<=>(const DateTime&) const = default;

    // Rounded to the nearest second; nothing for NaN, infinities and days outside the years 100 to 9999.
    static std::optional<DateTime> fromOleDate(double days);
    // Reads "YYYY-MM-DD HH:MM:SS", the form of text().
    static std::optional<DateTime> fromText(TextView text);
    double toOleDate() const;
    Text text() const; // "YYYY-MM-DD HH:MM:SS"
};

// The integer alternative carries Byte, Integer, Long and the 64-bit integers of newer files alike.
using Value =
    std::variant<Null, bool, std::int64_t, float, double, Currency, Decimal, DateTime, Guid, Text, Bytes>;

// "Not empty" as the analyses ask it of a property: Null is neither empty nor not empty, a text counts by its
// length, and every other value is turned into text first, so that 0 and False are not empty.
bool isEmptyText(const Value& value);
bool isNotEmptyText(const Value& value);

// The text of a value: shortest decimal form with a point ("1.764", "0.5", "10"), "True" and "False", dates as
// DateTime::text, a GUID in braces; Null adds nothing. Bytes give error 13.
Text toText(const Value& value);

// Conversions with the platform's errors: 13 when the value has no such meaning, 6 when it does not fit.
bool toBoolean(const Value& value); // numbers: 0 is false; texts: "True", "False" in any case, or a number
std::int16_t toInteger(const Value& value);
std::int32_t toLong(const Value& value);
double toDouble(const Value& value); // texts: a decimal number, blanks around it allowed

} // namespace relvane
