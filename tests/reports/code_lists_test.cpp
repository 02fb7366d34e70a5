// The step counts, the comment list and the macro list as they are delivered.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis_samples.h"
#include "pdf_facts.h"
#include "report_samples.h"

namespace relvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::string pageOf(const reports::ReportDocument& document, const std::string& name) {
    return squeezed(pdfText(printed_pdf(document, name)));
}

// ---- Step counts

void addSteps(AnalysedStore& store, const Text& kind, const Text& object, const Text& procedure,
              std::int64_t number, std::int64_t comments, std::int64_t blanks, std::int64_t steps) {
    store.add(u"T_RvProcCount", {{u"Object", kind},
                                 {u"ObjectName", object},
                                 {u"ProcedureName", procedure},
                                 {u"objectNo", number},
                                 {u"ProcedureNo", std::int64_t{1}},
                                 {u"ComentCnt", comments},
                                 {u"SpaceCnt", blanks},
                                 {u"ProcCnt", steps},
                                 {u"TotalCnt", comments + blanks + steps}});
}

reports::ReportDocument stepCounts(AnalysedStore& store) {
    return reports::open(store.rows(), u"R_RvModStep", printed);
}

TEST(StepCounts, AddsUpTheLinesOfEachObjectAndOfAll) {
    AnalysedStore store;
    addSteps(store, u"Form", text("F_受注入力"), u"(Declations)", 1, 3, 1, 4);
    addSteps(store, u"Form", text("F_受注入力"), u"Form_Load", 1, 10, 20, 1000);
    addSteps(store, u"Module", text("M_共通"), u"(Declations)", 2, 0, 0, 2);
    addSteps(store, u"Module", text("M_共通"), text("税込"), 2, 1, 0, 5);
    const auto document = stepCounts(store);
    EXPECT_EQ(toUtf8(document.title()), "ステップ数一覧");
    const auto pdf = printed_pdf(document, "steps-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said :
         {"F_受注入力 フォーム プロシージャ名 コメント 空白行 ステップ 合計行数 (Declations) 3 1 4 8 "
          "Form_Load 10 20 1,000 1,030 合計 2 件 13 21 1,004 1,038",
          "M_共通 モジュール", "(Declations) 0 0 2 2 税込 1 0 5 6 合計 2 件 1 0 7 8",
          "総合計 オブジェクト 2 件 14 21 1,011 1,046"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(factsOf(pdf.string()).outline, ElementsAre("F_受注入力 1", "M_共通 1"));
}

// The number of an object is lowered when its last row is written as the next one begins, and stays so.
TEST(StepCounts, GroupsByObjectAsStoredWhateverItsNumber) {
    AnalysedStore store;
    addSteps(store, u"Module", Text(), u"(Declations)", 0, 0, 0, 0);
    addSteps(store, u"Module", text("M_一"), u"(Declations)", 1, 0, 0, 2);
    addSteps(store, u"Module", text("M_一"), text("甲"), 1, 0, 0, 3);
    addSteps(store, u"Module", text("M_二"), u"(Declations)", 1, 0, 0, 4);
    addSteps(store, u"Module", text("M_二"), text("乙"), 1, 0, 0, 5);
    addSteps(store, u"Form", text("M_二"), text("丙"), 1, 0, 0, 6);
    const std::string page = pageOf(stepCounts(store), "steps-numbers");
    for (const char* said :
         {"(オブジェクトなし) モジュール", "甲 0 0 3 3 合計 2 件 0 0 5 5", "乙 0 0 5 5 合計 2 件 0 0 9 9",
          "M_二 フォーム", "丙 0 0 6 6 合計 1 件", "総合計 オブジェクト 4 件 0 0 20 20"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
}

TEST(StepCounts, GoesOnOverPagesWithTheLongestNames) {
    AnalysedStore store;
    std::int64_t lines = 0;
    for (const Text& name : longestNames()) {
        for (int i = 0; i < 1000; ++i) {
            addSteps(store, u"Report", name, i == 500 ? name : text("手続" + std::to_string(i)), 1, i, i, i);
            lines += 3 * i;
        }
    }
    const auto document = stepCounts(store);
    const std::string all = pageOf(document, "steps-3000");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name).size(), 2U);
    }
    EXPECT_EQ(lines, 4495500);
    EXPECT_THAT(all, HasSubstr("(続き)"));
    EXPECT_THAT(all, HasSubstr(squeezed("総合計 オブジェクト 3 件 1,498,500 1,498,500 1,498,500 4,495,500")));
}

TEST(StepCounts, SaysThatThereIsNothing) {
    AnalysedStore store;
    const auto document = stepCounts(store);
    EXPECT_EQ(document.pageCount(), 1);
    EXPECT_THAT(pdfText(printed_pdf(document, "steps-none")), HasSubstr("該当するデータはありません。"));
}

// ---- Comments

class Comments {
public:
    void object(const Text& kind, const Text& name) {
        kind_ = kind;
        name_ = name;
        ++object_;
    }
    void procedure(const Text& name) {
        procedure_ = name;
        ++number_;
    }
    void comment(const Text& line) {
        store_.add(u"T_RvComment", {{u"Object", kind_},
                                    {u"ObjectName", name_},
                                    {u"ProcedureName", procedure_},
                                    {u"Comment", line},
                                    {u"objectNo", object_},
                                    {u"ProcedureNo", number_}});
    }
    reports::ReportDocument list() { return reports::open(store_.rows(), u"R_RvComment", printed); }

private:
    AnalysedStore store_;
    std::int64_t object_ = 0, number_ = 41; // of procedures: runs on from the analysis before
    Text kind_, name_, procedure_;
};

TEST(CommentList, ShowsTheCommentsOfEachProcedureAsWritten) {
    Comments rows;
    rows.object(u"Form", text("F_受注入力"));
    rows.procedure(u"Form_Load");
    rows.comment(text("' 初期値を入れる"));
    rows.comment(text("    ' 締め日の後は開かない"));
    rows.comment(text("\tREM 旧仕様"));
    rows.procedure(text("更新_Click"));
    rows.comment(text("    '"));
    rows.object(u"Module", text("M_共通"));
    rows.procedure(u"Form_Load");
    rows.comment(text("' 別の Form_Load"));
    const auto document = rows.list();
    EXPECT_EQ(toUtf8(document.title()), "コメント一覧");
    const auto pdf = printed_pdf(document, "comments-3");
    const std::string page = squeezed(pdfText(pdf));
    EXPECT_THAT(page,
                HasSubstr(squeezed("F_受注入力 フォーム Form_Load ' 初期値を入れる ' 締め日の後は開かない "
                                   "REM 旧仕様 更新_Click ' プロシージャ 2 件、コメント 4 件")));
    EXPECT_THAT(page, HasSubstr(squeezed("M_共通 モジュール Form_Load ' 別の Form_Load")));
    EXPECT_THAT(page, HasSubstr(squeezed("オブジェクト 2 件、プロシージャ 3 件、コメント 5 件")));
    // Indentation is kept.
    const auto left = [&](const char16_t* said) {
        return document.search(said).front().rectangles.front().left();
    };
    EXPECT_GT(left(u"締め日の後"), left(u"初期値を入れる") + 200);
    EXPECT_THAT(factsOf(pdf.string()).outline, ElementsAre("F_受注入力 1", "M_共通 1"));
}

TEST(CommentList, NamesObjectAndProcedureWhereTheyGoOn) {
    Comments rows;
    rows.object(u"Module", text("M_説明の多いモジュール"));
    for (int procedure = 0; procedure < 3; ++procedure) {
        rows.procedure(text("手続" + std::to_string(procedure)));
        for (int i = 0; i < 1000; ++i) {
            rows.comment(text("    ' 注 " + std::to_string(i)));
        }
    }
    const auto document = rows.list();
    const std::string all = pdfText(printed_pdf(document, "comments-3000"));
    int page = 0;
    for (std::size_t from = 0, end; (end = all.find('\f', from)) != std::string::npos; from = end + 1) {
        const std::string one = squeezed(all.substr(from, end - from));
        ASSERT_THAT(one, HasSubstr("M_説明の多いモジュール")) << page;
        ASSERT_THAT(one, testing::ContainsRegex("手続[012]")) << page;
        ++page;
    }
    EXPECT_EQ(page, document.pageCount());
    EXPECT_THAT(squeezed(all), HasSubstr(squeezed("プロシージャ 3 件、コメント 3,000 件")));
    EXPECT_THAT(all, HasSubstr("手続1(続き)"));
}

TEST(CommentList, GrowsWithTheLongestNamesAndComments) {
    Comments rows;
    for (const Text& name : longestNames()) {
        rows.object(u"Report", name);
        rows.procedure(name);
        rows.comment(u"'" + name.substr(0, 149));
    }
    const auto document = rows.list();
    printed_pdf(document, "comments-longest");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name.substr(0, 149)).size(), 3U);
    }
}

