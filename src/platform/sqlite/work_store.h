// The work database, and an analysis file, which is a copy of one: a SQLite file behind RowStore.
#pragma once

#include <memory>

#include "platform/recordset.h"

namespace relvane {

// Opens the work database at `path` for reading and writing; of a file that may not be written, reading alone works.
//
// Errors, here and in everything done with the store:
//   3024  there is no such file            3044  there is no such folder
//   3051  the file may not be read         3343  it is no work database, or one of another version
//   3049  it is damaged (also met later, where the damaged part is read)
//   3045  another program holds it: waited for two seconds
//   3027  it, or its folder, may not be written
//   61    the disk is full                 57    the disk failed
std::shared_ptr<RowStore> openWorkStore(const Text& path);

} // namespace relvane
