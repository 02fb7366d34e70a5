// The listings of modules as they are delivered, through the view of the work database.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis_samples.h"
#include "pdf_facts.h"
#include "report_samples.h"

namespace relvane::test {
namespace {

using testing::HasSubstr;
using testing::Not;

// Lines as the analysis writes them: numbers of procedures run on from object to object.
class Listing {
public:
    void beginObject(const char* kind, const Text& name) {
        kind_ = text(kind);
        name_ = name;
        ++object_;
        line_ = 0;
    }
    void beginProcedure(const Text& name) {
        ++procedureNo_;
        procedure_ = name;
    }
    // As beginProcedure, but of the same name as the one before, which leaves the number as it is.
    void line(const Text& source) {
        store_.add(u"T_RvModule", {{u"Label", kind_},
                                   {u"objectNo", object_},
                                   {u"ProcedureNo", procedureNo_},
                                   {u"ObjectName", name_},
                                   {u"Line", ++line_},
                                   {u"ProcedureName", procedure_},
                                   {u"Procedure", source}});
    }
    void line(const std::string& source) { line(text(source)); }
    // A procedure of so many lines, each of which occurs once in the whole listing.
    void procedure(const std::string& name, int lines) {
        beginProcedure(text(name));
        line("Public Sub " + name + "()");
        for (int i = 2; i < lines; ++i) {
            line("    Debug.Print <" + std::to_string(++unique_) + ">");
        }
        line("End Sub");
    }
    void skipLinesTo(std::int64_t number) { line_ = number; }

