// Table definitions and property blobs: the whole bytes of small real ones, and damaged.

#include <gtest/gtest.h>

#include "file_builder.h"
#include "jet/property_blob.h"
#include "jet/table_definition.h"

namespace relvane::jet {
namespace {

Bytes fromHex(std::string_view digits) {
    Bytes bytes;
    for (std::size_t i = 0; i < digits.size();) {
        if (digits[i] == ' ' || digits[i] == '\n') {
            ++i;
            continue;
        }
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16)));
        i += 2;
    }
    return bytes;
}

// Three columns, a key, and the hidden side of a relation.
Bytes shippers() {
    Bytes bytes = fromHex("02 01 56 43 00 00 00 00 E5 00 00 00 03 00 00 00 03 00 00 00 4E 03 00 02 00 03 00"
                          "02 00 00 00 01 00 00 00 00 46 02 00 01 46 02 00"
                          "03 00 00 00 03 00 00 00"
                          "04 00 00 00 00 00 00 00 00 09 04 E4 04 07 00 00 04 00"
                          "0A 01 00 00 00 01 00 00 00 09 04 E4 04 02 00 02 28 00"
                          "0A 02 00 01 00 02 00 00 00 09 04 E4 04 02 00 00 18 00");
    const auto name = [&](std::string_view text) {
        bytes.push_back(static_cast<std::uint8_t>(text.size()));
        bytes.insert(bytes.end(), text.begin(), text.end());
    };
    const auto hex = [&](std::string_view digits) {
        const Bytes more = fromHex(digits);
        bytes.insert(bytes.end(), more.begin(), more.end());
    };
    name("ShipperID");
    name("CompanyName");
    name("Phone");
    hex("00 00 01");
    for (int i = 0; i < 9; ++i) {
        hex("FF FF 01");
    }
    hex("02 46 02 00 23 02 00 00 09"
        "01 00 00 00 00 00 00 00 01 09 00 00 00 C1 01 00 00 00 00 02"
        "00 00 00 00 00 00 00 00 00 FF FF FF FF 00 00 00 00 04 04 01");
    name(".rB");
    name("PrimaryKey");
    hex("FF FF");
    return bytes;
}

std::unique_ptr<PageFile> fileWith(const Bytes& definition) {
    BareFile bare;
    std::ranges::copy(definition, &bare.at(1, 0));
    return bare.open();
}

TEST(TableDefinition, TheDocumentedDefinitionIsReadWhole) {
    const auto file = fileWith(shippers());
    const TableDefinition table = readTableDefinition(*file, 1);
    EXPECT_EQ(table.rowCount, 3u);
    EXPECT_EQ(table.lastAutoNumber, 3u);
    EXPECT_EQ(table.kind, userTable);
    EXPECT_EQ(table.pageMap, (RowPointer{0x246, 0}));
    ASSERT_EQ(table.columns.size(), 3u);
    EXPECT_EQ(table.columns[0].name, u"ShipperID");
    EXPECT_EQ(table.columns[0].type, ColumnType::Long);
    EXPECT_TRUE(table.columns[0].has(columnFlag::autoNumber));
    EXPECT_EQ(table.columns[1].length, 40);
    EXPECT_EQ(table.columns[1].codePage, 1252);
    EXPECT_EQ(table.columns[2].variableIndex, 1);
    ASSERT_EQ(table.realIndexes.size(), 1u);
    EXPECT_EQ(table.realIndexes[0].entries.size(), 1u);
    EXPECT_EQ(table.realIndexes[0].root, 0x223u);
    EXPECT_EQ(table.realIndexes[0].flags, realIndexFlag::unique | realIndexFlag::required);
    EXPECT_EQ(table.realIndexes[0].distinctKeys, 3u);
    ASSERT_EQ(table.logicalIndexes.size(), 2u);
    EXPECT_TRUE(table.logicalIndexes[0].isInternal());
    EXPECT_EQ(table.logicalIndexes[0].otherTable, 0x1C1u);
    EXPECT_EQ(table.logicalIndexes[1].type, IndexType::PrimaryKey);
}

TEST(TableDefinition, EveryShortenedOrLongerOneIs3049) {
    const Bytes whole = shippers();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        Bytes cut = whole;
        cut[8] = static_cast<std::uint8_t>(length); // what the definition says of its own length
        const auto file = fileWith(cut);
        ASSERT_EQ(errorOf([&] { readTableDefinition(*file, 1); }), 3049) << length;
    }
}

