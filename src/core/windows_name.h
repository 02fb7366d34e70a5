// The name of the operating system, as the program asks for it at its start.
#pragma once

#include "platform/system_services.h"

namespace relvane {

inline constexpr TextView unknownWindows = u"ERROR";

// "Win95", "Win98", "WinMe"; "ERROR" for every other system, all of Windows NT included.
Text GetWindowsName(const SystemVersion& version);

} // namespace relvane
