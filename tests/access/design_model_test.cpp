// Open forms and reports: what their properties answer by name and by position.
#include "access/design_model.h"

#include <fstream>
#include <optional>
#include <set>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "access/design_source.h"
#include "design_bytes_builder.h"
#include "jet/jet_file.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

using test::form97;
using test::header97;
using test::StreamBytes;
using Json = nlohmann::json;

Value number(std::int64_t value) {
    return value;
}
Value text(TextView value) {
    return Text(value);
}
const Value none = Text();

std::shared_ptr<const Design> designOf(const StreamBytes& stream) {
    return std::make_shared<const Design>(readDesignStream(stream.bytes(), u"試験"), japaneseCodePage);
}

// A form with a control of each sort that a rule of the model is about; controls are named by one letter.
std::shared_ptr<Form> sampleForm() {
    StreamBytes bytes = form97();
    bytes.hex("16 1b 63 10 27").property(0xdd, "Title").property(0xe3, "Open.It").hex("ff 02 00");
    bytes.hex("99 00 60 64 00 fe 6d 00").property(0xdc, "H").hex("fd");
    bytes.hex("98 00 60 64 00 ff 0a 00");
    bytes.hex("6d 00 65 2c 01").property(0xdc, "T").property(0xdd, "Src").property(0xe2, "=Check()");
    bytes.hex("fd");
    bytes.hex("6b 00").property(0xdc, "G").property(0xef, "Grp.Click").hex("ff 04 00");
    bytes.hex("64 00").property(0xdc, "l").hex("fd");
    bytes.hex("6a 00 9c 07 00 00 00").property(0xdc, "c").property(0xed, "Got.It").hex("fd");
    bytes.hex("69 00").property(0xdc, "o").hex("fd");
    bytes.hex("7a 00 9c 03 00 00 00").property(0xdc, "t").property(0xf3, "pal").hex("fd");
    bytes.hex("6a 00").property(0xdc, "C").property(0xe1, "Upd.It").hex("fd");
    bytes.hex("6c 00").property(0xdc, "F").hex("fd");
    bytes.hex("76 00 61 e8 03").property(0xdc, "B").hex("fd");
    bytes.hex("75 00").property(0xdc, "U").hex("fd");
    bytes.hex("64 00").property(0xdc, "L").hex("fd");
    bytes.hex("7b 00").property(0xdc, "A").hex("ff 02 00");
    bytes.hex("7c 00").property(0xdc, "P").hex("fd");
    bytes.hex("7c 00").property(0xdc, "Q").property(0xe8, "Second").hex("fd");
    bytes.hex("68 00 68 bc 02").property(0xdc, "K").property(0xef, "K_1").hex("fd");
    bytes.hex("77 00").property(0xdc, "X").hex("fd");
    return openForm(designOf(bytes), u"Sample", true);
}

Control& control(const Designed& design, TextView name) {
    for (const auto& item : design.Controls()) {
        if (item->Name() == name) {
            return *item;
        }
    }
    throw RunTimeError(ErrorNumber::ItemNotInCollection, name);
}

int countOf(const Object& object) {
    return object.Properties().Count();
}

TEST(DesignModel, ControlsAreInStoredOrderEachBeforeWhatItHolds) {
    const auto form = sampleForm();
    Text names;
    for (int i = 0; i < form->Controls().Count(); ++i) {
        names += form->Controls().Item(i).Name();
    }
    EXPECT_EQ(names, u"HTGlcotCFBLAPQKX"); // one is of an unknown type, and so is the place of its name
    EXPECT_EQ((*form)(u"Count"), number(17));
}

