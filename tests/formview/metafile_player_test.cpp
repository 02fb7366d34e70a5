// Old metafiles: each function that draws is seen to draw where it should.
#include "formview/metafile_player.h"

#include <random>

#include <gtest/gtest.h>

#include "access/old_metafile.h"
#include "platform/codepage.h"
#include "platform/value.h"

namespace relvane::formview {
namespace {

using Words = std::vector<int>;

// A metafile put together call by call; its window is 100 by 100 until a call sets another.
class Metafile {
public:
    Metafile() { call(0x020B, {0, 0}).call(0x020C, {100, 100}); }

    Metafile& call(unsigned function, const Words& parameters) {
        Bytes bytes;
        for (const int word : parameters) {
            bytes.push_back(static_cast<std::uint8_t>(word & 0xFF));
            bytes.push_back(static_cast<std::uint8_t>(word >> 8 & 0xFF));
        }
        return callWithBytes(function, bytes);
    }
    Metafile& callWithBytes(unsigned function, Bytes parameters) {
        if (parameters.size() % 2 != 0) {
            parameters.push_back(0);
        }
        number(3 + parameters.size() / 2, 4);
        number(function, 2);
        records_.insert(records_.end(), parameters.begin(), parameters.end());
        return *this;
    }
    Metafile& brush(int style, unsigned colour, int hatch = 0) {
        return call(0x02FC,
                    {style, static_cast<int>(colour & 0xFFFF), static_cast<int>(colour >> 16), hatch});
    }
    Metafile& pen(int style, int width, unsigned colour) {
        return call(0x02FA,
                    {style, width, 0, static_cast<int>(colour & 0xFFFF), static_cast<int>(colour >> 16)});
    }
    Metafile& font(int height, int charset, std::string_view name, int tenthsOfDegree = 0) {
        Bytes bytes(18);
        bytes[0] = static_cast<std::uint8_t>(height & 0xFF);
        bytes[1] = static_cast<std::uint8_t>(height >> 8 & 0xFF);
        bytes[4] = static_cast<std::uint8_t>(tenthsOfDegree & 0xFF);
        bytes[5] = static_cast<std::uint8_t>(tenthsOfDegree >> 8 & 0xFF);
        bytes[13] = static_cast<std::uint8_t>(charset);
        bytes.insert(bytes.end(), name.begin(), name.end());
        bytes.push_back(0);
        return callWithBytes(0x02FB, bytes);
    }
    Metafile& select(int object) { return call(0x012D, {object}); }

    Bytes bytes() const {
        Bytes whole{1, 0, 9, 0, 0, 3};
        whole.resize(18);
        whole.insert(whole.end(), records_.begin(), records_.end());
        whole.insert(whole.end(), {3, 0, 0, 0, 0, 0});
        return whole;
    }

    // On grey, 100 by 100.
    QImage played() const {
        QImage image(100, 100, QImage::Format_RGB32);
        image.fill(QColor(0xC0, 0xC0, 0xC0));
        const Bytes all = bytes();
        access::PictureData picture;
        picture.format = access::PictureData::Format::Metafile;
        picture.data = all;
        picture.width = picture.height = 2540;
        picture.mappingMode = 8;
        QPainter painter(&image);
        EXPECT_TRUE(playMetafile(painter, image.rect(), picture));
        return image;
    }

private:
    void number(std::size_t value, int count) {
        for (int i = 0; i < count; ++i) {
            records_.push_back(static_cast<std::uint8_t>(value >> (8 * i) & 0xFF));
        }
    }

    Bytes records_;
};

constexpr std::uint32_t grey = 0xC0C0C0, red = 0xFF0000, blue = 0x0000FF, white = 0xFFFFFF, black = 0;
constexpr unsigned storedRed = 0x0000FF, storedBlue = 0xFF0000; // red in the low byte
constexpr int nullPen = 5;

std::uint32_t at(const QImage& image, int x, int y) {
    return image.pixel(x, y) & 0xFFFFFF;
}

int countOf(const QImage& image, std::uint32_t colour) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += at(image, x, y) == colour ? 1 : 0;
        }
    }
    return count;
}

// A red brush and no pen.
Metafile filling() {
    Metafile metafile;
    metafile.brush(0, storedRed).pen(nullPen, 0, 0).select(0).select(1);
    return metafile;
}

