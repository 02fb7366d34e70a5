#include "objects/control_counts.h"

#include <limits>

#include "design_program.h"

namespace relvane {
namespace {

using namespace test;

struct ControlCounts : testing::Test, DesignProgram {
    const std::vector<FakeRow>& counts(int option = 3) {
        runCounts(option);
        return store.rows(u"T_RvControlCount");
    }
    bool runsAgain(int option) {
        store.log.clear();
        runCounts(option);
        return !store.log.empty();
    }
    std::vector<Text> names() { return column(u"T_RvControlCount", u"ObjectName"); }
};

// The columns in their order, each with the number of its type.
const std::pair<Text, int> columns[] = {
    {u"RectangleCount", 101}, {u"LabelCount", 100},         {u"LineCount", 102},
    {u"ImageCount", 103},     {u"CommandButtonCount", 104}, {u"OptionButtonCount", 105},
    {u"CheckBoxCount", 106},  {u"OptionGroupCount", 107},   {u"BoundObjectFrameCount", 108},
    {u"TextBoxCount", 109},   {u"ListBoxCount", 110},       {u"ComboBoxCount", 111},
    {u"SubformCount", 112},   {u"ObjectFrameCount", 114},   {u"PageBreakCount", 118},
    {u"PageCount", 124},      {u"CustomControlCount", 119}, {u"ToggleButtonCount", 122},
    {u"TabCtlCount", 123},
};

TEST_F(ControlCounts, RowHasItsFieldsInOrderAndEachTypeItsColumn) {
    FakeForm& form = addForm(u"F");
    FakeRow expected = {{u"objectNo", number(1)}, {u"Class", text(u"Form")}, {u"ObjectName", text(u"F")}};
    int count = 0;
    for (const auto& [column, type] : columns) {
        ++count;
        for (int i = 0; i < count; ++i) {
            form.add(u"c", type);
        }
        expected.emplace_back(column, number(count));
    }
    EXPECT_EQ(counts(1).at(0), expected);
}

TEST_F(ControlCounts, ControlsOfUnknownTypesAreCountedNowhere) {
    FakeForm& form = addForm(u"F");
    for (const int type : {0, 99, 113, 115, 120, 125, -1}) {
        form.add(u"c", type);
    }
    const FakeRow& row = counts().at(0);
    for (const auto& [column, type] : columns) {
        EXPECT_EQ(valueOf(row, column), number(0));
    }
}

TEST_F(ControlCounts, FormWithoutControlsHasARowOfZeros) {
    addLabel(addForm(u"A"), u"x");
    addForm(u"B");
    const auto& rows = counts(1);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(valueOf(rows[0], u"LabelCount"), number(1));
    for (const auto& [column, type] : columns) {
        EXPECT_EQ(valueOf(rows[1], column), number(0)) << "nothing is left of the form before";
    }
}

TEST_F(ControlCounts, OnlyTheTypeOfAControlIsRead) {
    FakeControl& control = addForm(u"F").add(u"c", labelType);
    counts(1);
    EXPECT_TRUE(control.reads.empty());
    EXPECT_EQ(context().CurControl.ControlNo, 0) << "the census does not number controls";
}

TEST_F(ControlCounts, EachOptionCountsItsKindsFormsFirstInOneSeries) {
    addForm(u"F1");
    addForm(u"F2");
    addReport(u"R1");
    counts(1);
    EXPECT_EQ(names(), (std::vector<Text>{u"F1", u"F2"}));
    counts(2);
    EXPECT_EQ(names(), (std::vector<Text>{u"R1"}));
    EXPECT_EQ(column(u"T_RvControlCount", u"Class"), (std::vector<Text>{u"Report"}));
    counts(3);
    EXPECT_EQ(names(), (std::vector<Text>{u"F1", u"F2", u"R1"}));
    EXPECT_EQ(column(u"T_RvControlCount", u"objectNo"), (std::vector<Text>{u"1", u"2", u"3"}));
    EXPECT_EQ(column(u"T_RvControlCount", u"Class"), (std::vector<Text>{u"Form", u"Form", u"Report"}));
}

TEST_F(ControlCounts, NamesAreCutAt150CharactersAndThenTrimmed) {
    addForm(Text(149, u'F') + u"  x");
    addReport(Text(151, u'R'));
    counts();
    EXPECT_EQ(names(), (std::vector<Text>{Text(149, u'F'), Text(150, u'R')}));
}

TEST_F(ControlCounts, ObjectsAreOpenedInDesignViewHiddenAndClosedWithoutSaving) {
    FakeForm& form = addForm(u"F");
    FakeReport& report = addReport(u"R");
    selectOnce();
    targetApps.calls.clear();
    runCounts(3);
    EXPECT_EQ(targetApps.calls, (std::vector<Text>{u"OpenForm F 1", u"CloseObject 2 F 2", u"OpenReport R 1",
                                                   u"CloseObject 3 R 2"}));
    EXPECT_FALSE(form.visible);
    EXPECT_FALSE(report.visible);
}

TEST_F(ControlCounts, MessagesAndGaugeFollowTheWalk) {
    addForm(u"A");
    addForm(u"B");
    addReport(u"C");
    selectOnce();
    std::vector<Text>& shown = watch();
    runCounts(3);
    const Text end = u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。", done = u"終了しました";
    EXPECT_EQ(shown,
              (std::vector<Text>{u"0%", u"コントロール数　取得中", u"フォームコントロール数　取得中　(A)",
                                 u"33%", u"フォームコントロール数　取得中　(B)", u"67%",
                                 u"レポートコントロール数　取得中　(C)", done, end}));
    shown.clear();
    runCounts(1);
    EXPECT_EQ(shown,
              (std::vector<Text>{u"0%", u"コントロール数　取得中", u"フォームコントロール数　取得中　(A)",
                                 u"50%", u"フォームコントロール数　取得中　(B)", done, end}));
    shown.clear();
    runCounts(2);
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"コントロール数　取得中",
                                        u"レポートコントロール数　取得中　(C)", done, end}));
    EXPECT_EQ(form().Timer1.Interval, 5000);
}

