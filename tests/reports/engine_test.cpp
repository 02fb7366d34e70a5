// The engine with definitions of the kinds that the reports need: attribute blocks, nested groups, listings.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "platform/runtime_error.h"
#include "report_samples.h"
#include "reports/pdf.h"

namespace relvane::test {
namespace {

using reports::ReportDocument;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

ReportDocument documentOf(const std::shared_ptr<MemoryStore>& store, const std::string& json) {
    return {store, reports::parseDefinition(u"R_Test", text(json)), printed};
}

// A table definition: one group a table, with attributes, then its fields.
constexpr const char* tableList = R"json({
    "title": "テーブル一覧(詳細)",
                     "page" : "lying",
                     "source" : "V",
                     "sort" : [ "objectNo", "FieldNo" ],
                     "inHand" : "[TableName]",
                     "counters"
    : {"fields" : {"when" : "FieldNo"}, "tables" : {"groups" : "table"}, "bytes" : {"sum" : "FieldSize"}},
                     "groups" : [ {
                         "name" : "table",
                         "by" : ["objectNo"],
                         "number" : "[objectNo]",
                         "title" : "[TableName]",
                         "kind" : "[LinkTable]",
                         "outline" : "[TableName]",
                         "labelWidth" : 28,
                         "attributes" : [
                             {"label" : "作成日時", "text" : "[DateCreated]"},
                             {"label" : "更新日時", "text" : "[LastUpdated]"},
                             {"label" : "レコード数", "text" : "[RecordCount:count]"},
                             {"label" : "更新可能", "text" : "[Updatable:yesno]"},
                             {"label" : "説明", "text" : "[Description]", "wide" : true, "omitEmpty" : true}
                         ],
                         "foot" : [
                             {"label" : "フィールド", "counter" : "fields"},
                             {"label" : "サイズ", "counter" : "bytes", "unit" : "バイト"}
                         ]
                     } ],
                     "tables"
    : [ {
        "when" : "FieldNo",
        "emptyText" : "フィールドはありません。",
        "columns" : [
            {"heading" : "No", "text" : "[FieldNo]", "width" : 10, "align" : "right"},
            {"heading" : "主キー", "text" : "[PrimaryKey]", "width" : 14, "align" : "center"},
            {"heading" : "フィールド名", "text" : "[FieldName]"},
            {"heading" : "型", "text" : "[FieldType]", "width" : 30},
            {"heading" : "サイズ", "text" : "[FieldSize:count]", "width" : 18, "align" : "right"},
            {"heading" : "既定値", "text" : "[DefaultValue]", "width" : 40, "wrap" : "characters"},
            {"heading" : "累計", "text" : "[#bytes]", "width" : 20, "align" : "right"}
        ]
    } ],
                     "foot"
    : [ {"label" : "テーブル", "counter" : "tables"}, {"label" : "フィールド", "counter" : "fields"} ]
})json";

std::shared_ptr<MemoryStore> tables(const std::vector<int>& fieldCounts) {
    auto store = emptyStore();
    MemoryTable& view = store->tables[u"V"];
    view.fields = {u"objectNo",    u"TableName", u"LinkTable",    u"DateCreated", u"LastUpdated",
                   u"RecordCount", u"Updatable", u"FieldNo",      u"PrimaryKey",  u"FieldName",
                   u"FieldType",   u"FieldSize", u"DefaultValue", u"Description"};
    std::int64_t number = 0;
    for (const int count : fieldCounts) {
        ++number;
        const Text name = text("テーブル" + std::to_string(number));
        const Value description = number % 2 == 0 ? Value(text("偶数番目の表")) : Value(Null{});
        for (int field = 1; field <= std::max(count, 1); ++field) {
            const bool some = count > 0;
            view.rows.push_back(
                {number, name, text("Link(Access)"), DateTime{1998, 1, 2, 3, 4, 5},
                 DateTime{2001, 2, 3, 4, 5, 6}, std::int64_t{1234567}, true,
                 some ? Value(std::int64_t{field}) : Null{}, some && field == 1,
                 some ? Value(text("項目" + std::to_string(number) + "_" + std::to_string(field))) : Null{},
                 text("テキスト型"), std::int64_t{50}, text("\"既定\""), description});
        }
    }
    return store;
}

