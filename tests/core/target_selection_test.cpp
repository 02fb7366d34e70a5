#include "core/target_selection.h"

#include <gtest/gtest.h>

#include "core/panels.h"
#include "support/fakes_desk.h"

namespace relvane {
namespace {

using Box = test::FakeDialogs::Box;
using test::programFolder;
using test::properties;
using test::targetPath;

struct Selection : testing::Test, test::FakeProgram {
    void fillTarget() {
        target->addTable(u"顧客");
        target->addQuery(u"Q1", 0);
        target->addDocument(u"Forms", u"F1");
        target->addDocument(u"Forms", u"F2");
        target->addDocument(u"Reports", u"R1");
        target->addDocument(u"Scripts", u"M1");
        target->addDocument(u"Modules", u"Mod1");
    }
    Value property(TextView name) { return target->Properties()(name); }
};

TEST_F(Selection, DialogAsksAsItAlwaysDid) {
    start();
    press(form().m1a);
    ASSERT_EQ(dialogs.fileDialogs.size(), 1u);
    EXPECT_TRUE(dialogs.fileDialogs[0].filter.starts_with(Text(u"Access(*.mdb)\0*.mdb\0", 20)));
    EXPECT_EQ(context().FileFilter, Text(u"Access(*.mdb)\0*.mdb\0", 20));
    EXPECT_EQ(dialogs.fileDialogs[0].title, u"Excel ファイルの選択");
    EXPECT_EQ(form().lblDBName.Caption.get(), u"");
    EXPECT_EQ(context().AnalysisMode, 0);
}

TEST_F(Selection, DialogOffersTheFilesOfLaterVersionsBehindTheOthers) {
    start();
    press(form().m1a);
    const Text& filter = dialogs.fileDialogs.at(0).filter;
    const Text later = filter.substr(20);
    for (const TextView pattern : {u"*.mdb", u"*.accdb", u"*.mde", u"*.accde", u"*.accdr", u"*.mda"}) {
        EXPECT_NE(later.find(pattern), Text::npos) << toUtf8(pattern);
    }
    EXPECT_EQ(std::ranges::count(filter, u'\0'), 6); // three pairs
}

TEST_F(Selection, ResultIsCutAtItsFirstNul) {
    select(targetPath + u'\0' + u"rest");
    EXPECT_EQ(form().lblDBName.Caption.get(), targetPath);
    EXPECT_EQ(context().ChosenFile, targetPath);
}

TEST_F(Selection, OpensTheTargetTwiceAndEmptiesTheTitleLine) {
    select();
    EXPECT_EQ(targetApps.calls, (std::vector<Text>{u"New", u"Open C:\\App\\target.mdb"}));
    EXPECT_EQ(context().TargetDb, target);
    EXPECT_EQ(store.log, (std::vector<Text>{u"open T_RvTitle", u"delete * from T_RvTitle;"}));
    EXPECT_EQ(context().AnalysisMode, 1);
    EXPECT_EQ(context().CurrentKind, u"Form");
    EXPECT_EQ(system.screenSaver, (std::vector<bool>{false}));
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(Selection, ListsHoldTheNamesInOrderWithTheFirstChosen) {
    target->addTable(u"MSysObjects");
    target->addTable(u"b");
    target->addTable(u"msys_own");
    target->addTable(u"Linked", u";DATABASE=C:\\a.mdb");
    target->addTable(u"MSysLink", u";DATABASE=C:\\a.mdb");
    target->addQuery(u"Q", 0);
    target->addQuery(u"~sq_fForm", 0);
    target->addQuery(u"embedded", 3);
    target->addDocument(u"Forms", u"F");
    target->addDocument(u"Forms", u"A");
    target->addDocument(u"Reports", u"R");
    target->addDocument(u"Scripts", u"M");
    select();
    using List = std::vector<Text>;
    EXPECT_EQ(form().cboTable.List(), (List{u"b", u"msys_own", u"Linked"}));
    EXPECT_EQ(form().cboQuery.List(), (List{u"Q"}));
    EXPECT_EQ(form().cboForm.List(), (List{u"F", u"A"}));
    EXPECT_EQ(form().cboFmImage.List(), (List{u"F", u"A"}));
    EXPECT_EQ(form().cboReport.List(), (List{u"R"}));
    EXPECT_EQ(form().cboMacro.List(), (List{u"M"}));
    EXPECT_EQ(form().cboTable.ListIndex, 0);
    EXPECT_EQ(form().cboFmImage.ListIndex, 0);
    EXPECT_EQ(context().TableCount, 3);
    EXPECT_EQ(context().LinkTableCount, 2); // system tables included
    EXPECT_EQ(context().QueryCount, 1);
    EXPECT_EQ(context().FormCount, 2);
    EXPECT_EQ(context().ReportCount, 1);
    EXPECT_EQ(context().MacroCount, 1);
    EXPECT_EQ(context().ModuleCount, 0);
}

TEST_F(Selection, ButtonsOfTheKindsThatExistAreEnabledAndNoPreview) {
    fillTarget();
    select();
    for (const auto button : actionButtons()) {
        EXPECT_TRUE((form().*button).Enabled) << (form().*button).name();
    }
    for (const auto button : previewButtons()) {
        EXPECT_FALSE((form().*button).Enabled) << (form().*button).name();
    }
    for (int i = 1; i <= 3; ++i) {
        EXPECT_TRUE(form().cmdHyousi(i).isUsable());
    }
    EXPECT_TRUE(form().framMacro.Enabled);
    EXPECT_TRUE(form().framControl.Enabled);
    EXPECT_TRUE(form().framETC.Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
    EXPECT_EQ(form().txtMesege.Caption.get(), u"");
    EXPECT_FALSE(form().linGuage.Visible);
}

TEST_F(Selection, TargetWithoutModulesFormsAndReportsClosesTheCodePanels) {
    select();
    for (const CommandButton* button :
         {&form().cmdProc, &form().cmdModule, &form().cmdModStep, &form().cmdTable, &form().cmdQuery,
          &form().cmdForm, &form().cmdFmImage, &form().cmdReport, &form().cmdMacro}) {
        EXPECT_FALSE(button->Enabled) << button->name();
    }
    EXPECT_TRUE(form().cmdObject.Enabled);
    EXPECT_TRUE(form().cmdControl.Enabled);
    EXPECT_TRUE(form().cmdFile.Enabled);
    EXPECT_TRUE(form().cmdComment.Enabled);
    EXPECT_EQ(context().DoneTable, 9);
    EXPECT_EQ(context().DoneModule, 9);
    EXPECT_EQ(context().DoneProc, 0);
}

TEST_F(Selection, TargetWithFormsButNoModulesKeepsTheCodePanels) {
    target->addDocument(u"Forms", u"F");
    select();
    EXPECT_EQ(context().DoneModule, 9);
    EXPECT_TRUE(form().cmdProc.Enabled);
    EXPECT_TRUE(form().cmdModule.Enabled);
    EXPECT_TRUE(form().cmdModStep.Enabled);
}

TEST_F(Selection, StartUpPropertiesAreReadThenNeutralisedInMemory) {
    target->stored = properties({{u"StartUpForm", Text(u"メニュー")},
                                 {u"StartUpShowDBWindow", false},
                                 {u"AllowFullMenus", false},
                                 {u"AppTitle", Text(u"受注管理")}});
    select();
    EXPECT_EQ(context().OldStartupForm, u"メニュー");
    EXPECT_FALSE(context().OldStartupShowDBWindow);
    EXPECT_FALSE(context().OldAllowFullMenus);
    EXPECT_EQ(property(u"StartupForm"), Value(Text(u"(表示しない)")));
    EXPECT_EQ(property(u"StartupShowDBWindow"), Value(true));
    EXPECT_EQ(property(u"AllowFullMenus"), Value(true));
    EXPECT_EQ(context().AppTitleText, u"受注管理");
    EXPECT_EQ(context().StartupMenuBarText, u"受注管理");
    EXPECT_EQ(form().txtSystem.Text.get(), u"受注管理");
    EXPECT_FALSE(context().StartupStatusBarFlag);
}

TEST_F(Selection, TitleThatReadsAsATruthValueSetsTheThreeFlags) {
    target->stored = properties({{u"AppTitle", Text(u"TRUE")}});
    select();
    EXPECT_TRUE(context().StartupStatusBarFlag);
    EXPECT_TRUE(context().StartupShortcutFlag);
    EXPECT_TRUE(context().StartupToolbarFlag);
    target->stored = properties({{u"AppTitle", Text(u"no truth value")}});
    select();
    EXPECT_TRUE(context().StartupToolbarFlag) << "the assignment failed, so the old value stays";
    target->stored = properties({{u"AppTitle", Text(u"0")}});
    select();
    EXPECT_FALSE(context().StartupToolbarFlag);
}

TEST_F(Selection, MissingPropertyDoesNotKeepTheOthersFromBeingRead) {
    target->stored = properties({{u"AllowFullMenus", false}, {u"AppTitle", Text(u"T")}});
    select();
    EXPECT_EQ(context().OldStartupForm, u"");
    EXPECT_TRUE(context().OldStartupShowDBWindow);
    EXPECT_FALSE(context().OldAllowFullMenus);
    EXPECT_EQ(context().AppTitleText, u"T");
    EXPECT_EQ(target->stored.Count(), 2) << "a property that the target does not have is not made";
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(Selection, SecondTargetWithoutTitleKeepsTheTitleFields) {
    target->stored = properties({{u"AppTitle", Text(u"First")}});
    select();
    target = std::make_shared<test::FakeDatabase>();
    select();
    EXPECT_EQ(context().AppTitleText, u"First");
    EXPECT_EQ(form().txtSystem.Text.get(), u"First");
}

TEST_F(Selection, CoverTextsComeFromTheSettingsOrTheirDefaults) {
    select();
    EXPECT_EQ(form().txtTitle.Text.get(), u"プログラム仕様書");
    EXPECT_EQ(form().txtCompany.Text.get(), u"");
    EXPECT_EQ(form().txtBumon.Text.get(), u"");
    EXPECT_EQ(form().txtCapTime.Text.get(), u"5");
    EXPECT_EQ(context().CaptureMilliseconds, 5000);
    EXPECT_EQ(form().txtDate.Text.get(), u"1997/09/12");
    files.put(programFolder + u"Relvane.dat", u"Title=仕様\r\nKisya=K\r\nBumon=B\r\nCapTm=9\r\n");
    select();
    EXPECT_EQ(form().txtTitle.Text.get(), u"仕様");
    EXPECT_EQ(form().txtCompany.Text.get(), u"K");
    EXPECT_EQ(form().txtBumon.Text.get(), u"B");
    EXPECT_EQ(form().txtCapTime.Text.get(), u"9");
}

TEST_F(Selection, AutoExecInAnyMixOfCasesWarnsAndStopsNothing) {
    target->addDocument(u"Scripts", u"aUtOeXeC");
    select();
    EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"AutoExecマクロの名前を変更してから解析して下さい。", 0,
                                                u"Relvane97 Ver 2.0"}}));
    EXPECT_EQ(context().AnalysisMode, 1);
    EXPECT_TRUE(form().cmdMacro.Enabled);
}

TEST_F(Selection, AutoExecOfAnEarlierTargetIsForgotten) {
    target->addDocument(u"Scripts", u"AutoExec");
    select();
    target = std::make_shared<test::FakeDatabase>();
    target->addDocument(u"Scripts", u"AutoExec2");
    select();
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_FALSE(context().HasAutoExec);
}

TEST_F(Selection, FurtherSelectionReplacesTheTargetAndResetsTheDoneFlags) {
    fillTarget();
    select();
    context().DoneObject = 7;
    context().DoneFile = 2;
    context().SienReady = 1;
    form().cmdOPre.Enabled = true;
    select();
    EXPECT_EQ(targetApps.calls, (std::vector<Text>{u"New", u"Open C:\\App\\target.mdb", u"Close", u"Release",
                                                   u"New", u"Open C:\\App\\target.mdb"}));
    EXPECT_EQ(context().DoneObject, 0);
    EXPECT_EQ(context().DoneFile, 0);
    EXPECT_EQ(context().SienReady, 0);
    EXPECT_FALSE(form().cmdOPre.Enabled);
}

TEST_F(Selection, CancellingAfterATargetReleasesItAndLeavesTheButtons) {
    fillTarget();
    select();
    select(u""); // cancelled
    EXPECT_EQ(form().lblDBName.Caption.get(), u"");
    EXPECT_EQ(context().TargetApp, nullptr);
    EXPECT_EQ(targetApps.alive, 0);
    EXPECT_TRUE(form().cmdObject.Enabled);
    EXPECT_TRUE(form().cmdTable.Enabled);
    EXPECT_EQ(context().AnalysisMode, 1);
    EXPECT_EQ(skipErrors([&] { need(context().TargetApp); }), 91) << "what needs it then fails";
    select();
    EXPECT_EQ(form().lblDBName.Caption.get(), targetPath);
    EXPECT_EQ(targetApps.alive, 1);
}

TEST_F(Selection, AutomationObjectThatIsGoneIsIgnored) {
    select();
    targetApps.failing[u"Close"] = 2467;
    select();
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_EQ(targetApps.alive, 1);
}

TEST_F(Selection, LoadedFileRefusesASelection) {
    start();
    context().AnalysisMode = 2;
    press(form().m1a);
    EXPECT_TRUE(dialogs.fileDialogs.empty());
    EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"保存ファイルが選択されておりますので処理出来ません。\r"
                                                u"終了し再度本ソフトを起動お願いします。",
                                                0, u"Relvane97 Ver 2.0"}}));
}

