// The designs of the builder: their bytes, and what the project's own reader makes of them.

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "access/design_data.h"
#include "access/design_source.h"
#include "platform/codepage.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"
#include "sample_builder/design_data_writer.h"
#include "sample_builder/design_writer.h"
#include "sample_builder/many_forms.h"
#include "support/file_formats.h"
#include "support/samples.h"

namespace relvane::samples {
namespace {

using access::Design;
using access::DesignDocument;
using access::DesignKind;
using access::DesignObject;
using access::DesignPlace;
using access::DesignSource;

DesignSource open(const std::filesystem::path& path) {
    return DesignSource(jet::openJetFile(path.native(), {}));
}

// The document of a description that begins "form F"; its design.
DesignSpec described(std::string_view lines, const std::string& kind = "form") {
    DatabaseSpec spec = parseDescription("database\n" + kind + " F\n" + std::string(lines));
    return kind == "form" ? spec.forms.at(0).design.value() : spec.reports.at(0).design.value();
}

// Hexadecimal digits and texts in quotes, as one writes bytes down.
Bytes bytesOf(std::string_view text) {
    Bytes bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') {
            for (++i; text[i] != '"'; ++i) {
                bytes.push_back(static_cast<std::uint8_t>(text[i]));
            }
        } else if (text[i] != ' ' && text[i] != '\n') {
            bytes.push_back(
                static_cast<std::uint8_t>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16)));
            ++i;
        }
    }
    return bytes;
}

