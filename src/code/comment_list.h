// The list of the comments that stand on lines of their own inside the procedures of the target.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// The command, which has no options and always runs: fills T_RvComment from forms, reports and modules and shows the
// list. A failure is reported under its own place.
void cmdComment_Click(AnalysisContext& context);

// The analysis behind it.
AnalysisSpec commentAnalysis(AnalysisContext& context);

// Writes the comments of CurModule through WorkRs1 (T_RvComment), procedure by procedure from its header on. ProcNo
// and CurProcName go on from whatever was scanned before: a first procedure of that name is passed over.
void CollectComments(AnalysisContext& context);

} // namespace relvane