TEST_F(Selection, FailedOpenIsReportedAndLeavesTheModeOfATarget) {
    targetApps.failing[u"Open"] = 3343;
    EXPECT_TRUE(select());
    EXPECT_EQ(dialogs.lastText(),
              u"場所:選択ｴﾗｰNo:3343\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明");
    EXPECT_EQ(context().AnalysisMode, 1);
    EXPECT_FALSE(form().cmdObject.Enabled);
    EXPECT_TRUE(form().Enabled);
}

TEST_F(Selection, OlderAccessIsAnOrdinaryNumberHere) {
    targetApps.failing[u"Open"] = 7866;
    select();
    EXPECT_EQ(dialogs.lastText(),
              u"場所:選択ｴﾗｰNo:7866\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明");
}

TEST_F(Selection, AccessErrorEndsTheProgramWithTheShortBox) {
    targetApps.failing[u"Open"] = 2486;
    EXPECT_FALSE(select());
    ASSERT_EQ(dialogs.boxes.size(), 2u);
    EXPECT_EQ(dialogs.boxes[0].text,
              u"場所:選択ｴﾗｰNo:2486\rシステムが不安定です。\r詳細はヘルプを参照下さい。\r"
              u"システムを終了します。");
    EXPECT_EQ(dialogs.boxes[1].text, u"終了します。");
    EXPECT_FALSE(desk->failed());
}

