// Open forms and reports of a real application against what an independent decoder read from it.
#include <fstream>
#include <iostream>
#include <optional>
#include <set>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "access/design_model.h"
#include "access/design_source.h"
#include "access/module_model.h"
#include "jet/jet_file.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

using Json = nlohmann::json;

Value number(std::int64_t value) {
    return value;
}

Value text(TextView value) {
    return Text(value);
}

// An empty one for each object that has code.
ModuleLoader moduleOf(const DesignDocument& document) {
    return document.hasModule ? [] { return openModule({}); } : ModuleLoader();
}

class Northwind : public ::testing::Test {
protected:
    void SetUp() override {
        const auto samples = test::realSamples();
        std::ifstream file;
        if (samples) {
            file.open(samples->parent_path() / "goldens" / "nwind-designs.json");
        }
        if (!file.is_open()) {
            std::cout << "No decoded sample to compare with.\n";
            return;
        }
        golden = Json::parse(file);
        source.emplace(jet::openJetFile((*samples / "access97/nwind.mdb").native(), {}));
    }

    std::shared_ptr<Form> form(const DesignDocument& document) const {
        return openForm(source->design(document), document.name, moduleOf(document));
    }
    std::shared_ptr<Report> report(const DesignDocument& document) const {
        return openReport(source->design(document), document.name, moduleOf(document));
    }

    Json golden;
    std::optional<DesignSource> source;
};

bool isEventName(const std::string& name) {
    return (name.starts_with("On") && name.size() > 2) || name.starts_with("Before") ||
           name.starts_with("After");
}

struct Span {
    int first, last;
};

// Where the analyses look, by the type and the number of properties.
std::optional<Span> eventsOf(const std::string& type, int count) {
    if (type == "CommandButton") {
        return Span{38, 49};
    }
    if (type == "ToggleButton") {
        return count > 52 ? Span{41, 54} : count > 41 ? Span{38, 51} : Span{32, 39};
    }
    if (type == "CheckBox" || type == "OptionButton") {
        return count > 45 ? Span{34, 47} : count > 33 ? Span{31, 44} : Span{25, 32};
    }
    if (type == "ComboBox") {
        return count > 79 ? Span{66, 81} : Span{63, 78};
    }
    if (type == "ListBox") {
        return count > 64 ? Span{53, 66} : Span{50, 63};
    }
    if (type == "TextBox") {
        return count > 75 ? Span{63, 77} : Span{60, 74};
    }
    if (type == "OptionGroup") {
        return count > 41 ? Span{35, 43} : Span{32, 40};
    }
    if (type == "BoundObjectFrame") {
        return count > 58 ? Span{46, 60} : Span{43, 57};
    }
    if (type == "Subform") {
        return Span{28, 29};
    }
    if (type == "Image") {
        return Span{29, 33};
    }
    return std::nullopt;
}

// Each event that the golden object stores stands under its name in the range. Counts those found.
int expectEvents(const Object& object, const Json& golden, Span range,
                 const std::set<std::string>& outOfReach = {}) {
    int found = 0;
    for (const Json& property : golden.at("properties")) {
        const std::string name = property.at("name");
        if (!isEventName(name) || outOfReach.contains(name)) {
            continue;
        }
        int places = 0;
        for (int i = range.first; i <= range.last; ++i) {
            const Property place = object.Properties().Item(i);
            if (toUtf8(place.Name) == name) {
                ++places;
                EXPECT_EQ(toUtf8(toText(place.Value)), property.at("value").get<std::string>());
            }
        }
        EXPECT_EQ(places, 1) << name;
        found += places;
    }
    return found;
}

