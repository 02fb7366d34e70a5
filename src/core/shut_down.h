// How the program leaves.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// The exit steps of the menu, of closing the main window and of fatal errors: the closing box, the target's start-up
// properties as they were, everything released, the screen saver on, the settings written. Each step runs whatever
// became of the one before, so that a half-open state can leave. Throws ProgramEnd at the end.
void m1z_Click(AnalysisContext& context);

} // namespace relvane
