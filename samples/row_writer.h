// Rows in their stored form: which column stands where, and the bytes of one row.
#pragma once

#include <map>

#include "sample_builder/page_file.h"
#include "sample_builder/text_coding.h"

namespace relvane::samples {

struct PlacedColumn {
    const ColumnSpec* spec = nullptr;
    unsigned number = 0;        // the bit in the null mask
    unsigned variableIndex = 0; // of a fixed column: the number of variable columns before it
    unsigned fixedOffset = 0;
    unsigned ordinal = 0;
    bool compressed = false;       // a text whose characters below U+0100 are stored in one byte
    std::size_t valuePosition = 0; // among the values of a RowSpec, where deleted columns have none
    bool fixed = false;
};

// The columns of a table in their order, deleted ones included, with their places.
class TableLayout {
public:
    TableLayout(const TableSpec& table, const WrittenFormat& format, TextCoding coding);

    const WrittenFormat& format() const { return format_; }
    TextCoding coding() const { return coding_; }
    const std::vector<PlacedColumn>& columns() const { return columns_; }
    unsigned variableCount() const { return variableCount_; }
    // The column of that name, which must exist.
    const PlacedColumn& column(TextView name) const;

private:
    const WrittenFormat& format_;
    TextCoding coding_;
    std::vector<PlacedColumn> columns_;
    unsigned variableCount_ = 0;
};

// The long values of one table: stores each where its column wants it and knows the pages used.
class LongValueStore {
public:
    explicit LongValueStore(PageFile& file) : file_(file) {}

    // Stores a value and gives what stands in the row: the head, with the data behind it when it is inline.
    Bytes store(const PlacedColumn& column, const Bytes& data);

    const std::vector<PageNumber>& pages(const PlacedColumn& column) { return pagesOf(column).pages(); }

private:
    DataPages& pagesOf(const PlacedColumn& column);

    PageFile& file_;
    std::map<unsigned, DataPages> pages_; // by number of the column
};

Bytes rowBytes(const TableLayout& layout, const RowSpec& row, LongValueStore& longValues);

// The value of a column in a row, Null where the row has none.
const Value& valueOf(const RowSpec& row, const PlacedColumn& column);

} // namespace relvane::samples
