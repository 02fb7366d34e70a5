// Linked tables: what DAO says of them, and the errors of opening their back end.

#include <filesystem>

#include <gtest/gtest.h>

#include "file_builder.h"
#include "platform/native_path.h"
#include "support/file_formats.h"
#include "support/samples.h"
#include "system/linux_files.h"

namespace relvane::jet {
namespace {

using namespace samples;

class Links : public testing::TestWithParam<FileFormat> {
protected:
    // A target with one link, opened.
    dao::TableDef& target(LinkSpec link) {
        return target(std::move(link), {.resolveLink = [](const Text& path, const Text& folder) {
                          return LinuxFiles().resolveLink(path, folder);
                      }});
    }
    dao::TableDef& target(LinkSpec link, OpenOptions options) {
        link.name = u"リンク";
        DatabaseSpec spec;
        spec.links.push_back(std::move(link));
        writeDatabase(savedAs(spec, GetParam()), folder_ / "target.mdb");
        database_ = openDatabase(textOfNativePath((folder_ / "target.mdb").native()), std::move(options));
        return database_->TableDefs().Item(u"リンク");
    }
    void writeBackEnd(const std::string& name, Text password = {}) {
        DatabaseSpec spec;
        spec.password = std::move(password);
        spec.tables.push_back({.name = u"在庫",
                               .columns = {{.name = u"品番",
                                            .type = ColumnType::Text,
                                            .size = 10,
                                            .properties = {{u"Description", Text(u"品物の番号")}}},
                                           {.name = u"数", .type = ColumnType::Long}},
                               .indexes = {{.name = u"PrimaryKey", .columns = {{u"品番"}}, .primary = true}},
                               .rows = {RowSpec{Text(u"A-1"), std::int64_t{5}}}});
        writeDatabase(savedAs(spec, backEndFormat_), folder_ / name);
    }
    static LinkSpec link(Text path, Text table = u"在庫", Text connect = {}) {
        LinkSpec spec;
        spec.database = std::move(path);
        spec.sourceTable = std::move(table);
        spec.connect = std::move(connect);
        return spec;
    }

