// A run of the panel of tables as a whole: what is opened and shown, when a press repeats nothing, broken links, errors.
#include "objects/index_analysis.h"
#include "objects/table_analysis.h"

#include "table_program.h"

namespace relvane {
namespace {

using namespace test;

struct TableRun : TableProgram {
    // Whether a press walks, and does not only show the report.
    bool runsAgain(int option) {
        store.log.clear();
        run(option);
        return !store.log.empty();
    }
    FakeTableDef& addBrokenLink(int error) {
        FakeTableDef& link = addTableWithKey(u"link", u";DATABASE=C:\\gone\\b.mdb");
        link.fieldsError = error;
        return link;
    }
};

const Text brokenLinkText =
    u"\rリンクテーブルのパスが不正です。\rリンクテーブルのリンクを\r再設定後実行下さい。\r内容:";

TEST_F(TableRun, TablesAreOpenedAndEmptiedFieldsFirst) {
    addTableWithKey(u"T");
    selectOnce();
    store.log.clear();
    run(2);
    EXPECT_EQ(store.log,
              (std::vector<Text>{u"open T_RvTblItem", u"open T_RvTblInfo", u"delete * from T_RvTblItem;",
                                 u"delete * from T_RvTblInfo;", u"close T_RvTblItem", u"close T_RvTblInfo"}));
}

TEST_F(TableRun, IndexesAreWrittenThroughTheThirdCursorAlone) {
    addTableWithKey(u"T");
    selectOnce();
    const Recordset* first = context().WorkRs1.get();
    store.log.clear();
    run(1);
    EXPECT_EQ(store.log,
              (std::vector<Text>{u"open T_RvIndex", u"delete * from T_RvIndex;", u"close T_RvIndex"}));
    EXPECT_NE(context().WorkRs3, nullptr);
    EXPECT_EQ(context().WorkRs1.get(), first) << "left as it was";
}

TEST_F(TableRun, EachOptionLeavesTheTablesOfTheOtherAsTheyAre) {
    addTableWithKey(u"T");
    run(3);
    run(1);
    EXPECT_EQ(store.rows(u"T_RvTblInfo").size(), 1u);
    EXPECT_EQ(store.rows(u"T_RvTblItem").size(), 2u);
    EXPECT_EQ(store.rows(u"T_RvIndex").size(), 1u);
    run(2);
    EXPECT_EQ(store.rows(u"T_RvIndex").size(), 1u);
    EXPECT_EQ(store.rows(u"T_RvTblInfo").size(), 1u) << "replaced, not added to";
    EXPECT_EQ(store.rows(u"T_RvTblItem").size(), 2u);
}

TEST_F(TableRun, EachOptionShowsItsReport) {
    addTableWithKey(u"T");
    run(1);
    EXPECT_EQ(reportsShown(u"R_RvTblIndex"), 1);
    run(2);
    EXPECT_EQ(reportsShown(u"R_RvTblTable"), 1);
    run(3);
    EXPECT_EQ(reportsShown(u"R_RvTblTable"), 2);
    EXPECT_EQ(reportsShown(u"R_RvTblIndex"), 1);
    EXPECT_EQ(context().DoneTable, 3);
    EXPECT_TRUE(form().cmdTPre.Enabled);
    EXPECT_EQ(form().Timer1.Interval, 5000);
    EXPECT_EQ(form().linGuage.X2, 2400);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
    EXPECT_TRUE(form().Enabled);
    press(form().cmdTPre);
    EXPECT_EQ(reportsShown(u"R_RvTblTable"), 3);
}

TEST_F(TableRun, WindowWaitsWhileTablesAreWalked) {
    addTableWithKey(u"T");
    selectOnce();
    bool looked = false;
    store.onUpdate = [&](TextView) {
        looked = true;
        EXPECT_EQ(form().Pointer, MousePointer::Hourglass);
        EXPECT_FALSE(form().Enabled);
        EXPECT_TRUE(form().linGuage.Visible);
    };
    run(3);
    EXPECT_TRUE(looked);
}

// ---- Messages and gauge

TEST_F(TableRun, MessagesAndGaugeFollowTheTablesThatAreListed) {
    addTableWithKey(u"A  ");
    addTableWithKey(u"system").attributes = 2;
    addTableWithKey(u"B");
    addTableWithKey(u"link", u";DATABASE=x");
    addTableWithKey(u"C");
    selectOnce();
    ASSERT_EQ(context().TableCount, 5);
    ASSERT_EQ(context().LinkTableCount, 1);
    auto& shown = watch();
    run(2);
    EXPECT_EQ(shown,
              (std::vector<Text>{u"0%", u"テーブル情報　取得中", u"25%", u"テーブル情報　取得中　(A)", u"50%",
                                 u"テーブル情報　取得中　(B)", u"75%", u"テーブル情報　取得中　(C)",
                                 u"終了しました", u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"}));
}

TEST_F(TableRun, IncludedLinksCountAmongTheTablesOfTheGaugeFromTheFirstTable) {
    addTableWithKey(u"A");
    addTableWithKey(u"link", u";DATABASE=x");
    includeLinks();
    ASSERT_EQ(context().LinkTableCount, 1);
    auto& shown = watch();
    run(2);
    EXPECT_EQ(context().LinkTableCount, 0);
    EXPECT_EQ(shown.at(2), u"50%");
}

TEST_F(TableRun, GaugeGoesBeyond100WhereLinksOfTheSystemAreCounted) {
    addTableWithKey(u"A");
    addTableWithKey(u"B");
    addTableWithKey(u"MSysLink", u";DATABASE=x").attributes = systemObject;
    selectOnce();
    ASSERT_EQ(context().TableCount - context().LinkTableCount, 1);
    auto& shown = watch();
    run(2);
    EXPECT_EQ(shown.at(3), u"200%");
}

TEST_F(TableRun, GaugeWithoutAnythingToCountIsADivisionByZero) {
    addTableWithKey(u"A");
    addTableWithKey(u"MSysLink", u";DATABASE=x").attributes = systemObject;
    selectOnce();
    ASSERT_EQ(context().TableCount - context().LinkTableCount, 0);
    EXPECT_TRUE(run(2));
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:テーブル情報ｴﾗｰNo:11\r")) << toUtf8(dialogs.lastText());
    EXPECT_EQ(store.rows(u"T_RvTblInfo").size(), 1u);
}

TEST_F(TableRun, GaugeIsLeftAloneWithoutTheProgressFlag) {
    addTableWithKey(u"A");
    selectOnce();
    context().OptTable = 3;
    context().ObjectNo = 5;
    context().WorkRs1 = context().WorkDb->OpenRecordset(u"T_RvTblItem");
    context().WorkRs2 = context().WorkDb->OpenRecordset(u"T_RvTblInfo");
    context().WorkRs3 = context().WorkDb->OpenRecordset(u"T_RvIndex");
    auto& shown = watch();
    EXPECT_EQ(AnalyzeTables(context(), context().SelTable, context().LinkExclude, 0), WalkEnd::Complete);
    EXPECT_EQ(AnalyzeIndexes(context(), context().LinkExclude, 0), WalkEnd::Complete);
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(valueOf(store.rows(u"T_RvTblInfo").at(0), u"objectNo"), number(6)) << "it counts on";
    EXPECT_EQ(valueOf(store.rows(u"T_RvIndex").at(0), u"objectNo"), number(7));
}

// ---- When a press repeats nothing

TEST_F(TableRun, SecondPressForAllTablesShowsTheReportAgainWithoutAWalk) {
    addTableWithKey(u"T");
    for (const int option : {1, 2, 3}) {
        EXPECT_TRUE(runsAgain(option));
        EXPECT_FALSE(runsAgain(option)) << option;
    }
    EXPECT_EQ(reportsShown(u"R_RvTblTable"), 4);
}

TEST_F(TableRun, AnotherFilterForLinksRunsAgain) {
    addTableWithKey(u"A");
    addTableWithKey(u"link", u";DATABASE=x");
    for (const int option : {2, 1}) {
        EXPECT_TRUE(runsAgain(option));
        form().chkLink.tick(false);
        EXPECT_TRUE(runsAgain(option));
        EXPECT_FALSE(runsAgain(option));
        form().chkLink.tick(true);
        EXPECT_TRUE(runsAgain(option));
        EXPECT_FALSE(runsAgain(option));
    }
}

TEST_F(TableRun, SecondPressForTheSameChosenTableShowsTheReportAgainWithoutAWalk) {
    addTableWithKey(u"A");
    addTableWithKey(u"B");
    choose(u"B");
    EXPECT_TRUE(runsAgain(3));
    EXPECT_FALSE(runsAgain(3));
    choose(u"A");
    EXPECT_TRUE(runsAgain(3));
    EXPECT_EQ(namesOf(store.rows(u"T_RvTblInfo")), (std::vector<Text>{u"A"}));
    EXPECT_TRUE(runsAgain(2)) << "another option";
}

TEST_F(TableRun, ChoosingTheEntryOfTheListBehindARunForAllShowsAllTables) {
    addTableWithKey(u"A");
    addTableWithKey(u"B");
    run(2);
    choose(u"A"); // where the list stood
    EXPECT_FALSE(runsAgain(2));
    EXPECT_EQ(store.rows(u"T_RvTblInfo").size(), 2u);
    choose(u"B");
    EXPECT_TRUE(runsAgain(2));
}

TEST_F(TableRun, AllTablesBehindAChosenOneAreWalked) {
    addTableWithKey(u"A");
    addTableWithKey(u"B");
    choose(u"A");
    run(2);
    form().optTSelect.choose(0);
    EXPECT_TRUE(runsAgain(2));
    EXPECT_EQ(store.rows(u"T_RvTblInfo").size(), 2u);
}

TEST_F(TableRun, RowsOfAFailedRunAreNotTakenForThoseOfTheRunBefore) {
    addTableWithKey(u"A");
    addBrokenLink(3024);
    run(2);
    form().chkLink.tick(false);
    run(2);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(context().DoneTable, 2) << "the flag stays as it was";
    form().chkLink.tick(true);
    EXPECT_TRUE(runsAgain(2));
}

// ---- Broken links

TEST_F(TableRun, LinkWithoutFieldsStopsTheWalkWithABoxAndTheReportIsShown) {
    addTableWithKey(u"A");
    target->addTable(u"B", u";DATABASE=C:\\b.mdb");
    addTableWithKey(u"C");
    includeLinks();
    store.log.clear();
    auto& shown = watch();
    EXPECT_TRUE(run(3));
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, u"場所:テーブル情報ｴﾗｰNo:0" + brokenLinkText);
    EXPECT_EQ(dialogs.boxes[0].title, u"Relvane97 Ver 2.0");
    EXPECT_EQ(dialogs.boxes[0].style, okOnly);
    EXPECT_EQ(namesOf(store.rows(u"T_RvTblInfo")), (std::vector<Text>{u"A"}));
    EXPECT_EQ(store.log.back(), u"delete * from T_RvTblInfo;") << "the cursors stay open";
    EXPECT_EQ(reportsShown(u"R_RvTblTable"), 1);
    EXPECT_EQ(context().DoneTable, 3);
    EXPECT_TRUE(form().cmdTPre.Enabled);
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
    EXPECT_EQ(form().lblPer.Caption.get(), u"100%");
    const std::vector<Text> end(shown.end() - 2, shown.end());
    EXPECT_EQ(end, (std::vector<Text>{u"終了しました", u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"}));
}

TEST_F(TableRun, StoppedWalkIsNotRemembered) {
    addTableWithKey(u"A");
    FakeTableDef& empty = target->addTable(u"B", u";DATABASE=C:\\b.mdb");
    includeLinks();
    for (const int option : {1, 3}) {
        run(option);
        EXPECT_TRUE(runsAgain(option)) << "the box is shown again, not the torn rows without a word";
    }
    EXPECT_EQ(dialogs.boxes.size(), 4u);
    EXPECT_EQ(context().LastTable.name, u"");
    addField(empty.fields, u"f", 4, 4);
    EXPECT_TRUE(runsAgain(3));
    EXPECT_EQ(store.rows(u"T_RvTblInfo").size(), 2u);
    EXPECT_EQ(context().LastTable.name, u"A") << "what stands in the list, though all were asked for";
}

TEST_F(TableRun, IndexesStopAtALinkWithoutFieldsAsWell) {
    addTableWithKey(u"A");
    target->addTable(u"B", u";DATABASE=C:\\b.mdb");
    addTableWithKey(u"C");
    includeLinks();
    store.log.clear();
    run(1);
    EXPECT_EQ(dialogs.lastText(), u"場所:テーブル情報ｴﾗｰNo:0" + brokenLinkText);
    EXPECT_EQ(namesOf(store.rows(u"T_RvIndex")), (std::vector<Text>{u"A"}));
    EXPECT_EQ(store.log.back(), u"delete * from T_RvIndex;");
    EXPECT_EQ(reportsShown(u"R_RvTblIndex"), 1);
    EXPECT_EQ(context().DoneTable, 1);
}

TEST_F(TableRun, TableWithoutFieldsIsListedWhereLinksAreLeftOut) {
    target->addTable(u"empty");
    EXPECT_EQ(tables(3).size(), 1u);
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(TableRun, MissingFolderOfALinkShowsTheBoxOfBrokenLinksAndEndsTheProgram) {
    for (const int option : {1, 2, 3}) {
        newDesk();
        target = std::make_shared<FakeDatabase>();
        addTableWithKey(u"A");
        addBrokenLink(3044);
        desk->start({});
        dialogs.boxes.clear();
        dialogs.files.push_back(targetPath);
        press(form().m1a);
        includeLinks();
        EXPECT_FALSE(run(option)) << "the program has ended";
        EXPECT_FALSE(desk->failed()) << "as by its menu";
        ASSERT_EQ(dialogs.boxes.size(), 2u);
        EXPECT_EQ(dialogs.boxes[0].text, u"場所:テーブル情報ｴﾗｰNo:3044" + brokenLinkText + u"説明");
        EXPECT_EQ(dialogs.boxes[1].text, u"終了します。");
        EXPECT_EQ(context().TargetDb, nullptr);
        EXPECT_TRUE(reportApps.calls.empty());
    }
}

TEST_F(TableRun, MissingFileOfALinkIsReportedAndTheProgramGoesOn) {
    addTableWithKey(u"A");
    addBrokenLink(3024);
    includeLinks();
    EXPECT_TRUE(run(2));
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.lastText(),
              u"場所:テーブル情報ｴﾗｰNo:3024\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明");
    EXPECT_EQ(namesOf(store.rows(u"T_RvTblInfo")), (std::vector<Text>{u"A"})) << "what was written stays";
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
    EXPECT_EQ(context().DoneTable, 0);
    EXPECT_FALSE(form().cmdTPre.Enabled);
    EXPECT_TRUE(reportApps.calls.empty());
    EXPECT_TRUE(runsAgain(2));
}

TEST_F(TableRun, BrokenLinkIsNoMatterWhereLinksAreLeftOut) {
    addTableWithKey(u"A");
    addBrokenLink(3044);
    EXPECT_TRUE(run(2));
    EXPECT_TRUE(dialogs.boxes.empty());
}

// ---- Errors

TEST_F(TableRun, EachErrorHasItsBox) {
    const Text unstable =
        u"\rシステムが不安定です。\r詳細はヘルプを参照下さい。\rシステムを終了します。\r内容:説明";
    const Text mail = u"\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明";
    const Text place = u"場所:テーブル情報ｴﾗｰNo:";
    struct Case {
        int error;
        Text box;
        bool goesOn;
    };
    const Case cases[] = {
        {2448, place + u"2448" + mail, true},
        {2449, place + u"2449" + unstable, false},
        {2999, place + u"2999" + unstable, false},
        {3000, place + u"3000" + mail, true},
        {3043, place + u"3043" + mail, true},
        {3045, place + u"3045" + mail, true},
        {3151, place + u"3151" + mail, true},
        {3170, place + u"3170" + mail, true},
        {7866, u"Access97以前のバージョンのファイルです。\rAccess97形式に変換して下さい。", true},
    };
    for (const Case& each : cases) {
        newDesk();
        target = std::make_shared<FakeDatabase>();
        addBrokenLink(each.error);
        desk->start({});
        dialogs.boxes.clear();
        dialogs.files.push_back(targetPath);
        press(form().m1a);
        includeLinks();
        EXPECT_EQ(run(2), each.goesOn) << each.error;
        ASSERT_EQ(dialogs.boxes.size(), each.goesOn ? 1u : 2u) << each.error;
        EXPECT_EQ(dialogs.boxes[0].text, each.box);
        EXPECT_EQ(dialogs.boxes[0].title, u"Relvane97 Ver 2.0");
        if (each.goesOn) {
            EXPECT_TRUE(form().Enabled);
            EXPECT_EQ(form().Pointer, MousePointer::Normal);
            EXPECT_EQ(context().DoneTable, 0);
        }
    }
}

TEST_F(TableRun, FailureHalfWayKeepsTheRowsWrittenSoFarAndTheNextPressRunsAgain) {
    addTableWithKey(u"A");
    addTableWithKey(u"B");
    selectOnce();
    store.onUpdate = [&](TextView) {
        if (store.rows(u"T_RvTblItem").size() == 3) {
            throw RunTimeError(ErrorNumber::DiskFull);
        }
    };
    EXPECT_TRUE(run(3));
    EXPECT_EQ(store.rows(u"T_RvTblInfo").size(), 2u);
    EXPECT_EQ(store.rows(u"T_RvTblItem").size(), 3u);
    EXPECT_EQ(context().DoneTable, 0);
    store.onUpdate = nullptr;
    EXPECT_TRUE(runsAgain(3));
    EXPECT_EQ(store.rows(u"T_RvTblItem").size(), 4u);
    EXPECT_EQ(context().DoneTable, 3);
}

TEST_F(TableRun, NumberBeyondTheCounterIsReported) {
    addTableWithKey(u"A");
    selectOnce();
    context().OptTable = 2;
    context().WorkRs2 = context().WorkDb->OpenRecordset(u"T_RvTblInfo");
    context().ObjectNo = 32767;
    try {
        AnalyzeTables(context(), context().SelTable, context().LinkExclude, 0);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.is(ErrorNumber::Overflow));
    }
}

} // namespace
} // namespace relvane
