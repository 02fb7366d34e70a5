// Reads everything that an open database can tell, as the analyses together would.
#pragma once

#include "platform/dao.h"

namespace relvane::test {

// Every member of every object; a run-time error ends the reading of that member alone. Of each table at most
// `rowLimit` rows are read. Returns how many run-time errors there were.
int walkDatabase(dao::Database& database, int rowLimit);

} // namespace relvane::test
