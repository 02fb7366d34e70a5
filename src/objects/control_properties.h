// The rows of controls that the lists of forms and of reports share.
#pragma once

#include "core/analysis_context.h"
#include "objects/control_rules.h"

namespace relvane {

// Writes one row of CurControl through WorkRs2 (T_RvFrmItem or T_RvRepItem) under the number ObjectNo, and empties the
// group, the label and the text, so that the next row stands empty where it sets none.
void AddControlProperty(AnalysisContext& context);

// The rows of all controls of CurDesign, in the order of its controls. The 32,768th control since the program started
// is error 6.
void writeControls(AnalysisContext& context, ControlList list);

} // namespace relvane
