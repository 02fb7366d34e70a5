#include "sample_builder/column_value.h"

#include <bit>
#include <limits>
#include <stdexcept>

#include "sample_builder/byte_writer.h"

namespace relvane::samples {

namespace {

[[noreturn]] void mismatch(const ColumnSpec& column) {
    throw std::invalid_argument("a value does not go with the type of column " + toUtf8(column.name));
}

template <class Number>
std::uint64_t integerOf(const Value& value, const ColumnSpec& column) {
    const auto* number = std::get_if<std::int64_t>(&value);
    if (number == nullptr || *number < std::numeric_limits<Number>::min() ||
        *number > std::numeric_limits<Number>::max()) {
        mismatch(column);
    }
    return static_cast<std::uint64_t>(*number);
}

} // namespace

double numberOf(const Value& value) {
    if (const auto* number = std::get_if<double>(&value)) {
        return *number;
    }
    if (const auto* number = std::get_if<float>(&value)) {
        return *number;
    }
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*number);
    }
    if (const auto* date = std::get_if<DateTime>(&value)) {
        return date->toOleDate();
    }
    throw std::invalid_argument("no number");
}

Currency currencyOf(const Value& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return {*whole * 10'000};
    }
    return std::get<Currency>(value);
}

Bytes storedBytes(const Value& value, const ColumnSpec& column, TextCoding coding) {
    ByteWriter out;
    try {
        switch (column.type) {
        case ColumnType::Boolean:
            break;
        case ColumnType::Byte:
            out.u8(integerOf<std::uint8_t>(value, column));
            break;
        case ColumnType::Integer:
            out.u16(integerOf<std::int16_t>(value, column));
            break;
        case ColumnType::Long:
            out.u32(integerOf<std::int32_t>(value, column));
            break;
        case ColumnType::Currency:
            out.u64(static_cast<std::uint64_t>(currencyOf(value).tenThousandths));
            break;
        case ColumnType::Single:
            out.u32(std::bit_cast<std::uint32_t>(static_cast<float>(numberOf(value))));
            break;
        case ColumnType::Double:
        case ColumnType::Date:
            out.u64(std::bit_cast<std::uint64_t>(numberOf(value)));
            break;
        case ColumnType::Guid:
            out.bytes(std::get<Guid>(value).bytes);
            break;
        case ColumnType::Binary:
        case ColumnType::Ole:
            out.bytes(std::get<Bytes>(value));
            break;
        case ColumnType::Text:
        case ColumnType::Memo:
            if (const auto* bytes = std::get_if<Bytes>(&value)) {
                out.bytes(*bytes);
            } else {
                out.text(encodeText(std::get<Text>(value), coding));
            }
            break;
        case ColumnType::LongBinary:
            if (coding.wide) {
                out.bytes(std::get<Bytes>(value));
                break;
            }
            [[fallthrough]];
        default:
            throw std::invalid_argument("no such type is written: column " + toUtf8(column.name));
        }
    } catch (const std::bad_variant_access&) {
        mismatch(column);
    }
    if (!hasFixedSize(column.type) && !isLongValue(column.type) && out.size() > storedSize(column, coding)) {
        throw std::invalid_argument("a value is longer than column " + toUtf8(column.name));
    }
    return out.data();
}

std::size_t toldSize(const ColumnSpec& column, TextCoding coding) {
    constexpr std::size_t longest = 255, longestWideBinary = 510;
    if (column.size > 0) {
        return static_cast<std::size_t>(column.size);
    }
    return coding.wide && column.type == ColumnType::Binary ? longestWideBinary : longest;
}

std::size_t storedSize(const ColumnSpec& column, TextCoding coding) {
    switch (column.type) {
    case ColumnType::Boolean:
        return 0;
    case ColumnType::Byte:
        return 1;
    case ColumnType::Integer:
        return 2;
    case ColumnType::Long:
    case ColumnType::Single:
        return 4;
    case ColumnType::Currency:
    case ColumnType::Double:
    case ColumnType::Date:
        return 8;
    case ColumnType::Guid:
        return 16;
    case ColumnType::Ole:
    case ColumnType::Memo:
        return jet::longValueHead;
    case ColumnType::Text:
        return toldSize(column, coding) * (coding.wide ? 2 : 1);
    default:
        return toldSize(column, coding);
    }
}

bool isLongValue(ColumnType type) {
    return type == ColumnType::Memo || type == ColumnType::Ole;
}

bool hasFixedSize(ColumnType type) {
    return type != ColumnType::Text && type != ColumnType::Binary && type != ColumnType::LongBinary &&
           !isLongValue(type);
}

} // namespace relvane::samples
