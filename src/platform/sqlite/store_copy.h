// A copy of the work database as a file.
#pragma once

#include "sqlite/connection.h"

namespace relvane::sqlite {

// Copies the file of the connection byte for byte, while nobody can write it; other connections of this program or
// another may read on, and one that is in the middle of a transaction is not in the copy. The copy is written beside its
// place and then takes it: there is never half a copy, and a file that it replaces goes only for one that is on the disk.
// Error 76 without the folder, 70 when the place cannot be taken, 61 for a full disk, 57 for one that fails, 3045 when
// another program writes for longer than two seconds.
void copyStore(Connection& connection, const Text& path);

} // namespace relvane::sqlite
