// The tree above a stored design: who belongs to whom, and what a value is when it is not stored.

#include "access/design_tree.h"

#include <functional>

#include <gtest/gtest.h>

#include "design_bytes_builder.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

namespace relvane::access {
namespace {

using test::form97;
using test::header2000;
using test::header97;
using test::StreamBytes;
using test::WideBytes;

std::unique_ptr<const Design> designOf(const StreamBytes& stream, int codePage = japaneseCodePage) {
    return std::make_unique<const Design>(readDesignStream(stream.bytes(), u"試験"), codePage);
}

std::unique_ptr<const Design> designOf(const WideBytes& stream) {
    return std::make_unique<const Design>(readDesignStream(stream.bytes(), u"試験"), japaneseCodePage);
}

Value number(std::int64_t value) {
    return value;
}

TEST(DesignTree, AFlagTurnsTheBuiltInValueRound) {
    const auto design = designOf(form97().hex("06 0f fd"));
    EXPECT_EQ(design->root()[u"RecordSelectors"], Value(false));
    EXPECT_EQ(design->root()[u"AutoCenter"], Value(true));
    EXPECT_EQ(design->root()[u"NavigationButtons"], Value(true));
    EXPECT_EQ(design->root()[u"PopUp"], Value(false));
}

TEST(DesignTree, AFlagInTheDefaultBlockTurnsRoundWhatControlsHave) {
    // A block of labels in italics, then a label with the flag and one without.
    const auto design = designOf(
        form97().hex("ff 02 00  64 00 01 fd  98 00 ff 02 00").hex("64 00 01 dc 01 41 fd  64 00 dc 01 42 fd"));
    EXPECT_EQ((*design->findControl(u"a"))[u"FontItalic"], Value(false));
    EXPECT_EQ((*design->findControl(u"B"))[u"FontItalic"], Value(true));
    EXPECT_EQ((*design->defaultBlock(DesignType::Label))[u"FontItalic"], Value(true));
}

TEST(DesignTree, AValueIsTheOwnOneOrTheBlocksOrBuiltIn) {
    const auto design = designOf(form97()
                                     .hex("ff 02 00  6d 00 62 10 00 69 09 00 fd  98 00 ff 02 00")
                                     .hex("6d 00 62 20 00 dc 01 41 fd  6d 00 dc 01 42 fd"));
    const DesignObject& first = *design->findControl(u"A");
    const DesignObject& second = *design->findControl(u"B");
    EXPECT_EQ(first[u"Width"], number(32));
    EXPECT_EQ(second[u"Width"], number(16));
    EXPECT_EQ(second[u"FontSize"], number(9));
    EXPECT_EQ(second[u"Height"], number(240));
    EXPECT_EQ(second[u"ControlSource"], Value(Text()));
    EXPECT_EQ(second[u"FontName"], Value(Text(u"MS Sans Serif")));
    EXPECT_EQ(second[u"BackColor"], number(16777215));
    EXPECT_EQ(second[u"TextFontCharSet"], Value(Null{})); // there is one, but nobody knows it
    EXPECT_EQ(second.value(u"NoSuchProperty"), std::nullopt);
    EXPECT_EQ(skipErrors([&] { second[u"NoSuchProperty"]; }), 438);
}

TEST(DesignTree, AHostOfBlocksDoesNotSlowTheControls) {
    // As many blocks and as many controls as their counts can say: by a search through the blocks for each value of
    // each control this would take many minutes.
    constexpr std::size_t many = 65000;
    StreamBytes stream = form97();
    stream.hex("ff e9 fd"); // 65,001
    for (std::size_t i = 0; i < many; ++i) {
        stream.hex("64 00 fd");
    }
    stream.hex("98 00 ff e8 fd"); // 65,000
    for (std::size_t i = 0; i < many; ++i) {
        stream.hex("6d 00 fd");
    }
    const auto design = designOf(stream);
    ASSERT_EQ(design->controls().size(), many);
    std::size_t enabled = 0;
    for (const DesignObject* control : design->controls()) {
        for (const TextView name : {u"Enabled", u"Visible", u"Width", u"Height"}) {
            enabled += control->value(name) == Value(true) ? 1 : 0;
        }
    }
    EXPECT_EQ(enabled, 2 * many);
}

TEST(DesignTree, BothNamesOfAPropertyFindIt) {
    const auto design = designOf(form97().hex("31 02 39 03 fe 98 00 fe 6d 00 35 04 dc 01 41 fd"));
    EXPECT_EQ(design->root()[u"RecordsetType"], number(2));
    EXPECT_EQ(design->root()[u"AllowUpdating"], number(2));
    EXPECT_EQ(design->root()[u"BorderStyle"], number(3)); // the form's own, of another kind
    const DesignObject& box = *design->findControl(u"A");
    EXPECT_EQ(box[u"BorderStyle"], number(4));
    EXPECT_EQ(box[u"oldborderstyle"], number(4));
}

TEST(DesignTree, RowSourceTypeIsATextAlsoWhereOnlyItsNumberIsStored) {
    const auto design = designOf(form97()
                                     .hex("ff 02 00  6f 00 30 0a fd  98 00 ff 04 00")
                                     .hex("6f 00 30 01 dc 01 41 fd")
                                     .hex("6f 00 dc 01 42 fd")
                                     .hex("6f 00 30 01 dc 01 43")
                                     .property(0xde, "FillCountries")
                                     .hex("fd  6e 00 dc 01 44 fd"));
    EXPECT_EQ((*design->findControl(u"A"))[u"RowSourceType"], Value(Text(u"Value List")));
    EXPECT_EQ((*design->findControl(u"B"))[u"RowSourceType"], Value(Text(u"Field List"))); // of the block
    EXPECT_EQ((*design->findControl(u"C"))[u"RowSourceType"], Value(Text(u"FillCountries")));
    EXPECT_EQ((*design->findControl(u"D"))[u"RowSourceType"], Value(Text(u"Table/Query")));
}

TEST(DesignTree, ChildrenOfTheRootAreBlocksLevelsAndSections) {
    const auto design = designOf(StreamBytes()
                                     .hex(header97)
                                     .hex("97 00 ff 0a 00  64 00 fd  9f 00 00 01 02 dc 01 41 fd  9f 00 01 fd")
                                     .hex("99 00 fd  9b 00 fd  9d 00 fd  9d 00 61 01 00 fd  98 00 fd")
                                     .hex("9e 00 fd  9c 00 fd"));
    EXPECT_TRUE(design->isReport());
    ASSERT_EQ(design->groupLevels().size(), 2u);
    EXPECT_EQ((*design->groupLevels()[0])[u"SortOrder"], Value(true));
    EXPECT_EQ((*design->groupLevels()[0])[u"ControlSource"], Value(Text(u"A")));
    EXPECT_EQ((*design->groupLevels()[1])[u"GroupInterval"], number(1));
    EXPECT_EQ(design->defaultBlocks().size(), 1u);
    EXPECT_TRUE(design->defaultBlocks()[0]->isDefaultBlock());
    std::vector<int> indexes;
    for (const DesignObject* section : design->sections()) {
        indexes.push_back(section->sectionIndex());
    }
    EXPECT_EQ(indexes, (std::vector<int>{1, 3, 5, 7, 0, 6, 4}));
    EXPECT_EQ(design->section(7)->type(), DesignType::BreakHeader);
    EXPECT_EQ(design->section(2), nullptr);
    EXPECT_TRUE(design->controls().empty()); // a block is no control
}

TEST(DesignTree, ControlsKnowTheirGroupPageLabelAndSection) {
    const auto design = designOf(form97()
                                     .hex("fe 98 00 df 01 44 ff 02 00")
                                     .hex("6b 00 dc 01 47 ff 02 00  64 00 dc 01 4c fd")
                                     .hex("69 00 9c 07 00 00 00 dc 01 4f fe 64 00 dc 01 6c fd")
                                     .hex("7b 00 dc 01 54 fe 7c 00 dc 01 50 fe 6a 00 dc 01 58 fd"));
    Text order;
    for (const DesignObject* control : design->controls()) {
        order += control->name();
        EXPECT_EQ(control->section(), design->section(0));
    }
    EXPECT_EQ(order, u"GLOlTPX");
    const DesignObject& option = *design->findControl(u"O");
    EXPECT_TRUE(option.isInOptionGroup());
    EXPECT_EQ(option[u"OptionValue"], number(7));
    EXPECT_EQ(option.attachedLabel()->parent(), &option);
    EXPECT_EQ(design->findControl(u"G")->attachedLabel()->name(), u"L");
    EXPECT_FALSE(design->findControl(u"L")->isInOptionGroup()); // the group's own label
    const DesignObject& check = *design->findControl(u"X");
    EXPECT_FALSE(check.isInOptionGroup());
    EXPECT_EQ(check.attachedLabel(), nullptr);
    EXPECT_EQ(check.parent()->type(), DesignType::Page);
    EXPECT_EQ(check.parent()->parent()->type(), DesignType::Tab);
    EXPECT_EQ(design->section(0)->section(), design->section(0));
    EXPECT_EQ(design->root().section(), nullptr);
}

TEST(DesignTree, ObjectFramesAreNeitherEnabledNorFree) {
    const auto design =
        designOf(form97().hex("fe 98 00 ff 02 00  72 00 dc 01 41 fd  71 00 02 04 dc 01 42 fd"));
    EXPECT_EQ((*design->findControl(u"A"))[u"Enabled"], Value(false));
    EXPECT_EQ((*design->findControl(u"A"))[u"Locked"], Value(true));
    EXPECT_EQ((*design->findControl(u"B"))[u"Enabled"], Value(true));
    EXPECT_EQ((*design->findControl(u"B"))[u"Locked"], Value(false));
    EXPECT_EQ(controlTypeOf(design->findControl(u"B")->type()), 114);
}

TEST(DesignTree, TextsAreInTheCodePageOfTheDatabase) {
    const std::string caption = encode(u"受注入力", japaneseCodePage);
    const auto design = designOf(form97().property(0xdd, caption).hex("fd"));
    EXPECT_EQ(design->root()[u"Caption"], Value(Text(u"受注入力")));
    const auto latin = designOf(form97().hex("dd 01 e9 fd"), latinCodePage);
    EXPECT_EQ(latin->root()[u"Caption"], Value(Text(u"é")));
    const auto newer = designOf(StreamBytes().hex("13 00 13 00 00 00 00 00 96 00 dd 04 d7 53 e8 6c fd"));
    EXPECT_EQ(newer->root()[u"Caption"], Value(Text(u"受注")));
}

TEST(DesignTree, ValuesWithoutANameKeepTheirBytes) {
    const auto design = designOf(form97().hex("09 40 07 60 ff ff e8 02 61 62 fd"));
    std::vector<Value> values;
    for (const StoredValue& value : design->root().storedValues()) {
        EXPECT_EQ(design->root().factOf(value), nullptr);
        values.push_back(design->root().decoded(value));
    }
    EXPECT_EQ(values, (std::vector<Value>{Value(true), number(7), number(-1), Value(Bytes{0x61, 0x62})}));
}

TEST(DesignTree, AFlagWhoseBuiltInValueIsUnknownIsThereOrNull) {
    const auto design = designOf(form97().hex("fe 98 00 ff 02 00  6d 00 11 dc 01 41 fd  6d 00 dc 01 42 fd"));
    EXPECT_EQ((*design->findControl(u"A"))[u"FELineBreak"], Value(true));
    EXPECT_EQ((*design->findControl(u"B"))[u"FELineBreak"], Value(Null{}));
}

// A wide form with one section, and in it the control that `fill` writes.
std::unique_ptr<const Design> withControl(DesignType type, const std::function<void(WideBytes&)>& fill) {
    WideBytes stream;
    stream.object(DesignType::Form).oneChild().object(DesignType::Section).oneChild().object(type);
    fill(stream);
    stream.noChildren();
    return designOf(stream);
}

TEST(DesignTree, AWideValueIsThePropertyOfItsNumberWhereverItStands) {
    const auto design = withControl(DesignType::TextBox, [](WideBytes& stream) {
        stream
            .word(0x61, 0x036, 300)      // Left at the place of Top
            .text(0x1ff, 0x014, u"氏名") // Name at a place that nobody knows
            .word(0x200, 0x1c6, 15)      // a property of a later version
            .byte(0x3f, 0x7fe, 2)        // an unknown number at a place whose number was never met
            .byte(0x30, 0x7fd, 9);       // an unknown number at another property's place
    });
    const DesignObject& box = *design->findControl(u"氏名");
    EXPECT_EQ(box[u"Left"], number(300));
    EXPECT_EQ(box[u"Top"], number(0));
    EXPECT_EQ(box[u"LeftPadding"], number(15));
    EXPECT_EQ(box[u"ReadingOrder"], number(2));
    EXPECT_EQ(box[u"DecimalPlaces"], number(255));
    EXPECT_EQ(box.factOf(box.storedValues().back()), nullptr);
    EXPECT_EQ(box[u"Width"], number(1440)); // built in as ever
}

TEST(DesignTree, APropertyThatItsTypeIsNotKnownToHaveIsFoundAllTheSame) {
    const auto design = withControl(DesignType::Line, [](WideBytes& stream) {
        stream.text(0xdc, 0x014, u"線").text(0x201, 0x13d, u"説明");
    });
    const DesignObject& line = *design->findControl(u"線");
    EXPECT_EQ(findProperty(DesignType::Line, u"ControlTipText"), nullptr);
    EXPECT_EQ(line[u"ControlTipText"], Value(Text(u"説明")));
    EXPECT_EQ(line.value(u"Caption"), std::nullopt);
}

TEST(DesignTree, AControlOfAnUnknownTypeHasItsNameInAWideStream) {
    const auto design = withControl(
        DesignType{140}, [](WideBytes& stream) { stream.text(0xe0, 0x014, u"新").word(0x70, 0x096, 99); });
    EXPECT_EQ((*design->findControl(u"新"))[u"Width"], number(99));
}

TEST(DesignTree, AValueThatStandsTwiceIsTheLastOne) {
    const auto design = designOf(
        WideBytes().object(DesignType::Form).byte(0x18f, 0x138, 1).byte(0x3f, 0x138, 3).noChildren());
    EXPECT_EQ(design->root()[u"PictureSizeMode"], number(3));
}

TEST(DesignTree, ABooleanSaysWhatItIsAndAFlagTurnsRound) {
    WideBytes stream;
    stream.object(DesignType::Form).children(2).object(DesignType::TextBox).boolean(0x00, 0x094, 0);
    stream.noChildren().object(DesignType::Section).children(3);
    stream.object(DesignType::TextBox).text(0xdc, 0x014, u"A").noChildren();
    stream.object(DesignType::TextBox).flag(0x00, 0x094).text(0xdc, 0x014, u"B").noChildren();
    stream.object(DesignType::TextBox).boolean(0x00, 0x094, 1).text(0xdc, 0x014, u"C").noChildren();
    const auto design = designOf(stream);
    EXPECT_EQ((*design->findControl(u"A"))[u"Visible"], Value(false));
    EXPECT_EQ((*design->findControl(u"B"))[u"Visible"], Value(true));
    EXPECT_EQ((*design->findControl(u"C"))[u"Visible"], Value(true));
}

TEST(DesignTree, AnEventThatRunsAMacroOfTheDesignSaysSo) {
    const auto design = withControl(DesignType::CommandButton, [](WideBytes& stream) {
        stream.text(0xdc, 0x014, u"印刷").value(0x120, 0x1ea, design_format::WideKind::Macro, {1, 2});
    });
    const DesignObject& button = *design->findControl(u"印刷");
    EXPECT_EQ(button[u"OnClick"], Value(Text(u"[Embedded Macro]")));
    EXPECT_EQ(button[u"OnDblClick"], Value(Text()));
    EXPECT_EQ(button[u"OnClickEmMacro"], Value(Bytes{1, 2}));
}

TEST(DesignTree, WhatLaterVersionsAddedDoesNotReplaceWhatAccess2000Stored) {
    StoredDesign stored =
        readDesignStream(StreamBytes().hex(header2000).hex("96 00 dc 04 d7 53 e8 6c fd").bytes(), u"試験");
    const Bytes additions = WideBytes()
                                .object(DesignType::Form)
                                .text(0x12e, 0x09c, u"古い")
                                .boolean(0x132, 0x1c5, 1)
                                .value(0x1a0, 0x276, design_format::WideKind::Real, {0, 0, 0xbe, 0x42})
                                .noChildren()
                                .bytes();
    ASSERT_TRUE(addLaterProperties(stored, readDesignStream(additions, u"試験")));
    const Design design(std::move(stored), japaneseCodePage);
    EXPECT_EQ(design.root()[u"RecordSource"], Value(Text(u"受注")));
    EXPECT_EQ(design.root()[u"OrderByOnLoad"], Value(true));
    EXPECT_EQ(design.root()[u"AlternateBackShade"], Value(95.0F));
    EXPECT_EQ(design.version(), 19);
    EXPECT_EQ(design.modelVersion(), 20);
    EXPECT_EQ(designOf(form97().hex("fd"))->modelVersion(), 17);
    EXPECT_EQ(designOf(StreamBytes().hex("0e 00 0b 00 00 00 00 00 96 00 fd"))->modelVersion(), 17);
}

TEST(DesignTree, ADateThatIsNoneIsItsBytes) {
    const auto dated = designOf(form97().hex("ce 08 45 62 e4 d1 ed 39 e1 40 fd"));
    EXPECT_TRUE(std::holds_alternative<DateTime>(dated->root()[u"RecSrcDt"]));
    const auto shorter = designOf(form97().hex("ce 02 45 62 fd"));
    EXPECT_EQ(shorter->root()[u"RecSrcDt"], Value(Bytes{0x45, 0x62}));
}

TEST(DesignTree, DataOfAPropertyComesFromTheObjectOrItsBlock) {
    const auto design = designOf(form97()
                                     .hex("ff 02 00  67 00 df 01 2a fd  98 00 ff 02 00")
                                     .hex("67 00 dc 01 41 df 01 2b fd  67 00 dc 01 42 fd"));
    EXPECT_EQ(design->findControl(u"A")->bytes(u"PictureData")[0], 0x2b);
    EXPECT_EQ(design->findControl(u"B")->bytes(u"PictureData")[0], 0x2a);
    EXPECT_TRUE(design->root().bytes(u"PictureData").empty());
    EXPECT_TRUE(design->root().bytes(u"OleData").empty());
}

TEST(DesignTree, AnUnknownTypeHasItsNumberAndNoProperties) {
    const auto design = designOf(form97().hex("fe 98 00 fe 78 00 01 dc 01 41 fd"));
    ASSERT_EQ(design->controls().size(), 1u);
    const DesignObject& unknown = *design->controls()[0];
    EXPECT_EQ(static_cast<int>(unknown.type()), 120);
    EXPECT_TRUE(unknown.typeName().empty());
    EXPECT_TRUE(unknown.name().empty());
    EXPECT_EQ(unknown.value(u"Visible"), std::nullopt);
    EXPECT_EQ(unknown.storedValues().size(), 2u);
    EXPECT_TRUE(design->others().empty());

    const auto beside = designOf(form97().hex("ff 02 00  c8 00 01 fe 64 00 fd  98 00 fd"));
    EXPECT_EQ(beside->sections().size(), 1u);
    ASSERT_EQ(beside->others().size(), 1u);
    EXPECT_EQ(beside->others()[0]->children().size(), 1u);
    EXPECT_TRUE(beside->controls().empty());
}

} // namespace
} // namespace relvane::access
