// The grammar of designs, on streams made by hand.

#include "access/design_stream.h"

#include <fstream>
#include <limits>

#include <gtest/gtest.h>

#include "access/design_tree.h"
#include "design_bytes_builder.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

using test::form97;
using test::header97;
using test::StreamBytes;

constexpr TextView owner = u"フォーム \"試験\"";

StoredDesign read(const StreamBytes& stream) {
    return readDesignStream(stream.bytes(), owner);
}

// The description of the error that reading gives; empty without one. Its number must be `number`.
Text failure(const Bytes& bytes, int number = 3049) {
    try {
        readDesignStream(bytes, owner);
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), number) << error.what();
        return error.description();
    }
    return {};
}

void expectDamagedAt(const StreamBytes& stream, std::size_t offset, TextView reason) {
    Text expected(owner);
    expected += u" のデザインの " + toText(static_cast<long long>(offset)) + u" バイト目: ";
    expected += reason;
    const Text description = failure(stream.bytes());
    EXPECT_NE(description.find(expected), Text::npos) << toUtf8(description);
}

std::int32_t number(const StoredObject& object, PropertyId id) {
    const StoredValue* value = object.find(id);
    EXPECT_NE(value, nullptr) << id;
    return value == nullptr ? 0 : value->number;
}

std::string text(const StoredObject& object, PropertyId id) {
    const StoredValue* value = object.find(id);
    EXPECT_NE(value, nullptr) << id;
    return value == nullptr ? "" : std::string(value->bytes.begin(), value->bytes.end());
}

StreamBytes dialogForm() {
    StreamBytes stream;
    stream.hex("11 00 11 00 00 00 00 00  96 00  06 0f 10  30 00  32 00  33 01  39 03  3d 02  42 00")
        .hex("63 eb 14  65 0a 00  67 10 00  68 a2 03  69 d2 00  6a 60 18  6b d2 0f  9c ae 01 00 00")
        .hex("a0 c0 c0 c0 00  ce 08 45 62 e4 d1 ed 39 e1 40")
        .property(0xdd, "Sales Reports")
        .property(0xe6, "Nwind80.hlp>Right")
        .property(0xe7, "Arial")
        .hex("ff 07 00  64 00 32 00 fd  65 00 31 03 32 00 fd  68 00 67 08 00 68 90 01")
        .property(0xe4, "MS Sans Serif")
        .hex("fd  69 00 31 02 67 e6 00 68 e2 ff fd  6b 00 31 03 fd  6e 00 32 02 fd")
        .hex("98 00 60 88 0e 9c 0f 00 00 80")
        .property(0xdf, "Detail")
        .hex("fe  68 00 02 31 55 32 56 60 30 0f 61 f0 00 62 b0 04 69 01 00")
        .property(0xdc, "Preview")
        .property(0xdd, "Pre&view")
        .property(0xdf, "[Event Procedure]")
        .hex("fd");
    return stream;
}

TEST(DesignStream, TheHeadOfAFormIsReadValueByValue) {
    const StoredDesign design = read(dialogForm());
    EXPECT_EQ(design.version.version, 17);
    const StoredObject& form = design.root;
    EXPECT_EQ(form.type, DesignType::Form);
    EXPECT_EQ(form.offset, 8u);
    EXPECT_EQ(form.values.size(), 22u);
    for (const PropertyId flag : std::initializer_list<PropertyId>{0x06, 0x0f, 0x10}) {
        EXPECT_NE(form.find(flag), nullptr);
    }
    EXPECT_EQ(number(form, 0x30), 0);
    EXPECT_EQ(number(form, 0x39), 3);
    EXPECT_EQ(number(form, 0x63), 5355);
    EXPECT_EQ(number(form, 0x6b), 4050);
    EXPECT_EQ(number(form, 0x9c), 430);
    EXPECT_EQ(number(form, 0xa0), 12632256);
    EXPECT_EQ(form.find(0xce)->bytes.size(), 8u);
    EXPECT_EQ(text(form, 0xdd), "Sales Reports");
    EXPECT_EQ(text(form, 0xe7), "Arial");
    ASSERT_EQ(form.children.size(), 7u);
    EXPECT_EQ(form.children[3].type, DesignType::OptionButton);
    EXPECT_EQ(number(form.children[3], 0x68), -30);
    const StoredObject& section = form.children[6];
    EXPECT_EQ(section.type, DesignType::Section);
    EXPECT_EQ(number(section, 0x60), 3720);
    EXPECT_EQ(number(section, 0x9c), -2147483633);
    ASSERT_EQ(section.children.size(), 1u);
    EXPECT_EQ(text(section.children[0], 0xdd), "Pre&view");
    EXPECT_EQ(text(section.children[0], 0xdf), "[Event Procedure]");
    EXPECT_EQ(number(section.children[0], 0x69), 1);
}