TEST(TableDefinition, AbsurdCountsAre3049) {
    const auto with = [](std::size_t at, std::uint8_t value) {
        Bytes bytes = shippers();
        bytes[at] = value;
        const auto file = fileWith(bytes);
        return errorOf([&] { readTableDefinition(*file, 1); });
    };
    EXPECT_EQ(with(26, 1), 3049);    // 259 columns
    EXPECT_EQ(with(30, 0x7F), 3049); // 2 thousand million logical indexes
    EXPECT_EQ(with(34, 0x7F), 3049);
    EXPECT_EQ(with(4, 1), 3049);  // the chain comes back to its first page
    EXPECT_EQ(with(4, 2), 3049);  // the next page is no definition
    EXPECT_EQ(with(70, 0), 3049); // two columns of one number
    EXPECT_EQ(with(0, 1), 3049);  // another kind of page
}

TEST(TableDefinition, FieldsComeByOrdinalThenByName) {
    TableDefinition table;
    const auto add = [&](TextView name, std::uint16_t ordinal) {
        table.columns.emplace_back();
        table.columns.back().name = name;
        table.columns.back().ordinal = ordinal;
    };
    add(u"beta", 1);
    add(u"gamma", 0);
    add(u"Alpha", 1);
    std::vector<Text> names;
    for (const Column* column : table.columnsInOrder()) {
        names.push_back(column->name);
    }
    EXPECT_EQ(names, (std::vector<Text>{u"gamma", u"Alpha", u"beta"}));
}

// ---- Property blobs

PropertyBlob blobOf(const Bytes& bytes, const JetFormat& format = jet3) {
    const auto file = BareFile(3, format).open();
    return readPropertyBlob(*file, ByteSpan(bytes, 5));
}

const char userDefined[] = "4B 4B 44 00 11 00 00 00 80 00 09 00 4E 57 56 65 72 73 69 6F 6E"
                           "17 00 00 00 00 00 06 00 00 00 00 00 0B 00 01 0A 00 00 03 00 38 2E 30";

TEST(PropertyBlob, TheDocumentedOneIsRead) {
    const PropertyBlob blob = blobOf(fromHex(userDefined));
    ASSERT_EQ(blob.ofObject.size(), 1u);
    EXPECT_EQ(blob.ofObject[0].name, u"NWVersion");
    EXPECT_EQ(blob.ofObject[0].type, 10);
    EXPECT_TRUE(blob.ofObject[0].needsDesignPermission);
    EXPECT_EQ(blob.ofObject[0].value, Value(Text(u"8.0")));
    EXPECT_NE(blob.find(u"nwversion"), nullptr);
    EXPECT_TRUE(blobOf({}).ofObject.empty());
}

TEST(PropertyBlob, ANumberHasAsManyBytesAsStandThere) {
    // An Integer of four bytes and one of two, of the column "c".
    const PropertyBlob numbers = blobOf(fromHex("4B 4B 44 00 09 00 00 00 80 00 01 00 61"
                                                "23 00 00 00 01 00 07 00 00 00 01 00 63"
                                                "0C 00 00 03 00 00 04 00 77 00 00 00"
                                                "0A 00 00 03 00 00 02 00 FE FF"));
    const auto* column = numbers.column(u"C");
    ASSERT_NE(column, nullptr);
    ASSERT_EQ(column->size(), 2u);
    EXPECT_EQ(column->at(0).value, Value(std::int64_t{0x77}));
    EXPECT_EQ(column->at(1).value, Value(std::int64_t{-2}));
}

TEST(PropertyBlob, EveryCutOneIs3049OrShorter) {
    const Bytes whole = fromHex(userDefined);
    for (std::size_t length = 1; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        const int error = errorOf([&] { blobOf(cut); });
        const bool endsBetweenChunks = length == 4 || length == 4 + 0x11;
        ASSERT_EQ(error, endsBetweenChunks ? 0 : 3049) << length;
    }
}

TEST(PropertyBlob, LengthsThatDoNotMoveOnAre3049) {
    const auto with = [](std::size_t at, std::uint8_t value) {
        Bytes bytes = fromHex(userDefined);
        bytes[at] = value;
        return errorOf([&] { blobOf(bytes); });
    };
    EXPECT_EQ(with(0, 'X'), 3049);
    EXPECT_EQ(with(4, 5), 3049);     // a chunk shorter than its head
    EXPECT_EQ(with(27, 3), 3049);    // an owner's head shorter than its length
    EXPECT_EQ(with(33, 7), 3049);    // a value shorter than its head
    EXPECT_EQ(with(37, 1), 3049);    // a name that the pool does not have
    EXPECT_EQ(with(39, 0xFF), 3049); // data longer than the value
}

} // namespace
} // namespace relvane::jet