TEST(OldMetafiles, ARectangleHasItsBrushAndItsPen) {
    Metafile metafile;
    metafile.brush(0, storedRed).pen(0, 4, storedBlue).select(0).select(1);
    const QImage image = metafile.call(0x041B, {80, 80, 20, 20}).played();
    EXPECT_EQ(at(image, 50, 50), red);
    EXPECT_EQ(at(image, 20, 50), blue);
    EXPECT_EQ(at(image, 10, 50), grey);
}

TEST(OldMetafiles, AHollowBrushLeavesTheGround) {
    Metafile metafile;
    metafile.brush(1, storedRed).select(0).call(0x041B, {80, 80, 20, 20});
    EXPECT_EQ(at(metafile.played(), 50, 50), grey);
}

TEST(OldMetafiles, TheWindowIsStretchedOverThePictureAndMayBeUpsideDown) {
    Metafile metafile = filling();
    metafile.call(0x020B, {1000, 0}).call(0x020C, {-1000, 200}).call(0x041B, {0, 200, 500, 100});
    const QImage image = metafile.played(); // the lower right quarter
    EXPECT_EQ(at(image, 75, 75), red);
    EXPECT_EQ(at(image, 75, 25), grey);
    EXPECT_EQ(at(image, 25, 75), grey);
}

TEST(OldMetafiles, WithoutAWindowTheSizeOfThePictureIsIt) {
    Metafile metafile = filling();
    const Bytes all = metafile.call(0x041B, {1270, 1270, 0, 0}).bytes();
    // The two calls that set the window are cut out.
    Bytes bytes(all.begin(), all.begin() + 18);
    bytes.insert(bytes.end(), all.begin() + 38, all.end());
    access::PictureData picture;
    picture.data = bytes;
    picture.width = picture.height = 2540;
    picture.mappingMode = 8;
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    ASSERT_TRUE(playMetafile(painter, image.rect(), picture));
    EXPECT_EQ(at(image, 25, 25), red);
    EXPECT_EQ(at(image, 75, 75), white);
}

TEST(OldMetafiles, ShapesLieInTheirBoxes) {
    const Words box = {90, 90, 10, 10};
    const auto with = [&](Words first) {
        first.insert(first.end(), box.begin(), box.end());
        return first;
    };
    const QImage ellipse = filling().call(0x0418, box).played();
    EXPECT_EQ(at(ellipse, 50, 50), red);
    EXPECT_EQ(at(ellipse, 14, 14), grey);
    const QImage round = filling().call(0x061C, with({40, 40})).played();
    EXPECT_EQ(at(round, 50, 12), red);
    EXPECT_EQ(at(round, 11, 11), grey);
    // From the right, against the clock, to the top: the upper right quarter.
    const QImage pie = filling().call(0x081A, with({10, 50, 50, 90})).played();
    EXPECT_EQ(at(pie, 65, 35), red);
    EXPECT_EQ(at(pie, 35, 35), grey);
    EXPECT_EQ(at(pie, 65, 65), grey);
    const QImage chord = filling().call(0x0830, with({10, 50, 50, 90})).played();
    EXPECT_EQ(at(chord, 75, 25), red);
    EXPECT_EQ(at(chord, 55, 45), grey);
    const QImage arc = filling().call(0x0817, with({10, 50, 50, 90})).played();
    EXPECT_EQ(countOf(arc, red), 0);
}

TEST(OldMetafiles, PolygonsAreFilledByTheirRule) {
    // Two squares, one in the other, drawn the same way round.
    const Words both = {2, 4, 4, 10, 10, 90, 10, 90, 90, 10, 90, 30, 30, 70, 30, 70, 70, 30, 70};
    EXPECT_EQ(at(filling().call(0x0538, both).played(), 50, 50), grey);
    EXPECT_EQ(at(filling().call(0x0106, {2}).call(0x0538, both).played(), 50, 50), red);
    const QImage triangle = filling().call(0x0324, {3, 0, 0, 100, 0, 0, 100}).played();
    EXPECT_EQ(at(triangle, 20, 20), red);
    EXPECT_EQ(at(triangle, 80, 80), grey);
}

TEST(OldMetafiles, LinesGoOnFromWhereTheyAre) {
    Metafile metafile;
    metafile.pen(0, 3, storedRed).select(0).call(0x0214, {50, 10}).call(0x0213, {50, 90});
    const QImage image = metafile.call(0x0325, {2, 10, 90, 90, 90}).played();
    EXPECT_EQ(at(image, 50, 50), red);
    EXPECT_EQ(at(image, 50, 90), red);
    EXPECT_EQ(at(image, 50, 70), grey);
}