std::string refusal(const DesignSpec& design) {
    try {
        designStream(design, japaneseCodePage);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return {};
}

// What the writer adds on its own account.
bool isDerived(TextView name) {
    return name == u"AccessKey" || name == u"EventProcPrefix" || name == u"RowSourceTypeInt";
}

// Each adds a failure to the running test for every difference.
void compareObject(const DesignObjectSpec& expected, const DesignObject& found) {
    SCOPED_TRACE(toUtf8(access::nameOf(expected.type)) + " " + toUtf8(expected.name()));
    EXPECT_EQ(found.type(), expected.type);
    std::set<access::PropertyId> described;
    for (const DesignPropertySpec& property : expected.properties) {
        const auto* fact = access::findProperty(expected.type, property.name);
        ASSERT_NE(fact, nullptr) << toUtf8(property.name);
        described.insert(fact->id);
        EXPECT_EQ(found.value(*fact), property.value) << toUtf8(property.name);
    }
    for (const access::StoredValue& stored : found.storedValues()) {
        const auto* fact = found.factOf(stored);
        ASSERT_NE(fact, nullptr) << stored.id;
        EXPECT_TRUE(described.contains(stored.id) || isDerived(fact->name)) << toUtf8(fact->name);
    }
    ASSERT_EQ(found.children().size(), expected.children.size());
    for (std::size_t i = 0; i < expected.children.size(); ++i) {
        compareObject(expected.children[i], *found.children()[i]);
    }
}

std::size_t compareDesigns(const std::vector<DocumentSpec>& documents, const DesignSource& source,
                           DesignKind kind, FileFormat format) {
    std::size_t controls = 0;
    for (const DocumentSpec& document : documents) {
        const DesignDocument* found = source.find(kind, document.name);
        EXPECT_NE(found, nullptr) << toUtf8(document.name);
        if (found == nullptr || !document.design) {
            continue;
        }
        SCOPED_TRACE(toUtf8(found->title()));
        EXPECT_EQ(found->hasModule, document.module.has_value());
        EXPECT_EQ(source.streams(*found).place, format == FileFormat::Access2000 ? DesignPlace::Store
                                                : document.module                ? DesignPlace::ModuleRow
                                                                                 : DesignPlace::Catalogue);
        const auto design = source.design(*found);
        EXPECT_EQ(design->version(), format == FileFormat::Access2000 ? 19 : 17);
        compareObject(document.design->root, design->root());
        EXPECT_TRUE(access::agrees(source.typeInfo(*found), *design));
        controls += design->controls().size();
    }
    return controls;
}

const DatabaseSpec& orderKeeping() {
    static const DatabaseSpec spec = readDescription(test::sourceFolder() / "samples" / "juchu.txt");
    return spec;
}

template <class Visit>
void visitObjects(const DesignObjectSpec& object, const Visit& visit) {
    visit(object);
    for (const DesignObjectSpec& child : object.children) {
        visitObjects(child, visit);
    }
}

// Of all forms and reports of the order-keeping sample.
template <class Visit>
void visitDesigns(const Visit& visit) {
    for (const auto* list : {&orderKeeping().forms, &orderKeeping().reports}) {
        for (const DocumentSpec& document : *list) {
            visit(document.name, document.design.value());
        }
    }
}

// Designs in files of each format.
class SampleDesignFiles : public testing::TestWithParam<FileFormat> {};
INSTANTIATE_TEST_SUITE_P(Formats, SampleDesignFiles, test::everyFormat, test::formatName);

// ---- The bytes

TEST(SampleDesignBytes, HeadOfAFormIsAsAccessWritesIt) {
    const DesignSpec design = described(R"(
        set RecordSelectors no AutoCenter yes NavigationButtons no DefaultView 0 ScrollBars 0 ViewsAllowed 1
        set BorderStyle 3 PictureAlignment 2 DatasheetGridlinesBehavior 0 Width 5355 DatasheetFontHeight 10
        set ItemSuffix 16 at 930 210 Right 6240 Bottom 4050 HelpContextId 430 DatasheetGridlinesColor 12632256
        set Caption "Sales Reports" HelpFile "Nwind80.hlp>Right" DatasheetFontName Arial
        default Label BackStyle 0
        default Rectangle SpecialEffect 3 BackStyle 0
        default CommandButton FontSize 8 FontWeight 400 FontName "MS Sans Serif"
        default OptionButton SpecialEffect 2 LabelX 230 LabelY -30
        Section Detail Height 3720 BackColor -2147483633
        CommandButton Preview at 3888 240 size 1440 360 Caption Pre&view TabIndex 1 OverlapFlags 85
        with OnClick "[Event Procedure]")");
    EXPECT_EQ(designStream(design, 1252), bytesOf(R"(
        11 00 11 00 00 00 00 00   96 00   06 0f 10
        30 00  32 00  33 01  39 03  3d 02  42 00
        63 eb 14  65 0a 00  67 10 00  68 a2 03  69 d2 00  6a 60 18  6b d2 0f
        9c ae 01 00 00  a0 c0 c0 c0 00
        dd 0d "Sales Reports"  e6 11 "Nwind80.hlp>Right"  e7 05 "Arial"
        ff 05 00
           64 00  32 00  fd
           65 00  31 03  32 00  fd
           68 00  67 08 00  68 90 01  e4 0d "MS Sans Serif"  fd
           69 00  31 02  67 e6 00  68 e2 ff  fd
           98 00  60 88 0e  9c 0f 00 00 80  df 06 "Detail"
           fe 68 00  31 55  32 56  60 30 0f  61 f0 00  69 01 00
              dc 07 "Preview"  dd 08 "Pre&view"  df 11 "[Event Procedure]"  fd)"));
}

TEST(SampleDesignBytes, AttachedLabelStandsInItsControlAndEndsIt) {
    const DesignSpec design = described(R"(
        Section Detail Height 255
        TextBox BeginningDate at 2160 360 size 1440 255 Format "Medium Date" DefaultValue "=""1/1/95"""
        label "Enter beginning date:" at 435 360 size 1590 240
        TextBox Next)");
    EXPECT_EQ(designStream(design, japaneseCodePage), bytesOf(R"(
        11 00 11 00 00 00 00 00   96 00  fe
        98 00  60 ff 00  df 06 "Detail"  ff 02 00
           6d 00  60 70 08  61 68 01  63 ff 00  dc 0d "BeginningDate"  de 0b "Medium Date"
                  e7 09 3d 22 "1/1/95" 22
              fe  64 00  60 b3 01  61 68 01  62 36 06  63 f0 00
                  dc 12 "BeginningDate_" d7 cd de d9  dd 15 "Enter beginning date:"  fd
           6d 00  dc 04 "Next"  fd)"));
}

TEST(SampleDesignBytes, LengthsGrowFromOneByteToTwoAndToFour) {
    for (const auto& [size, head] :
         std::initializer_list<std::pair<std::size_t, const char*>>{{254, "c7 fe"},
                                                                    {255, "c7 ff ff 00"},
                                                                    {65534, "c7 ff fe ff"},
                                                                    {65535, "c7 ff ff ff ff ff 00 00"}}) {
        DesignSpec design{.root = {.type = DesignType::Form}};
        design.root.properties = {{u"PictureData", Bytes(size, std::uint8_t{7})}};
        Bytes expected = bytesOf(std::string("11 00 11 00 00 00 00 00 96 00 ") + head);
        expected.insert(expected.end(), size, std::uint8_t{7});
        expected.push_back(0xFD);
        EXPECT_EQ(designStream(design, 1252), expected) << size;
    }
}

TEST(SampleDesignBytes, FlagTurnsRoundWhatTheBlockGives) {
    const DesignSpec design = described(R"(
        default Label FontItalic yes
        Section S Height 0
        Label Italic FontItalic yes
        Label Upright FontItalic no)");
    EXPECT_EQ(designStream(design, 1252), bytesOf(R"(
        11 00 11 00 00 00 00 00   96 00  ff 02 00
           64 00  01  fd
           98 00  60 00 00  df 01 "S"  ff 02 00
              64 00  dc 06 "Italic"  fd
              64 00  01  dc 07 "Upright"  fd)"));
}

TEST(SampleDesignBytes, BuiltInValueIsStoredWhereTheBlockGivesAnother) {
    const DesignSpec design = described(R"(
        default TextBox Width 2000
        Section S Height 0
        TextBox A Width 1440
        TextBox B Width 2000)");
    EXPECT_EQ(designStream(design, 1252), bytesOf(R"(
        11 00 11 00 00 00 00 00   96 00  ff 02 00
           6d 00  62 d0 07  fd
           98 00  60 00 00  df 01 "S"  ff 02 00
              6d 00  62 a0 05  dc 01 "A"  fd
              6d 00  dc 01 "B"  fd)"));
}

// Only the version and the coding of texts differ, and the properties that the version brought.
TEST(SampleDesignBytes, DesignOfAccess2000HasItsTextsInUtf16) {
    const DesignSpec design = described(R"(
        set Width 5355 RecordSource 表 AllowDesignChanges no
        Section A Height 0)");
    EXPECT_EQ(designStream(design, TextCoding(japaneseCodePage, true)), bytesOf(R"(
        13 00 13 00 00 00 00 00   96 00  1c  63 eb 14  dc 02 68 88
        fe 98 00  60 00 00  df 02 "A" 00  fd)"));
}

TEST(SampleDesignBytes, ListOfNamesIsAsAccessWritesIt) {
    DesignSpec design = described(R"(
        Section Detail Height 0
        OptionGroup "Ship Via"
        > OptionButton Federal)");
    design.unusedFields = {u"CompanyName"};
    const Bytes list = typeInfoStream(design, 1252);
    EXPECT_EQ(Bytes(list.begin(), list.begin() + 16),
              bytesOf("f7 ea cd ac 96 00 00 00 ff ff ff ff 04 00 00 00"));
    EXPECT_EQ(Bytes(list.begin() + 32, list.end()), bytesOf(R"(
        98 18 00 00 00 00 00 00 "Detail" 00 00
        6b 11 00 00 01 00 00 00 "Ship_Via" 00 "Ship Via" 00
        69 07 00 00 02 00 00 00 "Federal" 00 00
        ff 1e 00 00 03 00 00 00 "CompanyName" 00 00)"));
}

TEST(SampleDesignBytes, WhatTheFormatCannotKeepIsRefused) {
    const auto withProperty = [](TextView name, const Value& value) {
        return DesignSpec{.root = {.type = DesignType::Form, .properties = {{Text(name), value}}}};
    };
    EXPECT_EQ(refusal(withProperty(u"Colour", std::int64_t{1})), "Form.Colour: no such property");
    EXPECT_EQ(refusal(withProperty(u"AllowDesignChanges", false)),
              "Form.AllowDesignChanges: a later version brought this property");
    EXPECT_EQ(refusal(withProperty(u"Width", std::int64_t{32768})),
              "Form.Width: a number that fits is needed");
    EXPECT_EQ(refusal(withProperty(u"DefaultView", std::int64_t{256})),
              "Form.DefaultView: a number that fits is needed");
    EXPECT_EQ(refusal(withProperty(u"PopUp", std::int64_t{1})), "Form.PopUp: yes or no is needed");
    EXPECT_EQ(refusal(withProperty(u"PrtMip", Text(u"x"))), "Form.PrtMip: bytes are needed");
}

TEST(SampleDesignDescription, WhatCannotBeUnderstoodNamesItsLine) {
    const auto problem = [](const char* lines) -> std::string {
        try {
            described(lines);
        } catch (const std::invalid_argument& error) {
            return error.what();
        }
        return {};
    };
    EXPECT_EQ(problem("TextBox A"), "line 3: there is nothing that this could stand in");
    EXPECT_EQ(problem("Section S Height 0\n>> TextBox A"),
              "line 4: there is nothing that this could stand in");
    EXPECT_EQ(problem("Section S Height 0\n> Knob A"), "line 4: no kind of control: Knob");
    EXPECT_EQ(problem("Section S Colour 1"), "line 3: no property of Section: Colour");
    EXPECT_EQ(problem("Section S Height x"), "line 3: no number for a property: x");
    EXPECT_EQ(problem("set PictureData bitmap:1x1"), "line 3: another number of sizes is needed: bitmap:1x1");
    EXPECT_EQ(problem("Section S Height 0\nlabel x"), "line 4: a label belongs to a control");
}

// ---- Data

TEST(SampleDesignData, EveryKindIsWhatTheReaderTakesItFor) {
    for (const int bits : {1, 4, 8, 24}) {
        const Bytes bytes = bitmapPicture(33, 17, bits);
        const auto picture = access::readPictureData(bytes);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->format, access::PictureData::Format::Bitmap);
        EXPECT_EQ(picture->width, 33);
        EXPECT_EQ(picture->height, 17);
        EXPECT_EQ(picture->bits, bits);
        const int colours = bits == 1 ? 2 : bits == 24 ? 0 : 16;
        EXPECT_EQ(bytes.size(), static_cast<std::size_t>(40 + 4 * colours + (33 * bits + 31) / 32 * 4 * 17));
    }
    const Bytes metafile = metafilePicture(2000, 1500);
    const auto picture = access::readPictureData(metafile);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->format, access::PictureData::Format::EnhancedMetafile);
    EXPECT_EQ(picture->width, 2000);
    const Bytes palette = paletteOf(16);
    EXPECT_EQ(access::readPalette(palette).value().size(), 16u);
    const Bytes object = embeddedObject(400);
    EXPECT_EQ(access::readOleData(object).value().compoundFile.size(), 1536u);
    EXPECT_EQ(access::readOleData(object).value().presentation.size(), 400u);
    const Bytes mip = printerLayout({.left = 100, .itemsAcross = 2, .downFirst = true});
    EXPECT_EQ(mip.size(), 56u);
    EXPECT_EQ(access::readPrinterLayout(mip).value().left, 100);
    EXPECT_EQ(access::readPrinterLayout(mip).value().itemLayout, 1954);
    const Bytes mode = printerMode(u"ﾍﾟｰｼﾞﾌﾟﾘﾝﾀ A4", true, japaneseCodePage);
    EXPECT_EQ(access::readPrinterMode(mode, japaneseCodePage).value().deviceName, u"ﾍﾟｰｼﾞﾌﾟﾘﾝﾀ A4");
    const Bytes names = printerNames(u"winspool", u"ﾍﾟｰｼﾞﾌﾟﾘﾝﾀ A4", u"LPT1:", japaneseCodePage);
    EXPECT_EQ(access::readPrinterNames(names, japaneseCodePage).value().port, u"LPT1:");
    EXPECT_EQ(access::readPrinterNames(names, japaneseCodePage).value().device, u"ﾍﾟｰｼﾞﾌﾟﾘﾝﾀ A4");
}

// ---- The order-keeping sample

TEST_P(SampleDesignFiles, EveryDesignOfTheOrderKeepingSampleReadsBackAsDescribed) {
    const DesignSource source = open(test::ownSample("juchu", GetParam()));
    EXPECT_EQ(source.forms().size(), orderKeeping().forms.size());
    EXPECT_EQ(source.reports().size(), orderKeeping().reports.size());
    EXPECT_GT(compareDesigns(orderKeeping().forms, source, DesignKind::Form, GetParam()), 150u);
    EXPECT_GT(compareDesigns(orderKeeping().reports, source, DesignKind::Report, GetParam()), 60u);
}

TEST(SampleDesigns, SampleHasDesignsInBothPlaces) {
    const auto hasModule = [](const DocumentSpec& document) { return document.module.has_value(); };
    for (const auto* documents : {&orderKeeping().forms, &orderKeeping().reports}) {
        EXPECT_TRUE(std::ranges::any_of(*documents, hasModule));
        EXPECT_FALSE(std::ranges::all_of(*documents, hasModule));
    }
}

TEST(SampleDesigns, EveryTypeAndEveryEventOccurs) {
    std::set<DesignType> types;
    std::set<std::pair<DesignType, Text>> events;
    visitDesigns([&](TextView, const DesignSpec& design) {
        const bool isReport = design.root.type == DesignType::Report;
        visitObjects(design.root, [&](const DesignObjectSpec& object) {
            types.insert(object.type);
            for (const DesignPropertySpec& property : object.properties) {
                if (!isReport || access::isRoot(object.type)) {
                    events.emplace(object.type, property.name);
                }
            }
        });
    });
    for (const DesignType type : access::knownTypes()) {
        const bool isOfAccess97 = access::propertiesOf(type).front().id != access::noPlace;
        EXPECT_EQ(types.contains(type), isOfAccess97) << toUtf8(access::nameOf(type));
    }
    const std::set<TextView> formsAlone = {u"OnNoData", u"OnPage"};
    for (const DesignType type :
         {DesignType::Form, DesignType::CommandButton, DesignType::ToggleButton, DesignType::CheckBox,
          DesignType::OptionButton, DesignType::ComboBox, DesignType::ListBox, DesignType::TextBox,
          DesignType::Subform, DesignType::Image}) {
        for (const access::PropertyFact& fact : access::propertiesOf(type)) {
            const bool isEvent = fact.name.starts_with(u"On") || fact.name.starts_with(u"Before") ||
                                 fact.name.starts_with(u"After");
            if (isEvent && fact.since == 17 &&
                !(type == DesignType::Form && formsAlone.contains(fact.name))) {
                EXPECT_TRUE(events.contains({type, Text(fact.name)}))
                    << toUtf8(access::nameOf(type)) << "." << toUtf8(fact.name);
            }
        }
    }
    for (const char16_t* name :
         {u"OnOpen", u"OnClose", u"OnActivate", u"OnDeactivate", u"OnNoData", u"OnPage", u"OnError"}) {
        EXPECT_TRUE(events.contains({DesignType::Report, name})) << toUtf8(name);
    }
}

// Where the record source is a table.
TEST(SampleDesigns, ControlsAreBoundToFieldsThatExist) {
    std::size_t bound = 0;
    visitDesigns([&](TextView name, const DesignSpec& design) {
        const Value* source = design.root.find(u"RecordSource");
        const auto table = std::ranges::find_if(orderKeeping().tables, [&](const TableSpec& candidate) {
            return source != nullptr && toText(*source) == candidate.name;
        });
        if (table == orderKeeping().tables.end()) {
            return;
        }
        visitObjects(design.root, [&](const DesignObjectSpec& object) {
            const Value* control = object.find(u"ControlSource");
            if (control == nullptr || toText(*control).starts_with(u'=')) {
                return;
            }
            ++bound;
            const bool exists = std::ranges::any_of(table->columns, [&](const ColumnSpec& column) {
                return !column.deleted && column.name == toText(*control);
            });
            EXPECT_TRUE(exists) << toUtf8(name) << " " << toUtf8(object.name());
        });
    });
    EXPECT_GT(bound, 60u);
}

TEST_P(SampleDesignFiles, ControlsStandInsideTheirSections) {
    const DesignSource source = open(test::ownSample("juchu", GetParam()));
    for (const auto* list : {&source.forms(), &source.reports()}) {
        for (const DesignDocument& document : *list) {
            const auto design = source.design(document);
            for (const DesignObject* control : design->controls()) {
                if (control->type() == DesignType::PageBreak) {
                    continue; // as wide as the form
                }
                const auto length = [&](TextView name) { return toInteger((*control)[name]); };
                SCOPED_TRACE(toUtf8(document.name) + " " + toUtf8(control->name()));
                EXPECT_LE(length(u"Left") + length(u"Width"), toInteger(design->root()[u"Width"]));
                EXPECT_LE(length(u"Top") + length(u"Height"), toInteger((*control->section())[u"Height"]));
            }
        }
    }
}

TEST(SampleDesigns, SubformsShowWhatExists) {
    std::size_t subforms = 0;
    visitDesigns([&](TextView, const DesignSpec& design) {
        visitObjects(design.root, [&](const DesignObjectSpec& object) {
            if (object.type != DesignType::Subform) {
                return;
            }
            ++subforms;
            const Text source = toText(*object.find(u"SourceObject"));
            const bool isReport = source.starts_with(u"Report.");
            const auto& list = isReport ? orderKeeping().reports : orderKeeping().forms;
            const Text name = source.substr(source.find(u'.') + 1);
            EXPECT_TRUE(std::ranges::find(list, name, &DocumentSpec::name) != list.end()) << toUtf8(source);
        });
    });
    EXPECT_EQ(subforms, 4u);
}

// A level has a header or footer exactly where its flag says so.
TEST(SampleDesigns, GroupLevelsHaveTheSectionsTheyAnnounce) {
    std::set<std::size_t> counts;
    visitDesigns([&](TextView name, const DesignSpec& design) {
        std::set<std::pair<DesignType, std::int64_t>> announced, there;
        std::int64_t level = 0;
        for (const DesignObjectSpec& child : design.root.children) {
            const auto number = [&](const char16_t* property) {
                const Value* value = child.find(property);
                return value == nullptr ? 0 : toInteger(*value);
            };
            if (child.type == DesignType::BreakLevel) {
                if (number(u"GroupHeader") != 0) {
                    announced.emplace(DesignType::BreakHeader, level);
                }
                if (number(u"GroupFooter") != 0) {
                    announced.emplace(DesignType::BreakFooter, level);
                }
                ++level;
            } else if (child.type == DesignType::BreakHeader || child.type == DesignType::BreakFooter) {
                there.emplace(child.type, number(u"BreakLevel"));
            }
        }
        EXPECT_EQ(there, announced) << toUtf8(name);
        if (design.root.type == DesignType::Report) {
            counts.insert(static_cast<std::size_t>(level));
        }
    });
    EXPECT_EQ(counts, (std::set<std::size_t>{0, 1, 3, 10}));
}

TEST_P(SampleDesignFiles, ListOfNamesHasTheFieldsThatNoControlIsNamedAfter) {
    const DesignSource source = open(test::ownSample("juchu", GetParam()));
    const access::TypeInfo list = source.typeInfo(*source.find(DesignKind::Form, u"得意先台帳"));
    std::vector<Text> fields;
    for (const access::TypeInfoEntry& entry : list.entries) {
        if (entry.isField()) {
            fields.push_back(entry.name);
        }
    }
    EXPECT_EQ(fields, (std::vector<Text>{u"ﾎｰﾑﾍﾟｰｼﾞ"}));
}

TEST_P(SampleDesignFiles, LongestDataAreWhole) {
    const DesignSource source = open(test::ownSample("juchu", GetParam()));
    const auto design = source.design(*source.find(DesignKind::Report, u"売上ｸﾞﾗﾌ"));
    EXPECT_EQ(design->findControl(u"分類別ｸﾞﾗﾌ")->bytes(u"OleData").size(), 4u + 1536 + 66000);
}

// ---- Other files

TEST_P(SampleDesignFiles, ObjectWithoutADesignIsMissingIt) {
    const test::TemporaryFolder folder;
    DatabaseSpec spec;
    spec.forms = {{.name = u"空"}};
    writeDatabase(savedAs(spec, GetParam()), folder / "sample.mdb");
    const DesignSource source = open(folder / "sample.mdb");
    EXPECT_EQ(skipErrors([&] { source.design(source.forms().at(0)); }), 3049);
}

TEST(SampleDesigns, ModuleNeedsTheTablesOfAccess97) {
    DatabaseSpec spec;
    spec.accessVersion = u"06.68";
    spec.forms = {
        {.name = u"F", .design = DesignSpec{.root = {.type = DesignType::Form}}, .module = ModuleSpec()}};
    EXPECT_THROW(databaseBytes(spec), std::invalid_argument);
}

TEST_P(SampleDesignFiles, ManyFormsHaveAsManyControlsAsAsked) {
    const test::TemporaryFolder folder;
    const DatabaseSpec spec = manyForms(7, 100);
    writeDatabase(savedAs(spec, GetParam()), folder / "forms.mdb");
    const DesignSource source = open(folder / "forms.mdb");
    EXPECT_EQ(source.forms().size(), 7u);
    EXPECT_EQ(compareDesigns(spec.forms, source, DesignKind::Form, GetParam()), 700u);
}

TEST_P(SampleDesignFiles, OneFileHoldsMoreControlsThanA16BitNumberCounts) {
    const test::TemporaryFolder folder;
    writeDatabase(savedAs(manyForms(64, 512), GetParam()), folder / "forms.mdb");
    const DesignSource source = open(folder / "forms.mdb");
    std::size_t controls = 0;
    for (const DesignDocument& form : source.forms()) {
        controls += source.design(form)->controls().size();
    }
    EXPECT_EQ(controls, 32768u);
}

} // namespace
} // namespace relvane::samples
