// The procedure lists as they are delivered, through the view of the work database.
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

// Rows numbered as the analysis numbers them: line by line.
class Catalogue {
public:
    explicit Catalogue(std::int64_t option = 2) : option_(option) {}

    // A module whose declarations section has so many lines; without one it has no row.
    void module(const Text& kind, const Text& name, std::int64_t declared = 2) {
        kind_ = kind;
        name_ = name;
        ++object_;
        number_ = line_ = 0;
        inDeclarations_ = true;
        if (declared > 0) {
            addRow(kind, u"(Declarations)", true, Null{}, Null{}, Null{}, declared);
        }
    }
    void api(const Text& name, const Text& type) {
        ++number_;
        const Text kind = kind_.substr(0, kind_.find(u'('));
        addRow(kind + u"(Api)", name, true, type, Null{}, Null{}, 0);
    }
    // Behind a blank line. A property counts twice for it.
    void procedure(const Text& name, const Text& type, const Value& parameters, const Value& result,
                   bool isPrivate = true) {
        inDeclarations_ = false;
        line_ += 1;
        number_ += name != procedure_ ? 1 : 0;
        procedure_ = name;
        number_ += type.starts_with(u"Property") ? 1 : 0;
        addRow(kind_, name, isPrivate, type.empty() ? Value(Null{}) : Value(type), parameters, result, 12);
    }
    // "Exit Sub ' x"
    void looksLikeAProcedure() { addRow(kind_, procedure_, false, Null{}, Null{}, Null{}, 12); }
    void detail(std::int64_t keyword, const Text& statement, const Value& comment = Null{}) {
        static constexpr const char* words[][2] = {
            {"", ""},        {"変数", "Global"}, {"変数", "Public"}, {"変数", "Private"},
            {"変数", "Dim"}, {"定数", "Const"},  {"呼出", "Call"}};
        const auto& word = words[keyword];
        store_.add(u"T_RvDimCall", {{u"objectNo", object_},
                                    {u"ProcedureNo", inDeclarations_ ? 0 : number_},
                                    {u"pLine", ++line_},
                                    {u"DimCall", keyword},
                                    {u"Bunrui", text(word[0])},
                                    {u"Type", text(word[1])},
                                    {u"As", comment},
                                    {u"Parameters", statement}});
    }
    void skipLines(std::int64_t count) { line_ += count; }

    reports::ReportDocument list() { return reports::open(store_.rows(), u"R_RvProcName", printed); }
    reports::ReportDocument kanaList() { return reports::open(store_.rows(), u"R_RvProcName50", printed); }

private:
    void addRow(const Text& kind, const Text& name, bool isPrivate, const Value& type,
                const Value& parameters, const Value& result, std::int64_t lines) {
        store_.add(u"T_RvProcName", {{u"Object", kind},
                                     {u"ObjectName", name_},
                                     {u"ProcedureName", name},
                                     {u"PrivatePublic", isPrivate},
                                     {u"Type", type},
                                     {u"Parameters", parameters},
                                     {u"As", result},
                                     {u"Line", lines},
                                     {u"objectNo", object_},
                                     {u"ProcedureNo", number_},
                                     {u"pLine", ++line_},
                                     {u"Midasi", option_}});
    }

    AnalysedStore store_;
    std::int64_t option_, object_ = 0, number_ = 0, line_ = 0;
    Text kind_, name_, procedure_;
    bool inDeclarations_ = true;
};

void addOrders(Catalogue& rows) {
    rows.module(u"Form", text("F_受注入力"), 3);
    rows.skipLines(2);
    rows.detail(3, u"mChanged As Boolean", text(" 保存前"));
    rows.procedure(text("更新_Click"), u"Sub", Null{}, Null{});
    rows.detail(4, u"db As Database, rs As Recordset");
    rows.detail(6, text("在庫引当(Me![受注コード], True)"), text(" 夜間と同じ処理"));
    rows.detail(5, u"limit = 100");
    rows.detail(4, u"total As Currency", text(" 税抜き"));
    rows.looksLikeAProcedure();
    rows.detail(6, text("後始末"));
    rows.module(u"Module(Standard)", text("M_共通"), 5);
    rows.skipLines(1);
    rows.api(u"GetTickCount", u"Function");
    rows.detail(2, u"gUser As String");
    rows.api(u"Sleep", u"Sub");
    rows.procedure(text("税込"), u"Function", u"ByVal price As Currency, Optional rate As Double = 0.05",
                   u"Currency", false);
    rows.module(u"Module(Class)", text("C_取引先"), 0);
    rows.procedure(text("名称"), u"Property Get", Null{}, u"String");
    rows.procedure(text("名称"), u"Property Let", u"value As String", Null{});
    rows.detail(4, u"checked As String");
}