TEST(DesignStream, TheEndOfALastChildIsTheEndOfItsParent) {
    const StoredDesign design = read(form97()
                                         .hex("fe 98 00 60 00 01 df 01 44 ff 02 00")
                                         .hex("6d 00 37 55 60 70 08 61 68 01 63 ff 00")
                                         .property(0xdc, "BeginningDate")
                                         .property(0xde, "Medium Date")
                                         .property(0xe7, "=\"1/1/95\"")
                                         .property(0xf8, "Enter a date after 04-Aug-94.")
                                         .hex("fe 64 00 35 55 37 03 60 b3 01 61 68 01 62 36 06 63 f0 00")
                                         .property(0xdc, "BeginningDateLabel")
                                         .property(0xdd, "Enter beginning date:")
                                         .hex("fd  6d 00 dc 03 45 6e 64 fd"));
    const StoredObject& section = design.root.children.at(0);
    ASSERT_EQ(section.children.size(), 2u);
    const StoredObject& box = section.children[0];
    EXPECT_EQ(number(box, 0x63), 255); // ff inside a value is no tail
    EXPECT_EQ(box.find(0x62), nullptr);
    ASSERT_EQ(box.children.size(), 1u);
    EXPECT_EQ(text(box.children[0], 0xdd), "Enter beginning date:");
    EXPECT_TRUE(box.children[0].children.empty());
    EXPECT_EQ(text(section.children[1], 0xdc), "End");
}

TEST(DesignStream, LengthsHaveOneThreeOrSevenBytes) {
    const auto lengthOf = [](std::string_view length, std::size_t count) {
        const StoredDesign design = read(form97().hex("dd").hex(length).filler(count, 'x').hex("fd"));
        return design.root.find(0xdd)->bytes.size();
    };
    EXPECT_EQ(lengthOf("00", 0), 0u);
    EXPECT_EQ(lengthOf("fe", 0xfe), 0xfeu);
    EXPECT_EQ(lengthOf("ff ff 00", 0xff), 0xffu);
    EXPECT_EQ(lengthOf("ff 31 03", 0x331), 0x331u);
    EXPECT_EQ(lengthOf("ff fe ff", 0xfffe), 0xfffeu);
    EXPECT_EQ(lengthOf("ff ff ff 3e cd 01 00", 0x1cd3e), 0x1cd3eu);
    EXPECT_EQ(lengthOf("ff ff ff 02 00 00 00", 2), 2u); // longer than it needs to be
}

