// The forms and reports of a real application against what an independent decoder read from it.

#include "inspect.h"

#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "access/design_properties.h"
#include "sha1.h"
#include "support/samples.h"

namespace relvane {
namespace {

using Json = nlohmann::json;

struct Counts {
    std::size_t values = 0, effective = 0, controls = 0, sections = 0;
};

class DesignComparison {
public:
    Counts counts;

    void compare(const Json& ours, const Json& golden) {
        const Json& design = ours.at("design");
        ASSERT_FALSE(design.contains("error")) << design;
        const auto type = golden.at("kind") == "Form" ? access::DesignType::Form : access::DesignType::Report;
        EXPECT_EQ(design.at("place"), golden.at("container"));
        EXPECT_EQ(ours.at("hasModule"), golden.at("container") == "MSysModules2.Form");
        EXPECT_EQ(design.at("version"), golden.at("version"));
        EXPECT_EQ(design.at("bytes"), golden.at("bytes"));
        compareValues(design, golden, type);

        const Json& blocks = golden.at("defaultControls");
        EXPECT_EQ(design.at("defaultControls").size(), blocks.size());
        for (const auto& [name, properties] : blocks.items()) {
            SCOPED_TRACE("default " + name);
            compareStored(design.at("defaultControls").at(name).at("properties"), properties);
        }
        pairs(design.at("groupLevels"), golden.at("groupLevels"),
              [&](const Json& a, const Json& b) { compareValues(a, b, access::DesignType::BreakLevel); });
        pairs(design.at("sections"), golden.at("sections"), [&](const Json& a, const Json& b) {
            ++counts.sections;
            EXPECT_EQ(a.at("type"), b.at("type"));
            EXPECT_EQ(a.at("name"), b.at("name"));
            EXPECT_EQ(a.at("sectionIndex"), b.at("sectionIndex"));
            compareStored(a.at("properties"), b.at("properties"));
            compareControls(a.at("controls"), b.at("controls"));
        });

        EXPECT_TRUE(design.at("unknown").empty());
        EXPECT_TRUE(design.at("others").empty());
        EXPECT_EQ(ours.at("typeInfo").at("agrees"), golden.at("typeInfoAgrees"));
        pairs(ours.at("typeInfo").at("entries"), golden.at("typeInfo"), [](const Json& a, const Json& b) {
            EXPECT_EQ(a.at("type"), b.at("type"));
            EXPECT_EQ(a.at("class"), b.at("cls"));
            EXPECT_EQ(a.at("index"), b.at("index"));
            EXPECT_EQ(a.at("prefix"), b.at("procName"));
            EXPECT_EQ(a.at("name"), b.at("name"));
        });
    }

private:
    template <class Compare>
    static void pairs(const Json& ours, const Json& golden, Compare compare) {
        ASSERT_EQ(ours.size(), golden.size());
        for (std::size_t i = 0; i < golden.size(); ++i) {
            SCOPED_TRACE("element " + std::to_string(i));
            compare(ours[i], golden[i]);
        }
    }

    void compareControls(const Json& ours, const Json& golden) {
        pairs(ours, golden, [&](const Json& a, const Json& b) {
            ++counts.controls;
            SCOPED_TRACE(b.at("name").get<std::string>());
            EXPECT_EQ(a.at("name"), b.at("name"));
            EXPECT_EQ(a.at("type"), b.at("type"));
            EXPECT_EQ(a.at("typeCode"), b.at("typeCode"));
            EXPECT_EQ(a.at("controlType"), b.at("controlType"));
            compareValues(a, b, static_cast<access::DesignType>(b.at("typeCode").get<int>()));
            compareControls(a.at("children"), b.value("children", Json::array()));
        });
    }