TEST(OldMetafiles, AnObjectGetsTheLowestFreeNumber) {
    Metafile metafile;
    metafile.brush(0, storedRed).pen(nullPen, 0, 0).brush(0, storedRed).select(1);
    metafile.call(0x01F0, {0}).brush(0, storedBlue).select(0).call(0x041B, {90, 90, 10, 10});
    EXPECT_EQ(at(metafile.played(), 50, 50), blue);
}

TEST(OldMetafiles, AStateThatIsRestoredBringsBackItsBrushAndItsClip) {
    Metafile metafile = filling();
    metafile.brush(0, storedBlue).call(0x001E, {}).select(2).call(0x0416, {40, 40, 0, 0});
    metafile.call(0x041B, {100, 100, 0, 0}).call(0x0127, {-1}).call(0x041B, {100, 100, 50, 50});
    const QImage image = metafile.played();
    EXPECT_EQ(at(image, 20, 20), blue);
    EXPECT_EQ(at(image, 45, 20), grey);
    EXPECT_EQ(at(image, 75, 75), red);
}

TEST(OldMetafiles, BoxesAndRegionsClip) {
    const Words all = {100, 100, 0, 0};
    const QImage excluded = filling().call(0x0415, {60, 60, 40, 40}).call(0x041B, all).played();
    EXPECT_EQ(at(excluded, 50, 50), grey);
    EXPECT_EQ(at(excluded, 20, 20), red);
    const Words region = {0, 6, 0, 0, 0, 0, 0, 10, 10, 50, 50}; // object 2
    const QImage inRegion = filling().call(0x06FF, region).call(0x012C, {2}).call(0x041B, all).played();
    EXPECT_EQ(at(inRegion, 30, 30), red);
    EXPECT_EQ(at(inRegion, 70, 70), grey);
    const QImage moved =
        filling().call(0x06FF, region).call(0x012C, {2}).call(0x0220, {40, 40}).call(0x041B, all).played();
    EXPECT_EQ(at(moved, 70, 70), red);
    EXPECT_EQ(at(moved, 30, 30), grey);
    const QImage painted = filling().call(0x06FF, region).call(0x012B, {2}).played();
    EXPECT_EQ(at(painted, 30, 30), red);
    EXPECT_EQ(at(painted, 70, 70), grey);
    const QImage inverted = filling().call(0x06FF, region).call(0x012A, {2}).played();
    EXPECT_EQ(at(inverted, 30, 30), 0x3F3F3FU);
    const QImage framed = filling().call(0x06FF, region).call(0x0429, {2, 0, 4, 4}).played();
    EXPECT_EQ(at(framed, 12, 30), red);
    EXPECT_EQ(at(framed, 30, 30), grey);
}

TEST(OldMetafiles, ColoursAreCombinedAsTheModeSays) {
    const QImage once = filling().call(0x0104, {7}).call(0x041B, {90, 90, 10, 10}).played();
    EXPECT_EQ(at(once, 50, 50), 0xC0C0C0U ^ 0xFF0000U);
    const QImage twice =
        filling().call(0x0104, {7}).call(0x041B, {90, 90, 10, 10}).call(0x041B, {90, 90, 10, 10}).played();
    EXPECT_EQ(at(twice, 50, 50), grey);
    const QImage none = filling().call(0x0104, {11}).call(0x041B, {90, 90, 10, 10}).played();
    EXPECT_EQ(at(none, 50, 50), grey);
}

// Two by two with 24 bits: below red and black, above white and black.
TEST(OldMetafiles, ABitmapIsDrawnTheRightWayUp) {
    Words words = {0x0020, 0x00CC, 0, 2, 2, 0, 0, 80, 80, 10, 10};
    Words bitmap(20);
    bitmap[0] = 40;
    bitmap[2] = bitmap[4] = 2;
    bitmap[6] = 1;
    bitmap[7] = 24;
    bitmap.insert(bitmap.end(), {0x0000, 0x00FF, 0x0000, 0}); // red, black; then white, blue
    bitmap[21] = 0x00FF;
    bitmap.insert(bitmap.end(), {0xFFFF, 0xFFFF, 0x0000, 0});
    words.insert(words.end(), bitmap.begin(), bitmap.end());
    const QImage image = Metafile().call(0x0F43, words).played();
    EXPECT_EQ(at(image, 25, 75), red);
    EXPECT_EQ(at(image, 75, 75), black);
    EXPECT_EQ(at(image, 5, 5), grey);
    EXPECT_EQ(at(image, 25, 25), white);
}

