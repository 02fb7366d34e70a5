// An open form or report: its design behind the interface through which analyses read it.
#pragma once

#include <memory>

#include "access/design_tree.h"
#include "platform/access.h"

namespace relvane::access {

// `name` is that of the document. The object keeps the design for as long as it lives. Beside the properties of its
// class it has Name, Visible, HasModule and Count, the number of its controls.
std::shared_ptr<Form> openForm(std::shared_ptr<const Design> design, const Text& name, bool hasModule);
std::shared_ptr<Report> openReport(std::shared_ptr<const Design> design, const Text& name, bool hasModule);

} // namespace relvane::access