TEST_F(Selection, MissingWorkDatabaseIsReported) {
    platform.openWorkStore = [](const Text& path) -> std::shared_ptr<RowStore> {
        throw RunTimeError(ErrorNumber::DatabaseNotFound, path);
    };
    EXPECT_TRUE(select());
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:選択ｴﾗｰNo:3024\r"));
}

TEST_F(Selection, ErrorBehindTheStartUpPropertiesEndsTheProgramWithoutTheExitSteps) {
    start();
    target->containers = {};
    EXPECT_FALSE(select());
    EXPECT_TRUE(desk->failed());
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_TRUE(dialogs.lastText().starts_with(u"実行時エラー 3265\r"));
    EXPECT_TRUE(system.screenSaver.empty());
    EXPECT_FALSE(files.exists(programFolder + u"Relvane.ini"));
}

TEST_F(Selection, RecentFileIsSelectedWithoutADialog) {
    files.put(programFolder + u"Relvane.ini", u"[RECENT]\r\nRecentFile3=C:\\App\\target.mdb\r\n");
    start();
    press(form().RecentFile[0]);
    EXPECT_EQ(context().AnalysisMode, 0) << "a hidden entry cannot be pressed";
    press(form().RecentFile[2]);
    EXPECT_TRUE(dialogs.fileDialogs.empty());
    EXPECT_EQ(form().lblDBName.Caption.get(), targetPath);
    EXPECT_EQ(context().AnalysisMode, 1);
}

TEST_F(Selection, ErrorThirtyTwoSeventyNeverShows) {
    target->stored = properties({});
    select();
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_TRUE(form().cmdObject.Enabled);
}

} // namespace
} // namespace relvane
