#include "jet/long_value.h"

#include <algorithm>
#include <set>

#include "jet/data_page.h"

namespace relvane::jet {
namespace {

void append(Bytes& value, const ByteSpan& piece, std::size_t length) {
    const auto bytes = piece.bytes().first(std::min(piece.size(), length - value.size()));
    value.insert(value.end(), bytes.begin(), bytes.end());
}

} // namespace

Bytes readLongValue(const PageFile& file, const ByteSpan& cell) {
    const std::uint32_t word = cell.u32(0);
    const std::size_t length = word & longValueLength;
    RowPointer pointer = RowPointer::read(cell, 4);
    cell.require(cell.size() >= longValueHead, u"長い値の見出しが短すぎます");
    cell.require(length <= file.size(), u"長い値がファイルより長くなっています");

    if ((word & longValueInline) != 0) {
        return cell.part(longValueHead, length).copy();
    }
    Bytes value;
    if ((word & longValueSingle) != 0) {
        const RowBytes row = longValueRow(file, pointer);
        row.bytes.require(row.bytes.size() >= length, u"長い値が途切れています");
        append(value, row.bytes, length);
        return value;
    }
    // Each piece begins with the pointer of the next; the last one's is 0.
    std::set<RowPointer> seen;
    while (value.size() < length) {
        cell.require(seen.insert(pointer).second, u"長い値の連鎖が循環しています");
        const RowBytes row = longValueRow(file, pointer);
        append(value, row.bytes.from(4), length);
        pointer = RowPointer::read(row.bytes, 0);
        row.bytes.require(value.size() == length || pointer != RowPointer{}, u"長い値が途切れています");
    }
    return value;
}

} // namespace relvane::jet
