#include <gmock/gmock.h>

#include "access/ole_field.h"
#include "access/stored_bitmap.h"
#include "formview/captions.h"
#include "formview/colours.h"
#include "formview/control_values.h"
#include "formview/edges.h"
#include "formview/enhanced_metafile.h"
#include "formview/faces.h"
#include "formview/picture_files.h"
#include "formview/picture_image.h"
#include "formview/stored_picture.h"
#include "formview/window_parts.h"
#include "platform/bitmap_file.h"

namespace relvane::formview {
namespace {

using testing::ElementsAre;

QImage sheet(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(0xC0, 0xC0, 0xC0));
    return image;
}

std::uint32_t at(const QImage& image, int x, int y) {
    return image.pixel(x, y) & 0xFFFFFF;
}

TEST(Colours, NegativeOnesArePartsOfTheScreenOfThatTime) {
    EXPECT_EQ(colourOf(-2147483633), QColor(0xC0, 0xC0, 0xC0)); // button face
    EXPECT_EQ(colourOf(-2147483643), QColor(Qt::white));        // window
    EXPECT_EQ(colourOf(-2147483647), QColor(0x00, 0x80, 0x80)); // desktop
    EXPECT_EQ(colourOf(-1), QColor(Qt::black));                 // no part has that number
}

TEST(Colours, OthersHaveRedInTheLowByte) {
    EXPECT_EQ(colourOf(255), QColor(Qt::red));
    EXPECT_EQ(colourOf(0xFF0000), QColor(Qt::blue));
    EXPECT_EQ(colourOf(13434879), QColor(0xFF, 0xFF, 0xCC));
}

TEST(Captions, AnAmpersandMarksTheLetterBehindIt) {
    const Caption caption = captionOf(QStringLiteral("保存(&S)"));
    EXPECT_EQ(caption.text, QStringLiteral("保存(S)"));
    EXPECT_EQ(caption.underlined, 3);
}

TEST(Captions, TwoAmpersandsAreOneAndOneAtTheEndIsNone) {
    const Caption caption = captionOf(QStringLiteral("A && B&"));
    EXPECT_EQ(caption.text, QStringLiteral("A & B"));
    EXPECT_FALSE(caption.underlined);
}

TEST(Captions, TheMarkedLetterHasALineBelow) {
    const auto darkRows = [](const QString& caption) {
        QImage image = sheet(60, 20);
        QPainter painter(&image);
        drawText(painter, captionOf(caption), fontOf({}), Qt::black, {QRect(2, 2, 56, 16)});
        painter.end();
        int longest = 0;
        for (int y = 0; y < image.height(); ++y) {
            int run = 0;
            for (int x = 0; x < image.width(); ++x) {
                run = at(image, x, y) == 0 ? run + 1 : 0;
                longest = std::max(longest, run);
            }
        }
        return longest;
    };
    EXPECT_GE(darkRows(QStringLiteral("&OOO")), 6);
    EXPECT_LT(darkRows(QStringLiteral("OOO")), 6);
}

TEST(Captions, ATextStaysInItsBox) {
    QImage image = sheet(100, 60);
    QPainter painter(&image);
    drawText(painter, {QStringLiteral("長い文字列がどこまでも続く長い文字列がどこまでも続く"), {}},
             fontOf({}), Qt::black, {QRect(20, 20, 40, 12)});
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (!QRect(20, 20, 40, 12).contains(x, y)) {
                ASSERT_EQ(at(image, x, y), 0xC0C0C0U) << x << " " << y;
            }
        }
    }
}

TEST(Captions, AWordIsDrawnNarrowerBeforeItIsBroken) {
    const auto rows = [](int width) { // that have ink
        QImage image = sheet(100, 40);
        QPainter painter(&image);
        drawText(painter, {QStringLiteral("ProductName"), {}}, fontOf({.name = {}, .points = 11}), Qt::black,
                 {QRect(0, 0, width, 40)});
        painter.end();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            bool hasInk = false;
            for (int x = 0; x < image.width(); ++x) {
                hasInk = hasInk || at(image, x, y) < 0x808080;
            }
            count += hasInk ? 1 : 0;
        }
        return count;
    };
    const QFontMetrics metrics(fontOf({.name = {}, .points = 11}));
    const int whole = metrics.horizontalAdvance(QStringLiteral("ProductName"));
    EXPECT_LT(rows(whole - 4), metrics.height());
    EXPECT_GT(rows(whole / 2), metrics.height());
}

