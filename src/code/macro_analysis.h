// The list of macros. A macro has no source that could be read, so Access converts each to a module, which is scanned
// and deleted again: the one change that ever is made to the target, undone at once, and made in the application's
// memory alone.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// The panel's command: fills T_RvMacro, with the detailed option T_RvMacro2 too, and shows the list. A run for all
// macros is never spared; one for a chosen macro is when it was the last one chosen and the option is the same. A
// failure is reported under its own place, and leaves no converted module behind.
void cmdMacro_Click(AnalysisContext& context);

} // namespace relvane
