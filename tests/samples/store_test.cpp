// The stores of newer files on databases of the builder, which has their tables as any other: the whole project in either
// of them, and what is said of one that is damaged, incomplete or hostile.

#include <algorithm>
#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "access/access_store.h"
#include "access/design_source.h"
#include "access/macro_source.h"
#include "access/module_source.h"
#include "access/target_application.h"
#include "sample_builder/byte_writer.h"
#include "sample_builder/database_writer.h"
#include "support/newer_stores.h"
#include "support/samples.h"
#include "support/wide_bytes.h"

namespace relvane::samples {
namespace {

using access::AccessStore;
using access::DesignKind;
using access::DesignSource;
using access::ModuleDocument;
using access::ModuleKind;
using access::ModuleOwner;
using access::ModuleSource;
using access::StoreTable;

using test::compoundFile;
using test::databaseWith;
using test::fewModules;
using test::objectsTable;
using test::storageTable;
using test::streamPath;
using test::WideBytes;

Streams projectStreams(const std::vector<ProjectModule>& modules = fewModules) {
    return test::projectStreams(modules);
}
const Text directoryPath = Text(moduleFolder) + u"dir";

std::string utf16(TextView text) {
    return encodeText(text, TextCoding(japaneseCodePage, true));
}

using FilePointer = std::shared_ptr<const jet::JetFile>;

FilePointer fileOf(const DatabaseSpec& spec) {
    return std::make_shared<const jet::JetFile>(jet::makeMemorySource(databaseBytes(spec)));
}
FilePointer fileOf(TableSpec table) {
    return fileOf(databaseWith({std::move(table)}));
}

DatabaseSpec withDocuments(TableSpec table) {
    DatabaseSpec spec = databaseWith({std::move(table)});
    spec.otherObjects.push_back({.name = u"印刷", .type = static_cast<int>(ObjectType::Macro)});
    return spec;
}

struct StorePlace {
    const char* name;
    FileFormat format;
    StoreTable table;
};

// A store in each of the tables, in files of both engines.
class StorePlaces : public testing::TestWithParam<StorePlace> {
protected:
    static FilePointer fileWith(const Streams& streams) {
        const auto& [name, format, table] = GetParam();
        DatabaseSpec spec =
            withDocuments(table == StoreTable::MSysAccessStorage ? storageTable(streams)
                                                                 : storeTable(compoundFile(streams), format));
        spec.format = format;
        if (format == FileFormat::Access2000) {
            spec.accessVersion.reset(); // no store but this one
        }
        return fileOf(spec);
    }
};

INSTANTIATE_TEST_SUITE_P(
    All, StorePlaces,
    testing::Values(StorePlace{"RowsInJet3", FileFormat::Access97, StoreTable::MSysAccessStorage},
                    StorePlace{"PiecesInJet3", FileFormat::Access97, StoreTable::MSysAccessObjects},
                    StorePlace{"RowsInJet4", FileFormat::Access2000, StoreTable::MSysAccessStorage},
                    StorePlace{"PiecesInJet4", FileFormat::Access2000, StoreTable::MSysAccessObjects}),
    [](const auto& place) { return place.param.name; });

std::vector<Text> titlesOf(const ModuleSource& source) {
    std::vector<Text> titles;
    for (const ModuleDocument& document : source.modules()) {
        titles.push_back(document.title());
    }
    return titles;
}

// The lines; what is said when they cannot be read.
Text textOf(const ModuleSource& source, ModuleOwner owner, TextView name) {
    const ModuleDocument* document = source.find(owner, name);
    if (document == nullptr) {
        return u"not listed";
    }
    try {
        return source.text(*document).text();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3049);
        EXPECT_NE(error.description().find(document->title()), Text::npos) << error.what();
        return error.description();
    }
}

void expectWhole(const ModuleSource& source) {
    EXPECT_EQ(titlesOf(source), (std::vector<Text>{u"フォーム \"受注\"", u"レポート \"一覧\"",
                                                   u"モジュール \"型\"", u"モジュール \"標準\""}));
    EXPECT_EQ(textOf(source, ModuleOwner::Form, u"受注"), u"Sub 閉じる_Click()\r\nEnd Sub\r\n");
    EXPECT_EQ(textOf(source, ModuleOwner::Report, u"一覧"), u"' 一覧\r\n");
    EXPECT_EQ(textOf(source, ModuleOwner::Module, u"標準"), u"Option Explicit\r\nSub Go()\r\nEnd Sub\r\n");
    EXPECT_EQ(textOf(source, ModuleOwner::Module, u"型"), u"Option Explicit\r\n");
}

constexpr TextView noProject = u"プロジェクトがありません",
                   noSource = u"読み取れるソースがファイルにありません";

bool has(const Text& text, TextView part) {
    return text.find(part) != Text::npos;
}

TEST_P(StorePlaces, EachTableGivesTheWholeProjectThoughItIsLocked) {
    const ModuleSource source(fileWith(projectStreams()));
    expectWhole(source);
    EXPECT_EQ(source.text(*source.find(ModuleOwner::Module, u"標準")).kind(), ModuleKind::Standard);
    EXPECT_EQ(source.text(*source.find(ModuleOwner::Module, u"型")).kind(), ModuleKind::Class);
    EXPECT_EQ(source.text(*source.find(ModuleOwner::Form, u"受注")).kind(), ModuleKind::Class);
}

TEST_P(StorePlaces, StoragesGiveTheirStreamsAndObjects) {
    Streams streams = projectStreams();
    // 4 zeros, then for each object a 4, the length, the name and the number.
    const std::string list = std::string(4, '\0') + "\x04\x08" + utf16(u"受注") +
                             std::string("\x07\0\0\0", 4) + "\x04\x06" + utf16(u"x") +
                             std::string("\x00\x01\0\0", 4);
    streams.emplace_back(u"Forms/\u0003DirData", Bytes(list.begin(), list.end()));
    streams.emplace_back(u"Forms/7/Blob", Bytes(5000, 7));
    streams.emplace_back(u"Forms/7/TypeInfo", Bytes());
    const FilePointer file = fileWith(streams);
    const bool isRows = GetParam().table == StoreTable::MSysAccessStorage;
    EXPECT_FALSE(
        AccessStore::open(*file, isRows ? StoreTable::MSysAccessObjects : StoreTable::MSysAccessStorage));
    const AccessStore store = AccessStore::open(*file, GetParam().table).value();
    EXPECT_EQ(store.children({}).size(), 2u);
    EXPECT_EQ(store.children(u"FORMS").size(), 2u);
    EXPECT_EQ(store.stream(u"Forms/7/blob"), Bytes(5000, 7));
    EXPECT_EQ(store.stream(u"Forms/7/TypeInfo"), Bytes());
    EXPECT_FALSE(store.stream(u"Forms/7"));
    const auto objects = store.objects(u"Forms");
    ASSERT_EQ(objects.size(), 2u);
    EXPECT_EQ(objects[0].name, u"受注");
    EXPECT_EQ(objects[0].path, u"Forms/7");
    EXPECT_EQ(objects[1].path, u"Forms/256");
    EXPECT_TRUE(store.objects(u"Reports").empty());
}

// A form of Access 2000 with what a later version added to it, a wide report, and a macro in UTF-16.
Bytes form2000() {
    constexpr std::uint8_t bytes[] = {0x13, 0, 0x13, 0,    0,    0,    0,    0,    0x96, 0,
                                      0xdc, 4, 0xd7, 0x53, 0xe8, 0x6c, 0xfe, 0x98, 0,    0xfd};
    return {std::begin(bytes), std::end(bytes)};
}
Bytes additionsOfForm(DesignType child = DesignType::Section) {
    return WideBytes()
        .object(DesignType::Form)
        .boolean(0x132, 0x1c5, 1)
        .oneChild()
        .object(child)
        .noChildren()
        .bytes();
}
Streams storedDocuments() {
    Streams streams = projectStreams();
    streams.push_back(objectList(u"Forms", {{u"受注", 7}, {u"空", 0}}));
    streams.emplace_back(u"Forms/7/Blob", form2000());
    streams.emplace_back(u"Forms/7/BlobDelta", additionsOfForm());
    streams.emplace_back(u"Forms/0/Blob", Bytes());
    streams.push_back(objectList(u"Reports", {{u"一覧", 300}}));
    streams.emplace_back(
        u"Reports/300/Blob",
        WideBytes(21).object(DesignType::Report).word(0x63, 0x096, 900).noChildren().bytes());
    streams.push_back(objectList(u"Scripts", {{u"印刷", 1}}));
    streams.emplace_back(u"Scripts/1/Blob", Bytes(36)); // no sheet
    return streams;
}

std::string failureOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3049);
        return toUtf8(error.description());
    }
    return "nothing failed";
}