TEST(Captions, AJapaneseFaceHasAYenSignForTheBackslash) {
    const auto drawn = [](const QString& caption, const Text& face) {
        QImage image = sheet(60, 20);
        QPainter painter(&image);
        drawText(painter, {caption, {}}, fontOf({.name = face, .points = 9}), Qt::black,
                 {QRect(2, 2, 56, 16)});
        painter.end();
        return image;
    };
    const QString backslash = QStringLiteral("\\450"), yen = QStringLiteral("¥450");
    EXPECT_EQ(drawn(backslash, u"ＭＳ Ｐゴシック"), drawn(yen, u"ＭＳ Ｐゴシック"));
    EXPECT_NE(drawn(backslash, u"Arial"), drawn(yen, u"Arial"));
}

TEST(Edges, EachEffectHasItsColoursAtTheCorner) {
    struct Case {
        Effect effect;
        std::uint32_t topLeft, bottomRight;
    };
    for (const Case& wanted :
         {Case{Effect::Raised, 0xFFFFFF, 0x000000}, Case{Effect::Sunken, 0x808080, 0xFFFFFF},
          Case{Effect::Etched, 0x808080, 0xFFFFFF}}) {
        QImage image = sheet(40, 30);
        QPainter painter(&image);
        const QRect inside = drawEdge(painter, QRect(5, 5, 20, 12), wanted.effect, {});
        painter.end();
        EXPECT_EQ(at(image, 6, 5), wanted.topLeft);
        EXPECT_EQ(at(image, 24, 16), wanted.bottomRight);
        EXPECT_EQ(at(image, 25, 16), 0xC0C0C0U);
        EXPECT_EQ(inside, QRect(7, 7, 16, 8));
    }
}

TEST(Edges, AShadowFallsToTheRightAndBelow) {
    QImage image = sheet(40, 30);
    QPainter painter(&image);
    drawEdge(painter, QRect(5, 5, 20, 12), Effect::Shadowed, {});
    painter.end();
    EXPECT_EQ(at(image, 5, 5), 0U);
    EXPECT_EQ(at(image, 26, 12), 0x808080U);
    EXPECT_EQ(at(image, 12, 18), 0x808080U);
    EXPECT_EQ(at(image, 26, 5), 0xC0C0C0U);
}

TEST(Edges, AChiselledOneHasALineBelowAlone) {
    QImage image = sheet(40, 30);
    QPainter painter(&image);
    drawEdge(painter, QRect(5, 5, 20, 12), Effect::Chiselled, {});
    painter.end();
    EXPECT_EQ(at(image, 10, 5), 0xC0C0C0U);
    EXPECT_EQ(at(image, 10, 15), 0x808080U);
    EXPECT_EQ(at(image, 10, 16), 0xFFFFFFU);
}

TEST(Edges, ABorderIsAsWideAsItsPointsSay) {
    EXPECT_EQ((Border{.style = 1, .points = 0, .colour = Qt::black}.pixels()), 1);
    EXPECT_EQ((Border{.style = 1, .points = 3, .colour = Qt::black}.pixels()), 4);
    EXPECT_EQ((Border{.style = 0, .points = 3, .colour = Qt::black}.pixels()), 0);
    QImage image = sheet(40, 30);
    QPainter painter(&image);
    EXPECT_EQ(drawEdge(painter, QRect(5, 5, 20, 12), Effect::Flat, {1, 2, Qt::red}), QRect(7, 7, 16, 8));
    painter.end();
    EXPECT_EQ(at(image, 4, 10), 0xFF0000U); // one of three pixels outside
    EXPECT_EQ(at(image, 6, 10), 0xFF0000U);
    EXPECT_EQ(at(image, 7, 10), 0xC0C0C0U);
}

TEST(Edges, ADashedBorderHasGaps) {
    QImage image = sheet(60, 30);
    QPainter painter(&image);
    drawEdge(painter, QRect(5, 5, 50, 20), Effect::Flat, {2, 0, Qt::black});
    painter.end();
    int dark = 0;
    for (int x = 5; x < 55; ++x) {
        dark += at(image, x, 5) == 0 ? 1 : 0;
    }
    EXPECT_GT(dark, 10);
    EXPECT_LT(dark, 48);
}

TEST(Pictures, ClippedOnesKeepTheirSizeWhereTheAlignmentPutsThem) {
    const QRect box(10, 10, 100, 60);
    const QSize size(20, 10);
    using enum PictureAlignment;
    EXPECT_EQ(pictureBox(size, box, SizeMode::Clip, TopLeft), QRect(10, 10, 20, 10));
    EXPECT_EQ(pictureBox(size, box, SizeMode::Clip, TopRight), QRect(90, 10, 20, 10));
    EXPECT_EQ(pictureBox(size, box, SizeMode::Clip, Centre), QRect(50, 35, 20, 10));
    EXPECT_EQ(pictureBox(size, box, SizeMode::Clip, BottomLeft), QRect(10, 60, 20, 10));
    EXPECT_EQ(pictureBox(size, box, SizeMode::Clip, BottomRight), QRect(90, 60, 20, 10));
}