    // The decoder's list of effective values names properties that some types do not have: these are not compared.
    void compareValues(const Json& ours, const Json& golden, access::DesignType type) {
        compareStored(ours.at("properties"), golden.at("properties"));
        for (const auto& [name, value] : golden.at("effective").items()) {
            const access::PropertyFact* fact = access::findProperty(type, fromUtf8(name));
            if (fact == nullptr || fact->id == access::noPlace) {
                EXPECT_FALSE(ours.at("effective").contains(name)) << name;
                continue;
            }
            if (type == access::DesignType::Chart && name == "ColumnCount") {
                // The decoder took the built-in value of lists for charts too, where it is not known.
                EXPECT_TRUE(ours.at("effective").at(name).is_null());
            } else if (name != "Name") {
                ++counts.effective;
                EXPECT_EQ(ours.at("effective").at(name), value) << name;
            }
        }
    }

    void compareStored(const Json& ours, const Json& golden) {
        pairs(ours, golden, [&](const Json& a, const Json& b) {
            ++counts.values;
            EXPECT_EQ(a.at("id"), b.at("id"));
            EXPECT_EQ(a.at("name"), b.at("name"));
            EXPECT_EQ(a.at("confidence"), b.at("confidence"));
            if (b.contains("om")) {
                EXPECT_EQ(a.at("modelName"), b.at("om"));
            }
            compareValue(a, b);
        });
    }

    // Of a metafile the decoder kept its first bytes and no more.
    static void comparePicture(const Json& ours, const Json& golden, const std::string& hex) {
        if (golden.at("format") == "DIB") {
            EXPECT_EQ(ours, golden);
        } else {
            EXPECT_EQ(ours.at("format"), "EMF");
            EXPECT_TRUE(hex.starts_with(golden.at("header").get<std::string>()));
        }
    }

    static void compareValue(const Json& ours, const Json& golden) {
        const Json& value = ours.at("value");
        if (golden.contains("notDefault")) {
            EXPECT_TRUE(value.is_boolean()) << ours;
        } else if (!golden.at("value").is_object()) {
            EXPECT_EQ(value, golden.at("value")) << ours;
        } else if (const Json& facts = golden.at("value"); facts.contains("date")) {
            const auto date = DateTime::fromOleDate(facts.at("date").get<double>());
            EXPECT_EQ(value, toUtf8(date.value().text()));
        } else {
            const std::string hex = value.get<std::string>();
            EXPECT_EQ(hex.size(), 2 * facts.at("bytes").get<std::size_t>());
            if (facts.contains("hex")) {
                EXPECT_EQ(hex, facts.at("hex"));
            } else {
                std::vector<std::uint8_t> bytes;
                for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
                    bytes.push_back(static_cast<std::uint8_t>(std::stoi(hex.substr(i, 2), nullptr, 16)));
                }
                EXPECT_EQ(test::sha1(std::move(bytes)), facts.at("sha1"));
            }
            if (facts.contains("picture")) {
                comparePicture(ours.at("picture"), facts.at("picture"), hex);
            }
        }
    }
};

TEST(Designs, TheInspectionOfARealApplicationAgreesWithItsDecodedDesigns) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    std::ifstream file(samples->parent_path() / "goldens" / "nwind-designs.json");
    if (!file) {
        std::cout << "No folder of decoded samples beside the real files: nothing to compare with.\n";
        return;
    }
    const Json golden = Json::parse(file);
    std::ostringstream out;
    writeInspection(out, (*samples / "access97/nwind.mdb").native());
    const Json ours = Json::parse(out.str());
    ASSERT_EQ(ours.at("forms").size(), 21u);
    ASSERT_EQ(ours.at("reports").size(), 13u);

