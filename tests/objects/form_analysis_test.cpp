// The row of a form, and a run of the panel of forms as a whole.
#include "objects/form_analysis.h"

#include <limits>

#include "design_program.h"

namespace relvane {
namespace {

using namespace test;

constexpr int firstEvent = 76, lastEvent = 102;

struct FormAnalysis : testing::Test, DesignProgram {
    const std::vector<FakeRow>& forms(int option = 2) {
        runForms(option);
        return store.rows(u"T_RvFrmInfo");
    }
    const std::vector<FakeRow>& items(int option = 2) {
        runForms(option);
        return store.rows(u"T_RvFrmItem");
    }
    // Whether a press walks, and does not only show the list.
    bool runsAgain(int option) {
        store.log.clear();
        runForms(option);
        return !store.log.empty();
    }
    static constexpr std::pair<TextView, TextView> slots[] = {{u"Ibent1", u"IbentVL1"},
                                                              {u"Ibent2", u"IbentVL2"},
                                                              {u"Ibent3", u"IbentVL3"},
                                                              {u"Ibent4", u"IbentVL4"}};
};

// ---- The row of a form

TEST_F(FormAnalysis, RowHasItsFieldsInOrder) {
    FakeForm& form = addForm(u"受注");
    form.set(u"RecordSource", text(u"受注クエリー"))
        .set(u"Filter", text(u"年 = 97"))
        .set(u"OrderBy", text(u"番号 DESC"))
        .set(u"Caption", text(u"受注入力  "))
        .set(u"DefaultView", number(2))
        .set(u"AllowEdits", true)
        .set(u"AllowDeletions", false)
        .set(u"AllowAdditions", true)
        .set(u"DataEntry", false)
        .set(u"RecordsetType", number(1))
        .set(u"RecordLocks", number(2))
        .set(u"PopUp", true)
        .set(u"Modal", false)
        .set(u"MenuBar", text(u"メニュー"))
        .put(76, u"OnCurrent", text(u"[Event Procedure]"));
    for (const int option : {1, 2}) {
        const FakeRow expected = {{u"objectNo", number(1)},
                                  {u"RecordSource", text(u"ﾚｺｰﾄﾞｿｰｽ : 受注クエリー")},
                                  {u"Filter", text(u"フィルタ : 年 = 97")},
                                  {u"OrderBy", text(u"並べ替え : 番号 DESC")},
                                  {u"Caption", text(u"受注入力")},
                                  {u"DefaultView", number(2)},
                                  {u"AllowEdits", true},
                                  {u"AllowDeletions", false},
                                  {u"AllowAdditions", true},
                                  {u"DataEntry", false},
                                  {u"RecordsetType", number(1)},
                                  {u"RecordLocks", number(2)},
                                  {u"PopUp", true},
                                  {u"Modal", false},
                                  {u"Smenubar", text(u"メニュー")},
                                  {u"Midasi", number(option)},
                                  {u"Ibent1", text(u"ﾚｺｰﾄﾞ移動時")},
                                  {u"IbentVL1", text(u"[Event Procedure]")},
                                  {u"FormName", text(u"受注")},
                                  {u"DateCreated", DateTime{1997, 1, 2, 3, 4, 5}},
                                  {u"LastUpdated", DateTime{1998, 2, 3, 4, 5, 6}}};
        EXPECT_EQ(forms(option).at(0), expected) << "option " << option;
    }
}

TEST_F(FormAnalysis, FormWithoutARecordSourceHasTheLabelAlone) {
    addForm(u"F");
    const FakeRow& row = forms().at(0);
    EXPECT_EQ(valueOf(row, u"RecordSource"), text(u"ﾚｺｰﾄﾞｿｰｽ : "));
    EXPECT_EQ(valueOf(row, u"Filter"), text(u"フィルタ : "));
    EXPECT_EQ(valueOf(row, u"OrderBy"), text(u"並べ替え : "));
}

TEST_F(FormAnalysis, NullTextsAddNothingToTheirLabels) {
    addForm(u"F").set(u"RecordSource", Null{}).set(u"Caption", Null{});
    const FakeRow& row = forms().at(0);
    EXPECT_EQ(valueOf(row, u"RecordSource"), text(u"ﾚｺｰﾄﾞｿｰｽ : "));
    EXPECT_EQ(valueOf(row, u"Caption"), text(u""));
}

TEST_F(FormAnalysis, CaptionIsCutAt100CharactersAndThenTrimmed) {
    addForm(u"A").set(u"Caption", text(Text(101, u'あ')));
    addForm(u"B").set(u"Caption", text(Text(99, u'い') + u"  x"));
    const auto& rows = forms();
    EXPECT_EQ(valueOf(rows.at(0), u"Caption"), text(Text(100, u'あ')));
    EXPECT_EQ(valueOf(rows.at(1), u"Caption"), text(Text(99, u'い')));
}

TEST_F(FormAnalysis, FirstFourEventsAreKeptInTheOrderOfTheProperties) {
    FakeForm& form = addForm(u"F");
    const std::pair<Text, Text> labels[] = {
        {u"OnGotFocus", u"ﾌｫｰｶｽ取得後"}, {u"OnLoad", u"読込時"},       {u"OnClose", u"閉じる時"},
        {u"KeyPreview", u"?"},           {u"OnUnload", u"読込解放時"},
    };
    for (int i = 0; i < 5; ++i) {
        form.put(80 + 3 * i, labels[i].first, text(u"=M" + toText(static_cast<long long>(i)) + u"()"));
    }
    const FakeRow& row = forms().at(0);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(valueOf(row, slots[i].first), text(labels[i].second));
        EXPECT_EQ(valueOf(row, slots[i].second), text(u"=M" + toText(static_cast<long long>(i)) + u"()"));
    }
    EXPECT_EQ(fieldNames(row).size(), 16u + 8 + 3) << "the fifth is dropped";
}

TEST_F(FormAnalysis, EventsAreSearchedFrom76To102) {
    for (const int position : {firstEvent - 1, firstEvent, 90, lastEvent, lastEvent + 1}) {
        DesignProgram program;
        program.addForm(u"F").put(position, u"OnOpen", text(u"マクロ"));
        program.runForms(2);
        const bool isFound = valueOf(program.store.rows(u"T_RvFrmInfo").at(0), u"Ibent1") == text(u"開く時");
        EXPECT_EQ(isFound, position >= firstEvent && position <= lastEvent) << position;
    }
}

TEST_F(FormAnalysis, EmptyAndNullEventsTakeNoPlace) {
    addForm(u"F")
        .put(77, u"BeforeInsert", text(u""))
        .put(78, u"AfterInsert", Null{})
        .put(79, u"BeforeUpdate", false)
        .put(80, u"AfterUpdate", text(u"マクロ"));
    const FakeRow& row = forms().at(0);
    EXPECT_EQ(valueOf(row, u"Ibent1"), text(u"更新前処理"));
    EXPECT_EQ(valueOf(row, u"IbentVL1"), text(u"False")) << "False is not empty";
    EXPECT_EQ(valueOf(row, u"Ibent2"), text(u"更新後処理"));
    EXPECT_EQ(valueOf(row, u"Ibent3"), Value(Null{})) << "left to the column's default, an empty text";
}

TEST_F(FormAnalysis, TextsOfEventsAreCutAt60CharactersAndThenTrimmed) {
    addForm(u"F").put(80, u"OnOpen", text(Text(70, u'x'))).put(81, u"OnLoad", text(Text(58, u'y') + u"   z"));
    const FakeRow& row = forms().at(0);
    EXPECT_EQ(valueOf(row, u"IbentVL1"), text(Text(60, u'x')));
    EXPECT_EQ(valueOf(row, u"IbentVL2"), text(Text(58, u'y')));
}

TEST_F(FormAnalysis, LowestDescriptionStandsAndItsNameIsComparedExactly) {
    addForm(u"A");
    addForm(u"B");
    const auto& documents = target->containers.Item(u"Forms").Documents();
    documents.Item(0).Properties() = properties(
        {{u"Description", text(u"lowest")}, {u"x", text(u"y")}, {u"Description", text(u"highest")}});
    documents.Item(1).Properties() = properties({{u"description", text(u"other case")}});
    const auto& rows = forms();
    EXPECT_EQ(valueOf(rows.at(0), u"Description"), text(u"lowest"));
    EXPECT_EQ(std::ranges::count(fieldNames(rows.at(0)), u"Description"), 2) << "the walk does not stop";
    EXPECT_EQ(std::ranges::count(fieldNames(rows.at(1)), u"Description"), 0);
}

TEST_F(FormAnalysis, FormWhoseNameWasCutFindsNoDocument) {
    const Text name(151, u'F');
    addForm(name);
    const FakeRow& row = forms().at(0);
    for (const TextView field : {u"FormName", u"DateCreated", u"LastUpdated"}) {
        EXPECT_EQ(std::ranges::count(fieldNames(row), Text(field)), 0);
    }
    EXPECT_TRUE(dialogs.boxes.empty()) << "it was opened and closed by its whole name";
    chooseForm(name);
    EXPECT_EQ(valueOf(forms().at(0), u"FormName"), text(name)) << "a chosen name is kept whole";
}

TEST_F(FormAnalysis, DocumentIsFoundByTheExactName) {
    FakeForm& form = addForm(u"F");
    selectOnce();
    context().CurDesign = &form;
    context().CurDesignName = u"f";
    context().WorkRs1 = std::make_unique<FakeRecordset>(store, u"I");
    AnalyzeFormSimple(context());
    EXPECT_EQ(std::ranges::count(fieldNames(store.rows(u"I").at(0)), u"FormName"), 0);
}

TEST_F(FormAnalysis, ShortAndFullListDifferInTheirItemsAlone) {
    FakeForm& form = addForm(u"F");
    form.add(u"押す", commandButtonType)
        .set(u"Caption", text(u"実行"))
        .set(u"Picture", text(u""))
        .set(u"TabStop", false)
        .set(u"ControlTipText", text(u"助言"));
    const FakeRow full = forms(2).at(0);
    EXPECT_EQ(items(2).size(), 2u);
    FakeRow brief = forms(1).at(0);
    EXPECT_EQ(items(1).size(), 1u);
    EXPECT_EQ(valueOf(brief, u"Midasi"), number(1));
    for (auto& [name, value] : brief) {
        value = name == u"Midasi" ? number(2) : value;
    }
    EXPECT_EQ(brief, full);
}

// ---- Numbers of controls

TEST_F(FormAnalysis, ControlsAreNumberedOnOverFormsAndLaterAnalyses) {
    FakeForm& first = addForm(u"A");
    addLabel(first, u"1");
    addLabel(first, u"2");
    addLabel(addForm(u"B"), u"3");
    FakeReport& report = addReport(u"R");
    addLabel(report, u"4");
    items(1);
    EXPECT_EQ(column(u"T_RvFrmItem", u"ControlNo"), (std::vector<Text>{u"1", u"2", u"3"}));
    EXPECT_EQ(column(u"T_RvFrmItem", u"objectNo"), (std::vector<Text>{u"1", u"1", u"2"}));
    runReports(1);
    EXPECT_EQ(column(u"T_RvRepItem", u"ControlNo"), (std::vector<Text>{u"4"}));
    items(2);
    EXPECT_EQ(column(u"T_RvFrmItem", u"ControlNo"), (std::vector<Text>{u"5", u"6", u"7"}));
    EXPECT_EQ(column(u"T_RvFrmItem", u"objectNo"), (std::vector<Text>{u"1", u"1", u"2"})) << "anew";
}

TEST_F(FormAnalysis, ControlBehindThe32767thIsAnOverflow) {
    FakeForm& form = addForm(u"F");
    addLabel(form, u"last");
    addLabel(form, u"one too many");
    selectOnce();
    context().CurControl.ControlNo = std::numeric_limits<std::int16_t>::max() - 1;
    EXPECT_EQ(items(1).size(), 1u);
    EXPECT_EQ(valueOf(store.rows(u"T_RvFrmItem")[0], u"ControlNo"), number(32767));
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:フォーム情報ｴﾗｰNo:6\r")) << toUtf8(dialogs.lastText());
    EXPECT_FALSE(desk->ended());
}

// ---- A run

TEST_F(FormAnalysis, RowsAreOpenedFormsFirstAndEmptiedItemsFirst) {
    addForm(u"F");
    selectOnce();
    store.log.clear();
    runForms(2);
    EXPECT_EQ(store.log,
              (std::vector<Text>{u"open T_RvFrmInfo", u"open T_RvFrmItem", u"delete * from T_RvFrmItem;",
                                 u"delete * from T_RvFrmInfo;", u"close T_RvFrmInfo", u"close T_RvFrmItem"}));
}

TEST_F(FormAnalysis, EachFormIsOpenedInDesignViewHiddenAndClosedWithoutSaving) {
    FakeForm& first = addForm(u"A");
    FakeForm& second = addForm(u"B");
    selectOnce();
    targetApps.calls.clear();
    runForms(1);
    EXPECT_EQ(targetApps.calls, (std::vector<Text>{u"OpenForm A 1", u"CloseObject 2 A 2", u"OpenForm B 1",
                                                   u"CloseObject 2 B 2"}));
    EXPECT_FALSE(first.visible);
    EXPECT_FALSE(second.visible);
    EXPECT_EQ(targetApps.forms.countOpen(), 0);
    EXPECT_EQ(context().CurDesign, nullptr);
}

TEST_F(FormAnalysis, ChosenFormAloneIsListed) {
    addForm(u"A");
    addLabel(addForm(u"B"), u"x");
    chooseForm(u"B");
    watch();
    EXPECT_EQ(items().size(), 1u);
    EXPECT_EQ(column(u"T_RvFrmInfo", u"FormName"), (std::vector<Text>{u"B"}));
    EXPECT_EQ(column(u"T_RvFrmInfo", u"objectNo"), (std::vector<Text>{u"1"}));
}

TEST_F(FormAnalysis, MessagesAndGaugeFollowTheWalkOverAllForms) {
    for (const TextView name : {u"A", u"B", u"C"}) {
        addForm(Text(name));
    }
    selectOnce();
    std::vector<Text>& shown = watch();
    runForms(1);
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"フォーム情報　取得中", u"フォーム情報　取得中　(A)", u"33%",
                                        u"フォーム情報　取得中　(B)", u"67%", u"フォーム情報　取得中　(C)",
                                        u"終了しました", u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"}));
    EXPECT_EQ(form().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(form().Timer1.Interval, 5000);
}

TEST_F(FormAnalysis, ChosenFormHasNeitherMessageNorGaugeOfItsOwn) {
    addForm(u"A");
    addForm(u"B");
    chooseForm(u"A");
    std::vector<Text>& shown = watch();
    runForms(2);
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"フォーム情報　取得中", u"終了しました",
                                        u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"}));
}

TEST_F(FormAnalysis, WindowWaitsWhileItWalksAndBothListsShowTheSameReport) {
    addForm(u"A");
    selectOnce();
    form().cmdFPre.Enabled = false;
    bool enabled = true;
    MousePointer pointer = MousePointer::Normal;
    store.onUpdate = [&](TextView) {
        enabled = form().Enabled;
        pointer = form().Pointer;
    };
    runForms(2);
    EXPECT_FALSE(enabled);
    EXPECT_EQ(pointer, MousePointer::Hourglass);
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
    EXPECT_TRUE(form().cmdFPre.Enabled);
    EXPECT_EQ(context().DoneForm, 2);
    runForms(1);
    EXPECT_EQ(context().DoneForm, 1);
    EXPECT_EQ(reportsShown(u"R_RvFrmCntl"), 2);
}

// ---- When a press repeats nothing

TEST_F(FormAnalysis, RunOverAllFormsIsRepeatedOnlyForAnotherOption) {
    addForm(u"A");
    EXPECT_TRUE(runsAgain(1));
    EXPECT_FALSE(runsAgain(1));
    EXPECT_TRUE(runsAgain(2));
    EXPECT_TRUE(runsAgain(1));
    EXPECT_EQ(reportsShown(u"R_RvFrmCntl"), 4) << "the list is shown each time";
}

TEST_F(FormAnalysis, ChosenFormIsReadAgainForAnotherNameOrScope) {
    addForm(u"A");
    addForm(u"B");
    chooseForm(u"A");
    EXPECT_TRUE(runsAgain(1));
    EXPECT_FALSE(runsAgain(1));
    chooseForm(u"B");
    EXPECT_TRUE(runsAgain(1));
    form().optFSelect.choose(0);
    EXPECT_TRUE(runsAgain(1)) << "never one form's rows under all";
    EXPECT_FALSE(runsAgain(1));
}

TEST_F(FormAnalysis, RunOverAllFormsLeavesTheRememberedNameAsItIs) {
    addForm(u"A");
    addForm(u"B");
    runForms(1);
    chooseForm(u"A");
    EXPECT_TRUE(runsAgain(1)) << "no name was remembered yet";
    form().optFSelect.choose(0);
    runForms(1);
    EXPECT_EQ(context().LastForm.name, u"A");
}

// ---- Errors

TEST_F(FormAnalysis, AccessErrorsEndTheProgram) {
    addForm(u"F").fail(u"Filter", 2455);
    runForms(2);
    EXPECT_TRUE(std::ranges::any_of(dialogs.boxes, [](const FakeDialogs::Box& box) {
        return box.text.starts_with(u"場所:フォーム情報ｴﾗｰNo:2455\rシステムが不安定です。\r");
    }));
    EXPECT_TRUE(desk->ended());
    EXPECT_FALSE(desk->failed());
}

TEST_F(FormAnalysis, OlderFileIsSaidInABoxOfItsOwn) {
    addForm(u"F").fail(u"Filter", 7866);
    runForms(2);
    EXPECT_EQ(dialogs.lastText(),
              u"Access97以前のバージョンのファイルです。\rAccess97形式に変換して下さい。");
    EXPECT_FALSE(desk->ended());
}

TEST_F(FormAnalysis, DamagedFormIsReportedAndTheRowsSoFarStay) {
    addLabel(addForm(u"A"), u"x");
    FakeForm& damaged = addForm(u"B");
    addLabel(damaged, u"good");
    addLabel(damaged, u"bad").fail(u"Caption", 3049);
    addForm(u"C");
    runForms(2);
    EXPECT_EQ(dialogs.lastText(),
              u"場所:フォーム情報ｴﾗｰNo:3049\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明");
    EXPECT_EQ(column(u"T_RvFrmInfo", u"FormName"), (std::vector<Text>{u"A", u"B"}));
    EXPECT_EQ(column(u"T_RvFrmItem", u"Name"), (std::vector<Text>{u"x", u"good"}));
    EXPECT_TRUE(targetApps.forms.isOpen(u"B")) << "what failed stays open";
    EXPECT_EQ(context().CurDesign, nullptr);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(context().DoneForm, 0);
    EXPECT_EQ(reportsShown(u"R_RvFrmCntl"), 0);
}

TEST_F(FormAnalysis, FormThatAnErrorLeftOpenDoesNotKeepTheNextRunFromReadingIt) {
    int failuresLeft = 1;
    store.onUpdate = [&](TextView table) {
        if (table == u"T_RvFrmItem" && failuresLeft-- > 0) {
            throw RunTimeError(ErrorNumber::DiskFull);
        }
    };
    addLabel(addForm(u"A"), u"x");
    runForms(2);
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_TRUE(targetApps.forms.isOpen(u"A"));
    EXPECT_EQ(items(2).size(), 1u);
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(targetApps.forms.countOpen(), 0);
}

TEST_F(FormAnalysis, FormThatIsNoLongerThereIsReported) {
    target->addDocument(u"Forms", u"gone");
    runForms(2);
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:フォーム情報ｴﾗｰNo:2102\r"));
    EXPECT_FALSE(desk->ended());
}

} // namespace
} // namespace relvane
