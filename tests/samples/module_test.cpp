// The VBA modules of the builder: their bytes, and what the project's own reader makes of them.

#include <fstream>
#include <iterator>
#include <random>

#include <gtest/gtest.h>

#include "access/design_source.h"
#include "access/module_procedures.h"
#include "access/module_source.h"
#include "access/target_application.h"
#include "access/vba_compression.h"
#include "platform/codepage.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"
#include "sample_builder/many_modules.h"
#include "sample_builder/vba_compressor.h"
#include "sample_builder/vba_project_writer.h"
#include "support/file_formats.h"
#include "support/samples.h"

namespace relvane::samples {
namespace {

using access::ModuleDocument;
using access::ModuleKind;
using access::ModuleOwner;
using access::ModuleSource;
using access::ModuleText;

ModuleText textOf(const ModuleSource& source, ModuleOwner owner, TextView name) {
    const ModuleDocument* document = source.find(owner, name);
    return document == nullptr ? throw std::out_of_range(toUtf8(name)) : source.text(*document);
}

DatabaseSpec withModule(ModuleSpec module, const Text& name = u"M") {
    DatabaseSpec spec;
    spec.modules = {{.name = name, .module = std::move(module)}};
    return spec;
}

// Modules in files of each format.
class SampleModules : public testing::TestWithParam<FileFormat> {
protected:
    static DatabaseSpec inFormat(const DatabaseSpec& spec) { return savedAs(spec, GetParam()); }
    static ModuleSource sourceOf(const DatabaseSpec& spec) {
        return ModuleSource(
            std::make_shared<const jet::JetFile>(jet::makeMemorySource(databaseBytes(inFormat(spec)))));
    }
    // What is read of a module that was written so.
    static ModuleText writtenAndRead(const ModuleSpec& module) {
        return textOf(sourceOf(withModule(module)), ModuleOwner::Module, u"M");
    }
};
INSTANTIATE_TEST_SUITE_P(Formats, SampleModules, test::everyFormat, test::formatName);

class ManyModules : public SampleModules {};
INSTANTIATE_TEST_SUITE_P(Formats, ManyModules, test::everyFormat, test::formatName);

std::string roundTrip(const std::string& text) {
    const Bytes bytes = access::decompressVba(compressVba(text), u"M", u"S");
    return {bytes.begin(), bytes.end()};
}

// Bytes in which hardly anything repeats, so that compression would make them longer.
std::string randomLetters(std::size_t count) {
    std::mt19937 random(7);
    std::string letters;
    for (std::size_t i = 0; i < count; ++i) {
        letters += static_cast<char>('!' + random() % 94);
    }
    return letters;
}

Text randomLine(std::size_t length) {
    return u"'" + fromUtf8(randomLetters(length)) + u"\r\n";
}

// ---- Compression

TEST(VbaCompressor, RepeatedTextsBecomeShorterAndReadBackAtEveryLength) {
    std::string text;
    for (int i = 0; text.size() < 9000; ++i) {
        text += "    lngTotal = lngTotal + " + std::to_string(i % 17) + "\r\n";
    }
    for (const std::size_t length : std::initializer_list<std::size_t>{
             1,   2,   3,   4,   15,   16,   17,   18,   32,   33,   34,   64,   65,   128, 129,
             256, 257, 512, 513, 1024, 1025, 2048, 2049, 4095, 4096, 4097, 8192, 8193, 9000}) {
        EXPECT_EQ(roundTrip(text.substr(0, length)), text.substr(0, length)) << length;
    }
    EXPECT_LT(compressVba(text).size(), text.size() / 4);
}

TEST(VbaCompressor, TheLongestCopyReachesToTheEndOfTheChunk) {
    const std::string text(4096, 'x');
    EXPECT_EQ(roundTrip(text), text);
    // Signature, header, flags, one byte, one copy of 4095.
    EXPECT_EQ(compressVba(text), (Bytes{1, 0x03, 0xB0, 0x02, 'x', 0xFC, 0x0F}));
}

TEST(VbaCompressor, ATextThatDoesNotRepeatIsStoredAsItIs) {
    const std::string text = randomLetters(2 * 4096);
    const Bytes stored = compressVba(text);
    EXPECT_EQ(stored.size(), 1 + 2 * (2 + 4096u));
    EXPECT_EQ(stored[1] | stored[2] << 8, 0x3FFF);
    EXPECT_EQ(roundTrip(text), text);
}

TEST(VbaCompressor, TheLastChunkStoredAsItIsIsFilledWithZeros) {
    const std::string text = randomLetters(4096 + 4000);
    EXPECT_EQ(roundTrip(text), text + std::string(96, '\0'));
}

TEST(VbaCompressor, NothingIsTheSignatureAlone) {
    EXPECT_EQ(compressVba(""), Bytes{1});
}

// ---- Modules

TEST_P(SampleModules, SourceReadsBackLineByLine) {
    const ModuleText text =
        writtenAndRead({.source = u"Option Explicit\r\n\r\n    x = 1  \r\n' 表示\t終わり\r\n\r\n"});
    EXPECT_EQ(text.kind(), ModuleKind::Standard);
    EXPECT_EQ(text.text(), u"Option Explicit\r\n\r\n    x = 1  \r\n' 表示\t終わり\r\n\r\n");
    EXPECT_EQ(text.lineCount(), 5u);
}

TEST_P(SampleModules, ANewModuleHasItsOptionLines) {
    EXPECT_EQ(writtenAndRead({}).text(), newModuleSource);
    DatabaseSpec spec;
    spec.modules = {{.name = u"M"}};
    EXPECT_EQ(textOf(sourceOf(spec), ModuleOwner::Module, u"M").text(), newModuleSource);
}

TEST_P(SampleModules, AnEmptyModuleHasNoLine) {
    EXPECT_EQ(writtenAndRead({.source = {}}).lineCount(), 0u);
    EXPECT_EQ(writtenAndRead({.source = {}, .isClass = true}).lineCount(), 0u);
}

TEST(SampleModuleRows, AttributeLinesStandAtTheHeadAndClassesHaveMore) {
    const auto attributes = [](bool isClass) {
        const Bytes container =
            moduleContainer({u"名前", {.source = u"x\r\n", .isClass = isClass}}, japaneseCodePage);
        const auto stream = access::vbaStream(container, u"_VBA_MODULE", u"M");
        const auto place = access::findVbaText(stream, 0);
        return decode(access::decompressVba(stream.subspan(place.value()), u"M", u"S"), japaneseCodePage);
    };
    EXPECT_EQ(attributes(false), u"Attribute VB_Name = \"名前\"\r\nx\r\n");
    const Text ofClass = attributes(true);
    EXPECT_TRUE(ofClass.starts_with(u"Attribute VB_Name = \"名前\"\r\nAttribute VB_Base = \"0{"))
        << toUtf8(ofClass);
    EXPECT_TRUE(ofClass.ends_with(u"}\"\r\nAttribute VB_Creatable = True\r\n"
                                  u"Attribute VB_PredeclaredId = True\r\nAttribute VB_Exposed = False\r\n"
                                  u"Attribute VB_TemplateDerived = False\r\n"
                                  u"Attribute VB_Customizable = False\r\nx\r\n"))
        << toUtf8(ofClass);
}

TEST_P(SampleModules, AttributeLinesWithinTheSourceAreStoredAndNotShown) {
    const ModuleText text = writtenAndRead({.source = u"Private WithEvents frm As Form\r\n"
                                                      u"Attribute frm.VB_VarHelpID = -1\r\nDim i\r\n",
                                            .isClass = true});
    EXPECT_EQ(text.kind(), ModuleKind::Class);
    EXPECT_EQ(text.text(), u"Private WithEvents frm As Form\r\nDim i\r\n");
}

TEST_P(SampleModules, TextsOverSeveralChunksReadBack) {
    Text source;
    for (int i = 0; i < 2000; ++i) {
        source += u"    Debug.Print \"行 " + fromUtf8(std::to_string(i)) + u"\"\r\n";
    }
    ASSERT_GT(encode(source, japaneseCodePage).size(), 10u * 4096);
    const ModuleText text = writtenAndRead({.source = source});
    EXPECT_EQ(text.lineCount(), 2000u);
    EXPECT_EQ(text.text(), source);
}

TEST_P(SampleModules, ChunksThatCannotBeCompressedReadBackWhereverTheyStand) {
    const Text code = u"Option Explicit\r\n";
    for (const Text& source : {Text(code + randomLine(9000)), Text(randomLine(9000) + code),
                               Text(code + randomLine(4096) + code), Text(randomLine(3900))}) {
        EXPECT_EQ(writtenAndRead({.source = source}).text(), source);
    }
}

TEST_P(SampleModules, EverythingThatTheCodePageHasReadsBack) {
    const Text source = u"' ｱｲｳ ｶﾞｷﾞ ﾊﾟ ー～－ ①Ⅳ㈱ 髙﨑 ソ表能十予 \\ 　全角の空白\r\n"
                        u"Private Sub 売上高調査_Click()\r\nEnd Sub\r\n";
    EXPECT_EQ(writtenAndRead({.source = source}).text(), source);
}

TEST_P(SampleModules, ACharacterThatTheCodePageLacksIsRefused) {
    EXPECT_THROW(databaseBytes(inFormat(withModule({.source = u"' 😀\r\n"}))), std::invalid_argument);
}

TEST_P(SampleModules, LatinModulesAreInTheirOwnCodePage) {
    DatabaseSpec spec = withModule({.source = u"' Größe\r\n"}, u"Übersicht");
    spec.codePage = latinCodePage;
    spec.sortOrder = 0x0409;
    EXPECT_EQ(textOf(sourceOf(spec), ModuleOwner::Module, u"Übersicht").text(), u"' Größe\r\n");
}

TEST_P(SampleModules, NamesOf64CharactersAreKept) {
    const Text name(64, u'長');
    DatabaseSpec spec = withModule({.source = u"' m\r\n"}, name);
    spec.forms = {{.name = name,
                   .design = DesignSpec{.root = {.type = DesignType::Form}},
                   .module = ModuleSpec{.source = u"' f\r\n"}}};
    spec.reports = {{.name = name,
                     .design = DesignSpec{.root = {.type = DesignType::Report}},
                     .module = ModuleSpec{.source = u"' r\r\n"}}};
    const ModuleSource source = sourceOf(spec);
    EXPECT_EQ(textOf(source, ModuleOwner::Module, name).text(), u"' m\r\n");
    EXPECT_EQ(textOf(source, ModuleOwner::Form, name).text(), u"' f\r\n");
    EXPECT_EQ(textOf(source, ModuleOwner::Report, name).text(), u"' r\r\n");
}

TEST_P(SampleModules, FormsAndReportsWithAModuleAreClasses) {
    DatabaseSpec spec;
    spec.forms = {{.name = u"注文", .module = ModuleSpec{.source = u"' f\r\n"}}};
    const ModuleText text = textOf(sourceOf(spec), ModuleOwner::Form, u"注文");
    EXPECT_EQ(text.kind(), ModuleKind::Class);
    EXPECT_EQ(text.text(), u"' f\r\n");
}

TEST(SampleModuleRows, TheProjectIsThereAsSoonAsOneObjectHasAModule) {
    const auto rows = [](const DatabaseSpec& spec) {
        const jet::JetFile file(jet::makeMemorySource(databaseBytes(spec)));
        return access::ModuleTable(file).contains(access::ModuleRow::Project, {});
    };
    EXPECT_FALSE(rows({}));
    EXPECT_TRUE(rows(withModule({})));
}

TEST_P(SampleModules, AFileWithoutTheTablesOfAccessListsModulesAndHasNoText) {
    DatabaseSpec spec;
    spec.accessVersion.reset();
    spec.modules = {{.name = u"M"}};
    const ModuleSource source = sourceOf(spec);
    ASSERT_EQ(source.modules().size(), 1u);
    EXPECT_EQ(skipErrors([&] { source.text(source.modules().at(0)); }), 3049);
    EXPECT_THROW(databaseBytes([&] {
                     spec.modules = {{.name = u"M", .module = ModuleSpec()}};
                     return inFormat(spec);
                 }()),
                 std::invalid_argument);
}

// ---- Hard cases

TEST_P(SampleModules, AnOffsetOfZeroInTheDirectoryIsSearchedFor) {
    EXPECT_EQ(writtenAndRead({.source = u"' x\r\n", .directoryKnowsOffset = false}).text(), u"' x\r\n");
}

TEST_P(SampleModules, CompiledCodeBeforeTheTextIsSkippedEvenWhenItLooksLikeText) {
    Bytes decoys;
    for (int i = 0; i < 300; ++i) {
        const Bytes decoy = {1, 0x0B, 0xB0, 0, 'A', 't', 't', 'r', 'i', 'b', 'u', 't', 0xFE};
        decoys.insert(decoys.end(), decoy.begin(), decoy.end());
    }
    for (const bool known : {true, false}) {
        EXPECT_EQ(
            writtenAndRead({.source = u"' x\r\n", .compiledCode = decoys, .directoryKnowsOffset = known})
                .text(),
            u"' x\r\n");
    }
    EXPECT_EQ(writtenAndRead({.source = u"' y\r\n", .compiledCode = Bytes(300'000, 1)}).text(), u"' y\r\n");
}

TEST_P(SampleModules, DamageIsOfOneModuleAndNamesIt) {
    for (const ModuleDamage damage :
         {ModuleDamage::NotStored, ModuleDamage::NotInProject, ModuleDamage::CutOff}) {
        SCOPED_TRACE(static_cast<int>(damage));
        DatabaseSpec spec = withModule({.source = u"' damaged\r\n", .damage = damage}, u"壊れた");
        spec.modules.push_back({.name = u"良い", .module = ModuleSpec{.source = u"' good\r\n"}});
        const ModuleSource source = sourceOf(spec);
        EXPECT_EQ(source.modules().size(), 2u);
        try {
            textOf(source, ModuleOwner::Module, u"壊れた");
            ADD_FAILURE() << "was read";
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number(), 3049);
            EXPECT_NE(error.description().find(u"モジュール \"壊れた\""), Text::npos);
        }
        EXPECT_EQ(textOf(source, ModuleOwner::Module, u"良い").text(), u"' good\r\n");
    }
}

// ---- Descriptions

TEST(ModuleDescription, LinesBehindBarsAreTheSourceAsTheyStand) {
    const DatabaseSpec spec = parseDescription("module M\n  class\n"
                                               "  |Option Explicit\n  |\n"
                                               "  |    x = \"a # \"\"b\"\" ↵\" ' |  \n"
                                               "  hidden\n  |End Sub\r\n");
    const DocumentSpec& module = spec.modules.at(0);
    EXPECT_TRUE(module.hidden);
    EXPECT_TRUE(module.module->isClass);
    EXPECT_EQ(module.module->source,
              u"Option Explicit\r\n\r\n    x = \"a # \"\"b\"\" ↵\" ' |  \r\nEnd Sub\r\n");
}

TEST(ModuleDescription, AFormHasAModuleWithItsSourceOrByCodeAlone) {
    const DatabaseSpec spec = parseDescription("form A\n set Caption x\nform B\n code\nreport C\n |' c\n");
    EXPECT_FALSE(spec.forms.at(0).module);
    EXPECT_EQ(spec.forms.at(1).module->source, newModuleSource);
    EXPECT_EQ(spec.reports.at(0).module->source, u"' c\r\n");
}

TEST(ModuleDescription, HardCasesHaveTheirWords) {
    const DatabaseSpec spec = parseDescription("module A\n empty\n compiled 01FF*2\n no-offset\n"
                                               "module B\n not-stored\nmodule C\n not-in-project\n"
                                               "module D\n cut-off\n");
    EXPECT_EQ(spec.modules.at(0).module->source, u"");
    EXPECT_EQ(spec.modules.at(0).module->compiledCode, (Bytes{1, 0xFF, 1, 0xFF}));
    EXPECT_FALSE(spec.modules.at(0).module->directoryKnowsOffset);
    EXPECT_EQ(spec.modules.at(1).module->damage, ModuleDamage::NotStored);
    EXPECT_EQ(spec.modules.at(2).module->damage, ModuleDamage::NotInProject);
    EXPECT_EQ(spec.modules.at(3).module->damage, ModuleDamage::CutOff);
}

TEST(ModuleDescription, SourceOfAnythingElseIsRefused) {
    EXPECT_THROW(parseDescription("module A\ntable t\n |x\n"), std::invalid_argument);
    EXPECT_THROW(parseDescription("macro A\n |x\n"), std::invalid_argument);
    EXPECT_THROW(parseDescription("|x\n"), std::invalid_argument);
}

// ---- Many modules

TEST_P(ManyModules, HaveAsManyLinesAndProceduresAsAsked) {
    const ModuleSource source = sourceOf(manyModules(7, 1000, 33));
    EXPECT_EQ(source.modules().size(), 7u);
    std::size_t lines = 0, procedures = 0, classes = 0;
    for (const ModuleDocument& document : source.modules()) {
        const ModuleText text = source.text(document);
        lines += text.lineCount();
        procedures += access::ModuleProcedures(text).all().size();
        classes += text.kind() == ModuleKind::Class ? 1 : 0;
        EXPECT_EQ(text.text().find(u'#'), Text::npos) << "a place for a number that was not filled";
    }
    EXPECT_EQ(lines, 1000u);
    EXPECT_EQ(procedures, 33u);
    EXPECT_EQ(classes, 1u);
}

TEST(ManyModulesSpec, TooFewLinesAreRefused) {
    EXPECT_THROW(manyModules(1, 20, 2), std::invalid_argument);
}

TEST_P(ManyModules, ExportedFilesHaveTheSameLines) {
    const test::TemporaryFolder folder;
    const DatabaseSpec spec = manyModules(4, 400, 8);
    exportModules(spec, folder / "files");
    const ModuleSource source = sourceOf(spec);
    for (const ModuleDocument& document : source.modules()) {
        const bool isClass = source.text(document).kind() == ModuleKind::Class;
        std::ifstream file(folder / "files" / (toUtf8(document.name) + (isClass ? ".cls" : ".bas")),
                           std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), {});
        EXPECT_EQ(decode(Bytes(bytes.begin(), bytes.end()), japaneseCodePage),
                  u"Attribute VB_Name = \"" + document.name + u"\"\r\n" + source.text(document).text());
    }
}

} // namespace
} // namespace relvane::samples
