// Designs in real files: every stream of every file is understood to its last byte.

#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "access/design_data.h"
#include "access/design_source.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

std::shared_ptr<const jet::JetFile> open(const std::filesystem::path& path) {
    return jet::openJetFile(path.native(), {});
}

std::vector<DesignDocument> allDocuments(const DesignSource& source) {
    std::vector<DesignDocument> documents = source.forms();
    documents.insert(documents.end(), source.reports().begin(), source.reports().end());
    return documents;
}

TEST(DesignFiles, EveryStreamOfEveryAccess97FileIsReadToItsLastByte) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    std::map<std::string, std::size_t> designs;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(*samples)) {
        const std::string folder = entry.path().parent_path().filename();
        const std::string name = entry.path().filename();
        if (entry.path().extension() != ".mdb" || (folder != "access97" && folder != "odd")) {
            continue;
        }
        std::shared_ptr<const jet::JetFile> file;
        if (skipErrors([&] { file = open(entry.path()); }) != 0) {
            continue; // no database, or one with a password
        }
        const DesignSource source(file);
        for (const DesignDocument& document : allDocuments(source)) {
            SCOPED_TRACE(name + " " + toUtf8(document.title()));
            std::shared_ptr<const Design> design;
            ASSERT_NO_THROW(design = source.design(document));
            EXPECT_EQ(design->version(), 17);
            EXPECT_EQ(source.streams(document).place,
                      document.hasModule ? DesignPlace::ModuleRow : DesignPlace::Catalogue);
            EXPECT_EQ(design->isReport(), document.kind == DesignKind::Report);
            EXPECT_NO_THROW(source.typeInfo(document));
            ++designs[name];
        }
    }
    const std::map<std::string, std::size_t> expected = {
        {"nwind.mdb", 34}, {"afr.mdb", 6}, {"CodBarra39Etiquetas.mdb", 2}, {"ListaArquivosDir.mdb", 1}};
    EXPECT_EQ(designs, expected);
}

TEST(DesignFiles, EveryTypeAndEveryPropertyOfTheRealFilesHasAName) {
    for (const char* name : {"nwind", "afr", "CodBarra39Etiquetas", "ListaArquivosDir"}) {
        const auto path = test::realSample(std::string("access97/") + name + ".mdb");
        if (!path) {
            return;
        }
        const DesignSource source(open(*path));
        for (const DesignDocument& document : allDocuments(source)) {
            const auto design = source.design(document);
            const auto look = [&](const auto& self, const DesignObject& object) -> void {
                SCOPED_TRACE(toUtf8(document.title()) + " at " + std::to_string(object.offset()));
                EXPECT_FALSE(object.typeName().empty());
                for (const StoredValue& value : object.storedValues()) {
                    EXPECT_NE(object.factOf(value), nullptr) << value.id;
                }
                for (const DesignObject* child : object.children()) {
                    self(self, *child);
                }
            };
            look(look, design->root());
        }
    }
}

// What was read of the designs of a file.
struct Counts {
    std::size_t designs = 0, withAdditions = 0, objects = 0, values = 0;
    bool operator==(const Counts&) const = default;
};

// Every value has a name, and every control one and a place and size that can be measured; a page break has no size.
void lookAt(const DesignObject& object, Counts& counts) {
    SCOPED_TRACE(toUtf8(object.typeName()) + " " + toUtf8(object.name()));
    EXPECT_FALSE(object.typeName().empty());
    ++counts.objects;
    for (const StoredValue& value : object.storedValues()) {
        ++counts.values;
        EXPECT_TRUE(object.factOf(value) != nullptr || value.property == PropertyNumber::Separator)
            << value.id;
    }
    if (object.type() != DesignType::PageBreak && isControl(object.type()) && object.section() != nullptr) {
        EXPECT_FALSE(object.name().empty());
        for (const TextView name : {u"Left", u"Top", u"Width", u"Height"}) {
            const Value value = object.value(name).value_or(std::int64_t{0});
            const auto* twips = std::get_if<std::int64_t>(&value);
            EXPECT_TRUE(twips != nullptr && *twips >= 0 && *twips < 32768) << toUtf8(name);
        }
    }
    if (isSection(object.type())) {
        EXPECT_TRUE(std::holds_alternative<std::int64_t>(object[u"Height"]));
    }
    for (const DesignObject* child : object.children()) {
        lookAt(*child, counts);
    }
}

TEST(DesignFiles, EveryStreamOfEveryNewerFileIsReadToItsLastByte) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    std::map<std::string, Counts> found;
    std::set<int> versions;
    for (const auto& entry : std::filesystem::directory_iterator(*samples / "later")) {
        const std::string name = entry.path().filename();
        const DesignSource source(open(entry.path()));
        for (const DesignDocument& document : allDocuments(source)) {
            SCOPED_TRACE(name + " " + toUtf8(document.title()));
            const DesignStreams streams = source.streams(document);
            EXPECT_EQ(streams.place, DesignPlace::Store);
            std::shared_ptr<const Design> design;
            ASSERT_NO_THROW(design = source.design(document));
            EXPECT_EQ(design->isReport(), document.kind == DesignKind::Report);
            ASSERT_NO_THROW(source.typeInfo(document));
            versions.insert(design->version());
            Counts& counts = found[name];
            ++counts.designs;
            counts.withAdditions += design->version() != design->modelVersion() ? 1 : 0;
            lookAt(design->root(), counts);
        }
    }
    const std::map<std::string, Counts> expected = {{"northwind-2000-ja.mdb", {36, 36, 1375, 10036}},
                                                    {"formPropTest.accdb", {4, 0, 72, 1533}},
                                                    {"vbaV2000.mdb", {1, 1, 2, 30}},
                                                    {"vbaV2003.mdb", {1, 0, 2, 30}},
                                                    {"vbaV2007.accdb", {1, 0, 2, 38}}};
    EXPECT_EQ(found, expected);
    EXPECT_EQ(versions, (std::set<int>{19, 21}));
}

