// What the panel's controls do by themselves, without any analysis: options, scopes, boxes, hints, Enter as Tab, the
// timer that clears the message line.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

void wirePanelEvents(AnalysisContext& context);

// Selects the whole text of the active control, when it is a text box.
void SelectControlText(Form& form);

// Makes the Enter key walk the controls of a form as the Tab key does.
void turnEnterIntoTab(Form& form);

} // namespace relvane
