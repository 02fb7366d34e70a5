// The cover page and its two labels.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// Writes the cover texts of the main window and shows the report: 1 the page, 2 and 3 the labels. Without a date in
// its box nothing is written.
void cmdHyousi_Click(AnalysisContext& context, int index);

} // namespace relvane
