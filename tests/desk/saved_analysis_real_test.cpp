// A saved analysis on a real disk: what the file holds, how a program comes back from it, and what a comparison with it
// finds.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/panels.h"
#include "real_program.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"
#include "support/frm_sien.h"
#include "support/object_comparison.h"
#include "support/specifications.h"

namespace relvane {
namespace {

MATCHER_P(beginsWith, beginning, "") {
    return arg.starts_with(beginning);
}

namespace fs = std::filesystem;

using test::RealProgram;
using test::StoredRow;
using testing::ElementsAre;

Text textOf(const fs::path& path) {
    return textOfNativePath(path.string());
}

bool press(RealProgram& program, MenuItem& entry, const fs::path& file) {
    program.dialogs.files.push_back(textOf(file));
    return program.desk->dispatch([&] { entry.press(); });
}

// Runs some analyses of the target, and saves them.
void analyseAndSave(RealProgram& program, const fs::path& target, const fs::path& file) {
    ASSERT_TRUE(program.select(target)) << toUtf8(program.dialogs.lastText());
    program.form().optTable.choose(1);
    EXPECT_TRUE(program.press(program.form().cmdObject));
    EXPECT_TRUE(program.press(program.form().cmdTable));
    program.form().optModule.choose(3);
    program.form().chkMod50.tick(true);
    EXPECT_TRUE(program.press(program.form().cmdModule));
    program.form().txtTitle.Text = u"受注管理　仕様書";
    EXPECT_TRUE(press(program, program.form().m1b, file));
    EXPECT_EQ(program.dialogs.lastText(), u"保存終了しました。");
}

int compare(RealProgram& program, const fs::path& file) {
    FrmSien sien(program.desk->context);
    program.dialogs.files.push_back(textOf(file));
    const auto boxes = program.dialogs.boxes.size();
    program.desk->dispatch([&] { cmdObjUpdate_Click(sien); });
    return static_cast<int>(program.dialogs.boxes.size() - boxes);
}

// "Class name date" of each row, sorted.
std::vector<Text> inventory(RealProgram& program, TextView table) {
    std::vector<Text> lines;
    for (const StoredRow& row : program.rows(table)) {
        lines.push_back(toText(row.at(u"Class")) + u" " + toText(row.at(u"ObjectName")) + u" " +
                        toText(row.at(u"DateUpdate")));
    }
    std::ranges::sort(lines);
    return lines;
}

std::vector<Text> onlyIn(const std::vector<Text>& left, const std::vector<Text>& right) {
    std::vector<Text> difference;
    std::ranges::set_difference(left, right, std::back_inserter(difference));
    return difference;
}

TEST(RealSavedAnalysis, FileIsTheWorkDatabaseByteForByteAndTheTargetStays) {
    const test::TemporaryFolder folder;
    const fs::path target = test::ownSample("juchu.mdb"), file = folder / "受注.adb";
    const std::string before = test::bytesOf(target);
    RealProgram program;
    analyseAndSave(program, target, folder / "受注.ADB");
    ASSERT_TRUE(fs::exists(file));
    EXPECT_TRUE(test::bytesOf(file) == test::bytesOf(program.folder / "Relvane.mdb"));
    EXPECT_EQ(test::bytesOf(target), before);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);
    const auto flags = program.rows(u"T_RvSaveFlag");
    ASSERT_EQ(flags.size(), 1u);
    EXPECT_EQ(toText(flags[0].at(u"ObjName")), u"juchu.mdb");
    EXPECT_EQ(flags[0].at(u"fTbl"), Value(std::int64_t{2}));
    EXPECT_EQ(flags[0].at(u"ObjNameOld"), Value(Null{}));
}

TEST(RealSavedAnalysis, PanelComesBackInAnotherRunFromTheMenuAndFromTheCommandLine) {
    const test::TemporaryFolder folder;
    const fs::path file = folder / "受注.adb";
    {
        RealProgram program;
        analyseAndSave(program, test::ownSample("juchu.mdb"), file);
    }
    const std::string before = test::bytesOf(file);
    const auto isBack = [](RealProgram& program) {
        FrmRelvane& form = program.form();
        EXPECT_EQ(program.desk->context.AnalysisMode, modeSavedFile);
        EXPECT_EQ(form.optTable.chosen(), 1);
        EXPECT_EQ(form.optModule.chosen(), 3);
        EXPECT_EQ(form.chkMod50.Value, 1);
        EXPECT_EQ(form.txtTitle.Text.get(), u"受注管理　仕様書");
        EXPECT_TRUE(form.cmdOPre.Enabled);
        EXPECT_TRUE(form.cmdTPre.Enabled);
        EXPECT_TRUE(form.cmdMPre.Enabled);
        EXPECT_FALSE(form.cmdQPre.Enabled);
        EXPECT_FALSE(form.cmdTable.Enabled);
        EXPECT_FALSE(form.m1a.Enabled);
    };
    RealProgram menu;
    EXPECT_TRUE(press(menu, menu.form().m1c, file));
    EXPECT_EQ(menu.dialogs.lastText(), u"読み込みました。");
    isBack(menu);
    EXPECT_TRUE(menu.press(menu.form().cmdTPre));
    EXPECT_THAT(menu.reportApps.calls, testing::Contains(u"OpenReport R_RvTblTable 2"));

    RealProgram line;
    EXPECT_TRUE(line.desk->start(u"\"" + textOf(file) + u"\""));
    EXPECT_TRUE(line.dialogs.boxes.empty()) << toUtf8(line.dialogs.lastText());
    isBack(line);
    EXPECT_FALSE(line.desk->dispatch([&] { line.form().m1z.press(); }));
    EXPECT_TRUE(test::bytesOf(file) == before) << "a load writes nothing";
}

TEST(RealSavedAnalysis, NameWithoutAnExtensionGetsItAndCapitalsYieldOne) {
    const test::TemporaryFolder folder;
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("empty.mdb")));
    for (const char* name : {"受注", "old.ADB"}) {
        EXPECT_TRUE(press(program, program.form().m1b, folder / name));
    }
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        names.push_back(entry.path().filename().string());
    }
    EXPECT_THAT(names, testing::UnorderedElementsAre("受注.adb", "old.adb"));
}

