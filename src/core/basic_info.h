// Relvane.dat in the program's folder: the texts of the cover page and the wait of the screen capture, one "key=value"
// a line, in code page 932.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// Reads the file into CoverTitle, CoverCompany, CoverDepartment and CaptureSeconds. A key is found anywhere in a
// line, in a fixed order, so a company named "Title Works" is taken for a title. A field without a line keeps its
// value. Error 53 without the file.
void ReadBasicInfo(AnalysisContext& context);

// The button that keeps the cover texts: writes the text boxes to the file.
void cmdSave_Click(AnalysisContext& context);

} // namespace relvane
