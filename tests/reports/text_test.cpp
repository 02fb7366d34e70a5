// Values in print, and how texts break.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis_samples.h"
#include "report_samples.h"
#include "reports/row_text.h"
#include "reports/vertical_text.h"
#include "reports/wrapping.h"

namespace relvane::test {
namespace {

using namespace reports;
using testing::ElementsAre;

std::string shown(const Value& value, Format format = Format::Automatic) {
    return formatted(value, format).toStdString();
}

TEST(Values, InPrint) {
    EXPECT_EQ(shown(DateTime{2001, 2, 3, 4, 5, 6}), "2001/02/03 04:05:06");
    EXPECT_EQ(shown(DateTime{2001, 2, 3, 4, 5, 6}, Format::Date), "2001/02/03");
    EXPECT_EQ(shown(text("2001-02-03 04:05:06"), Format::LongDate), "2001年2月3日");
    EXPECT_EQ(shown(true), "○");
    EXPECT_EQ(shown(false), "");
    EXPECT_EQ(shown(std::int64_t{-1}, Format::Mark), "○");
    EXPECT_EQ(shown(false, Format::YesNo), "いいえ");
    EXPECT_EQ(shown(std::int64_t{1234567}), "1234567");
    EXPECT_EQ(shown(std::int64_t{1234567}, Format::Count), "1,234,567");
    EXPECT_EQ(shown(std::int64_t{-123}, Format::Count), "-123");
    EXPECT_EQ(shown(1536.25, Format::Size), "1,536.3");
    EXPECT_EQ(shown(0.5), "0.5");
    EXPECT_EQ(shown(Null{}, Format::Count), "");
    // What does not fit its format is printed as it is.
    EXPECT_EQ(shown(text("?"), Format::Count), "?");
    EXPECT_EQ(shown(text("いつか"), Format::Time), "いつか");
}

TEST(Values, HaveAPlainBlankForOneThatDoesNotBreak) {
    EXPECT_EQ(shown(text("If\u00A0so, \u00A0go")), "If so,  go");
}

std::vector<std::string> wrapped(const std::string& source, double ems, Wrap how,
                                 style::TextStyle textStyle = style::table) {
    Fonts fonts;
    const int font = fonts.number(textStyle);
    std::vector<std::string> lines;
    for (const TextLine& line : wrap(fonts, font, toQString(text(source)), ems * fonts.size(font), how)) {
        lines.push_back(line.text.toStdString());
    }
    return lines;
}

TEST(Wrapping, KeepsJapaneseRules) {
    const style::TextStyle fixed{style::Face::Fixed, 9};
    // No stop, no closing bracket, no small kana at the head of a line, no opening bracket at its end.
    EXPECT_THAT(wrapped("あいうえお。かき", 5.2, Wrap::Words, fixed), ElementsAre("あいうえ", "お。かき"));
    EXPECT_THAT(wrapped("あいうえ「かき」", 5.2, Wrap::Words, fixed), ElementsAre("あいうえ", "「かき」"));
    EXPECT_THAT(wrapped("あいうえおっと", 5.2, Wrap::Words, fixed), ElementsAre("あいうえ", "おっと"));
    // A Latin word stays whole; one that is wider than the line breaks anywhere.
    EXPECT_THAT(wrapped("注文 order details", 5.2, Wrap::Words, fixed),
                ElementsAre("注文 order ", "details"));
    EXPECT_THAT(wrapped("abcdefghijklmno", 5.2, Wrap::Words, fixed), ElementsAre("abcdefghij", "klmno"));
}

TEST(Wrapping, BreaksPathsAtCharacters) {
    EXPECT_THAT(wrapped("C:\\a b\\c def", 3.1, Wrap::Characters, {style::Face::Fixed, 9}),
                ElementsAre("C:\\a b", "\\c def"));
}

// Widths in ems: two half-width characters each.
std::vector<std::string> wrappedSource(const std::string& source, double ems) {
    return wrapped(source, ems, Wrap::Source, style::source);
}

TEST(SourceWrapping, BreaksBehindABlankOrAComma) {
    EXPECT_THAT(wrappedSource("SELECT 受注.受注コード, 受注.受注日", 14),
                ElementsAre("SELECT 受注.受注コード, ", "受注.受注日"));
    EXPECT_THAT(wrappedSource("f(aaaaaaaa,bbbbbbbb,c)", 9), ElementsAre("f(aaaaaaaa,", "bbbbbbbb,c)"));
    // The blank at the end may hang over the edge.
    EXPECT_THAT(wrappedSource("aaaa bbbb cccc", 4.5), ElementsAre("aaaa bbbb ", "cccc"));
}

TEST(SourceWrapping, PartsNoNameAndNoLiteralWhenABetterPlaceIsNear) {
    EXPECT_THAT(wrappedSource("WHERE a=1 AND [得意先 コード]=2", 12),
                ElementsAre("WHERE a=1 AND ", "[得意先 コード]=2"));
    EXPECT_THAT(wrappedSource("WHERE a=1 AND b=\"x y z\"", 11), ElementsAre("WHERE a=1 AND ", "b=\"x y z\""));
    EXPECT_THAT(wrappedSource("WHERE LongExpression+AnotherExpression", 14),
                ElementsAre("WHERE LongExpression+", "AnotherExpression"));
}

TEST(SourceWrapping, BreaksALongLiteralBetweenItsWordsAndAWordAnywhere) {
    EXPECT_THAT(wrappedSource("x=\"the quick brown fox jumps\"", 10),
                ElementsAre("x=\"the quick brown ", "fox jumps\""));
    EXPECT_THAT(wrappedSource("a bcdefghijklmnopqrst", 5), ElementsAre("a bcdefghi", "jklmnopq", "rst"));
    // A Japanese literal keeps the rules of prose.
    EXPECT_THAT(wrappedSource("\"あいうえおかきく。けこ\"", 8.5),
                ElementsAre("\"あいうえおかき", "く。けこ\""));
}

TEST(SourceWrapping, TakesNoPlaceThatLeavesTheLineEmpty) {
    EXPECT_THAT(wrappedSource("    ab cdefghijklmnopqrstuvwxyz", 10),
                ElementsAre("    ab cdefghijklmno", "pqrstuvwxyz"));
}

TEST(SourceWrapping, LosesNoCharacter) {
    const std::string source = toUtf8(endlessSql(5000));
    for (double ems = 8; ems < 60; ems += 3.5) {
        std::string whole;
        for (const std::string& line : wrappedSource(source.substr(source.find("WHERE")), ems)) {
            whole += line;
        }
        EXPECT_EQ(squeezed(whole), squeezed(source.substr(source.find("WHERE")))) << ems;
    }
}

TEST(Wrapping, KeepsTheLinesOfTheText) {
    EXPECT_THAT(wrapped("a\r\nb\rc\n\nd\r\n", 50, Wrap::Words), ElementsAre("a", "b", "c", "", "d"));
    EXPECT_THAT(wrapped("", 50, Wrap::Words), ElementsAre(""));
    EXPECT_THAT(wrapped("a\tb\001c", 50, Wrap::Words), ElementsAre("a b□c"));
    EXPECT_THAT(wrapped("\tあ\tb", 50, Wrap::Source, style::source), ElementsAre("    あ  b"));
}

TEST(Wrapping, NeverTearsACharacter) {
    // か with a combining mark, and a character beyond the 16-bit plane.
    for (const std::string& line : wrapped("か\u3099か\u3099か\u3099𠮷𠮷𠮷", 1, Wrap::Characters)) {
        const Text whole = text(line);
        EXPECT_NE(whole.front(), u'\u3099');
        EXPECT_FALSE(whole.front() >= 0xDC00 && whole.front() < 0xE000) << line;
    }
}

// The sum of the characters' widths is the width that the font engine gives the whole.
TEST(Fonts, AddUp) {
    Fonts fonts;
    for (const style::TextStyle& textStyle : {style::table, style::tableBold, style::source, style::title}) {
        const int font = fonts.number(textStyle);
        const QFontMetricsF metrics(fonts.font(font));
        for (const char* sample : {"受注明細_作業用ﾜｰｸﾃｰﾌﾞﾙ 1998/01/02 03:04:05",
                                   "AVAWATo fi ffl office T.o. ¥\\\"'", "①㈱ー～「」、。"}) {
            const QString line = QString::fromUtf8(sample);
            EXPECT_NEAR(fonts.width(font, line), metrics.horizontalAdvance(line), 0.5) << sample;
        }
    }
}

TEST(Elide, EndsWithASign) {
    Fonts fonts;
    const int font = fonts.number(style::note);
    const QString name = QString::fromUtf8("在庫引当処理_出荷予定データ取込ワーク");
    const double width = 8 * fonts.size(font);
    const QString cut = elide(fonts, font, name, width);
    EXPECT_TRUE(cut.endsWith(QChar(u'…')));
    EXPECT_LE(fonts.width(font, cut), width);
    EXPECT_EQ(elide(fonts, font, name, 100 * fonts.size(font)), name);
}

TEST(VerticalText, StacksAndTurns) {
    Fonts fonts;
    const int font = fonts.number(style::Face::Proportional, 20, false);
    const double size = fonts.size(font);
    const VerticalText vertical(QString::fromUtf8("ﾃﾞｰﾀ12号（2000）"));
    EXPECT_TRUE(vertical.unbroken(size, size, 11 * size));
    EXPECT_FALSE(vertical.unbroken(size, size, 9 * size));
    EXPECT_TRUE(vertical.fits(size, 2.3 * size, 6 * size));
    Page page;
    vertical.add(page, fonts, font, 1000, 0, 20 * size, 1);
    std::vector<std::string> glyphs;
    for (const Item& item : page.items) {
        glyphs.push_back((item.turned ? "/" : "") + item.text.toStdString());
    }
    // Voice marks join, two digits share a place, dashes and brackets are turned.
    EXPECT_THAT(glyphs, ElementsAre("デ", "/ー", "タ", "12", "号", "/（", "２", "０", "０", "０", "/）"));
    for (std::size_t i = 1; i < page.items.size(); ++i) {
        EXPECT_NEAR(page.items[i].box.center().x(), 1000, 1);
        EXPECT_NEAR(page.items[i].box.top() - page.items[i - 1].box.top(), size, 0.1);
    }
}

TEST(VerticalText, IsCutWithASign) {
    VerticalText vertical(QString(200, QChar(u'長')));
    vertical.cutTo(400, 400, 4000);
    Fonts fonts;
    Page page;
    vertical.add(page, fonts, fonts.number(style::Face::Proportional, 20, false), 0, 0, 4000, 1);
    ASSERT_EQ(page.items.size(), 10U);
    EXPECT_EQ(page.items.back().text, QString(QChar(u'…')));
}

} // namespace
} // namespace relvane::test
