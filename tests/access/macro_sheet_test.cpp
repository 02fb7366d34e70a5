// The sheet of a macro, on bytes made by hand.

#include "access/macro_sheet.h"

#include <random>
#include <set>

#include <gtest/gtest.h>

#include "design_bytes_builder.h"
#include "macro_sheet_builder.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

namespace relvane::access {
namespace {

using namespace test;

constexpr TextView owner = u"マクロ \"試験\"";

MacroSheet read(const Bytes& bytes, int codePage = latinCodePage) {
    return readMacroSheet(bytes, codePage, owner);
}

// The description of the error that reading gives; empty without one. Its number must be `number`.
std::string failure(const Bytes& bytes, int number = 3049) {
    try {
        read(bytes);
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), number) << error.what();
        return toUtf8(error.description());
    }
    return {};
}

void expectDamagedAt(const Bytes& bytes, std::size_t offset, TextView reason) {
    const std::string expected =
        toUtf8(owner) + " のシートの " + std::to_string(offset) + " バイト目: " + toUtf8(reason);
    const std::string description = failure(bytes);
    EXPECT_NE(description.find(expected), std::string::npos) << description << "\nexpected: " << expected;
}

// A macro of one key, as Access 97 writes it.
Bytes autoKeys() {
    return StreamBytes()
        .hex("01 00 00 00 ff ff ff ff ff ff ff ff")
        .filler(20, 0xFF)
        .hex("00 00 00 00")
        .hex("00 00 01 00 ff ff 00 00 ff ff ff ff")
        .filler(20, 0xFF)
        .hex("3d 00")
        .text("Runs automatically when you open the database; assigns keys.")
        .hex("00 00 00")
        .hex("22 00 02 00 ff ff 03 00 ff ff 00 00 43 00")
        .filler(18, 0xFF)
        .hex("5d 00")
        .text("^p")
        .hex("00")
        .text("Run the Customer Phone List.Print macro when Ctrl+P is pressed.")
        .hex("00")
        .text("Customer Phone List.Print")
        .hex("00 00 00")
        .bytes();
}

TEST(MacroSheet, TheRowsOfASheetAreReadByteByByte) {
    const Bytes bytes = autoKeys();
    ASSERT_EQ(bytes.size(), 262u);
    const MacroSheet sheet = read(bytes);
    EXPECT_TRUE(sheet.showsNames());
    EXPECT_FALSE(sheet.showsConditions());
    EXPECT_FALSE(sheet.version);
    ASSERT_EQ(sheet.rows.size(), 2u);
    const MacroRow& remark = sheet.rows[0];
    EXPECT_EQ(remark.offset, 0x24u);
    EXPECT_EQ(remark.number, 1);
    EXPECT_FALSE(remark.hasAction());
    EXPECT_EQ(remark.action(), nullptr);
    EXPECT_EQ(remark.comment, u"Runs automatically when you open the database; assigns keys.");
    EXPECT_EQ(remark.name, u"");
    EXPECT_EQ(remark.condition, u"");
    const MacroRow& key = sheet.rows[1];
    EXPECT_EQ(key.offset, 0x85u);
    EXPECT_EQ(key.number, 2);
    EXPECT_EQ(key.actionNumber, 34);
    ASSERT_NE(key.action(), nullptr);
    EXPECT_EQ(key.action()->name, u"RunMacro");
    EXPECT_EQ(key.name, u"^p");
    EXPECT_EQ(key.comment, u"Run the Customer Phone List.Print macro when Ctrl+P is pressed.");
    EXPECT_EQ(key.arguments[0], u"Customer Phone List.Print");
    for (std::size_t i = 1; i < key.arguments.size(); ++i) {
        EXPECT_EQ(key.arguments[i], u"") << i;
    }
}

