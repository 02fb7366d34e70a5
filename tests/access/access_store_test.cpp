// The store of newer files: every file of a real Access that has one, its tree, its lists of objects, and all modules of
// its project. The damage is done to a copy in memory.

#include "access/access_store.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

#include <gtest/gtest.h>

#include "access/design_source.h"
#include "access/module_procedures.h"
#include "access/module_source.h"
#include "access/vba_compression.h"
#include "platform/codepage.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

using FilePointer = std::shared_ptr<const jet::JetFile>;

// By the name without the folder; empty when the samples are missing.
std::map<std::string, FilePointer> filesOf(const std::string& folder) {
    std::map<std::string, FilePointer> files;
    const auto samples = test::realSamples();
    if (!samples) {
        return files;
    }
    for (const auto& entry : std::filesystem::directory_iterator(*samples / folder)) {
        skipErrors([&] { // but for those with a password
            files[entry.path().filename()] = jet::openJetFile(entry.path().native(), {});
        });
    }
    return files;
}

FilePointer newerFile(const std::string& name) {
    const auto path = test::realSample("later/" + name);
    return path ? jet::openJetFile(path->native(), {}) : nullptr;
}

std::optional<AccessStore> storeOf(const jet::JetFile& file) {
    auto store = AccessStore::open(file, StoreTable::MSysAccessStorage);
    return store ? std::move(store) : AccessStore::open(file, StoreTable::MSysAccessObjects);
}

std::set<Text> namesOf(const std::vector<AccessStore::Entry>& entries) {
    std::set<Text> names;
    for (const AccessStore::Entry& entry : entries) {
        names.insert(entry.name);
    }
    return names;
}

TEST(AccessStoreFiles, BothTablesGiveOneTree) {
    for (const char* name : {"vbaV2000.mdb", "vbaV2003.mdb", "vbaV2007.accdb"}) {
        const FilePointer file = newerFile(name);
        if (!file) {
            return;
        }
        SCOPED_TRACE(name);
        const auto store = storeOf(*file);
        ASSERT_TRUE(store);
        for (const TextView folder : {u"Forms", u"Reports", u"Modules", u"Scripts", u"VBA"}) {
            EXPECT_TRUE(namesOf(store->children({})).contains(Text(folder))) << toUtf8(folder);
        }
        EXPECT_EQ(namesOf(store->children(u"vba/VBAPROJECT")),
                  (std::set<Text>{u"VBA", u"PROJECT", u"PROJECTwm"}));
        EXPECT_EQ(store->stream(u"VBA/AcessVBAData")->size(), 12u);
        EXPECT_EQ(store->stream(u"vba/acessvbadata"), store->stream(u"VBA/AcessVBAData"));
        EXPECT_FALSE(store->stream(u"VBA")); // a storage
        EXPECT_FALSE(store->stream(u"VBA/nothing"));
        EXPECT_FALSE(store->stream(u"VBA/AcessVBAData/x"));
        EXPECT_FALSE(store->stream({}));
        EXPECT_TRUE(store->children(u"VBA/nothing").empty());
        EXPECT_TRUE(store->children(u"VBA/AcessVBAData").empty());
        EXPECT_TRUE(store->objects(u"Reports").empty());
    }
}

