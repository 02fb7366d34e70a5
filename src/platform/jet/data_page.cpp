#include "jet/data_page.h"

namespace relvane::jet {
namespace {

constexpr int mostMoves = 8;

} // namespace

DataPage::DataPage(const PageFile& file, std::uint32_t page)
    : page_(file.page(page, PageKind::Data)), rowTable_(file.format().dataPage.rowTable) {
    const ByteSpan bytes = page_.span();
    rowCount_ = bytes.u16(file.format().dataPage.rowCount);
    owner_ = bytes.u32(file.format().dataPage.owner);
    bytes.require(rowTable_ + 2 * rowCount_ <= bytes.size(), u"行の数が多すぎます");
}

std::uint16_t DataPage::slot(std::size_t row) const {
    const ByteSpan bytes = page_.span();
    bytes.require(row < rowCount_, u"ページにない行です");
    return bytes.u16(rowTable_ + 2 * row);
}

ByteSpan DataPage::row(std::size_t row) const {
    const ByteSpan bytes = page_.span();
    const std::size_t start = slot(row) & rowPlace;
    const std::size_t end = row == 0 ? bytes.size() : slot(row - 1) & rowPlace;
    bytes.require(rowTable_ + 2 * rowCount_ <= start && start <= end && end <= bytes.size(),
                  u"行の位置が正しくありません");
    return bytes.part(start, end - start);
}

RowBytes followRow(const PageFile& file, RowPointer pointer) {
    for (int moves = 0; moves < mostMoves; ++moves) {
        const DataPage page(file, pointer.page);
        const ByteSpan bytes = page.row(pointer.row);
        if (!page.isMoved(pointer.row)) {
            return {page.page(), bytes};
        }
        pointer = RowPointer::read(bytes, 0);
    }
    failDamaged(pointer.page, u"行の移動が多すぎます");
}

RowBytes longValueRow(const PageFile& file, RowPointer pointer) {
    const DataPage page(file, pointer.page);
    page.page().span().require(page.owner() == longValueOwner, u"長い値のページではありません");
    return {page.page(), page.row(pointer.row)};
}

} // namespace relvane::jet