TEST(CommentList, SaysThatThereIsNothing) {
    Comments rows;
    const auto document = rows.list();
    EXPECT_EQ(document.pageCount(), 1);
    EXPECT_THAT(pdfText(printed_pdf(document, "comments-none")), HasSubstr("該当するデータはありません。"));
}

// ---- Macros

class Macros {
public:
    explicit Macros(std::int64_t option = 2) : option_(option) {}

    void macro(const Text& name) {
        name_ = name;
        ++object_;
        member({});
    }
    void member(const Text& name) {
        member_ = name;
        ++number_;
        line_ = 9;
    }
    void action(std::int64_t number, const Text& line, const std::vector<Text>& arguments = {},
                const Text& condition = {}, const Text& comment = {}) {
        store_.add(u"T_RvMacro", {{u"objectNo", object_},
                                  {u"ProcedureNo", number_},
                                  {u"ObjectName", name_},
                                  {u"ActionNo", number},
                                  {u"LineNo", ++line_},
                                  {u"ProcName", member_},
                                  {u"Procedure", line},
                                  {u"Tekiyou", comment},
                                  {u"AcWhere", condition},
                                  {u"Midasi", option_}});
        for (std::size_t i = 0; option_ == 2 && i < arguments.size(); ++i) {
            store_.add(u"T_RvMacro2", {{u"ProcedureNo", number_},
                                       {u"LineNo", line_},
                                       {u"Hikisu", arguments[i]},
                                       {u"ActionNo", number},
                                       {u"HikiNo", static_cast<std::int64_t>(i + 1)}});
        }
    }
    reports::ReportDocument list() { return reports::open(store_.rows(), u"R_RvMacro", printed); }

private:
    AnalysedStore store_;
    std::int64_t option_, object_ = 0, number_ = 17, line_ = 0;
    Text name_, member_;
};

