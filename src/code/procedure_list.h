// The list of the target's procedures: the declarations section, the API declarations and the procedures of each form,
// report and module with code; in the detailed list the declarations and calls among their lines too.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// The panel's command: fills T_RvProcName and T_RvDimCall for the present option (1 short, 2 detailed) and shows the
// list, in kana order when the box for it is ticked. A failure is reported under its own place.
void cmdProc_Click(AnalysisContext& context);

// The analysis behind it.
AnalysisSpec procedureAnalysis(AnalysisContext& context);

// Adds the rows of CurModule, which belongs to CurDocument and is object ObjectNo, through WorkRs1 (T_RvProcName) and
// WorkRs2 (T_RvDimCall). Lines are told apart by the words they hold, wherever these stand: a text or a comment behind
// the code that holds one makes its line a procedure's too.
void ScanProcedures(AnalysisContext& context);

} // namespace relvane
