// The modules of a real application against what an independent decoder read from it.

#include "inspect.h"

#include <fstream>
#include <map>
#include <set>
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

std::string rowName(const Json& module) {
    const std::string owner = module.at("owner"), name = module.at("name");
    return owner == "form" ? "Form_" + name : owner == "report" ? "Report_" + name : name;
}

// The rows of the golden by module, as they are but for the digests.
std::map<std::string, std::string> expectedRows(std::istream& golden) {
    std::map<std::string, std::string> rows;
    for (std::string line; std::getline(golden, line);) {
        if (line.starts_with("M\t") || line.starts_with("P\t")) {
            const std::string name = line.substr(2, line.find('\t', 2) - 2);
            rows[name] += line.substr(0, line.starts_with("M") ? line.rfind('\t') : line.npos) + "\n";
        }
    }
    return rows;
}

TEST(InspectModules, EveryModuleAgreesWithTheGolden) {
    const auto samples = test::realSamples();
    std::ifstream golden;
    if (samples) {
        golden.open(samples->parent_path() / "goldens" / "nwind-modules.tsv");
    }
    if (!golden.is_open()) {
        return; // said so
    }
    const Json ours = inspect(*samples / "access97/nwind.mdb");
    std::map<std::string, std::string> rows;
    std::size_t lines = 0;
    for (const Json& module : ours.at("modules")) {
        const Json& source = module.at("source");
        const std::string name = rowName(module);
        std::ostringstream out;
        out << "M\t" << name << '\t' << module.at("owner").get<std::string>() << '\t' << source.at("type")
            << '\t' << source.at("countOfLines") << '\t' << source.at("countOfDeclarationLines") << '\n';
        for (const Json& procedure : source.at("procedures")) {
            out << "P\t" << name << '\t' << procedure.at("name").get<std::string>() << '\t'
                << procedure.at("kind") << '\t' << procedure.at("startLine") << '\t'
                << procedure.at("bodyLine") << '\t' << procedure.at("countLines") << '\n';
        }
        rows[name] = out.str();
        EXPECT_EQ(source.at("lines").size(), source.at("countOfLines").get<std::size_t>());
        EXPECT_TRUE(source.at("lines").at(0).get<std::string>().starts_with("Option Compare Database"));
        lines += source.at("lines").size();
    }
    EXPECT_EQ(rows, expectedRows(golden));
    EXPECT_EQ(lines, 923u);
}

TEST(InspectModules, EveryModuleOfTheOwnSampleHasItsLines) {
    const Json ours = inspect(test::ownSample("juchu.mdb"));
    std::set<std::string> owners, types;
    for (const Json& module : ours.at("modules")) {
        SCOPED_TRACE(rowName(module));
        const Json& source = module.at("source");
        ASSERT_TRUE(source.contains("lines"));
        std::size_t owned = source.at("countOfDeclarationLines");
        for (const Json& procedure : source.at("procedures")) {
            owned += procedure.at("countLines").get<std::size_t>();
        }
        EXPECT_EQ(source.at("lines").size(), owned);
        owners.insert(module.at("owner"));
        types.insert(source.at("type").dump());
    }
    EXPECT_EQ(owners, (std::set<std::string>{"form", "report", "module"}));
    EXPECT_EQ(types, (std::set<std::string>{"0", "1"}));
}

TEST(InspectModules, AFileNewerThanAccess97HasItsModulesToo) {
    const auto path = test::realSample("later/vbaV2007.accdb");
    if (!path) {
        return;
    }
    const Json ours = inspect(*path);
    std::map<std::string, std::string> types;
    for (const Json& module : ours.at("modules")) {
        const Json& source = module.at("source");
        types[rowName(module)] = source.at("type").dump();
        EXPECT_EQ(source.at("lines").size(), source.at("countOfLines").get<std::size_t>());
        EXPECT_FALSE(source.at("lines").empty());
    }
    EXPECT_EQ(types,
              (std::map<std::string, std::string>{{"Form_Form1", "1"}, {"Module1", "0"}, {"Class1", "1"}}));
}

} // namespace
} // namespace relvane
