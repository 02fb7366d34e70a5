#include "sample_builder/definition_writer.h"

#include <algorithm>
#include <stdexcept>

#include "sample_builder/byte_writer.h"
#include "sample_builder/column_value.h"

namespace relvane::samples {

namespace {

constexpr std::size_t pageHead = 8; // kind, 1, "VC", next page

void name(ByteWriter& out, TextView text, TextCoding coding) {
    const std::string bytes = encodeText(text, coding);
    if (bytes.size() > 255) {
        throw std::invalid_argument("a name is longer than 255 bytes: " + bytes);
    }
    out.u8(bytes.size());
    out.text(bytes);
}

std::uint8_t columnFlags(const PlacedColumn& column, bool systemTable) {
    using namespace jet::columnFlag;
    const ColumnSpec& spec = *column.spec;
    return static_cast<std::uint8_t>(
        (column.fixed ? fixed : 0) | updatable | (spec.autoNumber ? autoNumber : 0) |
        (spec.systemColumn || systemTable ? system : 0) |
        (spec.autoNumber && spec.type == ColumnType::Guid ? autoGuid : 0) | (spec.hyperlink ? hyperlink : 0));
}

std::size_t columnLength(const ColumnSpec& column) {
    if (column.type == ColumnType::Boolean) {
        return 1;
    }
    return isLongValue(column.type) ? 0 : storedSize(column);
}

void column(ByteWriter& out, const PlacedColumn& column, bool systemTable, const TableSettings& settings) {
    out.u8(static_cast<unsigned>(column.spec->type));
    out.u16(column.number);
    out.u16(column.variableIndex);
    out.u16(column.ordinal);
    out.u16(0);
    out.u16(static_cast<unsigned>(settings.sortOrder));
    out.u16(static_cast<unsigned>(settings.coding.codePage));
    out.u8(columnFlags(column, systemTable));
    out.u16(column.fixedOffset);
    out.u16(columnLength(*column.spec));
}

void realIndex(ByteWriter& out, const RealIndex& index, const TableLayout& layout,
               const TableContents::Index& contents) {
    if (index.columns.empty() || index.columns.size() > jet::columnsPerIndex) {
        throw std::invalid_argument("an index has 1 to 10 columns");
    }
    for (std::size_t i = 0; i < jet::columnsPerIndex; ++i) {
        const bool used = i < index.columns.size();
        out.u16(used ? layout.column(index.columns[i].column).number : jet::noColumn);
        out.u8(used && !index.columns[i].descending ? 1 : 0);
    }
    out.u32(contents.map);
    out.u32(contents.root);
    out.u8(index.flags);
}

void logicalIndex(ByteWriter& out, const LogicalIndex& index) {
    const bool ofRelation = index.side != jet::IndexSide::None;
    constexpr unsigned noRelation = 4;
    out.u32(index.number);
    out.u32(index.realIndex);
    out.u8(static_cast<unsigned>(index.side));
    out.u32(index.otherIndex);
    out.u32(index.otherTable);
    out.u8(ofRelation ? index.cascadeUpdates : noRelation);
    out.u8(ofRelation ? index.cascadeDeletes : noRelation);
    out.u8(static_cast<unsigned>(index.type));
}

// The joined data of the definition from its page's first byte on, without what the pages' heads hold.
Bytes definitionBytes(const TablePlan& plan, const TableLayout& layout, const TableContents& contents,
                      const TableSettings& settings) {
    const bool systemTable = (plan.table->flags & systemFlag) != 0;
    std::vector<PlacedColumn> columns;
    std::ranges::copy_if(layout.columns(), std::back_inserter(columns),
                         [](const PlacedColumn& column) { return !column.spec->deleted; });
    if (layout.columns().size() > 255) {
        throw std::invalid_argument("a table has at most 255 columns");
    }

    ByteWriter out;
    out.zeros(pageHead);
    out.u32(0); // the length, below
    out.u32(contents.rowCount);
    out.u32(contents.lastAutoNumber);
    out.u8(systemTable ? jet::systemTable : jet::userTable);
    out.u16(layout.columns().size());
    out.u16(layout.variableCount());
    out.u16(columns.size());
    out.u32(plan.logicalIndexes.size());
    out.u32(plan.realIndexes.size());
    out.u32(contents.pageMap);
    out.u32(contents.roomMap);
    for (const TableContents::Index& index : contents.indexes) {
        out.u32(index.rows);
        out.u32(index.distinctKeys);
    }
    for (const PlacedColumn& placed : columns) {
        column(out, placed, systemTable, settings);
    }
    for (const PlacedColumn& placed : columns) {
        name(out, placed.spec->name, settings.coding);
    }
    for (std::size_t i = 0; i < plan.realIndexes.size(); ++i) {
        realIndex(out, plan.realIndexes[i], layout, contents.indexes[i]);
    }
    for (const LogicalIndex& index : plan.logicalIndexes) {
        logicalIndex(out, index);
    }
    for (const LogicalIndex& index : plan.logicalIndexes) {
        name(out, index.name, settings.coding);
    }
    for (const TableContents::LongValues& values : contents.longValues) {
        out.u16(values.column);
        out.u32(values.map);
        out.u32(values.roomMap);
    }
    out.u16(jet::noColumn);
    putAt(out.data(), format.definition.length, out.size(), 4);
    return out.data();
}

} // namespace

void writeDefinition(PageFile& file, const TablePlan& plan, const TableLayout& layout,
                     const TableContents& contents, const TableSettings& settings) {
    const Bytes bytes = definitionBytes(plan, layout, contents, settings);
    PageNumber page = plan.definition;
    for (std::size_t done = pageHead; true;) {
        const std::size_t length = std::min(bytes.size() - done, pageSize - pageHead);
        const PageNumber next = done + length < bytes.size() ? file.allocate() : 0;
        const auto target = file.page(page);
        target[0] = static_cast<std::uint8_t>(jet::PageKind::Definition);
        target[1] = 1;
        target[2] = 'V';
        target[3] = 'C';
        putAt(target, 4, next, 4);
        std::ranges::copy(std::span(bytes).subspan(done, length), target.begin() + pageHead);
        done += length;
        if (next == 0) {
            return;
        }
        page = next;
    }
}

} // namespace relvane::samples