void addMacros(Macros& rows) {
    rows.macro(text("M_起動処理"));
    rows.action(21, u"    DoCmd.OpenForm \"F\", acNormal, \"\", , acNormal",
                {text("\"F_メインメニュー\""), text("標準"), Text(), Text(), u"acNormal"}, {},
                text("最初の画面を開きます。"));
    rows.action(41, u"    DoCmd.Maximize");
    rows.macro(text("M_受注"));
    rows.member(text("印刷"));
    rows.action(33, u"        DoCmd.OpenReport \"R\", acViewPreview",
                {text("\"R_納品書\""), text("印刷プレビュー")}, u"Forms!F_Order!Kind = 1",
                text("控えも刷ります。"));
    rows.action(45, u"    End If");
    rows.action(45, u"    SendKeys \"{F9}\", False");
    rows.member(text("終了"));
    rows.action(45, u"    End");
    rows.action(34, u"    DoCmd.Save acForm", {u"DoCmd.Save acForm"});
    rows.action(34, u"    DoCmd.TransferSpreadsheet acImport", {u"acImport"});
}

TEST(MacroList, ShowsActionsWithTheirArgumentsInOrder) {
    Macros rows;
    addMacros(rows);
    const auto document = rows.list();
    EXPECT_EQ(toUtf8(document.title()), "マクロ一覧(詳細)");
    const auto pdf = printed_pdf(document, "macros-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said :
         {"M_起動処理 マクロ", "条件式 アクション 引数 説明",
          "フォームを開く 1 \"F_メインメニュー\" 最初の画面を開きます。 2 標準 3 4 5 acNormal 最大化",
          "アクション 2 件", "M_受注 マクロ 印刷",
          "Forms!F_Order!Kind = 1 レポートを開く 1 \"R_納品書\" 控えも刷ります。 2 印刷プレビュー", "終了",
          "ワークシート変換 1 acImport", "マクロ 2 件、アクション 5 件"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(factsOf(pdf.string()).outline, ElementsAre("M_起動処理 1", "M_受注 1"));
}

TEST(MacroList, ShowsALineThatIsNotWhatItsNumberSays) {
    Macros rows;
    addMacros(rows);
    const auto document = rows.list();
    EXPECT_EQ(document.search(u"マクロの中止").size(), 1U); // "End" alone
    EXPECT_EQ(document.search(u"ワークシート変換").size(), 1U);
    EXPECT_EQ(document.search(u"End If").size(), 1U);
    EXPECT_EQ(document.search(u"SendKeys \"{F9}\"").size(), 1U);
    EXPECT_EQ(document.search(u"DoCmd.Save acForm").size(), 2U); // and as its argument
}

TEST(MacroList, OfTheSimpleOptionHasNoArguments) {
    Macros rows(1);
    addMacros(rows);
    const auto document = rows.list();
    EXPECT_EQ(toUtf8(document.title()), "マクロ一覧(簡易)");
    const std::string page = pageOf(document, "macros-simple");
    EXPECT_THAT(page,
                HasSubstr(squeezed("条件式 アクション 説明 フォームを開く 最初の画面を開きます。 最大化")));
    EXPECT_THAT(page, HasSubstr(squeezed("マクロ 2 件、アクション 5 件")));
    EXPECT_THAT(page, Not(HasSubstr("引数")));
}

TEST(MacroList, WrapsLongStatementsConditionsAndNames) {
    Macros rows;
    const Text sql = u"\"" + endlessSql(320).substr(0, 338) + u"\"";
    for (const Text& name : longestNames()) {
        rows.macro(name);
        rows.member(name);
        rows.action(1, u"    DoCmd.RunSQL", {sql}, u"Forms![" + name + u"]![x] = 1", name);
    }
    const auto document = rows.list();
    printed_pdf(document, "macros-longest");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name).size(), 4U);
    }
    EXPECT_EQ(document.search(u"値 10003").size(), 3U);
}

