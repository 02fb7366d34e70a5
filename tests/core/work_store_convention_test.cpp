#include "core/work_store_convention.h"

#include <gtest/gtest.h>

#include "core/progress_gauge.h"
#include "support/fakes_desk.h"

namespace relvane {
namespace {

struct Convention : testing::Test, test::FakeProgram {
    void SetUp() override {
        select();
        store.log.clear();
        store.opened = 0;
    }
    AnalysisSpec spec(std::function<void()> walk = [] {}) {
        return {.tables = {u"T_RvTblItem", u"T_RvTblInfo"},
                .workingMessage = u"テーブル情報　取得中",
                .walk =
                    [walk = std::move(walk)](std::int16_t) {
                        walk();
                        return WalkEnd::Complete;
                    },
                .showReport = [this] { ++reportsShown; },
                .preview = &form().cmdTPre,
                .option = context().OptTable,
                .done = &context().DoneTable};
    }
    void addRow() {
        increment(context().ObjectNo);
        context().WorkRs1->AddNew();
        context().WorkRs1->Collect(u"objectNo", std::int64_t{context().ObjectNo});
        context().WorkRs1->Update();
    }
    int reportsShown = 0;
};

TEST_F(Convention, OpensEmptiesWalksAndClosesInOrder) {
    runAnalysis(context(), spec([&] { store.log.push_back(u"walk"); }));
    EXPECT_EQ(store.log, (std::vector<Text>{u"open T_RvTblItem", u"open T_RvTblInfo",
                                            u"delete * from T_RvTblItem;", u"delete * from T_RvTblInfo;",
                                            u"walk", u"close T_RvTblItem", u"close T_RvTblInfo"}));
}

TEST_F(Convention, CursorWithoutATableStaysAsItIs) {
    AnalysisSpec analysis = spec();
    analysis.tables = {{}, u"T_RvQeryInfo"};
    const Recordset* before = context().WorkRs1.get();
    runAnalysis(context(), analysis);
    EXPECT_EQ(store.log, (std::vector<Text>{u"open T_RvQeryInfo", u"delete * from T_RvQeryInfo;",
                                            u"close T_RvQeryInfo"}));
    EXPECT_EQ(context().WorkRs1.get(), before);
}

TEST_F(Convention, WindowIsClosedAndTheHourglassShowsDuringTheRun) {
    bool looked = false;
    runAnalysis(context(), spec([&] {
                    looked = true;
                    EXPECT_FALSE(form().Enabled);
                    EXPECT_EQ(form().Pointer, MousePointer::Hourglass);
                    EXPECT_TRUE(form().linGuage.Visible);
                    EXPECT_EQ(form().linGuage.X2, 0);
                    EXPECT_EQ(form().txtMesege.Caption.get(), u"テーブル情報　取得中");
                    EXPECT_FALSE(form().cmdObject.isUsable());
                }));
    EXPECT_TRUE(looked);
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
}

TEST_F(Convention, EndShowsTheReportOpensThePreviewAndStartsTheTimer) {
    AnalysisSpec analysis = spec();
    analysis.showReport = [&] {
        EXPECT_EQ(form().txtMesege.Caption.get(), u"終了しました");
        EXPECT_EQ(form().linGuage.X2, 2400);
        EXPECT_EQ(form().lblPer.Caption.get(), u"100%");
        EXPECT_TRUE(form().Enabled);
        EXPECT_EQ(context().DoneTable, 9) << "stored only behind the report";
        ++reportsShown;
    };
    runAnalysis(context(), analysis);
    EXPECT_EQ(reportsShown, 1);
    EXPECT_EQ(context().DoneTable, context().OptTable);
    EXPECT_TRUE(form().cmdTPre.Enabled);
    EXPECT_EQ(form().txtMesege.Caption.get(), u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。");
    EXPECT_EQ(form().Timer1.Interval, 5000);
}

TEST_F(Convention, SecondPressWithTheSameOptionRunsOnceAndShowsTwice) {
    int runs = 0;
    for (int i = 0; i < 2; ++i) {
        runAnalysis(context(), spec([&] { ++runs; }));
    }
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(reportsShown, 2);
}

TEST_F(Convention, AnotherOptionRunsAgainAndOverwritesTheTables) {
    runAnalysis(context(), spec([&] {
                    addRow();
                    addRow();
                }));
    EXPECT_EQ(store.rows(u"T_RvTblItem").size(), 2u);
    context().OptTable = 3;
    runAnalysis(context(), spec([&] { addRow(); }));
    EXPECT_EQ(store.rows(u"T_RvTblItem").size(), 1u);
    EXPECT_EQ(test::valueOf(store.rows(u"T_RvTblItem")[0], u"objectNo"), Value(std::int64_t{1}));
}

TEST_F(Convention, AnalysisThatFindsNothingEmptiesItsTablesAndOpensItsReport) {
    store.tables[u"T_RvTblItem"].resize(3);
    runAnalysis(context(), spec());
    EXPECT_TRUE(store.rows(u"T_RvTblItem").empty());
    EXPECT_EQ(reportsShown, 1);
}

TEST_F(Convention, FailedRunKeepsItsRowsAndRunsAgain) {
    EXPECT_EQ(skipErrors([&] {
                  runAnalysis(context(), spec([&] {
                                  addRow();
                                  throw RunTimeError(3049, u"");
                              }));
              }),
              3049);
    EXPECT_EQ(store.rows(u"T_RvTblItem").size(), 1u);
    EXPECT_NE(context().DoneTable, context().OptTable);
    EXPECT_EQ(reportsShown, 0);
    EXPECT_FALSE(form().cmdTPre.Enabled);
    runAnalysis(context(), spec([&] { addRow(); }));
    EXPECT_EQ(store.rows(u"T_RvTblItem").size(), 1u);
    EXPECT_EQ(reportsShown, 1);
}

TEST_F(Convention, PanelMayHaveItsOwnRuleForBeingDone) {
    int runs = 0;
    AnalysisSpec analysis = spec([&] { ++runs; });
    analysis.isDone = [] { return false; };
    runAnalysis(context(), analysis);
    runAnalysis(context(), analysis);
    EXPECT_EQ(runs, 2);
}

TEST_F(Convention, PanelWithoutADoneFlagRunsEachTime) {
    int runs = 0;
    AnalysisSpec analysis = spec([&] { ++runs; });
    analysis.done = nullptr;
    runAnalysis(context(), analysis);
    runAnalysis(context(), analysis);
    EXPECT_EQ(runs, 2);
    EXPECT_TRUE(form().cmdTPre.Enabled);
}

TEST_F(Convention, CounterBeyondSixteenBitsIsErrorSix) {
    EXPECT_EQ(skipErrors([&] {
                  fillTables(context(), spec([&] {
                                 context().ObjectNo = 32766;
                                 addRow();
                                 addRow();
                             }));
              }),
              6);
    EXPECT_EQ(store.rows(u"T_RvTblItem").size(), 1u);
}

TEST(Gauge, FiftyPercentIsTwelveHundred) {
    FrmRelvane form;
    int refreshed = 0;
    form.lblPer.onRefresh = form.linGuage.onRefresh = [&] { ++refreshed; };
    SetGauge(form.gauge, 50);
    EXPECT_EQ(form.linGuage.X2, 1200);
    EXPECT_EQ(form.lblPer.Caption.get(), u"50%");
    EXPECT_EQ(refreshed, 2);
    SetGauge(form.gauge, 100);
    EXPECT_EQ(form.linGuage.X2, 2400);
    EXPECT_EQ(form.lblPer.Caption.get(), u"100%");
    EXPECT_EQ(refreshed, 2) << "100 is not shown at once";
    SetGauge(form.gauge, 102);
    EXPECT_EQ(form.linGuage.X2, 2448);
}

TEST(Gauge, PartsAreRoundedAHalfToTheEvenNumber) {
    EXPECT_EQ(percentOf(1, 3), 33);
    EXPECT_EQ(percentOf(2, 3), 67);
    EXPECT_EQ(percentOf(1, 8), 12);
    EXPECT_EQ(percentOf(3, 8), 38);
    EXPECT_EQ(percentOf(7, 7), 100);
    EXPECT_EQ(percentOf(2, -1), -200) << "a total may be negative";
    EXPECT_EQ(skipErrors([] { percentOf(1, 0); }), 11);
    EXPECT_EQ(skipErrors([] { percentOf(400, 1); }), 6);
}

TEST(Gauge, StepOfAWalkMovesTheLineAndSaysWhatIsDone) {
    FrmRelvane form;
    showProgress(form.gauge, 1, 4, u"テーブル情報　取得中　(顧客)");
    EXPECT_EQ(form.linGuage.X2, 600);
    EXPECT_EQ(form.lblPer.Caption.get(), u"25%");
    EXPECT_EQ(form.txtMesege.Caption.get(), u"テーブル情報　取得中　(顧客)");
}

TEST_F(Convention, MessageAndLineDisappearFiveSecondsBehindTheReport) {
    runAnalysis(context(), spec());
    EXPECT_TRUE(form().linGuage.Visible);
    form().Timer1.fire();
    EXPECT_EQ(form().txtMesege.Caption.get(), u"");
    EXPECT_EQ(form().linGuage.X2, 0);
    EXPECT_FALSE(form().linGuage.Visible);
    EXPECT_EQ(form().Timer1.Interval, 0);
    form().txtMesege.Caption = u"later";
    form().Timer1.fire(); // stopped
    EXPECT_EQ(form().txtMesege.Caption.get(), u"later");
}

} // namespace
} // namespace relvane