// A target without queries has a panel that was never there to be analysed.
TEST(RealSavedAnalysis, PanelOfAKindThatTheTargetLacksStaysClosedAndTheMenuIsLocked) {
    const test::TemporaryFolder folder;
    {
        RealProgram program;
        ASSERT_TRUE(program.select(test::ownSample("zaiko.mdb")));
        EXPECT_TRUE(press(program, program.form().m1b, folder / "a.adb"));
        EXPECT_EQ(program.rows(u"T_RvSaveFlag").at(0).at(u"fQry"), Value(std::int64_t{9}));
    }
    RealProgram loaded;
    FrmRelvane& form = loaded.form();
    const int byDefault = form.optQuery.chosen();
    EXPECT_TRUE(press(loaded, form.m1c, folder / "a.adb"));
    EXPECT_EQ(form.optQuery.chosen(), byDefault);
    EXPECT_FALSE(form.cmdQPre.Enabled);
    for (const MenuItem* entry : {&form.m1a, &form.m1b, &form.m1c, &form.m6, &form.m7, &form.m8}) {
        EXPECT_FALSE(entry->Enabled);
    }
    EXPECT_TRUE(form.m9.Enabled);
}

// The work database itself, as installed, is a file in which nothing was ever saved.
TEST(RealSavedAnalysis, FileWithoutFlagsSaysThatItsSaveFailed) {
    RealProgram program;
    EXPECT_TRUE(
        press(program, program.form().m1c, test::buildFolder() / "share" / "relvane" / "Relvane.mdb"));
    EXPECT_EQ(program.dialogs.lastText(), u"保存処理が失敗しています。");
    EXPECT_EQ(program.desk->context.AnalysisMode, modeSavedFile);
}

