// The PDF file as other programs see it.
#include <csignal>
#include <fstream>
#include <regex>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "pdf_facts.h"
#include "platform/runtime_error.h"
#include "report_samples.h"
#include "reports/pdf.h"
#include "support/samples.h"

namespace relvane::test {
namespace {

using reports::ReportDocument;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

ReportDocument objectList(int count) {
    auto store = emptyStore();
    addObjects(*store, count);
    return reports::open(store, u"R_RvObjectAll", printed);
}

int numberOfError(const std::function<void()>& action) {
    try {
        action();
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

TEST(Pdf, HasTitleAuthorDateLanguageLabelsAndOutline) {
    auto store = emptyStore();
    addObjects(*store, 60);
    setCover(*store, u"題", u"系", u"社", u"部", text("山田 <太郎> & 社"));
    const auto pdf = printed_pdf(reports::open(store, u"R_RvObjectAll", printed), "metadata").string();
    const std::string information = outputOf("pdfinfo -enc UTF-8 -isodates '" + pdf + "'");
    EXPECT_THAT(information, HasSubstr("全オブジェクト一覧"));
    EXPECT_THAT(information, HasSubstr("山田 <太郎> & 社"));
    EXPECT_THAT(information, HasSubstr("2026-11-20T16:05:09"));
    EXPECT_THAT(outputOf("pdfinfo -meta '" + pdf + "'"), HasSubstr("山田 &lt;太郎&gt; &amp; 社"));

    const PdfFacts facts = factsOf(pdf);
    EXPECT_FALSE(facts.warnings);
    EXPECT_EQ(facts.language, "ja");
    EXPECT_EQ(facts.pageMode, "/UseOutlines");
    EXPECT_TRUE(facts.showsTitle);
    EXPECT_EQ(facts.creationDate.substr(0, 16), "D:20261120160509");
    EXPECT_EQ(facts.labelStyle, "/D");
    EXPECT_THAT(facts.outline, ElementsAre("テーブル 1", "クエリー 2", "フォーム 2", "レポート 3", "マクロ 4",
                                           "モジュール 4"));
}

TEST(Pdf, NestsItsOutline) {
    auto store = emptyStore();
    MemoryTable& table = store->tables[u"V"];
    table.fields = {u"Outer", u"Inner"};
    for (const char16_t* outer : {u"甲", u"乙"}) {
        for (const char16_t* inner : {u"1", u"2", u"3"}) {
            table.rows.push_back({Text(outer), Text(inner)});
        }
    }
    const ReportDocument document(store, reports::parseDefinition(u"R_Test", uR"({
        "title": "T", "source": "V",
        "groups": [ { "name": "a", "by": ["Outer"], "outline": "[Outer]", "newPage": true },
                    { "name": "b", "by": ["Inner"], "outline": "[Inner]" } ],
        "tables": [ { "columns": [ { "text": "[Inner]" } ] } ] })"),
                                  printed);
    const PdfFacts facts = factsOf(printed_pdf(document, "nested-outline").string());
    EXPECT_FALSE(facts.warnings);
    EXPECT_THAT(facts.outline, ElementsAre("甲 1", " 1 1", " 2 1", " 3 1", "乙 2", " 1 2", " 2 2", " 3 2"));
}

TEST(Pdf, HasAnOutlineEvenWithoutGroups) {
    auto store = emptyStore();
    setCover(*store, u"題", u"系", u"社", u"部", u"者");
    const PdfFacts facts =
        factsOf(printed_pdf(reports::open(store, u"R_RvHyousi", printed), "cover-outline").string());
    EXPECT_THAT(facts.outline, ElementsAre("表紙 1"));
}

TEST(BoundPdf, HoldsReportsOneBehindTheOtherWithAChapterEach) {
    const TemporaryFolder folder;
    const auto path = folder / "bound.pdf";
    auto store = emptyStore();
    setCover(*store, u"題", u"系", u"社", u"部", u"者");
    {
        reports::BoundPdf file(text(path.string()));
        file.add(objectList(60), u"甲");
        file.add(reports::open(store, u"R_RvHyousi", printed), u"乙"); // stands, the others lie
        file.add(objectList(1), {});
        EXPECT_FALSE(std::filesystem::exists(path));
        file.finish();
    }
    const PdfFacts facts = factsOf(path.string());
    EXPECT_FALSE(facts.warnings);
    EXPECT_THAT(facts.outline, ElementsAre("甲 1", " テーブル 1", " クエリー 2", " フォーム 2", " レポート 3",
                                           " マクロ 4", " モジュール 4", "乙 6", "テーブル 7"));
    const std::string sizes = outputOf("pdfinfo -f 5 -l 7 '" + path.string() + "'");
    EXPECT_THAT(sizes, HasSubstr("Page    5 size:  842"));
    EXPECT_THAT(sizes, HasSubstr("Page    6 size:  595"));
    EXPECT_THAT(sizes, HasSubstr("Page    7 size:  842"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(BoundPdf, LeavesNothingWithoutItsEnd) {
    const TemporaryFolder folder;
    {
        reports::BoundPdf file(text((folder / "bound.pdf").string()));
        file.add(objectList(3), u"甲");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(Pdf, NamesTheSubjectOfAListWithoutRows) {
    const auto store = emptyStore();
    const auto said = [&](const Text& subject) {
        return squeezed(
            pdfText(printed_pdf(reports::open(store, u"R_RvObjectAll", printed, subject), "empty")));
    };
    EXPECT_THAT(said({}), HasSubstr("該当するデータはありません。"));
    EXPECT_THAT(said({}), Not(HasSubstr("：該当するデータはありません。")));
    EXPECT_THAT(said(u"月次集計"), HasSubstr("月次集計：該当するデータはありません。"));
}

TEST(Pdf, EmbedsOnlyTheFacesOfTheReports) {
    auto store = emptyStore();
    addLongestObjects(*store);
    const auto pdf = printed_pdf(reports::open(store, u"R_RvObjectAll", printed), "objects-longest");
    std::istringstream fonts(outputOf("pdffonts '" + pdf.string() + "' | tail -n +3"));
    int count = 0;
    for (std::string line; std::getline(fonts, line); ++count) {
        EXPECT_THAT(line, HasSubstr("Ume"));
        EXPECT_THAT(line,
                    testing::ContainsRegex(" yes +[yn][eo]s? +yes ")); // embedded, with a table to Unicode
    }
    EXPECT_GE(count, 1);
}

TEST(Pdf, LosesNoText) {
    auto store = emptyStore();
    addObjects(*store, 300);
    addLongestObjects(*store);
    const auto pdf = printed_pdf(reports::open(store, u"R_RvObjectAll", printed), "objects-all");
    // A column of the page alone, so that the lines of a wrapped name follow each other.
    const auto column = [&](double left, double right) {
        const auto points = [](double mm) { return std::to_string(static_cast<int>(mm * 72 / 25.4)); };
        return squeezed(pdfText(pdf, "-x " + points(left) + " -y 0 -W " + points(right - left) + " -H 600"));
    };
    const double share = (273.0 - 13 - 30 - 36 - 36) / 2.15;
    const std::string names = column(25, 25 + share);
    const std::string descriptions = column(25 + share + 30, 25 + share * 2.15 + 30);
    for (const auto& row : store->tables[u"T_RvObject"].rows) {
        EXPECT_THAT(names, HasSubstr(squeezed(toUtf8(std::get<Text>(row[3])))));
    }
    for (const auto& row : store->tables[u"T_RvObject"].rows) {
        const std::string description = toUtf8(toText(row[8]));
        if (description.size() < 1000) { // the longest runs over pages, with a heading between
            EXPECT_THAT(descriptions, HasSubstr(squeezed(description)));
        }
    }
    const std::string sentence = squeezed("この処理は、夜間バッチの前に必ず実行して下さい。");
    std::size_t sentences = 0;
    for (std::size_t at = descriptions.find("この処理は"); at != std::string::npos;
         at = descriptions.find("この処理は", at + 1)) {
        ++sentences;
    }
    EXPECT_GE(sentences, 4000U / 50 - 4); // some are cut by a page
}

TEST(Pdf, KeepsTheCharactersOfTheCodePage) {
    auto store = emptyStore();
    // Rows of the code page that often come back as others: NEC and IBM extensions, wave, minus, bars.
    const Text special =
        u"①⑳Ⅰ㍉㌔㎜㏄㍻〝〟№㏍℡㊤㈱㈲㈹㍾∮∑∟⊿ⅰⅹ￢￤＇＂∵纊褜鍈銈蓜俉炻昱髙﨑德～－∥￥￠￡￣―…‥一金角牛";
    addObject(*store, u"Table", special, Null{}, Text(u"ｱｲｳｶﾞﾊﾟｰ｡｢｣､･"));
    const auto pdf = printed_pdf(reports::open(store, u"R_RvObjectAll", printed), "characters");
    const std::string found = squeezed(pdfText(pdf, "-raw"));
    EXPECT_THAT(found, HasSubstr(toUtf8(special.substr(0, 20))));
    for (const char16_t c : special) {
        EXPECT_THAT(found, HasSubstr(toUtf8(TextView(&c, 1))));
    }
    EXPECT_THAT(found, HasSubstr("ｱｲｳｶﾞﾊﾟｰ｡｢｣､･"));
}

TEST(Pdf, HasAPlainBlankForOneThatDoesNotBreak) {
    auto store = emptyStore();
    addObject(*store, u"Table", u"If\u00A0so", Null{}, Text(u"then\u00A0go"));
    const auto pdf = printed_pdf(reports::open(store, u"R_RvObjectAll", printed), "blanks");
    const std::string found = pdfText(pdf, "-raw");
    EXPECT_THAT(found, HasSubstr("If so"));
    EXPECT_THAT(found, HasSubstr("then go"));
    EXPECT_EQ(found.find("\u00A0"), std::string::npos);
}

// The words of a page by their place, as the PDF has them, against those of the layout.
TEST(Pdf, StandsWhereTheLayoutPutsIt) {
    const ReportDocument document = objectList(40);
    const auto pdf = printed_pdf(document, "places");
    const std::string boxes = outputOf("pdftotext -bbox -f 2 -l 2 '" + pdf.string() + "' -");
    const std::regex date("xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" [^>]*>1998/04/2");
    std::vector<QPointF> found;
    for (std::sregex_iterator at(boxes.begin(), boxes.end(), date), end; at != end; ++at) {
        found.emplace_back(std::stod((*at)[1]), std::stod((*at)[2]));
    }
    const auto hits = document.search(u"1998/04/2", 1, 1);
    ASSERT_FALSE(hits.empty());
    ASSERT_EQ(found.size(), hits.size());
    for (std::size_t i = 0; i < hits.size();
         ++i) { // in points; the box of a line is a little higher than its type
        EXPECT_NEAR(found[i].x(), hits[i].rectangles.front().left() / 20, 0.2);
        EXPECT_NEAR(found[i].y(), hits[i].rectangles.front().top() / 20, 2);
    }
}

TEST(Pages, LookTheSameAsAnImageAndInThePdf) {
    const ReportDocument document = objectList(40);
    const auto pdf = printed_pdf(document, "same");
    constexpr int dpi = 96;
    outputOf("pdftoppm -r " + std::to_string(dpi) + " -f 2 -l 2 -png -singlefile '" + pdf.string() + "' '" +
             (pdfFolder() / "same").string() + "'");
    const QImage fromPdf = QImage(QString::fromStdString((pdfFolder() / "same.png").string()))
                               .convertToFormat(QImage::Format_Grayscale8);
    ASSERT_FALSE(fromPdf.isNull());

    QImage image(fromPdf.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(dpi / 1440.0, dpi / 1440.0);
    document.paint(painter, 1);
    painter.end();
    image.save(QString::fromStdString((pdfFolder() / "same-image.png").string()));
    // Smoothed over some pixels, the two may differ by the rasters' own ways, not by a character or a rule.
    const QSize small = fromPdf.size() / 6;
    const QImage left = fromPdf.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage right = image.convertToFormat(QImage::Format_Grayscale8)
                             .scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    int worst = 0;
    for (int y = 0; y < small.height(); ++y) {
        for (int x = 0; x < small.width(); ++x) {
            worst = std::max(worst, std::abs(left.pixelColor(x, y).red() - right.pixelColor(x, y).red()));
        }
    }
    EXPECT_LT(worst, 70);
}

TEST(Pages, AreTheSameInAnyOrder) {
    const ReportDocument document = objectList(200);
    const auto imageOf = [&](int page) {
        QImage image(842, 595, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.scale(1 / 20.0, 1 / 20.0);
        document.paint(painter, page);
        return image;
    };
    ASSERT_GT(document.pageCount(), 6);
    std::vector<QImage> forward;
    for (int page = 0; page < document.pageCount(); ++page) {
        forward.push_back(imageOf(page));
    }
    for (int page = document.pageCount(); page-- > 0;) {
        EXPECT_EQ(imageOf(page), forward[static_cast<std::size_t>(page)]) << page;
    }
    EXPECT_EQ(numberOfError([&] { imageOf(document.pageCount()); }), 9);
}

// Sorting all rows anew is what a page out of turn costs a store.
TEST(Pages, AreTurnedBackWithFewNewCursors) {
    auto store = emptyStore();
    addObjects(*store, 800);
    const ReportDocument document = reports::open(store, u"R_RvObjectAll", printed);
    ASSERT_GE(document.pageCount(), 40);
    store->opened = 0;
    for (int page = 39; page >= 0; --page) {
        QImage image(10, 10, QImage::Format_RGB32);
        QPainter painter(&image);
        document.paint(painter, page);
    }
    EXPECT_LE(store->opened, 40 / 8);
}

// ---- Failures

TEST(PdfFile, ReplacesAnOldOneOnlyWhenItIsWhole) {
    const TemporaryFolder folder;
    const auto path = folder / "list.pdf";
    std::ofstream(path) << "old";
    const ReportDocument document = objectList(400);

    // No file may grow beyond this: what a full disk looks like.
    const auto before = signal(SIGXFSZ, SIG_IGN);
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit little{20000, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &little);
    const int number = numberOfError([&] { reports::writePdf(document, text(path.string())); });
    setrlimit(RLIMIT_FSIZE, &old);
    signal(SIGXFSZ, before);
    EXPECT_EQ(number, 61);
    EXPECT_EQ(std::filesystem::file_size(path), 3U);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}),
              1); // nothing left behind

    reports::writePdf(document, text(path.string()));
    EXPECT_GT(std::filesystem::file_size(path), 1000U);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(PdfFile, NeedsAFolder) {
    const TemporaryFolder folder;
    const ReportDocument document = objectList(1);
    EXPECT_EQ(numberOfError([&] { reports::writePdf(document, text((folder / "none/list.pdf").string())); }),
              76);
}

TEST(PdfFile, DoesNotReplaceAFolder) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "list.pdf");
    const ReportDocument document = objectList(1);
    EXPECT_EQ(numberOfError([&] { reports::writePdf(document, text((folder / "list.pdf").string())); }), 70);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

// The superuser may write everything: such a run puts on another user's rights meanwhile.
TEST(PdfFile, DoesNotReplaceAProtectedFile) {
    const TemporaryFolder folder;
    const auto path = folder / "list.pdf";
    std::ofstream(path) << "old";
    chmod(path.c_str(), 0444);
    chmod(folder.path().c_str(), 0777);
    const ReportDocument document = objectList(1);
    constexpr uid_t somebodyElse = 65534;
    const bool superuser = geteuid() == 0;
    ASSERT_TRUE(!superuser || seteuid(somebodyElse) == 0);
    const int number = numberOfError([&] { reports::writePdf(document, text(path.string())); });
    ASSERT_TRUE(!superuser || seteuid(0) == 0);
    EXPECT_EQ(number, 70);
    EXPECT_EQ(std::filesystem::file_size(path), 3U);
}

} // namespace
} // namespace relvane::test
