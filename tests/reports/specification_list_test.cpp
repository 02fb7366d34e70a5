// The list of import and export specifications as it is delivered.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis_samples.h"
#include "pdf_facts.h"
#include "report_samples.h"

namespace relvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Specifications {
public:
    struct Codes {
        std::int64_t type, file, order;
        Value separator, delimiter;
    };
    void specification(const Text& name, const Codes& codes) {
        store_.add(u"T_RvTeigi", {{u"DateDelim", Text(u"/")},
                                  {u"DateFourDigitYear", true},
                                  {u"DateLeadingZeros", false},
                                  {u"DateOrder", codes.order},
                                  {u"DecimalPoint", Text(u".")},
                                  {u"FieldSeparator", codes.separator},
                                  {u"FileType", codes.file},
                                  {u"SpecID", ++specification_},
                                  {u"SpecName", name},
                                  {u"SpecType", codes.type},
                                  {u"StartRow", std::int64_t{1}},
                                  {u"TextDelim", codes.delimiter},
                                  {u"TimeDelim", Text(u":")}});
    }
    void column(const Text& name, std::int64_t type, std::int64_t start, std::int64_t width,
                std::int64_t index = 0, bool skip = false) {
        store_.add(u"T_RvTeigiItem", {{u"Attributes", std::int64_t{0}},
                                      {u"dataType", type},
                                      {u"FieldName", name},
                                      {u"IndexType", index},
                                      {u"SkipColumn", skip},
                                      {u"SpecID", specification_},
                                      {u"Start", start},
                                      {u"Width", width}});
    }
    reports::ReportDocument list() { return reports::open(store_.rows(), u"R_RvTextTeigi", printed); }

private:
    AnalysedStore store_;
    std::int64_t specification_ = 0;
};

void addSpecifications(Specifications& rows) {
    rows.specification(text("受注 取込定義"), {1, 932, 5, Text(u","), Text(u"\"")});
    rows.column(text("受注日"), 8, 2, 10);
    rows.column(text("受注コード"), 4, 1, 6, 2);
    rows.column(text("備考"), 12, 3, 255, 0, true);
    rows.specification(text("出荷 固定長"), {2, 0, 2, Text(u"\t"), Null{}});
    rows.specification(text("他の定義"), {7, 4711, 9, Text(u"#"), Text(u"\x01")});
    rows.column(u"F1", 99, 1, 1, 9);
}

TEST(SpecificationList, PrintsCodesWithTheirMeaningAndColumnsByTheirPlace) {
    Specifications rows;
    addSpecifications(rows);
    const auto document = rows.list();
    EXPECT_EQ(toUtf8(document.title()), "変換定義一覧");
    const auto pdf = printed_pdf(document, "specifications-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said : {"1 受注 取込定義 区切り記号付き",
                             "ファイルの形式 1 区切り記号付き 文字コード 932 日本語 (シフト JIS)",
                             "フィールド区切り記号 コンマ ( , ) テキスト区切り記号 二重引用符 ( \" )",
                             "日付の順序 5 年・月・日 日付の区切り記号 スラッシュ ( / )",
                             "年を 4 桁で表す はい 時刻の区切り記号 コロン ( : )",
                             "日付の先頭にゼロ いいえ 小数点の記号 ピリオド ( . )", "開始行 1",
                             "番号 フィールド名 データ型 開始位置 幅 スキップ インデックス 属性",
                             "1 受注コード 4 長整数型 1 6 2 あり (重複なし) 0 2 受注日 8 日付型 2 10 0 なし "
                             "0 3 備考 12 ﾒﾓ型 3 255 "
                             "○ 0 なし 0 フィールド 3 件",
                             "2 出荷 固定長 固定長 ファイルの形式 2 固定長 文字コード 0 既定の文字コード "
                             "フィールド区切り記号 タブ "
                             "テキスト区切り記号 なし 日付の順序 2 月・日・年",
                             "フィールドはありません。", "変換定義 3 件、フィールド 4 件"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(factsOf(pdf.string()).outline,
                testing::UnorderedElementsAre("受注 取込定義 1", testing::StartsWith("出荷 固定長 "),
                                              testing::StartsWith("他の定義 ")));
}

TEST(SpecificationList, PrintsUnknownCodesAsTheyStand) {
    Specifications rows;
    addSpecifications(rows);
    const std::string page = squeezed(pdfText(printed_pdf(rows.list(), "specifications-unknown")));
    for (const char* said :
         {"ファイルの形式 7 文字コード 4711 フィールド区切り記号 # テキスト区切り記号 制御文字 (1)",
          "日付の順序 9 日付の区切り記号", "1 F1 99 1 1 9 0"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
}

TEST(SpecificationList, NamesTheSpecificationAtTheTopOfEveryPage) {
    Specifications rows;
    for (int i = 0; i < 10; ++i) {
        rows.specification(text("定義" + std::to_string(i)), {2, 932, 5, Text(u","), Text(u"\"")});
        for (int column = 0; column < 300; ++column) {
            rows.column(text("項目" + std::to_string(column)), 10, 1 + 20 * column, 20);
        }
    }
    const auto document = rows.list();
    const std::string all = pdfText(printed_pdf(document, "specifications-3000"));
    int pages = 0;
    for (std::size_t from = 0, end; (end = all.find('\f', from)) != std::string::npos; from = end + 1) {
        ASSERT_THAT(all.substr(from, end - from), testing::ContainsRegex("定義[0-9]"));
        ++pages;
    }
    EXPECT_EQ(pages, document.pageCount());
    EXPECT_EQ(document.search(u"項目299").size(), 10U);
    EXPECT_EQ(document.search(text("変換定義 10 件、フィールド 3,000 件")).size(), 1U);
}

TEST(SpecificationList, GrowsWithTheLongestNames) {
    Specifications rows;
    for (const Text& name : longestNames()) {
        rows.specification(name, {1, -13604, 5, Text(u","), Text(u"\"")});
        rows.column(name, 6, 32767, 32767, 1, true);
    }
    const auto document = rows.list();
    printed_pdf(document, "specifications-longest");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name).size(), 2U);
    }
}

TEST(SpecificationList, SaysThatThereIsNothing) {
    Specifications rows;
    EXPECT_THAT(pdfText(printed_pdf(rows.list(), "specifications-none")),
                HasSubstr("該当するデータはありません。"));
}

} // namespace
} // namespace relvane::test
