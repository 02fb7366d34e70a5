// The pages of the file being written, and the ways in which things stand on them: rows on data pages, page maps.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "sample_builder/written_format.h"

namespace relvane::samples {

using PageNumber = std::uint32_t;

// Where a row stands. Its stored form holds the row in the low byte and the page in the three others.
struct RowPlace {
    PageNumber page = 0;
    unsigned row = 0;
    std::uint32_t pointer() const { return page << 8 | row; }
};

class PageFile {
public:
    explicit PageFile(const WrittenFormat& format) : format_(format) {}

    const WrittenFormat& format() const { return format_; }
    const jet::JetFormat& places() const { return format_.places; }
    std::size_t pageSize() const { return format_.places.pageSize; }

    // A new page of zeros at the end of the file.
    PageNumber allocate();
    std::span<std::uint8_t> page(PageNumber number) { return pages_.at(number); }
    PageNumber count() const { return static_cast<PageNumber>(pages_.size()); }

private:
    const WrittenFormat& format_;
    std::vector<Bytes> pages_;
};

// Fills data pages of one owner from row to row; a page is followed by a new one when a row does not fit.
class DataPages {
public:
    DataPages(PageFile& file, std::uint32_t owner) : file_(file), owner_(owner) {}

    std::size_t longestRow() const { return file_.pageSize() - file_.places().dataPage.rowTable - 2; }

    // `flags` are those of the row table: rowDeleted, rowMoved.
    RowPlace append(std::span<const std::uint8_t> row, std::uint16_t flags = 0);
    // The next row starts a new page.
    void turnPage() { room_ = 0; }
    void overwrite(RowPlace place, std::span<const std::uint8_t> bytes);

    const std::vector<PageNumber>& pages() const { return pages_; }
    std::size_t room() const { return room_; } // bytes for one more row on the last page

private:
    PageFile& file_;
    std::uint32_t owner_;
    std::vector<PageNumber> pages_;
    std::size_t room_ = 0, end_ = 0; // free bytes; start of the last row
    unsigned rows_ = 0;
};

// Page maps: rows that say which pages belong to something, on pages of their own.
class PageMaps {
public:
    explicit PageMaps(PageFile& file) : file_(file), rows_(file, 0) {}

    // Writes a map of those pages and gives its row pointer.
    std::uint32_t add(const std::vector<PageNumber>& pages, PageMapKind kind = PageMapKind::Automatic);

private:
    PageFile& file_;
    DataPages rows_;
};

// The row of a map. The Pages kind, and Automatic where the bitmap does not reach, allocates pages of bitmaps.
Bytes pageMapRow(PageFile& file, const std::vector<PageNumber>& pages, PageMapKind kind);

} // namespace relvane::samples