int expectEventsOfControls(const Json& controls, const Designed& design, int& position) {
    int found = 0;
    for (const Json& golden : controls) {
        const Control& control = design.Controls().Item(position++);
        SCOPED_TRACE(golden.at("name").get<std::string>());
        EXPECT_EQ(toUtf8(control.Name()), golden.at("name").get<std::string>());
        EXPECT_EQ(control.ControlType(), golden.at("controlType").get<int>());
        const auto type = static_cast<DesignType>(golden.at("typeCode").get<int>());
        for (const auto& [name, value] : golden.at("effective").items()) {
            const PropertyFact* fact = findProperty(type, fromUtf8(name));
            if (fact == nullptr || fact->since > design_format::access97.version || // the same list for all
                (type == DesignType::Page && value == "") ||                        // shows its name
                (type == DesignType::Chart && name == "ColumnCount")) {             // not known here
                continue;
            }
            const Value ours = control(fromUtf8(name));
            if (value.is_string()) {
                EXPECT_EQ(ours, text(fromUtf8(value.get<std::string>()))) << name;
            } else if (value.is_boolean()) {
                EXPECT_EQ(ours, Value(value.get<bool>())) << name;
            } else if (value.is_number_integer()) {
                EXPECT_EQ(ours, number(value.get<std::int64_t>())) << name;
            }
        }
        if (const auto range = eventsOf(golden.at("type").get<std::string>(), control.Properties().Count())) {
            found += expectEvents(control, golden, *range);
        }
        if (golden.contains("children")) {
            found += expectEventsOfControls(golden.at("children"), design, position);
        }
    }
    return found;
}

TEST_F(Northwind, EveryStoredEventStandsInTheRangeOfItsObject) {
    if (!source) {
        return; // said so
    }
    int ofForms = 0;
    int ofReports = 0;
    int ofControls = 0;
    for (const Json& object : golden.at("objects")) {
        const bool isForm = object.at("kind") == "Form";
        const Text name = fromUtf8(object.at("name").get<std::string>());
        SCOPED_TRACE(object.at("name").get<std::string>());
        const DesignDocument* document =
            source->find(isForm ? DesignKind::Form : DesignKind::Report, upperCase(name));
        ASSERT_NE(document, nullptr);
        const std::shared_ptr<Designed> design =
            isForm ? std::shared_ptr<Designed>(form(*document)) : report(*document);
        EXPECT_EQ(design->Name(), name);
        if (isForm) {
            ofForms += expectEvents(*design, object, {76, 102}, {"OnFilter", "OnApplyFilter", "OnTimer"});
        } else {
            ofReports += expectEvents(*design, object, {41, 47});
        }
        int position = 0;
        for (const Json& section : object.at("sections")) {
            ofControls += expectEventsOfControls(section.at("controls"), *design, position);
        }
        EXPECT_EQ(position, design->Controls().Count());
    }
    // As many as the decoded designs have in reach of the analyses.
    EXPECT_EQ(ofForms, 12);
    EXPECT_EQ(ofReports, 4);
    EXPECT_EQ(ofControls, 32);
}

TEST_F(Northwind, TheGroupLevelsOfAReportAreThoseOfItsDesign) {
    if (!source) {
        return; // said so
    }
    int levels = 0;
    for (const Json& object : golden.at("objects")) {
        if (object.at("kind") != "Report") {
            continue;
        }
        SCOPED_TRACE(object.at("name").get<std::string>());
        const auto opened =
            report(*source->find(DesignKind::Report, fromUtf8(object.at("name").get<std::string>())));
        const Json& goldenLevels = object.at("groupLevels");
        const auto count = static_cast<int>(goldenLevels.size());
        for (int i = 0; i < count; ++i) {
            const Object& level = opened->GroupLevel(i);
            const Json& values = goldenLevels.at(static_cast<std::size_t>(i)).at("effective");
            EXPECT_EQ(toUtf8(toText(level(u"ControlSource"))), values.at("ControlSource").get<std::string>());
            for (const char* name : {"SortOrder", "GroupHeader", "GroupFooter"}) {
                EXPECT_EQ(level(fromUtf8(name)), Value(values.at(name).get<bool>())) << name;
            }
            for (const char* name : {"GroupOn", "GroupInterval", "KeepTogether"}) {
                EXPECT_EQ(level(fromUtf8(name)), number(values.at(name).get<std::int64_t>())) << name;
            }
            ++levels;
        }
        EXPECT_EQ(skipErrors([&] { opened->GroupLevel(count); }), 2464);
        EXPECT_EQ(skipErrors([&] { opened->GroupLevel(-1); }), 2464);
    }
    EXPECT_EQ(levels, 26);
}

} // namespace
} // namespace relvane::access
