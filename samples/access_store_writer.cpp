#include "sample_builder/access_store_writer.h"

#include <algorithm>

#include "sample_builder/byte_writer.h"

namespace relvane::samples {

namespace {

const Text listName = u"\u0003DirData", propertiesName = u"PropData";

Text numberText(std::uint32_t number) {
    return toText(static_cast<long long>(number));
}

void utf16(ByteWriter& out, TextView text) {
    for (const char16_t unit : text) {
        out.u16(unit);
    }
}

// ---- Properties of storages

enum class NumberKey : std::uint32_t { Flags = 0, HasModule = 1, StoreVersion = 0x69, CodePage = 0x6A };

class PropertyWriter {
public:
    PropertyWriter() { out_.u32(0); }

    void number(NumberKey key, std::uint32_t value) {
        constexpr std::uint8_t kind = 2;
        out_.u8(kind);
        out_.u32(static_cast<std::uint32_t>(key));
        out_.u32(value);
    }

    // What a container says of the storage of that number. Nobody reads it, and what it is for is not known.
    void storage(std::uint32_t number, std::uint32_t flags) {
        constexpr std::uint8_t kind = 5;
        const Text digits = numberText(number);
        const std::size_t size = 2 * digits.size();
        out_.u8(kind);
        out_.u8(1 + size + 6);
        out_.u8(size);
        utf16(out_, digits);
        utf16(out_, u"CB");
        out_.u16(u'0' + flags);
    }

    Bytes bytes() { return std::move(out_.data()); }

private:
    ByteWriter out_;
};

std::uint32_t flagsOf(const StoredObject& object) {
    constexpr std::uint32_t isClass = 0x100;
    return (object.hidden ? hiddenFlag : 0) | (object.isClass ? isClass : 0);
}

Bytes propertiesOf(const StoredObject& object) {
    PropertyWriter properties;
    properties.number(NumberKey::Flags, flagsOf(object));
    if (object.hasModule) {
        properties.number(NumberKey::HasModule, *object.hasModule ? 1 : 0);
    }
    return properties.bytes();
}

} // namespace

std::pair<Text, Bytes> objectList(const Text& container,
                                  const std::vector<std::pair<Text, std::uint32_t>>& objects) {
    constexpr std::uint8_t kind = 4;
    ByteWriter list;
    list.u32(0);
    for (const auto& [name, number] : objects) {
        list.u8(kind);
        list.u8(2 * name.size() + 4);
        utf16(list, name);
        list.u32(number);
    }
    return {container + u'/' + listName, std::move(list.data())};
}

Streams containerStreams(const Text& container, const std::vector<StoredObject>& objects) {
    if (objects.empty()) {
        return {{container + u'/', {}}};
    }
    Streams streams;
    std::vector<std::pair<Text, std::uint32_t>> numbers;
    PropertyWriter properties;
    for (const StoredObject& object : objects) {
        const auto number = static_cast<std::uint32_t>(numbers.size());
        const Text folder = container + u'/' + numberText(number) + u'/';
        for (const auto& [name, content] : object.streams) {
            streams.emplace_back(folder + name, content);
        }
        streams.emplace_back(folder + propertiesName, propertiesOf(object));
        numbers.emplace_back(object.name, number);
        properties.storage(number, flagsOf(object));
    }
    streams.push_back(objectList(container, numbers));
    streams.emplace_back(container + u'/' + propertiesName, properties.bytes());
    return streams;
}

Streams commonStreams(int codePage) {
    constexpr std::uint32_t version = 3;
    PropertyWriter properties;
    properties.number(NumberKey::StoreVersion, version);
    properties.number(NumberKey::CodePage, static_cast<std::uint32_t>(codePage));
    return {{u"Cmdbars/", {}},
            {u"CustomGroups/", {}},
            {u"DataAccessPages/", {}},
            {u"Databases/0/Blob", {}},
            objectList(u"Databases", {{u"MSysDb", 0}}),
            {propertiesName, properties.bytes()}};
}

TableSpec storeTable(const Bytes& compoundFile, FileFormat format,
                     const std::vector<std::pair<std::size_t, std::size_t>>& unused) {
    const bool isNewer = format == FileFormat::Access2000;
    const std::size_t pieceSize = isNewer ? 3992 : 241;
    TableSpec table{.name = u"MSysAccessObjects", .flags = accessTableFlag};
    table.columns = {{.name = u"Data",
                      .type = isNewer ? ColumnType::LongBinary : ColumnType::Binary,
                      .size = static_cast<int>(pieceSize),
                      .ordinal = 0,
                      .place = ColumnPlace::Fixed},
                     {.name = u"ID", .type = ColumnType::Long, .ordinal = 0, .place = ColumnPlace::Variable}};
    table.indexes = {{.name = u"AOIndex", .columns = {{u"ID"}}, .primary = true}};

    constexpr std::uint32_t kind = 5;
    ByteWriter head;
    head.u32(kind);
    head.u32(compoundFile.size());
    head.zeros(pieceSize - head.size());
    table.rows.push_back({head.data(), 0});
    for (std::size_t at = 0, number = 1; at < compoundFile.size(); at += pieceSize, ++number) {
        const std::size_t end = std::min(at + pieceSize, compoundFile.size());
        const bool isUnused = std::ranges::any_of(
            unused, [&](const auto& range) { return range.first <= at && end <= range.second; });
        if (!isUnused) {
            Bytes piece(compoundFile.begin() + static_cast<std::ptrdiff_t>(at),
                        compoundFile.begin() + static_cast<std::ptrdiff_t>(end));
            piece.resize(pieceSize);
            table.rows.push_back({std::move(piece), static_cast<std::int64_t>(number)});
        }
    }
    return table;
}

} // namespace relvane::samples
