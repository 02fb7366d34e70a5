// The lists of what refers to what, as they are delivered: where a table is used, what forms and reports refer to,
// and where procedures are called.
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

// Each page, squeezed.
std::vector<std::string> pagesOf(const reports::ReportDocument& document, const std::string& name) {
    const std::string all = pdfText(printed_pdf(document, name));
    std::vector<std::string> pages;
    for (std::size_t from = 0, end; (end = all.find('\f', from)) != std::string::npos; from = end + 1) {
        pages.push_back(squeezed(all.substr(from, end - from)));
    }
    return pages;
}

// The rows of both tables of references, as the analyses write them.
class References {
public:
    // Of a table: a query has its type, the others the control and the property.
    void use(const Text& kind, const Text& name, const Value& control, const Value& property,
             const Text& table) {
        object(name);
        store_.add(u"T_RvLinkObject", {{u"objectNo", object_},
                                       {u"Bunrui", kind},
                                       {u"ObjectName", name},
                                       {u"ControlName", control},
                                       {u"PropertyName", property},
                                       {u"MotoName", table}});
    }

    void object(const Text& name) {
        object_ += name == name_ ? 0 : 1;
        name_ = name;
    }
    struct Reference {
        std::int64_t control = 0;
        const char* controlName = "";
        const char* controlKind = "?";
        const char* property = "";
        const char* kind = "";
        Text value{}, source{};
    };
    void refers(const Reference& reference) {
        store_.add(u"T_RvLinkObject", {{u"objectNo", object_},
                                       {u"ObjectName", name_},
                                       {u"ControlNo", reference.control},
                                       {u"PropertyNo", std::int64_t{1}},
                                       {u"Bunrui", text(reference.kind)},
                                       {u"ControlName", text(reference.controlName)},
                                       {u"ControlBunrui", text(reference.controlKind)},
                                       {u"PropertyName", text(reference.property)},
                                       {u"PropertyValue", reference.value},
                                       {u"MotoName", reference.source},
                                       {u"Midasi", std::int64_t{1}}});
    }
    void calls(const Text& kind, const Text& caller, const Text& called, const Text& module, int lines = 1) {
        for (int i = 0; i < lines; ++i) {
            store_.add(u"T_RvLinkModule", {{u"objectNo", object_},
                                           {u"ProcedureNo", std::int64_t{1}},
                                           {u"Bunrui", kind},
                                           {u"ObjectName", name_},
                                           {u"Procedure", caller},
                                           {u"LinkProcedure", called},
                                           {u"MotoName", module}});
        }
    }

    reports::ReportDocument list(const Text& report) { return reports::open(store_.rows(), report, printed); }

private:
    AnalysedStore store_;
    std::int64_t object_ = 0;
    Text name_;
};

const Text query = text("クエリ"), form = text("フォーム"), report = text("レポート");
const Text recordSource = text("ﾚｺｰﾄﾞｿｰｽ"), rowSource = text("値集合ｿｰｽ");

TEST(TableUseList, NamesTheTableAndShowsItsUsersByKindAndObject) {
    References rows;
    const Text table = text("得意先");
    rows.use(query, text("Q_売上集計"), text("選択クエリ"), Null{}, table);
    rows.use(form, text("F_受注入力"), Null{}, recordSource, table);
    rows.use(form, text("F_受注入力"), text("得意先コード"), rowSource, table);
    rows.use(form, text("F_得意先"), Null{}, recordSource, table);
    rows.use(report, text("R_納品書"), text("明細"), text("ｿｰｽｵﾌﾞｼﾞｪｸﾄ"), table);
    const auto document = rows.list(u"R_RvLinkTable");
    EXPECT_EQ(toUtf8(document.title()), "テーブル引用先一覧");
    const auto pdf = printed_pdf(document, "table-use-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said :
         {"調べたテーブル 得意先 引用しているクエリ 1 件 引用しているフォーム 2 件 引用しているレポート 1 件 "
          "引用箇所の合計 5 箇所",
          "クエリ名 種類 Q_売上集計 選択クエリ オブジェクト 1 件、引用 1 箇所",
          "F_受注入力 (オブジェクト自体) ﾚｺｰﾄﾞｿｰｽ 得意先コード 値集合ｿｰｽ F_得意先 (オブジェクト自体) "
          "ﾚｺｰﾄﾞｿｰｽ オブジェクト 2 件、引用 3 箇所",
          "R_納品書 明細 ｿｰｽｵﾌﾞｼﾞｪｸﾄ オブジェクト 1 件、引用 1 箇所", "オブジェクト 4 件、引用 5 箇所"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(factsOf(pdf.string()).outline, ElementsAre("クエリ 1", "フォーム 1", "レポート 1"));
}

TEST(TableUseList, LosesNoneOfThreeThousandUsers) {
    References rows;
    for (int i = 0; i < 1000; ++i) {
        rows.use(query, text("Q_" + std::to_string(i)), text("選択クエリ"), Null{}, u"T");
    }
    for (int i = 0; i < 200; ++i) {
        const Text name = text("F_" + std::to_string(i));
        rows.use(form, name, Null{}, recordSource, u"T");
        for (int control = 0; control < 9; ++control) {
            rows.use(form, name, text("コンボ" + std::to_string(control)), rowSource, u"T");
        }
    }
    const auto document = rows.list(u"R_RvLinkTable");
    for (const std::string& page : pagesOf(document, "table-use-3000")) {
        ASSERT_TRUE(page.find("クエリ名種類") != std::string::npos ||
                    page.find("オブジェクト名引用しているコントロール") != std::string::npos);
    }
    EXPECT_EQ(document.search(u"選択クエリ").size(), 1000U);
    EXPECT_EQ(document.search(u"コンボ8").size(), 200U);
    EXPECT_EQ(document.search(text("オブジェクト 1,200 件、引用 3,000 箇所")).size(), 1U);
}

TEST(TableUseList, GrowsWithTheLongestNames) {
    References rows;
    for (const Text& name : longestNames()) {
        rows.use(form, name, name, rowSource, longestNames().front());
    }
    const auto document = rows.list(u"R_RvLinkTable");
    printed_pdf(document, "table-use-longest");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name).size(), 2U);
    }
}

