#include "sample_builder/row_writer.h"

#include <algorithm>
#include <stdexcept>

#include "sample_builder/byte_writer.h"
#include "sample_builder/column_value.h"

namespace relvane::samples {

namespace {

bool standsFixed(const ColumnSpec& column) {
    if (column.place == ColumnPlace::Usual || column.type == ColumnType::Boolean) {
        return hasFixedSize(column.type);
    }
    return column.place == ColumnPlace::Fixed && !isLongValue(column.type);
}

} // namespace

TableLayout::TableLayout(const TableSpec& table) {
    unsigned offset = 0, position = 0;
    for (const ColumnSpec& column : table.columns) {
        PlacedColumn placed{.spec = &column,
                            .number = static_cast<unsigned>(columns_.size()),
                            .variableIndex = variableCount_,
                            .ordinal = position,
                            .valuePosition = position,
                            .fixed = standsFixed(column)};
        if (column.ordinal) {
            placed.ordinal = static_cast<unsigned>(*column.ordinal);
        }
        if (!column.deleted) {
            ++position;
        }
        if (!placed.fixed) {
            ++variableCount_;
        } else if (column.type != ColumnType::Boolean) {
            placed.fixedOffset = offset;
            offset += static_cast<unsigned>(storedSize(column));
        }
        columns_.push_back(placed);
    }
}

const PlacedColumn& TableLayout::column(TextView name) const {
    for (const PlacedColumn& column : columns_) {
        if (!column.spec->deleted && equalsIgnoringCase(column.spec->name, name)) {
            return column;
        }
    }
    throw std::invalid_argument("no column " + toUtf8(name));
}

const Value& valueOf(const RowSpec& row, const PlacedColumn& column) {
    static const Value null;
    const bool has = !column.spec->deleted && column.valuePosition < row.values.size();
    return has ? row.values[column.valuePosition] : null;
}

DataPages& LongValueStore::pagesOf(const PlacedColumn& column) {
    return pages_.try_emplace(column.number, file_, jet::longValueOwner).first->second;
}

Bytes LongValueStore::store(const PlacedColumn& column, const Bytes& data) {
    constexpr std::size_t inlineLimit = 40, pointerSize = 4, piece = DataPages::longestRow - pointerSize;
    LongValuePlace place = column.spec->longValues;
    if (place == LongValuePlace::Automatic) {
        place = data.size() <= inlineLimit             ? LongValuePlace::Inline
                : data.size() <= DataPages::longestRow ? LongValuePlace::OnePage
                                                       : LongValuePlace::Chain;
    }
    std::uint32_t word = static_cast<std::uint32_t>(data.size()), pointer = 0;
    if (place == LongValuePlace::Inline) {
        word |= jet::longValueInline;
    } else if (place == LongValuePlace::OnePage) {
        word |= jet::longValueSingle;
        pointer = pagesOf(column).append(data).pointer();
    } else {
        // Written from the end, so that each piece knows where the next one stands. Short values are cut in two.
        const std::size_t length = std::min(piece, std::max<std::size_t>(1, (data.size() + 1) / 2));
        for (std::size_t end = data.size(); end > 0;) {
            const std::size_t start = (end - 1) / length * length;
            ByteWriter row;
            row.u32(pointer);
            row.bytes(std::span(data).subspan(start, end - start));
            pointer = pagesOf(column).append(row.data()).pointer();
            end = start;
        }
    }
    ByteWriter head;
    head.u32(word);
    head.u32(pointer);
    head.u32(0);
    if (place == LongValuePlace::Inline) {
        head.bytes(data);
    }
    return head.data();
}

namespace {

// The offsets of the variable columns at the end of a row, one byte each, nearest the end the first; the last is the
// end of the data. Where they pass a multiple of 256, a jump byte names the column; there is room for as many jump
// bytes as the row's whole length asks for, and one that is not needed is filled with 255.
void appendOffsets(ByteWriter& row, const std::vector<std::size_t>& offsets, std::size_t maskSize) {
    const std::size_t base = row.size() + offsets.size() + 1 + maskSize;
    std::size_t jumps = 0;
    while ((base + jumps - 1) / 256 > jumps) {
        ++jumps;
    }
    for (auto offset = offsets.rbegin(); offset != offsets.rend(); ++offset) {
        row.u8(*offset % 256);
    }
    Bytes jumpBytes(jumps, 0xFF);
    for (std::size_t jump = 0; jump < jumps; ++jump) {
        const auto passes = [&](std::size_t offset) { return offset >= 256 * (jump + 1); };
        const auto first = std::ranges::find_if(offsets, passes);
        if (first != offsets.end()) {
            jumpBytes[jumps - 1 - jump] = static_cast<std::uint8_t>(first - offsets.begin());
        }
    }
    row.bytes(jumpBytes);
    row.u8(offsets.size() - 1);
}

} // namespace

Bytes rowBytes(const TableLayout& layout, const RowSpec& row, LongValueStore& longValues, TextCoding coding) {
    const auto all = layout.columns().size();
    const std::size_t count =
        row.columnCount ? std::min(all, static_cast<std::size_t>(*row.columnCount)) : all;
    const std::span columns(layout.columns().data(), count);

    std::size_t fixedSize = 0;
    for (const PlacedColumn& column : columns) {
        if (column.fixed) {
            fixedSize = std::max(fixedSize, column.fixedOffset + storedSize(*column.spec));
        }
    }
    ByteWriter out;
    out.u8(count);
    out.zeros(fixedSize);
    Bytes mask((count + 7) / 8);
    std::vector<std::size_t> offsets;
    for (const PlacedColumn& column : columns) {
        const Value& value = valueOf(row, column);
        const bool null = std::holds_alternative<Null>(value);
        const bool isBoolean = column.spec->type == ColumnType::Boolean;
        if (!column.fixed) {
            offsets.push_back(out.size());
        }
        if (null || (isBoolean && !std::get<bool>(value))) {
            continue;
        }
        mask[column.number / 8] = static_cast<std::uint8_t>(mask[column.number / 8] | 1 << column.number % 8);
        Bytes bytes = storedBytes(value, *column.spec, coding);
        if (isLongValue(column.spec->type)) {
            bytes = longValues.store(column, bytes);
        }
        if (column.fixed) {
            const bool isText = column.spec->type == ColumnType::Text;
            bytes.resize(storedSize(*column.spec), static_cast<std::uint8_t>(isText ? ' ' : 0));
            std::ranges::copy(bytes, out.data().begin() + 1 + column.fixedOffset);
        } else {
            out.bytes(bytes);
        }
    }
    if (layout.variableCount() > 0) {
        offsets.push_back(out.size());
        appendOffsets(out, offsets, mask.size());
    }
    out.bytes(mask);
    return out.data();
}

} // namespace relvane::samples