TEST_F(ControlCounts, RunOpensEmptiesAndClosesItsTableAndShowsItsReport) {
    addForm(u"A");
    selectOnce();
    store.log.clear();
    form().cmdCPre.Enabled = false;
    runCounts(3);
    EXPECT_EQ(store.log, (std::vector<Text>{u"open T_RvControlCount", u"delete * from T_RvControlCount;",
                                            u"close T_RvControlCount"}));
    EXPECT_TRUE(form().cmdCPre.Enabled);
    EXPECT_EQ(context().DoneControl, 3);
    EXPECT_EQ(reportsShown(u"R_RvControlCount"), 1);
}

TEST_F(ControlCounts, AnotherOptionCountsAgainAndTheSameShowsTheReport) {
    addForm(u"A");
    EXPECT_TRUE(runsAgain(1));
    EXPECT_FALSE(runsAgain(1));
    EXPECT_TRUE(runsAgain(3));
    EXPECT_TRUE(runsAgain(1));
    EXPECT_EQ(reportsShown(u"R_RvControlCount"), 4);
}

TEST_F(ControlCounts, CounterBeyond32767IsAnOverflow) {
    FakeForm& form = addForm(u"F");
    form.add(u"c", labelType);
    selectOnce();
    context().CurDesign = &form;
    context().ControlCounters[1] = std::numeric_limits<std::int16_t>::max();
    try {
        CountControls(context());
        FAIL() << "it was counted";
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.is(ErrorNumber::Overflow));
    }
    ClearControlCounters(context());
    for (const std::int16_t counter : context().ControlCounters) {
        EXPECT_EQ(counter, 0);
    }
}

TEST_F(ControlCounts, FailureIsReportedUnderItsPlaceAndTheRowsSoFarStay) {
    addForm(u"A");
    target->addDocument(u"Forms", u"gone");
    runCounts(3);
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:コントロール数ｴﾗｰNo:2102\r場所、ｴﾗｰNo、内容を"))
        << toUtf8(dialogs.lastText());
    EXPECT_EQ(names(), (std::vector<Text>{u"A"}));
    EXPECT_FALSE(desk->ended());
    EXPECT_EQ(context().DoneControl, 0);
    targetApps.failing[u"OpenForm"] = 2500;
    runCounts(1);
    EXPECT_TRUE(desk->ended()) << "an error of Access ends the program";
}

} // namespace
} // namespace relvane