TEST(MacroSheet, ARowWithEverySlotOfItsActionIsRead) {
    const Bytes bytes = StreamBytes()
                            .raw(SheetBytes().header(3).bytes())
                            .hex("28 00 04 00 ff ff 15 00 5e 00 00 00 71 00 8b 00")
                            .filler(16, 0xFF)
                            .hex("8e 00")
                            .text("Enable SelectCountry")
                            .hex("00")
                            .text("If user select All Countries, do not enable the SelectCountry combo box.")
                            .hex("00")
                            .text("[PrintLabelsFor]=1")
                            .hex("00")
                            .text("[SelectCountry].[Enabled]")
                            .hex("00")
                            .text("No")
                            .hex("00 00 00")
                            .bytes();
    const MacroSheet sheet = read(bytes);
    EXPECT_TRUE(sheet.showsNames() && sheet.showsConditions());
    ASSERT_EQ(sheet.rows.size(), 1u);
    const MacroRow& row = sheet.rows[0];
    EXPECT_EQ(row.number, 4);
    EXPECT_EQ(row.action()->name, u"SetValue");
    EXPECT_EQ(row.name, u"Enable SelectCountry");
    EXPECT_EQ(row.comment, u"If user select All Countries, do not enable the SelectCountry combo box.");
    EXPECT_EQ(row.condition, u"[PrintLabelsFor]=1");
    EXPECT_EQ(row.arguments[0], u"[SelectCountry].[Enabled]");
    EXPECT_EQ(row.arguments[1], u"No");
}

TEST(MacroSheet, ASheetCutShortIsDamagedExceptBehindAWholeRecord) {
    const Bytes whole = autoKeys();
    const std::map<std::size_t, std::size_t> rowsAt = {{0x24, 0}, {0x85, 1}, {262, 2}};
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        SCOPED_TRACE(length);
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        if (const auto rows = rowsAt.find(length); rows != rowsAt.end()) {
            EXPECT_EQ(read(cut).rows.size(), rows->second);
        } else {
            const std::string description = failure(cut);
            EXPECT_NE(description.find(toUtf8(owner)), std::string::npos) << description;
            EXPECT_NE(description.find("データが途切れています"), std::string::npos) << description;
        }
    }
}

TEST(MacroSheet, TheVersionOfTheWriterStandsInTheHeader) {
    const auto version = [](const SheetBytes::Texts& texts) {
        return read(SheetBytes().record(3, 0, texts).bytes()).version;
    };
    EXPECT_FALSE(version({}));
    const auto two = version({{FirstArgument, "2"}, {FirstArgument + 1, "2"}});
    ASSERT_TRUE(two);
    EXPECT_EQ(two->first, 2);
    EXPECT_EQ(two->second, 2);
}

TEST(MacroSheet, ASheetOfAnUnknownVersionIsNotTakenForAnother) {
    const Bytes bytes = SheetBytes().record(3, 0, {{FirstArgument, "2"}, {FirstArgument + 1, "4"}}).bytes();
    const std::string description = failure(bytes, 3343);
    EXPECT_NE(description.find(toUtf8(owner) + " のシートのバージョン 2.4"), std::string::npos)
        << description;
}

TEST(MacroSheet, RowsOfANewerAccessAreInUtf16AndItsHeaderInBytes) {
    const MacroSheet sheet = read(SheetBytes()
                                      .header16(3)
                                      .record16(34, 1,
                                                {{Name, u"印刷"},
                                                 {Comment, u"①ĀĀ"}, // a byte 00 inside a text
                                                 {Condition, u"..."},
                                                 {FirstArgument, u"在庫.消去"}})
                                      .record16(0, 5, {})
                                      .bytes());
    ASSERT_EQ(sheet.rows.size(), 2u);
    EXPECT_EQ(sheet.version->second, 3);
    EXPECT_EQ(sheet.rows[0].name, u"印刷");
    EXPECT_EQ(sheet.rows[0].comment, u"①ĀĀ");
    EXPECT_TRUE(sheet.rows[0].continuesCondition());
    EXPECT_EQ(sheet.rows[0].arguments[0], u"在庫.消去");
    EXPECT_EQ(sheet.rows[1].number, 5);
}

TEST(MacroSheet, ASheetOfANewerAccessIsDamagedWhereverItIsCut) {
    SheetBytes sheet;
    sheet.header16();
    const std::size_t header = sheet.bytes().size();
    const Bytes whole = sheet.record16(4, 1, {{Comment, u"音"}, {FirstArgument, u"二"}}).bytes();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        if (length != header) {
            SCOPED_TRACE(length);
            EXPECT_NE(failure({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)}), "");
        }
    }
    Bytes unended = whole;
    unended[unended.size() - 4] = 1; // half of the zero behind the last text
    EXPECT_NE(failure(unended), "");
}