TEST(Pictures, StretchedOnesFillTheBoxAndZoomedOnesKeepTheirShape) {
    const QRect box(0, 0, 100, 60);
    EXPECT_EQ(pictureBox({20, 10}, box, SizeMode::Stretch, PictureAlignment::Centre), box);
    EXPECT_EQ(pictureBox({20, 10}, box, SizeMode::Zoom, PictureAlignment::Centre), QRect(0, 5, 100, 50));
}

// ---- Bitmaps

Bytes bitmap(std::int32_t width, std::int32_t height, std::uint16_t bits, std::uint32_t compression,
             std::initializer_list<std::uint32_t> colours, const Bytes& data) {
    Bytes bytes;
    const auto add = [&](std::uint64_t value, int size) {
        for (int i = 0; i < size; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    };
    add(40, 4);
    add(static_cast<std::uint32_t>(width), 4);
    add(static_cast<std::uint32_t>(height), 4);
    add(1, 2);
    add(bits, 2);
    add(compression, 4);
    add(0, 12);
    add(colours.size(), 4);
    add(0, 4);
    for (const std::uint32_t colour : colours) {
        add(colour, 4);
    }
    bytes.insert(bytes.end(), data.begin(), data.end());
    return bytes;
}

TEST(StoredBitmaps, RowsGoUpwardsUnlessTheHeightIsNegative) {
    const Bytes rows{0x80, 0, 0, 0, 0x00, 0, 0, 0}; // the left pixel of the first stored row
    const auto upwards = access::readBitmap(bitmap(2, 2, 1, 0, {0x000000, 0xFF0000}, rows));
    ASSERT_TRUE(upwards);
    EXPECT_EQ(upwards->at(0, 1), 0xFF0000U);
    EXPECT_EQ(upwards->at(0, 0), 0x000000U);
    const auto downwards = access::readBitmap(bitmap(2, -2, 1, 0, {0x000000, 0xFF0000}, rows));
    ASSERT_TRUE(downwards);
    EXPECT_EQ(downwards->at(0, 0), 0xFF0000U);
}

TEST(StoredBitmaps, EveryDepthGivesItsColours) {
    EXPECT_EQ(access::readBitmap(bitmap(1, 1, 4, 0, {1, 2, 3}, {0x20, 0, 0, 0}))->at(0, 0), 3U);
    EXPECT_EQ(access::readBitmap(bitmap(1, 1, 8, 0, {1, 0x123456}, {1, 0, 0, 0}))->at(0, 0), 0x123456U);
    EXPECT_EQ(access::readBitmap(bitmap(1, 1, 16, 0, {}, {0x00, 0x7C, 0, 0}))->at(0, 0), 0xFF0000U);
    EXPECT_EQ(access::readBitmap(bitmap(1, 1, 24, 0, {}, {1, 2, 3, 0}))->at(0, 0), 0x030201U);
    EXPECT_EQ(access::readBitmap(bitmap(1, 1, 32, 0, {}, {1, 2, 3, 0}))->at(0, 0), 0x030201U);
}

TEST(StoredBitmaps, RunsAreSpreadOut) {
    const auto picture =
        access::readBitmap(bitmap(4, 2, 8, 1, {0, 0xAA, 0xBB}, {3, 1, 0, 0, 0, 3, 2, 1, 2, 0, 0, 1}));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->at(2, 1), 0xAAU);
    EXPECT_EQ(picture->at(3, 1), 0U);
    EXPECT_EQ(picture->at(0, 0), 0xBBU);
    EXPECT_EQ(picture->at(1, 0), 0xAAU);
}

TEST(StoredBitmaps, WhatClaimsMoreThanItHoldsIsNone) {
    EXPECT_FALSE(access::readBitmap({}));
    EXPECT_FALSE(access::readBitmap(bitmap(2, 2, 8, 0, {0}, {0, 0, 0, 0}))); // the second row is missing
    EXPECT_FALSE(access::readBitmap(bitmap(0x7FFFFFFF, 0x7FFFFFFF, 32, 0, {}, {0})));
    EXPECT_FALSE(
        access::readBitmap(bitmap(16384, 16384, 8, 1, {0}, {0, 1}))); // runs that would fill gigabytes
    EXPECT_FALSE(access::readBitmap(bitmap(1, static_cast<std::int32_t>(0x80000000), 8, 0, {}, {0})));
    EXPECT_FALSE(access::readBitmap(bitmap(1, 1, 7, 0, {}, {0, 0, 0, 0})));
}