TEST_P(StorePlaces, DesignsAreFoundByTheNameOfTheObject) {
    const DesignSource source(fileWith(storedDocuments()));
    const auto form = source.design(*source.find(DesignKind::Form, u"受注"));
    EXPECT_EQ(form->root()[u"RecordSource"], Value(Text(u"受注")));
    EXPECT_EQ(form->root()[u"OrderByOnLoad"], Value(true));
    EXPECT_EQ(form->modelVersion(), 20);
    const auto& document = *source.find(DesignKind::Report, u"一覧");
    EXPECT_EQ(source.design(document)->root()[u"Width"], Value(std::int64_t{900}));
    EXPECT_EQ(source.streams(document).path, Text(nameOf(GetParam().table)) + u": Reports/300");
    EXPECT_TRUE(source.typeInfo(document).entries.empty()); // there is none
}

TEST_P(StorePlaces, AnObjectWithoutADesignThereIsNamed) {
    const DesignSource source(fileWith(storedDocuments()));
    for (const TextView form : {u"空", u"名前だけ"}) { // with an empty one, and in no list
        const std::string problem = failureOf([&] { source.design(*source.find(DesignKind::Form, form)); });
        EXPECT_NE(problem.find(toUtf8(form)), std::string::npos) << problem;
    }
}

