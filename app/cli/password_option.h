// The option --password-file of the commands that open a target.
#pragma once

#include <optional>

#include "arguments.h"
#include "platform/text.h"

namespace relvane::cli {

// Not the password itself: every program of the machine can read the words of a command line.
inline constexpr Option passwordOption{"--password-file", "FILE",
                                       "the first line of FILE (UTF-8) is the password of the target"};

// Nothing without the option. Throws UsageError for a file that cannot be read, or is not UTF-8.
std::optional<Text> givenPassword(const Arguments& arguments);

} // namespace relvane::cli
