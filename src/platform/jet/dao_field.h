// Fields and indexes of a table as DAO answers for them.
#pragma once

#include "jet/dao_properties.h"
#include "jet/table_definition.h"
#include "platform/dao.h"

namespace relvane::jet {

// What DAO calls a column: type code, size in characters or bytes, attributes.
int daoType(const Column& column);
std::int32_t daoSize(const Column& column, const JetFormat& format);
std::int32_t daoAttributes(const Column& column);

// The stored properties of one column, alive with the blob that they stand in; null when it has none.
using ColumnProperties = std::shared_ptr<const std::vector<StoredProperty>>;
ColumnProperties columnProperties(const std::shared_ptr<const PropertyBlob>& blob, TextView column);

// `collatingOrder` is the file's sort order.
std::shared_ptr<dao::Field> makeTableField(const Column& column, const JetFormat& format, Text table,
                                           ColumnProperties stored, std::int32_t collatingOrder);

// Nothing for an index that DAO does not show.
std::shared_ptr<dao::Index> makeIndex(const TableDefinition& table, const LogicalIndex& index);

} // namespace relvane::jet
