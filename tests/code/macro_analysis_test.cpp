// The command that lists the macros.

#include "code/macro_analysis.h"

#include <gmock/gmock.h>

#include "macro_program.h"

namespace relvane {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

const Text keys = u"SendKeys %M{ENTER}%C{ENTER}";

struct MacroList : MacroProgram {
    void addMacros(const Lines& names) {
        for (const Text& name : names) {
            addMacroOf(name, {u"DoCmd.Close"});
        }
    }
    // Whether a click reads anything.
    bool runsAgain(int option = detailedMacroList) {
        targetApps.calls.clear();
        run(option);
        return !targetApps.calls.empty();
    }
    Lines names() { return column(u"T_RvMacro", u"ObjectName"); }
};

struct MacroAnalysis : testing::Test, MacroList {};

TEST_F(MacroAnalysis, ConvertsReadsClosesAndDeletesEachMacroInOrder) {
    addMacros({u"A", u"B"});
    selectOnce();
    targetApps.calls.clear();
    run();
    EXPECT_THAT(targetApps.calls,
                ElementsAre(u"SelectObject 4 A 1", keys, u"DoMenuItem 9 0 5 0 70", u"SelectObject 4 A 1",
                            u"OpenModule 変換するﾏｸﾛ : A", u"Minimize", u"CloseObject 5 変換するﾏｸﾛ : A 2",
                            u"DeleteObject 5 変換するﾏｸﾛ : A", u"SelectObject 4 B 1", keys,
                            u"DoMenuItem 9 0 5 0 70", u"SelectObject 4 B 1", u"OpenModule 変換するﾏｸﾛ : B",
                            u"Minimize", u"CloseObject 5 変換するﾏｸﾛ : B 2",
                            u"DeleteObject 5 変換するﾏｸﾛ : B"));
    EXPECT_TRUE(targetApps.modules.empty());
    EXPECT_EQ(context().Scan.CurModule, nullptr);
    EXPECT_THAT(rowsOf(u"T_RvMacro", {u"objectNo", u"ObjectName"}), ElementsAre(u"1|A", u"2|B"));
}

TEST_F(MacroAnalysis, EmptiesItsTablesAndClosesThem) {
    addMacros({u"A"});
    selectOnce();
    store.log.clear();
    store.tables[u"T_RvMacro"] = store.tables[u"T_RvMacro2"] = {{{u"ObjectName", Text(u"old")}}};
    run();
    EXPECT_THAT(names(), ElementsAre(u"A"));
    EXPECT_EQ(store.rows(u"T_RvMacro2").size(), 1u);
    EXPECT_THAT(store.log,
                ElementsAre(u"open T_RvMacro", u"open T_RvMacro2", u"delete * from T_RvMacro;",
                            u"delete * from T_RvMacro2;", u"close T_RvMacro", u"close T_RvMacro2"));
}

TEST_F(MacroAnalysis, SaysWhatItReadsAndHowFarItIs) {
    addMacros({u"A", u"B", u"C"});
    selectOnce();
    const auto& shown = watch();
    run();
    EXPECT_THAT(shown, ElementsAre(u"0%", u"マクロ情報　取得中", u"マクロ情報　取得中　(A)", u"33%",
                                   u"マクロ情報　取得中　(B)", u"67%", u"マクロ情報　取得中　(C)",
                                   u"終了しました", u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"));
    EXPECT_EQ(form().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(form().Timer1.Interval, 5000);
}

TEST_F(MacroAnalysis, AChosenMacroHasNeitherMessageNorStepOfItsOwn) {
    addMacros({u"A", u"B", u"C"});
    chooseMacro(u"B");
    const auto& shown = watch();
    run();
    EXPECT_THAT(shown, ElementsAre(u"0%", u"マクロ情報　取得中", u"終了しました",
                                   u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"));
    EXPECT_EQ(form().lblPer.Caption.get(), u"100%");
    EXPECT_THAT(rowsOf(u"T_RvMacro", {u"objectNo", u"ObjectName"}), ElementsAre(u"1|B"));
}

TEST_F(MacroAnalysis, TheWindowIsShutWhileItRuns) {
    addMacros({u"A"});
    selectOnce();
    store.onUpdate = [this](TextView) {
        EXPECT_FALSE(form().Enabled);
        EXPECT_EQ(form().Pointer, MousePointer::Hourglass);
    };
    run();
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
}

TEST_F(MacroAnalysis, ShowsTheListAndOpensThePreview) {
    addMacros({u"A"});
    selectOnce();
    EXPECT_FALSE(form().cmdMCPre.Enabled);
    run(shortMacroList);
    EXPECT_EQ(reportsShown(u"R_RvMacro"), 1);
    EXPECT_TRUE(form().cmdMCPre.Enabled);
    EXPECT_EQ(context().DoneMacro, 1);
}

TEST_F(MacroAnalysis, NamesAreCutAt150CharactersAndThenTrimmed) {
    addMacroOf(Text(149, u'M'), {u"DoCmd.Close"});
    target->addDocument(u"Scripts", Text(149, u'M') + u"  x");
    run();
    EXPECT_THAT(names(), ElementsAre(Text(149, u'M'), Text(149, u'M')));
}

// What is run again

TEST_F(MacroAnalysis, AllMacrosAreReadAtEachClick) {
    addMacros({u"A", u"B"});
    run();
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(runsAgain());
        EXPECT_THAT(names(), ElementsAre(u"A", u"B"));
    }
    EXPECT_EQ(reportsShown(u"R_RvMacro"), 3);
}

TEST_F(MacroAnalysis, AChosenMacroIsReadAgainOnlyWhenItOrTheOptionChanged) {
    addMacros({u"A", u"B"});
    chooseMacro(u"A");
    EXPECT_TRUE(runsAgain());
    EXPECT_FALSE(runsAgain());
    EXPECT_EQ(reportsShown(u"R_RvMacro"), 2); // shown all the same
    EXPECT_TRUE(runsAgain(shortMacroList));
    EXPECT_FALSE(runsAgain(shortMacroList));
    chooseMacro(u"B");
    EXPECT_TRUE(runsAgain(shortMacroList));
    EXPECT_FALSE(runsAgain(shortMacroList));
    EXPECT_THAT(names(), ElementsAre(u"B"));
}

// The tables hold all macros then: the name of the last chosen one and the option decide alone.
TEST_F(MacroAnalysis, AChosenMacroIsNotReadAgainBehindARunOfAll) {
    addMacros({u"A", u"B"});
    chooseMacro(u"A");
    run();
    chooseAllMacros();
    EXPECT_TRUE(runsAgain());
    chooseMacro(u"A");
    EXPECT_FALSE(runsAgain());
    EXPECT_THAT(names(), ElementsAre(u"A", u"B"));
    chooseMacro(u"B");
    EXPECT_TRUE(runsAgain());
    EXPECT_THAT(names(), ElementsAre(u"B"));
}

TEST_F(MacroAnalysis, AMacroOfAnotherTargetIsReadAgain) {
    addMacros({u"A"});
    chooseMacro(u"A");
    run();
    select();
    chooseMacro(u"A");
    EXPECT_TRUE(runsAgain());
}

TEST_F(MacroAnalysis, AFailedMacroIsNotRemembered) {
    addMacros({u"A", u"B"});
    chooseMacro(u"A");
    run();
    chooseMacro(u"B");
    targetApps.failing[u"DoMenuItem"] = 3049;
    run();
    EXPECT_EQ(context().LastMacro.name, u"A");
    targetApps.failing.clear();
    EXPECT_TRUE(runsAgain());
    EXPECT_EQ(context().LastMacro.name, u"B");
}

// Failures

enum class Module { NothingToRemove, LeftAlone, Removed };

struct Failure {
    int number;
    Text box; // behind the place and the number; empty: another head
    Module module;
    bool goesOn = true;
};

const Text head(int number) {
    return u"場所:マクロ情報ｴﾗｰNo:" + toText(static_cast<long long>(number)) + u"\r";
}
const Text unstable =
    u"システムが不安定です。\r詳細はヘルプを参照下さい。\rシステムを終了します。\r内容:説明";
const Text mail = u"場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明";
const Text olderAccess = u"Access97以前のバージョンのファイルです。\rAccess97形式に変換して下さい。";

const Failure failures[] = {
    {2046, u"マクロをVBAに変換する機能が組み込まれていません。\rインストールの追加で追加お願いします。",
     Module::NothingToRemove},
    {2516,
     u"Access97以前のバージョンで作成した\rファイルのため解析出来ません。\rAccess97で変換後、解析して下さい"
     u"。",
     Module::NothingToRemove},
    {2544, u"隠しオブジェクトで指定されているマクロがあります。\r隠しオブジェクトを表示後、解析して下さい。",
     Module::Removed},
    {2045, mail, Module::Removed},
    {2047, mail, Module::Removed},
    {2448, mail, Module::Removed},
    {2449, unstable, Module::Removed, false},
    {2515, unstable, Module::Removed, false},
    {2517, unstable, Module::Removed, false},
    {2543, unstable, Module::Removed, false},
    {2545, unstable, Module::Removed, false},
    {2999, unstable, Module::Removed, false},
    {3000, mail, Module::Removed},
    {5, mail, Module::Removed},
    {7866, {}, Module::LeftAlone},
};

// The error comes when the converted module is there and open.
TEST(MacroFailures, SayWhatTheyAreAndLeaveNoModuleBehind) {
    for (const Failure& failure : failures) {
        SCOPED_TRACE(failure.number);
        MacroList list;
        list.addMacros({u"A"});
        list.selectOnce();
        list.targetApps.failing[u"Minimize"] = failure.number;
        list.targetApps.calls.clear();
        EXPECT_EQ(list.run(), failure.goesOn);

        ASSERT_FALSE(list.dialogs.boxes.empty());
        EXPECT_EQ(list.dialogs.boxes[0].text,
                  failure.box.empty() ? olderAccess : head(failure.number) + failure.box);
        EXPECT_EQ(list.dialogs.boxes[0].title, u"Relvane97 Ver 2.0");
        const bool removed = failure.module == Module::Removed;
        EXPECT_EQ(list.targetApps.modules.empty(), removed);
        EXPECT_EQ(std::ranges::count(list.targetApps.calls, u"CloseObject 5 変換するﾏｸﾛ : A 2"), removed);
        EXPECT_EQ(std::ranges::count(list.targetApps.calls, u"DeleteObject 5 変換するﾏｸﾛ : A"), removed);
        if (failure.goesOn) {
            EXPECT_EQ(list.form().Pointer, MousePointer::Normal);
            EXPECT_TRUE(list.form().Enabled);
            EXPECT_FALSE(list.form().cmdMCPre.Enabled);
            EXPECT_EQ(list.reportsShown(u"R_RvMacro"), 0);
            EXPECT_EQ(list.context().DoneMacro, 0);
        }
    }
}

// A number that says there is no module is believed.
TEST_F(MacroAnalysis, NothingIsRemovedWhereNoConversionTookPlace) {
    addMacros({u"A"});
    selectOnce();
    targetApps.failing[u"DoMenuItem"] = 2046;
    targetApps.calls.clear();
    EXPECT_TRUE(run());
    EXPECT_THAT(targetApps.calls, ElementsAre(u"SelectObject 4 A 1", keys, u"DoMenuItem 9 0 5 0 70"));
}

TEST_F(MacroAnalysis, AMacroThatCannotBeSelectedIsTakenForHidden) {
    addMacros({u"A"});
    selectOnce();
    targetApps.failing[u"SelectObject"] = 2544;
    targetApps.calls.clear();
    EXPECT_TRUE(run());
    EXPECT_EQ(dialogs.boxes[0].text, head(2544) + failures[2].box);
    EXPECT_THAT(targetApps.calls, ElementsAre(u"SelectObject 4 A 1", u"CloseObject 5 変換するﾏｸﾛ : A 2",
                                              u"DeleteObject 5 変換するﾏｸﾛ : A"));
}

TEST_F(MacroAnalysis, AModuleThatDidNotComeAboutIsA2516) {
    target->addDocument(u"Scripts", u"A"); // nothing that it converts to
    EXPECT_TRUE(run());
    EXPECT_EQ(dialogs.boxes[0].text, head(2516) + failures[1].box);
}

TEST_F(MacroAnalysis, AFailureToRemoveTheModuleIsSilent) {
    addMacros({u"A"});
    selectOnce();
    targetApps.failing[u"DoMenuItem"] = 3049;
    targetApps.failing[u"CloseObject"] = targetApps.failing[u"DeleteObject"] = 7874;
    targetApps.calls.clear();
    EXPECT_TRUE(run());
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, head(3049) + mail);
    EXPECT_EQ(targetApps.calls.back(), u"DeleteObject 5 変換するﾏｸﾛ : A"); // tried, though closing failed
}

TEST_F(MacroAnalysis, RowsOfTheMacrosBeforeAFailureStay) {
    addMacros({u"A"});
    addMacroOf(u"B", {u"DoCmd.Close", u"' If it has no end of a condition"});
    addMacros({u"C"});
    EXPECT_TRUE(run());
    EXPECT_THAT(names(), ElementsAre(u"A", u"B"));
    EXPECT_TRUE(targetApps.modules.empty());
    EXPECT_TRUE(runsAgain());
}

TEST_F(MacroAnalysis, AStoreThatFailsLeavesNoModuleBehind) {
    addMacros({u"A"});
    selectOnce();
    store.onUpdate = [](TextView) { throw RunTimeError(3027, u"説明"); };
    EXPECT_TRUE(run());
    EXPECT_EQ(dialogs.boxes[0].text, head(3027) + mail);
    EXPECT_TRUE(targetApps.modules.empty());
}

} // namespace
} // namespace relvane
