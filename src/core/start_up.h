// What happens when the main window loads.
#pragma once

#include <functional>

#include "core/analysis_context.h"

namespace relvane {

struct StartUp {
    Text appPath;     // the program's folder
    Text commandLine; // behind the program's name
    // Opens the analysis file of the command line: its path in quotes, as given.
    std::function<void(const Text& quotedPath)> openSavedFile;
};

// Form_Load of the main window. Throws ProgramEnd when the program is running already, or when the person does not
// want to go on in an unknown system; error 53 without Relvane.dat, 13 for a window position that is no number.
void Form_Load(AnalysisContext& context, const StartUp& startUp);

} // namespace relvane
