// One row of a table, cut into the bytes of its columns.
#pragma once

#include <optional>
#include <vector>

#include "jet/data_page.h"
#include "jet/table_definition.h"

namespace relvane::jet {

class Row {
public:
    // Reads the row's own bookkeeping: error 3049 when it does not fit the row.
    Row(const JetFormat& format, const TableDefinition& table, RowBytes bytes);

    // Whether the column's bit in the mask says "not null". For a Boolean column that bit is the value.
    bool bit(const Column& column) const;

    // The stored bytes; nothing for null. A column that is younger than the row is null.
    std::optional<ByteSpan> cell(const Column& column) const;

private:
    void readJet3Offsets(std::size_t countAt);
    void readJet4Offsets(std::size_t countAt);

    RowBytes row_;
    std::size_t fixedStart_;
    std::size_t columns_; // at the time the row was written
    ByteSpan mask_;
    std::vector<std::size_t> offsets_; // of the variable columns, and the end of the last; empty without any
};

} // namespace relvane::jet
