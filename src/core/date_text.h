// The date test of the platform: texts that a person in Japan writes as a date.
#pragma once

#include <optional>

#include "platform/value.h"

namespace relvane {

// Year, month and day with "/", "-", "." or 年月日; two-digit years (30 to 99 are 19xx); month and day alone in the
// year of `today`; years of an era by its letter or name (M T S H R, 明治 to 令和); a time of day behind the date or
// alone (then on 1899-12-30), with AM, PM, 午前 or 午後. Full-width letters and digits count as their narrow forms.
// Nothing when the text is no date.
std::optional<DateTime> dateOf(TextView text, const DateTime& today);

} // namespace relvane
