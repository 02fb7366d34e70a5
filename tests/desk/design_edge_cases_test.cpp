// What is easily got wrong in the lists of forms, reports and control counts, on a real file made for that.
#include <gtest/gtest.h>

#include "platform/codepage.h"
#include "real_program.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/many_forms.h"

namespace relvane {
namespace {

using test::RealProgram;
using test::StoredRow;

struct DesignEdgeCases : testing::Test, RealProgram {
    DesignEdgeCases() {
        select(test::ownSample("juchu.mdb"));
        dialogs.boxes.clear(); // it starts with a macro, which the selection says
    }

    void runForms(int option) {
        form().optForm.choose(option - 1);
        EXPECT_TRUE(press(form().cmdForm));
    }
    void runReports(int option) {
        form().optReport.choose(option - 1);
        EXPECT_TRUE(press(form().cmdReport));
    }
    void runCounts(int option) {
        form().optControl.choose(option - 1);
        EXPECT_TRUE(press(form().cmdControl));
    }

    StoredRow formRow(const Text& name) { return rowOf(u"T_RvFrmInfo", u"FormName", name); }
    StoredRow reportRow(const Text& name) { return rowOf(u"T_RvRepInfo", u"ReportName", name); }
    StoredRow countRow(const Text& name) { return rowOf(u"T_RvControlCount", u"ObjectName", name); }

