// The step counts: what a line counts as, when a row is written and for whom, and their command.

#include "code/step_counts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/code_program.h"

namespace relvane {
namespace {

using namespace test;
using testing::ElementsAre;

struct StepCounts : testing::Test, CodeProgram {
    bool run(int option) {
        selectOnce();
        form().optModStep.choose(option - 1);
        return press(form().cmdModStep);
    }
    bool runsAgain(int option) {
        store.log.clear();
        run(option);
        return !store.log.empty();
    }
    // "kind | object | procedure | its numbers | comments | blank | steps | all".
    std::vector<Text> counts(int option) {
        run(option);
        return rowsOf(u"T_RvProcCount", {u"Object", u"ObjectName", u"ProcedureName", u"objectNo",
                                         u"ProcedureNo", u"ComentCnt", u"SpaceCnt", u"ProcCnt", u"TotalCnt"});
    }
};

TEST_F(StepCounts, RowHasItsFieldsInOrder) {
    addModule(u"M",
              moduleOf({u"Dim x", u"Sub A()", u"' a", u"", u"x = 1", u"End Sub", u"Sub B()", u"End Sub"}));
    run(3);
    ASSERT_EQ(store.rows(u"T_RvProcCount").size(), 2u);
    EXPECT_EQ(store.rows(u"T_RvProcCount")[1], (FakeRow{{u"Object", u"Module"},
                                                        {u"ObjectName", u"M"},
                                                        {u"ProcedureName", u"A"},
                                                        {u"objectNo", std::int64_t{1}},
                                                        {u"ProcedureNo", std::int64_t{2}},
                                                        {u"ComentCnt", std::int64_t{1}},
                                                        {u"SpaceCnt", std::int64_t{1}},
                                                        {u"ProcCnt", std::int64_t{3}},
                                                        {u"TotalCnt", std::int64_t{5}}}));
}

struct CountedLine {
    TextView line;
    Text counts; // comments | blank | steps
};

// clang-format off
const CountedLine countedLines[] = {
    {u"",                         u"0 | 1 | 0"},
    {u"      ",                   u"0 | 1 | 0"},
    {u"\t",                       u"0 | 0 | 1"},
    {u"　",                       u"0 | 0 | 1"},
    {u"' remark",                 u"1 | 0 | 0"},
    {u"    ' remark",             u"1 | 0 | 0"},
    {u"\t' remark",               u"0 | 0 | 1"},
    {u"Rem remark",               u"1 | 0 | 0"},
    {u"rem x",                    u"1 | 0 | 0"},
    {u"REM",                      u"0 | 0 | 1"},
    {u"REMARK = 1",               u"0 | 0 | 1"},
    {u"x = 1 ' remark",           u"0 | 0 | 1"},
    {u"s = \"' no remark\"",      u"0 | 0 | 1"},
    {u"Option Explicit",          u"0 | 0 | 1"},
    {u"Dim x",                    u"0 | 0 | 1"},
    {u"Marke:",                   u"0 | 0 | 1"},
    {u"#If Win32 Then",           u"0 | 0 | 1"},
};
// clang-format on

TEST(StepLines, CountAsCommentsBlankLinesOrSteps) {
    for (const CountedLine& counted : countedLines) {
        SCOPED_TRACE("\"" + toUtf8(counted.line) + "\"");
        CodeProgram program;
        program.addModule(u"M", moduleOf({u"Option Explicit", u"Sub A()", counted.line, u"End Sub",
                                          u"Sub B()", u"End Sub"}));
        program.selectOnce();
        program.press(program.form().cmdModStep);
        // The two lines around it are steps.
        const auto rows = program.store.rows(u"T_RvProcCount");
        ASSERT_EQ(rows.size(), 3u);
        const auto field = [&rows](TextView name) { return std::get<std::int64_t>(valueOf(rows[1], name)); };
        EXPECT_EQ(toText(static_cast<long long>(field(u"ComentCnt"))) + u" | " +
                      toText(static_cast<long long>(field(u"SpaceCnt"))) + u" | " +
                      toText(static_cast<long long>(field(u"ProcCnt") - 2)),
                  counted.counts);
        EXPECT_EQ(field(u"ComentCnt") + field(u"SpaceCnt") + field(u"ProcCnt"), field(u"TotalCnt"));
    }
}

TEST_F(StepCounts, EachLineOfAStatementIsAStepAndSoIsItsEnd) {
    addModule(u"M",
              moduleOf({u"Sub A(x, _", u"   y)", u"z = x + _", u"   y", u"End Sub", u"Sub B()", u"End Sub"}));
    EXPECT_EQ(counts(3).at(1), u"Module | M | A | 0 | 2 | 0 | 0 | 5 | 5");
}

TEST_F(StepCounts, RemarksAndBlankLinesAheadOfAHeaderCountToItsProcedure) {
    addModule(u"M", moduleOf({u"Option Explicit", u"Sub A()", u"End Sub", u"", u"' of B", u"Sub B()",
                              u"End Sub", u"Sub C()", u"End Sub"}));
    EXPECT_THAT(counts(3), ElementsAre(u"Module | M | (Declations) | 1 | 1 | 0 | 0 | 1 | 1",
                                       u"Module | M | A | 1 | 2 | 0 | 0 | 2 | 2",
                                       u"Module | M | B | 1 | 3 | 1 | 1 | 2 | 4"));
}

TEST_F(StepCounts, WithAChoiceOfOneKindTheLastProcedureHasNoRow) {
    addForm(u"F", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    addReport(u"R", moduleOf({u"Dim x", u"Sub B()", u"End Sub"}));
    addModule(u"M", moduleOf({u"Dim x", u"Sub C()", u"End Sub"}));
    EXPECT_THAT(counts(1), ElementsAre(u"Form | F | (Declations) | 1 | 1 | 0 | 0 | 1 | 1"));
    EXPECT_THAT(counts(2), ElementsAre(u"Report | R | (Declations) | 1 | 1 | 0 | 0 | 1 | 1"));
    EXPECT_THAT(counts(3), ElementsAre(u"Module | M | (Declations) | 1 | 1 | 0 | 0 | 1 | 1"));
}

TEST_F(StepCounts, WithTheChoiceOfAllTheLastProcedureHasARowToo) {
    addModule(u"M", moduleOf({u"Dim x", u"Sub A()", u"' a", u"End Sub"}));
    EXPECT_THAT(counts(4), ElementsAre(u"Module | M | (Declations) | 1 | 1 | 0 | 0 | 1 | 1",
                                       u"Module | M | A | 1 | 2 | 1 | 0 | 2 | 3"));
}

TEST_F(StepCounts, WithAFormOrReportAtTheEndTheLastRowIsOfTheDeclarations) {
    addForm(u"F", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    EXPECT_THAT(counts(4), ElementsAre(u"Form | F | (Declations) | 1 | 1 | 0 | 0 | 1 | 1",
                                       u"Form | F | (Declations) | 1 | 2 | 0 | 0 | 2 | 2"));
}

TEST_F(StepCounts, ATargetWithoutCodeHasOneRowOfNothing) {
    addForm(u"Plain");
    EXPECT_THAT(counts(4), ElementsAre(u" |  | (Declations) | 0 | 1 | 0 | 0 | 0 | 0"));
    EXPECT_TRUE(counts(1).empty());
}

TEST_F(StepCounts, CountsOfAFormsLastProcedureRunOnIntoTheNextFormsDeclarations) {
    addForm(u"F1", moduleOf({u"Dim x", u"Sub A()", u"' a", u"End Sub"}));
    addForm(u"F2", moduleOf({u"Dim y", u"Sub B()", u"End Sub"}));
    EXPECT_THAT(counts(1), ElementsAre(u"Form | F1 | (Declations) | 1 | 1 | 0 | 0 | 1 | 1",
                                       u"Form | F2 | (Declations) | 2 | 2 | 1 | 0 | 3 | 4"));
}

TEST_F(StepCounts, AFormThatBeginsWithAProcedureWritesTheRowOfTheObjectBefore) {
    addForm(u"F1", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    addForm(u"F2", moduleOf({u"Sub B()", u"End Sub", u"Sub C()", u"End Sub"}));
    addForm(u"F3", moduleOf({u"Dim y", u"Sub D()", u"End Sub"}));
    EXPECT_THAT(counts(1), ElementsAre(u"Form | F1 | (Declations) | 1 | 1 | 0 | 0 | 1 | 1",
                                       u"Form | F1 | (Declations) | 1 | 2 | 0 | 0 | 2 | 2",
                                       u"Form | F2 | B | 1 | 3 | 0 | 0 | 2 | 2",
                                       u"Form | F3 | (Declations) | 2 | 4 | 0 | 0 | 3 | 3"));
}

TEST_F(StepCounts, ARowLeftOverFromAnotherKindHasTheWordOfTheNewOne) {
    addForm(u"F", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    addReport(u"R", moduleOf({u"Sub B()", u"End Sub"}));
    EXPECT_THAT(counts(4), ElementsAre(u"Form | F | (Declations) | 1 | 1 | 0 | 0 | 1 | 1",
                                       u"Report | F | (Declations) | 1 | 2 | 0 | 0 | 2 | 2",
                                       u"Report | R | (Declations) | 1 | 3 | 0 | 0 | 2 | 2"));
}

TEST_F(StepCounts, TheNextModuleWritesTheLastProcedureOfTheOneBeforeAndNumbersStayLowered) {
    addModule(u"M1", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    addModule(u"M2", moduleOf({u"Dim y", u"' y", u"Sub B()", u"End Sub"}));
    addModule(u"M3", moduleOf({u"Dim z", u"Sub C()", u"End Sub", u"Sub D()", u"End Sub"}));
    EXPECT_THAT(counts(3), ElementsAre(u"Module | M1 | (Declations) | 1 | 1 | 0 | 0 | 1 | 1",
                                       u"Module | M1 | A | 1 | 2 | 0 | 0 | 2 | 2",
                                       u"Module | M2 | (Declations) | 1 | 3 | 0 | 0 | 1 | 1",
                                       u"Module | M2 | B | 1 | 4 | 1 | 0 | 2 | 3",
                                       u"Module | M3 | (Declations) | 1 | 5 | 0 | 0 | 1 | 1",
                                       u"Module | M3 | C | 1 | 6 | 0 | 0 | 2 | 2"));
    EXPECT_EQ(context().ObjectNo, 1);
}

TEST_F(StepCounts, AModuleThatBeginsWithTheNameTheOneBeforeEndedOnGoesOnCounting) {
    addModule(u"M1", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    addModule(u"M2", moduleOf({u"Sub A()", u"End Sub", u"Sub B()", u"End Sub"}));
    EXPECT_THAT(counts(3), ElementsAre(u"Module | M1 | (Declations) | 1 | 1 | 0 | 0 | 1 | 1",
                                       u"Module | M2 | A | 2 | 2 | 0 | 0 | 4 | 4"));
}

TEST_F(StepCounts, TheVeryFirstObjectWithoutDeclarationsWritesARowOfNothing) {
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub", u"Sub B()", u"End Sub"}));
    EXPECT_THAT(counts(3), ElementsAre(u"Module |  | (Declations) | 0 | 1 | 0 | 0 | 0 | 0",
                                       u"Module | M | A | 0 | 2 | 0 | 0 | 2 | 2"));
}

TEST_F(StepCounts, ARunBeginsAnewWhateverWasScannedBefore) {
    addModule(u"M", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    addForm(u"F", moduleOf({u"Sub A()", u"End Sub"}));
    const auto first = counts(4);
    counts(3);
    EXPECT_EQ(counts(4), first);
}

TEST_F(StepCounts, ObjectNamesAreCutAt150CharactersAndThenTrimmed) {
    addModule(Text(149, u'M') + u"  x", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    run(4);
    EXPECT_THAT(column(u"T_RvProcCount", u"ObjectName"), ElementsAre(Text(149, u'M'), Text(149, u'M')));
    EXPECT_THAT(column(u"T_RvProcCount", u"objectNo"), ElementsAre(u"1", u"1"));
}

TEST_F(StepCounts, ALoweredNumberIsShownByTheGaugeToo) {
    addModule(u"M1", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    addModule(u"M2", moduleOf({u"Dim y", u"Sub B()", u"End Sub"}));
    addForm(u"Plain");
    addReport(u"R", moduleOf({u"' r"}));
    selectOnce();
    const auto& shown = watch();
    run(4);
    EXPECT_THAT(shown,
                ElementsAre(u"0%", u"モジュールステップ　取得中", u"フォームモジュール情報　取得中　(Plain)",
                            u"0%", u"レポートモジュール情報　取得中　(R)", u"25%",
                            u"モジュール情報　取得中　(M1)", u"50%", u"モジュール情報　取得中　(M2)", u"50%",
                            u"終了しました", u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"));
    EXPECT_EQ(form().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(form().Timer1.Interval, 5000);
}

TEST_F(StepCounts, AllKindsAreChosenAtFirst) {
    selectOnce();
    EXPECT_EQ(context().OptModStep, 4);
    EXPECT_EQ(context().DoneModStep, 0);
}

TEST_F(StepCounts, AnotherOptionCountsAgainAndTheSameShowsTheReport) {
    addModule(u"M", moduleOf({u"Dim x"}));
    EXPECT_TRUE(runsAgain(4));
    EXPECT_EQ(context().DoneModStep, 4);
    EXPECT_FALSE(runsAgain(4));
    EXPECT_TRUE(runsAgain(3));
    EXPECT_TRUE(runsAgain(4));
    EXPECT_EQ(reportsShown(u"R_RvModStep"), 4);
}

TEST_F(StepCounts, RunOpensEmptiesAndClosesItsTableAndOpensThePreview) {
    addModule(u"M", moduleOf({u"Dim x"}));
    selectOnce();
    store.log.clear();
    form().cmdMsPre.Enabled = false;
    run(4);
    EXPECT_THAT(store.log,
                ElementsAre(u"open T_RvProcCount", u"delete * from T_RvProcCount;", u"close T_RvProcCount"));
    EXPECT_TRUE(form().cmdMsPre.Enabled);
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
}

TEST_F(StepCounts, FailureIsReportedUnderItsPlaceAndTheRowsSoFarStay) {
    addForm(u"F", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    addModule(u"M", moduleOf({u"' m"}));
    run(1);
    targetApps.failing[u"OpenModule"] = 3049;
    EXPECT_THAT(counts(4), ElementsAre(u"Form | F | (Declations) | 1 | 1 | 0 | 0 | 1 | 1"));
    EXPECT_EQ(dialogs.lastText(),
              u"場所:モジュールステップｴﾗｰNo:3049\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明");
    EXPECT_EQ(context().DoneModStep, 1) << "the flag of the run before";
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
    targetApps.failing[u"OpenModule"] = 7866;
    run(4);
    EXPECT_EQ(dialogs.lastText(),
              u"Access97以前のバージョンのファイルです。\rAccess97形式に変換して下さい。");
    EXPECT_FALSE(desk->ended());
    targetApps.failing[u"OpenModule"] = 2999;
    run(4);
    EXPECT_TRUE(desk->ended()) << "an error of Access ends the program";
}

std::shared_ptr<access::Module> procedureOf(int lines, TextView line) {
    Text text = u"Sub A()\r\n";
    for (int i = 0; i < lines; ++i) {
        text += Text(line) + u"\r\n";
    }
    return access::openModule(access::ModuleText(access::ModuleKind::Standard, text + u"End Sub\r\n"));
}

TEST_F(StepCounts, CommentsOrBlankLinesBeyond32767AreAnOverflow) {
    for (const TextView line : {u"' remark", u""}) {
        CodeProgram program;
        program.addModule(u"M", procedureOf(32768, line));
        program.selectOnce();
        program.press(program.form().cmdModStep);
        EXPECT_TRUE(program.dialogs.lastText().starts_with(u"場所:モジュールステップｴﾗｰNo:6\r"));
    }
}

TEST_F(StepCounts, StepsAndLinesOfAllGoOnBeyond32767) {
    addModule(u"M", procedureOf(40000, u"x = x + 1"));
    EXPECT_EQ(counts(4).at(1), u"Module | M | A | 0 | 2 | 0 | 0 | 40002 | 40002");
}

} // namespace
} // namespace relvane
