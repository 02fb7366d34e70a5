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
using test::header2000;
using test::header97;
using test::StreamBytes;
using test::WideBytes;

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
    EXPECT_EQ(read(StreamBytes().hex("0e 00 0b 00 00 00 00 00 96 00 fd")).version.version, 14);
    const Text newer = failure(StreamBytes().hex("16 00 14 00 00 00 00 00 96 00 fd").bytes(), 3343);
    EXPECT_NE(newer.find(u"フォーム \"試験\" のデザインのバージョン 22"), Text::npos) << toUtf8(newer);
}

// The same form in both grammars.
TEST(WideDesignStream, HasTheTreeAndTheValuesOfACompactOne) {
    const StoredDesign compact =
        read(form97().hex("0f 33 01 63 88 2c ff 02 00 64 00 32 00 fd 98 00 fe 68 00 dc 01 41 fd"));
    const StoredDesign wide = readDesignStream(WideBytes()
                                                   .object(DesignType::Form)
                                                   .flag(0x0f, 0x116)
                                                   .byte(0x33, 0x092, 1)
                                                   .word(0x63, 0x096, 11400)
                                                   .children(2)
                                                   .object(DesignType::Label)
                                                   .byte(0x32, 0x01d, 0)
                                                   .noChildren()
                                                   .object(DesignType::Section)
                                                   .oneChild()
                                                   .object(DesignType::CommandButton)
                                                   .text(0xdc, 0x014, u"A")
                                                   .noChildren()
                                                   .bytes(),
                                               owner);
    const auto compare = [](const auto& self, const StoredObject& one, const StoredObject& other) -> void {
        EXPECT_EQ(one.type, other.type);
        ASSERT_EQ(one.values.size(), other.values.size());
        for (std::size_t i = 0; i < one.values.size(); ++i) {
            EXPECT_EQ(one.values[i].id, other.values[i].id);
            EXPECT_EQ(one.values[i].number, other.values[i].number);
            EXPECT_EQ(one.values[i].bytes.empty(), other.values[i].bytes.empty());
            EXPECT_EQ(one.values[i].property, PropertyNumber::Unstated);
            EXPECT_NE(other.values[i].property, PropertyNumber::Unstated);
        }
        ASSERT_EQ(one.children.size(), other.children.size());
        for (std::size_t i = 0; i < one.children.size(); ++i) {
            self(self, one.children[i], other.children[i]);
        }
    };
    compare(compare, compact.root, wide.root);
    EXPECT_EQ(wide.version.version, 20);
    EXPECT_EQ(wide.root.values[0].property, PropertyNumber{0x116});
}

// The stream of a form with this value and nothing else.
Bytes formWith(design_format::WideKind kind, const Bytes& content) {
    return WideBytes().object(DesignType::Form).value(0x123, 0x7ff, kind, content).noChildren().bytes();
}

StoredValue onlyValue(const Bytes& bytes) {
    const StoredDesign design = readDesignStream(bytes, owner);
    EXPECT_EQ(design.root.values.size(), 1u);
    return design.root.values.at(0);
}

TEST(WideDesignStream, AKindAndALengthSayHowAValueIsKept) {
    using design_format::WideKind;
    struct Case {
        WideKind kind;
        Bytes content;
        ValueKind value;
        std::int32_t number;
    };
    const Case cases[] = {{WideKind::Flag, {}, ValueKind::Flag, 0},
                          {WideKind::Flag, {0}, ValueKind::Boolean, 0},
                          {WideKind::Flag, {255}, ValueKind::Boolean, 1},
                          {WideKind::Flag, {1, 0, 0, 0}, ValueKind::Boolean, 1},
                          {WideKind::Byte, {200}, ValueKind::Byte, 200},
                          {WideKind::Word, {0xfe, 0xff}, ValueKind::Word, -2},
                          {WideKind::Word, {0x00, 0x00, 0x01, 0x00}, ValueKind::Long, 65536},
                          {WideKind::Long, {0xff, 0xff, 0xff, 0xff}, ValueKind::Long, -1}};
    for (const Case& each : cases) {
        const StoredValue value = onlyValue(formWith(each.kind, each.content));
        EXPECT_EQ(value.id, 0x123);
        EXPECT_EQ(value.property, PropertyNumber{0x7ff});
        EXPECT_EQ(value.kind, each.value);
        EXPECT_EQ(value.number, each.number);
        EXPECT_TRUE(value.bytes.empty());
    }
    const std::pair<WideKind, ValueKind> data[] = {
        {WideKind::Text, ValueKind::Text},
        {WideKind::LongText, ValueKind::Text},
        {WideKind::Binary, ValueKind::Binary},
        {WideKind::Macro, ValueKind::Macro},
        {WideKind{99}, ValueKind::Untold}}; // a kind that nobody has met passes
    for (const auto& [kind, expected] : data) {
        const StoredValue value = onlyValue(formWith(kind, {1, 2, 3}));
        EXPECT_EQ(value.kind, expected);
        EXPECT_EQ(value.bytes, (Bytes{1, 2, 3}));
    }
    EXPECT_EQ(onlyValue(formWith(WideKind::Real, Bytes(4))).kind, ValueKind::Real);
    EXPECT_EQ(onlyValue(formWith(WideKind::Date, Bytes(8))).kind, ValueKind::Date);
    EXPECT_EQ(onlyValue(formWith(WideKind::Guid, Bytes(16))).kind, ValueKind::Guid);
}

