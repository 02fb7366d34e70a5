// The census of the target's user interface: how many controls of each type its forms and reports hold.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// The panel's command: fills T_RvControlCount for the present option (1 forms, 2 reports, 3 both, forms first) and
// shows the list. A failure is reported under its own place.
void cmdControl_Click(AnalysisContext& context);

// The analysis behind it.
AnalysisSpec controlAnalysis(AnalysisContext& context);

// Sets all counters to 0.
void ClearControlCounters(AnalysisContext& context);

// Counts the controls of CurDesign into the counters, which the caller has cleared, and writes its row with
// CountedClass through WorkRs1 (T_RvControlCount). It counts ObjectNo on.
void CountControls(AnalysisContext& context);

} // namespace relvane