TEST(Groups, HaveBarAttributesRowsAndCounts) {
    const auto document = documentOf(tables({3, 0, 2}), tableList);
    const std::string page = squeezed(pdfText(printed_pdf(document, "tables")));
    for (const char* said : {"テーブル一覧(詳細)", "2026/11/20 16:05", "頁1/1", "テーブル1", "Link(Access)",
                             "1998/01/02 03:04:05", "1,234,567", "はい", "主キー", "○", "項目3_2",
                             "フィールド 3 件、サイズ 150 バイト", "フィールドはありません。", "偶数番目の表",
                             "テーブル 3 件、フィールド 5 件", "Relvane97 Ver 2.0"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    // The table without fields has its own zero, and running totals start anew with each group.
    EXPECT_THAT(page, HasSubstr("フィールド0件"));
    EXPECT_THAT(page, HasSubstr("150"));
    EXPECT_THAT(page, Not(HasSubstr("250")));
}

TEST(Groups, OfWhichTheConditionDoesNotHoldAreNeitherShownNorCounted) {
    const auto document =
        documentOf(tables({2, 0, 1}), R"json({ "source": "V", "sort": ["objectNo", "FieldNo"],
        "counters": { "fields": { "groups": "field" } },
        "groups": [ { "name": "field", "by": ["FieldNo"], "when": "FieldNo",
                      "columns": [ { "heading": "名前", "text": "[FieldName]", "bold": true },
                                   { "heading": "型", "text": "[FieldType]" } ] } ],
        "tables": [ { "when": { "FieldNo": "1" }, "within": "field", "indent": 10, "emptyText": "なし。",
                      "columns": [ { "heading": "値", "text": "[DefaultValue]" } ] } ],
        "foot": [ { "label": "項目", "counter": "fields" } ] })json");
    const std::string page = squeezed(pdfText(printed_pdf(document, "columns-bar")));
    // Both headings stand above the first; a field that no table prints has its bar; the empty table has its line.
    EXPECT_THAT(page,
                HasSubstr(squeezed("名前 型 値 項目1_1 テキスト型 \"既定\" 項目1_2 テキスト型 なし。")));
    EXPECT_THAT(page, HasSubstr(squeezed("項目 3 件")));
    EXPECT_EQ(document.search(u"なし。").size(), 1U);
}

TEST(Totals, StandBelowTheirColumns) {
    const auto list = [](const char* overall) {
        return documentOf(tables({3, 2}), std::string(R"json({ "source": "V", "sort": ["objectNo", "FieldNo"],
        "words": { "overall": { "Link(Access)": ")json") +
                                              overall + R"json(" } },
        "counters": { "rows": {}, "bytes": { "sum": "FieldSize" }, "none": { "sum": "FieldName" } },
        "groups": [ { "name": "table", "by": ["objectNo"], "title": "[TableName]",
                      "totals": "[TableName] 計 [#rows] 行" } ],
        "tables": [ { "columns": [ { "heading": "名前", "text": "[FieldName]" },
                                   { "heading": "サイズ", "text": "[FieldSize]", "total": "[#bytes]",
                                     "width": 30, "align": "right" },
                                   { "heading": "無", "text": "", "total": "[#none:tally]", "width": 10 } ] } ],
        "totals": "[LinkTable|overall]" })json");
    };
    const auto document = list("総計");
    const std::string page = squeezed(pdfText(printed_pdf(document, "totals")));
    EXPECT_THAT(page, HasSubstr(squeezed("テーブル1 計 3 行 150")));
    EXPECT_THAT(page, HasSubstr(squeezed("テーブル2 計 2 行 100")));
    EXPECT_THAT(page, HasSubstr(squeezed("総計 250")));
    const auto rows = document.search(u"50"), total = document.search(u"250");
    EXPECT_NEAR(rows.front().rectangles.front().right(), total.front().rectangles.front().right(), 1);
    // Without a label there is no such row.
    EXPECT_TRUE(list("").search(u"250").empty());
}

TEST(Groups, GoOnWithTheirBarAndHeadingRepeated) {
    const auto document = documentOf(tables({60}), tableList);
    ASSERT_GE(document.pageCount(), 3);
    const auto pdf = printed_pdf(document, "tables-long");
    const std::string first = pdfText(pdf, "-layout -f 1 -l 1"), second = pdfText(pdf, "-layout -f 2 -l 2");
    EXPECT_THAT(first, Not(HasSubstr("(続き)")));
    EXPECT_THAT(second, HasSubstr("テーブル1(続き)"));
    EXPECT_THAT(second, HasSubstr("フィールド名"));
    EXPECT_THAT(second, Not(HasSubstr("1998/01/02"))); // attributes are not repeated
    EXPECT_THAT(squeezed(second), HasSubstr("頁2/" + std::to_string(document.pageCount())));
}

