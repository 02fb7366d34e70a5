#include "platform/codepage.h"

#include <gtest/gtest.h>

namespace relvane {
namespace {

TEST(CodePage, Page932IsThatOfWindows) {
    EXPECT_EQ(decode("\x83\x65\x81\x5B\x83\x75\x83\x8B", 932), u"テーブル");
    EXPECT_EQ(decode("\xC3\xB0\xCC\xDE\xD9", 932), u"ﾃｰﾌﾞﾙ");
    EXPECT_EQ(decode("\x81\x60\x81\x7C\x81\x61\x81\xCA", 932), u"～－∥￢");
    EXPECT_EQ(decode("\x87\x40\xFB\xFC\xF0\x40", 932), u"①髙\uE000");
    EXPECT_EQ(decode("a\\~", 932), u"a\\~");
}

TEST(CodePage, BytesThatOnlyWindowsDecodesComeBack) {
    EXPECT_EQ(decode("\x80\xA0\xFD\xFE\xFF", 932), u"\u0080\uF8F0\uF8F1\uF8F2\uF8F3");
    EXPECT_EQ(encode(u"\u0080\uF8F0\uF8F1\uF8F2\uF8F3", 932), "\x80\xA0\xFD\xFE\xFF");
    EXPECT_EQ(decode("\x81\x8D\x8F\x90\x9D\x80", 1252), u"\u0081\u008D\u008F\u0090\u009D€");
    EXPECT_EQ(encode(u"\u0081€", 1252), "\x81\x80");
}

TEST(CodePage, BrokenPairsBecomeTheDefaultCharacter) {
    EXPECT_EQ(decode("a\x83", 932), u"a・");
    EXPECT_EQ(decode("\x83\x20", 932), u"・ ");
    EXPECT_EQ(decode("\xEB\x40", 932), u"・"); // a pair without a meaning
}

TEST(CodePage, EachUnitWithoutACodeBecomesAQuestionMark) {
    EXPECT_EQ(encode(u"あ\u0E01い", 932), "\x82\xA0?\x82\xA2");
    EXPECT_EQ(encode(u"\U0001F600", 932), "??");
    EXPECT_EQ(encode(u"あ", 1252), "?");
    EXPECT_EQ(encode(TextView(u"\0", 1), 932), std::string("\0", 1));
    EXPECT_TRUE(canEncode(u"日本語", 932));
    EXPECT_FALSE(canEncode(u"日本語", 1252));
}

TEST(CodePage, ABlankThatDoesNotBreakBecomesAPlainOneWhereThePageHasNone) {
    EXPECT_EQ(encode(u"If\u00A0so", 932), "If so");
    EXPECT_TRUE(canEncode(u"If\u00A0so", 932));
    EXPECT_EQ(encode(u"If\u00A0so", 936), "If so");
    EXPECT_EQ(encode(u"If\u00A0so", 950), "If so");
    EXPECT_EQ(encode(u"If\u00A0so", 1252), "If\xA0so");
    EXPECT_EQ(encode(u"If\u00A0so", 437), "If\xFFso");
    EXPECT_EQ(decode("\x20\xA0", 932), u" \uF8F0");
    EXPECT_EQ(encode(decode("\xA0", 932), 932), "\xA0"); // a byte A0 is something else there
}

TEST(CodePage, CharactersThatThePageHasNotBecomeThoseThatLookLikeThem) {
    EXPECT_EQ(encode(u"10\u301C20\u22121\u2016\u2014", 932), "10\x81\x60"
                                                             "20\x81\x7C"
                                                             "1\x81\x61\x81\x5C");
    EXPECT_EQ(encode(u"\u00A2\u00A3\u00AC", 932), "\x81\x91\x81\x92\x81\xCA");
    EXPECT_EQ(encode(u"\u00A5\u203E\u00A6\u00AD\u2011", 932), "\\~|--");
    EXPECT_EQ(encode(u"\u00B7\u00B5", 932), "\x81\x45\x83\xCA");
    EXPECT_TRUE(canEncode(u"10\u301C20", 932));
    EXPECT_EQ(encode(u"\u00A5\u2014", 1252), "\xA5\x97") << "this page has them";
    EXPECT_EQ(encode(u"\u00B7", 874), "?") << "and this one not even the other";
}

TEST(CodePage, OfTwoCodesTheOneThatWindowsWritesIsTaken) {
    EXPECT_EQ(encode(u"①Ⅲⅲ㈱∵￢髙", 932), "\x87\x40\x87\x56\xFA\x42\x87\x8A\x81\xE6\x81\xCA\xFB\xFC");
}

TEST(CodePage, EveryCodeOfPage932ThatDecodesEncodesToTheSameText) {
    for (int lead = 0x81; lead < 0xFD; ++lead) {
        for (int trail = 0x40; trail < 0xFD; ++trail) {
            const std::string code{static_cast<char>(lead), static_cast<char>(trail)};
            const Text text = decode(code, 932);
            ASSERT_EQ(decode(encode(text, 932), 932), text) << lead << " " << trail;
        }
    }
}

TEST(CodePage, PagesWithCombiningMarksAndOtherPairsWork) {
    EXPECT_EQ(decode("\xF9\xEC\xE5\xED", 1255), u"שלום");
    EXPECT_EQ(decode("\xD6\xD0\xB9\xFA", 936), u"中国");
    EXPECT_EQ(decode("\xC7\xD1", 949), u"한");
    EXPECT_EQ(decode("\xA4\xA4", 950), u"中");
    EXPECT_EQ(decode("\xCF\xF0\xE8", 1251), u"При");
}

TEST(CodePage, AnUnknownPageIsTakenFor1252) {
    EXPECT_FALSE(isKnownCodePage(4711));
    EXPECT_EQ(decode("\xE4", 4711), u"ä");
    EXPECT_EQ(encode(u"ä", 0), "\xE4");
}

} // namespace
} // namespace relvane