TEST(DesignStream, TheIdSaysHowManyBytesAValueHas) {
    const StoredDesign design = read(form97()
                                         .hex("00 2f 30 ff 5f 80 60 ff ff 9b 00 80 9c ff ff ff ff")
                                         .hex("bb 00 00 00 80 bc 01 aa fc 00 fd"));
    const StoredObject& form = design.root;
    ASSERT_EQ(form.values.size(), 10u);
    EXPECT_EQ(number(form, 0x00), 0);
    EXPECT_EQ(number(form, 0x2f), 0);
    EXPECT_EQ(number(form, 0x30), 255); // bytes have no sign
    EXPECT_EQ(number(form, 0x5f), 128);
    EXPECT_EQ(number(form, 0x60), -1);
    EXPECT_EQ(number(form, 0x9b), -32768);
    EXPECT_EQ(number(form, 0x9c), -1);
    EXPECT_EQ(number(form, 0xbb), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(form.find(0xbc)->bytes, Bytes{0xaa});
    EXPECT_TRUE(form.find(0xfc)->bytes.empty());
}

TEST(DesignStream, AnUnknownIdIsKeptAndAnUnknownTypeCarriedThrough) {
    const StoredDesign design =
        read(form97().hex("09 60 05 00 e8 02 61 62 fe 98 00 fe c8 00 dc 01 58 ff 01 00 64 00 fd"));
    EXPECT_NE(design.root.find(0x09), nullptr);
    EXPECT_EQ(number(design.root, 0x60), 5);
    EXPECT_EQ(text(design.root, 0xe8), "ab");
    const StoredObject& unknown = design.root.children[0].children[0];
    EXPECT_EQ(static_cast<int>(unknown.type), 200);
    EXPECT_FALSE(isKnown(unknown.type));
    EXPECT_TRUE(nameOf(unknown.type).empty());
    EXPECT_EQ(unknown.children.at(0).type, DesignType::Label);
}

TEST(DesignStream, IdsRiseStrictly) {
    expectDamagedAt(form97().hex("06 06 fd"), 11, u"プロパティの順序が正しくありません");
    expectDamagedAt(form97().hex("10 06 fd"), 11, u"プロパティの順序が正しくありません");
    expectDamagedAt(form97().hex("33 01 32 00 fd"), 12, u"プロパティの順序が正しくありません");
    EXPECT_TRUE(failure(form97().hex("06 fe 98 00 06 fd").bytes()).empty()); // in each object anew
}

TEST(DesignStream, NothingFollowsTheRoot) {
    expectDamagedAt(form97().hex("fd 00"), 11, u"終わりの後にデータがあります");
    expectDamagedAt(form97().hex("fe 98 00 fd fd"), 14, u"終わりの後にデータがあります");
}

TEST(DesignStream, NoChildrenInAListIsAnEnd) {
    EXPECT_TRUE(read(form97().hex("ff 00 00")).root.children.empty());
}

TEST(DesignStream, ACountWithNothingBehindItIsDamage) {
    expectDamagedAt(form97().hex("ff ff ff"), 13, u"子の数が足りません");
    expectDamagedAt(form97().hex("ff ff ff 64 00 fd"), 16, u"子の数が足りません");
}

TEST(DesignStream, ALengthBeyondTheEndIsDamageAndTakesNoMemory) {
    expectDamagedAt(form97().hex("dd 05 61 62"), 12, u"データが途切れています");
    expectDamagedAt(form97().hex("dd ff ff ff ff ff ff ff 61"), 18, u"データが途切れています");
    expectDamagedAt(form97().hex("dd ff ff ff 00 00 00 80 61"), 18, u"データが途切れています");
}

TEST(DesignStream, EveryTruncationIsDamage) {
    const Bytes whole = dialogForm().bytes();
    EXPECT_TRUE(failure(whole).empty());
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Text description =
            failure({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
        EXPECT_NE(description.find(owner), Text::npos) << length;
    }
}

// The root, and `levels` - 1 objects each inside the one before.
Bytes nested(std::size_t levels) {
    StreamBytes stream = form97();
    for (std::size_t i = 1; i < levels; ++i) {
        stream.hex("fe 98 00");
    }
    return stream.hex("fd").bytes();
}

TEST(DesignStream, NestingHasALimit) {
    EXPECT_TRUE(failure(nested(255)).empty());
    EXPECT_TRUE(failure(nested(deepestLevel)).empty());
    for (const std::size_t levels : {deepestLevel + 1, std::size_t{100000}}) {
        EXPECT_NE(failure(nested(levels)).find(u"入れ子が深すぎます"), Text::npos) << levels;
    }
}

TEST(DesignStream, TheDeepestTreeCanBeWalked) {
    const Design design(readDesignStream(nested(deepestLevel), owner), 932);
    std::size_t levels = 1;
    for (const DesignObject* object = &design.root(); !object->children().empty();
         object = object->children().front()) {
        ++levels;
    }
    EXPECT_EQ(levels, deepestLevel);
}

TEST(DesignStream, OnlyFormsAndReportsAreRoots) {
    expectDamagedAt(StreamBytes().hex(header97).hex("98 00 fd"), 8, u"フォームでもレポートでもありません");
    EXPECT_EQ(read(StreamBytes().hex(header97).hex("97 00 fd")).root.type, DesignType::Report);
}

TEST(DesignStream, TheHeaderIsThatOfAVersion) {
    EXPECT_EQ(read(StreamBytes().hex("13 00 13 00 00 00 00 00 96 00 fd")).version.version, 19);
    expectDamagedAt(StreamBytes().hex("11 00 13 00 00 00 00 00 96 00 fd"), 0, u"見出しが正しくありません");
    expectDamagedAt(StreamBytes().hex("11 00 11 00 01 00 00 00 96 00 fd"), 0, u"見出しが正しくありません");
    const Text newer = failure(StreamBytes().hex("14 00 14 00 00 00 00 00 96 00 fd").bytes(), 3343);
    EXPECT_NE(newer.find(u"フォーム \"試験\" のデザインのバージョン 20"), Text::npos) << toUtf8(newer);
}

TEST(DesignStream, TheSeedsOfTheFuzzTargetAreWholeDesigns) {
    const auto folder = relvane::test::sourceFolder() / "tests/fuzz/corpus/fuzz_design";
    for (const char* name : {"form", "report", "nested", "long_values", "access2000", "unknown"}) {
        std::ifstream file(folder / (std::string(name) + ".bin"), std::ios::binary);
        const Bytes bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        EXPECT_FALSE(bytes.empty()) << name;
        EXPECT_EQ(toUtf8(failure(bytes)), "") << name;
    }
}

} // namespace
} // namespace relvane::access