TEST(TableUseList, SaysThatThereIsNothing) {
    References rows;
    EXPECT_THAT(pdfText(printed_pdf(rows.list(u"R_RvLinkTable"), "table-use-none")),
                HasSubstr("該当するデータはありません。"));
}

void addForms(References& rows) {
    rows.object(text("F_受注入力"));
    rows.refers({.property = "ﾚｺｰﾄﾞｿｰｽ", .kind = "ﾃｰﾌﾞﾙ/ｸｴﾘｰ", .value = text("受注")});
    rows.refers({.controlName = "フォーム",
                 .property = "開く時",
                 .kind = "マクロ",
                 .value = text("M_受注.開始"),
                 .source = text("M_受注")});
    rows.refers({4, "得意先コード", "ｺﾝﾎﾞﾎﾞｯｸｽ", "値集合ｿｰｽ", "ＳＱＬ",
                 text("SELECT 得意先コード, 得意先名 FROM 得意先 WHERE 取引中 ORDER BY 得意先名;"),
                 text("M_受注")});
    rows.refers({5, "金額", "ﾃｷｽﾄﾎﾞｯｸｽ", "ｺﾝﾄﾛｰﾙｿｰｽ", "ﾕｰｻﾞｰ関数", text("税込"), text("M_共通")});
    rows.refers(
        {5, "金額", "ﾃｷｽﾄﾎﾞｯｸｽ", "更新後処理", "マクロ", text("[ｲﾍﾞﾝﾄ ﾌﾟﾛｼｰｼﾞｬ]"), text("[ｲﾍﾞﾝﾄ ﾌﾟﾛｼｰｼﾞｬ]")});
    rows.refers({5, "金額", "ﾃｷｽﾄﾎﾞｯｸｽ", "ｸﾘｯｸ時", "マクロ", text("=税込(1.5)"), text("=税込(1")});
    rows.calls(text("ﾓｼﾞｭｰﾙ"), text("更新_Click"), text("在庫引当"), text("M_在庫"), 2);
    rows.calls(text("ﾓｼﾞｭｰﾙ"), text("更新_Click"), text("税込"), text("M_共通"));
    rows.calls(text("ﾓｼﾞｭｰﾙ"), text("更新_Click"), text("在庫引当"), text("M_在庫"));
    rows.object(text("F_メニュー"));
    rows.calls(text("ﾓｼﾞｭｰﾙ"), Text(), text("起動"), text("M_共通"));
    rows.object(text("F_得意先"));
    // Carried over: the kind of the last control, and the module of an earlier row.
    rows.refers({.controlKind = "ﾃｷｽﾄﾎﾞｯｸｽ",
                 .property = "ﾚｺｰﾄﾞｿｰｽ",
                 .kind = "ﾃｰﾌﾞﾙ/ｸｴﾘｰ",
                 .value = text("得意先"),
                 .source = text("M_古い")});
}

