// The reports of the target: their attributes and events, their grouping levels, and the properties of their controls.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// The panel's command: fills T_RvRepInfo, T_RvRepItem and T_RvRepGrp for the present option (1 the short list, 2 the
// full one), for all reports or the one chosen in the list, and shows the list. A failure is reported under its own
// place.
void cmdReport_Click(AnalysisContext& context);

// The analysis behind it, of all reports or, with `scope` 2, of the chosen one.
AnalysisSpec reportAnalysis(AnalysisContext& context, std::int16_t scope);

// One report, for callers that open it themselves: CurReport, which is CurDesign too, and CurDesignName; T_RvRepInfo as
// WorkRs1, T_RvRepItem as WorkRs2, T_RvRepGrp as WorkRs3. They count ObjectNo on.
void AnalyzeReportDetailed(AnalysisContext& context);
void AnalyzeReportSimple(AnalysisContext& context);

} // namespace relvane
