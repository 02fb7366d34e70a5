// VBA modules in real files: every text against its digest, and what is said when one is missing or damaged. The
// damage is done to a copy in memory.

#include "access/module_source.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "golden_modules.h"
#include "platform/codepage.h"
#include "sha256.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

std::optional<Bytes> bytesOf(const std::string& name) {
    const auto path = test::realSample(name);
    if (!path) {
        return std::nullopt;
    }
    std::ifstream file(*path, std::ios::binary);
    return Bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

ModuleSource sourceOf(const Bytes& bytes) {
    return ModuleSource(std::make_shared<const jet::JetFile>(jet::makeMemorySource(bytes)));
}

const std::pair<std::string, ModuleOwner> owners[] = {
    {"form", ModuleOwner::Form}, {"report", ModuleOwner::Report}, {"module", ModuleOwner::Module}};

TEST(Sha256, DigestsAsItsStandardSays) {
    EXPECT_EQ(test::sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(test::sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST(ModuleFiles, TheTextsOfNwindAreThoseOfTheDigests) {
    const auto bytes = bytesOf("access97/nwind.mdb");
    const auto golden = test::goldenModules();
    if (!bytes || !golden) {
        return;
    }
    const ModuleSource source = sourceOf(*bytes);
    EXPECT_EQ(golden->size(), 15u);
    EXPECT_EQ(source.modules().size(), golden->size());
    for (const test::GoldenModule& each : *golden) {
        SCOPED_TRACE(each.row);
        const ModuleOwner owner =
            std::ranges::find(owners, each.owner, &std::pair<std::string, ModuleOwner>::first)->second;
        const ModuleDocument* document = source.find(owner, fromUtf8(each.name()));
        ASSERT_NE(document, nullptr);
        ModuleText text;
        ASSERT_NO_THROW(text = source.text(*document));
        EXPECT_EQ(static_cast<int>(text.kind()), each.type);
        EXPECT_EQ(text.lineCount(), static_cast<std::size_t>(each.countOfLines));
        EXPECT_EQ(test::sha256(encode(text.text(), latinCodePage)), each.digest);
    }
}

TEST(ModuleFiles, ModulesComeInTheOrderOfTheirContainers) {
    const auto bytes = bytesOf("access97/nwind.mdb");
    if (!bytes) {
        return;
    }
    const ModuleSource source = sourceOf(*bytes);
    std::vector<Text> titles;
    for (const ModuleDocument& document : source.modules()) {
        titles.push_back(document.title());
    }
    ASSERT_EQ(titles.size(), 15u);
    EXPECT_EQ(titles[0], u"フォーム \"Customer Orders Subform1\"");
    EXPECT_EQ(titles[10], u"レポート \"Employee Sales by Country\"");
    EXPECT_EQ(titles[12], u"モジュール \"Northwind Help Function\"");
    EXPECT_EQ(titles[13], u"モジュール \"Startup\"");
    EXPECT_EQ(titles[14], u"モジュール \"Utility Functions\"");
    EXPECT_NE(source.find(ModuleOwner::Module, u"STARTUP"), nullptr);
    EXPECT_EQ(source.find(ModuleOwner::Form, u"Startup"), nullptr);
    EXPECT_EQ(source.find(ModuleOwner::Form, u"Categories"), nullptr); // without code
}

// The lines that the compiled code of a module counts, in a table beside it: FE CA, 1, the number of statements, then
// 12 bytes for each, the upper five bits of the third byte being its lines on the screen.
std::size_t compiledLines(const jet::JetFile& file, const ModuleDocument& document) {
    constexpr ModuleRow rows[] = {ModuleRow::Form, ModuleRow::Report, ModuleRow::Module};
    const Bytes container = ModuleTable(file)
                                .row(rows[static_cast<std::size_t>(document.owner)], document.name)
                                ->bytes(u"Module");
    const jet::ByteSpan stream(vbaStream(container, u"_VBA_MODULE", u"M"), 0);
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

TEST(ModuleFiles, EveryModuleOfEveryAccess97FileHasTheLinesOfItsCompiledCode) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    struct Count {
        std::size_t modules = 0, classes = 0, lines = 0;
        bool operator==(const Count&) const = default;
    };
    std::map<std::string, Count> counts;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(*samples)) {
        const std::string folder = entry.path().parent_path().filename();
        const std::string name = entry.path().filename();
        if (entry.path().extension() != ".mdb" || (folder != "access97" && folder != "odd")) {
            continue;
        }
        std::shared_ptr<const jet::JetFile> file;
        if (skipErrors([&] { file = jet::openJetFile(entry.path().native(), {}); }) != 0) {
            continue; // no database, or one with a password
        }
        const ModuleSource source(file);
        for (const ModuleDocument& document : source.modules()) {
            SCOPED_TRACE(name + " " + toUtf8(document.title()));
            ModuleText text;
            ASSERT_NO_THROW(text = source.text(document));
            EXPECT_EQ(text.lineCount(), compiledLines(*file, document));
            EXPECT_TRUE(text.kind() == ModuleKind::Class || document.owner == ModuleOwner::Module);
            for (std::size_t line = 1; line <= text.lineCount(); ++line) {
                EXPECT_FALSE(text.line(line).starts_with(u"Attribute "));
                EXPECT_EQ(text.line(line).find(u'\0'), TextView::npos);
            }
            Count& count = counts[name];
            ++count.modules;
            count.classes += text.kind() == ModuleKind::Class ? 1 : 0;
            count.lines += text.lineCount();
        }
    }
    const std::map<std::string, Count> expected = {{"nwind.mdb", {15, 12, 923}},
                                                   {"afr.mdb", {9, 5, 1345}},
                                                   {"CodBarra39Etiquetas.mdb", {5, 2, 290}},
                                                   {"ListaArquivosDir.mdb", {1, 1, 50}}};
    EXPECT_EQ(counts, expected);
}

// What reading the document says; empty when it is read.
Text problemOf(const ModuleSource& source, ModuleOwner owner, TextView name) {
    const ModuleDocument* document = source.find(owner, name);
    if (document == nullptr) {
        return u"not listed";
    }
    try {
        source.text(*document);
        return {};
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3049);
        EXPECT_NE(error.description().find(document->title()), Text::npos) << error.what();
        return error.description();
    }
}

void expectProblem(const Bytes& bytes, TextView reason, TextView name = u"Utility Functions") {
    const Text problem = problemOf(sourceOf(bytes), ModuleOwner::Module, name);
    EXPECT_NE(problem.find(reason), Text::npos) << toUtf8(problem);
}

// The places of a text in the file.
std::vector<std::size_t> placesOf(const Bytes& bytes, std::string_view wanted) {
    std::vector<std::size_t> places;
    const std::string_view all(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    for (std::size_t at = all.find(wanted); at != all.npos; at = all.find(wanted, at + 1)) {
        places.push_back(at);
    }
    return places;
}

// Where the container of the module lies, which is in one piece.
std::size_t containerPlace(const Bytes& bytes) {
    const jet::JetFile file(jet::makeMemorySource(bytes));
    const Bytes container = ModuleTable(file).row(ModuleRow::Module, u"Utility Functions")->bytes(u"Module");
    const auto places = placesOf(bytes, {reinterpret_cast<const char*>(container.data()),
                                         std::min<std::size_t>(container.size(), 512)});
    return places.size() == 1 ? places.front() : bytes.size();
}

TEST(ModuleSource, ADamagedSourceIsNamedAndTheOthersAreRead) {
    const auto whole = bytesOf("access97/nwind.mdb");
    if (!whole) {
        return;
    }
    const std::size_t place = containerPlace(*whole);
    ASSERT_LT(place, whole->size());
    expectProblem(*whole, u"");
    EXPECT_EQ(problemOf(sourceOf(*whole), ModuleOwner::Module, u"Utility Functions"), u"");
    const auto changed = [&](std::size_t offset, std::uint8_t byte) {
        Bytes bytes = *whole;
        bytes[place + offset] = byte;
        return bytes;
    };
    expectProblem(changed(0, 0), u"0 バイト目: 見出しが正しくありません");
    expectProblem(changed(9, 'X'), u"_VBA_MODULE がありません");
    expectProblem(changed(0x24, 0x7F), u"データが途切れています");
    const Bytes damaged = changed(0, 0);
    EXPECT_EQ(problemOf(sourceOf(damaged), ModuleOwner::Module, u"Startup"), u"");
    EXPECT_EQ(problemOf(sourceOf(damaged), ModuleOwner::Form, u"Orders"), u"");
}

TEST(ModuleSource, ADamagedTextIsNamed) {
    const auto whole = bytesOf("access97/nwind.mdb");
    if (!whole) {
        return;
    }
    const auto texts = placesOf(*whole, std::string_view("\0e = \"Uti\0lity Fun\0ctions\"\r", 27));
    ASSERT_FALSE(texts.empty());
    Bytes noChain = *whole, noCopy = *whole;
    for (const std::size_t at : texts) {
        noChain[at - 18] ^= 0x01;   // the length of the chunk
        noCopy[at + 27 + 5] = 0xFF; // a copy from before the text
    }
    expectProblem(noChain, u"読み取れるソースがファイルにありません");
    expectProblem(noCopy, u"圧縮の参照先がありません");
}

TEST(ModuleSource, AModuleWithoutItsRowIsNamed) {
    auto bytes = bytesOf("access97/nwind.mdb");
    if (!bytes) {
        return;
    }
    const jet::JetFile file(jet::makeMemorySource(*bytes));
    const jet::Table* table = file.findTable(u"MSysModules2");
    ASSERT_NE(table, nullptr);
    // The rows of the table lie in its own pages; the catalogue has the name in others.
    const std::size_t pageSize = file.pages().format().pageSize;
    for (const std::size_t at : placesOf(*bytes, "Utility Functions")) {
        const std::size_t page = at / pageSize * pageSize;
        const std::uint32_t owner = (*bytes)[page + 4] | static_cast<std::uint32_t>((*bytes)[page + 5] << 8);
        if ((*bytes)[page] == 1 && owner == table->definition().page) {
            (*bytes)[at] = 'X';
        }
    }
    expectProblem(*bytes, u"モジュールの行がありません");
}

// A file that no newer Access has opened: the project is nowhere else.
constexpr const char* oneStore = "access97/CodBarra39Etiquetas.mdb";

TEST(ModuleSource, ADamagedTableIsNamedByTheModules) {
    auto bytes = bytesOf(oneStore);
    if (!bytes) {
        return;
    }
    {
        const jet::JetFile file(jet::makeMemorySource(*bytes));
        (*bytes)[file.findTable(u"MSysModules2")->definition().page * file.pages().format().pageSize] = 1;
    }
    expectProblem(*bytes, u"ページ ", u"BasEtiquetas");
}

// Without the row of the project.
Bytes withoutProject(Bytes bytes) {
    const auto rows = placesOf(bytes, "MSysDb");
    EXPECT_FALSE(rows.empty());
    for (const std::size_t at : rows) {
        bytes[at] = 'X';
    }
    return bytes;
}

TEST(ModuleSource, AMissingProjectIsNamedByEachModule) {
    const auto bytes = bytesOf(oneStore);
    if (!bytes) {
        return;
    }
    const ModuleSource source = sourceOf(withoutProject(*bytes));
    EXPECT_EQ(source.modules().size(), 5u);
    for (const ModuleDocument& document : source.modules()) {
        EXPECT_NE(problemOf(source, document.owner, document.name).find(u"プロジェクトがありません"),
                  Text::npos);
    }
}

// A newer Access has added its own copy of everything to these.
TEST(ModuleSource, WithoutTheProjectTheCopyOfANewerAccessGivesTheSameTexts) {
    for (const auto& [name, modules] : {std::pair("access97/nwind.mdb", 15u), {"access97/afr.mdb", 9u}}) {
        const auto bytes = bytesOf(name);
        if (!bytes) {
            return;
        }
        SCOPED_TRACE(name);
        const ModuleSource first = sourceOf(*bytes), second = sourceOf(withoutProject(*bytes));
        EXPECT_EQ(first.modules().size(), modules);
        ASSERT_EQ(second.modules().size(), modules);
        for (std::size_t i = 0; i < modules; ++i) {
            const ModuleDocument& document = first.modules()[i];
            EXPECT_EQ(document.title(), second.modules()[i].title());
            const ModuleText text = first.text(document), copy = second.text(second.modules()[i]);
            EXPECT_EQ(text.text(), copy.text()) << toUtf8(document.title());
            EXPECT_EQ(text.kind(), copy.kind());
        }
    }
}

} // namespace
} // namespace relvane::access
