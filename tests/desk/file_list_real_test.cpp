// The list of files on a real disk: real targets, real links, the rows as they stand in the work database.
#include <algorithm>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "real_program.h"
#include "sample_builder/database_writer.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;
using test::RealProgram;
using test::StoredRow;

enum Option { related = 1, linked = 2, all = 3 };

class RealFileList : public testing::Test {
protected:
    RealFileList() { fs::create_directory(app()); }
    fs::path app() const { return folder_ / "app"; }
    fs::path target() const { return app() / "受注.mdb"; }

    void writeTarget(const std::vector<Text>& linkPaths = {}) {
        samples::DatabaseSpec spec;
        for (std::size_t i = 0; i < linkPaths.size(); ++i) {
            samples::LinkSpec link;
            link.name = u"リンク" + toText(static_cast<long long>(i + 1));
            link.database = linkPaths[i];
            link.sourceTable = u"在庫";
            spec.links.push_back(link);
        }
        samples::writeDatabase(spec, target());
    }
    fs::path put(const std::string& name, std::size_t size = 100) {
        fs::create_directories((folder_ / name).parent_path());
        std::ofstream(folder_ / name) << std::string(size, 'x');
        return folder_ / name;
    }
    std::vector<StoredRow> run(RealProgram& program, Option option) {
        EXPECT_TRUE(program.select(target()));
        program.form().optFile.choose(option - 1);
        EXPECT_TRUE(program.press(program.form().cmdFile));
        return program.rows(u"T_RvFile");
    }
    static std::vector<Text> column(const std::vector<StoredRow>& rows, TextView field) {
        std::vector<Text> values;
        for (const StoredRow& row : rows) {
            values.push_back(toText(row.at(Text(field))));
        }
        return values;
    }
    static std::vector<Text> sortedNames(const std::vector<StoredRow>& rows) {
        auto names = column(rows, u"FileName");
        std::ranges::sort(names);
        return names;
    }
    Text folderText() const { return textOfNativePath(app().native()) + u"/"; }
    using Names = std::vector<Text>;

    test::TemporaryFolder folder_;
};

TEST_F(RealFileList, ATargetAloneInItsFolderIsOneRowItself) {
    writeTarget();
    const std::string before = test::bytesOf(target());
    ::chmod(target().c_str(), 0444);
    RealProgram program;
    const auto rows = run(program, related);
    ASSERT_EQ(rows.size(), 1u);
    const StoredRow expected = {
        {u"FileNo", std::int64_t{1}},
        {u"FileName", Text(u"受注.mdb")},
        {u"FileSize", static_cast<double>(before.size()) / 1024.0},
        {u"UpdateDate", program.files.FileDateTime(textOfNativePath(target().native()))},
        {u"FilePath", folderText()},
        {u"ReadOnly", std::int64_t{1}}};
    EXPECT_EQ(rows[0], expected);
    EXPECT_EQ(program.desk->context.DoneFile, 1);
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
    EXPECT_EQ(test::bytesOf(target()), before);
}

TEST_F(RealFileList, TheFolderIsListedByTheTwoPatterns) {
    writeTarget();
    for (const char* name : {"在庫.MDB", "work.mde", "読んで下さい.txt", "MAKEFILE", ".hidden.mdb"}) {
        put(std::string("app/") + name);
    }
    fs::create_directory(app() / "folder.mdb");
    fs::create_symlink("gone.mdb", app() / "broken.mdb");
    RealProgram program;
    EXPECT_EQ(sortedNames(run(program, related)), (Names{u"work.mde", u"受注.mdb", u"在庫.MDB"}));
    EXPECT_EQ(sortedNames(run(program, all)),
              (Names{u"MAKEFILE", u"work.mde", u"受注.mdb", u"在庫.MDB", u"読んで下さい.txt"}));
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
}

// Where a target of 2007 or later is, its own kind belongs to it as well.
TEST_F(RealFileList, BesideALaterTargetLaterFilesAreRelatedToo) {
    writeTarget();
    fs::rename(target(), app() / "受注.ACCDB");
    for (const char* name : {"app/古い.mdb", "app/実行.accde", "app/account.txt"}) {
        put(name);
    }
    RealProgram program;
    ASSERT_TRUE(program.select(app() / "受注.ACCDB"));
    program.form().optFile.choose(related - 1);
    EXPECT_TRUE(program.press(program.form().cmdFile));
    const auto rows = program.rows(u"T_RvFile");
    EXPECT_EQ(sortedNames(rows), (Names{u"受注.ACCDB", u"古い.mdb", u"実行.accde"}));
    EXPECT_EQ(column(rows, u"FileNo"), (Names{u"1", u"2", u"3"}));
}

