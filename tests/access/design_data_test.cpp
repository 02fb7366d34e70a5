// What lies inside binary properties, made by hand and in a real file.

#include "access/design_data.h"

#include <map>

#include <gtest/gtest.h>

#include "access/design_source.h"
#include "design_bytes_builder.h"
#include "platform/codepage.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

using test::StreamBytes;

// Every beginning of the bytes but themselves; a reader must take each without a fault.
template <class Read>
void readTruncated(const Bytes& bytes, Read read) {
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        read(ByteView(bytes.data(), length));
    }
}

Bytes bitmap() {
    return StreamBytes().hex("28 00 00 00 aa 00 00 00 66 00 00 00 01 00 04 00").filler(24, 0).bytes();
}

Bytes enhancedMetafile() {
    return StreamBytes()
        .hex("0e 00 00 00 b1 05 46 3a  01 00 00 00 58 00 00 00")
        .filler(16, 0)
        .hex("0a 00 00 00 14 00 00 00 f2 03 00 00 08 02 00 00")
        .text(" EMF")
        .filler(0x58 - 44, 0)
        .bytes();
}

TEST(DesignData, APictureIsABitmapOrAMetafile) {
    const Bytes bits = bitmap();
    const auto picture = readPictureData(bits);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->format, PictureData::Format::Bitmap);
    EXPECT_EQ(picture->width, 170);
    EXPECT_EQ(picture->height, 102);
    EXPECT_EQ(picture->bits, 4);
    EXPECT_EQ(picture->data.size(), bits.size());

    const Bytes enhanced = enhancedMetafile();
    const auto drawing = readPictureData(enhanced);
    ASSERT_TRUE(drawing);
    EXPECT_EQ(drawing->format, PictureData::Format::EnhancedMetafile);
    EXPECT_EQ(drawing->width, 1000);
    EXPECT_EQ(drawing->height, 500);
    EXPECT_EQ(drawing->data.size(), enhanced.size() - 8);

    const Bytes old =
        StreamBytes()
            .hex("03 00 00 00 00 00 00 00 08 00 00 00 e8 03 00 00 f4 01 00 00 00 00 00 00 01 00")
            .bytes();
    const auto older = readPictureData(old);
    ASSERT_TRUE(older);
    EXPECT_EQ(older->format, PictureData::Format::Metafile);
    EXPECT_EQ(older->mappingMode, 8);
    EXPECT_EQ(older->width, 1000);
    EXPECT_EQ(older->data.size(), 2u);

    for (const Bytes& bytes : {bits, enhanced, old}) {
        readTruncated(bytes, [](ByteView part) { readPictureData(part); });
    }
}

TEST(DesignData, AnythingElseIsNoPicture) {
    EXPECT_FALSE(readPictureData({}));
    EXPECT_FALSE(readPictureData(StreamBytes().hex("28 00 00 00 01 00 00 00").bytes()));
    EXPECT_FALSE(readPictureData(StreamBytes().hex("29 00 00 00").filler(60, 0).bytes()));
    Bytes broken = enhancedMetafile();
    broken[48] = 'x'; // in the signature
    EXPECT_FALSE(readPictureData(broken));
}

TEST(DesignData, APaletteHasAsManyColoursAsItSays) {
    const Bytes bytes = StreamBytes().hex("00 03 02 00  01 02 03 00  ff 80 00 04  00 00 00 00").bytes();
    const auto colours = readPalette(bytes);
    ASSERT_TRUE(colours);
    ASSERT_EQ(colours->size(), 2u);
    EXPECT_EQ((*colours)[1].red, 255);
    EXPECT_EQ((*colours)[1].green, 128);
    EXPECT_EQ((*colours)[1].flags, 4);
    EXPECT_FALSE(readPalette(StreamBytes().hex("00 03 ff ff 01 02 03 00").bytes()));
    EXPECT_FALSE(readPalette(StreamBytes().hex("00 02 00 00").bytes()));
    readTruncated(bytes, [](ByteView part) { readPalette(part); });
}

TEST(DesignData, ThePrinterLayoutHasFourteenNumbers) {
    const Bytes bytes =
        StreamBytes()
            .hex("08 07 00 00 a0 05 00 00 08 07 00 00 a0 05 00 00 00 00 00 00 c0 21 00 00 68 01 00 00")
            .hex("01 00 00 00 01 00 00 00 68 01 00 00 00 00 00 00 a1 07 00 00 01 00 00 00 01 00 00 00")
            .bytes();
    const auto layout = readPrinterLayout(bytes);
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->left, 1800);
    EXPECT_EQ(layout->top, 1440);
    EXPECT_EQ(layout->bottom, 1440);
    EXPECT_FALSE(layout->dataOnly);
    EXPECT_EQ(layout->itemWidth, 8640);
    EXPECT_TRUE(layout->defaultSize);
    EXPECT_EQ(layout->itemsAcross, 1);
    EXPECT_EQ(layout->columnSpacing, 360);
    EXPECT_EQ(layout->itemLayout, 1953);
    EXPECT_TRUE(layout->fastPrinting);
    EXPECT_TRUE(layout->datasheet);
    EXPECT_FALSE(readPrinterLayout(ByteView(bytes).first(55)));
}

