#include "sample_builder/page_file.h"

#include <algorithm>
#include <stdexcept>

#include "sample_builder/byte_writer.h"

namespace relvane::samples {

PageNumber PageFile::allocate() {
    pages_.emplace_back(pageSize());
    return count() - 1;
}

RowPlace DataPages::append(std::span<const std::uint8_t> row, std::uint16_t flags) {
    const auto& layout = file_.places().dataPage;
    if (row.size() > longestRow()) {
        throw std::invalid_argument("a row of " + std::to_string(row.size()) + " bytes does not fit a page");
    }
    if (pages_.empty() || row.size() + 2 > room_ || rows_ == 255) {
        pages_.push_back(file_.allocate());
        room_ = file_.pageSize() - layout.rowTable;
        end_ = file_.pageSize();
        rows_ = 0;
        const auto page = file_.page(pages_.back());
        page[0] = static_cast<std::uint8_t>(jet::PageKind::Data);
        page[1] = 1;
        putAt(page, layout.owner, owner_, 4);
    }
    const auto page = file_.page(pages_.back());
    end_ -= row.size();
    room_ -= row.size() + 2;
    std::copy(row.begin(), row.end(), page.begin() + static_cast<std::ptrdiff_t>(end_));
    putAt(page, layout.rowTable + 2 * rows_, end_ | flags, 2);
    putAt(page, layout.rowCount, rows_ + 1, 2);
    putAt(page, layout.freeBytes, room_, 2);
    return {pages_.back(), rows_++};
}

void DataPages::overwrite(RowPlace place, std::span<const std::uint8_t> bytes) {
    const auto page = file_.page(place.page);
    const std::size_t slot = file_.places().dataPage.rowTable + 2 * place.row;
    const std::size_t start = (page[slot] | page[slot + 1] << 8) & jet::rowPlace;
    std::copy(bytes.begin(), bytes.end(), page.begin() + static_cast<std::ptrdiff_t>(start));
}

namespace {

void setBit(std::span<std::uint8_t> bitmap, std::size_t bit) {
    bitmap[bit / 8] = static_cast<std::uint8_t>(bitmap[bit / 8] | 1 << bit % 8);
}

Bytes bitmapRow(const PageFile& file, const std::vector<PageNumber>& pages, PageNumber first) {
    Bytes row(5 + file.places().pageMap.inlineBytes);
    putAt(row, 1, first, 4);
    for (const PageNumber page : pages) {
        setBit(std::span(row).subspan(5), page - first);
    }
    return row;
}

Bytes listRow(PageFile& file, const std::vector<PageNumber>& pages) {
    constexpr std::size_t head = 4;
    const std::size_t covered = (file.pageSize() - head) * 8;
    Bytes row(5 + file.places().pageMap.inlineBytes);
    row[0] = 1;
    for (const PageNumber page : pages) {
        const std::size_t entry = 1 + page / covered * 4;
        if (entry + 4 > row.size()) {
            row.resize(entry + 4);
        }
        PageNumber bitmap = static_cast<PageNumber>(row[entry] | row[entry + 1] << 8 | row[entry + 2] << 16);
        if (bitmap == 0) {
            bitmap = file.allocate();
            putAt(row, entry, bitmap, 4);
            file.page(bitmap)[0] = static_cast<std::uint8_t>(jet::PageKind::Map);
            file.page(bitmap)[1] = 1;
        }
        setBit(file.page(bitmap).subspan(head), page % covered);
    }
    return row;
}

} // namespace

Bytes pageMapRow(PageFile& file, const std::vector<PageNumber>& pages, PageMapKind kind) {
    const std::size_t reach = file.places().pageMap.inlineBytes * 8;
    PageNumber first = 0, last = 0;
    if (!pages.empty()) {
        const auto [lowest, highest] = std::minmax_element(pages.begin(), pages.end());
        last = *highest;
        first = last < reach ? 0 : *lowest / 8 * 8;
    }
    const bool reaches = last - first < reach;
    if (kind == PageMapKind::Bitmap && !reaches) {
        throw std::invalid_argument("the table's pages lie too far apart for a page map of kind 0");
    }
    return kind != PageMapKind::Pages && reaches ? bitmapRow(file, pages, first) : listRow(file, pages);
}

std::uint32_t PageMaps::add(const std::vector<PageNumber>& pages, PageMapKind kind) {
    return rows_.append(pageMapRow(file_, pages, kind)).pointer();
}

} // namespace relvane::samples
