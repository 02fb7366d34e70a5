// The one function that the module of the spreadsheet service exports.
#pragma once

#include "spreadsheet/service.h"

namespace relvane::spreadsheet {

using ModuleEntry = std::shared_ptr<Application>(const ServiceOptions& options);
inline constexpr const char* moduleEntryName = "relvaneNewSpreadsheet";

} // namespace relvane::spreadsheet