// A newer Access has put a copy of each design into the store of its file: the same bytes.
TEST(DesignFiles, TheCopiesInTheStoreOfAnAccess97FileAreItsDesigns) {
    for (const auto& [name, expected] : {std::pair("nwind.mdb", 34), {"afr.mdb", 6}}) {
        const auto path = test::realSample(std::string("access97/") + name);
        if (!path) {
            return;
        }
        SCOPED_TRACE(name);
        const auto file = open(*path);
        const DesignSource source(file);
        const ObjectStorage storage(*file);
        int same = 0;
        for (const DesignDocument& document : allDocuments(source)) {
            const auto copy =
                storage.find(document.kind == DesignKind::Form ? u"Forms" : u"Reports", document.name);
            ASSERT_TRUE(copy);
            same += copy->stream(u"Blob") == source.streams(document).design ? 1 : 0;
        }
        EXPECT_EQ(same, expected);
    }
}

// What a form of the Japanese application stores, as its window shows it.
TEST(DesignFiles, AFormOfAccess2000HasItsTexts) {
    const auto path = test::realSample("later/northwind-2000-ja.mdb");
    if (!path) {
        return;
    }
    const DesignSource source(open(*path));
    const auto form = source.design(*source.find(DesignKind::Form, u"メイン スイッチボード"));
    EXPECT_EQ(form->root()[u"Caption"], Value(Text(u"メイン スイッチボード")));
    const DesignObject& quit = *form->findControl(u"終了");
    EXPECT_EQ(quit[u"Caption"], Value(Text(u"Microsoft Access の終了 (&X)")));
    EXPECT_EQ(quit[u"Left"], Value(std::int64_t{396}));
    EXPECT_EQ(quit[u"Height"], Value(std::int64_t{435}));
    EXPECT_EQ(quit[u"OnClick"], Value(Text(u"[Event Procedure]")));
    const auto dialog = source.design(*source.find(DesignKind::Form, u"レポート印刷ダイアログ"));
    EXPECT_TRUE(dialog->findControl(u"SalesByCategory")->isInOptionGroup());
    EXPECT_EQ((*dialog->findControl(u"SalesByCategory"))[u"Width"], Value(std::int64_t{260})); // built in
}

// Labels of an inch are the only section met that stores no height.
TEST(DesignFiles, ASectionWithoutAHeightIsAnInchHigh) {
    const auto path = test::realSample("later/northwind-2000-ja.mdb");
    if (!path) {
        return;
    }
    const DesignSource source(open(*path));
    const auto labels = source.design(*source.find(DesignKind::Report, u"得意先宛名ラベル"));
    const DesignObject& detail = *labels->section(0);
    EXPECT_EQ(detail[u"Height"], Value(std::int64_t{1440}));
    EXPECT_EQ(readPrinterLayout(labels->root().bytes(u"PrtMip"))->itemHeight, 1440);
    for (const DesignObject* control : detail.children()) {
        EXPECT_LE(toInteger((*control)[u"Top"]) + toInteger((*control)[u"Height"]), 1440);
    }
}

TEST(DesignFiles, AFormOfAccess2013HasItsLayout) {
    const auto path = test::realSample("later/formPropTest.accdb");
    if (!path) {
        return;
    }
    const DesignSource source(open(*path));
    const auto form = source.design(*source.find(DesignKind::Form, u"jp_フォーム_2"));
    EXPECT_EQ(form->version(), 21);
    EXPECT_EQ(form->root()[u"RecordSource"], Value(Text(u"jp_クエリ_02")));
    const DesignObject& cell = *form->findControl(u"空白セル26");
    EXPECT_EQ(cell.type(), DesignType::EmptyCell);
    EXPECT_EQ(cell[u"Width"], Value(std::int64_t{1703}));
    const DesignObject& box = *form->findControl(u"小計");
    EXPECT_EQ(box[u"ControlSource"], Value(Text(u"=[単価]*[個数]")));
    // The edges that Access keeps beside the place are those of the place and the size.
    std::size_t checked = 0;
    for (const DesignObject* control : form->controls()) {
        const Value right = control->value(u"LayoutCachedWidth").value_or(Null{});
        if (const auto* edge = std::get_if<std::int64_t>(&right)) {
            EXPECT_EQ(*edge, std::get<std::int64_t>((*control)[u"Left"]) +
                                 std::get<std::int64_t>((*control)[u"Width"]))
                << toUtf8(control->name());
            ++checked;
        }
    }
    EXPECT_GT(checked, 10u);
}

TEST(DesignFiles, TheTreeAgreesWithTheListOfNames) {
    const auto path = test::realSample("access97/nwind.mdb");
    if (!path) {
        return;
    }
    const DesignSource source(open(*path));
    for (const DesignDocument& document : allDocuments(source)) {
        const TypeInfo list = source.typeInfo(document);
        EXPECT_TRUE(agrees(list, *source.design(document))) << toUtf8(document.title());
        EXPECT_FALSE(list.entries.empty());
    }
}

} // namespace
} // namespace relvane::access
