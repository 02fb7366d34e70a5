// The preparation of the developer support: which procedures it lists, what it says, and what its failure leaves.
#include "support/preparation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sien_program.h"

namespace relvane {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

struct Preparation : testing::Test, SienProgram {
    // Opens a window on a target whose opening has been forgotten.
    void openAndForgetCalls() {
        open();
        targetApps.calls.clear();
    }
};

TEST_F(Preparation, ListsTheProceduresWithTheirModulesInTheOrderOfTheSource) {
    addModule(u"Zeta", moduleOf({u"Option Explicit", u"Private Sub Second()", u"End Sub", u"", u"' remark",
                                 u"Public Function First() As Long", u"End Function"}));
    addModule(u"Alpha", moduleOf({u"Sub First()", u"End Sub"}));
    prepare();
    EXPECT_THAT(state().UserProcNames, ElementsAre(u"Second", u"First", u"First"));
    EXPECT_THAT(state().UserProcModules, ElementsAre(u"Zeta", u"Zeta", u"Alpha"));
    EXPECT_EQ(state().UserProcCount, 3);
    EXPECT_EQ(dialogs.boxes,
              (std::vector<FakeDialogs::Box>{{u"「初期処理」を終了しました。", 0, u"Relvane97 Ver 2.0"}}));
    EXPECT_EQ(context().SienReady, 1);
    EXPECT_EQ(sien().Pointer, MousePointer::Normal);
}

TEST_F(Preparation, TargetWithoutModulesUnlocksAtOnceWithAnEmptyList) {
    target->addTable(u"T1");
    openAndForgetCalls();
    press(sien().cmdSyoki);
    EXPECT_THAT(targetApps.calls, IsEmpty()); // the target is not opened again
    EXPECT_THAT(state().UserProcNames, IsEmpty());
    EXPECT_EQ(state().UserProcCount, 0);
    EXPECT_EQ(context().SienReady, 1);
    EXPECT_TRUE(sien().cmdLinkProc.isUsable());
    EXPECT_EQ(dialogs.lastText(), u"「初期処理」を終了しました。");
}

TEST_F(Preparation, ModuleOfDeclarationsAloneAddsNothing) {
    addModule(u"Constants", moduleOf({u"Option Explicit", u"Public Const A = 1"}));
    addModule(u"Empty", moduleOf({}));
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    prepare();
    EXPECT_THAT(state().UserProcNames, ElementsAre(u"A"));
    EXPECT_THAT(state().UserProcModules, ElementsAre(u"M"));
}

TEST_F(Preparation, ProceduresOfAPropertyThatFollowEachOtherAreOneEntry) {
    addModule(u"M", moduleOf({u"Property Get P()", u"End Property", u"Property Let P(x)", u"End Property",
                              u"Sub Q()", u"End Sub", u"Property Set P(x)", u"End Property"}));
    prepare();
    EXPECT_THAT(state().UserProcNames, ElementsAre(u"P", u"Q", u"P"));
}

TEST_F(Preparation, FirstProcedureOfAModuleIsListedAlsoWhenTheModuleBeforeEndsWithThatName) {
    addModule(u"A", moduleOf({u"Sub Main()", u"End Sub"}));
    addModule(u"B", moduleOf({u"Sub Main()", u"End Sub"}));
    prepare();
    EXPECT_THAT(state().UserProcModules, ElementsAre(u"A", u"B"));
}

TEST_F(Preparation, ClassModulesAreInTheList) {
    addModule(u"Class1", moduleOf({u"Sub Show()", u"End Sub"}, access::ModuleKind::Class));
    prepare();
    EXPECT_THAT(state().UserProcNames, ElementsAre(u"Show"));
}

TEST_F(Preparation, CodeOfFormsAndReportsIsNotInTheList) {
    addForm(u"F", moduleOf({u"Sub Form_Load()", u"End Sub"}));
    addReport(u"R", moduleOf({u"Sub Report_Open(Cancel As Integer)", u"End Sub"}));
    prepare();
    EXPECT_THAT(state().UserProcNames, IsEmpty());
}

TEST_F(Preparation, NamesOfModulesAreCutTo150CharactersAndTrimmed) {
    const Text name = Text(148, u'm') + u"  tail";
    addModule(name, moduleOf({u"Sub A()", u"End Sub"}));
    prepare();
    EXPECT_THAT(state().UserProcModules, ElementsAre(Text(148, u'm')));
}

TEST_F(Preparation, OpensTheTargetAfreshAndEachModuleOnce) {
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    openAndForgetCalls();
    press(sien().cmdSyoki);
    EXPECT_THAT(targetApps.calls, ElementsAre(u"Close", u"Open C:\\App\\target.mdb", u"OpenModule M",
                                              u"Minimize", u"CloseObject 5 M 2"));
}

TEST_F(Preparation, NoCurrentDatabaseIsNoFailureOfTheClosing) {
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    open();
    targetApps.failing[u"Close"] = 2467;
    press(sien().cmdSyoki);
    EXPECT_EQ(context().SienReady, 1);
    EXPECT_THAT(state().UserProcNames, ElementsAre(u"A"));
}

TEST_F(Preparation, RunningAgainListsAfresh) {
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    prepare();
    press(sien().cmdSyoki);
    EXPECT_THAT(state().UserProcNames, ElementsAre(u"A"));
    EXPECT_EQ(state().UserProcCount, 1);
}

TEST_F(Preparation, TargetWithoutModulesKeepsTheListOfTheTargetBefore) {
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    prepare();
    close();
    target = std::make_shared<FakeDatabase>();
    select();
    prepare();
    EXPECT_THAT(state().UserProcNames, ElementsAre(u"A"));
    EXPECT_EQ(state().UserProcCount, 1);
}

// Both counters are of analyses that run on: the preparation moves neither.
TEST_F(Preparation, CountersOfObjectsAndProceduresStayAsTheyAre) {
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    open();
    context().ObjectNo = 7;
    context().Scan.ProcNo = 5;
    press(sien().cmdSyoki);
    EXPECT_EQ(context().ObjectNo, 7);
    EXPECT_EQ(context().Scan.ProcNo, 5);
}

TEST_F(Preparation, OtherErrorIsReportedAndTheWindowStaysLocked) {
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    open();
    targetApps.failing[u"OpenModule"] = 3049;
    EXPECT_TRUE(press(sien().cmdSyoki));
    EXPECT_EQ(dialogs.boxes,
              (std::vector<FakeDialogs::Box>{
                  {u"場所:初期処理ｴﾗｰNo:3049\r場所とｴﾗｰNoを控えメールをお願いします。\r内容:説明", 0,
                   u"Relvane97 Ver 2.0"}}));
    EXPECT_EQ(context().SienReady, 0);
    EXPECT_FALSE(sien().cmdLinkProc.Enabled);
    EXPECT_EQ(sien().Pointer, MousePointer::Normal);
    EXPECT_TRUE(sien().Enabled);
    targetApps.failing.clear();
    press(sien().cmdSyoki);
    EXPECT_THAT(state().UserProcNames, ElementsAre(u"A"));
}

struct FatalNumber : Preparation, testing::WithParamInterface<std::pair<int, bool>> {};

TEST_P(FatalNumber, DecidesWhetherTheProgramEnds) {
    const auto [number, fatal] = GetParam();
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    open();
    targetApps.failing[u"OpenModule"] = number;
    EXPECT_EQ(press(sien().cmdSyoki), !fatal);
    const Text begin = u"場所:初期処理ｴﾗｰNo:" + toText(static_cast<long long>(number)) + u"\r";
    EXPECT_EQ(
        dialogs.boxes.front().text,
        fatal
            ? begin + u"システムが不安定です。\r詳細はヘルプを参照下さい。\rシステムを終了します。\r内容:説明"
            : begin + u"場所とｴﾗｰNoを控えメールをお願いします。\r内容:説明");
    EXPECT_EQ(dialogs.lastText() == u"終了します。", fatal);
}

INSTANTIATE_TEST_SUITE_P(Bounds, FatalNumber,
                         testing::Values(std::pair(2448, false), std::pair(2449, true), std::pair(2999, true),
                                         std::pair(3000, false)));

} // namespace
} // namespace relvane
