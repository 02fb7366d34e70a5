// Counts the target's objects and fills the lists of the main window with their names, kind by kind. A kind without
// objects gets the done flag that keeps its panel closed.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

void countModules(AnalysisContext& context);

// Tables, queries, forms, reports, macros in this order.
void fillLists(AnalysisContext& context);

// What the walks over tables and queries leave out: the system's own tables by their name; queries of no known type
// and those that Access keeps behind forms and reports.
bool isSystemTable(TextView tableName);
bool isSystemQuery(const dao::QueryDef& query);

} // namespace relvane
