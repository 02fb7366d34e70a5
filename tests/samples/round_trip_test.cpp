// The databases of the builder, read back by the project's own reader.

#include <fstream>
#include <functional>

#include <gtest/gtest.h>

#include "database_comparison.h"
#include "jet/open_database.h"
#include "sample_builder/column_value.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"
#include "sample_builder/index_key.h"
#include "sample_builder/many_tables.h"
#include "sample_builder/system_tables.h"
#include "support/file_formats.h"
#include "support/samples.h"
#include "system/linux_files.h"

namespace relvane::samples {
namespace {

class SampleRoundTrip : public testing::TestWithParam<FileFormat> {
protected:
    // Writes the database in the format of the test and opens it with the reader.
    std::shared_ptr<dao::Database> write(const DatabaseSpec& spec, jet::OpenOptions options = {}) {
        const auto path = folder_ / "sample.mdb";
        writeDatabase(savedAs(spec, GetParam()), path);
        return jet::openDatabase(fromUtf8(path.string()), std::move(options));
    }

    void expectReadsBack(const DatabaseSpec& spec) {
        compareDatabase(savedAs(spec, GetParam()), *write(spec));
    }

    static DatabaseSpec described(const std::string& name) {
        const auto path = test::sourceFolder() / "samples" / (name + ".txt");
        return savedAs(readDescription(path), GetParam());
    }
    static DatabaseSpec withTable(TableSpec table) {
        DatabaseSpec spec;
        spec.tables.push_back(std::move(table));
        return spec;
    }

private:
    test::TemporaryFolder folder_;
};

INSTANTIATE_TEST_SUITE_P(Formats, SampleRoundTrip, test::everyFormat, test::formatName);

TEST_P(SampleRoundTrip, OrderKeepingSampleReadsBackAsDescribed) {
    const DatabaseSpec spec = described("juchu");
    EXPECT_GE(spec.tables.size(), 12u);
    const auto database = jet::openDatabase(fromUtf8(test::ownSample("juchu", GetParam()).string()));
    compareDatabase(spec, *database);
}

TEST_P(SampleRoundTrip, LinkedTableOfTheSampleFindsItsBackEndBesideIt) {
    LinuxFiles files;
    const auto database = jet::openDatabase(fromUtf8(test::ownSample("juchu", GetParam()).string()),
                                            {.resolveLink = std::bind_front(&Files::resolveLink, &files)});
    EXPECT_EQ(database->TableDefs().Item(u"在庫").Fields().Count(), 4);
    EXPECT_THROW(database->TableDefs().Item(u"旧得意先").Fields(), RunTimeError);
}

TEST_P(SampleRoundTrip, EmptyDatabaseHasOnlySystemTables) {
    const auto database = write({});
    const auto ofAccess = accessTables(savedAs({}, GetParam()), {}).size();
    EXPECT_EQ(database->TableDefs().Count(), static_cast<int>(4 + ofAccess));
    EXPECT_EQ(database->QueryDefs().Count(), 0);
    EXPECT_EQ(database->Containers().Count(), GetParam() == FileFormat::Access97 ? 8 : 9); // DataAccessPages
}

TEST_P(SampleRoundTrip, DatabaseMadeByDaoAloneHasNoContainersOfAccess) {
    DatabaseSpec spec;
    spec.accessVersion.reset();
    const auto database = write(spec);
    EXPECT_EQ(database->TableDefs().Count(), 4);
    EXPECT_EQ(database->Containers().Count(), 3);
    EXPECT_FALSE(database->Properties().find(u"AccessVersion"));
}

TEST_P(SampleRoundTrip, EveryColumnTypeKeepsItsLimits) {
    Guid guid;
    for (std::size_t i = 0; i < guid.bytes.size(); ++i) {
        guid.bytes[i] = static_cast<std::uint8_t>(i * 17);
    }
    TableSpec table{.name = u"型",
                    .columns = {{.name = u"Boolean", .type = ColumnType::Boolean},
                                {.name = u"Byte", .type = ColumnType::Byte},
                                {.name = u"Integer", .type = ColumnType::Integer},
                                {.name = u"Long", .type = ColumnType::Long},
                                {.name = u"Currency", .type = ColumnType::Currency},
                                {.name = u"Single", .type = ColumnType::Single},
                                {.name = u"Double", .type = ColumnType::Double},
                                {.name = u"Date", .type = ColumnType::Date},
                                {.name = u"Binary", .type = ColumnType::Binary, .size = 20},
                                {.name = u"Text", .type = ColumnType::Text, .size = 20},
                                {.name = u"Ole", .type = ColumnType::Ole},
                                {.name = u"Memo", .type = ColumnType::Memo},
                                {.name = u"Guid", .type = ColumnType::Guid}}};
    table.rows.push_back({true, 255, 32767, 2147483647, Currency{9223372036854775807LL}, 3.5f, 1e300,
                          DateTime{9999, 12, 31, 23, 59, 59}, Bytes{0, 1, 0, 255}, u"ｱア亜A①㈱～髙", Bytes{0},
                          u"x", guid});
    table.rows.push_back({false, 0, -32768, -2147483648LL, Currency{-1}, -0.0f, -1e-300,
                          DateTime{100, 1, 1, 0, 0, 1}, Bytes{}, u"", Bytes{}, u"", Guid{}});
    table.rows.push_back({});
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (!isLongValue(table.columns[i].type)) {
            table.indexes.push_back(
                {.name = u"up" + toText(static_cast<int>(i)), .columns = {{table.columns[i].name}}});
            table.indexes.push_back(
                {.name = u"down" + toText(static_cast<int>(i)), .columns = {{table.columns[i].name, true}}});
        }
    }
    expectReadsBack(withTable(table));
}

// Texts of every length from 0 to 255 before and behind other columns: all numbers of jump bytes up to seven, in all
// places.
TEST_P(SampleRoundTrip, RowsBeyond256BytesKeepTheirColumns) {
    TableSpec table{.name = u"長い行"};
    for (int i = 0; i < 8; ++i) {
        table.columns.push_back({.name = u"列" + toText(i), .type = ColumnType::Text});
    }
    for (int i = 0; i < 600; ++i) {
        RowSpec row{};
        for (int column = 0; column < 8; ++column) {
            const int length = (i * (column + 3) * 37 + i) % 250;
            row.values.push_back(i % 7 == column ? Value()
                                                 : Value(Text(static_cast<std::size_t>(length), u'a')));
        }
        table.rows.push_back(row);
    }
    expectReadsBack(withTable(table));
}

TEST_P(SampleRoundTrip, RowThatExactlyReachesAMultipleOf256KeepsItsColumns) {
    TableSpec table{.name = u"境目",
                    .columns = {{.name = u"a", .type = ColumnType::Text},
                                {.name = u"b", .type = ColumnType::Text},
                                {.name = u"c", .type = ColumnType::Text}}};
    for (std::size_t first = 225; first <= 255; ++first) {
        for (std::size_t second = 0; second <= 255; second += second < 10 || second > 240 ? 1 : 23) {
            table.rows.push_back({Text(first, u'a'), Text(second, u'b'), u"c"});
        }
    }
    expectReadsBack(withTable(table));
}

TEST_P(SampleRoundTrip, LongValuesOfAllThreeKindsReadBack) {
    TableSpec table{
        .name = u"長い値",
        .columns = {{.name = u"auto", .type = ColumnType::Memo},
                    {.name = u"inline", .type = ColumnType::Memo, .longValues = LongValuePlace::Inline},
                    {.name = u"page", .type = ColumnType::Ole, .longValues = LongValuePlace::OnePage},
                    {.name = u"chain", .type = ColumnType::Ole, .longValues = LongValuePlace::Chain}}};
    const std::size_t longestRow = writtenFormat(GetParam()).longValue.longestRow;
    for (const std::size_t length : {0u,    1u,    2u,    31u,   32u,   33u,   39u,   40u,   41u,   64u,
                                     65u,   500u,  1018u, 1019u, 2031u, 2032u, 2033u, 2036u, 2037u, 2038u,
                                     2039u, 4071u, 4072u, 4073u, 4076u, 4077u, 4095u, 4096u, 4097u}) {
        table.rows.push_back({Text(length, u'漢'), Text(std::min<std::size_t>(length, 900), u'x'),
                              Bytes(std::min(length, longestRow), 0xA5), Bytes(length * 5, 0x5A)});
        table.rows.push_back({Text(length, u'y')});
    }
    table.rows.push_back({Text(100'000, u'巻'), Null{}, Null{}, Bytes(70'000, 1)});
    expectReadsBack(withTable(table));
}

TEST_P(SampleRoundTrip, DeletedAndMovedRowsAndDeletedColumnsReadBack) {
    TableSpec table{.name = u"変更",
                    .columns = {{.name = u"番号", .type = ColumnType::Long},
                                {.name = u"昔", .type = ColumnType::Text, .deleted = true},
                                {.name = u"旧", .type = ColumnType::Long, .deleted = true},
                                {.name = u"名", .type = ColumnType::Text},
                                {.name = u"後", .type = ColumnType::Text},
                                {.name = u"数", .type = ColumnType::Double}},
                    .indexes = {{.name = u"番号", .columns = {{u"番号"}}, .unique = true}}};
    for (int i = 0; i < 300; ++i) {
        RowSpec row{i, Text(static_cast<std::size_t>(i % 100), u'名'), u"後", 0.5};
        if (i % 7 == 3) {
            table.rows.push_back(std::move(row).asDeleted());
        } else if (i % 11 == 5) {
            table.rows.push_back(std::move(row).asMoved());
        } else if (i % 13 == 6) {
            table.rows.push_back(RowSpec{i, u"名"}.fromBefore(4));
        } else {
            table.rows.push_back(row);
        }
    }
    expectReadsBack(withTable(table));
}

TEST_P(SampleRoundTrip, ColumnsStoredAgainstTheirHabitReadBack) {
    TableSpec table{
        .name = u"置き場",
        .columns = {{.name = u"long", .type = ColumnType::Long, .place = ColumnPlace::Variable},
                    {.name = u"date", .type = ColumnType::Date, .place = ColumnPlace::Variable},
                    {.name = u"text", .type = ColumnType::Text, .size = 6, .place = ColumnPlace::Fixed},
                    {.name = u"plain", .type = ColumnType::Text}},
        .rows = {{1, DateTime{1998, 1, 1}, u"漢", u"x"}, {Null{}, Null{}, Null{}, u"y"}, {3}}};
    expectReadsBack(withTable(table));
}

TEST_P(SampleRoundTrip, PageMapsOfBothKindsReadBack) {
    for (const PageMapKind kind : {PageMapKind::Bitmap, PageMapKind::Pages}) {
        TableSpec table{
            .name = u"頁", .columns = {{.name = u"a", .type = ColumnType::Text}}, .pageMap = kind};
        for (int i = 0; i < 2'000; ++i) {
            table.rows.push_back({Text(static_cast<std::size_t>(i % 200), u'a')});
        }
        expectReadsBack(withTable(table));
    }
}

TEST_P(SampleRoundTrip, TableBeyondTheReachOfABitmapReadsBack) {
    TableSpec table{
        .name = u"大きい表",
        .columns = {{.name = u"番号", .type = ColumnType::Long}, {.name = u"a", .type = ColumnType::Text}},
        .indexes = {{.name = u"PrimaryKey", .columns = {{u"番号"}}, .primary = true}}};
    for (int i = 0; i < 9'000; ++i) { // more than 1,024 pages in the one format, 512 in the other
        table.rows.push_back({i, Text(240, u'z')});
    }
    expectReadsBack(withTable(table));
}

TEST_P(SampleRoundTrip, ManyTablesReadBack) {
    expectReadsBack(manyTables(300, 20));
}

TEST_P(SampleRoundTrip, CatalogueOfManyIndexLevelsIsListedInNameOrder) {
    DatabaseSpec spec = manyTables(60, 2);
    spec.indexPageEntries = 3;
    const auto database = write(spec);
    compareDatabase(savedAs(spec, GetParam()), *database);
    Bytes before;
    for (const auto& table : database->TableDefs()) {
        const Bytes key = textKey(table->Name(), spec.codePage);
        EXPECT_LT(before, key) << toUtf8(table->Name());
        before = key;
    }
}

TEST(SampleNames, AreOrderedWithoutRegardToCaseWidthAndKindOfKana) {
    const Text ordered[] = {u"_a",  u"1",     u"２",   u"alpha", u"Ｂｅｔａ",
                            u"ｶﾞｽ", u"がす2", u"キク", u"ﾊﾟﾝ",   u"亜"};
    for (std::size_t i = 1; i < std::size(ordered); ++i) {
        EXPECT_LT(textKey(ordered[i - 1], 932), textKey(ordered[i], 932)) << toUtf8(ordered[i]);
    }
    EXPECT_LT(textKey(u"Àb", 1252), textKey(u"AC", 1252));
}

TEST(SampleNames, BeyondTheCodePageStandBehindAllOthers) {
    EXPECT_LT(textKey(u"髙", 932), textKey(u"가", 932));
    EXPECT_LT(textKey(u"가", 932), textKey(u"각", 932));
    EXPECT_NE(textKey(u"é", 932), textKey(u"É", 932));
    EXPECT_LT(textKey(u"ÿ", 1252), textKey(u"漢", 1252));
}

TEST(SampleTexts, OfAnyScriptReadBackFromAccess2000) {
    TableSpec table{
        .name = u"Ünïcode 가나다",
        .columns = {{.name = u"Größe", .type = ColumnType::Text, .size = 12},
                    {.name = u"固定", .type = ColumnType::Text, .size = 4, .place = ColumnPlace::Fixed},
                    {.name = u"메모", .type = ColumnType::Memo}},
        .indexes = {{.name = u"Größe", .columns = {{u"Größe"}}, .unique = true}}};
    table.rows = {{u"é", u"ab", u"ÿ"},
                  {u"ÿþé漢", u"漢字", u"가"},
                  {u"abc", u"", u"abc"},
                  {Text(u"a\0c", 3), u"", Text(u"\0", 1)},
                  {u"𠮷野家", u"𠮷", Text(3000, u'é') + u"漢"},
                  {Text(12, u'漢'), u"é", Text(9000, u'z')}};
    DatabaseSpec spec;
    spec.tables.push_back(table);
    const DatabaseSpec newer = savedAs(spec, FileFormat::Access2000);
    compareDatabase(newer, *jet::openDatabase(jet::makeMemorySource(databaseBytes(newer)), u"x.mdb"));
}

TEST_P(SampleRoundTrip, LatinDatabaseReadsBack) {
    DatabaseSpec spec = withTable({.name = u"Umsätze",
                                   .columns = {{.name = u"Straße", .type = ColumnType::Text, .size = 30}},
                                   .rows = {{u"Größe €"}}});
    spec.codePage = latinCodePage;
    spec.sortOrder = 0x0409;
    expectReadsBack(spec);
}

TEST_P(SampleRoundTrip, EncodedPagesReadBack) {
    DatabaseSpec spec = manyTables(5, 50);
    spec.encodingKey = 0xA7E0C0FE;
    expectReadsBack(spec);
}

TEST_P(SampleRoundTrip, PasswordIsAskedFor) {
    DatabaseSpec spec = manyTables(1, 1);
    spec.password = u"ひみつ97";
    try {
        write(spec);
        ADD_FAILURE() << "opened without a password";
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.is(ErrorNumber::WrongPassword)) << error.what();
    }
    jet::OpenOptions options;
    options.password = spec.password;
    compareDatabase(savedAs(spec, GetParam()), *write(spec, options));
}

