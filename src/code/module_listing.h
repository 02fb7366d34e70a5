// The listing of the target's source, line by line, for printing and for the export as text.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// The panel's command: fills T_RvModule for the present option (1 forms, 2 reports, 3 modules, 4 all three) and shows
// the listing in one column or two. A failure is reported under its own place.
void cmdModule_Click(AnalysisContext& context);

// The analysis behind it.
AnalysisSpec moduleAnalysis(AnalysisContext& context);

// Lists CurModule through WorkRs1 (T_RvModule): every line but blank ones and those of Option. CurObjectKind is the
// digit of the kind. ProcNo and CurProcName go on from whatever was scanned before: the first line raises ProcNo when
// it belongs to a procedure of another name.
void ListModuleLines(AnalysisContext& context);

} // namespace relvane
