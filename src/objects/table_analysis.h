// The tables of the target: their properties and their fields. The panel's command also makes the list of indexes.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// The panel's command: fills T_RvIndex (option 1), or T_RvTblInfo and T_RvTblItem (option 2 without, 3 with key marks
// and descriptions of fields), and shows the list. A failure is reported under its own place.
void cmdTable_Click(AnalysisContext& context);

// The analysis behind it. What it was made for is remembered with its rows.
AnalysisSpec tableAnalysis(AnalysisContext& context);

// The walk, for callers that open the tables themselves: T_RvTblItem as WorkRs1, T_RvTblInfo as WorkRs2. It counts
// ObjectNo on and writes rows for OptTable. With `scope` 2 only the table chosen in the list is analysed, which may be
// a linked one: `linkFilter` is set to 1 for that and stays so. With `progress` 1 the main window's gauge follows the
// walk. Stopped by a broken link, behind a message box.
WalkEnd AnalyzeTables(AnalysisContext& context, const std::int16_t& scope, std::int16_t& linkFilter,
                      std::int16_t progress);

} // namespace relvane
