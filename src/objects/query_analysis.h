// The saved queries of the target: their properties, their text and the fields of their results.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// The panel's command: fills T_RvQeryInfo and, for the query lists, T_RvQeryItem for the present option (1 SQL list, 2
// query list, 3 query list with text and description) and shows the list. A failure is reported under its own place.
void cmdQuery_Click(AnalysisContext& context);

// The analysis behind it. What it was made for is remembered with its rows.
AnalysisSpec queryAnalysis(AnalysisContext& context);

// The walks, for callers that open the tables themselves: T_RvQeryInfo as WorkRs2, and T_RvQeryItem as WorkRs1 for the
// second. They count ObjectNo on and write rows for OptQuery. With `progress` 1 the main window's gauge follows them.

// The texts of all queries, whatever the choice of scope says.
void AnalyzeQuerySql(AnalysisContext& context, std::int16_t progress);

// Properties and fields, with `scope` 2 of the query chosen in the list alone.
void AnalyzeQueries(AnalysisContext& context, const std::int16_t& scope, std::int16_t progress);

} // namespace relvane