TEST(OldMetafiles, APatternBlockFillsWithTheBrush) {
    const QImage image = filling().call(0x061D, {0x0021, 0x00F0, 50, 50, 25, 25}).played();
    EXPECT_EQ(at(image, 50, 50), red);
    EXPECT_EQ(at(image, 20, 50), grey);
}

// Dark points of a text in a box.
int ink(const QImage& image, QRect box) {
    int count = 0;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        for (int x = box.left(); x <= box.right(); ++x) {
            count += qGray(image.pixel(x, y)) < 0x60 ? 1 : 0;
        }
    }
    return count;
}

Metafile writing(int height = -20) {
    Metafile metafile;
    metafile.font(height, 128, encode(u"ＭＳ ゴシック", japaneseCodePage)).select(0).call(0x0102, {1});
    return metafile;
}

Words textWords(std::string_view text) {
    Words words;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const int high = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0;
        words.push_back(static_cast<unsigned char>(text[i]) | high << 8);
    }
    return words;
}

// ExtTextOut at 5, 40 with a way of 10 for each byte.
Metafile& write(Metafile& metafile, TextView text, const std::vector<int>& ways = {}) {
    const std::string bytes = encode(text, japaneseCodePage);
    Words words = {40, 5, static_cast<int>(bytes.size()), 0};
    const Words letters = textWords(bytes);
    words.insert(words.end(), letters.begin(), letters.end());
    words.insert(words.end(), ways.begin(), ways.end());
    return metafile.call(0x0A32, words);
}

TEST(OldMetafiles, JapaneseLettersStayWholeWhereEachByteHasItsWay) {
    Metafile plain = writing(), spaced = writing();
    write(plain, u"売上");
    write(spaced, u"売上", {10, 30, 10, 10}); // the second letter 40 behind the first
    const QImage first = plain.played(), second = spaced.played();
    EXPECT_GT(ink(first, {5, 40, 20, 20}), 30);
    EXPECT_EQ(ink(second, {5, 40, 20, 20}), ink(first, {5, 40, 20, 20}));
    EXPECT_GT(ink(second, {45, 40, 20, 20}), 30);
    EXPECT_EQ(ink(second, {26, 40, 18, 20}), 0);
}

TEST(OldMetafiles, TextsOfAWesternCharsetAreNotJapanese) {
    Metafile metafile;
    metafile.font(-20, 0, "Arial").select(0).call(0x0102, {1});
    metafile.call(0x0521, {2, 0xE9E9, 40, 5}); // é é, in page 932 one letter
    const QImage image = metafile.played();
    EXPECT_GT(ink(image, {5, 40, 11, 22}), 10);
    EXPECT_GT(ink(image, {16, 40, 11, 22}), 10);
}

TEST(OldMetafiles, TextIsAlignedAtItsPoint) {
    const auto inked = [](int alignment, QRect box) {
        Metafile metafile = writing();
        metafile.call(0x012E, {alignment}).call(0x0521, {2, 0xB6B6, 50, 50}); // ｶｶ, 20 wide
        return ink(metafile.played(), box);
    };
    const QRect left{28, 50, 22, 22}, right{51, 50, 22, 22}, above{51, 28, 22, 22};
    EXPECT_GT(inked(0, right), 10);
    EXPECT_EQ(inked(0, left), 0);
    EXPECT_GT(inked(2, left), 10);
    EXPECT_EQ(inked(2, right), 0);
    EXPECT_GT(inked(24, above), 10);
    EXPECT_GT(inked(8, above), 10);
}

TEST(OldMetafiles, TextGoesOnAtThePositionAndTurns) {
    Metafile goesOn = writing();
    goesOn.call(0x012E, {1})
        .call(0x0214, {40, 10})
        .call(0x0521, {2, 0xB6B6, 0, 0})
        .call(0x0521, {2, 0xB6B6, 0, 0});
    const QImage image = goesOn.played();
    EXPECT_GT(ink(image, {10, 40, 19, 22}), 10);
    EXPECT_GT(ink(image, {31, 40, 19, 22}), 10);
    Metafile turned;
    turned.font(-20, 128, "MS Gothic", 900)
        .select(0)
        .call(0x0102, {1})
        .call(0x0521, {4, 0xB6B6, 0xB6B6, 90, 50});
    EXPECT_GT(ink(turned.played(), {50, 50, 22, 40}), 20);
}

