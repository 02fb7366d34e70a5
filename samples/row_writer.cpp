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

// Access compresses the texts of the tables that it makes for its users.
bool compressesTexts(const TableSpec& table, TextCoding coding) {
    return coding.wide && (table.flags & (systemFlag | accessTableFlag)) == 0;
}

} // namespace

TableLayout::TableLayout(const TableSpec& table, const WrittenFormat& format, TextCoding coding)
    : format_(format), coding_(coding) {
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
        const bool isText = column.type == ColumnType::Text || column.type == ColumnType::Memo;
        placed.compressed = isText && !placed.fixed && compressesTexts(table, coding);
        if (!placed.fixed) {
            ++variableCount_;
        } else if (column.type != ColumnType::Boolean) {
            placed.fixedOffset = offset;
            offset += static_cast<unsigned>(storedSize(column, coding));
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
    const auto& limits = file_.format().longValue;
    constexpr std::size_t pointerSize = 4;
    const std::size_t piece = limits.longestRow - pointerSize;
    LongValuePlace place = column.spec->longValues;
    if (place == LongValuePlace::Automatic) {
        place = data.size() <= limits.inlineLimit  ? LongValuePlace::Inline
                : data.size() <= limits.longestRow ? LongValuePlace::OnePage
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

// The offsets of the variable columns at the end of a row, nearest the end the first; the last is the end of the data.
void appendOffsets(ByteWriter& row, const std::vector<std::size_t>& offsets) {
    for (auto offset = offsets.rbegin(); offset != offsets.rend(); ++offset) {
        row.u16(*offset);
    }
    row.u16(offsets.size() - 1);
}

// The same where they have one byte each. Where they pass a multiple of 256, a jump byte names the column; there is room for as many jump
// bytes as the row's whole length asks for, and one that is not needed is filled with 255.
void appendShortOffsets(ByteWriter& row, const std::vector<std::size_t>& offsets, std::size_t maskSize) {
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

// A text of one byte a character: a mark, then the characters. Only where that is shorter, and of long texts only when
// they are short enough then.
Bytes compressed(const Bytes& wide) {
    constexpr std::size_t longest = 4096;
    Bytes narrow = {0xFF, 0xFE};
    for (std::size_t i = 0; i + 1 < wide.size(); i += 2) {
        if (wide[i] == 0 || wide[i + 1] != 0) {
            return wide;
        }
        narrow.push_back(wide[i]);
    }
    return narrow.size() < wide.size() && narrow.size() <= longest ? narrow : wide;
}

// What a text or bytes of a fixed size are filled up with.
void fillUp(Bytes& bytes, const ColumnSpec& column, TextCoding coding) {
    const std::size_t size = storedSize(column, coding);
    if (column.type != ColumnType::Text) {
        bytes.resize(size);
        return;
    }
    while (bytes.size() < size) {
        bytes.push_back(u' ');
        if (coding.wide) {
            bytes.push_back(0);
        }
    }
}

} // namespace

Bytes rowBytes(const TableLayout& layout, const RowSpec& row, LongValueStore& longValues) {
    const TextCoding coding = layout.coding();
    const std::size_t countSize = layout.format().places.countSize;
    const auto all = layout.columns().size();
    const std::size_t count =
        row.columnCount ? std::min(all, static_cast<std::size_t>(*row.columnCount)) : all;
    const std::span columns(layout.columns().data(), count);

    std::size_t fixedSize = 0;
    for (const PlacedColumn& column : columns) {
        if (column.fixed) {
            fixedSize = std::max(fixedSize, column.fixedOffset + storedSize(*column.spec, coding));
        }
    }
    ByteWriter out;
    out.zeros(countSize + fixedSize);
    putAt(out.data(), 0, count, countSize);
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
        if (column.compressed && std::holds_alternative<Text>(value)) {
            bytes = compressed(bytes);
        }
        if (isLongValue(column.spec->type)) {
            bytes = longValues.store(column, bytes);
        }
        if (column.fixed) {
            fillUp(bytes, *column.spec, coding);
            const std::size_t place = countSize + column.fixedOffset;
            std::ranges::copy(bytes, out.data().begin() + static_cast<std::ptrdiff_t>(place));
        } else {
            out.bytes(bytes);
        }
    }
    if (layout.variableCount() > 0) {
        offsets.push_back(out.size());
        if (countSize == 1) {
            appendShortOffsets(out, offsets, mask.size());
        } else {
            appendOffsets(out, offsets);
        }
    }
    out.bytes(mask);
    return out.data();
}

} // namespace relvane::samples
