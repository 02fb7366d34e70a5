#include "sample_builder/definition_writer.h"

#include <algorithm>
#include <stdexcept>

#include "sample_builder/byte_writer.h"
#include "sample_builder/column_value.h"

namespace relvane::samples {

namespace {

constexpr std::size_t pageHead = 8; // kind, 1, "VC" or free bytes, next page
constexpr std::uint16_t lettersVC = 0x4356;
constexpr std::uint8_t compressedText = 0x01; // of the second flags

// A field of a record; nothing where the version has no such field.
void put(Bytes& record, std::size_t place, std::uint64_t number, std::size_t size) {
    if (place != jet::absent) {
        putAt(record, place, number, size);
    }
}

std::size_t columnLength(const ColumnSpec& column, TextCoding coding) {
    if (column.type == ColumnType::Boolean) {
        return 1;
    }
    return isLongValue(column.type) ? 0 : storedSize(column, coding);
}

// The columns that are there, in the order in which the version lists them.
std::vector<PlacedColumn> livingColumns(const TableLayout& layout) {
    std::vector<PlacedColumn> columns;
    std::ranges::copy_if(layout.columns(), std::back_inserter(columns),
                         [](const PlacedColumn& column) { return !column.spec->deleted; });
    if (layout.format().definition.columnsAsShown) {
        std::ranges::stable_sort(columns, [](const PlacedColumn& left, const PlacedColumn& right) {
            return left.ordinal != right.ordinal ? left.ordinal < right.ordinal
                                                 : upperCase(left.spec->name) < upperCase(right.spec->name);
        });
    }
    return columns;
}

class DefinitionWriter {
public:
    DefinitionWriter(const TablePlan& plan, const TableLayout& layout, const TableContents& contents,
                     const TableSettings& settings)
        : plan_(plan),
          layout_(layout),
          contents_(contents),
          settings_(settings),
          format_(layout.format()),
          systemTable_((plan.table->flags & systemFlag) != 0) {}

    // The joined data of the definition from its page's first byte on, without what the pages' heads hold.
    Bytes bytes() {
        const std::vector<PlacedColumn> columns = livingColumns(layout_);
        if (layout_.columns().size() > 255) {
            throw std::invalid_argument("a table has at most 255 columns");
        }
        head(columns.size());
        for (const TableContents::Index& index : contents_.indexes) {
            Bytes statistics(format_.places.definition.indexStatistics);
            putAt(statistics, 0, index.rows, 4);
            putAt(statistics, format_.places.definition.distinctKeys, index.distinctKeys, 4);
            out_.bytes(statistics);
        }
        for (const PlacedColumn& placed : columns) {
            column(placed);
        }
        for (const PlacedColumn& placed : columns) {
            name(placed.spec->name);
        }
        for (std::size_t i = 0; i < plan_.realIndexes.size(); ++i) {
            realIndex(plan_.realIndexes[i], contents_.indexes[i]);
        }
        for (const LogicalIndex& index : plan_.logicalIndexes) {
            logicalIndex(index);
        }
        for (const LogicalIndex& index : plan_.logicalIndexes) {
            name(index.name);
        }
        for (const TableContents::LongValues& values : contents_.longValues) {
            out_.u16(values.column);
            out_.u32(values.map);
            out_.u32(values.roomMap);
        }
        out_.u16(jet::noColumn);
        putAt(out_.data(), format_.places.definition.length, out_.size(), 4);
        return out_.data();
    }

private:
    void head(std::size_t columnCount) {
        const auto& at = format_.places.definition;
        Bytes record(at.end);
        put(record, format_.definition.mark, definitionMark, 4);
        put(record, at.rows, contents_.rowCount, 4);
        put(record, at.lastAutoNumber, contents_.lastAutoNumber, 4);
        put(record, format_.definition.autoNumberStep, 1, 4);
        put(record, at.kind, systemTable_ ? jet::systemTable : jet::userTable, 1);
        put(record, at.maxColumns, layout_.columns().size(), 2);
        put(record, at.variableColumns, layout_.variableCount(), 2);
        put(record, at.columns, columnCount, 2);
        put(record, at.logicalIndexes, plan_.logicalIndexes.size(), 4);
        put(record, at.realIndexes, plan_.realIndexes.size(), 4);
        put(record, at.pageMap, contents_.pageMap, 4);
        put(record, at.roomMap, contents_.roomMap, 4);
        out_.bytes(record);
    }

    std::uint8_t columnFlags(const PlacedColumn& column) const {
        using namespace jet::columnFlag;
        const ColumnSpec& spec = *column.spec;
        return static_cast<std::uint8_t>((column.fixed ? fixed : 0) | updatable |
                                         (spec.autoNumber ? autoNumber : 0) |
                                         (spec.systemColumn || systemTable_ ? system : 0) |
                                         (spec.autoNumber && spec.type == ColumnType::Guid ? autoGuid : 0) |
                                         (spec.hyperlink ? hyperlink : 0));
    }

