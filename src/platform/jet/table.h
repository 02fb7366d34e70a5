// A table: its definition, its rows in stored order, and the order of one of its indexes.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "jet/column_value.h"
#include "jet/table_definition.h"

namespace relvane::jet {

class Table {
public:
    Table(const PageFile& file, std::uint32_t definitionPage);

    const PageFile& file() const { return file_; }
    const TableDefinition& definition() const { return definition_; }

    Row row(RowPointer pointer) const; // follows moves
    Value value(const Row& row, const Column& column) const { return columnValue(file_, column, row); }

    // The places of all rows in the order of the index of that name; empty when there is no such index or its
    // tree makes no sense.
    std::vector<RowPointer> rowsByIndex(TextView indexName) const;

private:
    const PageFile& file_;
    TableDefinition definition_;
};

// A walk over the rows in stored order: pages rising, on each page rows rising, deleted rows left out. A moved row
// comes at the place that it left.
class RowCursor {
public:
    explicit RowCursor(const Table& table);

    // The place of the next row; nothing behind the last.
    std::optional<RowPointer> next();

private:
    const Table& table_;
    std::vector<std::uint32_t> pages_;
    std::size_t page_ = 0; // position in pages_
    std::size_t row_ = 0;
    std::optional<DataPage> current_;
};

// The entries of one row of a table, read by column name.
class NamedRow {
public:
    NamedRow(const Table& table, RowPointer pointer) : table_(table), row_(table.row(pointer)) {}

    Value operator()(TextView column) const; // Null for a column that the table does not have
    std::optional<std::int32_t> number(TextView column) const;
    std::optional<Text> text(TextView column) const;
    Bytes bytes(TextView column) const; // empty for null

private:
    const Table& table_;
    Row row_;
};

} // namespace relvane::jet
