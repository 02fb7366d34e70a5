// How the lists of source reach it.

#include "code/module_walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/code_program.h"

namespace relvane {
namespace {

using test::CodeProgram;
using test::moduleOf;
using testing::ElementsAre;

struct Walk : CodeProgram {
    // "kind name number lines declarations" of each object that is scanned.
    std::vector<Text> run(std::int16_t option = everyKind) {
        selectOnce();
        std::vector<Text> seen;
        const bool goesOn = desk->dispatch([&] {
            context().ObjectNo = 0;
            walkSources(context(), option, withGauge, [&](const SourceKind&) {
                const ScanState& scan = context().Scan;
                seen.push_back(scan.CurObjectKind + u" " + sourceObjectName(context()) + u" " +
                               toText(static_cast<long long>(context().ObjectNo)) + u" " +
                               toText(static_cast<long long>(scan.ModuleLineCount)) + u" " +
                               toText(static_cast<long long>(scan.DeclLineCount)));
            });
        });
        EXPECT_TRUE(goesOn);
        return seen;
    }
};

TEST(ModuleWalk, TakesFormsThenReportsThenModules) {
    Walk walk;
    walk.addModule(u"basMain", moduleOf({u"Option Explicit", u"Sub A()", u"End Sub"}));
    walk.addReport(u"R", moduleOf({u"Sub B()", u"End Sub"}));
    walk.addForm(u"F", moduleOf({u"Option Explicit"}));
    EXPECT_THAT(walk.run(), ElementsAre(u"Form F 1 1 1", u"Report R 2 2 0", u"Module basMain 3 3 1"));
}

TEST(ModuleWalk, AFormWithoutCodeIsOpenedAndClosedAndTakesNoNumber) {
    Walk walk;
    walk.addForm(u"Plain");
    walk.addForm(u"Coded", moduleOf({u"Sub A()", u"End Sub"}));
    EXPECT_THAT(walk.run(), ElementsAre(u"Form Coded 1 2 0"));
    EXPECT_THAT(walk.targetApps.calls,
                testing::IsSupersetOf({u"OpenForm Plain 1", u"CloseObject 2 Plain 2"}));
    EXPECT_EQ(walk.targetApps.forms.countOpen(), 0);
}

TEST(ModuleWalk, AReportAndAFormOfTheSameNameHaveNumbersOfTheirOwn) {
    Walk walk;
    walk.addForm(u"受注", moduleOf({u"Sub A()", u"End Sub"}));
    walk.addReport(u"受注", moduleOf({u"Sub A()", u"End Sub"}));
    EXPECT_THAT(walk.run(), ElementsAre(u"Form 受注 1 2 0", u"Report 受注 2 2 0"));
}

TEST(ModuleWalk, TakesTheChosenKindAlone) {
    Walk walk;
    walk.addForm(u"F", moduleOf({u"Sub A()", u"End Sub"}));
    walk.addReport(u"R", moduleOf({u"Sub A()", u"End Sub"}));
    walk.addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    EXPECT_THAT(walk.run(1), ElementsAre(u"Form F 1 2 0"));
    EXPECT_THAT(walk.run(2), ElementsAre(u"Report R 1 2 0"));
    EXPECT_THAT(walk.run(3), ElementsAre(u"Module M 1 2 0"));
}

TEST(ModuleWalk, OpensMinimisesAndClosesAModuleWithoutSaving) {
    Walk walk;
    walk.addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    walk.selectOnce();
    walk.targetApps.calls.clear();
    walk.run();
    EXPECT_THAT(walk.targetApps.calls, ElementsAre(u"OpenModule M", u"Minimize", u"CloseObject 5 M 2"));
    EXPECT_EQ(walk.context().Scan.CurModule, nullptr);
}

TEST(ModuleWalk, SaysWhatItReadsAndHowFarItIs) {
    Walk walk;
    walk.addForm(u"Plain");
    walk.addForm(u"F", moduleOf({u"Sub A()", u"End Sub"}));
    walk.addReport(u"R", moduleOf({u"Sub A()", u"End Sub"}));
    walk.addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    walk.selectOnce();
    const auto& shown = walk.watch();
    walk.run();
    // The form without code has no number, so that the gauge ends below 100.
    EXPECT_THAT(shown, ElementsAre(u"フォームモジュール情報　取得中　(Plain)", u"0%",
                                   u"フォームモジュール情報　取得中　(F)", u"25%",
                                   u"レポートモジュール情報　取得中　(R)", u"50%",
                                   u"モジュール情報　取得中　(M)", u"75%"));
}

} // namespace
} // namespace relvane
