// Open forms and reports: what their properties answer by name and by position.
#include "access/design_model.h"

#include <set>

#include <gtest/gtest.h>

#include "access/module_model.h"
#include "design_bytes_builder.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

namespace relvane::access {
namespace {

using test::form97;
using test::header97;
using test::StreamBytes;
using test::WideBytes;

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
    return openForm(designOf(bytes), u"Sample", [] { return openModule({}); });
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
    const auto report = openReport(designOf(bytes), u"R", {});
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
        if (item->ControlType() != static_cast<int>(DesignType::PageBreak)) {
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

TEST(DesignModel, ListsAnswerForTheirSourceObjectWithTheirRowSource) {
    StreamBytes bytes = form97();
    bytes.hex("fe 98 00 60 64 00 ff 03 00");
    bytes.hex("6f 00").property(0xdc, "C").property(0xdf, "Customers").hex("fd");
    bytes.hex("6e 00").property(0xdc, "L").property(0xdf, "'Customers';'Orders'").hex("fd");
    bytes.hex("6e 00").property(0xdc, "E").hex("fd");
    const auto form = openForm(designOf(bytes), u"F", {});
    EXPECT_EQ(control(*form, u"C")(u"SourceObject"), text(u"Customers"));
    EXPECT_EQ(control(*form, u"L")(u"SourceObject"), text(u"'Customers';'Orders'"));
    EXPECT_EQ(control(*form, u"E")(u"SourceObject"), none);
    for (const auto& list : form->Controls()) {
        for (int i = 0; i < list->Properties().Count(); ++i) {
            EXPECT_NE(list->Properties().Item(i).Name, u"SourceObject") << "it has no place";
        }
    }
    EXPECT_EQ(skipErrors([&] { control(*sampleForm(), u"T")(u"SourceObject"); }), 438);
}

// What the analyses read, of objects that store nothing but their type.
struct Reading {
    DesignType type;
    std::vector<TextView> texts, booleans, numbers;
};
const Reading readings[] = {
    {DesignType::Form,
     {u"RecordSource", u"Filter", u"OrderBy", u"Caption", u"MenuBar"},
     {u"AllowEdits", u"AllowDeletions", u"AllowAdditions", u"DataEntry", u"PopUp", u"Modal"},
     {u"DefaultView", u"RecordsetType", u"RecordLocks"}},
    {DesignType::Report,
     {u"RecordSource", u"Filter", u"OrderBy", u"Caption", u"MenuBar"},
     {},
     {u"RecordLocks"}},
    {DesignType::BreakLevel,
     {u"ControlSource"},
     {u"SortOrder", u"GroupHeader", u"GroupFooter"},
     {u"GroupOn", u"GroupInterval", u"KeepTogether"}},
    {DesignType::Label, {u"Caption"}, {}, {}},
    {DesignType::Page, {u"Caption"}, {}, {}},
    {DesignType::ComboBox,
     {u"ControlSource", u"Format", u"InputMask", u"RowSource", u"RowSourceType", u"DefaultValue",
      u"ValidationRule", u"ValidationText", u"StatusBarText", u"ControlTipText"},
     {u"IMEHold", u"Locked", u"LimitToList", u"TabStop"},
     {u"IMEMode", u"ColumnCount", u"BoundColumn", u"TabIndex"}},
    {DesignType::ListBox,
     {u"ControlSource", u"RowSource", u"RowSourceType", u"DefaultValue", u"ValidationRule", u"ValidationText",
      u"StatusBarText", u"ControlTipText"},
     {u"Locked", u"TabStop"},
     {u"ColumnCount", u"BoundColumn", u"TabIndex"}},
    {DesignType::TextBox,
     {u"ControlSource", u"Format", u"InputMask", u"DefaultValue", u"ValidationRule", u"ValidationText",
      u"StatusBarText", u"ControlTipText"},
     {u"IMEHold", u"Locked", u"TabStop"},
     {u"IMEMode", u"TabIndex"}},
    {DesignType::OptionGroup,
     {u"ControlSource", u"DefaultValue", u"ValidationRule", u"ValidationText", u"ControlTipText"},
     {u"Locked", u"TabStop"},
     {u"TabIndex"}},
    {DesignType::BoundObjectFrame, {u"ControlSource", u"ControlTipText"}, {u"TabStop"}, {u"TabIndex"}},
    {DesignType::CheckBox,
     {u"ControlSource", u"DefaultValue", u"ValidationRule", u"ValidationText", u"ControlTipText"},
     {u"Locked", u"TabStop"},
     {u"OptionValue", u"TabIndex"}},
    {DesignType::OptionButton,
     {u"ControlSource", u"DefaultValue", u"ValidationRule", u"ValidationText", u"ControlTipText"},
     {u"Locked", u"TabStop"},
     {u"OptionValue", u"TabIndex"}},
    {DesignType::ToggleButton,
     {u"ControlSource", u"DefaultValue", u"ValidationRule", u"ValidationText", u"ControlTipText", u"Caption",
      u"Picture"},
     {u"Locked", u"TabStop"},
     {u"OptionValue", u"TabIndex", u"PictureType"}},
    {DesignType::CommandButton,
     {u"Caption", u"Picture", u"ControlTipText"},
     {u"TabStop"},
     {u"PictureType", u"TabIndex"}},
    {DesignType::Subform,
     {u"SourceObject", u"LinkChildFields", u"LinkMasterFields"},
     {u"Locked", u"TabStop"},
     {u"TabIndex"}},
    {DesignType::Image, {u"Picture"}, {}, {u"PictureType", u"SizeMode", u"PictureAlignment"}},
    {DesignType::Rectangle, {}, {}, {u"BorderStyle", u"BorderWidth"}},
    {DesignType::Line, {}, {}, {u"BorderStyle", u"BorderWidth"}},
    {DesignType::UnboundObjectFrame, {u"OLEClass"}, {}, {u"SizeMode"}},
    {DesignType::Chart, {u"OLEClass"}, {}, {u"SizeMode"}},
    {DesignType::Tab, {}, {u"TabStop"}, {u"TabIndex"}},
    {DesignType::PageBreak, {}, {}, {}},
    {DesignType::CustomControl, {}, {}, {}},
};

void expectReadings(const Object& object, const Reading& reading) {
    for (const TextView name : reading.texts) {
        EXPECT_TRUE(std::holds_alternative<Text>(object(name))) << toUtf8(name);
    }
    for (const TextView name : reading.booleans) {
        EXPECT_TRUE(std::holds_alternative<bool>(object(name))) << toUtf8(name);
    }
    for (const TextView name : reading.numbers) {
        EXPECT_TRUE(std::holds_alternative<std::int64_t>(object(name))) << toUtf8(name);
    }
}

TEST(DesignModel, WhatAnalysesReadIsThereAndNeverNullThoughNothingIsStored) {
    const auto form = openForm(designOf(form97().hex("fd")), u"F", {});
    const auto report = openReport(designOf(StreamBytes().hex(header97).hex("97 00 fe 9f 00 fd")), u"R", {});
    for (const Reading& reading : readings) {
        SCOPED_TRACE(toUtf8(nameOf(reading.type)));
        if (reading.type == DesignType::Form) {
            expectReadings(*form, reading);
        } else if (reading.type == DesignType::Report) {
            expectReadings(*report, reading);
        } else if (reading.type == DesignType::BreakLevel) {
            expectReadings(report->GroupLevel(0), reading);
        } else {
            StreamBytes bytes = form97();
            bytes.hex("fe 98 00 60 64 00 fe").raw({static_cast<std::uint8_t>(reading.type), 0, 0xfd});
            const auto withControl = openForm(designOf(bytes), u"F", {});
            const Control& only = withControl->Controls().Item(0);
            EXPECT_EQ(only.ControlType(), controlTypeOf(reading.type));
            expectReadings(only, reading);
        }
    }
}

TEST(DesignModel, WhatLaterVersionsBroughtIsNotThereBefore) {
    const auto form = [](std::string_view header) {
        return openForm(designOf(StreamBytes().hex(header).hex("96 00 fe 98 00 60 64 00 fe 6d 00 fd")), u"F",
                        {});
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
    auto form = openForm(std::move(design), u"F", {});
    EXPECT_FALSE(watch.expired());
    EXPECT_EQ(form->Controls().Item(0)(u"Name"), text(u"A"));
    form.reset();
    EXPECT_TRUE(watch.expired());
}

// The same form of Access 97 and of a later version.
TEST(DesignModel, WhatLaterVersionsAddedStandsBehindThePlacesOfAccess97) {
    const auto old = openForm(
        designOf(form97().hex("fe 98 00 ff 02 00").hex("6d 00 dc 01 41 fd 64 00 dc 01 42 fd")), u"旧", {});
    WideBytes stream(21);
    stream.object(DesignType::Form).oneChild().object(DesignType::Section).children(2);
    stream.object(DesignType::TextBox).text(0xdc, 0x014, u"A").word(0x109, 0x1c6, 15).noChildren();
    stream.object(DesignType::Label).text(0xdc, 0x014, u"B").noChildren();
    const auto later =
        openForm(std::make_shared<const Design>(readDesignStream(stream.bytes(), u"試験"), japaneseCodePage),
                 u"新", {});
    const auto compare = [](const Object& one, const Object& other, TextView added) {
        const int count = countOf(one);
        ASSERT_EQ(countOf(other), count);
        for (int position = 0; position < count; ++position) {
            EXPECT_EQ(one.Properties().Item(position).Name, other.Properties().Item(position).Name);
        }
        EXPECT_EQ(one.Properties().Item(count).Name, u"");
        bool isThere = false;
        for (int position = count; !other.Properties().Item(position).Name.empty(); ++position) {
            isThere = isThere || other.Properties().Item(position).Name == added;
            EXPECT_NO_THROW(other(other.Properties().Item(position).Name));
        }
        EXPECT_TRUE(isThere) << toUtf8(added);
        EXPECT_THROW(one(added), RunTimeError);
    };
    compare(*old, *later, u"AllowLayoutView");
    compare(control(*old, u"A"), control(*later, u"A"), u"LeftPadding");
    compare(control(*old, u"B"), control(*later, u"B"), u"LeftMargin"); // of Access 2000
    EXPECT_EQ(control(*later, u"A")(u"LeftPadding"), number(15));
    EXPECT_EQ(control(*later, u"A")(u"SmartTags"), text(u""));
}

TEST(DesignModel, ControlsOfLaterVersionsHaveAPlaceASizeAndAName) {
    for (const DesignType type : {DesignType::Attachment, DesignType::EmptyCell, DesignType::WebBrowser,
                                  DesignType::NavigationControl, DesignType::NavigationButton,
                                  DesignType::ModernChart, DesignType::Edge, DesignType{140}}) {
        SCOPED_TRACE(static_cast<int>(type));
        WideBytes stream;
        stream.object(DesignType::Form).oneChild().object(DesignType::Section).oneChild();
        stream.object(type).word(0x60, 0x036, 20).text(0xdc, 0x014, u"新").noChildren();
        const auto form = openForm(
            std::make_shared<const Design>(readDesignStream(stream.bytes(), u"試験"), japaneseCodePage), u"f",
            {});
        const Control& added = control(*form, u"新");
        EXPECT_EQ(added.ControlType(), static_cast<int>(type));
        EXPECT_EQ(added(u"Left"), number(20));
        EXPECT_EQ(added(u"Top"), number(0));
        EXPECT_TRUE(std::holds_alternative<std::int64_t>(added(u"Width")));
        EXPECT_TRUE(std::holds_alternative<std::int64_t>(added(u"Height")));
        EXPECT_EQ(added(u"Visible"), Value(true));
        EXPECT_EQ(added(u"Name"), text(u"新"));
    }
}

} // namespace
} // namespace relvane::access
