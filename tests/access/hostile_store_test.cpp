// A small application in the store of Access 2000, as the builder writes it, and then damaged: whatever a byte of it says,
// each object is read or named with what is wrong.

#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "access/compound_file.h"
#include "access/design_source.h"
#include "access/macro_source.h"
#include "access/module_source.h"
#include "sample_builder/access_store_writer.h"
#include "sample_builder/byte_writer.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/design_writer.h"
#include "sample_builder/macro_writer.h"
#include "sample_builder/vba_project_writer.h"
#include "support/file_formats.h"
#include "support/wide_bytes.h"

namespace relvane::access {
namespace {

using samples::CompoundFileWriter;
using samples::DatabaseSpec;
using samples::DesignObjectSpec;
using samples::DesignSpec;
using samples::FileFormat;
using samples::Streams;
using samples::TableSpec;
using samples::TextCoding;
using test::WideBytes;

constexpr TextCoding wide{japaneseCodePage, true};

DesignSpec formDesign() {
    DesignObjectSpec section{.type = DesignType::Section,
                             .properties = {{u"Name", Text(u"詳細")}, {u"Height", std::int64_t{900}}}};
    section.children = {
        {.type = DesignType::TextBox, .properties = {{u"Name", Text(u"受注番号")}}},
        {.type = DesignType::CommandButton,
         .properties = {{u"Name", Text(u"閉じる")}, {u"OnClick", Text(u"[Event Procedure]")}}}};
    return {
        .root = {
            .type = DesignType::Form,
            .properties = {{u"RecordSource", Text(u"受注")},
                           {u"PictureData",
                            Bytes(4515, 0x28)}}, // makes it lie in whole sectors, the last one nearly empty
            .children = {section}}};
}

DesignSpec reportDesign() {
    return {
        .root = {.type = DesignType::Report,
                 .properties = {{u"Caption", Text(u"受注一覧")}},
                 .children = {{.type = DesignType::Section,
                               .properties = {{u"Name", Text(u"明細")}, {u"Height", std::int64_t{300}}}}}}};
}

Bytes sheet() {
    return samples::macroSheet(
        {.rows = {{.name = u"開く", .condition = u"[数量]>0", .action = 23, .arguments = {u"受注"}},
                  {.comment = u"注意"}}},
        wide);
}

constexpr TextView blobPath = u"Forms/0/Blob", deltaPath = u"Forms/0/BlobDelta";

Streams application() {
    Streams streams = samples::projectStreams(
        {{u"Form_受注", {.source = u"Sub 閉じる_Click()\r\nEnd Sub\r\n", .isClass = true}, true},
         {u"標準", {.source = u"Option Explicit\r\n"}}},
        japaneseCodePage, 0x0411);
    const auto add = [&](const Text& container, const samples::StoredObject& object) {
        std::ranges::move(samples::containerStreams(container, {object}), std::back_inserter(streams));
    };
    add(u"Forms", {.name = u"受注",
                   .hasModule = true,
                   .streams = {{u"Blob", samples::designStream(formDesign(), wide)},
                               {u"BlobDelta", {}},
                               {u"TypeInfo", samples::typeInfoStream(formDesign(), japaneseCodePage)}}});
    add(u"Reports", {.name = u"一覧",
                     .hasModule = false,
                     .streams = {{u"Blob", samples::designStream(reportDesign(), wide)},
                                 {u"TypeInfo", samples::typeInfoStream(reportDesign(), japaneseCodePage)}}});
    add(u"Scripts", {.name = u"印刷", .streams = {{u"Blob", sheet()}}});
    add(u"Modules", {.name = u"標準"});
    return streams;
}

Bytes& find(Streams& streams, TextView path) {
    const auto found = std::ranges::find(streams, path, &std::pair<Text, Bytes>::first);
    return found == streams.end() ? throw std::out_of_range(toUtf8(path)) : found->second;
}

Bytes bytesOf(const Streams& streams) {
    return CompoundFileWriter().streams(streams).bytes();
}

DatabaseSpec databaseWith(TableSpec store, FileFormat format) {
    DatabaseSpec spec;
    spec.format = format;
    spec.accessVersion.reset(); // no tables of Access but this one
    spec.tables = {std::move(store)};
    spec.forms = {{.name = u"受注"}};
    spec.reports = {{.name = u"一覧"}};
    const auto add = [&](TextView name, jet::ObjectType type) {
        spec.otherObjects.push_back({.name = Text(name), .type = static_cast<int>(type)});
    };
    add(u"印刷", jet::ObjectType::Macro);
    add(u"標準", jet::ObjectType::Module);
    return spec;
}

std::shared_ptr<const jet::JetFile> fileOf(Bytes database) {
    return std::make_shared<const jet::JetFile>(jet::makeMemorySource(std::move(database)));
}

// Reads every object, and counts those that could be. What is said of the others has to name them.
std::size_t objectsReadFrom(const std::shared_ptr<const jet::JetFile>& file) {
    std::size_t read = 0;
    const auto tryTo = [&](const Text& title, const std::function<void()>& act) {
        try {
            act();
            ++read;
        } catch (const RunTimeError& error) {
            EXPECT_TRUE(error.number() == 3049 || error.number() == 3343) << error.number();
            EXPECT_NE(error.description().find(title), Text::npos) << error.what();
        }
    };
    const DesignSource designs(file);
    for (const auto* list : {&designs.forms(), &designs.reports()}) {
        for (const DesignDocument& document : *list) {
            tryTo(document.title(), [&] { designs.design(document); });
            tryTo(document.title(), [&] { designs.typeInfo(document); });
        }
    }
    const MacroSource macros(file);
    for (const MacroDocument& macro : macros.macros()) {
        tryTo(macro.title(), [&] { macros.sheet(macro); });
    }
    const ModuleSource modules(file);
    for (const ModuleDocument& module : modules.modules()) {
        tryTo(module.title(), [&] { modules.text(module); });
    }
    return read;
}

// Two designs, the lists of names beside them, a macro, two modules.
constexpr std::size_t all = 7;

// The store of a file of Access 2000, and of one of Access 97 that it has opened.
class HostileStore : public testing::TestWithParam<FileFormat> {
protected:
    static std::shared_ptr<const jet::JetFile> fileOf(TableSpec table) {
        return relvane::access::fileOf(samples::databaseBytes(databaseWith(std::move(table), GetParam())));
    }
    static std::shared_ptr<const jet::JetFile> fileOf(const Bytes& store) {
        return fileOf(samples::storeTable(store, GetParam()));
    }
    static std::shared_ptr<const jet::JetFile> fileOf(const Streams& streams) {
        return fileOf(bytesOf(streams));
    }
};
INSTANTIATE_TEST_SUITE_P(Formats, HostileStore, test::everyFormat, test::formatName);

TEST_P(HostileStore, TheWholeApplicationIsRead) {
    EXPECT_EQ(objectsReadFrom(fileOf(application())), all);
    const DesignSource designs(fileOf(application()));
    const auto form = designs.design(*designs.find(DesignKind::Form, u"受注"));
    EXPECT_EQ(form->version(), 19);
    EXPECT_EQ(form->root()[u"RecordSource"], Value(Text(u"受注")));
    EXPECT_TRUE(agrees(designs.typeInfo(*designs.find(DesignKind::Form, u"受注")), *form));
}

// ---- Pieces

// Those of Access 2000 are longer than what is unused anywhere.
TEST_P(HostileStore, PiecesThatNoStreamUsesHaveNoRowAndNothingIsMissed) {
    CompoundFileWriter writer;
    const Bytes file = writer.streams(application()).bytes();
    const TableSpec table = samples::storeTable(file, GetParam(), writer.unused());
    const std::size_t missing = samples::storeTable(file, GetParam()).rows.size() - table.rows.size();
    EXPECT_EQ(missing > 0, GetParam() == FileFormat::Access97);
    EXPECT_EQ(objectsReadFrom(fileOf(table)), all);
}

TEST_P(HostileStore, AnyPieceMayBeMissing) {
    const TableSpec whole = samples::storeTable(bytesOf(application()), GetParam());
    std::size_t read = 0;
    for (std::size_t missing = 0; missing < whole.rows.size(); ++missing) {
        TableSpec table = whole;
        table.rows.erase(table.rows.begin() + static_cast<std::ptrdiff_t>(missing));
        read += objectsReadFrom(fileOf(table));
    }
    EXPECT_GT(read, 0u);
}

// ---- Designs

Bytes delta(DesignType section) {
    return WideBytes()
        .object(DesignType::Form)
        .boolean(0x132, 0x1c5, 1) // OrderByOnLoad
        .oneChild()
        .object(section)
        .children(2)
        .object(DesignType::TextBox)
        .noChildren()
        .object(DesignType::CommandButton)
        .noChildren()
        .bytes();
}

TEST_P(HostileStore, AdditionsOfTheSameTreeAreTakenAndStaleOnesAreNot) {
    for (const auto& [section, version] :
         {std::pair(DesignType::Section, 20), std::pair(DesignType::FormHeader, 19)}) {
        Streams streams = application();
        find(streams, deltaPath) = delta(section);
        const DesignSource designs(fileOf(streams));
        const auto form = designs.design(*designs.find(DesignKind::Form, u"受注"));
        EXPECT_EQ(form->modelVersion(), version);
        EXPECT_EQ(form->root().value(u"OrderByOnLoad").has_value(), version == 20);
        EXPECT_EQ(form->controls().size(), 2u);
    }
}

TEST_P(HostileStore, ADesignThatIsCutOffNamesItsFormAndTheOthersAreRead) {
    Streams streams = application();
    find(streams, blobPath).resize(4600);
    EXPECT_EQ(objectsReadFrom(fileOf(streams)), all - 1);
}

// ---- Sectors

// Where the first sector of the design, which fills whole ones, stands in the file.
std::uint32_t firstSectorOfDesign(const Bytes& file) {
    const CompoundFile reader(file, u"T");
    const Bytes design = samples::designStream(formDesign(), wide);
    const auto found = std::search(file.begin(), file.end(), design.begin(), design.begin() + 256);
    return static_cast<std::uint32_t>((found - file.begin()) / 512 - 1);
}

TEST_P(HostileStore, AChainOfSectorsThatRunsInACircleOrEndsIsDamageOfItsStreamAlone) {
    CompoundFileWriter writer;
    const Bytes whole = writer.streams(application()).bytes();
    const std::uint32_t first = firstSectorOfDesign(whole);
    for (const std::uint32_t next : {first, first + 1, 0u, 0x7FFFFFFFu, 0xFFFFFFFEu}) {
        Bytes file = whole;
        samples::putAt(file, writer.nextPlace(first + 1), next, 4);
        // Only the form's design lies there, and without it the list of names is not read either.
        EXPECT_EQ(objectsReadFrom(fileOf(file)), all - 2) << next;
    }
}

TEST_P(HostileStore, ADirectoryThatRunsInACircleIsDamageOfEveryObject) {
    CompoundFileWriter writer;
    const Bytes whole = writer.streams(application()).bytes();
    for (const std::size_t link : {0x44u, 0x48u, 0x4Cu}) {
        Bytes file = whole;
        samples::putAt(file, writer.entryPlace(1) + link, 1, 4);
        EXPECT_EQ(objectsReadFrom(fileOf(file)), 0u) << link;
    }
}

// ---- Everything

// The database with its store, in which one byte after the other can be changed without writing it anew.
class Database {
public:
    explicit Database(const Bytes& store, FileFormat format) : store_(store) {
        bytes_ = samples::databaseBytes(databaseWith(samples::storeTable(store, format), format));
        // A second one of the same sizes, whose pieces can be told from one another, says where each lies.
        const TableSpec pieces = samples::storeTable(store, format);
        pieceSize_ = static_cast<std::size_t>(pieces.columns.at(0).size);
        Bytes marked(store.size());
        for (std::size_t at = 0; at < marked.size(); at += pieceSize_) {
            std::fill_n(marked.begin() + static_cast<std::ptrdiff_t>(at),
                        std::min(pieceSize_, marked.size() - at), std::uint8_t{0xA5});
            if (at + 4 <= marked.size()) {
                samples::putAt(marked, at, at, 4);
            }
        }
        const Bytes other = samples::databaseBytes(databaseWith(samples::storeTable(marked, format), format));
        EXPECT_EQ(other.size(), bytes_.size());
        for (std::size_t at = 0; at < marked.size(); at += pieceSize_) {
            const auto begin = marked.begin() + static_cast<std::ptrdiff_t>(at);
            const auto end = begin + static_cast<std::ptrdiff_t>(std::min(pieceSize_, marked.size() - at));
            const auto found = std::search(other.begin(), other.end(), begin, end);
            EXPECT_NE(found, other.end());
            places_.push_back(static_cast<std::size_t>(found - other.begin()));
        }
    }