// Pages on which a group begins, by its bar and its first row.
TEST(Groups, AreNeverBegunInTheLastThirtyMillimetres) {
    for (int filler = 1; filler <= 30; ++filler) {
        const auto document = documentOf(tables({filler, 2}), tableList);
        const auto bars = document.search(u"テーブル2");
        const auto rows = document.search(u"項目2_1");
        ASSERT_FALSE(bars.empty());
        ASSERT_EQ(rows.size(), 1U);
        EXPECT_EQ(bars.front().page, rows.front().page) << filler;
        const double bottom = document.pageSize(0).height() - (12 + 6.5) * 1440 / 25.4;
        EXPECT_LE(bars.front().rectangles.front().top(), bottom - 29 * 1440 / 25.4) << filler;
        // The count of a group is never alone on a page.
        const auto counts = document.search(u"サイズ 100");
        ASSERT_FALSE(counts.empty());
        EXPECT_EQ(counts.back().page, document.search(u"項目2_2").front().page) << filler;
    }
}

TEST(Groups, LeaveNoSingleRowToTheNextPage) {
    for (int rows = 15; rows <= 60; ++rows) {
        const auto document = documentOf(tables({rows}), tableList);
        const auto last = document.search(text("項目1_" + std::to_string(rows)));
        const auto before = document.search(text("項目1_" + std::to_string(rows - 1)));
        ASSERT_EQ(last.size(), 1U);
        EXPECT_EQ(last.front().page, before.back().page) << rows;
    }
}

TEST(Groups, AreTheEntriesOfTheOutline) {
    const auto document = documentOf(tables({2, 70, 1}), tableList);
    ASSERT_EQ(document.outline().size(), 3U);
    EXPECT_EQ(document.outline()[1].text, text("テーブル2"));
    EXPECT_EQ(document.outline()[1].level, 0);
    EXPECT_EQ(document.outline()[1].page, document.search(u"項目2_1").front().page);
    EXPECT_EQ(document.outline()[2].page, document.search(u"項目3_1").front().page);
}

// A control list: form, control, property; the inner bar is lighter.
constexpr const char* controlList = R"json({
    "title": "[Midasi|titles]", "source": "V", "sort": ["objectNo", "ControlNo", "PropertyNo"], "inHand": "[FormName]",
    "words": { "titles": { "1": "ｺﾝﾄﾛｰﾙ一覧(簡易)",
                     "2" : "ｺﾝﾄﾛｰﾙ一覧(詳細)"
}
}
,
    "counters": { "controls": { "groups": "control" }, "properties": {}, "forms": { "groups": "form" } },
    "groups": [
        { "name": "form", "by": ["objectNo"], "number": "[objectNo]", "title": "[FormName]", "kind": "フォーム", "outline": "[FormName]",
          "newPage": true, "foot": [ { "label": "コントロール", "counter": "controls" }, { "label": "プロパティ", "counter": "properties" } ] },
        { "name": "control", "by": ["ControlNo"], "bar": "sub", "title": "[Name]", "kind": "[ControlType]", "outline": "[Name]", "keep": 15 } ],
    "tables": [ { "columns": [
        { "heading": "分類", "text": "[Bunrui]", "width": 20 },
        { "heading": "プロパティ", "text": "[PropertyName]", "width": 50 },
        { "heading": "値", "text": "[PropertyValue]", "wrap": "characters" } ] } ],
    "foot": [ { "label": "フォーム", "counter": "forms" }, { "label": "コントロール", "counter": "controls" } ]
})json";

TEST(NestedGroups, CountRepeatAndIndent) {
    auto store = emptyStore();
    MemoryTable& view = store->tables[u"V"];
    view.fields = {u"objectNo",    u"FormName",   u"Midasi", u"ControlNo",    u"Name",
                   u"ControlType", u"PropertyNo", u"Bunrui", u"PropertyName", u"PropertyValue"};
    std::int64_t control = 0;
    for (std::int64_t form = 1; form <= 2; ++form) {
        for (int c = 0; c < 20; ++c) {
            ++control;
            for (std::int64_t p = 1; p <= 5; ++p) {
                view.rows.push_back({form, text("F_受注" + std::to_string(form)), std::int64_t{2}, control,
                                     text("txt項目" + std::to_string(control)), text("ﾃｷｽﾄﾎﾞｯｸｽ"), p,
                                     text("ﾃﾞｰﾀ"), text("ｺﾝﾄﾛｰﾙｿｰｽ"),
                                     text("=DLookUp(\"[単価]\",\"商品\",\"[商品コード]='\" & [商品コード] & "
                                          "\"'\")&\"0123456789012345678901234567890123456789\"")});
            }
        }
    }
    const auto document = documentOf(store, controlList);
    EXPECT_EQ(document.title(), text("ｺﾝﾄﾛｰﾙ一覧(詳細)"));
    const auto pdf = printed_pdf(document, "controls");
    const std::string all = pdfText(pdf);
    EXPECT_THAT(all, HasSubstr("コントロール 20 件、プロパティ 100 件"));
    EXPECT_THAT(all, HasSubstr("フォーム 2 件、コントロール 40 件"));
    EXPECT_THAT(all, HasSubstr("F_受注1(続き)"));
    ASSERT_EQ(document.outline().size(), 42U);
    EXPECT_EQ(document.outline()[21].level, 0);
    EXPECT_EQ(document.outline()[22].level, 1);
    // A form begins on a page of its own.
    EXPECT_GT(document.outline()[21].page, document.outline()[20].page);
    EXPECT_THAT(pdfText(pdf, "-layout -f " + std::to_string(document.outline()[21].page + 1)),
                Not(HasSubstr("F_受注1")));
}

