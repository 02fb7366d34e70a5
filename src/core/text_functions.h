// The text functions of the language being analysed. Positions count from 1, in UTF-16 units; comparisons are exact;
// trimming removes the blank U+0020 alone. Negative lengths and positions below 1 are error 5.
#pragma once

#include <cstdint>

#include "platform/text.h"

namespace relvane {

// The first or last `length` characters; the whole text when it is shorter.
Text Left(TextView text, std::int64_t length);
Text Right(TextView text, std::int64_t length);

// `length` characters from `position`; fewer when the text ends first, none behind its end.
Text Mid(TextView text, std::int64_t position, std::int64_t length);
Text Mid(TextView text, std::int64_t position);

Text LTrim(TextView text);
Text RTrim(TextView text);
Text Trim(TextView text);

// The same without a copy: what is left of `text`, for as long as that lives.
TextView LTrimView(TextView text);
TextView RTrimView(TextView text);
TextView TrimView(TextView text);

// One character for one; those without a capital of one character stay.
Text UCase(TextView text);

// The position of the first `wanted` at or behind `start`; 0 when there is none. An empty `wanted` is found at
// `start`, unless the text ends before it.
std::int32_t InStr(std::int64_t start, TextView text, TextView wanted);
std::int32_t InStr(TextView text, TextView wanted);

// Whether `wanted` stands anywhere in it.
bool holds(TextView text, TextView wanted);

} // namespace relvane