TEST(MacroSheet, TheMacroThatIsKeptOnceMoreAsXmlIsNoRow) {
    const MacroSheet sheet = read(SheetBytes()
                                      .header16()
                                      .record16(4, 1, {})
                                      .record16(0, 2, {{Comment, u"_AXL:<?xml version=\"1.0\"?>"}})
                                      .record16(0, 3, {{Comment, u"_AXL:</UserInterfaceMacros>"}})
                                      .record16(0, 4, {{Comment, u"see _AXL:"}})
                                      .bytes());
    ASSERT_EQ(sheet.rows.size(), 2u);
    EXPECT_EQ(sheet.rows[0].actionNumber, 4);
    EXPECT_EQ(sheet.rows[1].number, 4);
}

TEST(MacroSheet, AHeaderWithAnythingElseIsDamaged) {
    constexpr TextView reason = u"見出しが正しくありません";
    expectDamagedAt(SheetBytes().record(3, 1).bytes(), 0, reason);
    expectDamagedAt(SheetBytes().record(3, 0, {{Name, "a"}}).bytes(), 0, reason);
    expectDamagedAt(SheetBytes().record(3, 0, {{Comment, "a"}}).bytes(), 0, reason);
    expectDamagedAt(SheetBytes().record(3, 0, {{FirstArgument, "2"}}).bytes(), 0, reason);
    expectDamagedAt(SheetBytes().record(3, 0, {{FirstArgument + 2, "2"}}).bytes(), 0, reason);
    for (const char* digits : {"x", "-1", "99999", "2 "}) {
        expectDamagedAt(
            SheetBytes().record(3, 0, {{FirstArgument, digits}, {FirstArgument + 1, "2"}}).bytes(), 0,
            u"見出しのバージョンが正しくありません");
    }
}

TEST(MacroSheet, RowNumbersRiseAndMayLeaveGaps) {
    const MacroSheet sheet = read(SheetBytes().header().record(4, 1).record(4, 7).record(4, 65535).bytes());
    ASSERT_EQ(sheet.rows.size(), 3u);
    EXPECT_EQ(sheet.rows[1].number, 7);
    EXPECT_EQ(sheet.rows[2].number, 65535);
    constexpr TextView reason = u"行番号の順序が正しくありません";
    expectDamagedAt(SheetBytes().header().record(4, 0).bytes(), 36, reason);
    expectDamagedAt(SheetBytes().header().record(4, 3).record(4, 3).bytes(), 72, reason);
    expectDamagedAt(SheetBytes().header().record(4, 3).record(4, 2).bytes(), 72, reason);
}

TEST(MacroSheet, AnUnknownActionKeepsItsNumberAndAllItsArguments) {
    SheetBytes::Texts texts;
    for (std::size_t i = 0; i < MacroRow::argumentCount; ++i) {
        texts[FirstArgument + i] = "argument " + std::to_string(i + 1);
    }
    texts[Reserved] = "kept";
    for (const std::uint16_t number : std::initializer_list<std::uint16_t>{2, 10, 50, 59, 65535}) {
        const MacroSheet sheet = read(SheetBytes().header().record(number, 1, texts).bytes());
        ASSERT_EQ(sheet.rows.size(), 1u);
        const MacroRow& row = sheet.rows[0];
        EXPECT_EQ(row.actionNumber, number);
        EXPECT_TRUE(row.hasAction());
        EXPECT_EQ(row.action(), nullptr);
        EXPECT_EQ(row.arguments[0], u"argument 1");
        EXPECT_EQ(row.arguments[9], u"argument 10");
        EXPECT_EQ(row.reserved, u"kept");
    }
}

TEST(MacroSheet, TextsMayStandInAnyOrder) {
    // The comment ahead of the name.
    const Bytes bytes = StreamBytes()
                            .raw(SheetBytes().header().bytes())
                            .hex("04 00 01 00 ff ff 00 00 ff ff 03 00")
                            .filler(20, 0xFF)
                            .hex("05 00")
                            .text("ab")
                            .hex("00")
                            .text("n")
                            .hex("00 00 00")
                            .bytes();
    const MacroSheet sheet = read(bytes);
    EXPECT_EQ(sheet.rows[0].comment, u"ab");
    EXPECT_EQ(sheet.rows[0].name, u"n");
}