    Bytes with(std::size_t place, std::uint8_t change) const {
        Bytes changed = bytes_;
        std::uint8_t& byte = changed.at(places_.at(place / pieceSize_) + place % pieceSize_);
        EXPECT_EQ(byte, store_.at(place));
        byte = static_cast<std::uint8_t>(byte ^ change);
        return changed;
    }

private:
    Bytes store_, bytes_;
    std::size_t pieceSize_ = 0;
    std::vector<std::size_t> places_;
};

// The bytes of the picture, which nobody reads here, are many and say nothing.
bool isPicture(const Bytes& file, std::size_t place) {
    constexpr std::size_t surroundings = 64;
    const std::size_t begin = place < surroundings ? 0 : place - surroundings;
    const std::size_t end = std::min(file.size(), place + surroundings);
    return std::all_of(file.begin() + static_cast<std::ptrdiff_t>(begin),
                       file.begin() + static_cast<std::ptrdiff_t>(end),
                       [](std::uint8_t byte) { return byte == 0x28; });
}

TEST(HostileStoreBytes, AnyMayBeAnother) {
    const Bytes store = bytesOf(application());
    const Database database(store, FileFormat::Access2000);
    std::size_t changes = 0, read = 0;
    for (std::size_t place = 0; place < store.size(); ++place) {
        if (!isPicture(store, place)) {
            ++changes;
            read += objectsReadFrom(fileOf(database.with(place, place % 2 == 0 ? 0xFF : 0x01)));
        }
        if (testing::Test::HasFailure()) {
            FAIL() << "byte " << place;
        }
    }
    EXPECT_GT(changes, 8000u);
    EXPECT_GT(read, changes * 5); // most bytes belong to one object, or to none
}

TEST(HostileStoreBytes, AnyStreamMayEndAnywhere) {
    const Streams whole = application();
    for (std::size_t number = 0; number < whole.size(); ++number) {
        const std::size_t size = whole[number].second.size();
        for (std::size_t length = 0; length<size; length += length> 300 && length + 300 < size ? 97 : 1) {
            Streams streams = whole;
            streams[number].second.resize(length);
            EXPECT_LE(
                objectsReadFrom(fileOf(samples::databaseBytes(databaseWith(
                    samples::storeTable(bytesOf(streams), FileFormat::Access2000), FileFormat::Access2000)))),
                all);
            if (testing::Test::HasFailure()) {
                FAIL() << toUtf8(whole[number].first) << " ends at " << length;
            }
        }
    }
}

TEST(HostileStoreBytes, TheFileMayEndAnywhere) {
    const Bytes whole = bytesOf(application());
    std::size_t damaged = 0;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        const int error = skipErrors([&] {
            const CompoundFile reader(file, u"T");
            for (const CompoundEntry& entry : reader.entries()) {
                reader.stream(entry.id);
            }
        });
        EXPECT_TRUE(error == 0 || error == 3049) << length;
        damaged += error == 0 ? 0 : 1;
    }
    EXPECT_EQ(damaged, whole.size());
}

} // namespace
} // namespace relvane::access
