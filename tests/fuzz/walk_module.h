// Asks a module for everything that it can tell, as the analyses together would.
#pragma once

#include "platform/access.h"

namespace relvane::test {

// Every line, its owner, and each owner's lines under every kind. Aborts when an answer contradicts another.
void walkModule(const access::Module& module);

} // namespace relvane::test
