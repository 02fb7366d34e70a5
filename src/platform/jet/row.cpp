#include "jet/row.h"

namespace relvane::jet {
namespace {

// Bytes of a column of fixed size.
std::size_t fixedSize(const Column& column) {
    switch (column.type) {
    case ColumnType::Byte:
        return 1;
    case ColumnType::Integer:
        return 2;
    case ColumnType::Long:
    case ColumnType::Single:
    case ColumnType::Complex:
        return 4;
    case ColumnType::Currency:
    case ColumnType::Double:
    case ColumnType::Date:
    case ColumnType::BigInt:
        return 8;
    case ColumnType::Guid:
        return 16;
    case ColumnType::Numeric:
        return 17;
    default:
        return column.length;
    }
}

} // namespace

Row::Row(const JetFormat& format, const TableDefinition& table, RowBytes bytes)
    : row_(std::move(bytes)), fixedStart_(format.countSize), columns_(row_.bytes.count(0, format.countSize)) {
    const std::size_t length = row_.bytes.size();
    const std::size_t maskSize = (columns_ + 7) / 8;
    row_.bytes.require(fixedStart_ + maskSize <= length, u"行が短すぎます");
    mask_ = row_.bytes.part(length - maskSize, maskSize);
    if (table.variableColumns > 0) {
        row_.bytes.require(fixedStart_ + maskSize + format.countSize <= length, u"行が短すぎます");
        const std::size_t countAt = length - maskSize - format.countSize;
        if (format.countSize == 1) {
            readJet3Offsets(countAt);
        } else {
            readJet4Offsets(countAt);
        }
    }
    for (std::size_t i = 0; i < offsets_.size(); ++i) {
        row_.bytes.require(offsets_[i] <= length && (i == 0 || offsets_[i - 1] <= offsets_[i]),
                           u"行の可変長フィールドの位置が正しくありません");
    }
}

// Offsets are one byte, the first entry nearest the end. In a row of more than 256 bytes the jump bytes between
// the count and the entries name the columns from which on another 256 has to be added.
void Row::readJet3Offsets(std::size_t countAt) {
    const ByteSpan& row = row_.bytes;
    const std::size_t count = row.u8(countAt);
    std::size_t jumps = (row.size() - 1) / 256;
    row.require(countAt >= jumps + 1 + count, u"行の可変長フィールドの表が収まりません");
    const std::size_t firstEntry = countAt - jumps - 1;
    if ((firstEntry - count) / 256 < jumps) {
        --jumps; // the data ends before the last boundary: that jump byte counts for nothing
    }
    std::size_t jumped = 0;
    for (std::size_t i = 0; i <= count; ++i) {
        while (jumped < jumps && row.u8(countAt - 1 - jumped) == i) {
            ++jumped;
        }
        offsets_.push_back(row.u8(firstEntry - i) + 256 * jumped);
    }
}

void Row::readJet4Offsets(std::size_t countAt) {
    const ByteSpan& row = row_.bytes;
    const std::size_t count = row.u16(countAt);
    row.require(countAt >= 2 * (count + 1), u"行の可変長フィールドの表が収まりません");
    for (std::size_t i = 0; i <= count; ++i) {
        offsets_.push_back(row.u16(countAt - 2 * (i + 1)));
    }
}

bool Row::bit(const Column& column) const {
    return column.number < columns_ && (mask_.u8(column.number / 8u) >> column.number % 8 & 1) != 0;
}

std::optional<ByteSpan> Row::cell(const Column& column) const {
    if (!bit(column)) {
        return std::nullopt;
    }
    if (column.has(columnFlag::fixed)) {
        return row_.bytes.part(fixedStart_ + column.fixedOffset, fixedSize(column));
    }
    if (column.variableIndex + std::size_t{1} >= offsets_.size()) {
        return std::nullopt;
    }
    const std::size_t start = offsets_[column.variableIndex];
    return row_.bytes.part(start, offsets_[column.variableIndex + std::size_t{1}] - start);
}

} // namespace relvane::jet
