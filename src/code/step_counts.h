// How many lines each procedure of the target has, and how many of them are comments, blank, or code.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// The panel's command: fills T_RvProcCount for the present option (1 forms, 2 reports, 3 modules, 4 all three) and
// shows the counts. A failure is reported under its own place.
void cmdModStep_Click(AnalysisContext& context);

// The analysis behind it.
AnalysisSpec stepAnalysis(AnalysisContext& context);

// Counts the lines of CurModule and writes a row through WorkRs1 (T_RvProcCount) where the procedure changes: the row
// of the one that has ended, so that the last one's counts run on into the next object. A row that is left over from
// the object before lowers ObjectNo, which stays lowered.
void CountModuleSteps(AnalysisContext& context);

} // namespace relvane
