// The list of macros. A macro has no source that could be read, so Access converts each to a module, which is scanned
// and deleted again: the one change that ever is made to the target, undone at once, and made in the application's
// memory alone.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

// The panel's command: fills T_RvMacro, with the detailed option T_RvMacro2 too, and shows the list. A run for all
// macros is never spared; one for a chosen macro is when it was the last one chosen and the option is the same. A
// failure is reported under its own place, and leaves no converted module behind.
void cmdMacro_Click(AnalysisContext& context);

// The analysis behind it, of all macros or, with `scope` 2, of the chosen one. It removes no module behind a failure.
AnalysisSpec macroAnalysis(AnalysisContext& context, std::int16_t scope);

} // namespace relvane
