// The lists of controls and their census as they are delivered, through the views of the work database.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis_samples.h"
#include "pdf_facts.h"
#include "report_samples.h"

namespace relvane::test {
namespace {

using testing::HasSubstr;
using testing::Not;

const Text longSource =
    text("SELECT DISTINCTROW 受注.受注コード, 受注.得意先コード, 得意先.得意先名, "
         "[受注明細].[単価]*[数量] AS 金額 FROM 得意先 INNER JOIN (受注 INNER JOIN 受注明細 ON "
         "受注.受注コード = 受注明細.受注コード) ON 得意先.得意先コード = 受注.得意先コード;");

reports::ReportDocument formList(AnalysedStore& store) {
    return reports::open(store.rows(), u"R_RvFrmCntl", printed);
}
reports::ReportDocument reportList(AnalysedStore& store) {
    return reports::open(store.rows(), u"R_RvRepCntl", printed);
}
reports::ReportDocument census(AnalysedStore& store) {
    return reports::open(store.rows(), u"R_RvControlCount", printed);
}

TEST(FormList, NamesTheViewsOfLaterVersions) {
    AnalysedStore store;
    for (int form = 0; form < 6; ++form) {
        store.addForm(text("F_受注入力"), text("受注"));
    }
    const std::string pages = squeezed(pdfText(printed_pdf(formList(store), "form-list-views")));
    for (const char* view : {"ピボットテーブル", "ピボットグラフ", "分割フォーム"}) {
        EXPECT_THAT(pages, HasSubstr(std::string("既定のビュー") + view));
    }
}

TEST(FormList, ShowsFormsTheirEventsControlsAndProperties) {
    AnalysedStore store;
    store.addForm(text("F_受注入力"), longSource);
    store.addControls(8);
    store.addForm(text("F_空のフォーム"), Text());
    store.addForm(text("F_メニュー"), text("受注"));
    store.addControls(2);
    const auto document = formList(store);
    EXPECT_EQ(toUtf8(document.title()), "フォーム　コントロール一覧(詳細)");
    const auto pdf = printed_pdf(document, "form-list-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said : {"フォーム コントロール一覧(詳細)",
                             "標題 受注の入力",
                             "並べ替え 受注日 DESC",
                             "既定のビュー 単票フォーム",
                             "既定のビュー 帳票フォーム",
                             "既定のビュー データシート",
                             "更新の許可 はい 削除の許可 いいえ",
                             "ダイナセット(矛盾を許す)",
                             "スナップショット",
                             "レコードロック しない",
                             "編集済みレコード",
                             "ﾚｺｰﾄﾞ移動時 [ｲﾍﾞﾝﾄ ﾌﾟﾛｼｰｼﾞｬ]",
                             "開く時 M_起動処理.開く",
                             "作成日時 1997/08/01 09:30:00",
                             "説明 受注と明細を入力します。",
                             "コントロール名 種類 可視",
                             "得意先コード ｺﾝﾎﾞﾎﾞｯｸｽ はい 0.101cm・2.7cm・5cm・0.423cm",
                             "ﾃﾞｰﾀ 値集合ﾀｲﾌﾟ ﾃｰﾌﾞﾙ/ｸｴﾘｰ",
                             "閉じる ｺﾏﾝﾄﾞﾎﾞﾀﾝ いいえ",
                             "改ページ 改ﾍﾟｰｼﾞ はい 12.001cm・0cm 境界線 線",
                             "書式 線種・線幅 実線・1",
                             "コントロール 8 件",
                             "コントロールはありません。",
                             "フォーム 3 件、コントロール 10 件"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(page, Not(HasSubstr("フィルタ")));
    EXPECT_EQ(document.search(longSource).size(), 1U);
    EXPECT_EQ(document.search(u"コントロールはありません").size(), 1U);
    const PdfFacts facts = factsOf(pdf.string());
    EXPECT_THAT(facts.outline, testing::ElementsAre(testing::StartsWith("F_受注入力 1"),
                                                    testing::StartsWith("F_空のフォーム "),
                                                    testing::StartsWith("F_メニュー ")));
    EXPECT_FALSE(facts.warnings);
}

TEST(FormList, OfTheSimpleOptionSaysSo) {
    AnalysedStore store;
    store.addForm(text("F_受注入力"), text("受注"), 1);
    store.addControl(text("得意先"), text("ﾃｷｽﾄﾎﾞｯｸｽ"), text("0cm・0cm・1cm・1cm"),
                     {{text("ﾃﾞｰﾀ"), text("ｺﾝﾄﾛｰﾙｿｰｽ"), text("なし")}});
    const auto document = formList(store);
    EXPECT_EQ(toUtf8(document.title()), "フォーム　コントロール一覧(簡易)");
    EXPECT_THAT(squeezed(pdfText(printed_pdf(document, "form-list-simple"))),
                HasSubstr(squeezed("ﾃﾞｰﾀ ｺﾝﾄﾛｰﾙｿｰｽ なし")));
}

TEST(FormList, SaysThatThereIsNothing) {
    AnalysedStore store;
    const auto document = formList(store);
    EXPECT_EQ(document.pageCount(), 1);
    const std::string page = pdfText(printed_pdf(document, "form-list-none"));
    EXPECT_THAT(squeezed(page), HasSubstr(squeezed("フォーム　コントロール一覧")));
    EXPECT_THAT(page, HasSubstr("該当するデータはありません。"));
}

TEST(FormList, NamesFormAndControlAtTheTopOfEveryPage) {
    AnalysedStore store;
    store.addForm(text("F_部品の多いフォーム"), text("受注"));
    store.addControls(700);
    const auto document = formList(store);
    ASSERT_GT(document.pageCount(), 40);
    const auto pdf = printed_pdf(document, "form-list-700");
    const std::string all = pdfText(pdf);
    int page = 0, cut = 0;
    for (std::size_t from = 0, end; (end = all.find('\f', from)) != std::string::npos; from = end + 1) {
        const std::string one = squeezed(all.substr(from, end - from));
        if (page++ > 0) {
            ASSERT_THAT(one, HasSubstr("F_部品の多いフォーム(続き)"));
        }
        const std::size_t heading =
            one.find(squeezed("コントロール名 種類 可視 上位置・左位置・幅・高さ 分類 属性 属性値"));
        ASSERT_NE(heading, std::string::npos) << page;
        ASSERT_EQ(one.find("コントロール名", heading + 12), std::string::npos) << page;
        cut += one.find("(続き)", heading) != std::string::npos ? 1 : 0;
    }
    EXPECT_EQ(page, document.pageCount());
    EXPECT_EQ(cut, 0); // none of these controls is so long that it may be cut
    EXPECT_THAT(squeezed(all), HasSubstr(squeezed("フォーム 1 件、コントロール 700 件")));
    EXPECT_EQ(document.search(u"金額699").size(), 1U);
}

TEST(FormList, NamesAControlThatIsCut) {
    AnalysedStore store;
    store.addForm(text("F_受注入力"), text("受注"));
    std::vector<AnalysedStore::Property> properties;
    for (int i = 0; i < 60; ++i) {
        properties.push_back({text("ｲﾍﾞﾝﾄ"), text("ｸﾘｯｸ時"), text("=処理" + std::to_string(i) + "()")});
    }
    store.addControl(text("長い部品"), text("ﾃｷｽﾄﾎﾞｯｸｽ"), text("0cm・0cm・1cm・1cm"), properties);
    const auto document = formList(store);
    const std::string second = squeezed(pdfText(printed_pdf(document, "form-list-cut"), "-f 2 -l 2"));
    EXPECT_THAT(second, HasSubstr(squeezed("F_受注入力(続き)")));
    EXPECT_THAT(second, HasSubstr("長い部品(続き)"));
    EXPECT_EQ(document.search(u"=処理59()").size(), 1U);
}

TEST(FormList, GrowsWithTheLongestNamesAndValues) {
    AnalysedStore store;
    const Text sql = endlessSql(30000);
    for (const Text& name : longestNames()) {
        store.addForm(name, sql.substr(0, 6000));
        store.addControl(name, text("非連結ｵﾌﾞｼﾞｪｸﾄﾌﾚｰﾑ"), text("-12.345cm・-12.345cm・55.873cm・55.873cm"),
                         {{text("書式"), text("OLEｻｲｽﾞ・OLEｸﾗｽ"), name}});
        store.addControl(name, text("ｺﾝﾎﾞﾎﾞｯｸｽ"), text("55.873cm・55.873cm・55.873cm・55.873cm"),
                         {{text("ﾃﾞｰﾀ"), text("値集合ｿｰｽ"), sql}, {text("ﾃﾞｰﾀ"), text("ｺﾝﾄﾛｰﾙｿｰｽ"), name}});
    }
    const auto document = formList(store);
    const auto pdf = printed_pdf(document, "form-list-longest");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name).size(), 5U);
    }
    const std::string pages = squeezed(pdfText(pdf));
    for (const char* value : {"値 10001'", "値 10400'"}) {
        EXPECT_THAT(pages, HasSubstr(squeezed(value)));
    }
    EXPECT_TRUE(document.search(u"…", 0, document.pageCount()).size() <
                2U * static_cast<std::size_t>(document.pageCount()));
    EXPECT_EQ(document.search(u"55.873cm・55.873cm・55.873cm・55.873cm").empty(), false);
}

