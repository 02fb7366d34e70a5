// The row of a report, its grouping levels, and a run of the panel of reports as a whole.
#include "objects/report_analysis.h"

#include "design_program.h"

namespace relvane {
namespace {

using namespace test;

struct ReportAnalysis : testing::Test, DesignProgram {
    const std::vector<FakeRow>& reports(int option = 2) {
        runReports(option);
        return store.rows(u"T_RvRepInfo");
    }
    const std::vector<FakeRow>& levels(int option = 2) {
        runReports(option);
        return store.rows(u"T_RvRepGrp");
    }
    bool runsAgain(int option) {
        store.log.clear();
        runReports(option);
        return !store.log.empty();
    }
};

TEST_F(ReportAnalysis, RowHasItsFieldsInOrder) {
    FakeReport& report = addReport(u"請求書");
    report.set(u"RecordSource", text(u"請求"))
        .set(u"Filter", text(u"月 = 4"))
        .set(u"OrderBy", text(u"番号"))
        .set(u"Caption", text(Text(101, u'請')))
        .set(u"RecordLocks", number(1))
        .set(u"MenuBar", text(u"印刷"))
        .put(41, u"OnOpen", text(u"[Event Procedure]"));
    target->containers.Item(u"Reports").Documents().Item(0).Properties() =
        properties({{u"Description", text(u"月末の請求書")}});
    for (const int option : {1, 2}) {
        const FakeRow expected = {{u"objectNo", number(1)},
                                  {u"RecordSource", text(u"ﾚｺｰﾄﾞｿｰｽ : 請求")},
                                  {u"Filter", text(u"フィルタ : 月 = 4")},
                                  {u"OrderBy", text(u"並べ替え : 番号")},
                                  {u"Caption", text(Text(100, u'請'))},
                                  {u"RecordLocks", number(1)},
                                  {u"Smenubar", text(u"印刷")},
                                  {u"Midasi", number(option)},
                                  {u"Ibent1", text(u"開く時")},
                                  {u"IbentVL1", text(u"[Event Procedure]")},
                                  {u"ReportName", text(u"請求書")},
                                  {u"DateCreated", DateTime{1997, 1, 2, 3, 4, 5}},
                                  {u"LastUpdated", DateTime{1998, 2, 3, 4, 5, 6}},
                                  {u"Description", text(u"月末の請求書")}};
        EXPECT_EQ(reports(option).at(0), expected) << "option " << option;
    }
}

TEST_F(ReportAnalysis, EventsAreSearchedFrom41To47AndFourAreKept) {
    for (const int position : {40, 41, 44, 47, 48}) {
        DesignProgram program;
        program.addReport(u"R").put(position, u"OnNoData", text(u"マクロ"));
        program.runReports(2);
        const bool isFound =
            valueOf(program.store.rows(u"T_RvRepInfo").at(0), u"Ibent1") == text(u"空ﾃﾞｰﾀ時");
        EXPECT_EQ(isFound, position >= 41 && position <= 47) << position;
    }
    FakeReport& report = addReport(u"R");
    for (int position = 41; position <= 47; ++position) {
        report.put(position, u"OnPage", text(u"=P" + toText(static_cast<long long>(position)) + u"()"));
    }
    const FakeRow& row = reports().at(0);
    EXPECT_EQ(valueOf(row, u"IbentVL1"), text(u"=P41()"));
    EXPECT_EQ(valueOf(row, u"IbentVL4"), text(u"=P44()"));
}

// ---- Grouping levels

TEST_F(ReportAnalysis, LevelHasItsFieldsInOrder) {
    FakeReport& report = addReport(u"R");
    addLevel(report, Text(149, u'式') + u"  x")
        .set(u"SortOrder", number(-1))
        .set(u"GroupHeader", true)
        .set(u"GroupFooter", false)
        .set(u"GroupOn", number(3))
        .set(u"GroupInterval", number(70000))
        .set(u"KeepTogether", number(2));
    for (const int option : {1, 2}) {
        const FakeRow expected = {{u"objectNo", number(1)},
                                  {u"GroupNo", number(0)},
                                  {u"ControlSource", text(Text(149, u'式'))},
                                  {u"SortOrder", number(-1)},
                                  {u"GroupHeader", true},
                                  {u"GroupFooter", false},
                                  {u"GroupOn", number(3)},
                                  {u"GroupInterval", number(70000)},
                                  {u"KeepTogether", number(2)}};
        const auto& rows = levels(option);
        ASSERT_EQ(rows.size(), 1u) << "the short list has them too";
        EXPECT_EQ(rows[0], expected);
    }
}

TEST_F(ReportAnalysis, TenLevelsAreNumberedFromZeroAndNoMoreIsAskedFor) {
    FakeReport& report = addReport(u"R");
    for (int i = 0; i < 11; ++i) {
        addLevel(report, u"項目" + toText(static_cast<long long>(i)));
    }
    levels();
    EXPECT_EQ(column(u"T_RvRepGrp", u"GroupNo"),
              (std::vector<Text>{u"0", u"1", u"2", u"3", u"4", u"5", u"6", u"7", u"8", u"9"}));
    EXPECT_EQ(column(u"T_RvRepGrp", u"ControlSource").back(), u"項目9");
    EXPECT_EQ(report.asked.back(), 9);
}

TEST_F(ReportAnalysis, ReportWithoutLevelsHasNoRowForThemAndSucceeds) {
    addReport(u"A");
    FakeReport& second = addReport(u"B");
    addLevel(second, u"x");
    levels();
    EXPECT_EQ(column(u"T_RvRepGrp", u"objectNo"), (std::vector<Text>{u"2"}));
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_EQ(context().DoneReport, 2);
    EXPECT_EQ(reportsShown(u"R_RvRepCntl"), 1);
}

TEST_F(ReportAnalysis, AnyErrorEndsTheLevelsAndTheRowThatWasBegunIsDropped) {
    FakeReport& report = addReport(u"A");
    addLevel(report, u"good");
    addLevel(report, u"bad").fail(u"GroupInterval", 3049);
    addLevel(report, u"never asked");
    addReport(u"B");
    levels();
    EXPECT_EQ(column(u"T_RvRepGrp", u"ControlSource"), (std::vector<Text>{u"good"}));
    EXPECT_EQ(report.asked, (std::vector<int>{0, 1}));
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_EQ(store.rows(u"T_RvRepInfo").size(), 2u) << "the walk goes on";
    EXPECT_EQ(targetApps.reports.countOpen(), 0) << "and the report is closed";
}

// ---- A run

TEST_F(ReportAnalysis, RowsAreOpenedReportsFirstAndEmptiedItemsFirst) {
    addReport(u"R");
    selectOnce();
    store.log.clear();
    runReports(2);
    EXPECT_EQ(store.log, (std::vector<Text>{u"open T_RvRepInfo", u"open T_RvRepItem", u"open T_RvRepGrp",
                                            u"delete * from T_RvRepItem;", u"delete * from T_RvRepInfo;",
                                            u"delete * from T_RvRepGrp;", u"close T_RvRepInfo",
                                            u"close T_RvRepItem", u"close T_RvRepGrp"}));
}

TEST_F(ReportAnalysis, EachReportIsOpenedInDesignViewHiddenAndClosedWithoutSaving) {
    FakeReport& report = addReport(u"A");
    addReport(u"B");
    selectOnce();
    targetApps.calls.clear();
    runReports(1);
    EXPECT_EQ(targetApps.calls, (std::vector<Text>{u"OpenReport A 1", u"CloseObject 3 A 2", u"OpenReport B 1",
                                                   u"CloseObject 3 B 2"}));
    EXPECT_FALSE(report.visible);
    EXPECT_EQ(context().CurReport, nullptr);
    EXPECT_EQ(context().CurDesign, nullptr);
}

TEST_F(ReportAnalysis, MessagesAndGaugeFollowTheWalkOverAllReports) {
    addReport(u"A");
    addReport(u"B");
    addForm(u"F");
    selectOnce();
    std::vector<Text>& shown = watch();
    runReports(1);
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"レポート情報　取得中", u"レポート情報　取得中　(A)", u"50%",
                                        u"レポート情報　取得中　(B)", u"終了しました",
                                        u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"}));
    EXPECT_TRUE(form().cmdRPre.Enabled);
}

TEST_F(ReportAnalysis, ChosenReportAloneIsListedAndReadAgainForAnotherName) {
    addReport(u"A");
    addReport(u"B");
    chooseReport(u"B");
    EXPECT_TRUE(runsAgain(2));
    EXPECT_EQ(column(u"T_RvRepInfo", u"ReportName"), (std::vector<Text>{u"B"}));
    EXPECT_FALSE(runsAgain(2));
    EXPECT_TRUE(runsAgain(1));
    chooseReport(u"A");
    EXPECT_TRUE(runsAgain(1));
    form().optRSelect.choose(0);
    EXPECT_TRUE(runsAgain(1));
    EXPECT_EQ(context().LastReport.name, u"A");
    EXPECT_FALSE(runsAgain(1));
}

// ---- Errors

TEST_F(ReportAnalysis, DamagedReportIsReportedUnderItsPlaceAndTheRowsSoFarStay) {
    addReport(u"A");
    addReport(u"B").fail(u"OrderBy", 3049);
    runReports(2);
    EXPECT_EQ(dialogs.lastText(),
              u"場所:レポート情報ｴﾗｰNo:3049\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明");
    EXPECT_EQ(column(u"T_RvRepInfo", u"ReportName"), (std::vector<Text>{u"A"}));
    EXPECT_TRUE(targetApps.reports.isOpen(u"B"));
    EXPECT_EQ(context().CurReport, nullptr);
    EXPECT_EQ(context().DoneReport, 0);
}

TEST_F(ReportAnalysis, AccessErrorsEndTheProgram) {
    addReport(u"R").fail(u"Caption", 2999);
    runReports(1);
    EXPECT_TRUE(desk->ended());
    EXPECT_TRUE(std::ranges::any_of(dialogs.boxes, [](const FakeDialogs::Box& box) {
        return box.text.starts_with(u"場所:レポート情報ｴﾗｰNo:2999\r");
    }));
}

} // namespace
} // namespace relvane