TEST(OldMetafiles, AnOpaqueBoxIsFilledAndCutsItsText) {
    const std::string bytes = encode(u"売上売上", japaneseCodePage);
    Words words = {40, 5, static_cast<int>(bytes.size()), 6, 5, 40, 45, 60};
    const Words letters = textWords(bytes);
    words.insert(words.end(), letters.begin(), letters.end());
    Metafile metafile = writing();
    metafile.call(0x0201, {0x00FF, 0}).call(0x0A32, words);
    const QImage image = metafile.played();
    EXPECT_GT(countOf(image, red), 200);
    EXPECT_EQ(ink(image, {48, 40, 50, 20}), 0);
}

TEST(OldMetafiles, CutOffItDrawsWhatIsWhole) {
    Bytes bytes = filling().call(0x041B, {50, 50, 0, 0}).call(0x041B, {100, 100, 50, 50}).bytes();
    const auto whole = access::readOldMetafile(bytes);
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->size(), 8u);
    bytes.resize(bytes.size() - 8);
    const auto cut = access::readOldMetafile(bytes);
    ASSERT_TRUE(cut);
    EXPECT_EQ(cut->size(), 7u);
    EXPECT_FALSE(access::readOldMetafile(std::span(bytes).first(18)));
    EXPECT_FALSE(access::readOldMetafile(Bytes(200)));
}

TEST(OldMetafiles, TheHeaderOfAFileMayStandBeforeIt) {
    const Bytes records = filling().bytes();
    Bytes file{0xD7, 0xCD, 0xC6, 0x9A};
    file.resize(22);
    file.insert(file.end(), records.begin(), records.end());
    ASSERT_TRUE(access::readOldMetafile(file));
    EXPECT_EQ(access::readOldMetafile(file)->size(), access::readOldMetafile(records)->size());
}

// One that uses every function.
Bytes allFunctions() {
    Metafile metafile = writing();
    metafile.brush(2, storedRed, 3).pen(1, 2, storedBlue).select(1).select(2);
    write(metafile, u"売上 Sales", std::vector<int>(10, 8));
    const Words words = {2, 2, 1, 1, 30, 30, 5, 5, 3, 3, 20, 20, 7, 7, 9, 9, 11, 11, 13, 13, 40, 40};
    for (unsigned function = 0; function < 0x1000; ++function) {
        const unsigned kind = function & 0xFF;
        if ((kind >= 0x01 && kind <= 0x43) || kind >= 0xF0 || function == 0x001E) {
            metafile.call(function, words);
        }
    }
    return metafile.bytes();
}

TEST(OldMetafiles, ChangedAnywhereItHarmsNobody) {
    const Bytes original = allFunctions();
    std::mt19937 random(20261122);
    for (int round = 0; round < 1500; ++round) {
        Bytes bytes = original;
        for (int change = 0; change < 12; ++change) {
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        }
        bytes.resize(random() % 3 == 0 ? random() % bytes.size() : bytes.size());
        access::PictureData picture;
        picture.format = access::PictureData::Format::Metafile;
        picture.data = bytes;
        picture.width = static_cast<std::int32_t>(random());
        picture.height = static_cast<std::int32_t>(random());
        picture.mappingMode = static_cast<std::int32_t>(random() % 10);
        QImage image(60, 60, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        playMetafile(painter, image.rect(), picture);
    }
}

// It would fill the picture a million times.
TEST(OldMetafiles, DrawingWithoutEndEnds) {
    Metafile metafile = filling();
    for (int i = 0; i < 1'000'000; ++i) {
        metafile.call(0x041B, {100, 100, 0, 0});
    }
    const Bytes bytes = metafile.bytes();
    access::PictureData picture;
    picture.data = bytes;
    picture.mappingMode = 8;
    QImage image(4000, 4000, QImage::Format_RGB32);
    QPainter painter(&image);
    EXPECT_TRUE(playMetafile(painter, image.rect(), picture));
    EXPECT_EQ(at(image, 2000, 2000), red);
}

} // namespace
} // namespace relvane::formview