// A record behind the header with slots for comment and name, and the length and the text "ab", 0, "n", 0.
Bytes withSlots(std::string_view comment, std::string_view name, std::string_view length) {
    return StreamBytes()
        .raw(SheetBytes().header().bytes())
        .hex("04 00 01 00 ff ff")
        .hex(comment)
        .hex("ff ff")
        .hex(name)
        .filler(20, 0xFF)
        .hex(length)
        .text("ab")
        .hex("00")
        .text("n")
        .hex("00 00 00")
        .bytes();
}

TEST(MacroSheet, TextsThatDoNotFillTheirPlaceAreDamaged) {
    constexpr std::size_t text = 36 + 34; // where the text of the row begins
    EXPECT_EQ(failure(withSlots("00 00", "03 00", "05 00")), "");
    constexpr TextView place = u"文字列の位置が正しくありません";
    expectDamagedAt(withSlots("00 00", "00 00", "05 00"), text + 3, place); // shared
    expectDamagedAt(withSlots("00 00", "01 00", "05 00"), text + 3, place); // inside the other
    expectDamagedAt(withSlots("00 00", "04 00", "05 00"), text + 3, place); // a gap
    expectDamagedAt(withSlots("01 00", "03 00", "05 00"), text, place);     // a gap ahead of all
    expectDamagedAt(withSlots("00 00", "fe ff", "05 00"), text + 3, place); // far outside
    constexpr TextView size = u"文字列の長さが正しくありません";
    expectDamagedAt(withSlots("00 00", "ff ff", "05 00"), text + 3, size); // bytes of no slot
    expectDamagedAt(withSlots("ff ff", "ff ff", "05 00"), text, size);
    expectDamagedAt(withSlots("00 00", "03 00", "04 00"), text + 5, size);
    expectDamagedAt(withSlots("00 00", "03 00", "ff ff"), text + 5, size);
    Bytes bytes = withSlots("00 00", "03 00", "05 00");
    bytes[text + 5] = 1;
    expectDamagedAt(bytes, text + 5, u"行の終わりが正しくありません");
}

TEST(MacroSheet, TextsAreOfTheCodePageOfTheDatabase) {
    const auto text = [](TextView text) { return encode(text, japaneseCodePage); };
    const Bytes bytes = SheetBytes()
                            .header(3)
                            .record(22, 1,
                                    {{Name, text(u"印刷")},
                                     {Comment, text(u"表示します。ﾏｸﾛ")},
                                     {Condition, text(u"[区分]=\"予約\"")},
                                     {FirstArgument, text(u"ソート①")}})
                            .bytes();
    const MacroRow row = read(bytes, japaneseCodePage).rows.at(0);
    EXPECT_EQ(row.name, u"印刷");
    EXPECT_EQ(row.comment, u"表示します。ﾏｸﾛ");
    EXPECT_EQ(row.condition, u"[区分]=\"予約\"");
    EXPECT_EQ(row.arguments[0], u"ソート①");
}

TEST(MacroSheet, ANameBeginsAMemberOfTheGroup) {
    const MacroSheet sheet = read(SheetBytes()
                                      .header(3)
                                      .record(0, 1, {{Comment, "for the form"}})
                                      .record(4, 2)
                                      .record(6, 3, {{Name, "Close"}, {Condition, "[A]=1"}})
                                      .record(45, 4, {{Condition, "..."}})
                                      .record(0, 6, {{Comment, "about the next"}})
                                      .record(0, 7, {{Name, "Open"}})
                                      .bytes());
    const auto members = membersOf(sheet);
    ASSERT_EQ(members.size(), 3u);
    EXPECT_EQ(members[0].name, u"");
    EXPECT_EQ(members[0].rows.size(), 2u);
    EXPECT_EQ(members[1].name, u"Close");
    ASSERT_EQ(members[1].rows.size(), 3u);
    EXPECT_FALSE(members[1].rows[0].continuesCondition());
    EXPECT_TRUE(members[1].rows[1].continuesCondition());
    EXPECT_EQ(members[2].name, u"Open");
    EXPECT_EQ(members[2].rows.size(), 1u);

    EXPECT_TRUE(membersOf(read(SheetBytes().header().bytes())).empty());
    const MacroSheet plain = read(SheetBytes().header().record(4, 1).record(4, 2).bytes());
    ASSERT_EQ(membersOf(plain).size(), 1u);
    EXPECT_EQ(membersOf(plain)[0].rows.size(), 2u);
}