TEST(RealSavedAnalysis, PersonIsAskedBeforeAFileIsReplaced) {
    const test::TemporaryFolder folder;
    const fs::path file = folder / "a.adb";
    std::ofstream(file) << "old";
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("juchu.mdb")));
    program.dialogs.answers = {boxNo};
    EXPECT_TRUE(press(program, program.form().m1b, file));
    EXPECT_EQ(program.dialogs.lastText(), u"保存終了しました。") << "refused or not";
    EXPECT_EQ(test::bytesOf(file), "old");
    program.dialogs.answers = {boxYes};
    EXPECT_TRUE(press(program, program.form().m1b, file));
    EXPECT_TRUE(test::bytesOf(file) == test::bytesOf(program.folder / "Relvane.mdb"));
}

TEST(RealSavedAnalysis, FolderThatIsNotThereIsReportedAndNothingIsLost) {
    const test::TemporaryFolder folder;
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("juchu.mdb")));
    EXPECT_TRUE(press(program, program.form().m1b, folder / "none" / "a.adb"));
    EXPECT_THAT(program.dialogs.lastText(), beginsWith(u"場所:保存ｴﾗｰNo:76\r"));
    EXPECT_EQ(program.rows(u"T_RvSaveFlag").size(), 1u);
    EXPECT_TRUE(press(program, program.form().m1b, folder / "a.adb")) << "it can be tried again";
    EXPECT_TRUE(fs::exists(folder / "a.adb"));
}

TEST(RealSavedAnalysis, TargetIsNotReplacedByWhateverWay) {
    const test::TemporaryFolder folder;
    const fs::path target = folder / "target.adb";
    fs::copy_file(test::ownSample("juchu.mdb"), target);
    fs::create_directory_symlink(folder.path(), folder / "way");
    const std::string before = test::bytesOf(target);
    RealProgram program;
    ASSERT_TRUE(program.select(target));
    EXPECT_TRUE(press(program, program.form().m1b, folder / "way" / "target"));
    EXPECT_THAT(program.dialogs.lastText(), beginsWith(u"場所:保存ｴﾗｰNo:70\r"));
    EXPECT_TRUE(test::bytesOf(target) == before);
}

TEST(RealSavedAnalysis, WhatIsNoAnalysisFileIsReported) {
    const test::TemporaryFolder folder;
    std::ofstream(folder / "text.adb") << "no database";
    const std::pair<fs::path, int> cases[] = {{folder / "text.adb", 3343},
                                              {test::ownSample("juchu.mdb"), 3343},
                                              {folder / "none.adb", 3024},
                                              {folder / "none" / "none.adb", 3044}};
    for (const auto& [path, number] : cases) {
        const Text numberText = toText(static_cast<long long>(number));
        RealProgram loading;
        EXPECT_TRUE(press(loading, loading.form().m1c, path));
        EXPECT_THAT(loading.dialogs.lastText(), beginsWith(u"場所:読込ｴﾗｰNo:" + numberText + u"\r"));
        RealProgram comparing;
        ASSERT_TRUE(comparing.select(test::ownSample("juchu.mdb")));
        EXPECT_EQ(compare(comparing, path), 1);
        EXPECT_THAT(comparing.dialogs.lastText(),
                    beginsWith(u"場所:オブジェクト比較ｴﾗｰNo:" + numberText + u"\r"));
    }
}

TEST(RealComparison, UnchangedTargetHasTheSameObjectsOnBothSides) {
    std::vector<fs::path> targets = {test::ownSample("juchu.mdb"), test::ownSample("empty.mdb")};
    if (const auto nwind = test::realSample("access97/nwind.mdb")) {
        targets.push_back(*nwind);
    }
    for (const fs::path& target : targets) {
        SCOPED_TRACE(target);
        const test::TemporaryFolder folder;
        RealProgram program;
        ASSERT_TRUE(program.select(target));
        ASSERT_TRUE(press(program, program.form().m1b, folder / "a.adb"));
        EXPECT_EQ(compare(program, folder / "a.adb"), 0) << toUtf8(program.dialogs.lastText());
        EXPECT_EQ(inventory(program, u"T_RvSaveObject"), inventory(program, u"T_RvSaveObjectOld"));
        const auto flags = program.rows(u"T_RvSaveFlag");
        ASSERT_EQ(flags.size(), 1u);
        EXPECT_EQ(toText(flags[0].at(u"ObjName")), textOfNativePath(target.filename().string()));
        EXPECT_EQ(flags[0].at(u"ObjNameOld"), flags[0].at(u"ObjName"));
        EXPECT_THAT(program.reportApps.calls, testing::Contains(u"OpenReport R_RvObjectUpdate 2"));
    }
}

