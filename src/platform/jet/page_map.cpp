#include "jet/page_map.h"

#include <algorithm>
#include <set>

#include "jet/data_page.h"

namespace relvane::jet {
namespace {

enum MapKind : std::uint8_t { bitmapInRow = 0, bitmapPages = 1 };

// Bit k of byte i stands for page first + 8 i + k.
void addBits(const ByteSpan& bitmap, std::uint64_t first, const PageFile& file,
             std::vector<std::uint32_t>& pages) {
    constexpr std::uint64_t lastPage = 0xFFFFFF; // that a row pointer can name
    std::uint64_t page = first;
    for (const std::uint8_t byte : bitmap.bytes()) {
        for (unsigned bit = 0; byte != 0 && bit < 8; ++bit) {
            const std::uint64_t number = page + bit;
            const bool isMissing = !pages.empty() && pages.back() >= file.pageCount();
            if ((byte >> bit & 1) != 0 && number != 0 && number <= lastPage && !isMissing) {
                pages.push_back(static_cast<std::uint32_t>(number));
            }
        }
        page += 8;
    }
}

} // namespace

std::vector<std::uint32_t> readPageMap(const PageFile& file, RowPointer pointer) {
    const RowBytes row = followRow(file, pointer);
    const ByteSpan map = row.bytes;
    std::vector<std::uint32_t> pages;
    switch (map.u8(0)) {
    case bitmapInRow:
        addBits(map.from(5), map.u32(1), file, pages);
        break;
    case bitmapPages: {
        // Entry i names the page whose bitmap speaks of the i-th stretch of pages; 0 where none belongs.
        const std::size_t header = 4;
        const std::uint64_t pagesOfEntry = (file.format().pageSize - header) * 8;
        std::set<std::uint32_t> seen;
        for (std::size_t i = 0; 1 + 4 * (i + 1) <= map.size(); ++i) {
            const std::uint32_t mapPage = map.u32(1 + 4 * i);
            if (mapPage != 0) {
                map.require(seen.insert(mapPage).second, u"ページの対応表が重複しています");
                const Page page = file.page(mapPage, PageKind::Map);
                addBits(page.span().from(header), i * pagesOfEntry, file, pages);
            }
        }
        break;
    }
    default:
        failDamaged(pointer.page, u"ページの対応表の種類が不明です");
    }
    return pages;
}

} // namespace relvane::jet