TEST(DesignModel, AFormAnswersByNameWithoutRegardToCase) {
    const auto form = sampleForm();
    EXPECT_EQ((*form)(u"CAPTION"), text(u"Title"));
    EXPECT_EQ((*form)(u"recordsource"), none);
    EXPECT_EQ((*form)(u"DataEntry"), Value(true));
    EXPECT_EQ((*form)(u"KeyPreview"), Value(true));
    EXPECT_EQ((*form)(u"AllowEdits"), Value(true));
    EXPECT_EQ((*form)(u"RecordsetType"), number(0));
    EXPECT_EQ((*form)(u"MenuBar"), none);
    EXPECT_EQ((*form)(u"Picture"), none);
    EXPECT_EQ((*form)(u"Width"), number(10000));
    EXPECT_EQ((*form)(u"MinMaxButtons"), number(3));
    EXPECT_EQ((*form)(u"Name"), text(u"Sample"));
    EXPECT_EQ((*form)(u"HasModule"), Value(true));
    EXPECT_EQ((*form)(u"Visible"), Value(true));
    form->setVisible(false);
    EXPECT_EQ((*form)(u"Visible"), Value(false));
    EXPECT_EQ(skipErrors([&] { (*form)(u"NoSuchProperty"); }), 438);
    EXPECT_EQ(skipErrors([&] { (*form)(u""); }), 438);
    EXPECT_EQ(skipErrors([&] { (*form)(u"Left"); }), 438); // that of the window is none of the model
}

TEST(DesignModel, KeyPreviewIsEmptyByPositionAlone) {
    const auto form = sampleForm();
    const Property place = form->Properties().Item(101);
    EXPECT_EQ(place.Name, u"KeyPreview");
    EXPECT_EQ(place.Value, none);
}

TEST(DesignModel, PlacesThatNobodyKnowsAreEmptyAndSoIsAllBehindTheLast) {
    const auto form = sampleForm();
    EXPECT_EQ(countOf(*form), 107);
    for (const int position : {60, 70, 107, 5000, -1}) {
        EXPECT_EQ(form->Properties().Item(position).Name, u"");
        EXPECT_EQ(form->Properties().Item(position).Value, none);
    }
    const Properties& properties = control(*form, u"T").Properties();
    for (const int position : {53, 59, 78, 32767}) {
        EXPECT_EQ(properties.Item(position).Name, u"");
        EXPECT_EQ(properties.Item(position).Value, none);
    }
}

TEST(DesignModel, ABoundControlHasColumnPropertiesInTheDetailSectionOfAForm) {
    const auto form = sampleForm();
    EXPECT_EQ(countOf(control(*form, u"T")), 78);
    EXPECT_EQ(countOf(control(*form, u"H")), 75); // in the header
    EXPECT_EQ(countOf(control(*form, u"G")), 44);
    EXPECT_EQ(countOf(control(*form, u"C")), 48);
    EXPECT_EQ(countOf(control(*form, u"F")), 61);
    EXPECT_EQ(countOf(control(*form, u"K")), 50);
    EXPECT_EQ(control(*form, u"T").Properties().Item(50).Name, u"ColumnWidth");
    EXPECT_EQ(control(*form, u"T").Properties().Item(50).Value, number(300));
    EXPECT_EQ(control(*form, u"T").Properties().Item(63).Name, u"BeforeUpdate");
    EXPECT_EQ(control(*form, u"T").Properties().Item(63).Value, text(u"=Check()"));
    EXPECT_EQ(control(*form, u"C").Properties().Item(34).Value, text(u"Upd.It"));
    EXPECT_EQ(control(*form, u"G").Properties().Item(39).Name, u"OnClick");
    EXPECT_EQ(control(*form, u"G").Properties().Item(39).Value, text(u"Grp.Click"));
}

TEST(DesignModel, OnAReportNoControlHasColumnProperties) {
    StreamBytes bytes;
    bytes.hex(header97).hex("97 00 fe 98 00 60 64 00 fe 6d 00").property(0xdc, "T").hex("fd");
    const auto report = openReport(designOf(bytes), u"R", false);
    EXPECT_EQ(countOf(*report), 48);
    EXPECT_EQ(countOf(control(*report, u"T")), 75);
    EXPECT_FALSE(report->HasModule());
    EXPECT_EQ(skipErrors([&] { report->GroupLevel(0); }), 2464);
}

