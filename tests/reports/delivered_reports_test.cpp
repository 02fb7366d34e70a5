// The definitions as they are delivered, as pages.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "report_samples.h"

namespace relvane::test {
namespace {

using testing::Each;
using testing::HasSubstr;
using testing::Not;

reports::ReportDocument objectList(const std::shared_ptr<MemoryStore>& store) {
    return reports::open(store, u"R_RvObjectAll", printed);
}

TEST(ObjectList, ShowsTheDatabaseItsObjectsAndTheirCounts) {
    auto store = emptyStore();
    addObjects(*store, 3);
    setFileLine(*store, text("C:\\業務\\受注管理\\受注管理システム.mdb"));
    const auto document = objectList(store);
    EXPECT_EQ(document.pageCount(), 1);
    const std::string page = squeezed(pdfText(printed_pdf(document, "objects-3")));
    for (const char* said :
         {"全オブジェクト一覧", "C:\\業務\\受注管理\\受注管理システム.mdb", "2026/11/20 16:05", "頁 1 / 1",
          "1,536.5 KB", "起動時のフォーム F_メインメニュー", "Access のバージョン 07.53",
          "データベースウィンドウの表示 いいえ", "受注明細_1", "1998/04/02 09:01:00", "2003/12/02 18:01:59",
          "テーブル 1 件", "マクロ 1 件", "テーブル 1 件、フォーム 1 件、マクロ 1 件、合計 3 件",
          "テーブル 受注明細_1 ～ マクロ M_起動処理_3", "Relvane97 Ver 2.0"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(page, Not(HasSubstr("クエリー0")));
}

TEST(ObjectList, HeadingFollowsTheOption) {
    const char* const titles[] = {"テーブル一覧", "クエリー一覧",   "フォーム一覧",      "レポート一覧",
                                  "マクロ一覧",   "モジュール一覧", "全オブジェクト一覧"};
    for (int option = 1; option <= 7; ++option) {
        auto store = emptyStore();
        addObjects(*store, 7, option);
        EXPECT_EQ(toUtf8(objectList(store).title()), titles[option - 1]);
    }
}

TEST(ObjectList, NumbersItsPagesAndLosesNoObjectOfThreeThousand) {
    auto store = emptyStore();
    addObjects(*store, 3000);
    const auto document = objectList(store);
    ASSERT_GT(document.pageCount(), 100);
    const auto pdf = printed_pdf(document, "objects-3000");
    const std::string all = pdfText(pdf);
    int page = 0;
    for (std::size_t from = 0, end; (end = all.find('\f', from)) != std::string::npos; from = end + 1) {
        const std::string one = squeezed(all.substr(from, end - from));
        const std::string number = "頁" + std::to_string(++page) + "/" + std::to_string(document.pageCount());
        ASSERT_THAT(one, HasSubstr(number));
        ASSERT_THAT(one, HasSubstr("番号オブジェクト名"));
    }
    EXPECT_EQ(page, document.pageCount());
    const std::string text = squeezed(all);
    for (const auto& row : store->tables[u"T_RvObject"].rows) {
        ASSERT_THAT(text, HasSubstr(toUtf8(std::get<Text>(row[3]))));
    }
    EXPECT_THAT(text, HasSubstr(squeezed("モジュール 500 件、合計 3,000 件")));
}

TEST(ObjectList, KeepsTheRowsInTheirOrder) {
    auto store = emptyStore();
    addObjects(*store, 30);
    std::reverse(store->tables[u"T_RvObject"].rows.begin(), store->tables[u"T_RvObject"].rows.end());
    const auto document = objectList(store);
    const auto first = document.search(u"_1998"), one = document.search(u"受注明細_1"),
               last = document.search(u"_30");
    EXPECT_TRUE(first.empty());
    ASSERT_FALSE(one.empty());
    ASSERT_FALSE(last.empty());
    EXPECT_EQ(one.front().page, 0);
    EXPECT_EQ(last.back().page, document.pageCount() - 1);
}

TEST(ObjectList, GrowsACellOverAPageBreak) {
    auto store = emptyStore();
    addLongestObjects(*store);
    const auto document = objectList(store);
    const auto pdf = printed_pdf(document, "objects-longest");
    const int from = document.search(u"F_長い説明").front().page;
    const auto sentences = document.search(u"夜間バッチ");
    EXPECT_GE(sentences.back().page, from + 2);
    // The heading and the bar stand again where the cell goes on.
    const std::string next =
        pdfText(pdf, "-f " + std::to_string(from + 2) + " -l " + std::to_string(from + 2));
    EXPECT_THAT(next, HasSubstr("フォーム(続き)"));
    EXPECT_THAT(next, HasSubstr("オブジェクト名"));
    // Nothing stands below the body or beyond the margins.
    const QSizeF sheet = document.pageSize(0);
    for (const auto& hit : sentences) {
        for (const QRectF& box : hit.rectangles) {
            EXPECT_LE(box.bottom(), sheet.height() - (12 + 6.5) * 1440 / 25.4);
            EXPECT_LE(box.right(), sheet.width() - 12 * 1440 / 25.4);
        }
    }
}

TEST(ObjectList, SaysThatThereIsNothing) {
    const auto document = objectList(emptyStore());
    EXPECT_EQ(document.pageCount(), 1);
    EXPECT_TRUE(document.outline().empty());
    const std::string page = pdfText(printed_pdf(document, "objects-none"));
    EXPECT_THAT(page, HasSubstr("オブジェクト一覧"));
    EXPECT_THAT(page, HasSubstr("該当するデータはありません。"));
    EXPECT_THAT(page, HasSubstr("データベース名"));
}

TEST(ObjectList, LeavesNoReaderInTheStore) {
    auto store = emptyStore();
    addObjects(*store, 100);
    const auto document = objectList(store);
    EXPECT_EQ(store->openCursors, 0);
    printed_pdf(document, "objects-100");
    EXPECT_EQ(store->openCursors, 0);
}

TEST(ObjectList, HasNoFileLineUnlessThereIsOne) {
    auto store = emptyStore();
    addObjects(*store, 1);
    const double without = objectList(store).search(u"受注明細").front().rectangles.front().top();
    Text endless;
    while (endless.size() < 3000) {
        endless += u"任意の文字";
    }
    setFileLine(*store, endless);
    const auto document = objectList(store);
    const double with = document.search(u"受注明細").front().rectangles.front().top();
    EXPECT_GT(with, without);
    EXPECT_LT(with, without + 20 * 1440 / 25.4); // at most four lines of it,
    EXPECT_FALSE(document.search(u"…").empty()); // the last with a sign
}

TEST(Cover, StandsOnOnePageWithAllThatWasTyped) {
    for (const char* name : {"R_RvHyousi", "R_RvHyousiW", "R_RvHyousiH"}) {
        auto store = emptyStore();
        setCover(*store, text("受注管理システム 2000"), text("システム設計書（第12版）"),
                 text("株式会社さくら商事"), text("情報システム部 開発第一課"), text("山田 太郎"));
        const auto document = reports::open(store, text(name), printed);
        EXPECT_EQ(document.pageCount(), 1);
        EXPECT_EQ(document.author(), text("山田 太郎"));
        const std::string page = squeezed(pdfText(printed_pdf(document, name), "-raw"));
        for (const char* said : {"株式会社さくら商事", "山田 太郎", "情報システム部 開発第一課"}) {
            EXPECT_THAT(page, HasSubstr(squeezed(said))) << name;
        }
        if (std::string(name) != "R_RvHyousiH") {
            EXPECT_THAT(page, HasSubstr("受注管理システム2000"));
        } else {
            EXPECT_EQ(document.search(u"受注管理システム").size(), 2U); // upright, found all the same
        }
    }
}

TEST(Cover, MeasuresItsLabelsForFoldersOfFiftyAndThirtyMillimetres) {
    for (const char* name : {"R_RvHyousiW", "R_RvHyousiH"}) {
        const auto definition = reports::parseDefinition(text(name), deliveredDefinition(name));
        std::vector<double> widths;
        for (const auto& placed : definition.placed) {
            if (placed.kind == reports::Placed::Kind::Box && placed.dashed) {
                widths.push_back(std::min(placed.width, placed.height));
            }
        }
        EXPECT_THAT(widths, testing::ElementsAre(50, 30)) << name;
    }
}

TEST(Cover, HoldsTheLongestTexts) {
    Text title, company;
    while (title.size() < 255) {
        title += u"次期基幹業務システム再構築計画・";
        company += u"株式会社日本総合情報処理センター";
    }
    title.resize(255);
    company.resize(255);
    for (const char* name : {"R_RvHyousi", "R_RvHyousiW", "R_RvHyousiH"}) {
        auto store = emptyStore();
        setCover(*store, title, title, company, company, text("十二三四五六七八九十十二三四五六七八九十"));
        const auto document = reports::open(store, text(name), printed);
        printed_pdf(document, std::string(name) + "-longest");
        // Whole, or ended with a sign.
        EXPECT_FALSE(document.search(company.substr(0, 40)).empty()) << name;
        EXPECT_TRUE(!document.search(title).empty() || !document.search(u"…").empty()) << name;
    }
}

TEST(Cover, WithoutARowSaysThatThereIsNothing) {
    const auto document = reports::open(emptyStore(), u"R_RvHyousi", printed);
    EXPECT_EQ(document.pageCount(), 1);
    EXPECT_THAT(pdfText(printed_pdf(document, "cover-none")), HasSubstr("該当するデータはありません。"));
}

} // namespace
} // namespace relvane::test
