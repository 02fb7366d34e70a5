// An open form or report: its design behind the interface through which analyses read it.
#pragma once

#include <functional>
#include <memory>

#include "access/design_tree.h"
#include "platform/access.h"

namespace relvane::access {

// Reads the module of a form or report; empty for one without code.
using ModuleLoader = std::function<std::shared_ptr<Module>()>;

// Draws the window of a form; empty where forms are not drawn.
using WindowPainter = std::function<Picture(bool wholeWindow)>;

// `name` is that of the document. The object keeps the design for as long as it lives, and reads its module when it is
// asked for it first. Beside the properties of its class it has Name, Visible, HasModule and Count, the number of its
// controls.
std::shared_ptr<Form> openForm(std::shared_ptr<const Design> design, const Text& name,
                               ModuleLoader loadModule, WindowPainter paint = {});
std::shared_ptr<Report> openReport(std::shared_ptr<const Design> design, const Text& name,
                                   ModuleLoader loadModule);

} // namespace relvane::access
