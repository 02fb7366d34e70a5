#include "jet/column_value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "jet/long_value.h"
#include "jet/stored_text.h"

namespace relvane::jet {
namespace {

Value dateValue(double days) {
    const auto date = DateTime::fromOleDate(days);
    return date ? Value(*date) : Value(Null{});
}

Guid guidValue(const ByteSpan& cell) {
    Guid guid;
    std::ranges::copy(cell.part(0, guid.bytes.size()).bytes(), guid.bytes.begin());
    return guid;
}

// A sign byte, then four 32-bit words, the most significant first.
Decimal numericValue(const ByteSpan& cell, unsigned scale) {
    std::array<std::uint32_t, 4> words{};
    for (std::size_t i = 0; i < words.size(); ++i) {
        words[i] = cell.u32(1 + 4 * i);
    }
    std::string digits; // least significant first
    while (std::ranges::any_of(words, [](std::uint32_t word) { return word != 0; })) {
        std::uint64_t rest = 0;
        for (std::uint32_t& word : words) {
            const std::uint64_t part = rest << 32 | word;
            word = static_cast<std::uint32_t>(part / 10);
            rest = part % 10;
        }
        digits += static_cast<char>('0' + rest);
    }
    digits.resize(std::max<std::size_t>(digits.size(), scale + std::size_t{1}), '0');
    std::string text(digits.rbegin(), digits.rend());
    if (scale > 0) {
        text.insert(text.size() - scale, 1, '.');
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') {
            text.pop_back();
        }
    }
    const bool negative = (cell.u8(0) & 0x80) != 0 && text != "0";
    return {fromUtf8(negative ? "-" + text : text)};
}

// ASCII: days since 0001-01-01, ":", ten-millionths of a second, ":", a digit of precision, NUL.
Value extendedDateValue(const ByteSpan& cell) {
    constexpr double daysToOleEpoch = 693593;
    const auto bytes = cell.bytes();
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::size_t colon = text.find(':');
    long long days = 0;
    long long ticks = 0;
    if (colon == std::string_view::npos ||
        std::from_chars(text.data(), text.data() + colon, days).ec != std::errc() ||
        std::from_chars(text.data() + colon + 1, text.data() + text.size(), ticks).ec != std::errc() ||
        ticks < 0) {
        return Null{};
    }
    const double time = static_cast<double>(ticks) / 864000000000.0;
    const double day = static_cast<double>(days) - daysToOleEpoch;
    return dateValue(day < 0 ? day - time : day + time);
}

} // namespace

Value columnValue(const PageFile& file, const Column& column, const Row& row) {
    if (column.isCalculated()) {
        return Null{};
    }
    if (column.type == ColumnType::Boolean) {
        return row.bit(column);
    }
    const auto cell = row.cell(column);
    if (!cell) {
        return Null{};
    }
    switch (column.type) {
    case ColumnType::Byte:
        return std::int64_t{cell->u8(0)};
    case ColumnType::Integer:
        return std::int64_t{cell->i16(0)};
    case ColumnType::Long:
    case ColumnType::Complex:
        return std::int64_t{cell->i32(0)};
    case ColumnType::BigInt:
        return cell->i64(0);
    case ColumnType::Currency:
        return Currency{cell->i64(0)};
    case ColumnType::Single:
        return cell->f32(0);
    case ColumnType::Double:
        return cell->f64(0);
    case ColumnType::Date:
        return dateValue(cell->f64(0));
    case ColumnType::ExtendedDate:
        return extendedDateValue(*cell);
    case ColumnType::Text:
        return decodeText(file, *cell, column.codePage);
    case ColumnType::Memo: {
        const Bytes bytes = readLongValue(file, *cell);
        return decodeText(file, ByteSpan(bytes, cell->page()), column.codePage);
    }
    case ColumnType::Ole:
        return readLongValue(file, *cell);
    case ColumnType::Guid:
        return guidValue(*cell);
    case ColumnType::Numeric:
        return numericValue(*cell, column.scale);
    default:
        return cell->copy();
    }
}

} // namespace relvane::jet
