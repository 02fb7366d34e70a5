// The recent files in the File menu, kept in the settings file from run to run.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// Reads the four keys into RecentList and shows or hides their menu entries.
void GetRecentFiles(AnalysisContext& context);

// Puts a path before the list as it was read at the start; a path that is already in it then stands twice. Nothing
// for an empty path.
void WriteRecentFiles(AnalysisContext& context, TextView path);

} // namespace relvane