TEST_P(SampleRoundTrip, OtherObjectsOfTheCatalogueAreListed) {
    DatabaseSpec spec;
    spec.otherObjects.push_back(
        {.name = u"~TMPCLP1", .type = static_cast<int>(ObjectType::Query), .flags = 3});
    EXPECT_NE(write(spec)->QueryDefs().find(u"~TMPCLP1"), nullptr);
}

TEST_P(SampleRoundTrip, StaleRowCountIsReportedAsStored) {
    TableSpec table{
        .name = u"古い数", .columns = {{.name = u"a", .type = ColumnType::Long}}, .rows = {{1}, {2}}};
    table.storedRowCount = 1;
    expectReadsBack(withTable(table));
}

TEST_P(SampleRoundTrip, RelationIndexesAreForeignOnTheirSideAndHiddenOnTheOther) {
    const DatabaseSpec spec = described("juchu");
    const auto database = write(spec);
    dao::TableDef& staff = database->TableDefs().Item(u"社員");
    EXPECT_TRUE(staff.Indexes().Item(u"上司部下").Foreign());
    EXPECT_TRUE(staff.Indexes().Item(u"部署社員").Foreign());
    EXPECT_FALSE(staff.Indexes().Item(u"PrimaryKey").Foreign());
    EXPECT_EQ(staff.Indexes().Count(), 5);
    EXPECT_EQ(database->TableDefs().Item(u"部署").Indexes().Count(), 1);
}

} // namespace
} // namespace relvane::samples