TEST(Stores, WhatADamagedStreamHoldsIsNamedWithItsPlace) {
    const auto sourceWith = [](TextView path, Bytes content) {
        Streams streams = storedDocuments();
        *test::find(streams, path) = std::move(content);
        return std::make_unique<DesignSource>(fileOf(withDocuments(storageTable(streams))));
    };
    const auto problemOf = [](const DesignSource& source) {
        return failureOf([&] { source.design(*source.find(DesignKind::Form, u"受注")); });
    };
    Bytes cut = form2000();
    cut.pop_back();
    EXPECT_NE(problemOf(*sourceWith(u"Forms/7/Blob", cut)).find("\"受注\" のデザインの 19 バイト目"),
              std::string::npos);
    Bytes longer = additionsOfForm();
    longer.push_back(0);
    EXPECT_NE(problemOf(*sourceWith(u"Forms/7/BlobDelta", longer)).find("\"受注\" の追加のデザインの"),
              std::string::npos);
    EXPECT_NE(problemOf(*sourceWith(u"Forms/\u0003DirData", Bytes(5))).find("受注"), std::string::npos);
    // Additions of another tree are out of date.
    const auto outOfDate = sourceWith(u"Forms/7/BlobDelta", additionsOfForm(DesignType::PageFooter));
    EXPECT_EQ(outOfDate->design(*outOfDate->find(DesignKind::Form, u"受注"))->modelVersion(), 19);
    // A form that holds a report.
    const auto report =
        sourceWith(u"Forms/7/Blob", WideBytes().object(DesignType::Report).noChildren().bytes());
    EXPECT_NE(problemOf(*report).find("種類が違います"), std::string::npos);
}

TEST_P(StorePlaces, MacrosAreFoundByTheNameOfTheObject) {
    Streams streams = storedDocuments();
    const FilePointer damaged = fileWith(streams);
    const access::MacroSource source(damaged);
    EXPECT_NE(failureOf([&] { source.sheet(*source.find(u"印刷")); }).find("\"印刷\" のシートの"),
              std::string::npos);
    Bytes header(36);
    std::fill(header.begin() + 4, header.begin() + 32, std::uint8_t{0xFF});
    *test::find(streams, u"Scripts/1/Blob") = header;
    const access::MacroSource whole(fileWith(streams));
    EXPECT_TRUE(whole.sheet(*whole.find(u"印刷")).rows.empty());
}

TEST(Stores, AListOfObjectsThatIsCutOffIsDamage) {
    const std::string whole =
        std::string(4, '\0') + "\x04\x08" + utf16(u"受注") + std::string("\x07\0\0\0", 4);
    for (std::size_t length = 1; length <= whole.size(); ++length) {
        const FilePointer file = fileOf(
            storageTable({{u"Forms/\u0003DirData",
                           Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))}}));
        const AccessStore store = AccessStore::open(*file, StoreTable::MSysAccessStorage).value();
        EXPECT_EQ(skipErrors([&] { store.objects(u"Forms"); }),
                  length == 4 || length == whole.size() ? 0 : 3049)
            << length;
    }
}