    // The rows of one control as "group|label|text".
    std::vector<std::string> formItems(const Text& form, const Text& control) {
        return textsOf(u"T_RvFrmItem", formRow(form).at(u"objectNo"), control);
    }
    std::vector<std::string> reportItems(const Text& report, const Text& control) {
        return textsOf(u"T_RvRepItem", reportRow(report).at(u"objectNo"), control);
    }
    static bool hasLabel(const std::vector<std::string>& items, const std::string& label) {
        return std::ranges::any_of(items, [&](const std::string& item) {
            return item.find("|" + label + "|") != std::string::npos;
        });
    }

private:
    StoredRow rowOf(TextView table, const Text& field, const Text& value) {
        for (StoredRow& row : rows(table)) {
            if (row.at(field) == Value(value)) {
                return row;
            }
        }
        ADD_FAILURE() << "no row of " << toUtf8(value);
        return {};
    }
    std::vector<std::string> textsOf(TextView table, const Value& objectNo, const Text& control) {
        std::vector<std::string> texts;
        for (const StoredRow& row : rows(table)) {
            if (row.at(u"objectNo") == objectNo && row.at(u"Name") == Value(control)) {
                texts.push_back(toUtf8(toText(row.at(u"Bunrui")) + u"|" + toText(row.at(u"PropertyName")) +
                                       u"|" + toText(row.at(u"PropertyValue"))));
            }
        }
        return texts;
    }
};

using Items = std::vector<std::string>;

TEST_F(DesignEdgeCases, FormWithMoreThanFourEventsKeepsTheFirstFour) {
    runForms(1);
    const StoredRow row = formRow(u"メインメニュー");
    const std::pair<Text, Text> expected[] = {{u"開く時", u"[Event Procedure]"},
                                              {u"読込時", u"[Event Procedure]"},
                                              {u"読込解放時", u"[Event Procedure]"},
                                              {u"閉じる時", u"月次処理.終了"}};
    for (int i = 0; i < 4; ++i) {
        const Text number = toText(static_cast<long long>(i + 1));
        EXPECT_EQ(row.at(u"Ibent" + number), Value(expected[i].first));
        EXPECT_EQ(row.at(u"IbentVL" + number), Value(expected[i].second));
    }
}

TEST_F(DesignEdgeCases, PlacesWithoutAnEventStandEmptyAndTheirTextsNull) {
    runForms(1);
    const StoredRow row = formRow(u"F_1998");
    for (const Text number : {u"1", u"2", u"3", u"4"}) {
        EXPECT_EQ(row.at(u"Ibent" + number), Value(Text()));
        EXPECT_EQ(row.at(u"IbentVL" + number), Value(Null{}));
    }
}

TEST_F(DesignEdgeCases, CaptionOfAFormIsCutAt100Characters) {
    runForms(1);
    EXPECT_EQ(std::get<Text>(formRow(u"ｲﾍﾞﾝﾄ調査").at(u"Caption")).size(), 100u);
}

TEST_F(DesignEdgeCases, LockedComboBoxHasNoRowOfItsDefaultAndAnotherOneEndsInNo) {
    runForms(2);
    EXPECT_FALSE(hasLabel(formItems(u"受注入力", u"運送会社ID"), "規定値・編集ﾛｯｸ"));
    const Items items = formItems(u"受注入力", u"得意先コード");
    EXPECT_NE(std::ranges::find(items, "ﾃﾞｰﾀ|規定値・編集ﾛｯｸ|・いいえ"), items.end());
    EXPECT_NE(std::ranges::find(items, "ﾃﾞｰﾀ|入力ﾁｪｯｸ(ﾒｯｾｰｼﾞ)|はい(台帳にない得意先です。)"), items.end());
}

TEST_F(DesignEdgeCases, FullListOfATextBoxHasAllItsRows) {
    runForms(2);
    EXPECT_EQ(formItems(u"受注入力", u"受注日"),
              (Items{"ﾃﾞｰﾀ|ｺﾝﾄﾛｰﾙｿｰｽ|受注日", "書式|書式・定型入力|yyyy/mm/dd・9999\\/99\\/99;0;_",
                     "その他|IMEﾓｰﾄﾞ・保持|オフ・いいえ", "ﾃﾞｰﾀ|規定値・編集ﾛｯｸ|=Date()・いいえ",
                     "ﾃﾞｰﾀ|入力規則(ﾒｯｾｰｼﾞ)|>=#97/9/1#(運用開始より前の日付です。)",
                     "ﾃﾞｰﾀ|ｽﾃｰﾀｽﾊﾞｰ|伝票の日付", "その他|ﾀﾌﾞｽﾄｯﾌﾟ・移動順|はい・1"}));
}

TEST_F(DesignEdgeCases, TextBoxOfAFormWithoutASourceSaysSo) {
    for (const int option : {1, 2}) {
        runForms(option);
        EXPECT_EQ(formItems(u"検索条件", u"開始日").at(0), "ﾃﾞｰﾀ|ｺﾝﾄﾛｰﾙｿｰｽ|なし");
    }
}

TEST_F(DesignEdgeCases, FormWithoutARecordSourceHasTheLabelAlone) {
    runForms(1);
    EXPECT_EQ(formRow(u"メインメニュー").at(u"RecordSource"), Value(Text(u"ﾚｺｰﾄﾞｿｰｽ : ")));
    EXPECT_EQ(formRow(u"受注入力").at(u"RecordSource"), Value(Text(u"ﾚｺｰﾄﾞｿｰｽ : 受注")));
}

TEST_F(DesignEdgeCases, MembersOfAnOptionGroupHaveNeitherEventsNorASource) {
    runForms(2);
    const std::pair<Text, Items> members[] = {{u"組の印", {"ﾃﾞｰﾀ|ｵﾌﾟｼｮﾝ値・編集ﾛｯｸ|1・いいえ"}},
                                              {u"組の丸", {"ﾃﾞｰﾀ|ｵﾌﾟｼｮﾝ値・編集ﾛｯｸ|2・いいえ"}},
                                              {u"組の釦", {"ﾃﾞｰﾀ|ｵﾌﾟｼｮﾝ値・編集ﾛｯｸ|3・いいえ"}}};
    for (const auto& [name, items] : members) {
        EXPECT_EQ(formItems(u"ｲﾍﾞﾝﾄ調査", name), items);
        EXPECT_EQ(formItems(u"ｲﾍﾞﾝﾄ調査", name + u"上"), items);
    }
}

// The same control in a header has three properties less than in the detail section, which moves its events.
TEST_F(DesignEdgeCases, EventsAreFoundWhereverTheControlStands) {
    runForms(2);
    const std::pair<Text, long> counts[] = {{u"文字", 15}, {u"選択", 16}, {u"一覧", 14},
                                            {u"印", 14},   {u"丸", 14},   {u"釦", 14},
                                            {u"組", 9},    {u"実行", 12}, {u"絵", 5}};
    for (const auto& [name, expected] : counts) {
        for (const Text& place : {Text(), Text(u"上")}) {
            const Items items = formItems(u"ｲﾍﾞﾝﾄ調査", name + place);
            const long events = std::ranges::count_if(
                items, [](const std::string& item) { return item.starts_with("ｲﾍﾞﾝﾄ|"); });
            EXPECT_EQ(events, expected) << toUtf8(name + place);
            EXPECT_FALSE(hasLabel(items, "?")) << toUtf8(name + place);
        }
    }
    EXPECT_EQ(formItems(u"ｲﾍﾞﾝﾄ調査", u"札"), (Items{"書式|標題|札"})) << "events of a label are not listed";
}

TEST_F(DesignEdgeCases, PageBreakHasTwoMeasuresAndARectangleFour) {
    runReports(1);
    for (const StoredRow& row : rows(u"T_RvRepItem")) {
        if (row.at(u"Name") == Value(Text(u"改ﾍﾟｰｼﾞ"))) {
            EXPECT_EQ(row.at(u"TLWH"), Value(Text(u"4.199cm・0cm")));
        }
        if (row.at(u"Name") == Value(Text(u"枠"))) {
            // 5046 twips are 8.89947 cm: 8.8995 with four places, and so 8.9 with three.
            EXPECT_EQ(row.at(u"TLWH"), Value(Text(u"10.399cm・8.9cm・4cm・1.7cm")));
        }
    }
    EXPECT_EQ(reportItems(u"様式見本", u"枠"), (Items{"書式|線種・線幅|一点鎖線・2"}));
}

TEST_F(DesignEdgeCases, ThousandTwipsAre1764Thousandths) {
    runForms(1);
    bool isFound = false;
    for (const StoredRow& row : rows(u"T_RvFrmItem")) {
        if (row.at(u"Name") == Value(Text(u"下限額"))) {
            isFound = true;
            EXPECT_EQ(row.at(u"TLWH"), Value(Text(u"1.764cm・3cm・3cm・0.45cm")));
        }
    }
    EXPECT_TRUE(isFound);
}

TEST_F(DesignEdgeCases, CustomControlAndPageBreakOfAFormHaveOneEmptyRowAndATabTellsItsOrder) {
    for (const int option : {1, 2}) {
        runForms(option);
        EXPECT_EQ(formItems(u"検索条件", u"ｶﾚﾝﾀﾞｰ"), (Items{"||"}));
        EXPECT_EQ(formItems(u"得意先台帳", u"改ﾍﾟｰｼﾞ"), (Items{"||"}));
        EXPECT_EQ(formItems(u"得意先台帳", u"ﾀﾌﾞ"), (Items{"その他|ﾀﾌﾞｽﾄｯﾌﾟ・移動順|はい・0"}));
    }
}

TEST_F(DesignEdgeCases, CustomControlTabAndPageBreakOfAReportHaveOneEmptyRow) {
    for (const int option : {1, 2}) {
        runReports(option);
        for (const Text name : {u"ﾊﾞｰｺｰﾄﾞ", u"ﾀﾌﾞ", u"改ﾍﾟｰｼﾞ"}) {
            EXPECT_EQ(reportItems(u"様式見本", name), (Items{"||"})) << toUtf8(name);
        }
    }
}

TEST_F(DesignEdgeCases, TextBoxOfAReportWithoutASourceHasNoRow) {
    for (const int option : {1, 2}) {
        runReports(option);
        EXPECT_EQ(reportItems(u"受注一覧表", u"備考欄"), Items());
        EXPECT_EQ(reportItems(u"受注一覧表", u"担当"), (Items{"ﾃﾞｰﾀ|ｺﾝﾄﾛｰﾙｿｰｽ|担当"}));
    }
}

TEST_F(DesignEdgeCases, MembersOfAGroupOnAReportTellTheirValueAlone) {
    runReports(2);
    EXPECT_EQ(reportItems(u"様式見本", u"飲料"), (Items{"ﾃﾞｰﾀ|ｵﾌﾟｼｮﾝ値|1"}));
    EXPECT_EQ(reportItems(u"様式見本", u"調味料"), Items()) << "it is locked";
    EXPECT_EQ(reportItems(u"様式見本", u"乳製品"), (Items{"ﾃﾞｰﾀ|ｵﾌﾟｼｮﾝ値|4"}));
    EXPECT_EQ(reportItems(u"様式見本", u"廃番"), (Items{"ﾃﾞｰﾀ|ｺﾝﾄﾛｰﾙｿｰｽ|廃番"}));
}

TEST_F(DesignEdgeCases, ReportWithTenLevelsHasTenRowsInBothLists) {
    for (const int option : {1, 2}) {
        runReports(option);
        const Value objectNo = reportRow(u"受注分析表").at(u"objectNo");
        std::vector<Value> numbers;
        for (const StoredRow& row : rows(u"T_RvRepGrp")) {
            if (row.at(u"objectNo") == objectNo) {
                numbers.push_back(row.at(u"GroupNo"));
            }
        }
        ASSERT_EQ(numbers.size(), 10u);
        EXPECT_EQ(numbers.front(), Value(std::int64_t{0}));
        EXPECT_EQ(numbers.back(), Value(std::int64_t{9}));
    }
}

TEST_F(DesignEdgeCases, ReportWithoutLevelsHasNoRowOfThemAndIsListed) {
    runReports(2);
    const Value objectNo = reportRow(u"様式見本").at(u"objectNo");
    for (const StoredRow& row : rows(u"T_RvRepGrp")) {
        EXPECT_NE(row.at(u"objectNo"), objectNo);
    }
    EXPECT_TRUE(dialogs.boxes.empty()) << toUtf8(dialogs.lastText());
}

TEST_F(DesignEdgeCases, FormWithoutControlsIsCountedAsZeros) {
    runCounts(3);
    for (const auto& [column, value] : countRow(u"F_1998")) {
        if (column.ends_with(u"Count")) {
            EXPECT_EQ(value, Value(std::int64_t{0})) << toUtf8(column);
        }
    }
    EXPECT_EQ(countRow(u"様式見本").at(u"CustomControlCount"), Value(std::int64_t{1}));
}

TEST_F(DesignEdgeCases, FormsAndReportsAreCountedInOneSeriesFormsFirst) {
    runCounts(3);
    const auto counted = rows(u"T_RvControlCount");
    bool isReport = false;
    for (std::size_t i = 0; i < counted.size(); ++i) {
        EXPECT_EQ(counted[i].at(u"objectNo"), Value(static_cast<std::int64_t>(i + 1)));
        const bool now = counted[i].at(u"Class") == Value(Text(u"Report"));
        EXPECT_TRUE(now || !isReport);
        isReport = now;
    }
    EXPECT_TRUE(isReport);
    const auto forms = static_cast<std::size_t>(desk->context.FormCount);
    EXPECT_EQ(counted.size(), forms + static_cast<std::size_t>(desk->context.ReportCount));
    runCounts(1);
    EXPECT_EQ(rows(u"T_RvControlCount").size(), forms);
}

TEST_F(DesignEdgeCases, OneChosenFormIsListedAlone) {
    const auto& names = form().cboForm.List();
    form().cboForm.choose(static_cast<int>(std::ranges::find(names, Text(u"F_1998")) - names.begin()));
    form().optFSelect.choose(1);
    runForms(2);
    EXPECT_EQ(rows(u"T_RvFrmInfo").size(), 1u);
    EXPECT_TRUE(rows(u"T_RvFrmItem").empty());
}

// The name of a control is the last place of one form's design that is spoilt here.
TEST(DamagedDesign, IsReportedAndTheFormsBeforeItStayInTheList) {
    std::string bytes = test::bytesOf(test::ownSample("juchu.mdb"));
    const std::size_t name = bytes.rfind(encode(u"下限額", japaneseCodePage));
    ASSERT_NE(name, std::string::npos);
    bytes.replace(name - 3, 3, "\xff\xff\xff");
    test::TemporaryFolder folder;
    std::ofstream(folder / "damaged.mdb", std::ios::binary) << bytes;

    RealProgram program;
    ASSERT_TRUE(program.select(folder / "damaged.mdb"));
    program.dialogs.boxes.clear();
    std::size_t before = 0; // forms before the damaged one
    for (const Text& form : program.form().cboForm.List()) {
        if (form == u"検索条件") {
            break;
        }
        ++before;
    }
    for (std::size_t run = 1; run <= 2; ++run) {
        EXPECT_TRUE(program.press(program.form().cmdForm));
        ASSERT_EQ(program.dialogs.boxes.size(), run);
        EXPECT_TRUE(program.dialogs.lastText().starts_with(
            u"場所:フォーム情報ｴﾗｰNo:3049\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:"))
            << toUtf8(program.dialogs.lastText());
        EXPECT_EQ(program.rows(u"T_RvFrmInfo").size(), before);
        EXPECT_FALSE(program.rows(u"T_RvFrmItem").empty());
    }
    program.press(program.form().cmdReport);
    EXPECT_EQ(program.dialogs.boxes.size(), 2u) << "the reports are whole";
    EXPECT_EQ(program.rows(u"T_RvRepInfo").size(),
              static_cast<std::size_t>(program.desk->context.ReportCount));
    EXPECT_EQ(test::bytesOf(folder / "damaged.mdb"), bytes);
}

TEST(ManyControls, ControlBehindThe32767thEndsTheListWithAnOverflow) {
    test::TemporaryFolder folder;
    samples::writeDatabase(samples::manyForms(64, 512), folder / "forms.mdb");
    RealProgram program;
    ASSERT_TRUE(program.select(folder / "forms.mdb"));
    program.press(program.form().cmdForm);
    EXPECT_TRUE(program.dialogs.lastText().starts_with(u"場所:フォーム情報ｴﾗｰNo:6\r"))
        << toUtf8(program.dialogs.lastText());
    EXPECT_FALSE(program.desk->ended());
    EXPECT_EQ(program.desk->context.CurControl.ControlNo, 32767);
    EXPECT_EQ(program.rows(u"T_RvFrmInfo").size(), 64u);
    // It stays so for as long as the program runs; the census does not number controls.
    program.press(program.form().cmdForm);
    EXPECT_TRUE(program.rows(u"T_RvFrmItem").empty());
    program.dialogs.boxes.clear();
    program.press(program.form().cmdControl);
    EXPECT_EQ(program.rows(u"T_RvControlCount").size(), 64u);
    EXPECT_TRUE(program.dialogs.boxes.empty());
}

} // namespace
} // namespace relvane
