// The lists of queries as they are delivered, through the views of the work database.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis_samples.h"
#include "pdf_facts.h"
#include "report_samples.h"

namespace relvane::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* joinSql =
    "SELECT DISTINCTROW 受注.受注コード, 受注.得意先コード, [受注明細].[単価]*[数量] AS 金額\r\n"
    "FROM 受注 INNER JOIN 受注明細 ON 受注.受注コード = 受注明細.受注コード\r\n"
    "WHERE (((受注.受注日) Between #4/1/97# And #3/31/98#))\r\nORDER BY 受注.受注コード;\r\n";

reports::ReportDocument queryList(AnalysedStore& store) {
    return reports::open(store.rows(), u"R_RvQeryAll", printed);
}
reports::ReportDocument sqlList(AnalysedStore& store) {
    return reports::open(store.rows(), u"R_RvQerySql", printed);
}

TEST(QueryList, ShowsAttributesSqlAndFields) {
    AnalysedStore store;
    store.addQuery(text("Q_受注金額"), text("選択ｸｴﾘｰ"), text(joinSql), 4);
    store.addQuery(text("Q_削除"), text("削除ｸｴﾘｰ"), text("DELETE 受注.*\r\nFROM 受注;\r\n"), 0);
    store.addQuery(text("Q_あいまい"), text("選択ｸｴﾘｰ"), text("あいまいな外部結合のため開けません。"), 1);
    const auto document = queryList(store);
    EXPECT_EQ(toUtf8(document.title()), "クエリー一覧(詳細)");
    const auto pdf = printed_pdf(document, "query-list-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said :
         {"クエリー一覧(詳細)", "選択ｸｴﾘｰ", "作成日時 1997/08/01 09:30:00", "ODBC タイムアウト 60 秒",
          "最大レコード数 0 (制限なし)", "更新可能 はい", "影響レコード数 0",
          "説明 月末の請求書の元になります。", "ＳＱＬ", "[受注明細].[単価]*[数量] AS 金額",
          "ORDER BY 受注.受注コード;", "元のテーブル", "フィールド 4 件", "フィールドはありません。",
          "あいまいな外部結合のため開けません。", "クエリー 3 件、フィールド 5 件"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(factsOf(pdf.string()).outline,
                testing::ElementsAre("Q_受注金額 1", "Q_削除 1", testing::StartsWith("Q_あいまい ")));
    // A size that is not known stands where the numbers end.
    const auto unknown = document.search(u"?");
    const auto known = document.search(u"8");
    ASSERT_EQ(unknown.size(), 1U);
    const double right = unknown.front().rectangles.front().right();
    EXPECT_TRUE(std::any_of(known.begin(), known.end(), [&](const reports::Hit& hit) {
        return std::abs(hit.rectangles.front().right() - right) < 1;
    }));
}

TEST(QueryList, OfTheSimpleOptionHasNeitherSqlNorDescription) {
    AnalysedStore store;
    store.addQuery(text("Q_受注金額"), text("選択ｸｴﾘｰ"), text(joinSql), 4, 2);
    const auto document = queryList(store);
    EXPECT_EQ(toUtf8(document.title()), "クエリー一覧(簡易)");
    const std::string page = pdfText(printed_pdf(document, "query-list-simple"));
    EXPECT_THAT(page, HasSubstr("元のフィールド"));
    EXPECT_THAT(page, Not(HasSubstr("ＳＱＬ")));
    EXPECT_THAT(page, Not(HasSubstr("説明")));
}

TEST(QueryList, TakesNoFieldsOfAnEarlierRun) {
    AnalysedStore store;
    store.addQuery(text("Q_前回"), text("選択ｸｴﾘｰ"), text(joinSql), 4);
    store.rows()->Execute(u"delete * from T_RvQeryInfo;");
    store.add(u"T_RvQeryInfo", {{u"objectNo", std::int64_t{1}},
                                {u"QueryName", text("Q_今回")},
                                {u"QueryType", text("選択ｸｴﾘｰ")},
                                {u"QuerySQL", text("SELECT 1;\r\n")},
                                {u"Midasi", std::int64_t{1}}});
    const std::string page = pdfText(printed_pdf(queryList(store), "query-list-stale"));
    EXPECT_THAT(page, HasSubstr("フィールドはありません。"));
    EXPECT_THAT(page, Not(HasSubstr("得意先コード")));
}

TEST(QueryList, SaysThatThereIsNothing) {
    AnalysedStore store;
    const auto document = queryList(store);
    EXPECT_EQ(document.pageCount(), 1);
    EXPECT_THAT(pdfText(printed_pdf(document, "query-list-none")), HasSubstr("該当するデータはありません。"));
}

TEST(QueryList, SetsAnEndlessStatementOverItsFields) {
    AnalysedStore store;
    const Text sql = endlessSql(60000);
    store.addQuery(text("Q_短い"), text("選択ｸｴﾘｰ"), text(joinSql), 2);
    store.addQuery(text("Q_長い"), text("選択ｸｴﾘｰ"), sql, 5);
    const auto document = queryList(store);
    ASSERT_GT(document.pageCount(), 6);
    const auto pdf = printed_pdf(document, "query-list-60k");
    EXPECT_THAT(squeezed(pdfText(pdf)), HasSubstr(squeezed("クエリー 2 件、フィールド 7 件")));
    EXPECT_THAT(pdfText(pdf, "-f 3 -l 3"), HasSubstr("Q_長い(続き)"));
    EXPECT_EQ(document.search(u"10").size() > 0, true);
}

TEST(SqlList, ShowsEachStatementAsWritten) {
    AnalysedStore store;
    store.addQuery(text("Q_受注金額"), text("選択ｸｴﾘｰ"), text(joinSql), 0, 1);
    store.addQuery(text("Q_タブ"), text("追加ｸｴﾘｰ"),
                   text("INSERT INTO 受注\r\n\t( 得意先コード )\r\nSELECT \"A\" AS 式1;\r\n"), 0, 1);
    store.addQuery(text("Q_なし"), text("選択ｸｴﾘｰ"), Null{}, 0, 1);
    const auto document = sqlList(store);
    EXPECT_EQ(toUtf8(document.title()), "ＳＱＬ一覧");
    const auto pdf = printed_pdf(document, "sql-list-3");
    const std::string page = pdfText(pdf);
    EXPECT_THAT(page, HasSubstr("Between #4/1/97# And #3/31/98#"));
    EXPECT_THAT(page, HasSubstr("ＳＱＬ文はありません。"));
    EXPECT_THAT(page, HasSubstr("クエリー 3 件"));
    EXPECT_THAT(page, HasSubstr("追加ｸｴﾘｰ"));
    EXPECT_THAT(factsOf(pdf.string()).outline, testing::ElementsAre("Q_受注金額 1", "Q_タブ 1", "Q_なし 1"));
    // The line behind a tab is indented by four characters of the fixed-width face.
    const double tab = document.search(u"( 得意先コード )").front().rectangles.front().left();
    const double flush = document.search(u"INSERT INTO").front().rectangles.front().left();
    EXPECT_NEAR(tab - flush, 4 * 8 * 20 / 2.0, 1);
}

TEST(SqlList, LosesNothingOfAStatementOverManyPages) {
    AnalysedStore store;
    const Text sql = endlessSql(60000);
    store.addQuery(text("Q_長い"), text("選択ｸｴﾘｰ"), sql, 0, 1);
    const auto document = sqlList(store);
    ASSERT_GT(document.pageCount(), 5);
    const auto pdf = printed_pdf(document, "sql-list-60k");
    const std::string all = squeezed(pdfText(pdf, "-raw"));
    for (int number = 1; number < 1000; ++number) {
        const std::string value = std::to_string(10000 + number);
        ASSERT_THAT(all, HasSubstr("\"C" + value + "\"AND"));
        ASSERT_THAT(all, HasSubstr("'値" + value + "')OR"));
    }
    EXPECT_THAT(pdfText(pdf, "-f 4 -l 4"), HasSubstr("Q_長い(続き)"));
    // No line runs out of its box.
    const double right = document.pageSize(0).width() - 12 * 1440 / 25.4;
    for (const auto& hit : document.search(u"OR ")) {
        EXPECT_LT(hit.rectangles.front().right(), right);
    }
}

TEST(SqlList, HoldsThousandsOfQueries) {
    AnalysedStore store;
    for (int i = 0; i < 3000; ++i) {
        store.addQuery(text("Q_" + std::to_string(i)), text("選択ｸｴﾘｰ"), text(joinSql), 0, 1);
    }
    for (const Text& name : longestNames()) {
        store.addQuery(name.substr(0, 127), text("ﾃﾞｰﾀ定義ｸｴﾘｰ(隠し)"), name, 0, 1);
    }
    const auto document = sqlList(store);
    const auto pdf = printed_pdf(document, "sql-list-3000");
    EXPECT_EQ(document.outline().size(), 3003U);
    EXPECT_THAT(squeezed(pdfText(pdf)), HasSubstr(squeezed("クエリー 3,003 件")));
    for (const Text& name : longestNames()) {
        EXPECT_EQ(document.search(name, document.pageCount() - 2, 2).size(), 1U);
    }
}

TEST(SqlList, SaysThatThereIsNothing) {
    AnalysedStore store;
    const auto document = sqlList(store);
    EXPECT_THAT(pdfText(printed_pdf(document, "sql-list-none")), HasSubstr("該当するデータはありません。"));
}

} // namespace
} // namespace relvane::test