    test::TemporaryFolder folder_;
    FileFormat backEndFormat_ = GetParam();
    std::shared_ptr<dao::Database> database_;
};

INSTANTIATE_TEST_SUITE_P(Formats, Links, test::everyFormat, test::formatName);

TEST_P(Links, FieldsComeFromTheFileOfThatNameBesideTheTarget) {
    writeBackEnd("Zaiko.mdb");
    dao::TableDef& table = target(link(u"C:\\業務\\ZAIKO.MDB"));
    EXPECT_EQ(table.Connect(), u";DATABASE=C:\\業務\\ZAIKO.MDB");
    EXPECT_EQ(table.Attributes(), 0x40000000);
    EXPECT_EQ(table.SourceTableName(), u"在庫");
    EXPECT_EQ(table.RecordCount(), -1);
    EXPECT_FALSE(table.Updatable());
    ASSERT_EQ(table.Fields().Count(), 2);
    EXPECT_EQ(table.Fields().Item(0).Name(), u"品番");
    EXPECT_EQ(table.Fields().Item(0).Properties()(u"Description"), Value(Text(u"品物の番号")));
    EXPECT_EQ(table.Indexes().Count(), 1);
    EXPECT_EQ(database_->OpenRecordset(u"リンク")->Field(u"数"), Value(std::int64_t{5}));
}

TEST_P(Links, TheBackEndMayHaveAnotherFormat) {
    for (const FileFormat format : {FileFormat::Access97, FileFormat::Access2000}) {
        backEndFormat_ = format;
        writeBackEnd("zaiko.mdb");
        EXPECT_EQ(target(link(u"C:\\業務\\zaiko.mdb")).Fields().Count(), 2);
    }
}

TEST_P(Links, ThePathItselfGoesBeforeTheNeighbour) {
    std::filesystem::create_directory(folder_ / "other");
    writeBackEnd("other/zaiko.mdb");
    dao::TableDef& table = target(link(textOfNativePath((folder_ / "other" / "zaiko.mdb").native())));
    EXPECT_EQ(table.Fields().Count(), 2);
}

TEST_P(Links, TheResolverIsAskedForThePathAndTheFolderOfTheTarget) {
    writeBackEnd("elsewhere.mdb");
    Text asked, askedIn;
    const LinkResolver resolver = [&](const Text& path, const Text& folder) {
        asked = path;
        askedIn = folder;
        return textOfNativePath((folder_ / "elsewhere.mdb").native());
    };
    EXPECT_EQ(target(link(u"D:\\x.mdb"), {.resolveLink = resolver}).Fields().Count(), 2);
    EXPECT_EQ(asked, u"D:\\x.mdb");
    EXPECT_EQ(askedIn, textOfNativePath(folder_.path().native()));
}

TEST_P(Links, WhatTheResolverDoesNotFindIs3024AndAMissingFolder3044) {
    const auto opened = [&](OpenOptions options) {
        return errorOf([&] { target(link(u"D:\\x.mdb"), std::move(options)).Fields(); });
    };
    const auto failing = [](ErrorNumber number) {
        return OpenOptions{.resolveLink = [number](const Text& path, const Text&) -> Text {
            throw RunTimeError(number, path);
        }};
    };
    EXPECT_EQ(opened(failing(ErrorNumber::FileNotFound)), 3024);
    EXPECT_EQ(opened(failing(ErrorNumber::PathNotFound)), 3044);
    EXPECT_EQ(opened(failing(ErrorNumber::PermissionDenied)), 70);
    EXPECT_EQ(opened({}), 3044) << "without a resolver no link is found";
}

TEST_P(Links, AMissingBackEndIs3044Or3024) {
    EXPECT_EQ(errorOf([&] { target(link(u"C:\\業務\\zaiko.mdb")).Fields(); }), 3044);
    EXPECT_EQ(errorOf([&] { target(link(u"\\\\server\\share\\zaiko.mdb")).Fields(); }), 3044);
    EXPECT_EQ(errorOf([&] { target(link(u"")).Fields(); }), 3044);
    const Text inFolder = textOfNativePath((folder_ / "zaiko.mdb").native());
    EXPECT_EQ(errorOf([&] { target(link(inFolder)).Fields(); }), 3024);
    EXPECT_EQ(errorOf([&] { target(link(inFolder)).Indexes(); }), 3024);
    EXPECT_EQ(errorOf([&] { target(link(inFolder)), database_->OpenRecordset(u"リンク"); }), 3024);
}

TEST_P(Links, ATableThatTheBackEndLacksIs3011) {
    writeBackEnd("zaiko.mdb");
    EXPECT_EQ(errorOf([&] { target(link(u"C:\\zaiko.mdb", u"無い")).Fields(); }), 3011);
}

TEST_P(Links, APasswordOfTheBackEndIsTakenFromTheLinkOr3031) {
    writeBackEnd("zaiko.mdb", u"abc");
    EXPECT_EQ(errorOf([&] { target(link(u"C:\\zaiko.mdb")).Fields(); }), 3031);
    dao::TableDef& table = target(link(u"C:\\zaiko.mdb", u"在庫", u"MS Access;PWD=abc;"));
    EXPECT_EQ(table.Fields().Count(), 2);
    EXPECT_EQ(table.Connect(), u"MS Access;PWD=abc;DATABASE=C:\\zaiko.mdb");
}

TEST_P(Links, ABackEndThatIsNoDatabaseIs3343) {
    EXPECT_EQ(errorOf([&] { target(link(u"C:\\target.txt")).Fields(); }), 3044);
    Bytes nothing(5000);
    FILE* file = fopen((folder_ / "zaiko.mdb").c_str(), "wb");
    fwrite(nothing.data(), 1, nothing.size(), file);
    fclose(file);
    EXPECT_EQ(errorOf([&] { target(link(u"C:\\zaiko.mdb")).Fields(); }), 3343);
}

TEST_P(Links, ALinkToALinkIs3011) {
    EXPECT_EQ(errorOf([&] { target(link(u"C:\\target.mdb", u"リンク")).Fields(); }), 3011); // to itself
}

TEST_P(Links, TwoDatabasesLinkedToEachOtherAre3011) {
    DatabaseSpec other;
    other.links.push_back(link(u"C:\\target.mdb", u"リンク"));
    other.links.back().name = u"在庫";
    writeDatabase(savedAs(other, GetParam()), folder_ / "zaiko.mdb");
    dao::TableDef& table = target(link(u"C:\\zaiko.mdb"));
    EXPECT_EQ(errorOf([&] { table.Fields(); }), 3011);
    EXPECT_EQ(errorOf([&] { table.Indexes(); }), 3011);
    EXPECT_EQ(errorOf([&] { database_->OpenRecordset(u"リンク"); }), 3011);
}

TEST_P(Links, OtherSourcesNeedADriver) {
    LinkSpec excel = link(u"C:\\予算.xls", u"予算$", u"Excel 5.0;HDR=YES;");
    excel.kind = LinkKind::Isam;
    dao::TableDef& sheet = target(excel);
    EXPECT_EQ(sheet.Connect(), u"Excel 5.0;HDR=YES;DATABASE=C:\\予算.xls");
    EXPECT_EQ(errorOf([&] { sheet.Fields(); }), 3170);

    LinkSpec odbc = link(u"", u"dbo.会計", u"DSN=会計;UID=a;PWD=secret;");
    odbc.kind = LinkKind::Odbc;
    odbc.passwordSaved = true;
    odbc.hidden = true;
    dao::TableDef& table = target(odbc);
    EXPECT_EQ(table.Connect(), u"ODBC;DSN=会計;UID=a;PWD=secret;");
    EXPECT_EQ(table.Attributes(), 0x20000000 | 0x20000 | 8);
    try {
        table.Fields();
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3151);
        EXPECT_EQ(error.description().find(u"secret"), Text::npos); // a box is no place for a password
    }
}

TEST_P(Links, AQueryOnABrokenLinkHasNoFieldsAndStillItsText) {
    DatabaseSpec spec;
    spec.links.push_back(link(u"C:\\nowhere\\x.mdb"));
    spec.links.back().name = u"リンク";
    spec.queries.push_back({.name = u"問合せ",
                            .rows = {{.attribute = 1, .flag = 1},
                                     {.attribute = 5, .name1 = u"リンク"},
                                     {.attribute = 6, .expression = u"リンク.品番"}}});
    const auto database = openDatabase(makeMemorySource(databaseBytes(savedAs(spec, GetParam()))), u"x.mdb");
    dao::QueryDef& query = database->QueryDefs().Item(u"問合せ");
    EXPECT_EQ(query.Fields().Count(), 0);
    EXPECT_EQ(query.SQL(), u"SELECT リンク.品番\r\nFROM リンク;\r\n");
}

} // namespace
} // namespace relvane::jet
