// Fields and indexes of a table as DAO answers for them.
#pragma once

#include "jet/dao_properties.h"
#include "jet/jet_file.h"
#include "platform/dao.h"

namespace relvane::jet {

// The stored properties of one column, alive with the blob that they stand in; null when it has none.
using ColumnProperties = std::shared_ptr<const std::vector<StoredProperty>>;
ColumnProperties columnProperties(const std::shared_ptr<const PropertyBlob>& blob, TextView column);

// `file` is the one that has the column; `table` is the name that its table goes by.
std::shared_ptr<dao::Field> makeTableField(const Column& column, const JetFile& file, Text table,
                                           ColumnProperties stored);

// Nothing for an index that DAO does not show.
std::shared_ptr<dao::Index> makeIndex(const TableDefinition& table, const LogicalIndex& index);

} // namespace relvane::jet
