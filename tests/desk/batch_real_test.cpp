// The batch over real files: everything ticked, every preview, the analysis saved, and loaded by another process.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "core/panels.h"
#include "real_program.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;

using test::RealProgram;
using testing::IsEmpty;

constexpr TextView closingBox = u"「一括処理」を終了しました。\rプレビューボタンを押して印刷下さい。";

// The own sample, and a large one where there is one.
std::vector<fs::path> targets() {
    std::vector<fs::path> all = {test::ownSample("juchu.mdb")};
    if (const auto nwind = test::realSample("access97/nwind.mdb")) {
        all.push_back(*nwind);
    } else {
        std::cout << "without nwind.mdb\n";
    }
    return all;
}

void tickEverything(FrmBatch& batch) {
    for (CheckBox* box : {&batch.chkObj, &batch.chkTbl, &batch.chkQery, &batch.chkForm, &batch.chkRep,
                          &batch.chkMac, &batch.chkProc, &batch.chkMod, &batch.chkModStep, &batch.chkControl,
                          &batch.chkFile, &batch.chkComent}) {
        box->tick(true);
    }
    for (OptionGroup* group : {&batch.optTbl, &batch.optQery, &batch.optForm, &batch.optRep, &batch.optMac,
                               &batch.optProc, &batch.optMod, &batch.optModStep, &batch.optControl}) {
        group->choose(group->count() - 1);
    }
}

bool runEverything(RealProgram& program) {
    FrmBatch& batch = program.desk->frmBatch;
    return program.desk->dispatch([&] {
        program.form().m6.press();
        tickEverything(batch);
        batch.cmdExec.press();
    });
}

// Every row of every table that the batch fills.
std::map<Text, std::vector<test::StoredRow>> contents(RealProgram& program) {
    std::map<Text, std::vector<test::StoredRow>> all;
    for (const TextView table :
         {u"T_RvObject", u"T_RvTblInfo", u"T_RvTblItem", u"T_RvQeryInfo", u"T_RvQeryItem", u"T_RvFrmInfo",
          u"T_RvFrmItem", u"T_RvRepInfo", u"T_RvRepItem", u"T_RvRepGrp", u"T_RvMacro", u"T_RvMacro2",
          u"T_RvProcName", u"T_RvDimCall", u"T_RvModule", u"T_RvProcCount", u"T_RvControlCount", u"T_RvFile",
          u"T_RvComment"}) {
        all[Text(table)] = program.rows(table);
    }
    return all;
}

std::vector<Text> reportsOf(const RealProgram& program) {
    std::vector<Text> reports;
    std::ranges::copy_if(program.reportApps.calls, std::back_inserter(reports),
                         [](const Text& call) { return call.starts_with(u"OpenReport "); });
    return reports;
}

// The lines that another process prints, which loads the file by its command line.
std::vector<Text> reportsOfAnotherProcess(const fs::path& file) {
    const std::string command = std::string("'") + RELVANE_LOADED_RUN + "' '" + file.string() + "'";
    FILE* const output = popen(command.c_str(), "r");
    std::vector<Text> lines;
    char line[200];
    while (output != nullptr && std::fgets(line, sizeof line, output) != nullptr) {
        std::string text(line);
        text.erase(text.find_last_not_of('\n') + 1);
        lines.push_back(fromUtf8(text));
    }
    EXPECT_TRUE(output != nullptr && pclose(output) == 0);
    return lines;
}

TEST(RealBatch, EverythingIsAnalysedPreviewedSavedAndLoadedByAnotherProcess) {
    for (const fs::path& target : targets()) {
        SCOPED_TRACE(target);
        const std::string before = test::bytesOf(target);
        const test::TemporaryFolder folder;
        RealProgram program;
        ASSERT_TRUE(program.select(target)) << toUtf8(program.dialogs.lastText());
        program.dialogs.boxes.clear();
        ASSERT_TRUE(runEverything(program)) << toUtf8(program.dialogs.lastText());
        ASSERT_EQ(program.dialogs.boxes.size(), 1u);
        EXPECT_EQ(program.dialogs.lastText(), closingBox);
        EXPECT_THAT(reportsOf(program), IsEmpty());
        for (const auto& [table, rows] : contents(program)) {
            EXPECT_FALSE(rows.empty() && table != u"T_RvMacro2") << toUtf8(table);
        }

        for (const auto preview : previewButtons()) {
            EXPECT_TRUE((program.form().*preview).Enabled);
            EXPECT_TRUE(program.press(program.form().*preview));
        }
        const std::vector<Text> shown = reportsOf(program);
        EXPECT_EQ(shown.size(), previewButtons().size());
        EXPECT_EQ(program.dialogs.boxes.size(), 1u) << toUtf8(program.dialogs.lastText());

        program.dialogs.files.push_back(textOfNativePath((folder / "all.adb").string()));
        EXPECT_TRUE(program.desk->dispatch([&] { program.form().m1b.press(); }));
        EXPECT_EQ(program.dialogs.lastText(), u"保存終了しました。");
        std::vector<Text> expected = shown;
        std::erase(expected, Text(u"OpenReport R_RvComment 2")); // the list without a done flag is not kept
        EXPECT_EQ(reportsOfAnotherProcess(folder / "all.adb"), expected);
        EXPECT_EQ(test::bytesOf(target), before);
    }
}

// The same rows as behind the buttons of the panels, pressed in the same order with the same options.
TEST(RealBatch, RowsAreThoseOfThePanels) {
    for (const fs::path& target : targets()) {
        SCOPED_TRACE(target);
        RealProgram batch;
        ASSERT_TRUE(batch.select(target));
        ASSERT_TRUE(runEverything(batch));
        RealProgram panel;
        ASSERT_TRUE(panel.select(target));
        FrmRelvane& form = panel.form();
        for (const Panel& each : panels()) {
            const int options = (form.*each.options).count();
            (form.*each.options).choose(each.option == &AnalysisContext::OptFile ? 0 : options - 1);
        }
        for (CommandButton* button : {&form.cmdObject, &form.cmdTable, &form.cmdQuery, &form.cmdForm,
                                      &form.cmdReport, &form.cmdMacro, &form.cmdProc, &form.cmdModule,
                                      &form.cmdModStep, &form.cmdControl, &form.cmdFile, &form.cmdComment}) {
            ASSERT_TRUE(panel.press(*button)) << toUtf8(panel.dialogs.lastText());
        }
        const auto expected = contents(panel);
        for (const auto& [table, rows] : contents(batch)) {
            EXPECT_TRUE(rows == expected.at(table)) << toUtf8(table);
        }
    }
}

} // namespace
} // namespace relvane
