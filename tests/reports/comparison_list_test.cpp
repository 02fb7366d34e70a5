// The comparison of two states as it is delivered.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "analysis_samples.h"
#include "pdf_facts.h"
#include "report_samples.h"

namespace relvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr DateTime before{1997, 8, 1, 9, 30, 0}, after{2003, 12, 24, 18, 5, 59};

class TwoStates {
public:
    void now(const Text& kind, const Text& name, const DateTime& updated) {
        store_.add(u"T_RvSaveObject", {{u"objectNo", ++number_},
                                       {u"Class", kind},
                                       {u"ObjectName", name},
                                       {u"DateUpdate", updated},
                                       {u"DateCreate", before}});
    }
    void old(const Text& kind, const Text& name, const DateTime& updated) {
        store_.add(u"T_RvSaveObjectOld", {{u"Class", kind}, {u"ObjectName", name}, {u"DateUpdate", updated}});
    }
    void both(const Text& kind, const Text& name) {
        now(kind, name, before);
        old(kind, name, before);
    }
    void files(const Text& current, const Text& earlier) {
        store_.add(u"T_RvSaveFlag", {{u"ObjName", current}, {u"ObjNameOld", earlier}});
    }
    reports::ReportDocument list() { return reports::open(store_.rows(), u"R_RvObjectUpdate", printed); }

private:
    AnalysedStore store_;
    std::int64_t number_ = 0;
};

void addStates(TwoStates& states) {
    states.files(text("受注管理.mdb"), text("受注管理_旧.mdb"));
    states.both(u"Module", text("M_共通"));
    states.both(u"Table", text("受注"));
    states.now(u"Table", text("倉庫"), after);
    states.now(u"Form", text("F_受注入力"), after);
    states.old(u"Form", text("F_受注入力"), before);
    states.old(u"Form", text("F_廃止"), before);
    states.both(u"Form", text("F_得意先"));
    states.now(u"Macro", u"autoexec", before);
    states.old(u"Macro", u"AutoExec", before);
}

TEST(Comparison, SaysWhatIsNewChangedDeletedAndTheSameByKindOfObject) {
    TwoStates states;
    addStates(states);
    const auto document = states.list();
    EXPECT_EQ(toUtf8(document.title()), "オブジェクト比較表");
    const auto pdf = printed_pdf(document, "comparison-3");
    const std::string page = squeezed(pdfText(pdf));
    for (const char* said :
         {"現在のファイル 受注管理.mdb 比較したファイル 受注管理_旧.mdb 追加 1 件 変更 1 件 削除 1 件 "
          "変更なし "
          "4 件",
          "テーブル 比較結果 オブジェクト名 現在の更新日時 比較したファイルの更新日時 追加 倉庫 2003/12/24 "
          "18:05:59 － 変更なし 受注 1997/08/01 09:30:00 1997/08/01 09:30:00 追加 1 件、変更 0 件、削除 0 "
          "件、変更なし 1 件",
          "変更 F_受注入力 2003/12/24 18:05:59 1997/08/01 09:30:00 削除 F_廃止 － 1997/08/01 09:30:00 "
          "変更なし "
          "F_得意先",
          "追加 1 件、変更 1 件、削除 1 件、変更なし 4 件、合計 7 件"}) {
        EXPECT_THAT(page, HasSubstr(squeezed(said)));
    }
    EXPECT_THAT(factsOf(pdf.string()).outline,
                ElementsAre("テーブル 1", "フォーム 1", "マクロ 1", "モジュール 1"));
}

// How many dots of the first page are in colour.
int colouredDots(const reports::ReportDocument& document) {
    QImage image(827, 1169, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(image.width() / document.pageSize(0).width(),
                  image.height() / document.pageSize(0).height());
    document.paint(painter, 0);
    painter.end();
    int coloured = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor dot = image.pixelColor(x, y);
            coloured += dot.red() - dot.green() > 60 ? 1 : 0;
        }
    }
    return coloured;
}

TEST(Comparison, ShowsInColourOnlyWhatDiffers) {
    TwoStates same;
    same.both(u"Table", text("受注"));
    EXPECT_EQ(colouredDots(same.list()), 0);
    TwoStates differing;
    addStates(differing);
    EXPECT_GT(colouredDots(differing.list()), 50);
}

TEST(Comparison, LosesNoneOfThreeThousandObjects) {
    TwoStates states;
    states.files(text("新.mdb"), text("旧.mdb"));
    for (int i = 0; i < 3000; ++i) {
        const Text kind = i % 2 == 0 ? u"Form" : u"Query", name = text("名前" + std::to_string(i));
        if (i % 10 != 0) {
            states.now(kind, name, i % 10 == 1 ? after : before);
        }
        if (i % 10 != 2) {
            states.old(kind, name, before);
        }
    }
    const auto document = states.list();
    const std::string all = pdfText(printed_pdf(document, "comparison-3000"));
    int pages = 0;
    for (std::size_t from = 0, end; (end = all.find('\f', from)) != std::string::npos; from = end + 1) {
        ASSERT_THAT(squeezed(all.substr(from, end - from)), HasSubstr("比較結果オブジェクト名"));
        ++pages;
    }
    EXPECT_EQ(pages, document.pageCount());
    for (const char* said : {"クエリー", "フォーム(続き)",
                             "追加 300 件、変更 300 件、削除 300 件、変更なし "
                             "2,100 件、合計 3,000 件"}) {
        EXPECT_FALSE(document.search(text(said)).empty()) << said;
    }
}

TEST(Comparison, GrowsWithTheLongestNames) {
    TwoStates states;
    states.files(longestNames()[0], longestNames()[2]);
    for (const Text& name : longestNames()) {
        states.now(u"Query", name, after);
        states.old(u"Query", name, before);
    }
    const auto document = states.list();
    printed_pdf(document, "comparison-longest");
    for (const Text& name : longestNames()) {
        EXPECT_GE(document.search(name).size(), 1U);
    }
}

TEST(Comparison, OfTwoFilesWithoutObjectsNamesTheFiles) {
    TwoStates states;
    states.files(text("新.mdb"), text("旧.mdb"));
    const std::string page = pdfText(printed_pdf(states.list(), "comparison-none"));
    EXPECT_THAT(page, HasSubstr("該当するデータはありません。"));
    EXPECT_THAT(page, HasSubstr("旧.mdb"));
}

} // namespace
} // namespace relvane::test
