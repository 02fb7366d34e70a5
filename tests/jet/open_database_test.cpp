// Opening files, good and bad, and what an open database answers.

#include <algorithm>
#include <fstream>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "file_builder.h"
#include "platform/native_path.h"
#include "sample_builder/written_format.h"
#include "support/file_formats.h"
#include "support/samples.h"

namespace relvane::jet {
namespace {

using namespace samples;

Text textOf(const std::filesystem::path& path) {
    return textOfNativePath(path.native());
}

class OpenDatabase : public testing::TestWithParam<FileFormat> {
protected:
    static DatabaseSpec oneTable(Text name = u"顧客") {
        DatabaseSpec spec;
        spec.tables.push_back(
            {.name = std::move(name),
             .columns = {{.name = u"番号", .type = ColumnType::Long, .autoNumber = true},
                         {.name = u"氏名",
                          .type = ColumnType::Text,
                          .size = 20,
                          .properties = {{u"Description", Text(u"姓名")}, {u"Required", true}}}},
             .indexes = {{.name = u"PrimaryKey", .columns = {{u"番号"}}, .primary = true}},
             .rows = {RowSpec{std::int64_t{2}, Text(u"佐藤")}, RowSpec{std::int64_t{1}, Text(u"山田")},
                      RowSpec{std::int64_t{3}, Null{}}},
             .properties = {{u"Description", Text(u"得意先の台帳")}, {u"OrderByOn", true}}});
        return savedAs(std::move(spec), GetParam());
    }
    static std::size_t pageSize() { return writtenFormat(GetParam()).places.pageSize; }