// Whatever the bytes, reading ends in a sheet or in an error with the name of the macro. A sheet that was read says
// back every byte of its text.
TEST(MacroSheet, DamagedBytesGiveASheetOrAnErrorThatNamesTheMacro) {
    const Bytes whole = autoKeys();
    std::mt19937 random(97);
    std::size_t damaged = 0;
    for (int round = 0; round < 20000; ++round) {
        Bytes bytes = whole;
        for (auto changes = random() % 4 + 1; changes != 0; --changes) {
            static constexpr std::uint8_t edges[] = {0, 1, 0x7F, 0x80, 0xFE, 0xFF};
            bytes[random() % bytes.size()] = edges[random() % std::size(edges)];
        }
        if (random() % 4 == 0) {
            bytes.resize(random() % bytes.size());
        }
        try {
            const MacroSheet sheet = read(bytes);
            std::size_t length = 36 + (sheet.version ? 4 : 0);
            for (const MacroRow& row : sheet.rows) {
                length += 36;
                std::vector<TextView> texts = {row.name, row.condition, row.comment, row.reserved};
                texts.insert(texts.end(), row.arguments.begin(), row.arguments.end());
                for (const TextView text : texts) {
                    length += text.empty() ? 0 : text.size() + 1;
                }
            }
            EXPECT_LE(length, bytes.size());
        } catch (const RunTimeError& error) {
            ++damaged;
            EXPECT_NE(error.description().find(owner), Text::npos) << error.what();
        }
    }
    EXPECT_GT(damaged, 1000u);
}

TEST(MacroActions, NumbersRiseAndEveryActionIsFound) {
    const auto actions = macroActions();
    EXPECT_EQ(actions.size(), 52u);
    std::set<Text> names;
    std::uint16_t last = 0;
    for (const MacroAction& action : actions) {
        EXPECT_GT(action.number, last);
        last = action.number;
        EXPECT_EQ(findMacroAction(action.number), &action);
        EXPECT_TRUE(names.insert(Text(action.name)).second) << toUtf8(action.name);
        EXPECT_LE(action.arguments.size(), MacroRow::argumentCount);
        std::set<Text> arguments;
        for (const MacroArgument& argument : action.arguments) {
            EXPECT_FALSE(argument.name.empty());
            EXPECT_TRUE(arguments.insert(Text(argument.name)).second) << toUtf8(argument.name);
        }
    }
    EXPECT_EQ(last, 73);
    for (const std::uint16_t number :
         std::initializer_list<std::uint16_t>{0, 2, 10, 16, 18, 36, 39, 42, 50, 59, 65535}) {
        EXPECT_EQ(findMacroAction(number), nullptr) << number;
    }
}

TEST(MacroActions, ArgumentsStandInStoredOrder) {
    const auto arguments = [](std::uint16_t number) {
        std::string text;
        for (const MacroArgument& argument : findMacroAction(number)->arguments) {
            text += (text.empty() ? "" : " ") + toUtf8(argument.name);
        }
        return text;
    };
    EXPECT_EQ(arguments(4), "");
    EXPECT_EQ(arguments(6), "ObjectType ObjectName Save");
    EXPECT_EQ(arguments(7), "DestinationDatabase NewName SourceObjectType SourceObjectName");
    EXPECT_EQ(arguments(22), "Message Beep Type Title");
    EXPECT_EQ(arguments(23), "FormName View FilterName WhereCondition DataMode WindowMode");
    EXPECT_EQ(arguments(30), "NewName ObjectType OldName");
    EXPECT_EQ(findMacroAction(54)->arguments.size(), 10u);
    EXPECT_EQ(findMacroAction(23)->arguments[1].kind, ArgumentKind::FormView);
    EXPECT_EQ(findMacroAction(46)->arguments[1].kind, ArgumentKind::View);
    EXPECT_EQ(findMacroAction(40)->arguments[0].kind, ArgumentKind::Expression);
}

} // namespace
} // namespace relvane::access
