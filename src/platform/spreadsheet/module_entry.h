// The one function that the module of the spreadsheet service exports.
#pragma once

#include "spreadsheet/service.h"

namespace relvane::spreadsheet {

using ModuleEntry = Application*(const ServiceOptions& options); // the caller owns it
inline constexpr const char* moduleEntryName = "relvaneNewSpreadsheet";

} // namespace relvane::spreadsheet
