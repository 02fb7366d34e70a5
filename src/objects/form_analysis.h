// The forms of the target: their attributes and events, and the properties of their controls.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// The panel's command: fills T_RvFrmInfo and T_RvFrmItem for the present option (1 the short list, 2 the full one), for
// all forms or the one chosen in the list, and shows the list. A failure is reported under its own place.
void cmdForm_Click(AnalysisContext& context);

// The analysis behind it, of all forms or, with `scope` 2, of the chosen one.
AnalysisSpec formAnalysis(AnalysisContext& context, std::int16_t scope);

// One form, for callers that open it themselves: CurDesign and CurDesignName, T_RvFrmInfo as WorkRs1, T_RvFrmItem as
// WorkRs2. They count ObjectNo on.
void AnalyzeFormDetailed(AnalysisContext& context);
void AnalyzeFormSimple(AnalysisContext& context);

} // namespace relvane