    std::filesystem::path write(const DatabaseSpec& spec, const std::string& name = "target.mdb") {
        writeDatabase(spec, folder_ / name);
        return folder_ / name;
    }
    std::filesystem::path writeBytes(const Bytes& bytes, const std::string& name = "target.mdb") {
        std::ofstream(folder_ / name, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return folder_ / name;
    }
    static int errorOfOpening(const std::filesystem::path& path, OpenOptions options = {}) {
        return errorOf([&] { openDatabase(textOf(path), std::move(options)); });
    }

    test::TemporaryFolder folder_;
};

INSTANTIATE_TEST_SUITE_P(Formats, OpenDatabase, test::everyFormat, test::formatName);

// ---- Refusals

TEST_P(OpenDatabase, AFolderThatDoesNotExistIs3044) {
    EXPECT_EQ(errorOfOpening(folder_ / "nothing" / "x.mdb"), 3044);
    EXPECT_EQ(errorOf([] { openDatabase(u""); }), 3044);
    EXPECT_EQ(errorOf([] { openDatabase(Text(u"/tmp/a\0b", 8)); }), 3044);
    EXPECT_EQ(errorOf([] { openDatabase(u"C:\\業務\\受注.mdb"); }), 3044);
    EXPECT_EQ(errorOfOpening(write(oneTable()) / "x.mdb"), 3044); // a file is no folder
}

TEST_P(OpenDatabase, AFileThatDoesNotExistIs3024) {
    EXPECT_EQ(errorOfOpening(folder_ / "x.mdb"), 3024);
}

TEST_P(OpenDatabase, WhatCannotBeReadIs3051) {
    EXPECT_EQ(errorOfOpening(folder_.path()), 3051);
    ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(errorOfOpening(folder_ / "pipe"), 3051); // and no waiting for a writer
    if (geteuid() != 0) {
        const auto path = write(oneTable());
        chmod(path.c_str(), 0);
        EXPECT_EQ(errorOfOpening(path), 3051);
    }
}

TEST_P(OpenDatabase, WhatIsNoDatabaseIs3343) {
    EXPECT_EQ(errorOfOpening(writeBytes({})), 3343);
    EXPECT_EQ(errorOfOpening(writeBytes(Bytes(100))), 3343);
    EXPECT_EQ(errorOfOpening(writeBytes(Bytes(10000))), 3343);
    Bytes bytes = databaseBytes(oneTable());
    bytes.resize(pageSize() - 1); // shorter than its first page
    EXPECT_EQ(errorOfOpening(writeBytes(bytes)), 3343);
    bytes = databaseBytes(oneTable());
    bytes[header::version] = 99;
    EXPECT_EQ(errorOfOpening(writeBytes(bytes)), 3343);
    bytes = databaseBytes(oneTable());
    bytes[header::version] = 0;
    bytes[0x40A] = 7; // Access 2.0
    EXPECT_EQ(errorOfOpening(writeBytes(bytes)), 3343);
}

TEST_P(OpenDatabase, APasswordIsAskedFor) {
    DatabaseSpec spec = oneTable();
    spec.password = u"ﾋﾐﾂ";
    const auto path = write(spec);
    EXPECT_EQ(errorOfOpening(path), 3031);
    EXPECT_EQ(errorOfOpening(path, {.password = u"other"}), 3031);
    EXPECT_EQ(errorOfOpening(path, {.password = u"ﾋﾐﾂ"}), 0);
}

TEST_P(OpenDatabase, ADamagedCatalogueIs3049) {
    Bytes bytes = databaseBytes(oneTable());
    bytes.resize(pageSize() * 2); // page 2 is gone
    EXPECT_EQ(errorOfOpening(writeBytes(bytes)), 3049);
    bytes = databaseBytes(oneTable());
    bytes[objectsPage * pageSize()] = 9; // page 2 is no definition
    EXPECT_EQ(errorOfOpening(writeBytes(bytes)), 3049);
}

TEST_P(OpenDatabase, PagesThatDoNotDecodeAre3161) {
    DatabaseSpec spec = oneTable();
    spec.encodingKey = 0x1234ABCD;
    Bytes bytes = databaseBytes(spec);
    EXPECT_EQ(errorOfOpening(writeBytes(bytes)), 0);
    bytes[header::databaseKey] ^= 1;
    EXPECT_EQ(errorOfOpening(writeBytes(bytes)), 3161);
}

TEST_P(OpenDatabase, DamageOfOneTableLeavesTheOthers) {
    DatabaseSpec spec = oneTable(u"良い");
    spec.tables.push_back(oneTable(u"悪い").tables.front());
    Bytes bytes = databaseBytes(spec);
    const auto whole = openDatabase(makeMemorySource(bytes), u"x.mdb");
    const CatalogueEntry* entry = fileOf(*whole)->catalogue().find(ObjectType::Table, u"悪い");
    bytes[entry->definitionPage() * pageSize()] = 0;

    const auto damaged = openDatabase(makeMemorySource(bytes), u"x.mdb");
    EXPECT_EQ(damaged->TableDefs().Item(u"良い").Fields().Count(), 2);
    dao::TableDef& table = damaged->TableDefs().Item(u"悪い");
    EXPECT_EQ(errorOf([&] { table.Fields(); }), 3049);
    EXPECT_EQ(errorOf([&] { table.RecordCount(); }), 3049);
    EXPECT_EQ(errorOf([&] { damaged->OpenRecordset(u"悪い"); }), 3049);
    EXPECT_EQ(table.Properties()(u"Description"), Value(Text(u"得意先の台帳")));
}

// ---- What is never touched, and what is quick

TEST_P(OpenDatabase, AFileOfAGigabyteOpensWithoutBeingRead) {
    const auto path = write(oneTable());
    std::filesystem::resize_file(path, std::uintmax_t{1} << 30);
    const auto database = openDatabase(textOf(path));
    EXPECT_EQ(database->TableDefs().Item(u"顧客").RecordCount(), 3);
}

TEST_P(OpenDatabase, TheFileKeepsItsBytesAndItsDate) {
    const auto path = write(oneTable());
    const auto before = std::filesystem::last_write_time(path);
    const Bytes bytes = databaseBytes(oneTable());
    const auto database = openDatabase(textOf(path));
    database->Properties().set(u"AccessVersion", Text(u"99"));
    EXPECT_EQ(database->Properties()(u"accessversion"), Value(Text(u"99")));
    EXPECT_EQ(errorOf([&] { database->Execute(u"delete * from 顧客;"); }), 3027);
    EXPECT_EQ(errorOf([&] { database->OpenRecordset(u"顧客")->AddNew(); }), 3027);
    EXPECT_EQ(errorOf([&] { database->copyTo(textOf(path)); }), 70);
    std::ifstream file(path, std::ios::binary);
    EXPECT_EQ(Bytes(std::istreambuf_iterator<char>(file), {}), bytes);
    EXPECT_EQ(std::filesystem::last_write_time(path), before);
}

TEST_P(OpenDatabase, ACopyIsTheSameFile) {
    const auto path = write(oneTable());
    openDatabase(textOf(path))->copyTo(textOf(folder_ / "copy.mdb"));
    std::ifstream file(folder_ / "copy.mdb", std::ios::binary);
    EXPECT_EQ(Bytes(std::istreambuf_iterator<char>(file), {}), databaseBytes(oneTable()));
    EXPECT_NE(errorOf([&] { openDatabase(textOf(path))->copyTo(textOf(folder_ / "no" / "copy.mdb")); }), 0);
}

// ---- The database object

TEST_P(OpenDatabase, TheDatabaseTellsItsPathVersionAndWhetherItMayBeWritten) {
    const auto path = write(oneTable());
    const auto previous = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path());
    const auto database = openDatabase(u"target.mdb");
    std::filesystem::current_path(previous);
    EXPECT_EQ(database->Name(), textOf(path));
    EXPECT_EQ(database->Version(), GetParam() == FileFormat::Access97 ? u"3.0" : u"4.0");
    EXPECT_EQ(database->QueryTimeout(), 60);
    EXPECT_TRUE(database->Updatable());
    chmod(path.c_str(), 0444);
    EXPECT_FALSE(openDatabase(textOf(path))->Updatable());
}

TEST_P(OpenDatabase, BuiltInPropertiesComeFirstAndNamesKeepTheirSpelling) {
    DatabaseSpec spec = oneTable();
    spec.properties = {{u"StartUpForm", Text(u"メニュー")}};
    const auto database = openDatabase(makeMemorySource(databaseBytes(spec)), u"x.mdb");
    dao::Properties& properties = database->Properties();
    bool storedSeen = false;
    std::vector<Text> stored;
    for (int i = 0; i < properties.Count(); ++i) {
        const dao::Property& property = properties.Item(i);
        EXPECT_FALSE(storedSeen && property.builtIn) << toUtf8(property.Name);
        storedSeen = storedSeen || !property.builtIn;
        if (!property.builtIn) {
            stored.emplace_back(TextView(property.Name));
        }
    }
    EXPECT_NE(std::ranges::find(stored, u"StartUpForm"), stored.end());
    EXPECT_EQ(properties(u"StartupForm"), Value(Text(u"メニュー")));
    EXPECT_EQ(errorOf([&] { properties(u"AppTitle"); }), 3270);

    dao::TableDef& table = database->TableDefs().Item(u"顧客");
    EXPECT_EQ(table.Properties().Item(table.Properties().Count() - 2).Name, u"Description");
    EXPECT_EQ(table.Fields().Item(u"氏名").Properties()(u"description"), Value(Text(u"姓名")));
    EXPECT_EQ(errorOf([&] { table.Properties()(u"nothing"); }), 3270);
}

// A stored property that a member answers for is not listed twice.
TEST_P(OpenDatabase, StoredValuesOfMembersStandUnderTheMember) {
    const auto database = openDatabase(makeMemorySource(databaseBytes(oneTable())), u"x.mdb");
    dao::Field& field = database->TableDefs().Item(u"顧客").Fields().Item(u"氏名");
    EXPECT_TRUE(field.Required());
    int found = 0;
    for (int i = 0; i < field.Properties().Count(); ++i) {
        found += field.Properties().Item(i).Name == u"Required" ? 1 : 0;
    }
    EXPECT_EQ(found, 1);
}

// ---- Recordsets

TEST_P(OpenDatabase, ARecordsetReadsRowsInStoredOrder) {
    const auto database = openDatabase(makeMemorySource(databaseBytes(oneTable())), u"x.mdb");
    const auto rows = database->OpenRecordset(u"顧客");
    EXPECT_EQ(rows->FieldCount(), 2);
    EXPECT_EQ(rows->FieldName(1), u"氏名");
    EXPECT_EQ(rows->Field(u"氏名"), Value(Text(u"佐藤")));
    rows->MoveNext();
    EXPECT_EQ(rows->Field(0), Value(std::int64_t{1}));
    rows->MoveNext();
    EXPECT_EQ(rows->Field(1), Value(Null{}));
    EXPECT_EQ(errorOf([&] { rows->Field(u"住所"); }), 3265);
    EXPECT_EQ(errorOf([&] { rows->Field(2); }), 3265);
    rows->MoveNext();
    EXPECT_TRUE(rows->EOF_());
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->Field(0); }), 3021);
    rows->MoveFirst();
    EXPECT_EQ(rows->Field(0), Value(std::int64_t{2}));
    rows->Close();
    rows->Close();
    EXPECT_EQ(errorOf([&] { rows->EOF_(); }), 3420);
    EXPECT_EQ(errorOf([&] { database->OpenRecordset(u"無い"); }), 3078);
}

