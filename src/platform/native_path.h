// Paths between the program's Text and the bytes the operating system wants.
#pragma once

#include <string>
#include <string_view>

#include "platform/text.h"

namespace relvane {

// The bytes of a path: UTF-8, where a byte that is no UTF-8 travels through Text as U+DC80 to U+DCFF and comes out
// unchanged. A backslash is a separator, unless a file of the name with the backslash exists.
std::string nativePath(TextView path);

// The inverse, for names that the operating system hands over.
Text textOfNativePath(std::string_view bytes);

} // namespace relvane
