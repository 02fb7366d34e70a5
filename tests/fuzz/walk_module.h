// Asks modules for everything that they can tell, as the analyses together would.
#pragma once

#include "platform/access.h"
#include "platform/dao.h"

namespace relvane::test {

// Every line, its owner, and each owner's lines under every kind. Aborts when an answer contradicts another.
void walkModule(const access::Module& module);

// The same for every module of a database that openDatabase opened, and for what every macro of it converts to; a
// run-time error ends the reading of that one alone. Returns how many were read to the end.
int walkSources(const dao::Database& database);

} // namespace relvane::test
