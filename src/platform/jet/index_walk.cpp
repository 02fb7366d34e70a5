#include "jet/index_walk.h"

#include <set>

namespace relvane::jet {
namespace {

constexpr int deepestTree = 20;

// Calls `use` with each entry until it answers false. Bit p of the mask, low bit first, marks an end of an entry
// p bytes behind the start of the first. Every entry but the first lacks the leading bytes that all share.
template <class Use>
void forEachEntry(const JetFormat& format, const ByteSpan& page, Use use) {
    const auto& at = format.indexPage;
    const ByteSpan mask = page.part(at.mask, at.maskEnd - at.mask);
    const std::size_t prefixLength = page.count(at.prefixLength, at.prefixLengthSize);
    Bytes prefix;
    std::size_t start = 0;
    for (std::size_t end = 1; end < mask.size() * 8; ++end) {
        if ((mask.u8(end / 8) >> end % 8 & 1) == 0) {
            continue;
        }
        const ByteSpan stored = page.part(at.firstEntry + start, end - start);
        Bytes entry = prefix;
        entry.insert(entry.end(), stored.bytes().begin(), stored.bytes().end());
        if (start == 0) {
            prefix = stored.part(0, prefixLength).copy();
        }
        if (!use(ByteSpan(entry, page.page()))) {
            return;
        }
        start = end;
    }
}

// A pointer ends each leaf entry, its page with the high byte first.
RowPointer pointerOfEntry(const ByteSpan& entry) {
    entry.require(entry.size() >= 4, u"インデックスの項目が短すぎます");
    return {entry.bigEndian(entry.size() - 4, 3), entry.u8(entry.size() - 1)};
}

// The first child of an inner page: its number stands behind the pointer of the first entry.
std::uint32_t firstChild(const JetFormat& format, const ByteSpan& page) {
    std::uint32_t child = page.u32(format.indexPage.tail);
    forEachEntry(format, page, [&](const ByteSpan& entry) {
        entry.require(entry.size() >= 8, u"インデックスの項目が短すぎます");
        child = entry.bigEndian(entry.size() - 4, 4);
        return false;
    });
    return child;
}

} // namespace

std::vector<RowPointer> walkIndex(const PageFile& file, std::uint32_t root) {
    const JetFormat& format = file.format();
    std::uint32_t number = root;
    for (int depth = 0; file.page(number).is(PageKind::InnerIndex); ++depth) {
        if (depth == deepestTree) {
            failDamaged(number, u"インデックスが深すぎます");
        }
        number = firstChild(format, file.page(number).span());
    }
    std::vector<RowPointer> rows;
    std::set<std::uint32_t> seen;
    while (number != 0) {
        const Page page = file.page(number, PageKind::LeafIndex);
        page.span().require(seen.insert(number).second, u"インデックスの連鎖が循環しています");
        forEachEntry(format, page.span(), [&](const ByteSpan& entry) {
            rows.push_back(pointerOfEntry(entry));
            return true;
        });
        number = page.span().u32(format.indexPage.next);
    }
    return rows;
}

} // namespace relvane::jet
