// Opening an Access database file for reading, with the answers that DAO 3.5 would give. Jet 3 files (Access 95
// and 97) and the newer formats (Jet 4, ACE) open alike; nothing is ever written.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "jet/byte_source.h"
#include "platform/dao.h"

namespace relvane::jet {

class JetFile;

// Finds the file of a linked table on this machine, from the path as the link has it ("C:\data\orders.mdb") and the
// folder of the database that has the link: Files::resolveLink, with its errors 53 and 76.
using LinkResolver = std::function<Text(const Text& path, const Text& folder)>;

struct OpenOptions {
    Text password{};
    LinkResolver resolveLink{}; // without one no link is found
};

// Errors: 3044 the path is malformed or its folder does not exist, 3024 no such file, 3051 it cannot be read,
// 3343 no Jet database (Access 2.0 and older included), 3031 another password, 3161 the pages do not decode,
// 3049 the catalogue is damaged. Damage elsewhere shows when the object concerned is read.
std::shared_ptr<dao::Database> openDatabase(const Text& path, OpenOptions options = {});

// The same on bytes that do not lie in a file; `name` is what Name answers. No link is found.
std::shared_ptr<dao::Database> openDatabase(std::unique_ptr<ByteSource> source, const Text& name,
                                            OpenOptions options = {});

// The file below a database that openDatabase opened: what Access keeps in it beside DAO's objects, and facts for
// an inspection. Null for any other database.
std::shared_ptr<const JetFile> fileOf(const dao::Database& database);

} // namespace relvane::jet