// The sample as it was: a table more, a form less, a query of another date.
TEST(RealComparison, AddedDeletedAndChangedObjectsDiffer) {
    const test::TemporaryFolder folder;
    auto earlier = samples::readDescription(test::sourceFolder() / "samples" / "juchu.txt");
    ASSERT_FALSE(earlier.forms.empty());
    ASSERT_FALSE(earlier.queries.empty());
    const Text added = earlier.forms.back().name, changed = earlier.queries.front().name;
    earlier.forms.pop_back();
    earlier.queries.front().updated = DateTime{1997, 1, 2, 3, 4, 5};
    samples::TableSpec deleted;
    deleted.name = u"旧単価";
    deleted.columns = {{.name = u"番号"}};
    deleted.updated = DateTime{1997, 2, 3, 4, 5, 6};
    earlier.tables.push_back(deleted);
    samples::writeDatabase(earlier, folder / "earlier.mdb");
    {
        RealProgram program;
        ASSERT_TRUE(program.select(folder / "earlier.mdb"));
        ASSERT_TRUE(press(program, program.form().m1b, folder / "earlier.adb"));
        ASSERT_EQ(program.dialogs.lastText(), u"保存終了しました。");
    }
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("juchu.mdb")));
    EXPECT_EQ(compare(program, folder / "earlier.adb"), 0);
    const auto now = inventory(program, u"T_RvSaveObject"), before = inventory(program, u"T_RvSaveObjectOld");
    EXPECT_THAT(onlyIn(now, before),
                ElementsAre(beginsWith(u"Form " + added + u" "), beginsWith(u"Query " + changed + u" ")));
    EXPECT_THAT(onlyIn(before, now),
                ElementsAre(beginsWith(u"Query " + changed + u" 1997"), beginsWith(u"Table 旧単価 1997")));
    EXPECT_GT(now.size(), 50u) << "all others are untouched";
    const auto flags = program.rows(u"T_RvSaveFlag");
    EXPECT_EQ(toText(flags.at(0).at(u"ObjNameOld")), u"earlier.mdb");

    // A file saved before is no longer what the work database holds.
    RealProgram loaded;
    EXPECT_TRUE(press(loaded, loaded.form().m1c, program.folder / "Relvane.mdb"));
    EXPECT_EQ(loaded.dialogs.lastText(), u"読み込みました。") << "the flags of a comparison say nothing";
    EXPECT_FALSE(loaded.form().cmdOPre.Enabled);
}

TEST(RealComparison, CancelledDialogTellsAndChangesNothing) {
    const test::TemporaryFolder folder;
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("juchu.mdb")));
    ASSERT_TRUE(press(program, program.form().m1b, folder / "a.adb"));
    const std::string before = test::bytesOf(program.folder / "Relvane.mdb");
    EXPECT_EQ(compare(program, fs::path()), 1);
    EXPECT_EQ(program.dialogs.lastText(), u"比較用ファイルを選択して下さい。");
    EXPECT_TRUE(test::bytesOf(program.folder / "Relvane.mdb") == before);
}

// Its rows are taken before they are replaced.
TEST(RealComparison, WorkDatabaseItselfIsComparedAsItStood) {
    const test::TemporaryFolder folder;
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("juchu.mdb")));
    ASSERT_TRUE(press(program, program.form().m1b, folder / "a.adb"));
    EXPECT_EQ(compare(program, program.folder / "Relvane.mdb"), 0) << toUtf8(program.dialogs.lastText());
    EXPECT_GT(program.rows(u"T_RvSaveObjectOld").size(), 50u);
    EXPECT_EQ(inventory(program, u"T_RvSaveObject"), inventory(program, u"T_RvSaveObjectOld"));
    EXPECT_EQ(toText(program.rows(u"T_RvSaveFlag").at(0).at(u"ObjNameOld")), u"juchu.mdb");
}

