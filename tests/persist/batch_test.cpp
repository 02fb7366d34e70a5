// The batch: its boxes and options, and a run from the first phase to the closing box.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch_program.h"
#include "core/panels.h"

namespace relvane {
namespace {

MATCHER_P(beginsWith, beginning, "") {
    return arg.starts_with(beginning);
}

using namespace test;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const Text closingBox = u"「一括処理」を終了しました。\rプレビューボタンを押して印刷下さい。";

struct Batch : testing::Test, BatchProgram {
    // What the batch shows at once: its message line and its percentage.
    std::vector<Text> shown;
    void watchBatch() {
        batch().txtMesege.onRefresh = [this] { shown.push_back(batch().txtMesege.Caption); };
        batch().lblPer.onRefresh = [this] { shown.push_back(batch().lblPer.Caption); };
    }
    std::vector<Text> shownPercents() {
        std::vector<Text> percents;
        std::ranges::copy_if(shown, std::back_inserter(percents),
                             [](const Text& text) { return text.ends_with(u'%'); });
        return percents;
    }
    std::vector<Text> shownMessages() {
        std::vector<Text> messages;
        std::ranges::copy_if(shown, std::back_inserter(messages),
                             [](const Text& text) { return !text.ends_with(u'%'); });
        return messages;
    }
    void tick(std::initializer_list<CheckBox*> some) {
        for (CheckBox* box : some) {
            desk->dispatch([&] { box->tick(true); });
        }
    }
    void tickAll() {
        for (CheckBox* box : boxes()) {
            desk->dispatch([&] { box->tick(true); });
        }
    }
    std::vector<std::int16_t> values() {
        const AnalysisContext& c = context();
        return {c.BatchObject, c.BatchTable,  c.BatchQuery,   c.BatchForm,    c.BatchReport, c.BatchMacro,
                c.BatchProc,   c.BatchModule, c.BatchModStep, c.BatchControl, c.BatchFile,   c.BatchComment};
    }
    std::vector<Text> emptiedTables() {
        std::vector<Text> tables;
        for (const Text& entry : store.log) {
            if (entry.starts_with(u"delete * from ")) {
                tables.push_back(entry.substr(14, entry.size() - 15));
            }
        }
        return tables;
    }
};

TEST_F(Batch, MenuNeedsATarget) {
    start();
    press(form().m6);
    EXPECT_EQ(dialogs.boxes,
              (std::vector<FakeDialogs::Box>{{u"データベースを選択して下さい。", 0, u"Relvane97 Ver 2.0"}}));
    EXPECT_FALSE(batch().Visible);
}

TEST_F(Batch, WindowOpensWithoutTicksAndWithTheOptionsOfTheStart) {
    addOneOfEach();
    open();
    EXPECT_TRUE(batch().Visible);
    EXPECT_EQ(batch().Caption.get(), u"一括処理");
    for (const CheckBox* box : boxes()) {
        EXPECT_EQ(box->Value, 0);
    }
    std::vector<int> chosen;
    for (OptionGroup* group : groups()) {
        chosen.push_back(group->chosen());
        for (int index = 0; index < group->count(); ++index) {
            EXPECT_FALSE((*group)(index).Enabled);
        }
    }
    EXPECT_THAT(chosen, ElementsAre(1, 2, 0, 0, 1, 1, 2, 3, 0, 0));
    const AnalysisContext& c = context();
    EXPECT_THAT((std::vector{c.OptTable, c.OptQuery, c.OptForm, c.OptReport, c.OptMacro, c.OptProc,
                             c.OptModule, c.OptModStep, c.OptControl, c.OptFile, c.OptObject}),
                ElementsAre(2, 3, 1, 1, 2, 2, 3, 4, 1, 1, 7));
    EXPECT_EQ(batch().chkLink.Value, 1);
    EXPECT_EQ(c.LinkExclude, 2);
    EXPECT_FALSE(batch().linGuage.Visible);
    EXPECT_EQ(batch().linGuage.X2, 0);
    EXPECT_EQ(batch().Percent, 0);
}

// The buttons of the main window are left behind by it.
TEST_F(Batch, OpeningItTheFirstTimeSetsTheOptionsBackBehindTheMainWindow) {
    selectOnce();
    form().optForm.choose(1);
    form().optObject.choose(2);
    open();
    EXPECT_EQ(context().OptForm, 1);
    EXPECT_EQ(context().OptObject, 7);
    EXPECT_EQ(form().optForm.chosen(), 1);
    EXPECT_EQ(form().optObject.chosen(), 2);
    batch().Hide();
    form().optForm.choose(1);
    open();
    EXPECT_EQ(context().OptForm, 2) << "the first time only";
}

TEST_F(Batch, TickOpensTheOptionsOfItsKindAndClearingClosesThem) {
    addOneOfEach();
    open();
    tickAll();
    EXPECT_THAT(values(), Each(1));
    for (OptionGroup* group : groups()) {
        for (int index = 0; index < group->count(); ++index) {
            EXPECT_TRUE((*group)(index).isUsable());
        }
    }
    for (CheckBox* box : boxes()) {
        box->tick(false);
    }
    EXPECT_THAT(values(), Each(0));
    for (OptionGroup* group : groups()) {
        for (int index = 0; index < group->count(); ++index) {
            EXPECT_FALSE((*group)(index).isUsable());
        }
    }
}

TEST_F(Batch, KindThatTheTargetLacksIsNineTickedOrNot) {
    open(); // an empty target
    tickAll();
    EXPECT_THAT(values(), ElementsAre(1, 9, 9, 9, 9, 9, 9, 9, 9, 1, 1, 1));
    EXPECT_TRUE(batch().optTbl(0).Enabled) << "the tick is there all the same";
    for (CheckBox* box : boxes()) {
        box->tick(false);
    }
    EXPECT_THAT(values(), ElementsAre(0, 9, 9, 9, 9, 9, 9, 9, 9, 0, 0, 0));
}

TEST_F(Batch, OptionIsThatOfTheMainWindow) {
    open();
    const ContextNumber options[] = {&AnalysisContext::OptTable,   &AnalysisContext::OptQuery,
                                     &AnalysisContext::OptForm,    &AnalysisContext::OptReport,
                                     &AnalysisContext::OptMacro,   &AnalysisContext::OptProc,
                                     &AnalysisContext::OptModule,  &AnalysisContext::OptModStep,
                                     &AnalysisContext::OptControl, &AnalysisContext::OptFile};
    for (std::size_t i = 0; i < std::size(options); ++i) {
        OptionGroup& group = *groups()[i];
        for (int index = 0; index < group.count(); ++index) {
            group.choose(index);
            EXPECT_EQ(context().*options[i], index + 1) << group(index).name();
        }
    }
}

TEST_F(Batch, BoxForLinksSetsTheLinkFilter) {
    open();
    batch().chkLink.tick(false);
    EXPECT_EQ(context().LinkExclude, 1);
    batch().chkLink.tick(true);
    EXPECT_EQ(context().LinkExclude, 2);
}

TEST_F(Batch, NothingTickedIsToldAndNothingRuns) {
    open();
    store.log.clear();
    run();
    EXPECT_EQ(dialogs.boxes,
              (std::vector<FakeDialogs::Box>{{u"解析方法を選択して下さい。", 0, u"Relvane97 Ver 2.0"}}));
    EXPECT_THAT(store.log, IsEmpty());
    EXPECT_TRUE(batch().Visible);
    EXPECT_FALSE(batch().linGuage.Visible);
}

TEST_F(Batch, EveryPhaseRunsInItsOrderUnderItsMessage) {
    addOneOfEach();
    open();
    tickAll();
    watchBatch();
    store.log.clear();
    run();
    EXPECT_THAT(shownMessages(),
                ElementsAre(u"データベース情報　取得中", u"テーブル情報　取得中", u"クエリー情報　取得中",
                            u"フォーム情報　取得中", u"レポート情報　取得中", u"マクロ情報　取得中",
                            u"プロシージャ情報　取得中", u"モジュール情報　取得中",
                            u"モジュールステップ　取得中", u"コントロール数　取得中", u"ファイル情報　取得中",
                            u"コメント情報　取得中", u"終了しました"));
    EXPECT_THAT(emptiedTables(),
                ElementsAre(u"T_RvObject", u"T_DataBase", u"T_RvTblItem", u"T_RvTblInfo", u"T_RvQeryItem",
                            u"T_RvQeryInfo", u"T_RvFrmItem", u"T_RvFrmInfo", u"T_RvRepItem", u"T_RvRepInfo",
                            u"T_RvRepGrp", u"T_RvMacro", u"T_RvMacro2", u"T_RvProcName", u"T_RvDimCall",
                            u"T_RvModule", u"T_RvProcCount", u"T_RvControlCount", u"T_RvFile",
                            u"T_RvComment"));
    EXPECT_THAT(shownPercents(), ElementsAre(u"0%", u"8%", u"16%", u"24%", u"32%", u"40%", u"48%", u"56%",
                                             u"64%", u"72%", u"80%", u"88%", u"96%"));
    EXPECT_EQ(batch().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(context().CurrentKind, u"Module");
}

TEST_F(Batch, EachPhaseHasItsName) {
    addOneOfEach();
    open();
    std::vector<Text> names;
    batch().txtMesege.onRefresh = [&] { names.push_back(batch().PhaseName); };
    tickAll();
    run();
    names.pop_back(); // of the closing message
    EXPECT_THAT(names,
                ElementsAre(u"オブジェクト情報(一括)", u"テーブル情報(一括)", u"クエリー情報(一括)",
                            u"フォーム情報(一括)", u"レポート情報(一括)", u"マクロ情報(一括)",
                            u"プロシージャ情報(一括)", u"モジュール情報(一括)", u"モジュールステップ(一括)",
                            u"コントロール数(一括)", u"ファイル情報(一括)", u"コメント情報(一括)"));
}

TEST_F(Batch, SixTicksGoBeyondAHundredBeforeTheEnd) {
    addOneOfEach();
    open();
    tick({&batch().chkObj, &batch().chkTbl, &batch().chkQery, &batch().chkForm, &batch().chkRep,
          &batch().chkMac});
    watchBatch();
    dialogs.whileBoxIsOpen = [&] {
        EXPECT_EQ(batch().lblPer.Caption.get(), u"102%");
        EXPECT_EQ(batch().linGuage.X2, 2448);
    };
    run();
    EXPECT_THAT(shownPercents(), ElementsAre(u"0%", u"17%", u"34%", u"51%", u"68%", u"85%", u"102%"));
    EXPECT_EQ(batch().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(batch().Percent, 102);
}

TEST_F(Batch, ThreeTicksEndShortOfAHundred) {
    addOneOfEach();
    open();
    tick({&batch().chkObj, &batch().chkTbl, &batch().chkFile});
    watchBatch();
    run();
    EXPECT_THAT(shownPercents(), ElementsAre(u"0%", u"33%", u"66%", u"99%"));
    EXPECT_EQ(batch().Percent, 99);
    EXPECT_EQ(batch().linGuage.X2, 2400);
}

TEST_F(Batch, KindThatTheTargetLacksMakesTheStepsSmaller) {
    target->addTable(u"T1");
    open();
    tick({&batch().chkTbl, &batch().chkForm}); // 1 + 9
    watchBatch();
    run();
    EXPECT_THAT(shownPercents(), ElementsAre(u"0%", u"10%"));
    EXPECT_EQ(batch().lblPer.Caption.get(), u"100%");
}

TEST_F(Batch, BoxesThatAreAllNineRunNothingToTheEnd) {
    open();
    tick({&batch().chkForm});
    watchBatch();
    store.log.clear();
    run();
    EXPECT_EQ(dialogs.lastText(), closingBox);
    EXPECT_THAT(store.log, IsEmpty());
    EXPECT_THAT(shown, ElementsAre(u"0%", u"終了しました"));
}

// What a pattern says counts for the steps as it stands, until the boxes are clicked.
TEST_F(Batch, ValueOfNoMeaningCountsForTheStepsAndRunsNothing) {
    addOneOfEach();
    open();
    tick({&batch().chkObj});
    context().BatchForm = 4;
    watchBatch();
    run();
    EXPECT_THAT(shownPercents(), ElementsAre(u"0%", u"20%"));
    EXPECT_EQ(context().DoneForm, 0);
}

TEST_F(Batch, ModuleListingRunsWithTheProceduresAndByItsOwnOption) {
    addOneOfEach();
    open();
    tick({&batch().chkProc});
    watchBatch();
    batch().optMod.choose(3);
    run();
    EXPECT_EQ(context().DoneProc, 2);
    EXPECT_EQ(context().DoneModule, 4);
    EXPECT_EQ(form().optModule.chosen(), 3);
    EXPECT_TRUE(form().cmdPPre.Enabled);
    EXPECT_TRUE(form().cmdMPre.Enabled);
    EXPECT_FALSE(store.rows(u"T_RvModule").empty());
    EXPECT_THAT(shownPercents(), ElementsAre(u"0%", u"200%"))
        << "a step for each of the two, 100 not at once";
}

TEST_F(Batch, PatternWithTheModuleListingAloneRunsNone) {
    addOneOfEach();
    open();
    read(u"MODULE=1\r\n");
    EXPECT_EQ(batch().chkMod.Value, 1);
    store.log.clear();
    run();
    EXPECT_THAT(store.log, IsEmpty());
    EXPECT_EQ(context().DoneModule, 0);
    EXPECT_FALSE(form().cmdMPre.Enabled);
    EXPECT_EQ(dialogs.lastText(), closingBox);
}

TEST_F(Batch, TargetWithoutModulesRunsNeitherThoughAFormHasCode) {
    addForm(u"F1", moduleOf({u"Sub A()", u"End Sub"}));
    open();
    tick({&batch().chkProc, &batch().chkMod});
    store.log.clear();
    run();
    EXPECT_EQ(context().BatchProc, 9);
    EXPECT_THAT(store.log, IsEmpty());
    EXPECT_EQ(context().DoneProc, 0);
}

TEST_F(Batch, ObjectListRunsForAllKindsOnly) {
    addOneOfEach();
    open();
    tick({&batch().chkObj, &batch().chkTbl});
    form().optObject.choose(1); // on the main window, behind the tick
    watchBatch();
    run();
    EXPECT_EQ(context().DoneObject, 0);
    EXPECT_FALSE(form().cmdOPre.Enabled);
    EXPECT_THAT(shownPercents(), ElementsAre(u"0%", u"50%")) << "its tick counts for the steps";
}

TEST_F(Batch, PanelsStandAsIfTheirButtonsHadBeenPressed) {
    addOneOfEach();
    open();
    tickAll();
    batch().optTbl.choose(2);
    batch().optForm.choose(1);
    batch().optControl.choose(2);
    run();
    for (const Panel& panel : panels()) {
        EXPECT_EQ(context().*panel.done, context().*panel.option);
        EXPECT_EQ((form().*panel.options).chosen(), context().*panel.option - 1);
        EXPECT_TRUE((form().*panel.preview).Enabled);
    }
    EXPECT_TRUE(form().cmdCmPre.Enabled);
    EXPECT_EQ(context().DoneTable, 3);
    EXPECT_EQ(context().DoneForm, 2);
    EXPECT_EQ(context().DoneControl, 3);
    EXPECT_THAT(reportApps.calls, IsEmpty()) << "no report opens";
}

TEST_F(Batch, ActionButtonsBehindARunShowTheirReportsWithoutAnalysing) {
    addOneOfEach();
    open();
    tickAll();
    run();
    store.log.clear();
    for (const Panel& panel : panels()) {
        if (panel.action == &FrmRelvane::cmdMacro) {
            continue; // a list of all macros is never spared
        }
        reportApps.calls.clear();
        press(form().*panel.action);
        EXPECT_THAT(emptiedTables(), IsEmpty());
        EXPECT_THAT(reportApps.calls, Contains(beginsWith(u"OpenReport ")));
    }
}

TEST_F(Batch, PreviewButtonsBehindARunShowTheirReports) {
    addOneOfEach();
    open();
    tickAll();
    run();
    store.log.clear();
    for (const auto preview : previewButtons()) {
        reportApps.calls.clear();
        press(form().*preview);
        EXPECT_THAT(reportApps.calls, Contains(beginsWith(u"OpenReport ")));
    }
    EXPECT_THAT(emptiedTables(), IsEmpty());
}

TEST_F(Batch, EveryFormReportAndMacroIsAnalysedWhateverTheScope) {
    addOneOfEach();
    addForm(u"F2");
    addReport(u"R2");
    addMacro(u"X2", moduleOf({u"Function X2()", u"Beep", u"End Function"}));
    open();
    form().optFSelect.choose(1);
    form().optRSelect.choose(1);
    form().optMcSelect.choose(1);
    tick({&batch().chkForm, &batch().chkRep, &batch().chkMac});
    run();
    EXPECT_THAT(column(u"T_RvFrmInfo", u"FormName"), ElementsAre(u"F1", u"F2"));
    EXPECT_THAT(column(u"T_RvRepInfo", u"ReportName"), ElementsAre(u"R1", u"R2"));
    EXPECT_THAT(column(u"T_RvMacro", u"ObjectName"), ElementsAre(u"X1", u"X2"));
    form().optFSelect.choose(0);
    store.log.clear();
    press(form().cmdForm);
    EXPECT_THAT(emptiedTables(), IsEmpty()) << "all of them are there";
}

TEST_F(Batch, ScopeOfTablesAndQueriesCounts) {
    addOneOfEach();
    target->addTable(u"T2", u";DATABASE=C:\\App\\other.mdb");
    addField(dynamic_cast<FakeTableDef&>(target->tables.Item(u"T2")).fields, u"F", 4, 4);
    target->addQuery(u"Q2", 0);
    open();
    form().optTSelect.choose(1);
    form().cboTable.choose(1);
    form().optQSelect.choose(1);
    form().cboQuery.choose(1);
    tick({&batch().chkTbl, &batch().chkQery});
    run();
    EXPECT_THAT(column(u"T_RvTblInfo", u"TableName"), ElementsAre(u"T2"));
    EXPECT_THAT(column(u"T_RvQeryInfo", u"QueryName"), ElementsAre(u"Q2"));
    EXPECT_EQ(context().LinkExclude, 1) << "a chosen table may be a link";
    EXPECT_EQ(batch().chkLink.Value, 1);
}

TEST_F(Batch, MainWindowShowsNothingOfTheRun) {
    addOneOfEach();
    open();
    tickAll();
    const Text before = form().txtMesege.Caption;
    std::vector<Text>& main = watch();
    bool looked = false;
    store.onUpdate = [&](TextView) {
        looked = true;
        EXPECT_TRUE(form().Enabled);
        EXPECT_FALSE(form().linGuage.Visible);
        EXPECT_FALSE(batch().Enabled);
        EXPECT_EQ(batch().Pointer, MousePointer::Hourglass);
        EXPECT_TRUE(batch().linGuage.Visible);
    };
    run();
    EXPECT_TRUE(looked);
    EXPECT_THAT(main, IsEmpty());
    EXPECT_EQ(form().txtMesege.Caption.get(), before);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
    EXPECT_EQ(form().Timer1.Interval, 0);
}

TEST_F(Batch, EndIsToldBehindTheLastRowAndHidesTheWindow) {
    addOneOfEach();
    open();
    tick({&batch().chkTbl});
    dialogs.whileBoxIsOpen = [&] {
        EXPECT_TRUE(batch().Visible);
        EXPECT_FALSE(batch().Enabled);
        EXPECT_EQ(batch().txtMesege.Caption.get(), u"終了しました");
    };
    run();
    EXPECT_EQ(dialogs.boxes, (std::vector<FakeDialogs::Box>{{closingBox, 0, u"Relvane97 Ver 2.0"}}));
    EXPECT_FALSE(batch().Visible);
    EXPECT_TRUE(batch().Enabled);
    EXPECT_EQ(batch().Pointer, MousePointer::Normal);
    EXPECT_EQ(batch().lblPer.Caption.get(), u"100%");
}

TEST_F(Batch, TicksStayWhileTheWindowIsHiddenAndTheGaugeBeginsAnew) {
    addOneOfEach();
    open();
    tick({&batch().chkTbl, &batch().chkFile});
    run();
    open();
    EXPECT_TRUE(batch().Visible);
    EXPECT_EQ(batch().chkTbl.Value, 1);
    EXPECT_EQ(context().BatchTable, 1);
    EXPECT_TRUE(batch().optTbl(0).Enabled);
    watchBatch();
    run();
    EXPECT_THAT(shownPercents(), ElementsAre(u"0%", u"50%"));
}

TEST_F(Batch, BrokenLinkSkipsTheRestAndTheClosingBox) {
    addOneOfEach();
    target->addTable(u"Gone", u";DATABASE=C:\\App\\gone.mdb"); // it answers and has no fields
    open();
    tickAll();
    batch().chkLink.tick(false);
    watchBatch();
    store.log.clear();
    run();
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"場所:テーブル情報ｴﾗｰNo:"));
    EXPECT_THAT(emptiedTables(), ElementsAre(u"T_RvObject", u"T_DataBase", u"T_RvTblItem", u"T_RvTblInfo"));
    EXPECT_EQ(context().DoneObject, 7) << "what ran before counts";
    EXPECT_TRUE(form().cmdOPre.Enabled);
    EXPECT_EQ(context().DoneTable, 0);
    EXPECT_FALSE(form().cmdTPre.Enabled);
    EXPECT_EQ(context().DoneQuery, 0);
    EXPECT_EQ(shown.back(), u"テーブル情報　取得中");
    EXPECT_EQ(batch().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(batch().Pointer, MousePointer::Normal);
    EXPECT_TRUE(batch().Enabled);
    EXPECT_FALSE(batch().Visible);
    EXPECT_FALSE(desk->ended());
}

TEST_F(Batch, BrokenLinkStopsTheIndexListToo) {
    target->addTable(u"Gone", u";DATABASE=C:\\App\\gone.mdb");
    open();
    tick({&batch().chkTbl, &batch().chkFile});
    batch().optTbl.choose(0);
    batch().chkLink.tick(false);
    run();
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(context().DoneFile, 0);
    EXPECT_FALSE(batch().Visible);
}

TEST_F(Batch, ErrorOfAPhaseEndsTheProgramAndKeepsTheRows) {
    addOneOfEach();
    targetApps.failing[u"OpenForm"] = 2449;
    open();
    tickAll();
    EXPECT_FALSE(run());
    EXPECT_TRUE(desk->failed());
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"実行時エラー 2449\r"));
    EXPECT_EQ(dialogs.boxes.size(), 1u) << "no handler and no exit box";
    EXPECT_EQ(batch().PhaseName, u"フォーム情報(一括)");
    EXPECT_EQ(store.rows(u"T_RvTblInfo").size(), 1u);
}

TEST_F(Batch, MissingWorkDatabaseEndsTheProgram) {
    addOneOfEach();
    open();
    tick({&batch().chkTbl});
    platform.openWorkStore = [](const Text& path) -> std::shared_ptr<RowStore> {
        throw RunTimeError(ErrorNumber::DatabaseNotFound, path);
    };
    newDesk(); // takes the platform as it is now
    start();
    context().BatchTable = 1;
    EXPECT_FALSE(run());
    EXPECT_TRUE(desk->failed());
}

TEST_F(Batch, LeavingAtOnceReleasesTheTargetAndKeepsNoSettings) {
    open();
    dialogs.boxes.clear();
    system.screenSaver.clear();
    const auto before = files.content;
    EXPECT_FALSE(desk->dispatch([&] { batch().LeaveAtOnce(); }));
    EXPECT_TRUE(desk->ended());
    EXPECT_FALSE(desk->failed());
    EXPECT_THAT(dialogs.boxes, IsEmpty());
    EXPECT_EQ(files.content, before) << "no settings are written";
    EXPECT_THAT(system.screenSaver, ElementsAre(true));
    EXPECT_THAT(targetApps.calls, Contains(u"Close"));
    EXPECT_EQ(targetApps.alive, 0);
    EXPECT_EQ(context().TargetDb, nullptr);
    EXPECT_EQ(context().ReportApp, nullptr);
}

TEST_F(Batch, LeavingAtOnceWithoutATargetWorksToo) {
    start();
    EXPECT_FALSE(desk->dispatch([&] { batch().LeaveAtOnce(); }));
    EXPECT_FALSE(desk->failed());
}

} // namespace
} // namespace relvane
