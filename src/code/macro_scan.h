// The scanner of a converted macro: each line of its functions that does something becomes a row, with the comment and
// the condition of the lines above it, and its arguments become rows of their own. It reads CurModule, writes through
// WorkRs1 (T_RvMacro) and WorkRs2 (T_RvMacro2), and works on the shared state (AnalysisContext::Scan). ProcNo runs on
// from macro to macro, and a comment or condition that found no action waits for the next one, wherever that stands.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// Scans every function of CurModule, the module of the macro MacroName. Arguments are written with the detailed option
// alone. A line with the word If and without Then is error 5.
void ScanMacroModule(AnalysisContext& context);

// Writes the first argument of ArgText and takes it off. The last one is written as it is, the others by their label;
// behind the last ArgNo is 99.
void SplitMacroArgument(AnalysisContext& context);

} // namespace relvane
