// The lists of tables, indexes and files as they are delivered, through the views of the work database.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis_samples.h"
#include "pdf_facts.h"
#include "report_samples.h"

namespace relvane::test {
namespace {

using testing::HasSubstr;
using testing::Not;

reports::ReportDocument tableList(AnalysedStore& store) {
    return reports::open(store.rows(), u"R_RvTblTable", printed);
}

TEST(TableList, ShowsTablesTheirAttributesAndFields) {
    AnalysedStore store;
    store.addTable(text("受注"), 6);
    store.addTable(text("空の表"), 0);
    store.addLink(text("在庫"), text("Link(ODBC)"), text("ODBC;DSN=本社;DATABASE=zaiko"), 0x20000000);
    const auto document = tableList(store);
    EXPECT_EQ(toUtf8(document.title()), "テーブル一覧(詳細)");
    const auto pdf = printed_pdf(document, "table-list-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said : {"テーブル一覧(詳細)",
                             "作成日時 1997/08/01 09:30:00",
                             "更新日時 2003/12/24 18:05:59",
                             "レコード数 1,830",
                             "更新可能 はい",
                             "受注と明細の元になる表。",
                             "フィールド 6 件",
                             "ｵｰﾄﾅﾝﾊﾞｰ型",
                             ">=#1996/01/01#",
                             "=Date()",
                             "新規の受注に自動的に割り当てられる番号",
                             "フィールドはありません。",

                             "Link(ODBC)",
                             "ODBC;DSN=本社;DATABASE=zaiko",
                             "dbo.在庫",
                             "不明(リンクテーブル)",
                             "536870912(ODBC へのリンク)",
                             "更新可能 いいえ",
                             "テーブル 3 件、フィールド 7 件",
                             "テーブル 受注 ～ テーブル 空の表"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_EQ(document.search(u"○").size(), 2U); // the key, and the field that takes empty texts
    const PdfFacts facts = factsOf(pdf.string());
    EXPECT_THAT(facts.outline, testing::ElementsAre("受注 1", "空の表 1", "在庫 2"));
    EXPECT_FALSE(facts.warnings);
}

TEST(TableList, HasNoColumnsThatTheSimpleListNeverFills) {
    AnalysedStore store;
    store.addTable(text("受注"), 6, 2);
    const auto document = tableList(store);
    EXPECT_EQ(toUtf8(document.title()), "テーブル一覧(簡易)");
    const std::string page = pdfText(printed_pdf(document, "table-list-simple"));
    EXPECT_THAT(page, HasSubstr("データ型"));
    EXPECT_THAT(page, HasSubstr("受注コード"));
    EXPECT_THAT(page, Not(HasSubstr("主キー")));
    EXPECT_EQ(document.search(u"説明").size(), 1U); // that of the table
    EXPECT_TRUE(document.search(u"フィールドはありません").empty());
}

TEST(TableList, SaysThatThereIsNothing) {
    AnalysedStore store;
    const auto document = tableList(store);
    EXPECT_EQ(document.pageCount(), 1);
    const std::string page = pdfText(printed_pdf(document, "table-list-none"));
    EXPECT_THAT(page, HasSubstr("テーブル一覧"));
    EXPECT_THAT(page, HasSubstr("該当するデータはありません。"));
}

TEST(TableList, GoesOnOverPagesAndLosesNoField) {
    AnalysedStore store;
    store.addTable(text("短い表"), 3);
    store.addTable(text("長い表"), 255);
    for (int i = 0; i < 200; ++i) {
        store.addTable(text("表" + std::to_string(i)), 14);
    }
    const auto document = tableList(store);
    const auto pdf = printed_pdf(document, "table-list-3000");
    const std::string second = pdfText(pdf, "-layout -f 2 -l 2");
    EXPECT_THAT(second, HasSubstr("長い表(続き)"));
    EXPECT_THAT(second, HasSubstr("フィールド名"));
    EXPECT_THAT(squeezed(pdfText(pdf)), HasSubstr(squeezed("テーブル 202 件、フィールド 3,058 件")));
    EXPECT_EQ(document.outline().size(), 202U);
    EXPECT_EQ(document.search(u"備考254").size(), 0U);
    EXPECT_EQ(document.search(u"受注日254").size(), 1U);
}

TEST(TableList, GrowsWithTheLongestNamesTextsAndNumbers) {
    AnalysedStore store;
    std::int64_t number = 0;
    Text story;
    while (story.size() < 600) {
        story += u"得意先の締め日を過ぎた受注は、翌月分として扱います。";
    }
    for (const Text& name : longestNames()) {
        ++number;
        store.add(u"T_RvTblInfo", {{u"objectNo", number},
                                   {u"TableName", name},
                                   {u"LinkTable", text("Link(その他)")},
                                   {u"Connect", name.substr(0, 140)},
                                   {u"SourceTableName", name},
                                   {u"RecordCount", std::int64_t{2147483647}},
                                   {u"Attributes", std::int64_t{-2147483647}},
                                   {u"Midasi", std::int64_t{3}},
                                   {u"Description", story}});
        store.add(u"T_RvTblItem", {{u"objectNo", number},
                                   {u"FieldNo", std::int64_t{1}},
                                   {u"FieldName", name},
                                   {u"FieldType", text("ﾊｲﾊﾟｰﾘﾝｸ型")},
                                   {u"FieldSize", std::int64_t{2147483647}},
                                   {u"DefaultValue", name.substr(0, 50)},
                                   {u"ValRule", name},
                                   {u"Description", story}});
    }
    const auto document = tableList(store);
    printed_pdf(document, "table-list-longest");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name).size(), 4U); // bar, source, field, rule: each whole
    }
    EXPECT_EQ(document.search(story).size(),
              3U); // above the fields; that of the field goes over the page's end
    EXPECT_EQ(document.search(u"2,147,483,647").size(), 6U);
    EXPECT_EQ(document.search(u"-2147483647").size(), 3U);
}