TEST(DesignData, ThePrintersNamesStandAtTheirOffsets) {
    const Bytes bytes = StreamBytes()
                            .hex("08 00 11 00 16 00 01 00")
                            .text("winspool")
                            .hex("00")
                            .text("hp44")
                            .hex("00")
                            .text("LPT1:")
                            .hex("00")
                            .bytes();
    const auto names = readPrinterNames(bytes, japaneseCodePage);
    ASSERT_TRUE(names);
    EXPECT_EQ(names->driver, u"winspool");
    EXPECT_EQ(names->device, u"hp44");
    EXPECT_EQ(names->port, u"LPT1:");
    EXPECT_TRUE(names->isDefault);
    EXPECT_FALSE(
        readPrinterNames(StreamBytes().hex("08 00 11 00 ff ff 01 00").text("winspool").bytes(), 932));
    readTruncated(bytes, [](ByteView part) { readPrinterNames(part, japaneseCodePage); });

    const Bytes mode =
        StreamBytes().text(encode(u"プリンタ", japaneseCodePage)).filler(24, 0).hex("01 02").bytes();
    ASSERT_TRUE(readPrinterMode(mode, japaneseCodePage));
    EXPECT_EQ(readPrinterMode(mode, japaneseCodePage)->deviceName, u"プリンタ");
    EXPECT_EQ(readPrinterMode(mode, japaneseCodePage)->settings.size(), 2u);
    EXPECT_FALSE(readPrinterMode(ByteView(mode).first(31), japaneseCodePage));
}

TEST(DesignData, AnOleObjectIsACompoundFileAndItsPicture) {
    const Bytes bytes = StreamBytes().hex("08 00 00 00 d0 cf 11 e0 a1 b1 1a e1 01 02 03").bytes();
    const auto data = readOleData(bytes);
    ASSERT_TRUE(data);
    EXPECT_EQ(data->compoundFile.size(), 8u);
    EXPECT_EQ(data->presentation.size(), 3u);
    EXPECT_FALSE(readOleData(StreamBytes().hex("08 00 00 00 d0 cf 11 e1 a1 b1 1a e1").bytes()));
    EXPECT_FALSE(readOleData(StreamBytes().hex("ff ff ff ff d0 cf 11 e0").bytes()));
    readTruncated(bytes, [](ByteView part) { readOleData(part); });
}

TEST(DesignData, EveryDataPropertyOfARealApplicationIsUnderstood) {
    const auto path = relvane::test::realSample("access97/nwind.mdb");
    if (!path) {
        return;
    }
    const DesignSource source(jet::openJetFile(path->native(), {}));
    std::map<Text, int> seen;
    const auto look = [&](const auto& self, const DesignObject& object, const Text& owner) -> void {
        for (const StoredValue& value : object.storedValues()) {
            const PropertyFact* fact = object.factOf(value);
            if (fact == nullptr || fact->kind != ValueKind::Binary) {
                continue;
            }
            SCOPED_TRACE(toUtf8(owner) + " " + toUtf8(object.name()) + "." + toUtf8(fact->name));
            ++seen[Text(fact->name)];
            if (fact->name == u"PictureData") {
                EXPECT_TRUE(readPictureData(value.bytes));
            } else if (fact->name == u"PaintPalette" || fact->name == u"ObjectPalette") {
                EXPECT_TRUE(readPalette(value.bytes));
            } else if (fact->name == u"PrtMip") {
                EXPECT_TRUE(readPrinterLayout(value.bytes));
            } else if (fact->name == u"PrtDevMode") {
                EXPECT_TRUE(readPrinterMode(value.bytes, latinCodePage));
            } else if (fact->name == u"PrtDevNames") {
                EXPECT_TRUE(readPrinterNames(value.bytes, latinCodePage));
            } else if (fact->name == u"OleData") {
                EXPECT_TRUE(readOleData(value.bytes));
            } else {
                ADD_FAILURE() << "data without a reader";
            }
        }
        for (const DesignObject* child : object.children()) {
            self(self, *child, owner);
        }
    };
    for (const auto* list : {&source.forms(), &source.reports()}) {
        for (const DesignDocument& document : *list) {
            look(look, source.design(document)->root(), document.title());
        }
    }
    EXPECT_EQ(seen, (std::map<Text, int>{{u"PictureData", 12},
                                         {u"PaintPalette", 1},
                                         {u"ObjectPalette", 7},
                                         {u"PrtMip", 16},
                                         {u"PrtDevMode", 16},
                                         {u"PrtDevNames", 16},
                                         {u"OleData", 2}}));
}

} // namespace
} // namespace relvane::access
