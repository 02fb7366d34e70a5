// A VBA module behind the interface through which analyses read it.
#pragma once

#include <memory>

#include "access/module_text.h"
#include "platform/access.h"

namespace relvane::access {

std::shared_ptr<Module> openModule(ModuleText text);

} // namespace relvane::access