TEST(ReportList, ShowsGroupLevelsBeforeTheControls) {
    AnalysedStore store;
    store.addReport(text("R_納品書"), text("Q_納品"));
    store.addGroupLevel(text("得意先コード"), 0, true, 0, 1, 1);
    store.addGroupLevel(text("=Year([受注日])"), -1, false, 3, 12, 2);
    store.addControls(3);
    store.addReport(text("R_宛名ラベル"), text("得意先"));
    store.addReport(text("R_並べ替えのみ"), Text());
    store.addGroupLevel(text("受注日"), 0, false, 9, 1000, 0);
    const auto document = reportList(store);
    EXPECT_EQ(toUtf8(document.title()), "レポート　コントロール一覧(詳細)");
    const auto pdf = printed_pdf(document, "report-list-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said : {"標題 納品書", "空ﾃﾞｰﾀ時 [ｲﾍﾞﾝﾄ ﾌﾟﾛｼｰｼﾞｬ]", "0 得意先コード 昇順 ○",
                             "各値 1 グループ全体", "1 =Year([受注日]) 降順", "四半期 12 最初の詳細まで",
                             "間隔 1,000 しない", "グループレベル 2 件、コントロール 3 件",
                             "グループレベル 1 件", "レポート 3 件、コントロール 3 件"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_EQ(document.search(u"コントロールはありません").size(), 2U);
    EXPECT_EQ(document.search(u"R_納品書").front().page, 0);
    EXPECT_EQ(document.outline().size(), 3U);
    EXPECT_FALSE(factsOf(pdf.string()).warnings);
}

TEST(ReportList, SaysThatThereIsNothing) {
    AnalysedStore store;
    const auto document = reportList(store);
    EXPECT_EQ(document.pageCount(), 1);
    EXPECT_THAT(pdfText(printed_pdf(document, "report-list-none")),
                HasSubstr("該当するデータはありません。"));
}

TEST(ReportList, GoesOnOverPagesAndLosesNoControl) {
    AnalysedStore store;
    for (int i = 0; i < 30; ++i) {
        store.addReport(text("R_帳票" + std::to_string(i)), text("受注"), 1);
        for (int level = 0; level < i % 11; ++level) {
            store.addGroupLevel(text("項目" + std::to_string(level)), 0, true, 0, 1, 0);
        }
        store.addControls(100);
    }
    const auto document = reportList(store);
    const auto pdf = printed_pdf(document, "report-list-3000");
    EXPECT_THAT(squeezed(pdfText(pdf)), HasSubstr(squeezed("レポート 30 件、コントロール 3,000 件")));
    EXPECT_EQ(document.search(u"金額99").size(), 30U);
    EXPECT_EQ(document.outline().size(), 30U);
}

TEST(Census, ShowsCountsAndTotalsAndLeavesZerosBlank) {
    AnalysedStore store;
    store.addCensus(u"Form", text("F_受注入力"), {1, 23, 4, 1, 6, 3, 2, 1, 0, 18, 1, 5, 1, 0, 1, 2, 0, 0, 1});
    store.addCensus(u"Form", text("F_空のフォーム"), {});
    store.addCensus(u"Report", text("R_納品書"), {2, 1000, 10, 0, 0, 0, 0, 0, 0, 234});
    const auto document = census(store);
    EXPECT_EQ(toUtf8(document.title()), "コントロール数");
    const auto pdf = printed_pdf(document, "census-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said :
         {"1 F_受注入力 1 23 4 1 6 3 2 1 18 1 5 1 1 2 1 70", "2 F_空のフォーム 0", "フォーム 2 件 1 23 4 1 6",
          "3 R_納品書 2 1,000 10 234 1,246", "レポート 1 件 2 1,000 10 234 1,246",
          "合計 3 1,023 14 1 6 3 2 1 252 1 5 1 1 2 1 1,316"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(factsOf(pdf.string()).outline, testing::ElementsAre("フォーム 1", "レポート 1"));
}

TEST(Census, HoldsManyObjectsTheLongestNamesAndTheLargestCounts) {
    AnalysedStore store;
    for (const Text& name : longestNames()) {
        store.addCensus(u"Form", name, std::vector<std::int64_t>(19, 754));
    }
    for (int i = 0; i < 2000; ++i) {
        store.addCensus(u"Form", text("F_画面" + std::to_string(i)),
                        {0, i % 90, 0, 0, i % 7, 0, 0, 0, 0, i % 40});
    }
    for (int i = 0; i < 1000; ++i) {
        store.addCensus(u"Report", text("R_帳票" + std::to_string(i)),
                        {2, i % 50, 0, 0, 0, 0, 0, 0, 0, i % 60});
    }
    const auto document = census(store);
    const auto pdf = printed_pdf(document, "census-3000");
    for (const Text& name : longestNames()) {
        EXPECT_EQ(document.search(name).size(), 1U);
    }
    EXPECT_GE(document.search(u"754", 0, 1).size(), 57U);
    const std::string pages = squeezed(pdfText(pdf));
    EXPECT_THAT(pages, HasSubstr(squeezed("フォーム 2,003 件")));
    EXPECT_THAT(pages, HasSubstr(squeezed("合計 4,262")));
    EXPECT_THAT(pdfText(pdf, "-f 3 -l 3"), HasSubstr("フォーム(続き)"));
}

TEST(Census, SaysThatThereIsNothing) {
    AnalysedStore store;
    EXPECT_THAT(pdfText(printed_pdf(census(store), "census-none")),
                HasSubstr("該当するデータはありません。"));
}

} // namespace
} // namespace relvane::test
