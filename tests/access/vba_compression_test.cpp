// The compression of VBA texts, byte by byte on hand-made data.

#include "access/vba_compression.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "design_bytes_builder.h"
#include "platform/runtime_error.h"

namespace relvane::access {
namespace {

using test::StreamBytes;

std::string expand(const Bytes& bytes) {
    const Bytes out = decompressVba(bytes, u"M", u"ソース");
    return {out.begin(), out.end()};
}

void expectDamage(const Bytes& bytes, TextView reason) {
    try {
        expand(bytes);
        ADD_FAILURE() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3049);
        EXPECT_NE(error.description().find(u"M のソースの"), Text::npos) << error.what();
        EXPECT_NE(error.description().find(reason), Text::npos) << error.what();
    }
}

// A compressed chunk of these bytes behind its header.
StreamBytes chunk(const StreamBytes& data) {
    const std::size_t size = data.bytes().size() - 1;
    StreamBytes whole;
    whole.raw({static_cast<std::uint8_t>(size & 0xFF), static_cast<std::uint8_t>(0xB0 | size >> 8)});
    return whole.raw(data.bytes());
}

// One chunk of 4096 times the letter: a literal and a copy of itself of 4095 bytes.
StreamBytes fullChunk(char letter) {
    return chunk(StreamBytes().hex("02").text({&letter, 1}).hex("fc 0f"));
}

StreamBytes container() {
    return StreamBytes().hex("01");
}

TEST(VbaCompression, NoChunkIsNoText) {
    EXPECT_EQ(expand(container().bytes()), "");
}

TEST(VbaCompression, LiteralsStandAsTheyAre) {
    EXPECT_EQ(expand(container().raw(chunk(StreamBytes().hex("00").text("abc")).bytes()).bytes()), "abc");
    EXPECT_EQ(expand(container().hex("03 b0 00 61 62 63").bytes()), "abc");
    EXPECT_EQ(expand(container()
                         .raw(chunk(StreamBytes().hex("00").text("abcdefgh").hex("00").text("i")).bytes())
                         .bytes()),
              "abcdefghi");
}

TEST(VbaCompression, ACopyReachesBackInItsChunk) {
    // d = 43, so six bits of distance: 10 back, 4 long.
    const Bytes bytes = container()
                            .raw(chunk(StreamBytes()
                                           .hex("00")
                                           .text("Attribut")
                                           .hex("00")
                                           .text("e VB_Nam")
                                           .hex("00")
                                           .text("e = \"Uti")
                                           .hex("00")
                                           .text("lity Fun")
                                           .hex("00")
                                           .text("ctions\"\r")
                                           .hex("08")
                                           .text("\nOp")
                                           .hex("01 24")
                                           .text(" Com"))
                                     .bytes())
                            .bytes();
    EXPECT_EQ(expand(bytes), "Attribute VB_Name = \"Utility Functions\"\r\nOption Com");
}

TEST(VbaCompression, ACopyMayOverlapWhatItWrites) {
    EXPECT_EQ(expand(container().raw(chunk(StreamBytes().hex("04").text("ab").hex("03 10")).bytes()).bytes()),
              "abababab");
}

// The token of a copy of three bytes from the chunk's first byte, with `distanceBits` of distance.
std::uint16_t tokenToTheStart(std::size_t done, int distanceBits) {
    return static_cast<std::uint16_t>((done - 1) << (16 - distanceBits));
}

TEST(VbaCompression, TheBitsOfTheDistanceGrowWithTheChunk) {
    constexpr std::pair<std::size_t, int> places[] = {
        {1, 4},   {16, 4},  {17, 5},  {32, 5},   {33, 6},    {64, 6},    {65, 7},    {128, 7},   {129, 8},
        {256, 8}, {257, 9}, {512, 9}, {513, 10}, {1024, 10}, {1025, 11}, {2048, 11}, {2049, 12}, {3500, 12}};
    for (const auto& [done, bits] : places) {
        SCOPED_TRACE(done);
        std::string text;
        StreamBytes data;
        for (std::size_t i = 0; i < done; ++i) {
            if (i % 8 == 0) {
                const std::size_t left = done - i;
                data.raw({static_cast<std::uint8_t>(left < 8 ? 1 << left : 0)});
            }
            text += static_cast<char>('a' + i * 7 % 23);
            data.text(std::string_view(text).substr(i));
        }
        if (done % 8 == 0) {
            data.hex("01");
        }
        const std::uint16_t token = tokenToTheStart(done, bits);
        data.raw({static_cast<std::uint8_t>(token & 0xFF), static_cast<std::uint8_t>(token >> 8)});
        std::string expected = text;
        for (std::size_t i = 0; i < 3; ++i) {
            expected += expected[i];
        }
        EXPECT_EQ(expand(container().raw(chunk(data).bytes()).bytes()), expected);
    }
}

TEST(VbaCompression, EachChunkBeginsAnew) {
    const Bytes two = container()
                          .raw(fullChunk('a').bytes())
                          .raw(chunk(StreamBytes().hex("02").text("b").hex("01 00")).bytes())
                          .bytes();
    EXPECT_EQ(expand(two), std::string(4096, 'a') + "bbbbb");
    // A distance that would reach back into the chunk before.
    expectDamage(container()
                     .raw(fullChunk('a').bytes())
                     .raw(chunk(StreamBytes().hex("02").text("b").hex("01 10")).bytes())
                     .bytes(),
                 u"11 バイト目: 圧縮の参照先が");
    expectDamage(container().raw(chunk(StreamBytes().hex("01 00 00")).bytes()).bytes(),
                 u"4 バイト目: 圧縮の参照先が");
}

TEST(VbaCompression, AStoredChunkHas4096Bytes) {
    const Bytes stored = container().hex("ff 3f").filler(4096, 'x').bytes();
    EXPECT_EQ(expand(stored), std::string(4096, 'x'));
    expectDamage(container().hex("fe 3f").filler(4095, 'x').bytes(), u"見出し");
}

TEST(VbaCompression, OnlyTheLastChunkIsShort) {
    expectDamage(container()
                     .raw(chunk(StreamBytes().hex("00").text("abc")).bytes())
                     .raw(fullChunk('a').bytes())
                     .bytes(),
                 u"7 バイト目: 圧縮のブロックが短すぎます");
}

TEST(VbaCompression, NoChunkIsLongerThan4096Bytes) {
    expectDamage(container().raw(chunk(StreamBytes().hex("02").text("a").hex("fd 0f")).bytes()).bytes(),
                 u"長すぎます");
    expectDamage(
        container().raw(chunk(StreamBytes().hex("02").text("a").hex("fc 0f").text("b")).bytes()).bytes(),
        u"長すぎます");
}

TEST(VbaCompression, SignaturesAreChecked) {
    expectDamage({}, u"途切れて");
    expectDamage(StreamBytes().hex("02 03 b0 00 61 62 63").bytes(),
                 u"0 バイト目: 圧縮されたデータではありません");
    expectDamage(container().hex("03 a0 00 61 62 63").bytes(), u"1 バイト目: 圧縮のブロックの見出し");
}

TEST(VbaCompression, ATextOfMoreThan64MegabytesIsRefused) {
    StreamBytes bytes = container();
    for (std::size_t i = 0; i < 16384; ++i) {
        bytes.raw(fullChunk('a').bytes());
    }
    EXPECT_EQ(expand(bytes.bytes()).size(), std::size_t{64} << 20);
    expectDamage(bytes.raw(fullChunk('a').bytes()).bytes(), u"展開すると長すぎます");
}

TEST(VbaCompression, DataCutOffAtAnyLengthIsDamagedUnlessAChunkEndsThere) {
    const Bytes first = fullChunk('a').bytes();
    const Bytes second = container().hex("ff 3f").filler(4096, 'x').bytes();
    const Bytes whole = container()
                            .raw(first)
                            .hex("ff 3f")
                            .filler(4096, 'x')
                            .raw(chunk(StreamBytes().hex("08").text("abc").hex("00 00").text("defg")).bytes())
                            .bytes();
    const std::size_t ends[] = {1, 1 + first.size(), first.size() + second.size(), whole.size()};
    std::size_t wholeOnes = 0;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        if (std::ranges::find(ends, length) != std::end(ends)) {
            EXPECT_NO_THROW(expand(cut)) << length;
            ++wholeOnes;
        } else {
            EXPECT_EQ(skipErrors([&] { expand(cut); }), 3049) << length;
        }
    }
    EXPECT_EQ(wholeOnes, 4u);
    EXPECT_EQ(expand(whole), std::string(4096, 'a') + std::string(4096, 'x') + "abccccdefg");
}

