// Macros in real files: every sheet of every Access 97 file is read to its last byte, those of a known one agree with
// what an independent decoder read.

#include <algorithm>
#include <fstream>
#include <map>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "access/macro_source.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

using Json = nlohmann::json;
using namespace std::string_view_literals;

std::shared_ptr<const jet::JetFile> open(const std::filesystem::path& path) {
    return jet::openJetFile(path.native(), {});
}

TEST(MacroFiles, EverySheetOfEveryAccess97FileIsReadToItsLastByte) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    std::map<std::string, std::size_t> macros;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(*samples)) {
        const std::string folder = entry.path().parent_path().filename();
        if (entry.path().extension() != ".mdb" || (folder != "access97" && folder != "odd")) {
            continue;
        }
        std::shared_ptr<const jet::JetFile> file;
        if (skipErrors([&] { file = open(entry.path()); }) != 0) {
            continue; // no database, or one with a password
        }
        const MacroSource source(file);
        for (const MacroDocument& macro : source.macros()) {
            SCOPED_TRACE(entry.path().filename().string() + " " + toUtf8(macro.title()));
            MacroSheet sheet;
            ASSERT_NO_THROW(sheet = source.sheet(macro));
            EXPECT_FALSE(sheet.rows.empty());
            for (const MacroRow& row : sheet.rows) {
                EXPECT_EQ(row.hasAction(), row.action() != nullptr) << row.actionNumber;
                EXPECT_EQ(row.reserved, u"");
            }
            ++macros[entry.path().filename()];
        }
    }
    const std::map<std::string, std::size_t> expected = {{"nwind.mdb", 7}};
    EXPECT_EQ(macros, expected);
}

void expectText(TextView text, const Json& golden) {
    EXPECT_EQ(toUtf8(text), golden.is_null() ? "" : golden.get<std::string>());
}

void expectRow(const MacroRow& row, const Json& golden) {
    EXPECT_EQ(row.number, golden.at("row").get<int>());
    expectText(row.name, golden.at("name"));
    expectText(row.condition, golden.at("condition"));
    expectText(row.comment, golden.at("comment"));
    EXPECT_EQ(row.actionNumber, golden.at("actionNo").get<int>());
    expectText(row.hasAction() ? row.action()->name : TextView(), golden.at("action"));
    const auto facts = row.hasAction() ? row.action()->arguments : std::span<const MacroArgument>();
    EXPECT_EQ(facts.size(), golden.at("args").size());
    for (std::size_t i = 0; i < row.arguments.size(); ++i) {
        if (i < facts.size()) {
            expectText(row.arguments[i], golden.at("args").at(toUtf8(facts[i].name)));
        } else {
            EXPECT_EQ(row.arguments[i], u"");
        }
    }
}

TEST(MacroFiles, TheMacrosAgreeWithWhatAnotherDecoderRead) {
    const auto samples = test::realSamples();
    std::ifstream file;
    if (samples) {
        file.open(samples->parent_path() / "goldens" / "nwind-macros.json");
    }
    if (!file.is_open()) {
        return; // said so
    }
    const Json golden = Json::parse(file);
    const MacroSource source(open(*samples / "access97/nwind.mdb"));
    ASSERT_EQ(source.macros().size(), golden.size());
    std::size_t rows = 0;
    for (std::size_t i = 0; i < golden.size(); ++i) {
        const MacroDocument& macro = source.macros()[i];
        SCOPED_TRACE(toUtf8(macro.title()));
        expectText(macro.name, golden[i].at("name"));
        EXPECT_EQ(macro.isHidden(), golden[i].at("hidden").get<bool>());
        EXPECT_EQ(source.stream(macro).size(), golden[i].at("bytes").get<std::size_t>());
        const MacroSheet sheet = source.sheet(macro);
        EXPECT_EQ(sheet.showsNames(), golden[i].at("showNames").get<bool>());
        EXPECT_EQ(sheet.showsConditions(), golden[i].at("showConditions").get<bool>());
        const Json version = sheet.version ? Json{sheet.version->first, sheet.version->second} : Json();
        EXPECT_EQ(version, golden[i].at("version"));
        ASSERT_EQ(sheet.rows.size(), golden[i].at("rows").size());
        for (std::size_t row = 0; row < sheet.rows.size(); ++row) {
            SCOPED_TRACE(row);
            expectRow(sheet.rows[row], golden[i].at("rows")[row]);
            ++rows;
        }
    }
    EXPECT_EQ(rows, 114u);
}