TEST(DesignModel, AChoiceInAGroupShowsItsOptionValue) {
    const auto form = sampleForm();
    const auto at = [&](TextView name, int position) {
        return control(*form, name).Properties().Item(position);
    };
    EXPECT_EQ(countOf(control(*form, u"c")), 33);
    EXPECT_EQ(countOf(control(*form, u"o")), 33);
    EXPECT_EQ(countOf(control(*form, u"t")), 40);
    for (const int position : {1, 3}) {
        EXPECT_EQ(at(u"c", position).Name, u"OptionValue");
        EXPECT_EQ(at(u"c", position).Value, number(7));
        EXPECT_EQ(at(u"o", position).Name, u"OptionValue");
        EXPECT_EQ(at(u"o", position).Value, number(0)); // stores none
    }
    EXPECT_EQ(at(u"t", 7).Name, u"OptionValue");
    EXPECT_EQ(at(u"t", 7).Value, number(3));
    EXPECT_EQ(at(u"t", 1).Name, u"Name");
    EXPECT_EQ(at(u"C", 1).Value, text(u"C"));
    EXPECT_EQ(at(u"C", 3).Name, u"ControlSource");
    EXPECT_EQ(at(u"c", 25).Name, u"OnGotFocus");
    EXPECT_EQ(at(u"c", 25).Value, text(u"Got.It"));
    EXPECT_EQ(control(*form, u"c")(u"Name"), text(u"c"));
}

TEST(DesignModel, DataIsEmptyByPosition) {
    const auto form = sampleForm();
    const Control& toggle = control(*form, u"t");
    EXPECT_EQ(toggle(u"ObjectPalette"), Value(Bytes{'p', 'a', 'l'}));
    EXPECT_EQ(toggle.Properties().Item(31).Name, u"ObjectPalette");
    EXPECT_EQ(toggle.Properties().Item(31).Value, none);
    EXPECT_EQ(toggle(u"PictureData"), Value(Null{}));
}

TEST(DesignModel, EveryControlTellsWhatItIsAndWhere) {
    const auto form = sampleForm();
    for (const auto& item : form->Controls()) {
        SCOPED_TRACE(toUtf8(item->Name()));
        EXPECT_EQ((*item)(u"name"), Value(item->Name()));
        EXPECT_EQ((*item)(u"controltype"), number(item->ControlType()));
        EXPECT_EQ((*item)(u"Section"), number(item->Name() == u"H" ? 1 : 0));
        EXPECT_EQ((*item)(u"EventProcPrefix"), item->Name() == u"K" ? text(u"K_1") : Value(item->Name()));
        EXPECT_EQ((*item)(u"Visible"), Value(true));
        EXPECT_TRUE(std::holds_alternative<std::int64_t>((*item)(u"Top")));
        EXPECT_TRUE(std::holds_alternative<std::int64_t>((*item)(u"Left")));
        if (item->ControlType() != 118) {
            EXPECT_TRUE(std::holds_alternative<std::int64_t>((*item)(u"Width")));
            EXPECT_TRUE(std::holds_alternative<std::int64_t>((*item)(u"Height")));
        }
    }
    EXPECT_EQ(control(*form, u"B")(u"Top"), number(1000));
    EXPECT_EQ(skipErrors([&] { control(*form, u"B")(u"Width"); }), 438); // a page break has no size
    EXPECT_EQ(form->Controls().Item(10).ControlType(), 117);
}

TEST(DesignModel, EventsWhoseStorageIsNotKnownAreEmptyButThere) {
    const auto form = sampleForm();
    const Control& frame = control(*form, u"F");
    EXPECT_EQ(frame(u"OnClick"), none);
    EXPECT_EQ(frame(u"ControlTipText"), none);
    EXPECT_EQ(frame.Properties().Item(48).Name, u"OnUpdated");
    EXPECT_EQ(frame.Properties().Item(48).Value, none);
}