TEST(ReferenceList, ShowsWhatEachFormRefersToByControlThenWhatItsCodeCalls) {
    References rows;
    addForms(rows);
    const auto document = rows.list(u"R_RvLinkObject");
    EXPECT_EQ(toUtf8(document.title()), "オブジェクト参照元一覧(フォーム)");
    const auto pdf = printed_pdf(document, "references-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said :
         {"1 F_受注入力 フォーム オブジェクトとコントロールの参照元",
          "(オブジェクト自体) ﾚｺｰﾄﾞｿｰｽ ﾃｰﾌﾞﾙ/ｸｴﾘｰ 受注 開く時 マクロ M_受注.開始 M_受注 得意先コード",
          "得意先コード ｺﾝﾎﾞﾎﾞｯｸｽ 値集合ｿｰｽ ＳＱＬ SELECT 得意先コード, 得意先名 FROM 得意先",
          "金額 ﾃｷｽﾄﾎﾞｯｸｽ ｺﾝﾄﾛｰﾙｿｰｽ ﾕｰｻﾞｰ関数 税込 M_共通 更新後処理 マクロ [ｲﾍﾞﾝﾄ ﾌﾟﾛｼｰｼﾞｬ] ｸﾘｯｸ時 "
          "マクロ =税込(1.5)",
          "モジュールから呼び出すプロシージャ", "更新_Click 在庫引当 M_在庫 3 税込 M_共通 1",
          "テーブル・クエリ 1 件、SQL 1 件、マクロ 3 件、ユーザー関数 1 件、呼び出し 4 箇所",
          "2 F_メニュー フォーム モジュールから呼び出すプロシージャ",
          "(Declarations) 起動 M_共通 1 呼び出し 1 箇所",
          "オブジェクト 3 件、テーブル・クエリ 2 件、SQL 1 件、マクロ 3 件、ユーザー関数 1 件、呼び出し 5 "
          "箇所"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(page, Not(HasSubstr("M_古い")));
    EXPECT_THAT(factsOf(pdf.string()).outline,
                ElementsAre(testing::StartsWith("F_受注入力 "), testing::StartsWith("F_メニュー "),
                            testing::StartsWith("F_得意先 ")));
}

TEST(ReferenceList, OfReportsSaysSo) {
    References rows;
    rows.object(text("R_納品書"));
    rows.refers({.controlName = "レポート",
                 .property = "開く時",
                 .kind = "マクロ",
                 .value = text("M_印刷"),
                 .source = text("M_印刷")});
    EXPECT_EQ(toUtf8(rows.list(u"R_RvLinkObject").title()), "オブジェクト参照元一覧(レポート)");
}

TEST(ReferenceList, NamesFormAndControlAtTheTopOfEveryPage) {
    References rows;
    for (int i = 0; i < 3; ++i) {
        rows.object(text("F_画面" + std::to_string(i)));
        for (std::int64_t control = 1; control <= 50; ++control) {
            for (int event = 0; event < 20; ++event) {
                rows.refers({control, "更新", "ｺﾏﾝﾄﾞﾎﾞﾀﾝ", "ｸﾘｯｸ時", "マクロ",
                             text("M_" + std::to_string(event)), text("M_" + std::to_string(event))});
            }
        }
        rows.calls(text("ﾓｼﾞｭｰﾙ"), text("更新_Click"), text("税込"), text("M_共通"));
    }
    const auto document = rows.list(u"R_RvLinkObject");
    for (const std::string& page : pagesOf(document, "references-3000")) {
        ASSERT_THAT(page, testing::ContainsRegex("F_画面[0-9]"));
        ASSERT_TRUE(page.find("更新") != std::string::npos);
    }
    EXPECT_FALSE(document.search(text("更新(続き)")).empty());
    EXPECT_EQ(document.search(u"M_19").size(), 150U);
    EXPECT_EQ(document
                  .search(text("オブジェクト 3 件、テーブル・クエリ 0 件、SQL 0 件、マクロ 3,000 "
                               "件、ユーザー関数 0 件、呼び出し 3 箇所"))
                  .size(),
              1U);
}

TEST(ReferenceList, GrowsWithTheLongestNamesAndStatements) {
    References rows;
    for (const Text& name : longestNames()) {
        rows.object(name);
        const std::string longest = toUtf8(name);
        rows.refers({1, longest.c_str(), "ｻﾌﾞﾌｫｰﾑ/ｻﾌﾞﾚﾎﾟｰﾄ", "ｿｰｽｵﾌﾞｼﾞｪｸﾄ", "ﾃｰﾌﾞﾙ/ｸｴﾘｰ", name, {}});
        rows.refers({2, "リスト", "ﾘｽﾄﾎﾞｯｸｽ", "値集合ｿｰｽ", "ＳＱＬ", endlessSql(6000), {}});
        rows.refers({3, "計", "ﾃｷｽﾄﾎﾞｯｸｽ", "ｺﾝﾄﾛｰﾙｿｰｽ", "ﾕｰｻﾞｰ関数", name, name});
        rows.calls(text("ﾓｼﾞｭｰﾙ"), name, name, name);
    }
    const auto document = rows.list(u"R_RvLinkObject");
    printed_pdf(document, "references-longest");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name).size(), 8U);
    }
    EXPECT_EQ(document.search(u"値 10003").size(), 3U);
    EXPECT_EQ(document.search(u"値 10050").size(), 3U);
}

