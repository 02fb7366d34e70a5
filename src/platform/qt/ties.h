// How each type of control and its widget keep each other up to date.
#pragma once

#include <memory>

#include "platform/controls.h"
#include "qt/binder.h"

namespace relvane::qt {

// The tie between a control and its partner, or nothing when the partner is of another type. The tie gives the
// widget the control's state whenever `show` is called, and fires the control's events through `events`.
std::unique_ptr<Tie> makeTie(Control& control, QObject& partner, EventQueue& events);

// The type of widget that the control needs, for messages: "QPushButton".
const char* widgetTypeOf(const Control& control);

} // namespace relvane::qt