TEST_P(OpenDatabase, ASortedRecordsetSortsByItsKeys) {
    const auto database = openDatabase(makeMemorySource(databaseBytes(oneTable())), u"x.mdb");
    const SortKey byNumber[] = {{.field = u"番号", .descending = true}};
    auto rows = database->OpenSorted(u"顧客", byNumber, 1);
    EXPECT_EQ(rows->Field(0), Value(std::int64_t{2}));
    rows->MoveNext();
    EXPECT_EQ(rows->Field(0), Value(std::int64_t{1}));
    const SortKey kana[] = {{.field = u"氏名", .collation = Collation::Kana}};
    EXPECT_EQ(errorOf([&] { database->OpenSorted(u"顧客", kana, 0); }), 3251);
    const SortKey unknown[] = {{.field = u"住所"}};
    EXPECT_EQ(errorOf([&] { database->OpenSorted(u"顧客", unknown, 0); }), 3265);
}

TEST_P(OpenDatabase, ARecordsetOutlivesTheDatabase) {
    auto database = openDatabase(makeMemorySource(databaseBytes(oneTable())), u"x.mdb");
    const auto rows = database->OpenRecordset(u"顧客");
    database.reset();
    EXPECT_EQ(rows->Field(u"氏名"), Value(Text(u"佐藤")));
}

TEST(OpenRealDatabase, NewerFilesOpenToo) {
    const std::pair<const char*, TextView> files[] = {{"later/northwind-2000-ja.mdb", u"4.0"},
                                                      {"later/linkerTestV2007.accdb", u"12.0"},
                                                      {"later/formPropTest.accdb", u"14.0"}};
    for (const auto& [name, version] : files) {
        if (const auto path = test::realSample(name)) {
            EXPECT_EQ(openDatabase(textOf(*path))->Version(), version) << name;
        }
    }
    // DAO opens a file of Access 95, whatever Access itself says to it.
    if (const auto path = test::realSample("older/acc95.mdb")) {
        EXPECT_EQ(openDatabase(textOf(*path))->Version(), u"3.0");
    }
}

} // namespace
} // namespace relvane::jet