TEST(IndexList, NamesAnIndexOnceAndItsFurtherFieldsBelow) {
    AnalysedStore store;
    store.addIndexes(text("受注明細"), {{text("受注コード"), text("商品コード"), text("行番号")},
                                        {text("受注コード")},
                                        {text("商品コード")}});
    store.addIndexes(text("索引なし"), {});
    store.addIndexes(text("得意先"), {{text("得意先コード")}});
    const auto document = reports::open(store.rows(), u"R_RvTblIndex", printed);
    EXPECT_EQ(toUtf8(document.title()), "インデックス一覧");
    const auto pdf = printed_pdf(document, "index-list-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said : {"インデックス 3 件、フィールド 5 件", "インデックス 1 件、フィールド 1 件",
                             "テーブル 2 件、インデックス 4 件、フィールド 6 件", "クラスター", "Null 無視",
                             "1 PrimaryKey 受注コード ○ ○ ○", "2 商品コード 3 行番号 4 idx_受注コード"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(page, Not(HasSubstr("索引なし")));
    EXPECT_EQ(document.search(u"PrimaryKey").size(), 2U);
    EXPECT_EQ(document.search(u"○").size(), 8U);
    EXPECT_THAT(factsOf(pdf.string()).outline, testing::ElementsAre("受注明細 1", "得意先 1"));
}

TEST(IndexList, KeepsAnIndexTogetherAndNamesTheTableOnEveryPage) {
    AnalysedStore store;
    std::vector<std::vector<Text>> indexes;
    for (int i = 0; i < 32; ++i) {
        indexes.push_back({text("項目" + std::to_string(i) + "甲"), text("項目" + std::to_string(i) + "乙"),
                           text("項目" + std::to_string(i) + "丙")});
    }
    store.addIndexes(text("索引の多い表"), indexes);
    const auto document = reports::open(store.rows(), u"R_RvTblIndex", printed);
    ASSERT_GE(document.pageCount(), 3);
    const auto pdf = printed_pdf(document, "index-list-long");
    for (int i = 0; i < 32; ++i) {
        const auto first = document.search(text("項目" + std::to_string(i) + "甲"));
        const auto last = document.search(text("項目" + std::to_string(i) + "丙"));
        EXPECT_EQ(first.back().page, last.back().page) << i;
    }
    EXPECT_THAT(pdfText(pdf, "-f 2 -l 2"), HasSubstr("索引の多い表(続き)"));
}

TEST(IndexList, RepeatsTheNameOfAnIndexThatIsCut) {
    AnalysedStore store;
    std::vector<Text> fields;
    for (int i = 0; i < 40; ++i) {
        fields.push_back(text("項目" + std::to_string(i)));
    }
    store.addIndexes(text("索引の長い表"), {fields, {text("別の項目")}});
    const auto document = reports::open(store.rows(), u"R_RvTblIndex", printed);
    const auto pdf = printed_pdf(document, "index-list-cut");
    EXPECT_THAT(pdfText(pdf, "-f 1 -l 1"), Not(HasSubstr("(続き)")));
    const std::string second = pdfText(pdf, "-f 2 -l 2");
    EXPECT_THAT(second, HasSubstr("索引の長い表(続き)"));
    EXPECT_THAT(second, HasSubstr("PrimaryKey(続き)"));
    EXPECT_EQ(document.search(u"PrimaryKey").size(), static_cast<std::size_t>(document.pageCount()));
    EXPECT_THAT(squeezed(pdfText(pdf)), HasSubstr(squeezed("インデックス 2 件、フィールド 41 件")));
}

TEST(IndexList, SaysThatThereIsNothing) {
    AnalysedStore store;
    const auto document = reports::open(store.rows(), u"R_RvTblIndex", printed);
    EXPECT_THAT(pdfText(printed_pdf(document, "index-list-none")), HasSubstr("該当するデータはありません。"));
}

TEST(FileList, ShowsFilesAndTheirTotals) {
    AnalysedStore store;
    const Text folder = text("C:\\業務\\受注管理\\");
    store.addFile(text("受注管理.mdb"), 1536.25, folder, false);
    store.addFile(text("受注データ.mdb"), 20480.0, folder, true);
    store.addFile(text("readme.txt"), 0.0625, folder, false);
    const auto document = reports::open(store.rows(), u"R_RvFile", printed);
    EXPECT_EQ(toUtf8(document.title()), "ファイル一覧");
    const std::string page = squeezed(pdfText(printed_pdf(document, "file-list-3")));
    for (const char* said :
         {"1 受注管理.mdb 1,536.3 2003/12/24 18:05:59", "20,480.0", "0.1", "2003/12/24 18:05:59 ○",
          "C:\\業務\\受注管理\\", "ファイル 3 件、サイズ 22,016.3 KB", "受注管理.mdb ～ readme.txt"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_EQ(document.search(u"○").size(), 1U);
}

TEST(FileList, HoldsManyFilesAndTheLongestPaths) {
    AnalysedStore store;
    Text folder = u"\\\\server\\";
    while (folder.size() < 240) {
        folder += text("営業本部の共有フォルダー\\");
    }
    for (const Text& name : longestNames()) {
        store.addFile(name, 2097151.9, folder, true);
    }
    for (int i = 0; i < 3000; ++i) {
        store.addFile(text("file" + std::to_string(i) + ".mdb"), 1, text("C:\\data\\"), false);
    }
    const auto document = reports::open(store.rows(), u"R_RvFile", printed);
    const auto pdf = printed_pdf(document, "file-list-3000");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name, 0, 1).size(), 1U);
    }
    EXPECT_EQ(document.search(folder, 0, 1).size(), 3U);
    EXPECT_THAT(squeezed(pdfText(pdf)), HasSubstr(squeezed("ファイル 3,003 件、サイズ 6,294,455.7 KB")));
    EXPECT_EQ(document.search(u"file2999.mdb").front().page, document.pageCount() - 1);
}

TEST(FileList, SaysThatThereIsNothing) {
    AnalysedStore store;
    const auto document = reports::open(store.rows(), u"R_RvFile", printed);
    EXPECT_EQ(document.pageCount(), 1);
    EXPECT_THAT(pdfText(printed_pdf(document, "file-list-none")), HasSubstr("該当するデータはありません。"));
}

} // namespace
} // namespace relvane::test