TEST_P(StorePlaces, AModuleWithoutItsStreamIsNamedAndTheOthersAreRead) {
    Streams streams = projectStreams();
    std::erase_if(streams, [](const auto& stream) { return stream.first == streamPath(u"標準"); });
    const ModuleSource source(fileWith(streams));
    EXPECT_TRUE(has(textOf(source, ModuleOwner::Module, u"標準"), noSource));
    EXPECT_EQ(textOf(source, ModuleOwner::Module, u"型"), u"Option Explicit\r\n");
}

TEST_P(StorePlaces, WhereOnlyTheCompiledCodeIsLeftEachModuleSaysSo) {
    Streams streams = projectStreams();
    for (const ProjectModule& module : fewModules) {
        constexpr std::string_view compiledCode = "\x01\x16\x03 compiled code";
        test::find(streams, streamPath(module.name))->assign(compiledCode.begin(), compiledCode.end());
    }
    const ModuleSource source(fileWith(streams));
    ASSERT_EQ(source.modules().size(), 4u);
    for (const ModuleDocument& document : source.modules()) {
        EXPECT_TRUE(has(textOf(source, document.owner, document.name), noSource));
    }
}

TEST(Stores, AModuleThatTheProjectDoesNotHaveIsNamed) {
    const std::vector<ProjectModule> others(fewModules.begin() + 1, fewModules.end());
    const ModuleSource source(fileOf(storageTable(projectStreams(others))));
    EXPECT_TRUE(has(textOf(source, ModuleOwner::Module, u"標準"), u"プロジェクトにありません"));
    EXPECT_EQ(textOf(source, ModuleOwner::Module, u"型"), u"Option Explicit\r\n");
}

TEST_P(StorePlaces, WithoutAProjectEachModuleIsNamed) {
    const ModuleSource source(fileWith({{u"VBA/AcessVBAData", Bytes(12)}}));
    EXPECT_EQ(source.modules().size(), 2u); // only the project tells which forms have code
    EXPECT_TRUE(has(textOf(source, ModuleOwner::Module, u"標準"), noProject));
}

TEST(Stores, AFileWithoutAStoreHasNoProject) {
    const ModuleSource none(fileOf(databaseWith({})));
    EXPECT_TRUE(has(textOf(none, ModuleOwner::Module, u"標準"), noProject));
}

TEST_P(StorePlaces, ADamagedDirectoryOfTheProjectIsNamedByEachModule) {
    Streams streams = projectStreams();
    test::find(streams, directoryPath)->resize(20);
    const ModuleSource source(fileWith(streams));
    EXPECT_TRUE(has(textOf(source, ModuleOwner::Module, u"標準"), u"VBA のプロジェクトの"));
}

TEST(Stores, WithoutTheListOfKindsEveryClassOfThatNameIsTheForms) {
    Streams streams = projectStreams();
    std::erase_if(streams, [](const auto& stream) { return stream.first == test::projectTextPath; });
    const ModuleSource source(fileOf(storageTable(streams)));
    EXPECT_EQ(textOf(source, ModuleOwner::Form, u"受注"), u"Sub 閉じる_Click()\r\nEnd Sub\r\n");
    EXPECT_EQ(textOf(source, ModuleOwner::Form, u"名前だけ"), u"' no form's\r\n");
    EXPECT_EQ(textOf(source, ModuleOwner::Form, u"空"), u"not listed");
}

TEST(Stores, TheTableWithRowsGoesBeforeTheOneWithPieces) {
    std::vector<ProjectModule> older = fewModules;
    older[1].spec.source = u"' older\r\n";
    const TableSpec pieces = objectsTable(compoundFile(projectStreams(older)));
    expectWhole(ModuleSource(fileOf(databaseWith({pieces, storageTable(projectStreams())}))));
    const ModuleSource other(
        fileOf(databaseWith({pieces, storageTable({{u"VBA/AcessVBAData", Bytes(12)}})})));
    EXPECT_EQ(textOf(other, ModuleOwner::Module, u"型"), u"' older\r\n");
}

