// The selection of a target: the file is opened by Access and by DAO, its start-up properties are read and
// neutralised (in memory: the file is never written), the lists are filled and the panels opened.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// Asks for the file. Cancelling after an earlier selection leaves no target open.
void m1a_Click(AnalysisContext& context);

// Takes a recent file, index 0 to 3.
void RecentFile_Click(AnalysisContext& context, int index);

// Takes the file at that path: one that was dropped onto the window.
void selectFile(AnalysisContext& context, const Text& path);

// Opens the selected file afresh, in Access and by DAO.
void reopenTarget(AnalysisContext& context);

} // namespace relvane