// A listing: two columns a page, source text, procedures as bold lines.
constexpr const char* listing = R"json({
    "title": "モジュール一覧", "columns": 2, "source": "V", "sort": ["objectNo", "Line"], "inHand": "[ObjectName]",
    "words": { "procedures": { "": "(Declarations)"
}
}
,
    "counters": { "lines": {} },
    "groups": [
        { "name": "module", "by": ["objectNo"], "title": "[ObjectName]", "kind": "モジュール", "outline": "[ObjectName]",
          "foot": [ { "label": "行", "counter": "lines", "unit": "行" } ] },
        { "name": "procedure", "by": ["ProcedureNo"], "bar": "line", "title": "[ProcedureName|procedures]", "outline": "[ProcedureName|procedures]",
          "keep": 10, "repeat": false } ],
    "tables": [ { "heading": false, "rules": "none", "columns": [
        { "text": "[Line]", "width": 9, "align": "right", "wrap": "source", "faint": true },
        { "text": "[Procedure]", "wrap": "source" } ] } ]
})json";

TEST(Listing, RunsInTwoColumnsWithWrapsAndTabs) {
    auto store = emptyStore();
    MemoryTable& view = store->tables[u"V"];
    view.fields = {u"objectNo", u"ObjectName", u"ProcedureNo", u"ProcedureName", u"Line", u"Procedure"};
    std::int64_t line = 0;
    for (std::int64_t procedure = 0; procedure < 14; ++procedure) {
        const Text name = procedure == 0 ? Text() : text("計算処理" + std::to_string(procedure));
        for (int i = 0; i < 17; ++i) {
            Text source =
                i == 0   ? text("Public Sub " + toUtf8(name) + "(ByVal 受注番号 As Long)")
                : i == 9 ? text("        MsgBox \"受注明細の登録に失敗しました。受注番号を確認して下さい。\" "
                                "& vbCrLf & Err.Description, vbCritical")
                : i == 5 ? text("\tIf x Then\t' タブ")
                         : text("    Debug.Print " + std::to_string(line + 1));
            view.rows.push_back({std::int64_t{1}, text("共通モジュール"), procedure, name, ++line, source});
        }
    }
    const auto document = documentOf(store, listing);
    const auto pdf = printed_pdf(document, "listing");
    const std::string all = pdfText(pdf, "-raw");
    EXPECT_THAT(all, HasSubstr("(Declarations)"));
    EXPECT_THAT(all, HasSubstr("行 238 行"));
    EXPECT_THAT(squeezed(all), HasSubstr("受注番号を確認して下さい。\"&vbCrLf&Err.Description,vbCritical"));

    // Lines stand in both columns; the second begins right of the middle of the body.
    const double middle = (25 + 173.0 / 2) * 1440 / 25.4;
    const auto first = document.search(u"Debug.Print 2"), last = document.search(u"Debug.Print 130");
    ASSERT_FALSE(first.empty());
    ASSERT_FALSE(last.empty());
    EXPECT_LT(first.front().rectangles.front().left(), middle);
    EXPECT_GT(document.search(u"計算処理4(").front().rectangles.front().left(), middle);
    // A procedure's head is never parted from its first line.
    for (int procedure = 1; procedure < 14; ++procedure) {
        const auto hits = document.search(text("計算処理" + std::to_string(procedure)));
        ASSERT_GE(hits.size(), 2U);
        EXPECT_EQ(hits[0].page, hits[1].page);
        EXPECT_LT(std::abs(hits[0].rectangles.front().left() - hits[1].rectangles.front().left()),
                  middle / 2);
        EXPECT_LT(hits[0].rectangles.front().top(), hits[1].rectangles.front().top());
    }
    // A tab reaches the next multiple of four characters.
    const auto tab = document.search(u"If x Then");
    const auto blanks = document.search(u"Debug.Print 2");
    ASSERT_FALSE(tab.empty());
    EXPECT_NEAR(tab.front().rectangles.front().left(), blanks.front().rectangles.front().left(), 1);
}

} // namespace
} // namespace relvane::test