TEST(Stores, TheTableOfAccess97GoesBeforeBoth) {
    DatabaseSpec spec;
    spec.tables = {storageTable(projectStreams())};
    spec.modules = {{.name = u"標準", .module = ModuleSpec{.source = u"' of Access 97\r\n"}}};
    const ModuleSource source(fileOf(spec));
    EXPECT_EQ(textOf(source, ModuleOwner::Module, u"標準"), u"' of Access 97\r\n");
}

// ---- Pieces

TEST(StorePieces, RowsOfUnusedBytesMayBeMissing) {
    Streams streams = projectStreams();
    streams.emplace_back(u"Forms/0/Blob", Bytes(4700, 1)); // 420 bytes of its last sector are not used
    Bytes file = compoundFile(streams);
    TableSpec table = objectsTable(file);
    table.rows.pop_back();
    std::swap(table.rows[1], table.rows[5]); // the order of the rows means nothing
    expectWhole(ModuleSource(fileOf(table)));
    const FilePointer opened = fileOf(table);
    const AccessStore store = AccessStore::open(*opened, StoreTable::MSysAccessObjects).value();
    EXPECT_EQ(store.stream(u"Forms/0/Blob"), Bytes(4700, 1));
}

// Nothing in a file tells that the bytes of a row are gone but that what is made of them does not fit.
TEST(StorePieces, AnyRowMayBeMissingAndEachModuleIsReadOrNamed) {
    std::vector<ProjectModule> modules = fewModules;
    // Letters that compression cannot make shorter, so that the bytes of a lost row are zeros of the text.
    std::mt19937 random(7);
    for (int line = 0; line < 100; ++line) {
        Text& source = modules[0].spec.source;
        source += u'\'';
        for (int letter = 0; letter < 60; ++letter) {
            source += static_cast<char16_t>(u'!' + random() % 94);
        }
        source += u"\r\n";
    }
    const TableSpec whole = objectsTable(compoundFile(projectStreams(modules)));
    std::size_t read = 0, named = 0, parts = 0;
    for (std::size_t missing = 0; missing < whole.rows.size(); ++missing) {
        TableSpec table = whole;
        table.rows.erase(table.rows.begin() + static_cast<std::ptrdiff_t>(missing));
        const ModuleSource source(fileOf(table));
        for (const ModuleDocument& document : source.modules()) {
            const Text text = textOf(source, document.owner, document.name); // checks what is said
            ++(has(text, document.title()) ? named : read);
            parts += has(text, u"ソースの一部がファイルにありません") ? 1 : 0;
        }
    }
    EXPECT_GT(read, named);
    EXPECT_GT(named, parts);
    EXPECT_GT(parts, 0u);
}

TEST(StorePieces, ALengthThatIsShortOfTheLastSectorLosesNothing) {
    const Bytes file = compoundFile(projectStreams());
    TableSpec table = objectsTable(file);
    Bytes head = std::get<Bytes>(table.rows[0].values[0]);
    for (const std::size_t length : {file.size() - 512, std::size_t{0}, file.size() + 512}) {
        putAt(head, 4, length, 4);
        table.rows[0].values[0] = head;
        expectWhole(ModuleSource(fileOf(table)));
    }
}

TEST(StorePieces, LengthsAndNumbersBeyondTheFileTakeNoRoom) {
    TableSpec table = objectsTable(compoundFile(projectStreams()));
    Bytes head = std::get<Bytes>(table.rows[0].values[0]);
    putAt(head, 4, 0xFFFFFFFF, 4);
    table.rows[0].values[0] = head;
    for (const std::int64_t id : {0x7FFFFFFFL, -1L, -0x80000000L, 100000L}) {
        table.rows.push_back(RowSpec{Bytes(head.size(), 9), id});
    }
    expectWhole(ModuleSource(fileOf(table)));
}

TEST(StorePieces, WhatIsNoCompoundFileIsNamed) {
    const ModuleSource source(fileOf(objectsTable(Bytes(2000, 5))));
    EXPECT_TRUE(
        has(textOf(source, ModuleOwner::Module, u"標準"), u"MSysAccessObjects の複合ファイルの 0 バイト目"));
    TableSpec empty = objectsTable({});
    empty.rows.clear();
    EXPECT_TRUE(has(textOf(ModuleSource(fileOf(empty)), ModuleOwner::Module, u"標準"), noProject));
}

// ---- Rows