TEST(StoredPictures, OfLaterVersionsAreFiles) {
    const auto corner = [](const Bytes& bytes) {
        QImage image = sheet(4, 4);
        QPainter painter(&image);
        StoredPicture::ofFile(bytes).draw(painter, QRect(0, 0, 4, 4), SizeMode::Clip,
                                          PictureAlignment::TopLeft, {});
        painter.end();
        return at(image, 0, 0);
    };
    constexpr std::uint32_t ground = 0xC0C0C0;
    const Picture picture{2, 1, {0x102030, 0}};
    EXPECT_EQ(corner(pngFile(picture)), 0x102030U);
    EXPECT_EQ(corner(bitmapFile(picture)), 0x102030U);
    EXPECT_EQ(corner(bitmap(1, 1, 24, 0, {}, {3, 2, 1, 0})), 0x010203U);
    EXPECT_EQ(corner(bitmap(1, 1, 32, 0, {}, {3, 2, 1, 0})), 0x010203U); // says nothing of what it covers
    EXPECT_EQ(corner(bitmap(1, -2, 32, 0, {}, {3, 2, 1, 0, 3, 2, 1, 255})), ground);
    EXPECT_EQ(corner(bitmap(1, 2, 32, 0, {}, {3, 2, 1, 0, 3, 2, 1, 255})), 0x010203U);
    EXPECT_EQ(corner({0, 0, 0, 0}), ground); // no picture
    const Bytes file = pngFile(picture);
    for (const std::size_t length :
         {std::size_t{4}, std::size_t{20}, std::size_t{50}, file.size() - 1}) { // no harm
        corner(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
    }
}

TEST(StoredPictures, OfASizeBeyondAllMeasureAreNone) {
    QImage wide(5000, 1, QImage::Format_RGB32);
    wide.fill(Qt::black);
    EXPECT_FALSE(StoredPicture::ofFile(pngFile(pictureOf(wide))).isThere());
}

TEST(OleFields, ShowTheBitmapOfAPaintedPicture) {
    Bytes field{0x15, 0x1C, 4, 0};
    const auto add = [&](std::uint32_t value) {
        for (int i = 0; i < 4; ++i) {
            field.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    };
    Bytes file{'B', 'M'};
    file.resize(14);
    const Bytes packed = bitmap(1, 1, 24, 0, {}, {9, 8, 7, 0});
    file.insert(file.end(), packed.begin(), packed.end());
    add(0x501);
    add(2);
    add(7);
    field.insert(field.end(), {'P', 'B', 'r', 'u', 's', 'h', 0});
    add(0);
    add(0);
    add(static_cast<std::uint32_t>(file.size()));
    field.insert(field.end(), file.begin(), file.end());
    const auto read = access::readOleField(field);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->className, u"PBrush");
    ASSERT_TRUE(read->bitmap);
    EXPECT_EQ(read->bitmap->at(0, 0), 0x070809U);
    for (std::size_t length = 0; length < field.size(); ++length) { // cut anywhere: no picture, no harm
        const auto cut = access::readOleField(std::span(field).first(length));
        EXPECT_TRUE(!cut || !cut->bitmap || length > field.size() - 4) << length;
    }
}

TEST(Metafiles, BytesThatAreNoneDrawNothingAndHarmNobody) {
    const Bytes bytes(200);
    for (const std::size_t length : {0U, 1U, 87U, 88U, 200U}) {
        EXPECT_FALSE(enhancedMetafileImage(std::span(bytes).first(length), {50, 50})) << length;
    }
}

TEST(PictureFiles, ABitmapIsReadBackAsItWas) {
    const Picture picture{3, 2, {0xFF0000, 0x00FF00, 0x0000FF, 0, 0xFFFFFF, 0x123456}};
    const Bytes file = bitmapFile(picture);
    ASSERT_GT(file.size(), 54U);
    EXPECT_EQ(file[0], 'B');
    EXPECT_EQ(file[28], 24);
    const auto read = access::readBitmapFile(file);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->pixels, picture.pixels);
}

TEST(PictureFiles, APngHoldsTheSamePixels) {
    const Picture picture{2, 1, {0x010203, 0xFFFEFD}};
    const Bytes file = pngFile(picture);
    const QImage image = QImage::fromData(file.data(), static_cast<int>(file.size()), "PNG");
    EXPECT_EQ(pictureOf(image).pixels, picture.pixels);
}

TEST(Lists, ItemsMayStandInQuotes) {
    EXPECT_THAT(listItems(u"1;一般;\"a;b\"; c"), ElementsAre(u"1", u"一般", u"a;b", u"c"));
}

} // namespace
} // namespace relvane::formview