TEST(MacroFiles, AMacroIsFoundWithoutRegardToCase) {
    const auto path = test::realSample("access97/nwind.mdb");
    if (!path) {
        return;
    }
    const MacroSource source(open(*path));
    ASSERT_NE(source.find(u"SAMPLE autokeys"), nullptr);
    EXPECT_EQ(source.find(u"SAMPLE autokeys")->name, u"Sample Autokeys");
    EXPECT_EQ(source.find(u"Autokeys"), nullptr);
}

TEST(MacroFiles, EverySheetOfEveryNewerFileIsReadToItsLastByte) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    std::map<std::string, std::size_t> macros, rows;
    for (const auto& entry : std::filesystem::directory_iterator(*samples / "later")) {
        const MacroSource source(open(entry.path()));
        for (const MacroDocument& macro : source.macros()) {
            SCOPED_TRACE(entry.path().filename().string() + " " + toUtf8(macro.title()));
            MacroSheet sheet;
            ASSERT_NO_THROW(sheet = source.sheet(macro));
            ++macros[entry.path().filename()];
            rows[entry.path().filename()] += sheet.rows.size();
            for (const MacroRow& row : sheet.rows) {
                EXPECT_FALSE(row.comment.starts_with(u"_AXL:"));
                EXPECT_EQ(row.hasAction(), row.action() != nullptr) << row.actionNumber;
            }
        }
    }
    const std::map<std::string, std::size_t> expected = {{"northwind-2000-ja.mdb", 5},
                                                         {"formPropTest.accdb", 1}};
    EXPECT_EQ(macros, expected);
    EXPECT_EQ(rows["formPropTest.accdb"], 5u);
}

// The XML beside the rows of this macro names its actions: OnError, GoToControl, ClearMacroError ...
TEST(MacroFiles, ActionsOfLaterVersionsHaveTheNamesThatTheXmlGivesThem) {
    const auto path = test::realSample("later/formPropTest.accdb");
    if (!path) {
        return;
    }
    const MacroSource source(open(*path));
    const MacroSheet sheet = source.sheet(source.macros().front());
    std::vector<Text> names;
    for (const MacroRow& row : sheet.rows) {
        names.emplace_back(row.hasAction() ? row.action()->name : TextView());
    }
    const std::vector<Text> expected = {u"OnError", u"GoToControl", u"ClearMacroError", u"RunCommand",
                                        u"MsgBox"};
    EXPECT_EQ(names, expected);
}

// Access 2000 keeps a macro as it was until somebody saves it: four are of Access 97, one has texts in UTF-16.
TEST(MacroFiles, BothFormsOfTextsAreRead) {
    const auto path = test::realSample("later/northwind-2000-ja.mdb");
    if (!path) {
        return;
    }
    const MacroSource source(open(*path));
    const auto sheet = [&](TextView name) { return source.sheet(*source.find(name)); };
    const MacroSheet old = sheet(u"autokeys サンプル"), saved = sheet(u"得意先電話リスト");
    EXPECT_EQ(old.version->second, 2);
    EXPECT_EQ(old.rows.at(0).comment, u"データベースを開くと、自動的にキーの割り当てを行います。");
    EXPECT_EQ(saved.version->second, 3);
    const auto filter = std::ranges::find(saved.rows, 3, &MacroRow::actionNumber);
    ASSERT_NE(filter, saved.rows.end());
    EXPECT_FALSE(filter->name.empty());
    EXPECT_FALSE(filter->arguments[1].empty());
}

// One byte of a sheet changed in a copy of the file: the macro is reported with the place, the others are read. A newer
// Access has put a second copy of the sheets into the file, so the byte is changed wherever it stands.
TEST(MacroFiles, ADamagedSheetIsNamedWithItsPlaceAndTheOthersAreRead) {
    const auto path = test::realSample("access97/nwind.mdb");
    if (!path) {
        return;
    }
    std::ifstream original(*path, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(original)), {});
    // The length of the text, 61, and the text; its high byte becomes 1.
    constexpr auto text = "=\0Runs automatically"sv;
    for (std::size_t at = 0; (at = bytes.find(text, at)) != std::string::npos; ++at) {
        bytes[at + 1] = 1;
    }
    const test::TemporaryFolder folder;
    std::ofstream(folder / "damaged.mdb", std::ios::binary) << bytes;
    const MacroSource source(open(folder / "damaged.mdb"));
    ASSERT_EQ(source.macros().size(), 7u);
    std::size_t read = 0;
    for (const MacroDocument& macro : source.macros()) {
        try {
            source.sheet(macro);
            ++read;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number(), 3049);
            EXPECT_EQ(macro.name, u"Sample Autokeys");
            EXPECT_NE(error.description().find(u"マクロ \"Sample Autokeys\" のシートの 131 バイト目"),
                      Text::npos)
                << error.what();
        }
    }
    EXPECT_EQ(read, 6u);
}

} // namespace
} // namespace relvane::access
