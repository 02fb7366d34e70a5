#include "core/shut_down.h"

#include <gtest/gtest.h>

#include "core/program_end.h"
#include "support/fakes_desk.h"

namespace relvane {
namespace {

using Box = test::FakeDialogs::Box;
using test::properties;

struct ShutDown : testing::Test, test::FakeProgram {};

TEST_F(ShutDown, ShowsItsBoxReleasesEverythingAndEnds) {
    select();
    EXPECT_FALSE(press(form().m1z));
    EXPECT_TRUE(desk->ended());
    EXPECT_FALSE(desk->failed());
    EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"終了します。", 0, u"Relvane97 Ver 2.0"}}));
    EXPECT_EQ(context().ExitArmed, 1);
    EXPECT_EQ(targetApps.calls.back(), u"Release");
    EXPECT_EQ(context().TargetDb, nullptr);
    EXPECT_EQ(targetApps.alive, 0);
    EXPECT_EQ(system.screenSaver, (std::vector<bool>{false, true}));
}

TEST_F(ShutDown, NothingRunsBehindTheEnd) {
    select();
    press(form().m1z);
    bool ran = false;
    EXPECT_FALSE(desk->dispatch([&] { ran = true; }));
    EXPECT_FALSE(ran);
}

TEST_F(ShutDown, ClosingTheWindowRunsTheSameSteps) {
    select();
    EXPECT_FALSE(desk->dispatch([&] { form().QueryUnload(); }));
    EXPECT_EQ(dialogs.lastText(), u"終了します。");
    EXPECT_TRUE(files.exists(test::programFolder + u"Relvane.ini"));
}

TEST_F(ShutDown, WindowPropertyThatWasTrueStaysTrueAndFalseComesBack) {
    target->stored = properties(
        {{u"StartupForm", Text(u"F")}, {u"StartupShowDBWindow", false}, {u"AllowFullMenus", true}});
    select();
    press(form().m1z);
    EXPECT_EQ(target->stored(u"StartupForm"), Value(Text(u"F")));
    EXPECT_EQ(target->stored(u"StartupShowDBWindow"), Value(false));
    EXPECT_EQ(target->stored(u"AllowFullMenus"), Value(true));
}

TEST_F(ShutDown, TargetWithoutStartupFormGetsNone) {
    target->stored = properties({{u"StartupShowDBWindow", true}});
    select();
    EXPECT_FALSE(press(form().m1z));
    EXPECT_EQ(target->stored.Count(), 1);
    EXPECT_FALSE(target->stored.find(u"StartupForm"));
    EXPECT_FALSE(desk->failed());
}

TEST_F(ShutDown, OnlyASelectedTargetIsRestored) {
    target->stored = properties({{u"StartupForm", Text(u"F")}});
    select();
    context().AnalysisMode = 2;
    press(form().m1z);
    EXPECT_EQ(target->stored(u"StartupForm"), Value(Text(u"(表示しない)")));
}

TEST_F(ShutDown, HalfOpenStateCanStillLeave) {
    targetApps.failing[u"Open"] = 3343;
    select();
    targetApps.failing[u"Close"] = 2467;
    files.writable = false;
    EXPECT_FALSE(press(form().m1z));
    EXPECT_FALSE(desk->failed());
    EXPECT_EQ(targetApps.alive, 0);
    EXPECT_EQ(system.screenSaver, (std::vector<bool>{true}));
}

TEST_F(ShutDown, WithoutATargetTooItEnds) {
    start();
    EXPECT_FALSE(press(form().m1z));
    EXPECT_FALSE(desk->failed());
}

TEST_F(ShutDown, GoesOnOnlyWhenTheBoxReturnsOk) {
    start();
    dialogs.answers = {boxCancel};
    EXPECT_TRUE(press(form().m1z));
    EXPECT_FALSE(desk->ended());
}

TEST_F(ShutDown, UnhandledErrorShowsOneBoxAndLeavesWithoutTheExitSteps) {
    select();
    EXPECT_FALSE(desk->dispatch([] { throw RunTimeError(3049, u"壊れています。"); }));
    EXPECT_TRUE(desk->failed());
    EXPECT_EQ(dialogs.boxes,
              (std::vector<Box>{{u"実行時エラー 3049\r壊れています。", 0, u"Relvane97 Ver 2.0"}}));
    EXPECT_EQ(system.screenSaver, (std::vector<bool>{false}));
}

TEST_F(ShutDown, FailureOfTheProgramItselfIsABoxToo) {
    start();
    EXPECT_FALSE(desk->dispatch([] { throw std::logic_error("bug"); }));
    EXPECT_EQ(dialogs.lastText(), u"実行時エラー 51\r内部エラー: bug");
}

} // namespace
} // namespace relvane