    std::shared_ptr<RowStore> rows() { return store_.rows(); }

private:
    AnalysedStore store_;
    Text kind_, name_, procedure_;
    std::int64_t object_ = 0, procedureNo_ = 0, line_ = 0;
    int unique_ = 0;
};

reports::ReportDocument printedListing(Listing& listing, const char* report) {
    return reports::open(listing.rows(), text(report), printed);
}

// Fails unless the texts stand in the page one behind the other.
void expectInOrder(const std::string& page, const std::vector<std::string>& texts) {
    std::size_t at = 0;
    for (const std::string& wanted : texts) {
        const std::size_t found = page.find(squeezed(wanted), at);
        ASSERT_NE(found, std::string::npos) << wanted;
        at = found + squeezed(wanted).size();
    }
}

constexpr const char* allListings[] = {"R_RvModule", "R_RvModule2", "R_RvModule50", "R_RvModule250"};

TEST(ModuleListing, ShowsObjectsProceduresLinesAndCounts) {
    for (const char* report : allListings) {
        Listing listing;
        listing.beginObject("1", text("F_受注入力"));
        listing.beginProcedure(Text());
        listing.line("Dim mCount As Long");
        listing.procedure("閉じる_Click", 4);
        listing.beginObject("2", text("R_納品書"));
        listing.procedure("Report_Open", 3);
        listing.beginObject("3", text("共通処理"));
        listing.beginProcedure(Text());
        listing.line("Public Const 消費税 = 5");
        const auto document = printedListing(listing, report);
        const auto pdf = printed_pdf(document, std::string("listing-3-") + report);
        const std::string page = squeezed(pdfText(pdf, "-raw"));
        for (const char* said :
             {"モジュールリスト", "フォーム F_受注入力", "レポート R_納品書", "モジュール 共通処理",
              "プロシージャ 1 件 行数 5 行", "プロシージャ 0 件 行数 1 行", "プロシージャ 1 件、ソース 5 行",
              "オブジェクト 3 件、プロシージャ 2 件、ソース 9 行"}) {
            EXPECT_THAT(page, HasSubstr(squeezed(said))) << report;
        }
        expectInOrder(page, {"F_受注入力", "宣言部", "1 Dim mCount As Long", "閉じる_Click",
                             "2 Public Sub 閉じる_Click()", "5 End Sub"});
        const PdfFacts facts = factsOf(pdf.string());
        EXPECT_THAT(facts.outline, testing::IsSupersetOf({"F_受注入力 1", " 宣言部 1", " 閉じる_Click 1",
                                                          "R_納品書 1", " Report_Open 1", "共通処理 1"}));
        EXPECT_FALSE(facts.warnings);
    }
}

TEST(ModuleListing, SaysThatThereIsNothing) {
    for (const char* report : allListings) {
        Listing listing;
        const auto document = printedListing(listing, report);
        EXPECT_EQ(document.pageCount(), 1);
        EXPECT_THAT(pdfText(printed_pdf(document, std::string("listing-none-") + report)),
                    HasSubstr("該当するデータはありません。"));
    }
}

TEST(ModuleListing, SaysInItsTitleThatItIsInKanaOrder) {
    Listing listing;
    EXPECT_EQ(toUtf8(printedListing(listing, "R_RvModule").title()), "モジュールリスト");
    EXPECT_EQ(toUtf8(printedListing(listing, "R_RvModule2").title()), "モジュールリスト");
    EXPECT_EQ(toUtf8(printedListing(listing, "R_RvModule50").title()), "モジュールリスト　五十音順");
    EXPECT_EQ(toUtf8(printedListing(listing, "R_RvModule250").title()), "モジュールリスト　五十音順");
}

TEST(ModuleListing, LosesNoLineAndPartsNoHeadFromItsProcedure) {
    for (const char* report : allListings) {
        Listing listing;
        int printedLines = 0, procedures = 0;
        for (int module = 1; printedLines < 3000; ++module) {
            listing.beginObject("3", text("M_共通" + std::to_string(module)));
            listing.beginProcedure(Text());
            listing.line("Dim 件数 As Long");
            for (int i = 0; i < 12; ++i) {
                const int length = 3 + procedures * 7 % 41 + (procedures % 50 == 49 ? 400 : 0);
                listing.procedure("処理" + std::to_string(++procedures) + "番", length);
                printedLines += length - 2;
            }
        }
        const auto document = printedListing(listing, report);
        const auto pdf = printed_pdf(document, std::string("listing-3000-") + report);
        const std::string all = squeezed(pdfText(pdf, "-raw"));
        for (int i = 1; i <= printedLines; ++i) {
            ASSERT_THAT(all, HasSubstr("<" + std::to_string(i) + ">"));
        }
        // In the order of the text, each column behind the one before, a head is followed by its first line.
        for (int i = 1; i <= procedures; ++i) {
            const std::string name = "処理" + std::to_string(i) + "番";
            const std::size_t head = all.find(name);
            ASSERT_NE(head, std::string::npos);
            const std::size_t first = all.find("PublicSub" + name, head);
            ASSERT_LT(first - head, name.size() + 12) << name;
        }
        EXPECT_THAT(all, HasSubstr("処理50番(続き)"));
        EXPECT_THAT(all, HasSubstr(squeezed("プロシージャ " + std::to_string(procedures) + " 件、ソース")));
    }
}

TEST(ModuleListing, HoldsTheLongestNamesAndLines) {
    for (const char* report : allListings) {
        Listing listing;
        Text endless = u"    x = \"始まり\"";
        while (endless.size() < 1000) {
            endless += u" & \"受注番号を確認して下さい。\" & Err.Description";
        }
        endless += u" & \"終わり\"";
        for (const Text& name : longestNames()) {
            listing.beginObject("2", name);
            listing.beginProcedure(name);
            listing.line(endless);
            listing.line(u"\t\t" + name);
            listing.skipLinesTo(2147483646);
            listing.line("End Function");
        }
        const auto document = printedListing(listing, report);
        printed_pdf(document, std::string("listing-longest-") + report);
        EXPECT_EQ(document.search(u"始まり").size(), longestNames().size());
        EXPECT_EQ(document.search(u"終わり").size(), longestNames().size());
        EXPECT_EQ(document.search(u"2147483647").size(), longestNames().size());
        for (const Text& name : longestNames()) {
            EXPECT_GE(document.search(name).size(), 3U);
        }
        const QSizeF sheet = document.pageSize(0);
        for (const auto& hit : document.search(u"Err.Description")) {
            for (const QRectF& box : hit.rectangles) {
                EXPECT_LE(box.right(), sheet.width() - 12 * 1440 / 25.4);
            }
        }
    }
}

TEST(ModuleListing, TellsObjectsApartThatShareANumberOfAProcedure) {
    Listing listing;
    listing.beginObject("1", text("F_一"));
    listing.procedure("Form_Load", 3);
    listing.beginObject("1", text("F_二")); // begins with a procedure of the same name: the number stays
    listing.line("Private Sub Form_Load()");
    listing.line("End Sub");
    const std::string page =
        squeezed(pdfText(printed_pdf(printedListing(listing, "R_RvModule"), "listing-shared"), "-raw"));
    expectInOrder(page, {"F_一", "Form_Load", "1 Public Sub Form_Load()", "ソース 3 行", "F_二", "Form_Load",
                         "1 Private Sub Form_Load()", "ソース 2 行"});
}

TEST(ModuleListing, InKanaOrderLeadsByNameOfObjectThenByProcedureAndKeepsTheLinesOfOneTogether) {
    for (const char* report : {"R_RvModule50", "R_RvModule250"}) {
        Listing listing;
        for (const char* object : {"M_ハンコ", "ｶｰﾄﾞ入力", "M_ﾊﾞﾝｺ", "かあど", "F_B", "f_a"}) {
            listing.beginObject("3", text(object));
            listing.beginProcedure(Text());
            listing.line("Dim x");
            listing.procedure("ワーク更新", 3);
            listing.procedure("ﾊﾞｯﾁ処理", 3);
            listing.procedure("はつち", 3);
            listing.procedure("バッタ", 3);
            listing.procedure("a処理", 3);
        }
        const std::string page = squeezed(pdfText(
            printed_pdf(printedListing(listing, report), std::string("listing-kana-") + report), "-raw"));
        for (const char* order : {"モジュール f_a", "モジュール F_B"}) {
            EXPECT_THAT(page, HasSubstr(squeezed(order)));
        }
        std::vector<std::string> wanted;
        for (const char* object : {"f_a", "F_B", "M_ハンコ", "M_ﾊﾞﾝｺ", "かあど", "ｶｰﾄﾞ入力"}) {
            wanted.insert(wanted.end(),
                          {object, "宣言部", "1 Dim x", "a処理", "14 Public Sub a処理()", "16 End Sub",
                           "バッタ", "11 Public Sub バッタ()", "13 End Sub", "はつち", "8 Public",
                           "10 End Sub", "ﾊﾞｯﾁ処理", "5 Public", "7 End Sub", "ワーク更新", "2 Public",
                           "4 End Sub", "プロシージャ 5 件、ソース 16 行"});
        }
        expectInOrder(page, wanted);
    }
}

TEST(ModuleListing, InKanaOrderKeepsThePartsOfAPropertyInTheOrderOfTheirLines) {
    Listing listing;
    listing.beginObject("3", text("C_顧客"));
    listing.beginProcedure(text("名前"));
    for (const char* source : {"Property Get 名前()", "  名前 = m", "End Property", "Property Let 名前(v)",
                               "  m = v", "end property"}) {
        listing.line(source);
    }
    listing.procedure("ああ", 2);
    listing.beginProcedure(text("名前"));
    listing.line("Property Set 名前(o)");
    listing.line("\tEnd Property ' おわり");
    const std::string page =
        squeezed(pdfText(printed_pdf(printedListing(listing, "R_RvModule50"), "listing-property"), "-raw"));
    expectInOrder(page, {"C_顧客", "ああ", "7 Public Sub ああ()", "8 End Sub", "名前", "1 Property Get",
                         "3 End Property", "4 Property Let", "6 end property", "名前", "9 Property Set",
                         "プロシージャ 4 件、ソース 10 行"});
}

TEST(ModuleListing, CountsNoStatementAsTheEndOfAProcedure) {
    Listing listing;
    listing.beginObject("3", text("M_文"));
    listing.beginProcedure(text("a"));
    for (const char* source : {"Sub a()", "End If", "End Select", "x = \"End Sub\"", "' End Sub", "End",
                               "End Type", "  END SUB"}) {
        listing.line(source);
    }
    EXPECT_THAT(squeezed(pdfText(printed_pdf(printedListing(listing, "R_RvModule"), "listing-ends"), "-raw")),
                HasSubstr(squeezed("プロシージャ 1 件、ソース 8 行")));
}

} // namespace
} // namespace relvane::test
