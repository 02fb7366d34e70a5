// Writes an Access 97 (Jet 3) or Access 2000 (Jet 4) database of a DatabaseSpec, whole: header, page maps, catalogue with
// its indexes, permissions, queries, relations, definitions, rows, long values, index trees, encoding. There is one writer
// of each part; what differs between the two is data (written_format.h).
//
// The same spec gives the same bytes. What cannot be held by the format (a row beyond a page, an index on a
// column that is not there, doubled keys of a unique index, a character that the code page lacks) is a
// std::invalid_argument whose text names the table and the place.
//
// Limits, all by choice: index keys order texts by the plain rule of index_key.h, not by the tables of a real
// sort order; pages are filled one after the other; the permissions are those of an unsecured file, the names of their
// users unmasked in Jet 4 too; texts of Jet 4 are compressed when all of their characters can be, and else not at all.
#pragma once

#include <filesystem>

#include "sample_builder/database_spec.h"

namespace relvane::samples {

// The same application in that format; Access 2000 writes its own version into it.
DatabaseSpec savedAs(DatabaseSpec spec, FileFormat format);

Bytes databaseBytes(const DatabaseSpec& spec);

// Writes databaseBytes to `path`, replacing a file there.
void writeDatabase(const DatabaseSpec& spec, const std::filesystem::path& path);

} // namespace relvane::samples