TEST(ReferenceList, SaysThatThereIsNothing) {
    References rows;
    const auto document = rows.list(u"R_RvLinkObject");
    EXPECT_EQ(toUtf8(document.title()), "オブジェクト参照元一覧");
    EXPECT_THAT(pdfText(printed_pdf(document, "references-none")), HasSubstr("該当するデータはありません。"));
}

TEST(CallList, ShowsTheCallersOfEachProcedureByModule) {
    References rows;
    rows.object(text("F_受注入力"));
    rows.calls(u"Form", text("更新_Click"), text("税込"), text("M_共通"), 2);
    rows.calls(u"Form", text("更新_Click"), text("在庫引当"), text("M_在庫"));
    rows.calls(u"Form", text("金額_AfterUpdate"), text("税込"), text("M_共通"));
    rows.object(text("R_納品書"));
    rows.calls(u"Report", text("Report_Open"), text("税込"), text("M_共通"));
    rows.object(text("M_夜間"));
    rows.calls(u"Module", Text(), text("在庫引当"), text("M_在庫"));
    rows.calls(u"Module", text("一括"), text("あいさつ"), text("M_共通"));
    const auto document = rows.list(u"R_RvLinkProc");
    EXPECT_EQ(toUtf8(document.title()), "プロシージャ引用先一覧");
    const auto pdf = printed_pdf(document, "calls-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said :
         {"M_共通 モジュール あいさつ 1 プロシージャの 1 箇所から 種類 引用しているオブジェクト",
          "モジュール M_夜間 一括 1 税込 3 プロシージャの 4 箇所から",
          "フォーム F_受注入力 更新_Click 2 金額_AfterUpdate 1 レポート R_納品書 Report_Open 1 "
          "引用されているプロシージャ 2 件、引用 5 箇所",
          "在庫引当 2 プロシージャの 2 箇所から", "モジュール M_夜間 (Declarations) 1",
          "モジュール 2 件、引用されているプロシージャ 3 件、引用 7 箇所"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(factsOf(pdf.string()).outline,
                ElementsAre("M_共通 1", " あいさつ 1", " 税込 1", "M_在庫 1", " 在庫引当 1"));
}

TEST(CallList, NamesModuleAndProcedureAtTheTopOfEveryPage) {
    References rows;
    for (int object = 0; object < 100; ++object) {
        rows.object(text("F_画面" + std::to_string(object)));
        for (int caller = 0; caller < 3; ++caller) {
            for (int called = 0; called < 10; ++called) {
                rows.calls(u"Form", text("手続" + std::to_string(caller)),
                           text("共通処理" + std::to_string(called)),
                           text("M_" + std::to_string(called % 2)));
            }
        }
    }
    const auto document = rows.list(u"R_RvLinkProc");
    for (const std::string& page : pagesOf(document, "calls-3000")) {
        ASSERT_THAT(page, testing::ContainsRegex("M_[01]"));
        ASSERT_THAT(page, testing::ContainsRegex("共通処理[0-9]"));
    }
    EXPECT_FALSE(document.search(text("300 プロシージャの 300 箇所から")).empty());
    EXPECT_EQ(document.outline().size(), 12U);
    EXPECT_EQ(
        document.search(text("モジュール 2 件、引用されているプロシージャ 10 件、引用 3,000 箇所")).size(),
        1U);
}

TEST(CallList, GrowsWithTheLongestNames) {
    References rows;
    for (const Text& name : longestNames()) {
        rows.object(name);
        rows.calls(u"Module", name, name, name);
    }
    const auto document = rows.list(u"R_RvLinkProc");
    printed_pdf(document, "calls-longest");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name).size(), 4U);
    }
}

TEST(CallList, SaysThatThereIsNothing) {
    References rows;
    EXPECT_THAT(pageOf(rows.list(u"R_RvLinkProc"), "calls-none"), HasSubstr("該当するデータはありません。"));
}

} // namespace
} // namespace relvane::test