    void column(const PlacedColumn& column) {
        const auto& at = format_.places.column;
        Bytes record(at.size);
        put(record, at.type, static_cast<unsigned>(column.spec->type), 1);
        put(record, format_.definition.columnMark, definitionMark, 4);
        put(record, at.number, column.number, 2);
        put(record, at.variableIndex, column.variableIndex, 2);
        put(record, at.ordinal, column.ordinal, 2);
        put(record, at.locale, static_cast<unsigned>(settings_.sortOrder), 2);
        put(record, at.codePage, static_cast<unsigned>(settings_.coding.codePage), 2);
        put(record, at.flags, columnFlags(column), 1);
        put(record, at.secondFlags, column.compressed ? compressedText : 0, 1);
        put(record, at.fixedOffset, column.fixedOffset, 2);
        put(record, at.length, columnLength(*column.spec, settings_.coding), 2);
        out_.bytes(record);
    }

    void realIndex(const RealIndex& index, const TableContents::Index& contents) {
        if (index.columns.empty() || index.columns.size() > jet::columnsPerIndex) {
            throw std::invalid_argument("an index has 1 to 10 columns");
        }
        const auto& at = format_.places.realIndex;
        Bytes record(at.size);
        put(record, format_.definition.realIndexMark, realIndexMark, 4);
        for (std::size_t i = 0; i < jet::columnsPerIndex; ++i) {
            const bool used = i < index.columns.size();
            const std::size_t slot = at.columns + 3 * i;
            put(record, slot, used ? layout_.column(index.columns[i].column).number : jet::noColumn, 2);
            put(record, slot + 2, used && !index.columns[i].descending ? 1 : 0, 1);
        }
        put(record, at.map, contents.map, 4);
        put(record, at.root, contents.root, 4);
        put(record, at.flags, index.flags | format_.definition.realIndexFlags, 1);
        out_.bytes(record);
    }

    void logicalIndex(const LogicalIndex& index) {
        const bool ofRelation = index.side != jet::IndexSide::None;
        constexpr unsigned noRelation = 4;
        const auto& at = format_.places.logicalIndex;
        Bytes record(at.size);
        put(record, format_.definition.logicalIndexMark, definitionMark, 4);
        put(record, at.number, index.number, 4);
        put(record, at.realIndex, index.realIndex, 4);
        put(record, at.side, static_cast<unsigned>(index.side), 1);
        put(record, at.otherIndex, index.otherIndex, 4);
        put(record, at.otherTable, index.otherTable, 4);
        put(record, at.cascadeUpdates, ofRelation ? index.cascadeUpdates : noRelation, 1);
        put(record, at.cascadeDeletes, ofRelation ? index.cascadeDeletes : noRelation, 1);
        put(record, at.type, static_cast<unsigned>(index.type), 1);
        out_.bytes(record);
    }

    void name(TextView text) {
        const std::string bytes = encodeText(text, settings_.coding);
        if (bytes.size() > format_.longestName) {
            throw std::invalid_argument("a name is longer than 255 bytes: " + toUtf8(text));
        }
        Bytes length(format_.places.definition.nameLength);
        putAt(length, 0, bytes.size(), length.size());
        out_.bytes(length);
        out_.text(bytes);
    }

    const TablePlan& plan_;
    const TableLayout& layout_;
    const TableContents& contents_;
    const TableSettings& settings_;
    const WrittenFormat& format_;
    bool systemTable_;
    ByteWriter out_;
};

} // namespace

void writeDefinition(PageFile& file, const TablePlan& plan, const TableLayout& layout,
                     const TableContents& contents, const TableSettings& settings) {
    const Bytes bytes = DefinitionWriter(plan, layout, contents, settings).bytes();
    const bool countsRoom = file.format().definition.countsRoom;
    PageNumber page = plan.definition;
    for (std::size_t done = 0; true;) {
        // Behind the head of the first page the joined data goes on, which counts that head.
        const std::size_t start = done == 0 ? 0 : pageHead;
        const std::size_t length = std::min(bytes.size() - done, file.pageSize() - start);
        const PageNumber next = done + length < bytes.size() ? file.allocate() : 0;
        const auto target = file.page(page);
        std::ranges::copy(std::span(bytes).subspan(done, length),
                          target.begin() + static_cast<std::ptrdiff_t>(start));
        target[0] = static_cast<std::uint8_t>(jet::PageKind::Definition);
        target[1] = 1;
        const std::size_t used = start + length + pageHead;
        putAt(target, 2, countsRoom ? file.pageSize() - std::min(used, file.pageSize()) : lettersVC, 2);
        putAt(target, 4, next, 4);
        done += length;
        if (next == 0) {
            return;
        }
        page = next;
    }
}

} // namespace relvane::samples