TEST(RealComparison, DamagedFileIsReportedAndTheTargetStays) {
    const test::TemporaryFolder folder;
    RealProgram program;
    const fs::path target = test::ownSample("juchu.mdb");
    const std::string before = test::bytesOf(target);
    ASSERT_TRUE(program.select(target));
    ASSERT_TRUE(press(program, program.form().m1b, folder / "a.adb"));
    fs::resize_file(folder / "a.adb", fs::file_size(folder / "a.adb") / 2);
    EXPECT_EQ(compare(program, folder / "a.adb"), 1);
    EXPECT_THAT(program.dialogs.lastText(), beginsWith(u"場所:オブジェクト比較ｴﾗｰNo:3049\r"));
    EXPECT_FALSE(program.desk->ended());
    EXPECT_EQ(test::bytesOf(target), before);
}

int listSpecifications(RealProgram& program) {
    FrmSien sien(program.desk->context);
    const auto boxes = program.dialogs.boxes.size();
    program.desk->dispatch([&] { cmdTeigi_Click(sien); });
    return static_cast<int>(program.dialogs.boxes.size() - boxes);
}

// Every type of specification, every order of a date that the sample has, marks that no key types.
TEST(RealSpecifications, ThoseOfTheSampleAreCopiedAsTheyStand) {
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("juchu.mdb")));
    EXPECT_EQ(listSpecifications(program), 0) << toUtf8(program.dialogs.lastText());
    const auto specifications = program.rows(u"T_RvTeigi"), columns = program.rows(u"T_RvTeigiItem");
    ASSERT_EQ(specifications.size(), 6u);
    const StoredRow expected = {{u"DateDelim", Text(u"-")},
                                {u"DateFourDigitYear", true},
                                {u"DateLeadingZeros", false},
                                {u"DateOrder", std::int64_t{2}},
                                {u"DecimalPoint", Text(u",")},
                                {u"FieldSeparator", Text(u";")},
                                {u"FileType", std::int64_t{850}},
                                {u"SpecID", std::int64_t{3}},
                                {u"SpecName", Text(u"海外仕入先の単価")},
                                {u"SpecType", std::int64_t{1}},
                                {u"StartRow", std::int64_t{1}},
                                {u"TextDelim", Text(u"'")},
                                {u"TimeDelim", Text(u":")}};
    EXPECT_EQ(specifications[2], expected);
    EXPECT_EQ(specifications[1].at(u"TextDelim"), Value(Null{}));
    EXPECT_EQ(specifications[3].at(u"FieldSeparator"), Value(u"\t"));
    EXPECT_EQ(specifications[4].at(u"FieldSeparator"), Value(u"\u0001"));
    EXPECT_EQ(columns.size(), 19u);
    const StoredRow expectedColumn = {
        {u"Attributes", std::int64_t{0}}, {u"dataType", std::int64_t{10}}, {u"FieldName", Text(u"住所")},
        {u"IndexType", std::int64_t{0}},  {u"SkipColumn", true},           {u"SpecID", std::int64_t{2}},
        {u"Start", std::int64_t{8}},      {u"Width", std::int64_t{80}}};
    EXPECT_THAT(columns, testing::Contains(expectedColumn));
    for (const StoredRow& column : columns) {
        EXPECT_NE(column.at(u"SpecID"), Value(std::int64_t{6})) << "that one has none";
    }
}

TEST(RealSpecifications, TargetWithoutThemGetsAMessageAndTheRowsOfAnotherStay) {
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("juchu.mdb")));
    EXPECT_EQ(listSpecifications(program), 0);
    const auto before = program.rows(u"T_RvTeigi").size();
    ASSERT_TRUE(program.select(test::ownSample("empty.mdb")));
    EXPECT_EQ(listSpecifications(program), 1);
    EXPECT_EQ(program.dialogs.lastText(), u"変換定義がありません。");
    EXPECT_EQ(program.rows(u"T_RvTeigi").size(), before);
}

} // namespace
} // namespace relvane
