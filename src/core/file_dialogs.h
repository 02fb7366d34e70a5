// The file dialogs with the filter of the context. The result is cut at its first NUL; empty when cancelled.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// `name`, NUL, `pattern`, NUL.
Text fileFilter(TextView name, TextView pattern);

// FileFilter takes `filter`, ChosenFile the result, which is also handed back. The opening dialog offers the entries of
// `further` behind those of the filter.
Text ShowOpenDialog(AnalysisContext& context, const Text& filter, const Text& initialFolder,
                    const Text& title, const Text& further = {});
Text ShowSaveDialog(AnalysisContext& context, const Text& filter, const Text& initialFolder,
                    const Text& title);

} // namespace relvane
