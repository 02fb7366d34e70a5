// The macros of a real application against what an independent decoder read from it.

#include "inspect.h"

#include <fstream>
#include <iterator>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support/samples.h"

namespace relvane {
namespace {

using Json = nlohmann::json;

Json inspect(const std::filesystem::path& path) {
    std::ostringstream out;
    writeInspection(out, path.native());
    return Json::parse(out.str());
}

TEST(InspectMacros, EverySheetAgreesWithTheGolden) {
    const auto samples = test::realSamples();
    std::ifstream file;
    if (samples) {
        file.open(samples->parent_path() / "goldens" / "nwind-macros.json");
    }
    if (!file.is_open()) {
        return; // said so
    }
    const Json golden = Json::parse(file);
    const Json macros = inspect(*samples / "access97/nwind.mdb").at("macros");
    ASSERT_EQ(macros.size(), golden.size());
    for (std::size_t i = 0; i < golden.size(); ++i) {
        Json ours = macros[i].at("sheet");
        ours["name"] = macros[i].at("name");
        ours["hidden"] = macros[i].at("hidden");
        EXPECT_EQ(ours, golden[i]);
    }
}

// No-break blanks, which keep a remark whole for those who read the module, are blanks in the golden.
std::string withPlainBlanks(std::string line) {
    const std::string noBreak = "\u00A0";
    for (std::size_t at = 0; (at = line.find(noBreak, at)) != std::string::npos;) {
        line.replace(at, noBreak.size(), " ");
    }
    return line;
}

TEST(InspectMacros, EveryMacroConvertsToTheModuleOfTheGolden) {
    const auto samples = test::realSamples();
    std::ifstream golden;
    if (samples) {
        golden.open(samples->parent_path() / "goldens" / "nwind-macros-converted.txt");
    }
    if (!golden.is_open()) {
        return; // said so
    }
    const Json ours = inspect(*samples / "access97/nwind.mdb");
    std::ostringstream written;
    for (const Json& macro : ours.at("macros")) {
        written << "##### Converted Macro- " << macro.at("name").get<std::string>() << '\n';
        for (const Json& line : macro.at("converted")) {
            written << withPlainBlanks(line.get<std::string>()) << '\n';
        }
    }
    EXPECT_EQ(written.str(), std::string((std::istreambuf_iterator<char>(golden)), {}));
}

TEST(InspectMacros, EveryMacroOfTheOwnSampleConverts) {
    const Json ours = inspect(test::ownSample("juchu.mdb"));
    ASSERT_FALSE(ours.at("macros").empty());
    for (const Json& macro : ours.at("macros")) {
        SCOPED_TRACE(macro.at("name").get<std::string>());
        ASSERT_TRUE(macro.at("converted").is_array());
        EXPECT_EQ(macro.at("converted").at(0), "Option Compare Database");
    }
}

TEST(InspectMacros, ThoseOfANewerFileArePrintedLikeOthers) {
    if (const auto path = test::realSample("later/formPropTest.accdb")) {
        const Json macros = inspect(*path).at("macros");
        ASSERT_EQ(macros.size(), 1u);
        EXPECT_EQ(macros.at(0).at("sheet").at("version"), Json({2, 3}));
        EXPECT_EQ(macros.at(0).at("sheet").at("rows").at(4).at("condition"), "[MacroError]<>0");
        EXPECT_FALSE(macros.at(0).at("converted").empty());
    }
}

} // namespace
} // namespace relvane