TEST(WideDesignStream, AKnownKindOfAnotherLengthIsDamage) {
    using design_format::WideKind;
    const std::pair<WideKind, std::size_t> cases[] = {
        {WideKind::Flag, 2}, {WideKind::Byte, 0}, {WideKind::Word, 3}, {WideKind::Long, 2},
        {WideKind::Real, 8}, {WideKind::Date, 4}, {WideKind::Guid, 15}};
    for (const auto& [kind, length] : cases) {
        const Text description = failure(formWith(kind, Bytes(length)));
        EXPECT_NE(description.find(u" 10 バイト目: 値の長さが正しくありません"), Text::npos)
            << toUtf8(description);
    }
}

TEST(WideDesignStream, PlacesNeedNotRiseAndAPropertyMayStandTwice) {
    const StoredDesign design = readDesignStream(WideBytes()
                                                     .object(DesignType::Form)
                                                     .byte(0x18f, 0x138, 3)
                                                     .byte(0x3f, 0x138, 1)
                                                     .byte(0x3f, 0x138, 2)
                                                     .noChildren()
                                                     .bytes(),
                                                 owner);
    EXPECT_EQ(design.root.values.size(), 3u);
}

TEST(WideDesignStream, IsDamagedWhereverItIsCut) {
    const Bytes whole = WideBytes(21)
                            .object(DesignType::Form)
                            .text(0xdc, 0x09c, u"受注")
                            .children(2)
                            .object(DesignType::Section)
                            .flag(0x01, 0x094)
                            .noChildren()
                            .object(DesignType::PageFooter)
                            .noChildren()
                            .bytes();
    EXPECT_EQ(readDesignStream(whole, owner).version.version, 21);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        SCOPED_TRACE(length);
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_FALSE(failure(cut).empty());
    }
    Bytes longer = whole;
    longer.push_back(0);
    EXPECT_NE(failure(longer).find(u"終わりの後にデータがあります"), Text::npos);
}

TEST(WideDesignStream, ALengthOrACountMakesNoRoomBeforeItsBytesAreThere) {
    EXPECT_FALSE(
        failure(
            WideBytes().object(DesignType::Form).u32(0xdc).u16(0x09c).u32(10).u32(0).u32(0xFFFFFFFF).bytes())
            .empty());
    EXPECT_FALSE(failure(WideBytes().object(DesignType::Form).children(0xFFFF).bytes()).empty());
    EXPECT_NE(failure(WideBytes().object(DesignType::Form).u32(0x10000).bytes())
                  .find(u" 10 バイト目: プロパティの位置が"),
              Text::npos);
}

TEST(LaterProperties, GoBehindThoseOfTheDesign) {
    StoredDesign design = read(StreamBytes().hex(header2000).hex("96 00 63 88 2c fe 98 00 60 10 00 fd"));
    const Bytes additions = WideBytes()
                                .object(DesignType::Form)
                                .boolean(0x132, 0x1c5, 1)
                                .oneChild()
                                .object(DesignType::Section)
                                .word(0x116, 0x23b, 7)
                                .noChildren()
                                .bytes();
    EXPECT_TRUE(addLaterProperties(design, readDesignStream(additions, owner)));
    EXPECT_EQ(design.addedVersion, 20);
    ASSERT_EQ(design.root.values.size(), 2u);
    EXPECT_EQ(design.root.values[0].property, PropertyNumber::Unstated);
    EXPECT_EQ(design.root.values[1].property, PropertyNumber{0x1c5});
    EXPECT_EQ(design.root.children[0].values.size(), 2u);
}

TEST(LaterProperties, OfAnotherTreeAreOutOfDate) {
    const StreamBytes stream = StreamBytes().hex(header2000).hex("96 00 fe 98 00 fd");
    const Bytes others[] = {
        WideBytes().object(DesignType::Form).boolean(0x132, 0x1c5, 1).noChildren().bytes(),
        WideBytes().object(DesignType::Report).oneChild().object(DesignType::Section).noChildren().bytes(),
        WideBytes().object(DesignType::Form).oneChild().object(DesignType::Label).noChildren().bytes()};
    for (const Bytes& other : others) {
        StoredDesign design = read(stream);
        EXPECT_FALSE(addLaterProperties(design, readDesignStream(other, owner)));
        EXPECT_TRUE(design.root.values.empty());
        EXPECT_EQ(design.addedVersion, 0);
    }
}

TEST(DesignStream, TheSeedsOfTheFuzzTargetAreWholeDesigns) {
    const auto folder = relvane::test::sourceFolder() / "tests/fuzz/corpus/fuzz_design";
    for (const char* name :
         {"form", "report", "nested", "long_values", "access2000", "unknown", "wide", "macro"}) {
        std::ifstream file(folder / (std::string(name) + ".bin"), std::ios::binary);
        const Bytes bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        EXPECT_FALSE(bytes.empty()) << name;
        EXPECT_EQ(toUtf8(failure(bytes)), "") << name;
    }
}

} // namespace
} // namespace relvane::access