const Bytes attributeText =
    container().raw(chunk(StreamBytes().hex("00").text("Attribut").hex("00").text("e V")).bytes()).bytes();

TEST(VbaTextSearch, TheExpectedPlaceIsTakenWhenATextStandsThere) {
    const Bytes stream = StreamBytes().hex("01 16 01 00").raw(attributeText).bytes();
    EXPECT_EQ(findVbaText(stream, 4), 4u);
}

TEST(VbaTextSearch, AWrongPlaceIsSearchedFor) {
    const Bytes stream = StreamBytes().hex("01 16 01 00").raw(attributeText).bytes();
    for (const std::size_t wrong :
         {std::size_t{0}, std::size_t{3}, std::size_t{5}, stream.size(), ~std::size_t{0}}) {
        EXPECT_EQ(findVbaText(stream, wrong), 4u) << wrong;
    }
}

TEST(VbaTextSearch, TheFirstChunkCanBeStoredAsItIs) {
    const Bytes text = container().hex("ff 3f").text("Attribute VB").filler(4096 - 12, 'x').bytes();
    const Bytes stream = StreamBytes().hex("01 16 01 00").raw(text).bytes();
    EXPECT_EQ(findVbaText(stream, 4), 4u);
    EXPECT_EQ(findVbaText(stream, 0), 4u);
}

TEST(VbaTextSearch, ATextEndsWhereTheStreamEnds) {
    EXPECT_EQ(findVbaText(StreamBytes().raw(attributeText).hex("00").bytes(), 0), std::nullopt);
    for (std::size_t length = 0; length < attributeText.size(); ++length) {
        const Bytes cut(attributeText.begin(), attributeText.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(findVbaText(cut, 0), std::nullopt) << length;
    }
}

TEST(VbaTextSearch, ATextBeginsWithAnAttribute) {
    const Bytes other =
        container()
            .raw(chunk(StreamBytes().hex("00").text("Option C").hex("00").text("omp")).bytes())
            .bytes();
    EXPECT_EQ(findVbaText(other, 0), std::nullopt);
    EXPECT_EQ(findVbaText(attributeText, 0), 0u);
}

} // namespace
} // namespace relvane::access