    DesignComparison comparison;
    std::size_t forms = 0;
    std::size_t reports = 0;
    for (const Json& object : golden.at("objects")) {
        const Json& list = ours.at(object.at("kind") == "Form" ? "forms" : "reports");
        const Json& document = list.at(object.at("kind") == "Form" ? forms++ : reports++);
        SCOPED_TRACE(object.at("name").get<std::string>());
        ASSERT_EQ(document.at("name"), object.at("name"));
        comparison.compare(document, object);
    }
    EXPECT_EQ(forms, 21u);
    EXPECT_EQ(reports, 13u);
    std::cout << comparison.counts.sections << " sections, " << comparison.counts.controls << " controls, "
              << comparison.counts.values << " stored values, " << comparison.counts.effective
              << " effective values compared\n";
}

// Of each type the number of properties that its lists have.
void expectPositions(const Json& controls, bool isForm) {
    const std::map<std::string, std::set<std::size_t>> sizes = {{"CommandButton", {50}},
                                                                {"ToggleButton", {55, 52, 40}},
                                                                {"CheckBox", {48, 45, 33}},
                                                                {"OptionButton", {48, 45, 33}},
                                                                {"ComboBox", {82, 79}},
                                                                {"ListBox", {67, 64}},
                                                                {"TextBox", {78, 75}},
                                                                {"OptionGroup", {44, 41}},
                                                                {"BoundObjectFrame", {61, 58}},
                                                                {"Subform", {30}},
                                                                {"Image", {34}}};
    for (const Json& control : controls) {
        SCOPED_TRACE(control.at("name").get<std::string>());
        const Json& places = control.at("byPosition");
        if (const auto size = sizes.find(control.at("type").get<std::string>()); size != sizes.end()) {
            EXPECT_TRUE(size->second.contains(places.size())) << places.size();
            EXPECT_TRUE(isForm || size->second.size() == 1 || places.size() != *size->second.rbegin());
        }
        if (control.at("isInOptionGroup").get<bool>()) {
            const std::size_t position = control.at("type") == "ToggleButton" ? 7 : 3;
            EXPECT_EQ(places.at(position).at("name"), "OptionValue");
        } else {
            EXPECT_EQ(places.at(1).at("name"), "Name");
            EXPECT_EQ(places.at(1).at("value"), control.at("name"));
        }
        expectPositions(control.at("children"), isForm);
    }
}

TEST(Designs, FormsReportsAndControlsShowTheirPropertiesByPosition) {
    const auto path = test::realSample("access97/nwind.mdb");
    if (!path) {
        return;
    }
    std::ostringstream out;
    writeInspection(out, path->native());
    const Json ours = Json::parse(out.str());
    for (const bool isForm : {true, false}) {
        for (const Json& document : ours.at(isForm ? "forms" : "reports")) {
            SCOPED_TRACE(document.at("name").get<std::string>());
            const Json& design = document.at("design");
            EXPECT_EQ(design.at("byPosition").size(), isForm ? 107u : 48u);
            EXPECT_EQ(design.at("byPosition").at(0).at("name"), "RecordSource");
            for (const Json& section : design.at("sections")) {
                expectPositions(section.at("controls"), isForm);
            }
        }
    }
}

TEST(Designs, OfNewerFilesArePrintedLikeOthers) {
    for (const char* name : {"later/northwind-2000-ja.mdb", "later/formPropTest.accdb"}) {
        const auto path = test::realSample(name);
        if (!path) {
            return;
        }
        std::ostringstream out;
        writeInspection(out, path->native());
        const Json ours = Json::parse(out.str());
        EXPECT_TRUE(ours.at("problems").empty());
        for (const char* kind : {"forms", "reports"}) {
            for (const Json& document : ours.at(kind)) {
                SCOPED_TRACE(document.at("name").get<std::string>());
                const Json& design = document.at("design");
                EXPECT_TRUE(design.at("unknown").empty());
                const Json& positions = design.at("byPosition");
                const std::size_t count = kind == std::string("forms") ? 107 : 48;
                ASSERT_GT(positions.size(), count); // later properties stand behind
                EXPECT_EQ(positions.at(0).at("name"), "RecordSource");
            }
        }
    }
}

} // namespace
} // namespace relvane
