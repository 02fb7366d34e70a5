#include "jet/property_blob.h"

#include <algorithm>

#include "jet/stored_text.h"

namespace relvane::jet {
namespace {

constexpr std::size_t chunkHeader = 6, ownerHeader = 6, valueHeader = 8;

// A signed number of as many bytes as are there: type Integer often carries four.
std::int64_t signedNumber(const ByteSpan& data) {
    data.require(data.size() >= 1 && data.size() <= 8, u"プロパティの数値の長さが正しくありません");
    std::uint64_t number = (data.u8(data.size() - 1) & 0x80) != 0 ? ~std::uint64_t{0} : 0;
    for (std::size_t i = data.size(); i-- > 0;) {
        number = number << 8 | data.u8(i);
    }
    return static_cast<std::int64_t>(number);
}

Guid guidOf(const ByteSpan& data) {
    Guid guid;
    std::ranges::copy(data.part(0, guid.bytes.size()).bytes(), guid.bytes.begin());
    return guid;
}

Value propertyValue(const PageFile& file, ColumnType type, TextView name, const ByteSpan& data) {
    switch (type) {
    case ColumnType::Boolean:
        return data.u8(0) != 0;
    case ColumnType::Byte:
        return std::int64_t{data.u8(0)};
    case ColumnType::Integer:
    case ColumnType::Long:
        return signedNumber(data);
    case ColumnType::Currency:
        return Currency{data.i64(0)};
    case ColumnType::Single:
        return data.f32(0);
    case ColumnType::Double:
        return data.f64(0);
    case ColumnType::Date: {
        const auto date = DateTime::fromOleDate(data.f64(0));
        return date ? Value(*date) : Value(Null{});
    }
    case ColumnType::Text:
    case ColumnType::Memo:
        return decodeName(file, data);
    case ColumnType::Guid:
        return guidOf(data);
    case ColumnType::Binary:
        if (data.size() == sizeof(Guid::bytes) && name == u"GUID") {
            return guidOf(data);
        }
        return data.copy();
    default:
        return data.copy();
    }
}

std::vector<Text> readNames(const PageFile& file, const ByteSpan& body) {
    std::vector<Text> names;
    for (std::size_t at = 0; at < body.size();) {
        const std::size_t length = body.u16(at);
        names.push_back(decodeName(file, body.part(at + 2, length)));
        at += 2 + length;
    }
    return names;
}

StoredProperty readValue(const PageFile& file, const std::vector<Text>& names, const ByteSpan& value) {
    const std::size_t name = value.u16(4);
    value.require(name < names.size(), u"プロパティの名前がありません");
    StoredProperty property;
    property.name = names[name];
    property.type = value.u8(3);
    property.needsDesignPermission = (value.u8(2) & 1) != 0;
    const ByteSpan data = value.part(valueHeader, value.u16(6));
    property.value = propertyValue(file, static_cast<ColumnType>(property.type), property.name, data);
    return property;
}

} // namespace

const StoredProperty* findProperty(const std::vector<StoredProperty>& properties, TextView name) {
    const auto found = std::ranges::find_if(
        properties, [&](const StoredProperty& property) { return equalsIgnoringCase(property.name, name); });
    return found == properties.end() ? nullptr : &*found;
}

const StoredProperty* PropertyBlob::find(TextView name) const {
    return findProperty(ofObject, name);
}

const std::vector<StoredProperty>* PropertyBlob::column(TextView name) const {
    const auto found = std::ranges::find_if(
        ofColumns, [&](const ColumnProperties& entry) { return equalsIgnoringCase(entry.column, name); });
    return found == ofColumns.end() ? nullptr : &found->properties;
}

PropertyBlob readPropertyBlob(const PageFile& file, const ByteSpan& blob, PropertyScope scope) {
    PropertyBlob result;
    if (blob.size() == 0) {
        return result;
    }
    blob.require(blob.u32(0) == file.format().propertyMagic, u"プロパティの目印がありません");
    std::vector<Text> names;
    for (std::size_t at = 4; at < blob.size();) {
        const std::size_t length = blob.u32(at);
        blob.require(length >= chunkHeader, u"プロパティの区画が短すぎます");
        const std::uint16_t kind = blob.u16(at + 4);
        const ByteSpan body = blob.part(at, length).from(chunkHeader);
        at += length;
        if (kind == propertyChunk::names) {
            names = readNames(file, body);
            continue;
        }
        const bool wanted = kind == propertyChunk::ofObject ||
                            (kind == propertyChunk::ofColumn && scope == PropertyScope::Everything);
        if (!wanted) {
            continue;
        }
        // The owner's header says its own length, which rules where the values begin.
        const std::size_t header = body.u32(0);
        body.require(header >= 4, u"プロパティの見出しが短すぎます");
        Text owner;
        if (header >= ownerHeader) {
            owner = decodeName(file, body.part(0, header).part(ownerHeader, body.u16(4)));
        }
        std::vector<StoredProperty> properties;
        for (std::size_t value = header; value < body.size();) {
            const std::size_t size = body.u16(value);
            body.require(size >= valueHeader, u"プロパティの値が短すぎます");
            properties.push_back(readValue(file, names, body.part(value, size)));
            value += size;
        }
        if (kind == propertyChunk::ofObject) {
            std::ranges::move(properties, std::back_inserter(result.ofObject));
        } else {
            result.ofColumns.push_back({std::move(owner), std::move(properties)});
        }
    }
    return result;
}

} // namespace relvane::jet
