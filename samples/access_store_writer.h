// The store of Access 2000: all that it keeps of forms, reports, macros and modules, as one tree of storages and streams
// in a compound file, which lies in pieces in the table MSysAccessObjects.
#pragma once

#include "sample_builder/compound_file_writer.h"
#include "sample_builder/database_spec.h"

namespace relvane::samples {

// An object as its container keeps it.
struct StoredObject {
    Text name{};
    bool hidden = false;
    bool isClass = false;            // of a module
    std::optional<bool> hasModule{}; // of a form or report
    Streams streams{};               // "Blob", "TypeInfo"
};

// The container "Forms", "Reports", "Scripts" or "Modules": a storage for each object, numbered from 0, and the lists
// beside them.
Streams containerStreams(const Text& container, const std::vector<StoredObject>& objects);

// The list alone: each object with the number that its storage has as a name.
std::pair<Text, Bytes> objectList(const Text& container,
                                  const std::vector<std::pair<Text, std::uint32_t>>& objects);

// What every store has beside its containers and the VBA project.
Streams commonStreams(int codePage);

// The table with the pieces of a compound file, as Access 2000 has it, or an Access 97 file that a later Access opened.
// A piece in which no byte is used has no row.
TableSpec storeTable(const Bytes& compoundFile, FileFormat format,
                     const std::vector<std::pair<std::size_t, std::size_t>>& unused = {}); // begin, end

} // namespace relvane::samples
