// What the writer refuses, and how its pages look from below.

#include "sample_builder/database_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sample_builder/index_tree.h"
#include "sample_builder/property_blob.h"
#include "support/file_formats.h"

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

std::string errorOf(TableSpec table, FileFormat format = FileFormat::Access97) {
    DatabaseSpec spec;
    spec.format = format;
    spec.tables.push_back(std::move(table));
    return errorOf(spec);
}

class DatabaseWriterOf : public testing::TestWithParam<FileFormat> {};

INSTANTIATE_TEST_SUITE_P(Formats, DatabaseWriterOf, test::everyFormat, test::formatName);

TEST_P(DatabaseWriterOf, RefusesARowThatDoesNotFitAPage) {
    TableSpec table{.name = u"広い"};
    RowSpec row{};
    for (int i = 0; i < 9; ++i) {
        table.columns.push_back({.name = u"c" + toText(i)});
        row.values.push_back(Text(250, u'ｘ').substr(0, GetParam() == FileFormat::Access97 ? 125 : 250));
    }
    table.rows.push_back(row);
    EXPECT_THAT(errorOf(table, GetParam()), HasSubstr("table 広い: a row of"));
}

TEST_P(DatabaseWriterOf, RefusesAKeyThatDoesNotFitAPageOfItsIndex) {
    TableSpec table{.name = u"広い"};
    RowSpec row{};
    IndexSpec index{.name = u"全部"};
    for (int i = 0; i < 8; ++i) {
        table.columns.push_back({.name = u"c" + toText(i)});
        index.columns.push_back({u"c" + toText(i)});
        row.values.push_back(Text(240, u'x'));
    }
    table.indexes.push_back(index);
    table.rows.push_back(row);
    EXPECT_THAT(errorOf(table, GetParam()), HasSubstr("table 広い: a key does not fit"));
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
    EXPECT_THAT(with(ColumnType::Numeric, 1), HasSubstr("no such type is written: column a"));
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

TEST(DatabaseWriter, RefusesAPasswordBeyondItsField) {
    DatabaseSpec spec;
    spec.password = u"ぱすわーどです１";
    EXPECT_THAT(errorOf(spec), HasSubstr("at most 14 bytes"));
    spec.format = FileFormat::Access2000;
    EXPECT_EQ(errorOf(spec), "no error");
    spec.password = Text(21, u'x');
    EXPECT_THAT(errorOf(spec), HasSubstr("at most 40 bytes"));
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

TEST(PropertyBlob, IsInUtf16InAccess2000) {
    const auto blob = propertyBlob({{u"版", u"8"}}, {}, TextCoding{japaneseCodePage, true});
    const Bytes expected = {'M',  'R', '2', 0x00,                            // magic
                            0x0A, 0,   0,   0,    0x80, 0, 2, 0, 0x48, 0x72, // names: one of one character
                            0x16, 0,   0,   0,    0,    0, 6, 0, 0,    0,    0, 0, //
                            0x0A, 0,   1,   10,   0,    0, 2, 0, '8',  0};
    EXPECT_EQ(blob, expected);
}

TEST_P(DatabaseWriterOf, InnerPagesOfATreeNameTheLastEntryOfEachChildAndTheTailPage) {
    PageFile file(writtenFormat(GetParam()));
    const auto& places = file.places().indexPage;
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
    EXPECT_EQ(root[places.tail], 2);
    const auto firstEntry = root.subspan(places.firstEntry, 11);
    EXPECT_EQ(Bytes(firstEntry.begin(), firstEntry.end()), (Bytes{0x7F, 1, 1, 0, 0, 9, 1, 0, 0, 0, 0}));
    const auto leaf = file.page(0);
    EXPECT_EQ(leaf[places.next], 1);
    EXPECT_EQ(leaf[places.prefixLength], 2);  // 7F 01 is shared
    EXPECT_EQ(leaf[places.mask], 1 << 7);     // the first entry ends behind 7 bytes
    EXPECT_EQ(leaf[places.mask + 1], 1 << 4); // the second, cut by 2, behind 12
}

} // namespace
} // namespace relvane::samples
