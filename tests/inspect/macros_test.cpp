// The macros of a real application against what an independent decoder read from it.

#include "inspect.h"

#include <fstream>
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

TEST(InspectMacros, AFileNewerThanAccess97HasNull) {
    if (const auto path = test::realSample("later/northwind-2000-ja.mdb")) {
        EXPECT_TRUE(inspect(*path).at("macros").is_null());
    }
}

} // namespace
} // namespace relvane
