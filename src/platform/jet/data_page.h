// Rows as they lie on data pages, and the pointers that lead from row to row.
#pragma once

#include <optional>

#include "jet/page_file.h"

namespace relvane::jet {

// The bytes of one row, with the page that holds them.
struct RowBytes {
    Page page;
    ByteSpan bytes;
};

// A view of a page of rows: the table of row places stands at the front, the rows grow from the end.
class DataPage {
public:
    // Error 3049 when the page is no data page or its table of rows does not fit.
    DataPage(const PageFile& file, std::uint32_t page);

    std::uint32_t owner() const { return owner_; } // definition page of the table, or longValueOwner
    std::size_t rowCount() const { return rowCount_; }

    bool isDeleted(std::size_t row) const { return (slot(row) & rowDeleted) != 0; }
    bool isMoved(std::size_t row) const { return (slot(row) & rowMoved) != 0; }
    ByteSpan row(std::size_t row) const; // whatever its flags say
    const Page& page() const { return page_; }

private:
    std::uint16_t slot(std::size_t row) const;

    Page page_;
    std::size_t rowTable_;
    std::size_t rowCount_;
    std::uint32_t owner_;
};

// The row at `pointer`, behind every move; a deleted flag there is ignored, since the target of a move carries it.
RowBytes followRow(const PageFile& file, RowPointer pointer);

// The bytes of a piece of a long value, whose row flags carry no meaning. Error 3049 off "LVAL" pages.
RowBytes longValueRow(const PageFile& file, RowPointer pointer);

} // namespace relvane::jet
