// The macros of the builder: their bytes, and what the project's own reader makes of them.

#include <algorithm>
#include <span>

#include <gtest/gtest.h>

#include "access/macro_source.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"
#include "sample_builder/macro_writer.h"
#include "support/file_formats.h"

namespace relvane::samples {
namespace {

using access::MacroDocument;
using access::MacroSheet;
using access::MacroSource;

MacroSheet sheetOf(const MacroSource& source, TextView name) {
    const MacroDocument* macro = source.find(name);
    return macro == nullptr ? throw std::out_of_range(toUtf8(name)) : source.sheet(*macro);
}

// Macros in files of each format.
class SampleMacros : public testing::TestWithParam<FileFormat> {
protected:
    static MacroSource sourceOf(const DatabaseSpec& spec) {
        const DatabaseSpec saved = savedAs(spec, GetParam());
        return MacroSource(std::make_shared<const jet::JetFile>(jet::makeMemorySource(databaseBytes(saved))));
    }
    // The macros of a description, written and opened.
    static MacroSource described(std::string_view lines) {
        return sourceOf(parseDescription("database\n" + std::string(lines)));
    }
};
INSTANTIATE_TEST_SUITE_P(Formats, SampleMacros, test::everyFormat, test::formatName);

TEST(SampleMacroBytes, ASheetIsStoredByteByByteAsAccessDoes) {
    const MacroSpec macro{
        .rows = {{.comment = u"Assigns keys."},
                 {.name = u"^p", .action = 34, .arguments = {u"List.Print"}, .comment = u"Print."}},
        .hasVersion = false};
    Bytes expected;
    const auto numbers = [&](std::initializer_list<int> values) {
        for (const int value : values) {
            expected.push_back(static_cast<std::uint8_t>(value & 0xFF));
            expected.push_back(static_cast<std::uint8_t>(value >> 8 & 0xFF));
        }
    };
    const auto text = [&](std::string_view characters) {
        expected.insert(expected.end(), characters.begin(), characters.end());
        expected.push_back(0);
    };
    numbers({1, 0, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, 0, 0});
    numbers({0, 1, -1, 0, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, 14});
    text("Assigns keys.");
    numbers({0, 34, 2, -1, 3, -1, 0, 10, -1, -1, -1, -1, -1, -1, -1, -1, -1, 21});
    text("^p");
    text("Print.");
    text("List.Print");
    numbers({0});
    EXPECT_EQ(macroSheet(macro, japaneseCodePage), expected);
}

TEST_P(SampleMacros, RowsReadBackAsDescribed) {
    const MacroSheet sheet =
        sheetOf(described("macro 締め処理\n"
                          "  comment \"月末に動かす\"\n"
                          "  name 開始 condition \"[区分]=\"\"１\"\"\" comment 確認 action MsgBox "
                          "\"始めます。\" yes 2 \"締め\"\n"
                          "  condition ... action StopMacro\n"
                          "  below 3 name 終了 action OpenForm 受注入力 0 - \"[番号]=1\" -1 3\n"),
                u"締め処理");
    EXPECT_TRUE(sheet.showsNames());
    EXPECT_TRUE(sheet.showsConditions());
    EXPECT_EQ(sheet.version->second, GetParam() == FileFormat::Access97 ? 2 : 3);
    ASSERT_EQ(sheet.rows.size(), 4u);
    EXPECT_EQ(sheet.rows[0].comment, u"月末に動かす");
    EXPECT_FALSE(sheet.rows[0].hasAction());
    EXPECT_EQ(sheet.rows[1].name, u"開始");
    EXPECT_EQ(sheet.rows[1].condition, u"[区分]=\"１\"");
    EXPECT_EQ(sheet.rows[1].comment, u"確認");
    EXPECT_EQ(sheet.rows[1].action()->name, u"MsgBox");
    EXPECT_EQ(sheet.rows[1].arguments[0], u"始めます。");
    EXPECT_EQ(sheet.rows[1].arguments[1], u"-1");
    EXPECT_EQ(sheet.rows[1].arguments[2], u"2");
    EXPECT_EQ(sheet.rows[1].arguments[3], u"締め");
    EXPECT_TRUE(sheet.rows[2].continuesCondition());
    EXPECT_EQ(sheet.rows[3].number, 7);
    EXPECT_EQ(sheet.rows[3].arguments[2], u"");
    EXPECT_EQ(sheet.rows[3].arguments[4], u"-1");
    EXPECT_EQ(membersOf(sheet).size(), 3u);
}

TEST_P(SampleMacros, EveryActionWithAllItsArgumentsReadsBack) {
    DatabaseSpec spec;
    MacroSpec& macro = spec.macros.emplace_back(DocumentSpec{.name = u"M"}).macro.emplace();
    for (const access::MacroAction& action : access::macroActions()) {
        MacroRowSpec& row = macro.rows.emplace_back();
        row.action = action.number;
        for (const access::MacroArgument& argument : action.arguments) {
            row.arguments.push_back(Text(argument.name) + u" の値");
        }
    }
    const MacroSheet sheet = sheetOf(sourceOf(spec), u"M");
    ASSERT_EQ(sheet.rows.size(), macro.rows.size());
    for (std::size_t i = 0; i < sheet.rows.size(); ++i) {
        EXPECT_EQ(sheet.rows[i].actionNumber, macro.rows[i].action);
        for (std::size_t j = 0; j < macro.rows[i].arguments.size(); ++j) {
            EXPECT_EQ(sheet.rows[i].arguments[j], macro.rows[i].arguments[j]);
        }
    }
}

TEST(SampleMacroBytes, WideTextsAreThoseOfTheRowsAlone) {
    const MacroSpec macro{.rows = {{.name = u"開く"}}};
    const auto written = [&](bool hasVersion) {
        MacroSpec asked = macro;
        asked.hasVersion = hasVersion;
        return macroSheet(asked, TextCoding(japaneseCodePage, true));
    };
    constexpr std::uint8_t header[] = {4, 0, '3', 0, '3', 0, 0, 0},
                           wide[] = {6, 0, 0x8B, 0x95, 0x4F, 0x30, 0, 0};
    const auto has = [](const Bytes& sheet, std::span<const std::uint8_t> part) {
        return std::search(sheet.begin(), sheet.end(), part.begin(), part.end()) != sheet.end();
    };
    EXPECT_TRUE(has(written(true), header));
    EXPECT_TRUE(has(written(true), wide));
    // Nothing but the version says that texts are wide.
    MacroSpec early = macro;
    early.hasVersion = false;
    EXPECT_EQ(written(false), macroSheet(early, japaneseCodePage));
}

TEST(SampleMacroBytes, ColumnsAreShownWhenARowFillsThemOrWhenAsked) {
    const auto shown = [](const MacroSpec& macro) { return macroSheet(macro, japaneseCodePage).at(0); };
    EXPECT_EQ(shown({}), 0);
    EXPECT_EQ(shown({.rows = {{.name = u"a"}}}), 1);
    EXPECT_EQ(shown({.rows = {{.condition = u"a"}}}), 2);
    EXPECT_EQ(shown({.rows = {{.name = u"a", .condition = u"b"}}, .showsNames = false}), 2);
    EXPECT_EQ(shown({.showsNames = true, .showsConditions = true}), 3);
}

TEST_P(SampleMacros, AMacroWithoutRowsHasItsHeader) {
    const MacroSource source = described("macro A\nmacro B\n hidden\n no-version\n");
    EXPECT_TRUE(sheetOf(source, u"A").rows.empty());
    EXPECT_TRUE(sheetOf(source, u"A").version);
    EXPECT_FALSE(sheetOf(source, u"B").version);
    EXPECT_FALSE(source.find(u"A")->isHidden());
    EXPECT_TRUE(source.find(u"B")->isHidden());
}

TEST_P(SampleMacros, LongTextsAndTheWholeCodePageAreKept) {
    const Text longSql(30'000, u'表');
    DatabaseSpec spec;
    spec.macros = {{.name = Text(64, u'長'),
                    .macro = MacroSpec{.rows = {{.action = 35, .arguments = {longSql, u"-1"}},
                                                {.comment = u"ｱｲｳ ～－ ①Ⅳ㈱ 髙﨑 ソ表能"}}}}};
    const MacroSheet sheet = sheetOf(sourceOf(spec), Text(64, u'長'));
    EXPECT_EQ(sheet.rows.at(0).arguments[0], longSql);
    EXPECT_EQ(sheet.rows.at(1).comment, u"ｱｲｳ ～－ ①Ⅳ㈱ 髙﨑 ソ表能");
}

TEST(SampleMacroBytes, WhatASheetCannotHoldIsRefused) {
    const auto refuses = [](const MacroRowSpec& row) {
        EXPECT_THROW(macroSheet({.rows = {row}}, japaneseCodePage), std::invalid_argument);
    };
    refuses({.comment = Text(70'000, u'x')});
    refuses({.arguments = std::vector<Text>(11, u"x")});
    refuses({.comment = u"😀"});
}

TEST_P(SampleMacros, BytesLostAtTheEndAreDamageThatNamesTheMacro) {
    const MacroSource source = described("macro 壊れた\n comment 注\n lost 1\nmacro 良い\n comment 注\n");
    try {
        sheetOf(source, u"壊れた");
        ADD_FAILURE() << "was read";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3049);
        EXPECT_NE(error.description().find(u"マクロ \"壊れた\""), Text::npos);
    }
    EXPECT_EQ(sheetOf(source, u"良い").rows.size(), 1u);
}

TEST(MacroDescription, MistakesNameTheirLine) {
    const auto errorOf = [](std::string_view line) -> std::string {
        try {
            parseDescription("macro M\n" + std::string(line));
            return "no error";
        } catch (const std::invalid_argument& error) {
            return error.what();
        }
    };
    EXPECT_EQ(errorOf("action Dance"), "line 2: no action: Dance");
    EXPECT_EQ(errorOf("action Beep 1"), "line 2: not understood: 1");
    EXPECT_EQ(errorOf("comment a b"), "line 2: no part of a macro's row: b");
    EXPECT_EQ(errorOf("nonsense"), "line 2: not understood here: nonsense");
    EXPECT_EQ(errorOf("code"), "line 2: not understood here: code");
}

} // namespace
} // namespace relvane::samples