std::string pageOf(const reports::ReportDocument& document, const std::string& name) {
    return squeezed(pdfText(printed_pdf(document, name)));
}

TEST(ProcedureList, ShowsEachProcedureWithItsDeclarationsAndCallsByClass) {
    Catalogue rows;
    addOrders(rows);
    const auto document = rows.list();
    EXPECT_EQ(toUtf8(document.title()), "プロシージャ一覧(詳細)");
    const auto pdf = printed_pdf(document, "procedures-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said :
         {"F_受注入力 フォーム",
          "プロシージャ名 行 適用範囲 種類 引数 戻り値 行数",
          "分類 種別 行 内容 コメント",
          "(Declarations) 1 Private 3",
          "変数 Private 3 mChanged As Boolean 保存前",
          "更新_Click 5 Private Sub 12",
          "変数 Dim 6 db As Database, rs As Recordset",
          "変数 Dim 9 total As Currency 税抜き",
          "定数 Const 8 limit = 100",
          "呼出 Call 7 在庫引当(Me![受注コード], True) 夜間と同じ処理",
          "呼出 Call 11 後始末",
          "プロシージャ 1 件、変数 3 件、定数 1 件、呼出 2 件",
          "M_共通 標準モジュール",
          "変数 Public 3 gUser As String",
          "GetTickCount 2 Private API Function",
          "Sleep 4 Private API Sub 税込 6",
          "税込 6 Public Function ByVal price As Currency, Optional rate As Double = 0.05 Currency 12",
          "プロシージャ 1 件、API 宣言 2 件、変数 1 件",
          "C_取引先 クラスモジュール",
          "名称 2 Private Property Get String 12",
          "名称 4 Private Property Let value As String 12",
          "プロシージャ 2 件、変数 1 件",
          "オブジェクト 3 件、プロシージャ 4 件、API 宣言 2 件、変数 5 件、定数 1 件、呼出 2 件"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(factsOf(pdf.string()).outline,
                ElementsAre("F_受注入力 1", "M_共通 1", testing::StartsWith("C_取引先 ")));
}

// Where the text stands on the page, or behind its end.
std::size_t placeOf(const std::string& page, const std::string& said) {
    return page.find(squeezed(said));
}

TEST(ProcedureList, KeepsTheDetailsUnderTheirProcedure) {
    Catalogue rows;
    addOrders(rows);
    const std::string page = pageOf(rows.list(), "procedures-owners");
    // Those of the declarations section stand before its API declarations,
    EXPECT_LT(placeOf(page, "gUser As String"), placeOf(page, "GetTickCount"));
    // those behind a statement that looks like a procedure before it,
    EXPECT_LT(placeOf(page, "呼出 Call 11 後始末"), placeOf(page, "更新_Click 10 12"));
    EXPECT_LT(placeOf(page, "更新_Click 10 12"), placeOf(page, "M_共通 標準モジュール"));
    // and the ones of a property under that of its kind.
    EXPECT_LT(placeOf(page, "Property Let value"), placeOf(page, "checked As String"));
    EXPECT_NE(placeOf(page, "checked As String"), std::string::npos);
}

TEST(ProcedureList, LosesNoDetailWhoseNumberNoProcedureHas) {
    Catalogue rows;
    rows.module(u"Module(Class)", text("C_顧客"), 0);
    rows.procedure(text("名称"), u"Property Get", Null{}, u"String");
    rows.detail(4, u"first As Long");
    rows.api(u"x", u"Sub"); // a remark that holds the word Declare raises the number
    rows.detail(4, u"second As Long");
    rows.module(u"Module(Standard)", text("M_無宣言"), 0);
    rows.skipLines(1);
    rows.api(u"y", u"Sub");
    rows.procedure(text("後"), u"Sub", Null{}, Null{});
    rows.detail(4, u"third As Long");
    const std::string page = pageOf(rows.list(), "procedures-numbers");
    EXPECT_LT(placeOf(page, "first As Long"), placeOf(page, "second As Long"));
    EXPECT_LT(placeOf(page, "second As Long"), placeOf(page, "API Sub"));
    EXPECT_THAT(page, HasSubstr(squeezed("third As Long")));
    EXPECT_THAT(page, HasSubstr(squeezed("変数 3 件")));
}

TEST(ProcedureList, OfTheSimpleOptionIsOneTable) {
    Catalogue rows(1);
    rows.module(u"Report", text("R_納品書"));
    rows.procedure(u"Report_Open", u"Sub", u"Cancel As Integer", Null{});
    rows.procedure(text("改頁"), u"", Null{}, Null{}, false);
    const auto document = rows.list();
    EXPECT_EQ(toUtf8(document.title()), "プロシージャ一覧(簡易)");
    const std::string page = pageOf(document, "procedures-simple");
    EXPECT_THAT(page, HasSubstr(squeezed("R_納品書 レポート プロシージャ名 行 適用範囲 種類 引数 戻り値 行数 "
                                         "(Declarations) 1 Private 2 "
                                         "Report_Open 2 Private Sub Cancel As Integer 12 "
                                         "改頁 4 Public 12 プロシージャ 2 件")));
    EXPECT_THAT(page, Not(HasSubstr("分類")));
}

TEST(ProcedureList, SaysThatThereIsNothing) {
    for (const bool kana : {false, true}) {
        Catalogue rows;
        const auto document = kana ? rows.kanaList() : rows.list();
        EXPECT_EQ(document.pageCount(), 1);
        EXPECT_THAT(pdfText(printed_pdf(document, "procedures-none")),
                    HasSubstr("該当するデータはありません。"));
    }
}

// Text by text as they stand in the report.
std::vector<std::string> inOrder(const reports::ReportDocument& document,
                                 const std::vector<std::string>& wanted) {
    const std::string page = pageOf(document, "procedures-kana");
    std::vector<std::pair<std::size_t, std::string>> places;
    for (const std::string& one : wanted) {
        places.emplace_back(page.find(squeezed(one)), one);
    }
    std::sort(places.begin(), places.end());
    std::vector<std::string> order;
    for (const auto& [place, one] : places) {
        EXPECT_NE(place, std::string::npos) << one;
        order.push_back(one);
    }
    return order;
}

TEST(ProcedureListInKanaOrder, SortsObjectsAndTheirProceduresAsAReaderExpects) {
    Catalogue rows;
    rows.module(u"Form", text("ハンバイ"));
    for (const char* name : {"ﾃﾞｰﾀ更新", "Zoom", "サーバ接続", "かくにん", "ガイド", "あさ", "ｱｲｳ"}) {
        rows.procedure(text(name), u"Sub", Null{}, Null{});
        rows.detail(4, text(std::string("変数_") + name));
    }
    rows.module(u"Report", text("ｻﾝﾌﾟﾙ"));
    rows.procedure(text("処理"), u"Sub", Null{}, Null{});
    rows.module(u"Module(Standard)", text("Common"));
    const auto document = rows.kanaList();
    EXPECT_EQ(toUtf8(document.title()), "プロシージャ一覧(詳細)　五十音順");
    EXPECT_THAT(inOrder(document, {"ハンバイ", "ｻﾝﾌﾟﾙ", "Common"}),
                ElementsAre("Common", "ｻﾝﾌﾟﾙ", "ハンバイ"));
    EXPECT_THAT(inOrder(document, {"ﾃﾞｰﾀ更新2", "Zoom", "サーバ接続", "かくにん", "ガイド", "あさ", "ｱｲｳ"}),
                ElementsAre("Zoom", "ｱｲｳ", "あさ", "ガイド", "かくにん", "サーバ接続", "ﾃﾞｰﾀ更新2"));
}

TEST(ProcedureListInKanaOrder, LeavesDetailsAndDeclarationsWhereTheyBelong) {
    Catalogue rows;
    rows.module(u"Form", text("F_受注入力"));
    rows.detail(4, u"inDeclarations As Long");
    for (const char* name : {"わ", "か", "あ"}) {
        rows.procedure(text(std::string(name) + "行"), u"Sub", Null{}, Null{});
        rows.detail(6, text(std::string(name) + "の後"));
        rows.detail(4, text(std::string(name) + "の前"));
    }
    EXPECT_THAT(inOrder(rows.kanaList(), {"わの前", "わの後", "わ行", "かの前", "かの後", "か行", "あの前",
                                          "あの後", "あ行", "inDeclarations", "(Declarations)"}),
                ElementsAre("(Declarations)", "inDeclarations", "あ行", "あの前", "あの後", "か行", "かの前",
                            "かの後", "わ行", "わの前", "わの後"));
}

TEST(ProcedureList, HoldsThousandsOfRowsAndNamesObjectAndProcedureAtTheTopOfEveryPage) {
    Catalogue rows;
    for (int module = 0; module < 3; ++module) {
        rows.module(u"Module(Standard)", text("M_処理" + std::to_string(module)));
        for (int i = 0; i < 334; ++i) {
            rows.procedure(text("手続" + std::to_string(i)), u"Sub", u"a As Long", Null{});
            rows.detail(4, u"x As Long");
            rows.detail(6, text("下請" + std::to_string(i)));
        }
    }
    rows.module(u"Module(Standard)", text("M_長い手続"));
    rows.procedure(text("長い手続"), u"Function", Null{}, u"Long");
    for (int i = 0; i < 300; ++i) {
        rows.detail(6, text("呼び先" + std::to_string(i)));
    }
    const auto document = rows.list();
    const std::string all = pdfText(printed_pdf(document, "procedures-3000"));
    int page = 0;
    for (std::size_t from = 0, end; (end = all.find('\f', from)) != std::string::npos; from = end + 1) {
        const std::string one = squeezed(all.substr(from, end - from));
        ASSERT_THAT(one, HasSubstr("M_")) << page;
        ASSERT_THAT(one, HasSubstr(squeezed("プロシージャ名 行 適用範囲 種類"))) << page;
        ++page;
    }
    EXPECT_EQ(page, document.pageCount());
    EXPECT_THAT(all, HasSubstr("M_処理2(続き)"));
    EXPECT_THAT(all, HasSubstr("長い手続(続き)"));
    EXPECT_THAT(
        squeezed(all),
        HasSubstr(squeezed("オブジェクト 4 件、プロシージャ 1,003 件、変数 1,002 件、呼出 1,302 件")));
    EXPECT_EQ(document.search(u"下請333").size(), 3U);
    EXPECT_EQ(document.outline().size(), 4U);
}

TEST(ProcedureList, KeepsTheCountsOfAnObjectOnThePageOfItsLastProcedure) {
    Catalogue rows;
    for (int module = 0; module < 100; ++module) {
        rows.module(u"Module(Standard)", text("M_" + std::to_string(module)));
        for (int i = 0; i < module % 7; ++i) {
            rows.procedure(text("手続" + std::to_string(i)), u"Sub",
                           Text(static_cast<std::size_t>(module) * 7, u'a'), Null{});
        }
    }
    const std::string all = pdfText(printed_pdf(rows.list(), "procedures-counts"));
    int page = 0;
    for (std::size_t from = 0, end; (end = all.find('\f', from)) != std::string::npos; from = end + 1) {
        const std::string one = squeezed(all.substr(from, end - from));
        EXPECT_LT(one.find("Private"), one.find("件")) << ++page;
    }
}

TEST(ProcedureList, GrowsWithTheLongestNamesAndHeaders) {
    Catalogue rows;
    Text parameters;
    for (int i = 0; parameters.size() < 240; ++i) {
        parameters += text("ByVal 引数" + std::to_string(i) + " As Variant, ");
    }
    for (const Text& name : longestNames()) {
        rows.module(u"Module(Class)", name);
        rows.procedure(name, u"Property Get", parameters, name.substr(0, 40));
        rows.detail(4, parameters, name);
        rows.detail(6, name + u"(" + parameters + u")");
    }
    const auto document = rows.list();
    printed_pdf(document, "procedures-longest");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name).size(), 4U);
    }
    EXPECT_GE(document.search(parameters).size(), 9U);
}

} // namespace
} // namespace relvane::test