// Those of the catalogue; forms and reports have a design there.
TEST(AccessStoreFiles, EveryObjectOfTheCatalogueHasItsStorage) {
    const std::pair<TextView, jet::ObjectType> kinds[] = {{u"Forms", jet::ObjectType::Form},
                                                          {u"Reports", jet::ObjectType::Report},
                                                          {u"Modules", jet::ObjectType::Module},
                                                          {u"Scripts", jet::ObjectType::Macro}};
    std::size_t stores = 0, objects = 0;
    for (const char* folder : {"access97", "later"}) {
        for (const auto& [fileName, file] : filesOf(folder)) {
            SCOPED_TRACE(fileName);
            const auto store = storeOf(*file);
            if (!store) {
                EXPECT_TRUE(file->header().isJet3());
                continue;
            }
            ++stores;
            for (const auto& [container, type] : kinds) {
                std::multiset<Text> listed, expected;
                for (const AccessStore::Object& object : store->objects(container)) {
                    listed.insert(object.name);
                    ++objects;
                    EXPECT_FALSE(store->children(object.path).empty()) << toUtf8(object.path);
                    const bool isDesign = type == jet::ObjectType::Form || type == jet::ObjectType::Report;
                    EXPECT_TRUE(!isDesign || !store->stream(object.path + u"/Blob")->empty());
                }
                for (const jet::CatalogueEntry& entry : file->catalogue().entries()) {
                    if (entry.type == type) {
                        expected.insert(entry.name);
                    }
                }
                EXPECT_EQ(listed, expected);
            }
        }
    }
    if (test::realSamples()) {
        EXPECT_EQ(stores, 18u);
        EXPECT_EQ(objects, 111u);
    }
}

// The lines that the compiled code of a module counts; see module_source_test.cpp.
std::size_t compiledLines(const Bytes& bytes) {
    const jet::ByteSpan stream(bytes, 0);
    std::size_t at = 0;
    while (stream.u32(at) != 0x0001CAFE) {
        ++at;
    }
    std::size_t lines = 0;
    for (std::size_t statement = 0; statement < stream.u16(at + 4); ++statement) {
        lines += stream.u8(at + 6 + 12 * statement + 2) >> 3;
    }
    return lines;
}

// The word before each name in the stream PROJECT, by that name.
std::map<Text, std::string> kindsOf(const AccessStore& store, int codePage) {
    const Bytes bytes = store.stream(u"VBA/VBAProject/PROJECT").value();
    std::map<Text, std::string> kinds;
    std::string text(bytes.begin(), bytes.end());
    for (std::size_t end = 0; (end = text.find("\r\n")) != 0 && end != text.npos; text.erase(0, end + 2)) {
        const std::string key = text.substr(0, text.find('='));
        const std::size_t start = key.size() + 1;
        if (key == "Module" || key == "Class" || key == "DocClass") {
            const std::string name = text.substr(start, std::min(end, text.find("/&H")) - start);
            kinds[decode(Bytes(name.begin(), name.end()), codePage)] = key;
        }
    }
    return kinds;
}