TEST(StoreRows, StoragesThatLieInEachOtherAreNotReached) {
    TableSpec table = storageTable(projectStreams());
    const auto row = [&](std::int64_t id, std::int64_t storage, TextView name, std::int64_t type) {
        table.rows.push_back(RowSpec{id, storage, Text(name), type});
    };
    row(900, 901, u"a", 1);
    row(901, 900, u"b", 1);
    row(902, 902, u"c", 1); // a root of its own
    row(910, 1, u"e", 1);
    row(911, 910, u"f", 1);
    row(910, 911, u"g", 1); // would lie in itself
    row(1, 900, u"d", 1);   // the root again
    row(903, 1, u"VBA", 1); // a name that is taken
    row(904, 1, u"none", 3);
    table.rows.push_back(RowSpec{std::int64_t{905}, std::int64_t{1}}); // without a name
    const FilePointer file = fileOf(table);
    expectWhole(ModuleSource(file));
    const AccessStore store = AccessStore::open(*file, StoreTable::MSysAccessStorage).value();
    EXPECT_EQ(store.children({}).size(), 2u); // "VBA" and "e"
    EXPECT_EQ(store.children(u"e").size(), 1u);
    EXPECT_TRUE(store.children(u"e/f").empty());
    EXPECT_TRUE(store.children(u"a").empty());
}

TEST(StoreRows, AnyRowMayBeMissingAndNothingWrongIsRead) {
    const TableSpec whole = storageTable(projectStreams());
    for (std::size_t missing = 0; missing < whole.rows.size(); ++missing) {
        TableSpec table = whole;
        table.rows.erase(table.rows.begin() + static_cast<std::ptrdiff_t>(missing));
        const ModuleSource source(fileOf(table));
        EXPECT_GE(source.modules().size(), 2u);
        for (const ModuleDocument& document : source.modules()) {
            const Text text = textOf(source, document.owner, document.name);
            EXPECT_TRUE(has(text, document.title()) || has(text, u"Option") || has(text, u"Sub 閉じる") ||
                        has(text, u"' "))
                << missing << " " << toUtf8(text);
        }
    }
}

TEST(Stores, ANameThatNoPathLeadsToIsPassedOver) {
    Streams streams = projectStreams();
    streams.emplace_back(u"oo/inner", Bytes(3, 1));
    const auto namesAtRoot = [](const DatabaseSpec& spec, StoreTable table) {
        const FilePointer file = fileOf(spec);
        std::vector<Text> names;
        for (const AccessStore::Entry& entry : AccessStore::open(*file, table).value().children({})) {
            names.push_back(entry.name);
        }
        return names;
    };
    for (const TextView name : {u"", u"o/"}) {
        TableSpec rows = storageTable(streams);
        for (RowSpec& row : rows.rows) {
            if (row.values[2] == Value(Text(u"oo"))) {
                row.values[2] = Text(name);
            }
        }
        EXPECT_EQ(namesAtRoot(databaseWith({rows}), StoreTable::MSysAccessStorage),
                  std::vector<Text>{u"VBA"});

        Bytes file = compoundFile(streams);
        constexpr std::uint8_t stored[] = {'o', 0, 'o', 0, 0, 0};
        const auto at = std::search(file.begin(), file.end(), std::begin(stored), std::end(stored));
        ASSERT_NE(at, file.end());
        for (std::size_t unit = 0; unit < 2; ++unit) {
            at[static_cast<std::ptrdiff_t>(2 * unit)] =
                unit < name.size() ? static_cast<std::uint8_t>(name[unit]) : std::uint8_t{0};
        }
        const DatabaseSpec pieces = databaseWith({objectsTable(file)});
        EXPECT_EQ(namesAtRoot(pieces, StoreTable::MSysAccessObjects), std::vector<Text>{u"VBA"});
    }
}

// ---- Through the application

TEST(StoresInTheApplication, ModulesOpenAndFormsKnowOfTheirs) {
    const test::TemporaryFolder folder;
    writeDatabase(databaseWith({storageTable(projectStreams())}), folder / "a.mdb");
    const auto application = access::newTargetApplication();
    application->OpenCurrentDatabase(fromUtf8((folder / "a.mdb").native()), false);
    application->DoCmd().OpenModule(u"標準");
    const access::Module& module = application->Modules(u"標準");
    EXPECT_EQ(module.CountOfLines(), 3);
    EXPECT_EQ(module.Type(), 0);
    application->DoCmd().OpenModule(u"型");
    EXPECT_EQ(application->Modules(u"型").Type(), 1);
}

} // namespace
} // namespace relvane::samples