TEST(MacroList, GoesOnOverPagesAndNamesMacroAndMember) {
    Macros rows;
    for (int i = 0; i < 10; ++i) {
        rows.macro(text("M_処理" + std::to_string(i)));
        for (int m = 0; m < 10; ++m) {
            rows.member(text("項目" + std::to_string(m)));
            for (int a = 0; a < 10; ++a) {
                rows.action(27, u"    MsgBox",
                            {text("\"通知" + std::to_string(a) + "\""), u"vbOKOnly", Text()});
            }
        }
    }
    const auto document = rows.list();
    const std::string all = pdfText(printed_pdf(document, "macros-3000"));
    int page = 0;
    for (std::size_t from = 0, end; (end = all.find('\f', from)) != std::string::npos; from = end + 1) {
        const std::string one = squeezed(all.substr(from, end - from));
        ASSERT_THAT(one, testing::ContainsRegex("M_処理[0-9]")) << page;
        ASSERT_THAT(one, testing::ContainsRegex("項目[0-9]")) << page;
        ++page;
    }
    EXPECT_EQ(page, document.pageCount());
    EXPECT_EQ(document.search(u"\"通知9\"").size(), 100U);
    EXPECT_THAT(squeezed(all), HasSubstr(squeezed("マクロ 10 件、アクション 1,000 件")));
}

TEST(MacroList, SaysThatThereIsNothing) {
    Macros rows;
    const auto document = rows.list();
    EXPECT_EQ(document.pageCount(), 1);
    EXPECT_THAT(pdfText(printed_pdf(document, "macros-none")), HasSubstr("該当するデータはありません。"));
}

} // namespace
} // namespace relvane::test
