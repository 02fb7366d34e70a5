// The list of all objects of the target with their dates and descriptions, and the properties of the database itself.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// The panel's command: fills T_RvObject and T_DataBase for the present option (1 tables to 6 modules, 7 all) and shows
// the list. It handles no errors: one ends the program.
void cmdObject_Click(AnalysisContext& context);

// The analysis behind it.
AnalysisSpec objectAnalysis(AnalysisContext& context);

// One kind each, into WorkRs1 on T_RvObject, counting ObjectNo on.
void AddTableObjects(AnalysisContext& context);
void AddQueryObjects(AnalysisContext& context);
void AddFormObjects(AnalysisContext& context);
void AddReportObjects(AnalysisContext& context);
void AddMacroObjects(AnalysisContext& context);
void AddModuleObjects(AnalysisContext& context);

// All six kinds into WorkRs2 on T_RvSaveObject, counting ObjectNo on: what a saved analysis remembers for a later
// comparison.
void AddSavedObjects(AnalysisContext& context);

// Copies Class, ObjectName and DateUpdate of each row, from the cursor's present row to its end.
void CopySavedObjects(Recordset& from, Recordset& to);

} // namespace relvane
