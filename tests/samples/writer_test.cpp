// What the writer refuses, and how its pages look from below.

#include "sample_builder/database_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sample_builder/index_tree.h"
#include "sample_builder/property_blob.h"

namespace relvane::samples {
namespace {

using testing::HasSubstr;

std::string errorOf(const DatabaseSpec& spec) {
    try {
        databaseBytes(spec);
        return "no error";
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
}

std::string errorOf(TableSpec table) {
    DatabaseSpec spec;
    spec.tables.push_back(std::move(table));
    return errorOf(spec);
}

TEST(DatabaseWriter, RefusesARowThatDoesNotFitAPage) {
    TableSpec table{.name = u"広い"};
    RowSpec row{};
    for (int i = 0; i < 9; ++i) {
        table.columns.push_back({.name = u"c" + toText(i)});
        row.values.push_back(Text(250, u'x'));
    }
    table.rows.push_back(row);
    EXPECT_THAT(errorOf(table), HasSubstr("table 広い: a row of"));
}

TEST(DatabaseWriter, RefusesAKeyThatStandsTwiceInAUniqueIndex) {
    const TableSpec table{.name = u"t",
                          .columns = {{.name = u"a", .type = ColumnType::Long}},
                          .indexes = {{.name = u"PrimaryKey", .columns = {{u"a"}}, .primary = true}},
                          .rows = {{1}, {2}, {1}}};
    EXPECT_THAT(errorOf(table), HasSubstr("table t: a key stands twice"));
}

TEST(DatabaseWriter, RefusesValuesOfAnotherTypeAndOutOfRange) {
    const auto with = [](ColumnType type, Value value) {
        return errorOf(
            TableSpec{.name = u"t", .columns = {{.name = u"a", .type = type, .size = 3}}, .rows = {{value}}});
    };
    EXPECT_THAT(with(ColumnType::Byte, 256), HasSubstr("column a"));
    EXPECT_THAT(with(ColumnType::Integer, 32768), HasSubstr("column a"));
    EXPECT_THAT(with(ColumnType::Long, u"1"), HasSubstr("column a"));
    EXPECT_THAT(with(ColumnType::Text, u"漢字"), HasSubstr("longer than column a"));
    EXPECT_THAT(with(ColumnType::Text, u"é"), HasSubstr("code page 932 lacks"));
    EXPECT_THAT(with(ColumnType::Numeric, 1), HasSubstr("no such type"));
}

TEST(DatabaseWriter, RefusesIndexesAndRelationsWithoutTheirColumns) {
    EXPECT_THAT(
        errorOf(TableSpec{.name = u"t", .indexes = {{.name = u"i", .columns = {{u"none"}}}}, .rows = {{}}}),
        HasSubstr("no column none"));
    DatabaseSpec spec;
    spec.tables = {{.name = u"a", .columns = {{.name = u"id", .type = ColumnType::Long}}},
                   {.name = u"b", .columns = {{.name = u"id", .type = ColumnType::Long}}}};
    spec.relations = {{.name = u"r", .table = u"a", .foreignTable = u"b", .columns = {{u"id", u"id"}}}};
    EXPECT_THAT(errorOf(spec), HasSubstr("relation r needs a unique index on a"));
}

TEST(DatabaseWriter, RefusesAPasswordBeyond14Bytes) {
    DatabaseSpec spec;
    spec.password = u"ぱすわーどです１";
    EXPECT_THAT(errorOf(spec), HasSubstr("at most 14 bytes"));
}

// The stored form of a document with one property, byte by byte.
TEST(PropertyBlob, HasNamesThenValues) {
    const auto blob = propertyBlob({{u"NWVersion", u"8.0"}}, {}, latinCodePage);
    const Bytes expected = {0x4B, 0x4B, 0x44, 0x00,                           // magic
                            0x11, 0,    0,    0,    0x80, 0,   9,   0,        // names: one of 9 bytes
                            'N',  'W',  'V',  'e',  'r',  's', 'i', 'o', 'n', //
                            0x17, 0,    0,    0,    0,    0,   6,   0,   0,   0,   0,
                            0, // of the object, no owner
                            0x0B, 0,    1,    10,   0,    0,   3,   0,   '8', '.', '0'};
    EXPECT_EQ(blob, expected);
    EXPECT_FALSE(propertyBlob({}, {}, latinCodePage));
}

TEST(IndexTree, InnerPagesNameTheLastEntryOfEachChildAndTheTailPage) {
    PageFile file;
    std::vector<Bytes> entries;
    for (std::uint8_t i = 0; i < 5; ++i) {
        entries.push_back({0x7F, 1, i, 0, 0, 9, i});
    }
    const IndexTree tree = writeIndexTree(file, 7, entries, 2);
    // Leaves 0, 1, 2 with two, two and one entries; the root above them.
    ASSERT_EQ(tree.pages.size(), 4u);
    EXPECT_EQ(tree.root, 3u);
    const auto root = file.page(tree.root);
    EXPECT_EQ(root[0], static_cast<std::uint8_t>(jet::PageKind::InnerIndex));
    EXPECT_EQ(root[format.indexPage.tail], 2);
    const Bytes first(root.begin() + 0xF8, root.begin() + 0xF8 + 11);
    EXPECT_EQ(first, (Bytes{0x7F, 1, 1, 0, 0, 9, 1, 0, 0, 0, 0}));
    const auto leaf = file.page(0);
    EXPECT_EQ(leaf[format.indexPage.next], 1);
    EXPECT_EQ(leaf[format.indexPage.prefixLength], 2);  // 7F 01 is shared
    EXPECT_EQ(leaf[format.indexPage.mask], 1 << 7);     // the first entry ends behind 7 bytes
    EXPECT_EQ(leaf[format.indexPage.mask + 1], 1 << 4); // the second, cut by 2, behind 12
}

} // namespace
} // namespace relvane::samples
