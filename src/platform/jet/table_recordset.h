// Recordsets on the tables of a target: for reading only.
#pragma once

#include <span>

#include "jet/jet_file.h"
#include "platform/recordset.h"

namespace relvane::jet {

// All rows of `table` in stored order, fields in DAO's order. The file lives as long as the recordset.
std::unique_ptr<Recordset> openTableRecordset(std::shared_ptr<const JetFile> file, const Table& table);

// The same sorted; rows equal in all keys keep their stored order. Errors: 3265 for an unknown key, 3251 for the
// kana order, which only the work database knows.
std::unique_ptr<Recordset> openSortedRecordset(std::shared_ptr<const JetFile> file, const Table& table,
                                               std::span<const SortKey> keys, std::int64_t skip);

// Error 3027, the answer to every attempt to write.
[[noreturn]] void failReadOnly();

} // namespace relvane::jet