TEST(DesignModel, WhatFollowsFromOtherProperties) {
    const auto form = sampleForm();
    EXPECT_EQ(control(*form, u"P")(u"Caption"), text(u"P"));
    EXPECT_EQ(control(*form, u"Q")(u"Caption"), text(u"Second"));
    EXPECT_EQ(control(*form, u"K")(u"FontBold"), Value(true));
    EXPECT_EQ(control(*form, u"T")(u"FontBold"), Value(false));
    EXPECT_EQ(control(*form, u"T")(u"BorderStyle"), number(1));
    EXPECT_EQ(control(*form, u"T")(u"OldBorderStyle"), number(1));
    EXPECT_EQ(skipErrors([&] { control(*form, u"L")(u"ControlSource"); }), 438);
    EXPECT_EQ(skipErrors([&] { control(*form, u"T")(u"OverlapFlags"); }), 438);
}

TEST(DesignModel, WhatLaterVersionsBroughtIsNotThereBefore) {
    const auto form = [](std::string_view header) {
        return openForm(designOf(StreamBytes().hex(header).hex("96 00 fe 98 00 60 64 00 fe 6d 00 fd")), u"F",
                        false);
    };
    EXPECT_EQ(skipErrors([&] { form(header97)->Controls().Item(0)(u"IsHyperlink"); }), 438);
    EXPECT_EQ(form("13 00 13 00 00 00 00 00")->Controls().Item(0)(u"IsHyperlink"), Value(false));
}

TEST(DesignModel, ATypeWhoseOrderIsNotKnownListsEachPropertyOnce) {
    const auto form = sampleForm();
    const Properties& properties = control(*form, u"L").Properties();
    EXPECT_GT(properties.Count(), 30);
    std::set<Text> names;
    for (int i = 0; i < properties.Count(); ++i) {
        const Property property = properties.Item(i);
        EXPECT_TRUE(names.insert(upperCase(property.Name)).second) << toUtf8(property.Name);
        EXPECT_EQ(property.Value, control(*form, u"L")(property.Name));
    }
    EXPECT_TRUE(names.contains(u"CAPTION"));
}

TEST(DesignModel, APlaceThatShowsAValueShowsThatOfItsName) {
    const auto form = sampleForm();
    for (const auto& item : form->Controls()) {
        const Properties& properties = item->Properties();
        for (int i = 0; i < properties.Count(); ++i) {
            const Property property = properties.Item(i);
            if (!property.Name.empty()) {
                const Value byName = (*item)(property.Name);
                EXPECT_EQ(property.Value, std::holds_alternative<Bytes>(byName) ? none : byName)
                    << toUtf8(item->Name()) << " " << toUtf8(property.Name);
            }
        }
    }
}

TEST(DesignModel, ADesignLivesAsLongAsWhatItIsOpenIn) {
    auto design = designOf(form97().hex("ff 01 00 98 00 60 64 00 fe 6d 00 dc 01 41 fd"));
    const std::weak_ptr<const Design> watch = design;
    auto form = openForm(std::move(design), u"F", false);
    EXPECT_FALSE(watch.expired());
    EXPECT_EQ(form->Controls().Item(0)(u"Name"), text(u"A"));
    form.reset();
    EXPECT_TRUE(watch.expired());
}

// ---- a real application

class Northwind : public ::testing::Test {
protected:
    void SetUp() override {
        const auto samples = relvane::test::realSamples();
        std::ifstream file;
        if (samples) {
            file.open(samples->parent_path() / "goldens" / "nwind-designs.json");
        }
        if (!file.is_open()) {
            GTEST_SKIP() << "no decoded samples";
        }
        golden = Json::parse(file);
        source.emplace(jet::openJetFile((*samples / "access97/nwind.mdb").native(), {}));
    }

    std::shared_ptr<Form> form(const DesignDocument& document) const {
        return openForm(source->design(document), document.name, document.hasModule);
    }
    std::shared_ptr<Report> report(const DesignDocument& document) const {
        return openReport(source->design(document), document.name, document.hasModule);
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
            if (findProperty(type, fromUtf8(name)) == nullptr ||        // the list is the same for all types
                (type == DesignType::Page && value == "") ||            // shows its name
                (type == DesignType::Chart && name == "ColumnCount")) { // not known here
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
