#include "jet/table_definition.h"

#include <algorithm>
#include <set>

#include "jet/stored_text.h"
#include "platform/codepage.h"

namespace relvane::jet {
namespace {

constexpr std::size_t longestDefinition = 64 * 1024;
constexpr std::uint32_t mostColumns = 255, mostIndexes = 1000;
constexpr std::size_t nextPage = 4, pageHeader = 8;

// The definition's bytes of all its pages, joined; only the first page keeps its header.
Bytes joinPages(const PageFile& file, std::uint32_t first) {
    Bytes joined;
    std::set<std::uint32_t> seen;
    for (std::uint32_t number = first; number != 0;) {
        const Page page = file.page(number, PageKind::Definition);
        page.span().require(seen.insert(number).second, u"テーブル定義の連鎖が循環しています");
        const auto bytes = page.span().from(number == first ? 0 : pageHeader).bytes();
        joined.insert(joined.end(), bytes.begin(), bytes.end());
        page.span().require(joined.size() <= longestDefinition, u"テーブル定義が長すぎます");
        number = page.span().u32(nextPage);
    }
    return joined;
}

// Reads the parts of a definition in the order in which they stand.
class DefinitionReader {
public:
    DefinitionReader(const PageFile& file, ByteSpan bytes)
        : file_(file), format_(file.format()), bytes_(bytes), at_(format_.definition.end) {}

    TableDefinition read() {
        readCounts();
        const std::size_t statistics = skip(format_.definition.indexStatistics * realIndexCount_);
        readColumns();
        for (Column& column : table_.columns) {
            column.name = readName();
        }
        readRealIndexes(statistics);
        readLogicalIndexes();
        for (LogicalIndex& index : table_.logicalIndexes) {
            index.name = readName();
        }
        readLongValueMaps();
        bytes_.require(at_ == bytes_.u32(format_.definition.length), u"テーブル定義の長さが合いません");
        return std::move(table_);
    }

private:
    void readCounts() {
        const auto& at = format_.definition;
        table_.page = bytes_.page();
        table_.rowCount = bytes_.u32(at.rows);
        table_.lastAutoNumber = bytes_.u32(at.lastAutoNumber);
        table_.kind = bytes_.u8(at.kind);
        table_.variableColumns = bytes_.u16(at.variableColumns);
        table_.pageMap = RowPointer::read(bytes_, at.pageMap);
        const std::uint32_t columns = bytes_.u16(at.columns);
        const std::uint32_t logical = bytes_.u32(at.logicalIndexes);
        realIndexCount_ = bytes_.u32(at.realIndexes);
        bytes_.require(columns <= mostColumns, u"フィールドの数が多すぎます");
        bytes_.require(logical <= mostIndexes && realIndexCount_ <= mostIndexes,
                       u"インデックスの数が多すぎます");
        table_.columns.resize(columns);
        table_.logicalIndexes.resize(logical);
        table_.realIndexes.resize(realIndexCount_);
    }

    void readColumns() {
        const auto& at = format_.column;
        std::set<std::uint16_t> numbers;
        for (Column& column : table_.columns) {
            const ByteSpan block = next(at.size);
            column.type = static_cast<ColumnType>(block.u8(at.type));
            column.number = block.u16(at.number);
            column.variableIndex = block.u16(at.variableIndex);
            column.ordinal = block.u16(at.ordinal);
            column.codePage = at.codePage == absent ? 0 : block.u16(at.codePage);
            column.precision = at.precision == absent ? std::uint8_t{0} : block.u8(at.precision);
            column.scale = at.scale == absent ? std::uint8_t{0} : block.u8(at.scale);
            column.complexId =
                column.type == ColumnType::Complex && at.complexId != absent ? block.u32(at.complexId) : 0;
            column.flags = block.u8(at.flags);
            column.secondFlags = at.secondFlags == absent ? std::uint8_t{0} : block.u8(at.secondFlags);
            column.fixedOffset = block.u16(at.fixedOffset);
            column.length = block.u16(at.length);
            block.require(numbers.insert(column.number).second, u"フィールドの番号が重複しています");
        }
    }

    void readRealIndexes(std::size_t statistics) {
        const auto& at = format_.realIndex;
        for (RealIndex& index : table_.realIndexes) {
            const ByteSpan block = next(at.size);
            for (std::size_t slot = 0; slot < columnsPerIndex; ++slot) {
                const std::uint16_t column = block.u16(at.columns + 3 * slot);
                if (column != noColumn) {
                    block.require(table_.byNumber(column) != nullptr,
                                  u"インデックスのフィールドがありません");
                    index.entries.push_back({column, block.u8(at.columns + 3 * slot + 2) != 0});
                }
            }
            index.root = block.u32(at.root);
            index.flags = block.u8(at.flags);
            index.distinctKeys = bytes_.u32(statistics + format_.definition.distinctKeys);
            statistics += format_.definition.indexStatistics;
        }
    }

    void readLogicalIndexes() {
        const auto& at = format_.logicalIndex;
        for (LogicalIndex& index : table_.logicalIndexes) {
            const ByteSpan block = next(at.size);
            index.number = block.u32(at.number);
            index.realIndex = block.u32(at.realIndex);
            index.side = static_cast<IndexSide>(block.u8(at.side));
            index.otherIndex = block.u32(at.otherIndex);
            index.otherTable = block.u32(at.otherTable);
            index.type = static_cast<IndexType>(block.u8(at.type));
            block.require(index.realIndex < table_.realIndexes.size(), u"インデックスの実体がありません");
        }
    }

    // Behind the indexes stand the page maps of the long-value columns, which end with the column number FFFF.
    void readLongValueMaps() {
        constexpr std::size_t mapsOfColumn = 10;
        while (bytes_.u16(at_) != noColumn) {
            skip(mapsOfColumn);
        }
        skip(2);
    }

    Text readName() {
        const std::size_t size = format_.definition.nameLength;
        const std::size_t length = bytes_.count(at_, size);
        skip(size);
        return decodeName(file_, next(length));
    }

    // The place of a block that is passed over.
    std::size_t skip(std::size_t length) {
        const std::size_t start = at_;
        next(length);
        return start;
    }
    ByteSpan next(std::size_t length) {
        const ByteSpan block = bytes_.part(at_, length);
        at_ += length;
        return block;
    }

    const PageFile& file_;
    const JetFormat& format_;
    ByteSpan bytes_;
    std::size_t at_;
    std::uint32_t realIndexCount_ = 0;
    TableDefinition table_;
};

} // namespace

const Column* TableDefinition::find(TextView name) const {
    const auto found = std::ranges::find_if(
        columns, [&](const Column& column) { return equalsIgnoringCase(column.name, name); });
    return found == columns.end() ? nullptr : &*found;
}

const Column* TableDefinition::byNumber(std::uint16_t number) const {
    const auto found = std::ranges::find(columns, number, &Column::number);
    return found == columns.end() ? nullptr : &*found;
}

std::vector<const Column*> TableDefinition::columnsInOrder() const {
    std::vector<const Column*> order;
    for (const Column& column : columns) {
        order.push_back(&column);
    }
    std::ranges::stable_sort(order, [](const Column* left, const Column* right) {
        return left->ordinal != right->ordinal ? left->ordinal < right->ordinal
                                               : upperCase(left->name) < upperCase(right->name);
    });
    return order;
}

TableDefinition readTableDefinition(const PageFile& file, std::uint32_t page) {
    const Bytes joined = joinPages(file, page);
    return DefinitionReader(file, ByteSpan(joined, page)).read();
}

} // namespace relvane::jet
