// Pictures of forms: a form of the target is opened, what its window shows goes to the clipboard, and after a wait the
// viewer opens on it.
#pragma once

#include "capture/frm_capture.h"

namespace relvane {

// Takes the picture of the form that is chosen in the main window, which stays hidden until the wait is over. After an
// error it stays hidden too, unless the form depends on another one or cancels its opening (2450, 2501): then design
// view is offered for the next attempt. A viewer that shows an earlier picture goes.
void cmdFmImage_Click(AnalysisContext& context, FrmCapture& viewer);

// The wait is over: Access's window goes, ours comes back, and the viewer with it.
void Timer2_Timer(AnalysisContext& context, FrmCapture& viewer);

// Brings an open form to the front and copies its window. False, and nothing copied, when it cannot be selected.
bool CaptureFormImage(AnalysisContext& context, const Text& formName, std::int16_t wholeWindow);

// Puts what the window shows onto the clipboard: with its title bar, or (0) the client area alone. A clipboard that
// another program holds stays as it is.
bool WindowToClipboard(AnalysisContext& context, const access::Form& window, std::int16_t wholeWindow);

} // namespace relvane