TEST_F(RealFileList, LinksAreFoundByMappingByThemselvesAndBesideTheTarget) {
    put("server/共有/在庫.mdb", 100);
    const auto itself = put("elsewhere/売上.mdb", 200);
    put("app/Tokuisaki.MDB", 300);
    put("app/在庫.mdb", 400); // the mapping goes before it
    writeTarget(
        {u"\\\\SERVER1\\共有\\在庫.mdb", textOfNativePath(itself.native()), u"D:\\old\\TOKUISAKI.mdb"});
    RealProgram program({{u"\\\\server1\\共有", folder_ / "server" / "共有"}});
    const auto rows = run(program, linked);
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
    EXPECT_EQ(column(rows, u"FileName"), (Names{u"在庫.mdb", u"売上.mdb", u"TOKUISAKI.mdb"}));
    EXPECT_EQ(column(rows, u"FilePath"),
              (Names{u"\\\\SERVER1\\共有\\", textOfNativePath((folder_ / "elsewhere").native()) + u"/",
                     u"D:\\old\\"}));
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].at(u"FileSize"), Value(100.0 / 1024.0));
    EXPECT_EQ(rows[1].at(u"FileSize"), Value(200.0 / 1024.0));
    EXPECT_EQ(rows[2].at(u"FileSize"), Value(300.0 / 1024.0));
}

TEST_F(RealFileList, ASourceThatIsGoneStopsTheListAndKeepsItsRows) {
    put("app/在庫.mdb");
    writeTarget({u"C:\\業務\\在庫.mdb", u"C:\\業務\\無い.mdb", u"C:\\業務\\在庫.mdb"});
    RealProgram program;
    const auto rows = run(program, linked);
    EXPECT_EQ(column(rows, u"FileName"), Names{u"在庫.mdb"});
    EXPECT_EQ(program.dialogs.lastText(),
              u"場所:ファイル一覧ｴﾗｰNo:76\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r"
              u"内容:パスが見つかりません。 (リンク2: C:\\業務\\無い.mdb)");
    EXPECT_EQ(program.desk->context.DoneFile, 0);
    EXPECT_FALSE(program.form().cmdFlPre.Enabled);
    EXPECT_TRUE(program.form().Enabled);
}

TEST_F(RealFileList, InAFolderThatIsThereAMissingSourceIs53) {
    fs::create_directory(folder_ / "data");
    writeTarget({u"C:\\業務\\無い.mdb"});
    RealProgram program({{u"C:\\業務", folder_ / "data"}});
    EXPECT_TRUE(run(program, linked).empty());
    EXPECT_TRUE(program.dialogs.lastText().starts_with(u"場所:ファイル一覧ｴﾗｰNo:53\r"))
        << toUtf8(program.dialogs.lastText());
}

TEST_F(RealFileList, ALinkToTheTargetItselfAndOneToNoDatabaseAreFiles) {
    put("app/notes.txt", 7);
    writeTarget({u"C:\\業務\\受注.mdb", u"C:\\業務\\notes.txt"});
    RealProgram program;
    const auto rows = run(program, linked);
    EXPECT_EQ(column(rows, u"FileName"), (Names{u"受注.mdb", u"notes.txt"}));
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
}

TEST_F(RealFileList, TheReaderFindsTheSameFileAsTheList) {
    samples::DatabaseSpec backEnd;
    backEnd.tables.push_back(
        {.name = u"在庫", .columns = {{.name = u"品番", .type = samples::ColumnType::Long}}});
    fs::create_directory(folder_ / "data");
    samples::writeDatabase(backEnd, folder_ / "data" / "Zaiko.mdb");
    writeTarget({u"C:\\業務\\zaiko.mdb"});
    const LinkMapping mapping{u"C:\\業務", folder_ / "data"};
    RealProgram program({mapping});
    ASSERT_EQ(run(program, linked).size(), 1u);
    EXPECT_EQ(program.desk->context.TargetDb->TableDefs().Item(u"リンク1").Fields().Item(0).Name(), u"品番");

    RealProgram without;
    EXPECT_TRUE(run(without, linked).empty());
    EXPECT_EQ(skipErrors([&] { without.desk->context.TargetDb->TableDefs().Item(u"リンク1").Fields(); }),
              3044);
}

TEST_F(RealFileList, MoreFilesThanTheNumberHoldsAreError6AndTheRowsStay) {
    writeTarget();
    for (int i = 0; i < 33000; ++i) {
        const std::string name = app() / ("f" + std::to_string(i) + ".txt");
        if (::mknod(name.c_str(), S_IFREG | 0644, 0) != 0) {
            FAIL() << name;
        }
    }
    RealProgram program;
    const auto rows = run(program, all);
    ASSERT_EQ(rows.size(), 32767u);
    EXPECT_EQ(rows.back().at(u"FileNo"), Value(std::int64_t{32767}));
    EXPECT_TRUE(program.dialogs.lastText().starts_with(u"場所:ファイル一覧ｴﾗｰNo:6\r"))
        << toUtf8(program.dialogs.lastText());
    EXPECT_EQ(program.desk->context.DoneFile, 0);
    EXPECT_EQ(run(program, related).size(), 1u) << "and the next run is whole";
}

} // namespace
} // namespace relvane