TEST(AccessStoreFiles, EveryNewerFileGivesAllModulesOfItsProject) {
    struct Count {
        std::size_t modules = 0, classes = 0, lines = 0;
        bool operator==(const Count&) const = default;
    };
    std::map<std::string, Count> counts;
    for (const auto& [fileName, file] : filesOf("later")) {
        SCOPED_TRACE(fileName);
        const AccessStore store = storeOf(*file).value();
        const Bytes directory = store.stream(u"VBA/VBAProject/VBA/dir").value();
        const VbaProject project = readVbaProject(decompressVba(directory, u"P", u"P"), u"P");
        const auto kinds = kindsOf(store, project.codePage);
        const ModuleSource source(file);
        EXPECT_EQ(source.modules().size(), project.modules.size());
        EXPECT_EQ(kinds.size(), project.modules.size());
        Count& count = counts[fileName];
        for (const ModuleDocument& document : source.modules()) {
            SCOPED_TRACE(toUtf8(document.title()));
            constexpr ModuleRow rows[] = {ModuleRow::Form, ModuleRow::Report, ModuleRow::Module};
            const Text name =
                ModuleTable::rowName(rows[static_cast<std::size_t>(document.owner)], document.name);
            const auto module = std::ranges::find(project.modules, name, &VbaModule::name);
            ASSERT_NE(module, project.modules.end());
            ASSERT_TRUE(kinds.contains(name));
            ModuleText text;
            ASSERT_NO_THROW(text = source.text(document));
            EXPECT_EQ(text.lineCount(),
                      compiledLines(store.stream(u"VBA/VBAProject/VBA/" + module->streamName).value()));
            EXPECT_EQ(kinds.at(name) == "Module", text.kind() == ModuleKind::Standard);
            EXPECT_EQ(kinds.at(name) == "DocClass", document.owner != ModuleOwner::Module);
            for (std::size_t line = 1; line <= text.lineCount(); ++line) {
                EXPECT_FALSE(text.line(line).starts_with(u"Attribute "));
                EXPECT_EQ(text.line(line).find_first_of(u"\0\uFFFD"), TextView::npos);
            }
            ++count.modules;
            count.classes += text.kind() == ModuleKind::Class ? 1 : 0;
            count.lines += text.lineCount();
        }
    }
    const std::map<std::string, Count> expected = {
        {"bigIndexTestV2000.mdb", {}}, {"formPropTest.accdb", {3, 3, 61}},
        {"linkerTestV2007.accdb", {}}, {"northwind-2000-ja.mdb", {21, 19, 1011}},
        {"queryTestV2000.mdb", {}},    {"queryTestV2007.accdb", {}},
        {"test2V2000.mdb", {}},        {"testIndexPropertiesV2000.mdb", {}},
        {"testV2003.mdb", {}},         {"vbaV2000.mdb", {3, 2, 31}},
        {"vbaV2003.mdb", {3, 2, 31}},  {"vbaV2007.accdb", {3, 2, 31}}};
    if (test::realSamples()) {
        EXPECT_EQ(counts, expected);
    }
}

// Three versions of one small application.
TEST(AccessStoreFiles, TheSameSourceReadsAlikeFromEachVersion) {
    const FilePointer first = newerFile("vbaV2000.mdb");
    if (!first) {
        return;
    }
    const ModuleSource expected(first);
    ASSERT_EQ(expected.modules().size(), 3u);
    for (const char* name : {"vbaV2003.mdb", "vbaV2007.accdb"}) {
        const ModuleSource source(newerFile(name));
        for (const ModuleDocument& document : expected.modules()) {
            const ModuleDocument* same = source.find(document.owner, document.name);
            ASSERT_NE(same, nullptr) << toUtf8(document.title());
            EXPECT_EQ(source.text(*same).text(), expected.text(document).text());
        }
    }
}

TEST(AccessStoreFiles, JapaneseSourceIsDecoded) {
    const FilePointer file = newerFile("northwind-2000-ja.mdb");
    if (!file) {
        return;
    }
    const ModuleSource source(file);
    const ModuleText module = source.text(*source.find(ModuleOwner::Module, u"ユーティリティ関数"));
    EXPECT_EQ(
        module.line(5),
        u"' 指定したフォームがフォーム ビューまたはデータシート ビューで開かれている場合 True を返します。");
    const ModuleText form = source.text(*source.find(ModuleOwner::Form, u"メイン スイッチボード"));
    const ModuleProcedures procedures(form);
    ASSERT_EQ(procedures.all().size(), 3u);
    EXPECT_EQ(procedures.all()[2].name, u"データベースの表示_Click");
}

TEST(AccessStoreFiles, FormsAndReportsWithCodeAreTold) {
    const FilePointer file = newerFile("northwind-2000-ja.mdb");
    if (!file) {
        return;
    }
    const DesignSource designs(file);
    EXPECT_EQ(std::ranges::count_if(designs.forms(), &DesignDocument::hasModule), 11);
    EXPECT_EQ(std::ranges::count_if(designs.reports(), &DesignDocument::hasModule), 8);
    EXPECT_TRUE(designs.find(DesignKind::Form, u"受注")->hasModule);
    EXPECT_FALSE(
        designs.find(DesignKind::Form, u"スタートアップ")->hasModule); // a module of that name is none
}

} // namespace
} // namespace relvane::access
