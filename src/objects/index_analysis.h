// The indexes of the target's tables.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// Writes the indexes of all tables, whatever the choice of scope says, into T_RvIndex, open as WorkRs3: a row for each
// index with its first field, and a row for each further field. A table without indexes counts for ObjectNo and gets
// no row. With `progress` 1 the main window's gauge follows the walk. Stopped by a broken link, behind a message box.
WalkEnd AnalyzeIndexes(AnalysisContext& context, const std::int16_t& linkFilter, std::int16_t progress);

} // namespace relvane
